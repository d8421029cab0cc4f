#!/usr/bin/env bash
# The icon in the real notification area: its menu by the right button, its entries, and the end.
. "$(dirname "$0")/lib.sh"
prepare_example
start_program

frames=(Frame1 Frame2 Frame3 Frame4 Frame5 Frame7)
shown_pages() { local frame; for frame in "${frames[@]}"; do visible "$frame" && printf '%s ' "$frame"; done; }
# The only icon stands at the right end of the task bar.
on_icon() { xdotool mousemove 1013 758; sleep 0.3; xdotool click "$@"; sleep 0.5; settle; }

shot 01-icon
on_icon 1
on_icon --repeat 2 --delay 50 1
check "the left button does nothing" equal "$(shown_pages)" 'Frame1 '
on_icon 3
shot 02-menu
keys Down Return
check "the bold entry does nothing" equal "$(shown_pages)" 'Frame1 '
on_icon 3
keys Down Down Down Return
shot 03-backup
check "an entry shows its page" equal "$(shown_pages)" 'Frame2 '
on_icon 3
keys Up Up Return
sleep 0.5
settle
shot 04-about
keys Return
check "the window is as it was" equal "$(shown_pages)" 'Frame2 '
# The menu's last entry, by mouse.
on_icon 3
shot 05-menu-again
xdotool mousemove 950 736
sleep 0.3
xdotool click 1
check "Beenden ends the program" program_ends 10
settle
shot 06-icon-gone
finish
