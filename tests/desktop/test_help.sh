#!/usr/bin/env bash
# The help: it opens at the first start and from the bar, only once, and goes with the program.
. "$(dirname "$0")/lib.sh"
[ -f build/win64/Bromvale.chm ] || { echo "build/win64/Bromvale.chm was not built; is chmcmd missing?"; exit 1; }
# Not the example machine: the viewer needs Wine's own classes.
use_prefix "$test_name" 64 || exit 1
reset_prefix
rm -rf "$(program_folder)"
install_program build/win64/Bromvale.exe
register_components

# The main window and the viewer's have the same caption.
windows() { xdotool search --onlyvisible --name '^Bromvale$' 2>/dev/null | wc -l; }
windows_become() { # COUNT
    local tries
    for tries in $(seq 100); do
        [ "$(windows)" = "$1" ] && return 0
        sleep 0.1
    done
    return 1
}

start_again() {
    (cd "$(program_folder)" && in_wine "$wine_loader" Bromvale.exe) >/dev/null 2>&1 &
    program_pid=$!
    inspect wait frmMain '' 60 || stop_here "the window does not open again"
    settle
}

settings 1stRun 1
start_program
check "the first start opens the help" windows_become 2
settle
shot 01-first-start
check "and only the first" equal "$(stored 1stRun)" 0
bar_item 5
check "it doesn't keep the program from ending" program_ends 10
check "and goes with it" windows_become 0

start_again
check "a later start opens the window alone" windows_become 1
bar_item 4
check "Hilfe opens the help" windows_become 2
settle
shot 02-from-the-bar
viewer() { xdotool search --onlyvisible --name '^Bromvale$' 2>/dev/null | sort; }
before=$(viewer)
# The viewer lies before the bar, and is drawn aside by its caption.
xdotool mousemove 500 33 mousedown 1 mousemove --sync 500 300 mousemove --sync 500 700 mouseup 1
settle
shot 03-drawn-aside
bar_item 4
sleep 2
settle
check "a second click brings up the same window" equal "$(viewer)" "$before"
shot 04-once-more
finish
