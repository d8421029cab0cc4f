#!/usr/bin/env bash
# The navigation bar: every page by mouse, one page at a time, bars that slide open, tool-tips, and the bar by keyboard.
. "$(dirname "$0")/lib.sh"
prepare_example
start_program

frames=(Frame1 Frame2 Frame3 Frame4 Frame5 Frame7)
shown_pages() { local frame; for frame in "${frames[@]}"; do visible "$frame" && printf '%s ' "$frame"; done; }

# The bar draws its items itself; this is where their icons are at 96 DPI. A header is 21 pixels high, an item 63 or,
# with a caption of two lines, 76.
point_at() { # top|bottom PIXELS
    local left top right bottom
    read -r left top right bottom < <(place Menu)
    if [ "$1" = top ]; then top=$((top + $2)); else top=$((bottom - $2)); fi
    xdotool mousemove $(((left + right) / 2)) "$top"
}
click_at() { point_at "$@"; xdotool click 1; sleep 0.4; settle; }
open_allgemein() { click_at top 12; }
open_features() { click_at bottom 33; }
open_service() { click_at bottom 12; }

show_page() { # FRAME NAME Y
    click_at top "$3"
    shot "$2"
    check "$2 shows $1 alone" equal "$(shown_pages)" "$1 "
    check "$2 leaves the window in one piece" [ -z "$(inspect message-box 2>/dev/null)" ]
}

check "the scan page is there at first" equal "$(shown_pages)" 'Frame1 '
point_at top 48
sleep 1.2
settle
shot 01-tool-tip
show_page Frame2 02-backup 124
show_page Frame1 03-scan 48
open_features
shot 04-features-open
show_page Frame4 05-programs 69
show_page Frame7 06-cleanup 145
show_page Frame5 07-options 221
check "the options can't be applied before one is changed" disabled cmdÜbernehmen
open_service
shot 08-service-open
show_page Frame3 09-bug-report 90
open_allgemein
show_page Frame1 10-scan-again 48

# By keyboard: from the bar down to "Backup" and in.
keys Home Down Return
check "the arrow keys and Return open a page too" equal "$(shown_pages)" 'Frame2 '
shot 11-by-keyboard
keys Home Return
check "and back" equal "$(shown_pages)" 'Frame1 '

click_at top 326
check "Beenden ends the program" program_ends 10
finish
