#!/usr/bin/env bash
# The window's sizes: as designed, dragged below the minimum, larger, maximised. 15 twips are a pixel at 96 DPI.
. "$(dirname "$0")/lib.sh"
prepare_example
start_program

size() { local l t r b; read -r l t r b < <(place "$1"); echo "$((r - l)) $((b - t))"; }
drag_corner() { # DX DY
    local l t r b
    read -r l t r b < <(place frmMain)
    xdotool mousemove $((r - 2)) $((b - 2)) mousedown 1 sleep 0.2
    xdotool mousemove_relative -- $(($1 / 2)) $(($2 / 2)) sleep 0.2 mousemove_relative -- $(($1 - $1 / 2)) $(($2 - $2 / 2)) sleep 0.2 mouseup 1
    settle
}
# Distance of a control's edges from the inner bottom right of the window, which the status bar marks.
from_bottom() { local l t r b L T R B; read -r l t r b < <(place "$1"); read -r L T R B < <(place StatusBar); echo $((B - t)); }

check_layout() {
    check "$1: the start button follows the bottom edge" equal "$(from_bottom cmdStart)" "$start_from_bottom"
    check "$1: the boxes follow it too" equal "$(from_bottom chbRegKeysShow)" "$box_from_bottom"
    check "$1: the progress bar stays on the status bar" equal "$(from_bottom ProgressBar)" "$progress_from_bottom"
}

start_from_bottom=$(from_bottom cmdStart) box_from_bottom=$(from_bottom chbRegKeysShow)
progress_from_bottom=$(from_bottom ProgressBar)
echo "      at start: window $(size frmMain), list $(size lvwRegKeys)"
shot 01-design-size
read -r width height < <(size frmMain)
read -r list_width list_height < <(size lvwRegKeys)

drag_corner 120 90
read -r wide high < <(size frmMain)
check "dragging the corner makes it larger" [ "$wide" -gt "$width" -a "$high" -gt "$height" ]
check "the list grows with the window" equal "$(size lvwRegKeys)" "$((list_width + wide - width)) $((list_height + high - height))"
check_layout larger
shot 02-larger

drag_corner -400 -400
check "below the minimum it snaps back to 10515 x 7800 twips" equal "$(size frmMain)" '701 520'
check_layout minimum
shot 03-minimum

read -r left top right bottom < <(place frmMain)
xdotool mousemove $(((left + right) / 2)) $((top + 14)) click --repeat 2 --delay 80 1
settle
read -r left top right bottom < <(place frmMain)
check "a double click on the caption fills the desktop" [ "$left" -le 0 -a "$top" -le 0 -a "$right" -ge 1024 -a "$bottom" -ge 740 ]
check_layout maximised
shot 04-maximised
finish
