#!/usr/bin/env bash
# What the installer and the uninstaller must not take for something else: folders that were given in odd ways, folders and
# files of others, another installation beside, one that came in between.
. "$(dirname "$0")/lib.sh"
need_width 64
machine 64 win7
drive=$prefix/drive_c folder=$(program_folder)
classes='Software\Classes\CLSID'
timer='{71A27032-C7D8-11D2-BEF8-525400DFB47A}'
reg() { in_wine "$wine_loader" reg "$@" >/dev/null 2>&1 </dev/null; }
gone() { ! reg query "$@"; }
ends_with() { # CODE COMMAND...
    local wanted=$1 result
    shift
    "$@"
    result=$?
    [ $result = "$wanted" ] || { printf 'ended with %s:\n' "$result"; return 1; }
}
# As a program gives a line to another one: in UTF-16, of which a batch file has not all.
install_directly() { in_wine timeout 120 "$wine_loader" "$setup" /S "$@" >/dev/null 2>&1 </dev/null; }
rm -rf "$drive"/{Datei,Über,Vorher,Eigenes,Anderswo}
top_now() { (cd "$drive" && ls -A); }
top_now >"$work/top-before"

# --- a folder that is not the one that was meant ---
for given in '/D=Ordner' '/D=C:' '/D=C:Ordner' '/D=\Ordner' '/D=' '/D= C:\Ordner' '/D="C:\Mein Ordner"' '"/D=C:\Mein Ordner"' \
    '/d=C:\Ordner' '/D=C:/Ordner' '/D=C:\Ord*ner' '/D=C:\Ord?ner' '/D=C:\Ord:ner' '/D=C:\nul' '/D=Q:\Ordner' '/D=C:\'; do
    check "refused: $given" ends_with 2 install "$given"
    check "nothing was installed" eval '[ -z "$(entry InstallLocation)" ] && [ ! -e "$folder" ]'
done
for given in '/D=C:\Łukasz' '/D=C:\Ordner\中文' '/D=C:\naïve ＡＢ'; do
    check "refused: $given" ends_with 2 install_directly "$given"
done
: >"$drive/Datei"
check "refused: a file" ends_with 2 install '/D=C:\Datei'
check "refused: below a file" ends_with 2 install '/D=C:\Datei\Ordner'
check "refused: the folder of Windows" ends_with 2 install '/D=C:\windows'
check "refused: the folder for programs" ends_with 2 install '/D=C:\Program Files'
check "refused: a path too long for files" ends_with 2 install "/D=C:\\$(printf 'Ordner%.0s\\' {1..40})Bromvale"
check "the file is one" eval '[ -f "$drive/Datei" ] && rm "$drive/Datei"'
top_now >"$work/top-after"
check "nothing has come or gone" same "$work/top-before" "$work/top-after"

# --- a folder in other words ---
check "installed with an umlaut, dots and a backslash" ends_with 0 install_directly '/D=C:\Über\.\x\..\Müller.\'
check "it is there" [ -f "$drive/Über/Müller/Bromvale.exe" ]
check "the same in small letters is no other one" ends_with 0 install_directly '/D=c:\über\müller'
short=$(in_wine winepath -s 'C:\Über\Müller' 2>/dev/null)
check "nor is its short name: $short" ends_with 0 install_directly "/D=$short"
cp "$drive/Über/Müller/Entfernen.exe" "$work/remover.exe"
check "removed by the short name" ends_with 0 started "$(windows_path "$work/remover.exe") /S _?=$short"
check "the folders that were made for it are gone" [ ! -e "$drive/Über" ]
mkdir -p "$drive/Vorher"
check "installed below a folder that was there" ends_with 0 install '/D=C:\Vorher\A\B\Bromvale'
check "and over it" ends_with 0 install '/D=C:\Vorher\A\B\Bromvale'
check "removed" ends_with 0 uninstall
for tries in $(seq 50); do [ -e "$drive/Vorher/A" ] || break; sleep 0.1; done
check "with the folders that were made, and no other" [ "$(ls -A "$drive/Vorher" | wc -l)" = 0 ]
check "a folder that can't be made leaves none above it" ends_with 2 install "/D=C:\\Vorher\\C\\$(printf 'x%.0s' {1..250})"
check "indeed none" eval 'rmdir "$drive/Vorher"'

