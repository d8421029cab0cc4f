#!/usr/bin/env bash
# The icon in the real notification area: its menu by the right button, its entries, and the end.
. "$(dirname "$0")/lib.sh"
prepare_example
start_program

frames=(Frame1 Frame2 Frame3 Frame4 Frame5 Frame7)
shown_pages() { local frame; for frame in "${frames[@]}"; do visible "$frame" && printf '%s ' "$frame"; done; }
# The only icon stands at the right end of the task bar.
on_icon() { xdotool mousemove 1013 758; sleep 0.3; xdotool click "$@"; sleep 0.5; settle; }

icon() { import -window root -crop 20x18+1003+750 +repage rgb:- | md5sum; }
# Without a window manager nobody gives the keyboard back when a box has gone that nothing seen had asked for, so the tests
# click the window's caption then.
# Opens the menu, goes down to an entry and takes it.
entry() { local presses=() i; on_icon 3; for i in $(seq "$1"); do presses+=(Down); done; keys "${presses[@]}" Return; }

shot 01-icon
with_icon=$(icon)
on_icon 1
on_icon --repeat 2 --delay 50 1
check "the left button does nothing" equal "$(shown_pages)" 'Frame1 '
on_icon 3
shot 02-menu
keys Down Return
check "the bold entry does nothing" equal "$(shown_pages)" 'Frame1 '
xdotool mousemove 500 300
entry 3
shot 03-backup
check "B&ackup-Bereich shows its page" equal "$(shown_pages)" 'Frame2 '
entry 4
inspect wait lvwDeinstall '' 10
check "Programme &deinstallieren shows its page" equal "$(shown_pages)" 'Frame4 '
entry 5
shot 04-bug-report
check "Bug-&Report shows its page" equal "$(shown_pages)" 'Frame3 '
check "with the focus in the number" equal "$(inspect focus)" txtErrNr
entry 7
shot 05-options
check "&Optionen shows its page" equal "$(shown_pages)" 'Frame5 '
# The host of the web services does not exist.
entry 6
check "&Live-Update asks the web host" inspect wait-box 'Es besteht ein Problem mit Ihrer Internetverbindung.    Stellen Sie sicher, das eine Internetverbindung besteht.    Soll erneut nach einem Update gesucht werden?' 40
shot 06-live-update
keys alt+n
click_caption
entry 2
inspect wait lblScanTxt 'Scanvorgang erfolgreich abgeschlossen.' 120
settle
shot 07-scanned
check "&Scan starten shows the scan page" equal "$(shown_pages)" 'Frame1 '
check "and scans" equal "$(text_of cmdStart)" '&Entfernen'
on_icon 3
keys Up Up Return
check "&Über tells name and version" inspect wait-box "Bromvale $(program_version)" 10
settle
shot 08-about
keys Return
check "the window is as it was" equal "$(shown_pages)" 'Frame1 '
# The menu's last entry, by mouse.
on_icon 3
shot 09-menu-again
xdotool mousemove 950 736
sleep 0.3
xdotool click 1
check "&Beenden ends the program" program_ends 10
settle
xdotool mousemove 500 300
settle
shot 10-icon-gone
check "the icon is gone with it" [ "$(icon)" != "$with_icon" ]
finish
