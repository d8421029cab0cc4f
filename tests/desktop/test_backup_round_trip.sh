#!/usr/bin/env bash
# From the fault to its removal and back: the backup page hands the undo file to the shell, which merges it for real. Then the
# other direction: what came back is found and removed again.
. "$(dirname "$0")/lib.sh"
prepare_example
associate_undo_files
trash=$wine_home/.local/share/Trash/files
rm -rf "${trash%/files}"
start_program

click_item() { # NUMBER of the navigation item
    local x y
    read -r x y < <(inspect bar-item Menu "$1") || stop_here "navigation item $1 is out of sight"
    xdotool mousemove "$x" "$y" click 1
    sleep 0.4
    settle
}
scan() {
    click cmdStart
    inspect wait cmdStart '&Entfernen' 120 || stop_here "the scan does not end"
}
remove() {
    click cmdStart
    inspect wait cmdStart '&Start' 60 || stop_here "the removal does not end"
    settle
}
data_of() { in_wine "$wine_loader" reg query "$1" /ve 2>/dev/null | tr -d '\r' | sed -nE 's/^ +\S.* REG_SZ +//p'; }
# Tries for ten seconds: nobody says when the registry editor is done.
comes_back() {
    local tries
    for tries in $(seq 50); do
        [ "$(data_of "$1")" = "$2" ] && return 0
        sleep 0.2
    done
    equal "$(data_of "$1")" "$2"
}
gone() { ! in_wine "$wine_loader" reg query "$1" >/dev/null 2>&1; }

scan
key=$(inspect rows lvwRegKeys | cut -f 2- | awk -F '\t' '$1 ~ /InprocServer32\]$/ && $2 == "@" && $3 ~ /\\/ { print $1; exit }')
key=${key#[} key=${key%]}
[ -n "$key" ] || stop_here "no server among the faults"
before=$(data_of "$key")
echo "      $key = $before"
check "the key has a value before" [ -n "$before" ]
remove
check "the key is removed" gone "$key"

click_item 2
shot 01-backup-page
check "the page is shown" visible Frame2
check "the list holds the undo file and the complete copy" equal "$(inspect rows lvwBackup | wc -l)" 2
file=$(basename "$(undo_files)")
check "under its name" eval 'inspect rows lvwBackup | grep -qF "$file"'
click_row lvwBackup 1
click_row lvwBackup 1 3
shot 02-menu
xdotool key Escape
settle

click_row lvwBackup 1
click cmdEintragen
shot 03-question
check "the question names the file" eval 'inspect message-box | grep -qF "$file"'
xdotool key Return # Ja
check "the saved value is back" comes_back "$key" "$before"
settle
shot 04-entered
check "the undo file stays" equal "$(undo_files | wc -l)" 1

# And once more: the entry that came back is a fault again.
click_item 1
sleep 1
scan
check "the fault is found again" eval 'inspect rows lvwRegKeys | grep -qF "[$key]"'
remove
check "and removed again" gone "$key"
check "into a second undo file" equal "$(undo_files | wc -l)" 2

click_item 2
click_row lvwBackup 1
xdotool key Delete
settle
shot 05-delete-question
xdotool key Return # Ja
settle
check "the deleted file is out of the folder" equal "$(undo_files | wc -l)" 1
check "and out of the list, where its complete copy stays with the other two files" equal "$(inspect rows lvwBackup | wc -l)" 3
check "it lies in the recycle bin" eval 'ls "$trash"/R*.reg >/dev/null 2>&1'
shot 06-deleted
click_close_box
check "the close box ends the program" program_ends 10
finish