# --- what others have ---
mkdir -p "$drive/Eigenes"
echo 'C:\Wichtig' >"$drive/Eigenes/liste.txt"
check "a list that no program of ours has written is somebody's file" ends_with 2 install '/D=C:\Eigenes'
check "it stays" [ "$(ls "$drive/Eigenes")" = liste.txt ]
echo 'older program' >"$drive/Eigenes/Bromvale.exe"
check "beside the program it is its own" ends_with 0 install '/D=C:\Eigenes'
check "and stays with it" [ "$(cat "$drive/Eigenes/liste.txt")" = 'C:\Wichtig' ]
mkdir -p "$drive/Anderswo"
echo kept >"$drive/Anderswo/Rückgängig.reg"
ln -s ../Anderswo "$drive/Eigenes/Backup"
mkdir "$drive/Eigenes/Unterordner"
check "removed, the undo folder a link" ends_with 0 uninstall
check "the link stays, and what it points to" [ "$(cat "$drive/Eigenes/Backup/Rückgängig.reg")" = kept ]
check "and what is nobody's but others'" [ "$(ls "$drive/Eigenes" | tr '\n' ' ')" = 'Backup Unterordner ' ]
rm -r "$drive/Eigenes" "$drive/Anderswo"

# --- an installation for the machine, and one for the user beside it ---
check "installed for the machine" ends_with 0 install
check "and for the user" ends_with 0 install /NUTZER
set_setting AutoScan 1
check "the user's one has classes of its own, since the machine's go with the other" reg query "HKCU\\$classes\\$timer"
check "the machine's is removed" ends_with 0 uninstall
check "its classes too" gone "HKLM\\$classes\\$timer"
check "the user's stay" reg query "HKCU\\$classes\\$timer"
check "and the settings, which are both's" reg query 'HKCU\Software\Bromvale' /v AutoScan
entry_root=HKCU
check "the user's is removed" ends_with 0 uninstall
check "with its classes" gone "HKCU\\$classes\\$timer"
check "and the settings" gone 'HKCU\Software\Bromvale'
entry_root=HKLM

# --- a stick's starter that was killed before, and mends after ---
. tests/blackbox/portable.sh
rm -rf "$portable"
mkdir -p "$portable/64"
cp build/win32/BromvaleStart.exe "$portable/"
cp build/win64/Bromvale.exe "$portable/64/"
for hive in HKLM HKCU; do
    entry_root=$hive switch=
    [ $hive = HKLM ] || switch=/NUTZER
    folder_settings 1stRun 0
    (cd "$portable" && in_wine "$wine_loader" BromvaleStart.exe >/dev/null 2>&1 &)
    in_wine "$wine_loader" build/win64/tests/desktop/inspect_window.exe wait frmMain '' 60
    in_wine "$wine_loader" taskkill /f /im BromvaleStart.exe >/dev/null 2>&1
    in_wine "$wine_loader" taskkill /f /im Bromvale.exe >/dev/null 2>&1
    check "it has left its classes" reg query "HKLM\\$classes\\$timer"
    check "$hive: installed" ends_with 0 install $switch
    rm "$portable/Einstellungen.lauf" # as another stick: the settings of the killed run are not its own
    folder_settings AutoScan 1 AutoClose 1 1stRun 0
    check "$hive: the stick is started again" starter
    check "$hive: the installed program has its classes still" reg query "$hive\\$classes\\$timer"
    check "$hive: nothing else of the stick is left" eval '! journal_is_there'
    check "$hive: removed" ends_with 0 uninstall
    check "$hive: with its classes" gone "$hive\\$classes\\$timer"
done
check "no class is left" gone "HKLM\\$classes\\$timer"
entry_root=HKLM

# --- the last of a removal, when the program has come back meanwhile ---
check "installed" ends_with 0 install
cp "$folder/Entfernen.exe" "$work/rest.exe"
started "$(windows_path "$work/rest.exe") /S /REST=1 _?=C:\\Program Files\\Bromvale"
check "the uninstaller of the new one stays" [ -f "$folder/Entfernen.exe" ]
cp "$folder/Entfernen.exe" "$work/remover.exe"
check "removed" ends_with 0 uninstall
check "and installed at once, three times" eval 'for each in 1 2 3; do
    install || break; started "\"C:\\Program Files\\Bromvale\\Entfernen.exe\" /S _?=C:\\Program Files\\Bromvale" || break; done
    install && sleep 2 && [ -f "$folder/Entfernen.exe" ] && [ -f "$folder/Bromvale.exe" ]'

# --- two at a time ---
install & install & install
first=$?
wait
check "of installations at the same time the program is whole" eval '[ "$(entry DisplayName)" = Bromvale ] && [ -f "$folder/Bromvale.exe" ] && [ -f "$folder/Entfernen.exe" ]'
check "each ends with success, or says that another is at work: $first" eval '[ $first = 0 ] || [ $first = 3 ]'
check "removed" ends_with 0 uninstall
check "a second removal finds nothing to remove" ends_with 2 started "$(windows_path "$work/remover.exe") /S _?=C:\\Program Files\\Bromvale"
top_now >"$work/top-after"
check "nothing has come or gone" same "$work/top-before" "$work/top-after"
finish
