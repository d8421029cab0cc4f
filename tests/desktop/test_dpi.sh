#!/usr/bin/env bash
# Every page at 96 and at 144 dots an inch, at the design size and maximised, at 96 at the minimum size too: no control overlaps another
# or leaves its page.
. "$(dirname "$0")/lib.sh"

# The progress bar lies on the status bar; rows of the design touch by up to three of its pixels.
meant() { grep -vE $'^overlap\t(ProgressBar\tStatusBar|StatusBar\tProgressBar)\t' | awk -F '\t' '$1 != "overlap" || $4 > '"$dpi"' / 24'; }
click_bar() {
    local x y
    read -r x y < <(inspect "$1" Menu "$2") || { check "$1 $2 is in sight" false; return; }
    xdotool mousemove "$x" "$y" click 1
    [ "$1" = bar-item ] || sleep 0.4
    settle
}
page() { # NAME FRAME ITEM
    click_bar bar-item "$3"
    xdotool mousemove 2 2
    shot "$dpi-$size-$1"
    check "$dpi DPI, $size: $1 is shown" visible "$2"
    check "$dpi DPI, $size: $1 is in order" equal "$(inspect layout | meant)" ''
}
pages() { # SIZE
    size=$1
    click_bar bar-header 1
    page scan Frame1 1
    page backup Frame2 2
    click_bar bar-header 2
    page programs Frame4 6
    page cleanup Frame7 7
    page options Frame5 8
    click_bar bar-header 3
    page bug-report Frame3 9
}
smallest() {
    local l t r b
    read -r l t r b < <(place frmMain)
    xdotool mousemove $((r - 2)) $((b - 2)) mousedown 1 sleep 0.2
    xdotool mousemove_relative -- -200 -200 sleep 0.2 mousemove_relative -- -200 -200 sleep 0.2 mouseup 1
    settle
}
maximise() {
    local l t r b
    read -r l t r b < <(place frmMain)
    xdotool mousemove $(((l + r) / 2)) $((t + 14)) click --repeat 2 --delay 80 1
    settle
}
error_dialog() {
    (cd "$(program_folder)" && in_wine "$wine_loader" "$bromvale_top/$built/tests/desktop/show_error.exe" 48) >/dev/null 2>&1 &
    inspect wait cmdDetails '' 20 || stop_here "the error dialog does not open"
    settle
    shot "$dpi-error-closed"
    click cmdDetails
    shot "$dpi-error-open"
    check "$dpi DPI: the error dialog is in order" equal "$(inspect layout | grep -E 'cmdDetails|cmdReportSenden|txtDetails|cmdSchließen' | grep -v 'txtDetails.lblErr\|lblErr.*txtDetails')" ''
}

for dpi in 96 144; do
    prepare_example
    in_wine "$wine_loader" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
    stop_wine
    start_program 1400x1050
    pages design
    # The smallest window is hardly less than the designed one; once is enough.
    if [ "$dpi" = 96 ]; then
        smallest
        pages minimum
    fi
    maximise
    pages maximised
    keys alt+F4
    check "$dpi DPI: Alt+F4 ends the program" program_ends 10
    error_dialog
    stop_all
done
finish
