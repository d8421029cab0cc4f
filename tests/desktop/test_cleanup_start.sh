#!/usr/bin/env bash
# The cleanup at the start of Windows, behind its waiting window, and the folder dialog: cancelled, chosen, chosen twice.
. "$(dirname "$0")/lib.sh"
prepare_example
drive=$prefix/drive_c
trash=$wine_home/.local/share/Trash/files
liste=$(program_folder)/liste.txt
rm -rf "$drive/Leeren" "${trash%/files}"
mkdir -p "$drive/Leeren/eins/unten" "$drive/Leeren/zwei"
for number in $(seq 300); do echo "$number" >"$drive/Leeren/eins/$number.txt"; done
echo a >"$drive/Leeren/eins/unten/a.txt"
echo b >"$drive/Leeren/zwei/b.txt"
printf 'C:\\Leeren\\eins\r\n\r\nC:\\Leeren\\fehlt\r\nC:\\Leeren\\zwei\\\r\n' >"$liste"

start_xvfb 1024x768 || exit 1
start_desktop 1024x768
(cd "$(program_folder)" && in_wine "$wine_loader" Bromvale.exe -d) >/dev/null 2>&1 &
program_pid=$!
# Its text is asked for at once: the deleting that follows answers nobody.
check "a waiting window says for what" inspect wait lblLogin "Bromvale $(program_version)"$'\r\nDie gewählten Ordner werden geleert. Bitte warten...' 60
shot 01-waiting
check "the main window isn't there" eval '! inspect control frmMain >/dev/null 2>&1'
check "the program ends by itself" program_ends 60
check "the folders are empty and there" equal "$(cd "$drive/Leeren" && find . | LC_ALL=C sort | paste -sd ' ')" '. ./eins ./zwei'
check "the bin holds the files" equal "$(find "$trash" -name '*.txt' | wc -l)" 302
check "with their folder" [ -f "$trash/unten/a.txt" ]
stop_all

prepare_example
mkdir -p "$drive/Ablage"
rm -f "$liste"
start_program
dialog() { inspect tops | grep -q '^#32770'; }
soon() { local end=$((SECONDS + 15)); until "$@"; do [ "$SECONDS" -lt "$end" ] || return 1; sleep 0.1; done; }
box() { # TEXT SHOT KEY: the box that says so, answered
    check "a box says: ${1//$'\n'/ }" inspect wait-box "$1" 15
    shot "$2"
    xdotool key "$3"
    inspect wait-box '' 15
}
folder_dialog() {
    click cmdOrdnerWählen
    check "the dialog opens" soon dialog
    settle
}
# By keyboard from the desktop down the tree to C:\Ablage.
choose_folder() { # SHOT
    keys shift+Tab Home a Right Right
    shot "$1-drives"
    keys Right
    xdotool type --delay 60 Abl
    settle
    shot "$1-chosen"
    keys Return
}
bar_group 2
bar_item 7
check "a first start makes an empty list" eval '[ -f "$liste" ] && [ ! -s "$liste" ]'
check "with nothing to switch on" disabled chbTempFilesDel
folder_dialog
shot 02-dialog
keys Escape
check "Escape closes it" soon eval '! dialog'
check "and nothing is in the list" equal "$(inspect rows lvwOrdnerList)" ''

folder_dialog
choose_folder 03
box $'Sind Sie sich sicher, das Sie den Ordner  C:\\Ablage zur Liste hinzufügen wollen?' 04-question Return
check "a chosen folder stands in the list" equal "$(inspect rows lvwOrdnerList | cut -f 2)" 'C:\Ablage'
check "and in the file" equal "$(cat "$liste")" $'C:\\Ablage\r'
check "it can be switched on" enabled chbTempFilesDel

folder_dialog
choose_folder 05
box 'Der Ordner C:\Ablage befindet sich bereits in der Liste.' 06-twice Return
check "the same one isn't taken twice" equal "$(inspect rows lvwOrdnerList | wc -l)" 1
click_close_box
check "the close box ends the program" program_ends 10
finish
