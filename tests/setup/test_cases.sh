#!/usr/bin/env bash
# What stands in the installer's way, and what it leaves alone: classes of others, an older version with its data, the
# program at work, a file in use, folders, a user without rights, planted libraries.
. "$(dirname "$0")/lib.sh"
. tests/setup/planted.sh
need_width 64
machine 64 win7
classes='HKLM\Software\Classes\CLSID'
class_names=(socket='{248DD896-BB45-11CF-9ABC-0080C7E7B78D}' timer='{71A27032-C7D8-11D2-BEF8-525400DFB47A}'
    images='{396F7AC9-A0DD-11D3-93EC-00C0DFE7442A}' bar='{FE1D1F9D-EC4B-11D3-B06C-00500427A693}')
declare "${class_names[@]}"
reg() { in_wine "$wine_loader" reg "$@" 2>/dev/null </dev/null | tr -d '\r'; }
default_of() { reg query "$1" /ve | sed -n 's/^.* REG_SZ  *//p'; }
there() { in_wine "$wine_loader" reg query "$@" >/dev/null 2>&1; }
gone() { ! there "$@"; }
ends_with() { # CODE COMMAND...
    local wanted=$1 result
    shift
    "$@"
    result=$?
    [ $result = "$wanted" ] || { printf 'ended with %s:\n' "$result"; return 1; }
}
folder=$(program_folder)

# The classes of a file of the registry editor, a line each: the key and its first value.
named_classes() { tr -d '\r' <"$1" | grep -A 1 --no-group-separator '}\]$' | paste - -; }
classes_now() {
    rm -f "$work/classes.reg"
    in_wine "$wine_loader" 'C:\windows\regedit.exe' /E "$(windows_path "$work/classes.reg")" "${classes/#HKLM/HKEY_LOCAL_MACHINE}" >/dev/null 2>&1
    iconv -f UTF-16 -t UTF-8 "$work/classes.reg" >"$work/classes.txt"
    named_classes "$work/classes.txt"
}

reg add "$classes\\$socket" /ve /d 'Von jemand anderem' /f >/dev/null
reg add "$classes\\$socket\\InprocServer32" /ve /d 'C:\x.ocx' /f >/dev/null
check "installed" ends_with 0 install /DESKTOP
check "with its icon on the desktop" [ -n "$(find "$prefix/drive_c/users/" -path '*/Desktop/Bromvale.lnk')" ]
check "a class that was there keeps its name" [ "$(default_of "$classes\\$socket")" = 'Von jemand anderem' ]
check "the six that were missing are there, under names of our own" \
    [ "$(grep -cixFf <(named_classes resources/components.reg) <(classes_now))" = 6 ]

echo 'older program' >"$folder/Bromvale.exe"
echo 'older help' >"$folder/Bromvale.chm"
mkdir -p "$folder/Backup"
for file in liste.txt bromvale.log Backup/R1.reg; do echo "$file" >"$folder/$file"; done
set_setting AutoScan 1
check "over an older version" ends_with 0 install
check "the program is the new one" cmp -s "$folder/Bromvale.exe" build/win64/Bromvale.exe
check "so is the help" cmp -s "$folder/Bromvale.chm" build/win64/Bromvale.chm
for file in liste.txt bromvale.log Backup/R1.reg; do check "$file stays" [ "$(cat "$folder/$file")" = "$file" ]; done
check "the settings stay" there 'HKCU\Software\Bromvale' /v AutoScan
check "another folder is refused while it is there" ends_with 2 install '/D=C:\Mein Bromvale'
check "and not made" [ ! -e "$prefix/drive_c/Mein Bromvale" ]

# The program at work: a message of the first start would wait for an answer.
settings AutoScan 0 AutoEntfernen 0 AutoClose 0 1stRun 0 Protokoll 0
(cd "$folder" && in_wine "$wine_loader" Bromvale.exe >/dev/null 2>&1 &)
in_wine "$wine_loader" build/win64/tests/desktop/inspect_window.exe wait frmMain '' 60
echo 'older help' >"$folder/Bromvale.chm"
check "refused while it runs" ends_with 3 install
check "its removal too" ends_with 3 uninstall
check "nothing was changed" [ "$(cat "$folder/Bromvale.chm")" = 'older help' ]
in_wine "$wine_loader" taskkill /f /im Bromvale.exe >/dev/null 2>&1

# In use where the mutex doesn't tell: another program of that name, as another user's would be.
cp "$prefix/drive_c/windows/system32/ping.exe" "$folder/Bromvale.exe"
cp "$folder/Bromvale.exe" "$work/in-use.exe"
(cd "$folder" && in_wine "$wine_loader" Bromvale.exe -n 60 127.0.0.1 >/dev/null 2>&1 &)
sleep 2
check "a program in use is not replaced" ends_with 2 install
check "it is as it was" cmp -s "$folder/Bromvale.exe" "$work/in-use.exe"
check "so is the help beside it" [ "$(cat "$folder/Bromvale.chm")" = 'older help' ]
check "no folder of the exchange is left" [ -z "$(find "$folder" -name 'Bromvale.*' -type d | tee "$work/left")" ]
cat "$work/left"
check "nor removed" ends_with 2 uninstall
check "and nothing else has gone" [ -f "$folder/Bromvale.chm" ]
in_wine "$wine_loader" taskkill /f /im Bromvale.exe >/dev/null 2>&1

