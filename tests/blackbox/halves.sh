#!/usr/bin/env bash
# halves.sh 64|32: the program of this width in a 64-bit prefix. Keys that both halves share name files of either system
# folder; only those that neither folder has are dead.
. "$(dirname "$0")/lib.sh"
width=$1
need_width 64
need_width "$width"
prepare 64 $here/halves.reg
[ -d "$prefix/drive_c/windows/syswow64" ] || stop_here "the prefix has one system folder only"
seen_by32() { in_wine /usr/lib/wine/wine "$@"; }
if [ "$width" = 32 ]; then
    # What is not shared lies in the other half for this program.
    for key in 'HKLM\Software\Classes\CLSID' 'HKLM\Software\Classes\Interface' 'HKCU\Software\Classes\CLSID' 'HKCU\Software\Classes\Interface' \
        'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall'; do
        seen_by32 reg delete "$key" /f >/dev/null 2>&1
    done
    for file in resources/components.reg $here/halves.reg; do seen_by32 'C:\windows\regedit.exe' /S "$(windows_path "$file")"; done
    install_program build/win32/Bromvale.exe
    wine_loader=/usr/lib/wine/wine
fi
set_windows_version Bromvale.exe win7
: >"$prefix/drive_c/windows/syswow64/bromvale-32.exe"
: >"$prefix/drive_c/windows/system32/bromvale-64.exe"

program
check "the program ends by itself with status 0" [ $? = 0 ]
rm -f "$prefix/drive_c/windows/syswow64/bromvale-32.exe" "$prefix/drive_c/windows/system32/bromvale-64.exe"
records=$(iconv -f CP1252 -t UTF-8 "$(undo_file)" | tr -d '\r' | grep '^\[')
check "what neither folder has is removed" grep -qF 'App Paths\tot.exe]' <<<"$records"
check "a type library of that kind as well" grep -qF '{70000000-0000-0000-0000-000000000070}\1.0\0\win32]' <<<"$records"
for name in nur32 nur64 '{32000000' '{64000000' 00.exe zz; do
    check "nothing of $name is removed" [ "$(grep -cF "$name" <<<"$records")" = 0 ]
done
for name in nur32 nur64; do
    check "$name is still there" in_wine "$wine_loader" reg query "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\$name.exe"
done
[ "$failures" = 0 ] || printf '%s\n' "$records"
finish
