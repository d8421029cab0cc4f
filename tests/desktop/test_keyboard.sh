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
keys shift+Tab shift+Tab shift+Tab
check "the list stands before the buttons" equal "$(inspect focus)" lvwRegKeys

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