reg add "$classes\\$images\\InprocServer32" /ve /d 'C:\y.ocx' /f >/dev/null
reg add "$classes\\$bar" /ve /d 'Anders registriert' /f >/dev/null
run='HKLM\Software\Microsoft\Windows\CurrentVersion\Run'
reg add "$run" /v Bromvale /d 'C:\Program Files\Bromvale\Bromvale.exe -d' /f >/dev/null
check "removed" ends_with 0 uninstall
check "the class that was added is gone" gone "$classes\\$timer"
check "what others put below one stays, and its name" [ -n "$(default_of "$classes\\$images")" ]
check "one that others have named anew stays" [ "$(default_of "$classes\\$bar")" = 'Anders registriert' ]
check "one that was there before stays" [ "$(default_of "$classes\\$socket")" = 'Von jemand anderem' ]
check "and its sub key" there "$classes\\$socket\\InprocServer32"
check "the start with Windows is gone" gone "$run" /v Bromvale
check "the settings are gone" gone 'HKCU\Software\Bromvale'
check "the undo file is all that is left" [ "$(find "$folder" -type f -printf '%P ')" = 'Backup/R1.reg ' ]

# For a user without rights.
registry_now "$work/registry-before"
rm -rf "$folder"
files_now "$work/files-before"
entry_root=HKCU
reg add "$run" /v Bromvale /d 'C:\Anderswo\Bromvale.exe -d' /f >/dev/null
check "installed for the user alone" ends_with 0 install /NUTZER
check "below the local application data" [ -f "$(find "$prefix/drive_c/users" -path '*/Local/Programs/Bromvale/Bromvale.exe')" ]
check "its classes are the user's" there "HKCU\\Software\\Classes\\CLSID\\$timer"
check "and not the machine's" gone "$classes\\$timer"
check "a class of the machine is not doubled" gone "HKCU\\Software\\Classes\\CLSID\\$socket"
check "who has it for himself keeps it so" ends_with 0 install
check "with no entry for the machine" gone "HKLM\\$entry_key"
check "removed for the user" ends_with 0 uninstall
check "a start that names another program stays" there "$run" /v Bromvale
reg delete "$run" /v Bromvale /f >/dev/null
registry_now "$work/registry-after"
files_now "$work/files-after"
check "the registry is the one before" same "$work/registry-before" "$work/registry-after"
check "so are the files" same "$work/files-before" "$work/files-after"
entry_root=HKLM

# Folders.
own=$prefix/drive_c/Mein\ Bromvale
mkdir -p "$own"
: >"$own/Brief.txt"
check "a folder with other files is refused" ends_with 2 install '/D=C:\Mein Bromvale'
check "and stays as it is" [ "$(ls "$own")" = Brief.txt ]
check "a drive's root is refused" ends_with 2 install '/D=C:\'
check "one within quotes, which NSIS doesn't see, is not the usual one" ends_with 2 install '"/D=C:\Ordner"'
check "nor is one that it can't use" ends_with 2 install '/D=Ordner'
rm "$own/Brief.txt"
mkdir "$own/Darin"
check "an empty folder will do, and one to be made below it" ends_with 0 install '/D=C:\Mein Bromvale\Darin\Neu\Bromvale'
check "its removal takes back what was made" ends_with 0 uninstall
check "and no more" [ "$(cd "$own" && find . | sort | tr '\n' ' ')" = '. ./Darin ' ]
rmdir "$own/Darin"
check "an empty folder will do itself" ends_with 0 install '/D=C:\Mein Bromvale\'
check "the program is there" cmp -s "$own/Bromvale.exe" build/win64/Bromvale.exe
cp "$own/Entfernen.exe" "$work/"
check "removed from there" ends_with 0 uninstall
check "with its folder" [ ! -e "$own" ]

# Among libraries that others have put beside it.
plant "$work/planted" || stop_here "the libraries to be planted can't be built"
cp "$setup" "$work/planted/setup.exe"
mv "$work/Entfernen.exe" "$work/planted/"
take_out_wines_own "$work/planted"
check "installed beside them" eval '(cd "$work/planted" && in_order_of_windows "$wine_loader" setup.exe /S >/dev/null 2>&1)'
(cd "$work/planted" && in_order_of_windows "$wine_loader" Entfernen.exe /S _?=C:\\Windows >/dev/null 2>&1)
check "none of the planted libraries was loaded" [ -z "$(loaded "$work/planted" | tee "$work/loaded")" ]
cat "$work/loaded"
(cd "$work/planted" && in_order_of_windows "$wine_loader" loads.exe shfolder.dll wininet.dll dwmapi.dll >/dev/null 2>&1)
check "who loads by bare names gets them" [ "$(loaded "$work/planted" | wc -l)" = 3 ]
finish
