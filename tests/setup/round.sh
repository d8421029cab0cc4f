#!/usr/bin/env bash
# round.sh BITS VERSION: installed, started, scanned, removed, put back, uninstalled: the machine is the one before, but for
# the undo files.
. "$(dirname "$0")/lib.sh"
bits=$1 version=$2
need_width "$bits"
machine "$bits" "$version"
registry_now "$work/registry-before"
files_now "$work/files-before"

install
check "the installation ends with 0" [ $? = 0 ]
check "the program of the right width is installed" cmp -s "$(program_folder)/Bromvale.exe" "build/win$bits/Bromvale.exe"
check "so is the help" cmp -s "$(program_folder)/Bromvale.chm" "build/win$bits/Bromvale.chm"
check "the entry has its name" [ "$(entry DisplayName)" = Bromvale ]
check "the start menu has three icons" [ "$(find "$prefix/drive_c" -path "*/Programs/Bromvale/*.lnk" | wc -l)" = 3 ]
check "the desktop has none" [ -z "$(find "$prefix/drive_c/users" -path '*/Desktop/*' -name 'Bromvale*')" ]
check "nothing is left beside" [ -z "$(find "$(program_folder)" "$(program_folder).neu" -name 'Bromvale.[akw]*' -o -name '*.neu' 2>/dev/null)" ]

settings AutoScan 1 AutoEntfernen 1 AutoClose 1 1stRun 0
program
check "the program ends by itself with status 0" [ $? = 0 ]
check "no component is missing" eval '! grep -qa "6000[0-9]" "$(log_file)"'
check "there is one undo file" [ "$(undo_files)" = 1 ]
check "what was found is what the machine had before" eval '! grep -qai "bromvale" <(sed "/^;/d" "$(undo_file)")'
check "and all of that" [ "$(grep -ca '^\[HKEY' "$(undo_file)")" = 9 ]
copy=$(find "$(program_folder)/Backup" -name 'V*.reg')
import_registry "$copy"

uninstall
check "the removal ends with 0" [ $? = 0 ]
registry_now "$work/registry-after"
check "the registry is the one before" same "$work/registry-before" "$work/registry-after"
files_now "$work/files-after"
grep -v "Program Files/Bromvale" "$work/files-after" >"$work/files-others"
check "no other file has come or gone" same "$work/files-before" "$work/files-others"
check "the undo file and the copy are all that stays" \
    [ "$(find "$(program_folder)" -type f | sed 's/.*\///' | cut -c 1 | sort | tr -d '\n')" = RV ]
finish
