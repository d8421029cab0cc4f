#!/usr/bin/env bash
# automatic_run.sh 64|32: scans, removes and ends by settings alone, under Wine; then the same registry offline. Both
# must leave the same undo file, the same log and the same registry.
. "$(dirname "$0")/lib.sh"
bits=$1
need_width "$bits"
offline=$PWD/build/native-asan/bromvale-offline
[ -x "$offline" ] || { echo "build/native-asan/bromvale-offline is missing: ./test.sh blackbox"; exit 1; }
seed=resources/example/wine.reg

prepare "$bits" "$seed"
seed_example_files
set_windows_version Bromvale.exe winxp
work=$wine_top/$test_name.work
rm -rf "$work"
mkdir -p "$work/c/Program Files/Bromvale"

program
check "the program ends by itself with status 0" [ $? = 0 ]
check "there is one undo file" [ "$(undo_files)" = 1 ]
export_scanned "$work/after.reg"
check "every deleted key has its record" $here/compare removed "$seed" "$work/after.reg" "$(undo_file)"

cp -r "$prefix/drive_c/Programme" "$work/c/"
ln -s "$prefix/drive_c/windows" "$work/c/windows"
printf '%s\r\n' REGEDIT4 '' '[HKEY_CURRENT_USER\Software\Bromvale]' '"AutoScan"="1"' '"AutoEntfernen"="1"' '"AutoClose"="1"' \
    '"1stRun"="0"' >"$work/settings.reg"
"$offline" --registry "$seed" --registry "$work/settings.reg" --drive "C:=$work/c" --app-path 'C:\Program Files\Bromvale' \
    --os 'Windows XP' --locale de --save "$work/offline-after.reg" >"$work/offline.txt"
check "offline ends with status 0" [ $? = 0 ]
offline_undo=$(find "$work/c/Program Files/Bromvale/Backup" -name 'R*.reg')
check "both write the same undo file" $here/compare undo "$(undo_file)" "$offline_undo"
check "both leave the same registry" $here/compare registry "$work/after.reg" "$work/offline-after.reg"
check "both write the same log" $here/compare log "$(log_file)" "$work/c/Program Files/Bromvale/bromvale.log"
printf 'records: %s\n' "$(grep -c '^\[HKEY' "$(undo_file)")"
finish
