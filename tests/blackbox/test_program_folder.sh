#!/usr/bin/env bash
# The program in a folder whose name its code page can't hold: log, undo file and complete copy land there all the same.
. "$(dirname "$0")/lib.sh"
need_width 64
program_folder() { printf '%s/drive_c/Pawłowski/Bromvale' "$prefix"; }
prepare 64 tests/blackbox/small.reg
set_windows_version Bromvale.exe winxp
# A folder of nearly the same name, which the ANSI functions would lead to.
twin=$prefix/drive_c/Pawlowski/Bromvale
rm -rf "${twin%/*}"
mkdir -p "$twin"

program
check "the program ends by itself with status 0" [ $? = 0 ]
check "the undo file lies in the program's folder" [ "$(undo_files)" = 1 ]
check "so does the log" [ -s "$(log_file)" ]
check "the folder of nearly the same name is as it was" [ -z "$(ls "$twin")" ]
three='HKLM\Software\Classes\CLSID\{30000000-0000-0000-0000-000000000003}\InprocServer32'
check "what was found is removed" eval '! in_wine "$wine_loader" reg query "$three" >/dev/null 2>&1'
finish
