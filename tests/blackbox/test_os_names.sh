#!/usr/bin/env bash
# The 32-bit program on every system that Wine can play: its name and the header of the undo file. Windows 95 is refused.
. "$(dirname "$0")/lib.sh"
need_width 32
prepare 32 resources/example/wine.reg
# Nothing is there to find; the undo file of an empty removal is not written, so one dead entry stays.
for key in "${scanned_keys[@]}"; do in_wine "$wine_loader" reg delete "$key" /f >/dev/null 2>&1; done
register_components

header_of() { head -c 40 "$1" | tr -d '\r' | head -n 1; }
named_system() { iconv -f CP1252 -t UTF-8 "$1" | tr -d '\r' | sed -n 's/^; Betriebssystem: //p'; }

run_as() { # VERSION NAME HEADER
    local file
    rm -rf "$(program_folder)/Backup" "$(log_file)"
    in_wine "$wine_loader" reg add 'HKLM\Software\Classes\CLSID\{10000000-0000-0000-0000-000000000001}' /f >/dev/null
    in_wine "$wine_loader" reg add 'HKLM\Software\Classes\CLSID\{20000000-0000-0000-0000-000000000002}' /ve /d Text /f >/dev/null
    in_wine "$wine_loader" reg add 'HKLM\Software\Classes\CLSID\{30000000-0000-0000-0000-000000000003}' /ve /d Text /f >/dev/null
    set_windows_version Bromvale.exe "$1"
    program
    file=$(undo_file)
    [ -n "$file" ] || { check "$1 writes an undo file" false; return; }
    check "$1 is $2" [ "$(named_system "$file")" = "$2" ]
    check "$1 has the header $3" [ "$(header_of "$file")" = "$3" ]
}

run_as win98 'Windows 98 SE' REGEDIT4
run_as winme 'Windows ME' REGEDIT4
run_as nt40 'Windows NT4' REGEDIT4
run_as win2k 'Windows 2000' 'Windows Registry Editor Version 5.00'
run_as winxp 'Windows XP' 'Windows Registry Editor Version 5.00'
run_as win10 'Unbekanntes Betriebssystem' REGEDIT4

set_windows_version Bromvale.exe win95
rm -rf "$(program_folder)/Backup" "$(log_file)"
limit=40 program &
refused=
for _ in $(seq 100); do
    refused=$(inspect message-box) && [ -n "$refused" ] && break
    sleep 0.2
done
check "win95 is refused with a message" grep -q 'Windows 95 wird nicht unterstützt.' <<<"$refused"
check "the message has the program's title" grep -q '^caption.Bromvale$' <<<"$refused"
check "and no window stands behind it" [ -z "$(inspect all)" ]
check "nothing was removed" [ "$(undo_files)" = 0 ]
finish
