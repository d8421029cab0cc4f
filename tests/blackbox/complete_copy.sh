#!/usr/bin/env bash
# complete_copy.sh BITS VERSION: in a 64-bit Windows everything that a scan finds is removed, and the complete copy put
# back by the 64-bit registry editor: the registry is the one before, in both halves.
. "$(dirname "$0")/lib.sh"
bits=$1 version=$2
need_width 64
need_width "$bits"
prepare 64 tests/blackbox/small.reg
install_program "build/win$bits/Bromvale.exe"
work=$wine_top/$test_name.work
rm -rf "$work"
mkdir -p "$work"

# What each half is given goes through the registry editor of that half.
editor='C:\windows\regedit.exe' editor32='C:\windows\syswow64\regedit.exe'
merge() { in_wine "$wine_loader" "$1" /S "$(windows_path "$2")"; }
registry_file() { # FILE: standard input, UTF-8, as version 5.00
    { printf 'Windows Registry Editor Version 5.00\n\n'; cat; } | sed 's/$/\r/' |
        { printf '\xff\xfe'; iconv -f UTF-8 -t UTF-16LE; } >"$1"
}
{
    cat tests/blackbox/complete.txt
    # The Windows 98 that Wine plays keeps names of other code pages, which its functions can't tell.
    [ "$version" = win98 ] || printf '%s\n' '' \
        '[HKEY_LOCAL_MACHINE\Software\Classes\CLSID\{75000000-0000-0000-0000-000000000007}]' '@="Łódź"' '' \
        '[HKEY_LOCAL_MACHINE\Software\Classes\CLSID\{75000000-0000-0000-0000-000000000007}\InprocServer32]' \
        '@="C:\\Gibt\\es\\nicht.dll"' '"Zdjęcie"="テキスト"' '"．．"=hex(2):41,01,00,00'
} | registry_file "$work/seed.reg"
halves=("$editor")
[ "$bits" = 64 ] || halves+=("$editor32")
for half in "${halves[@]}"; do
    merge "$half" "$work/seed.reg"
    merge "$half" tests/blackbox/small.reg
    merge "$half" resources/components.reg
done
set_windows_version Bromvale.exe "$version"

roots=('HKEY_LOCAL_MACHINE\Software\Classes' 'HKEY_LOCAL_MACHINE\Software\Wow6432Node' 'HKEY_CURRENT_USER\Software\Classes'
    'HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths'
    'HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall')
whole_registry() { # FILE
    local root
    : >"$1"
    for root in "${roots[@]}"; do
        rm -f "$work/part.reg"
        in_wine "$wine_loader" "$editor" /E "$(windows_path "$work/part.reg")" "$root" >/dev/null 2>&1
        [ ! -f "$work/part.reg" ] || iconv -f UTF-16 -t UTF-8 "$work/part.reg" | tr -d '\r' >>"$1"
    done
}
keys_in() { grep -c '^\[' "$1"; }
complete_copy() { find "$(program_folder)/Backup" -name 'V*.reg'; }

whole_registry "$work/before.txt"
program
check "the program ends by itself with status 0" [ $? = 0 ]
check "there is one undo file" [ "$(undo_files)" = 1 ]
check "there is one complete copy" [ "$(complete_copy | wc -l)" = 1 ]
cp "$(complete_copy)" "$work/copy.reg"
check "they have the same stamp" [ "$(basename "$(undo_file)" | sed 's/^[^_]*_//')" = "$(basename "$(complete_copy)" | sed 's/^[^_]*_//')" ]
whole_registry "$work/removed.txt"
gone=$(($(keys_in "$work/before.txt") - $(keys_in "$work/removed.txt")))
check "keys are gone: $gone" [ "$gone" -ge 8 ]
if [ "$version" = win98 ]; then
    check "the form is that of Windows 98" [ "$(head -c 10 "$work/copy.reg" | tr -d '\r\n')" = REGEDIT4 ]
else
    check "the form is version 5.00" [ "$(head -c 2 "$work/copy.reg" | od -An -tx1 | tr -d ' ')" = fffe ]
fi
[ "$bits" = 64 ] || check "keys are named where they lie" eval 'tr -d "\000" <"$work/copy.reg" | grep -aqi Wow6432Node'
check "no key was refused" eval '! grep -q "wurde nicht entfernt" "$(log_file)"'

merge "$editor" "$work/copy.reg"
whole_registry "$work/after.txt"
check "put back it is the registry before" cmp -s "$work/before.txt" "$work/after.txt"
[ "$failures" = 0 ] || diff "$work/before.txt" "$work/after.txt" | head -n 20
printf 'keys gone and back: %s\n' "$gone"
finish
