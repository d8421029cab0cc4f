#!/usr/bin/env bash
# The navigation bar: every page by mouse, one page at a time, bars that slide open, tool-tips, and the bar by keyboard.
. "$(dirname "$0")/lib.sh"
prepare_example
start_program

frames=(Frame1 Frame2 Frame3 Frame4 Frame5 Frame7)
shown_pages() { local frame; for frame in "${frames[@]}"; do visible "$frame" && printf '%s ' "$frame"; done; }

click_bar() { # bar-item|bar-header NUMBER
    local x y
    read -r x y < <(inspect "$1" Menu "$2") || { check "$1 $2 is in sight" false; return; }
    xdotool mousemove "$x" "$y"
    [ "${3:-}" = hover ] && return
    xdotool click 1
    # A bar slides open; its items have no place until it stands.
    sleep 0.4
    settle
}

show_page() { # FRAME NAME ITEM
    click_bar bar-item "$3"
    shot "$2"
    check "$2 shows $1 alone" equal "$(shown_pages)" "$1 "
    check "$2 leaves the window in one piece" [ -z "$(inspect message-box 2>/dev/null)" ]
}

check "the scan page is there at first" equal "$(shown_pages)" 'Frame1 '
click_bar bar-item 1 hover
sleep 1.2
settle
shot 01-tool-tip
show_page Frame2 02-backup 2
show_page Frame1 03-scan 1
click_bar bar-header 2
shot 04-features-open
show_page Frame4 05-programs 6
show_page Frame7 06-cleanup 7
show_page Frame5 07-options 8
check "the options can't be applied before one is changed" disabled cmdÜbernehmen
click_bar bar-header 3
shot 08-service-open
show_page Frame3 09-bug-report 9
click_bar bar-header 1
show_page Frame1 10-scan-again 1

# By keyboard: from the bar down to "Backup" and in. Return belongs to the form's default button.
keys Home Down space
check "the arrow keys and space open a page too" equal "$(shown_pages)" 'Frame2 '
shot 11-by-keyboard
keys Home space
check "and back" equal "$(shown_pages)" 'Frame1 '

click_bar bar-item 5
check "Beenden ends the program" program_ends 10
finish
