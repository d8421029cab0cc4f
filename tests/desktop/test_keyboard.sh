#!/usr/bin/env bash
# The scan page without a mouse: Tab order, access keys, default and cancel button, space, F-keys.
. "$(dirname "$0")/lib.sh"
prepare_example
start_program

check "the navigation bar has the focus at first" equal "$(inspect focus)" Menu
keys Tab
check "then comes the start button" equal "$(inspect focus)" cmdStart
shot 01-focus-on-start
keys Tab
check "then the cancel button; what is hidden or disabled is passed over" equal "$(inspect focus)" cmdAbbrechen
keys Tab
check "and around to the bar" equal "$(inspect focus)" Menu
keys shift+Tab
check "Shift+Tab goes back" equal "$(inspect focus)" cmdAbbrechen

keys alt+s
inspect wait cmdStart '&Entfernen' 120 || stop_here "Alt+S does not start a scan"
settle
shot 02-after-alt-s
keys Escape
inspect wait cmdStart Start 10
check "Escape is the cancel button: the offer is gone" equal "$(text_of cmdStart)" Start
check "and the focus is on the start button" equal "$(inspect focus)" cmdStart
check "the results can't be shown any more" disabled chbRegKeysShow

keys Return
inspect wait cmdStart '&Entfernen' 120 || stop_here "Return does not start a scan"
settle
check "the disabled start button had to give the focus to the next control" equal "$(inspect focus)" cmdAbbrechen
keys Tab
check "a Tab leads to the box that shows the results" equal "$(inspect focus)" chbRegKeysShow
keys space
check "space ticks it" checked chbRegKeysShow
check "and the list is there" visible lvwRegKeys
shot 03-results
picture_of() { local left top right bottom; read -r left top right bottom < <(place "$1"); import -window root -crop "$((right - left))x$((bottom - top))+$left+$top" rgb:- | md5sum; }
without=$(picture_of lvwRegKeys)
keys shift+Tab shift+Tab shift+Tab
check "the list stands before the buttons" equal "$(inspect focus)" lvwRegKeys
check "it shows that it has the keyboard, though no row is chosen" [ "$(picture_of lvwRegKeys)" != "$without" ]
shot 03a-list-with-the-keyboard
menu_place() { inspect tops | sed -n 's/^#32768\t\([-0-9 ]*\)\t.*/\1/p'; }
menu_opens() { local tries; for tries in $(seq 30); do [ -n "$(menu_place)" ] && return 0; sleep 0.1; done; return 1; }
menu_closes() { local tries; for tries in $(seq 30); do [ -z "$(menu_place)" ] && return 0; sleep 0.1; done; return 1; }
at_row() { # ROW: the menu opens below it
    local left top right bottom menu_left menu_top rest
    read -r left top right bottom < <(inspect row-place lvwRegKeys "$1")
    read -r menu_left menu_top rest < <(menu_place)
    [ "$((menu_top - bottom))" -ge -2 ] && [ "$((menu_top - bottom))" -le 4 ] && [ "$menu_left" -ge "$left" ] && [ "$menu_left" -le "$right" ]
}
xdotool mousemove 5 5
keys Menu
check "the menu key opens the list's menu without a row, too" menu_opens
shot 03b-menu-without-a-row
keys Escape
check "Escape closes it" menu_closes
keys Home Down Down Menu
check "the menu key opens it" menu_opens
check "at the selected row" at_row 3
shot 03c-menu-at-the-row
keys Escape
check "Escape closes it again" menu_closes
keys End shift+F10
check "Shift+F10 opens it" menu_opens
check "at the selected row, which is in sight" at_row "$(inspect rows lvwRegKeys | wc -l)"
keys Escape
menu_closes
check "once closed the list has the keyboard" equal "$(inspect focus)" lvwRegKeys
keys Tab
check "which Tab takes on" [ "$(inspect focus)" != lvwRegKeys ]
keys shift+Tab

first_column() { inspect rows lvwRegKeys | cut -f 2; }
second_column() { inspect rows lvwRegKeys | cut -f 3; }
falling_or_rising() { LC_ALL=C sort -f -c <<<"$1" 2>/dev/null || LC_ALL=C sort -f -r -c <<<"$1" 2>/dev/null; }
keys F6
check "F6 sorts by the second column" falling_or_rising "$(second_column)"
shot 04-sorted-by-variable
before=$(inspect rows lvwRegKeys)
keys F5
check "F5 does nothing" equal "$(inspect rows lvwRegKeys)" "$before"
keys F4
one=$(first_column | head -n 1)
keys F4
other=$(first_column | head -n 1)
check "F4 twice turns the order round" [ "$one" != "$other" ]
keys Home Down shift+Down
check "the arrow keys mark rows" equal "$(inspect rows lvwRegKeys | grep -c '^\*')" 2
shot 05-marked-by-keys
keys alt+F4
check "Alt+F4 ends the program" program_ends 10
finish
