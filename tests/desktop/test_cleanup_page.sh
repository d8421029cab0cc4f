#!/usr/bin/env bash
# The cleanup page by mouse and keyboard: the list, its menu, emptying into the recycle bin and for good.
. "$(dirname "$0")/lib.sh"
prepare_example
drive=$prefix/drive_c
trash=$wine_home/.local/share/Trash/files
rm -rf "$drive/Leeren" "${trash%/files}"
mkdir -p "$drive/Leeren/eins/unten" "$drive/Leeren/zwei/voll" "$drive/Leeren/zwei/leer" "$drive/Leeren/Ziel"
echo 1 >"$drive/Leeren/eins/a.txt"
echo 2 >"$drive/Leeren/eins/unten/b.txt"
echo 3 >"$drive/Leeren/zwei/c.txt"
echo 4 >"$drive/Leeren/zwei/voll/d.txt"
echo 5 >"$drive/Leeren/Ziel/bleibt.txt"
ln -s "$drive/Leeren/Ziel" "$drive/Leeren/eins/Verweis"
printf 'C:\\Leeren\\eins\r\nC:\\Leeren\\zwei\\\r\n' >"$(program_folder)/liste.txt"
start_program

run_value() { in_wine "$wine_loader" reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Run' /v Bromvale 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_SZ *//p'; }
list_of() { (cd "$drive/Leeren/$1" && find . -mindepth 1 | LC_ALL=C sort | paste -sd ' '); }

bar_group 2
bar_item 7
shot 01-cleanup
check "the box for the start of Windows can be ticked" enabled chbTempFilesDel

click chbTempFilesDel
check "the start of Windows is set" equal "$(run_value)" 'C:\Program Files\Bromvale\Bromvale.exe -d'

click_row lvwOrdnerList 1
click_row lvwOrdnerList 1 3
shot 02-menu
# The third entry empties the marked folders.
keys Down Down Down Return
sleep 1
settle
check "the first folder is empty but for the link" equal "$(list_of eins)" './Verweis'
check "what the link points to is there" [ -f "$drive/Leeren/Ziel/bleibt.txt" ]
check "the bin holds the file" [ -f "$trash/a.txt" ]
check "and the sub folder" [ -f "$trash/unten/b.txt" ]
check "the second folder is as it was" equal "$(list_of zwei)" './c.txt ./leer ./voll ./voll/d.txt'
check "the waiting window is gone" [ "$(inspect wait frmMain '' 5 && echo there)" = there ]

click chbDelFilePermanent
click cmdInhaltLöschen
sleep 1
settle
check "for good the filled folder stays whole" equal "$(list_of zwei)" './voll ./voll/d.txt'
check "and nothing of it reached the bin" [ ! -e "$trash/c.txt" ]

click_row lvwOrdnerList 2
keys Delete
shot 03-one-folder
check "Delete takes a folder out of the list" equal "$(tr -d '\r' <"$(program_folder)/liste.txt")" 'C:\Leeren\eins'
click_row lvwOrdnerList 1
click cmdOrdnerLöschen
shot 04-no-folder
check "without a folder the box is empty" equal "$(field chbTempFilesDel 3)" -
check "and greyed" disabled chbTempFilesDel
check "and Windows starts without the program" equal "$(run_value)" ''

click cmdOrdnerWählen
sleep 1.5
settle
shot 05-folder-dialog
keys Escape
sleep 0.5
settle
check "a cancelled dialog changes nothing" equal "$(cat "$(program_folder)/liste.txt")" $'\r'
keys alt+F4
check "Alt+F4 ends the program" program_ends 10
finish
