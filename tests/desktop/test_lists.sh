#!/usr/bin/env bash
# The same row twice by mouse, with a refill between: the program knows the row that the list shows as marked. And Return
# after a click into the navigation bar.
. "$(dirname "$0")/lib.sh"
prepare_example
associate_undo_files
in_wine "$wine_loader" reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null
uninstall='Software\Microsoft\Windows\CurrentVersion\Uninstall'
for root in HKCU HKLM; do in_wine "$wine_loader" reg delete "$root\\$uninstall" /f >/dev/null 2>&1; done
for name in Eins Zwei Drei; do
    in_wine "$wine_loader" reg add "HKCU\\$uninstall\\$name" /v DisplayName /d "$name" /f >/dev/null
done
mkdir -p "$(program_folder)/Backup" "$prefix/drive_c/Leeren/"{eins,zwei,drei}
for name in a b c; do printf 'REGEDIT4\r\n\r\n' >"$(program_folder)/Backup/$name.reg"; done
printf 'C:\\Leeren\\%s\r\n' eins zwei drei >"$(program_folder)/liste.txt"
start_program

click_item() { # GROUP ITEM of the navigation bar
    bar_group "$1"
    bar_item "$2"
    sleep 0.3
}
double_click_row() { # LIST ROW
    local left top right bottom
    read -r left top right bottom < <(inspect row-place "$1" "$2")
    xdotool mousemove $((left + 12)) $(((top + bottom) / 2)) click --repeat 2 --delay 80 1
    settle
}
rows() { inspect rows "$1" | cut -f 2 | paste -sd ' '; }
marked() { inspect rows "$1" | sed -n 's/^\*\t//p' | cut -f 1 | paste -sd ' '; }
list() { tr -d '\r' <"$(program_folder)/liste.txt" | paste -sd ' '; }
window_opens() { # CLASS within fifteen seconds
    local tries
    for tries in $(seq 75); do
        inspect tops | cut -f 1 | grep -qxF "$1" && return 0
        sleep 0.2
    done
    return 1
}
# The folder's window: Wine's may end by itself at once, so it is the process that is looked for, from before the click on,
# and ended.
watch_for_folder() { # FOLDER, each backslash as a dot
    timeout 20 bash -c 'until files=$(grep -lsz "$0" /proc/[0-9]*/cmdline); [ -n "$files" ]; do sleep 0.02; done
        for file in $files; do file=${file#/proc/}; kill "${file%/cmdline}"; done' "[C]${1#C}\$" 2>/dev/null &
    watcher=$!
}
folder_opens() { wait "$watcher"; }
close_window() { # CLASS: by its own key
    sleep 0.5
    keys alt+F4
    local tries
    for tries in $(seq 25); do
        inspect tops | cut -f 1 | grep -qxF "$1" || return 0
        sleep 0.2
    done
    return 1
}

# --- the bar that was clicked on leaves Return to the default button -----------------------------------

bar_group 1
check "a click gives the bar the keyboard" equal "$(inspect focus)" Menu
keys Return
inspect wait cmdStart '&Entfernen' 120 || stop_here "Return after a click into the bar begins no scan that ends"
keys Escape
inspect wait cmdStart Start 10

# --- folders: deleting refills the list ------------------------------------------------------------

click_item 2 7
click_row lvwOrdnerList 2
click cmdOrdnerLöschen
check "the second folder is gone" equal "$(list)" 'C:\Leeren\eins C:\Leeren\drei'
click_row lvwOrdnerList 2
check "the row at its place is marked" equal "$(marked lvwOrdnerList)" 'C:\Leeren\drei'
shot 01-folder-marked-again
watch_for_folder 'C:.Leeren.drei'
double_click_row lvwOrdnerList 2
check "a double click opens it" folder_opens
settle
click_caption
keys F5
click_row lvwOrdnerList 2
click cmdOrdnerLöschen
check "the row at the same place can be deleted, too" equal "$(list)" 'C:\Leeren\eins'
keys F5
click_row lvwOrdnerList 1
keys F5
click_row lvwOrdnerList 1
keys Delete
check "and the last one behind two refills" equal "$(list)" ''

# --- backup: F5 refills the list ---------------------------------------------------------------------

click_item 1 2
check "three undo files are listed" equal "$(rows lvwBackup)" 'a.reg b.reg c.reg'
click_row lvwBackup 2
keys F5
check "a refill takes the mark away" equal "$(marked lvwBackup)" ''
click_row lvwBackup 2
check "the same row is marked again" equal "$(marked lvwBackup)" b.reg
shot 02-undo-file-marked-again
keys F5
double_click_row lvwBackup 2
check "a double click on it opens the editor" window_opens Notepad
shot 03-editor
check "whose window can be closed" close_window Notepad
click_row lvwBackup 2
keys F5
click_row lvwBackup 2
click cmdLöschen
check "the button asks about it" inspect wait-box 'Wollen Sie wirklich die Datei b.reg löschen?' 10
keys alt+n

# --- programs ----------------------------------------------------------------------------------------

click_item 2 6
check "three programs are listed" equal "$(rows lvwDeinstall)" 'Drei Eins Zwei'
click_row lvwDeinstall 3
click cmdDeinstallRefresh
click_row lvwDeinstall 3
check "the same row is marked again" equal "$(marked lvwDeinstall)" Zwei
click cmdDeinstall
check "the button asks about it" inspect wait-box 'Wollen Sie das Programm Zwei wirklich deinstallieren?' 10
keys alt+n
click_row lvwDeinstall 1
keys F5
sleep 0.5
double_click_row lvwDeinstall 1
check "a double click asks about it" inspect wait-box 'Wollen Sie das Programm Drei wirklich deinstallieren?' 10
shot 04-question
keys alt+n
end_program
finish
