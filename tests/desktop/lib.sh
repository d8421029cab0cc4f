# shellcheck shell=bash
# Sourced by the desktop tests: the program in a window, driven by mouse and keyboard, with a screenshot of each stage.
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit 1
# A prefix, a home and a screen of its own for each test, so that they run beside each other.
test_name=desktop-$(basename "$0" .sh | sed s/^test_//)
wine_home=$PWD/build/wine/$test_name.home
. scripts/wine-env.sh
on_processor $$
failures=0
built=build/win64
program=${program:-$built/Bromvale.exe}
program_pid=
artefacts=build/artefacts/desktop/${test_name#desktop-}
trap stop_all EXIT
rm -rf "$artefacts"

check() { # TEXT COMMAND...
    local text=$1; shift
    if "$@"; then printf 'ok    %s\n' "$text"; else printf 'WRONG %s\n' "$text"; failures=$((failures + 1)); fi
}
equal() { [ "$1" = "$2" ] || { printf '      wanted: %s\n      found:  %s\n' "$2" "$1"; return 1; }; }
finish() {
    printf 'screenshots: %s\n' "$artefacts"
    [ "$failures" = 0 ] && exit 0
    printf '%s checks failed\n' "$failures"
    exit 1
}
stop_here() { printf 'WRONG %s\n' "$*"; shot stopped; exit 1; }

# --- the program --------------------------------------------------------------------------------

have_wine || { echo "Wine is not installed: scripts/install-tools.sh windows"; exit 1; }
[ -f "$program" ] || { echo "$program is missing: ./test.sh desktop"; exit 1; }

scanned_keys=('HKCU\Software\Classes\CLSID' 'HKLM\Software\Classes\CLSID'
    'HKCU\Software\Classes\Interface' 'HKLM\Software\Classes\Interface'
    'HKCU\Software\Classes\TypeLib' 'HKLM\Software\Classes\TypeLib'
    'HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths'
    'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall'
    'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall')

# A prefix in which the scanned places hold the example machine and nothing else.
prepare_example() {
    local key
    use_prefix "$test_name" 64 || exit 1
    reset_prefix
    for key in "${scanned_keys[@]}"; do in_wine "$wine_loader" reg delete "$key" /f >/dev/null 2>&1; done
    seed_example
    set_windows_version Bromvale.exe winxp
    rm -rf "$(program_folder)"
    install_program "$program"
    settings 1stRun 0
}
settings() { while [ $# != 0 ]; do set_setting "$1" "$2"; shift 2; done; }

# The screen is the desktop, so that the program's places are the mouse's.
start_program() { # [WIDTHxHEIGHT]
    start_xvfb "${1:-1024x768}" || exit 1
    start_desktop "${1:-1024x768}"
    # A program that comes first would have to make the desktop, and the two may get into each other's way.
    timeout 30 xdotool search --sync --onlyvisible --name 'Wine' >/dev/null 2>&1
    (cd "$(program_folder)" && in_wine "$wine_loader" Bromvale.exe) >/dev/null 2>&1 &
    program_pid=$!
    inspect wait frmMain '' 60 || stop_here "the window does not open"
    settle
}
program_ends() { # within SECONDS
    local tries
    for tries in $(seq $(($1 * 10))); do
        kill -0 "$program_pid" 2>/dev/null || return 0
        sleep 0.1
    done
    return 1
}
end_program() { click_close_box; check "the close box ends the program" program_ends 10; }
stored() { in_wine "$wine_loader" reg query 'HKCU\Software\Bromvale' /v "$1" 2>/dev/null | tr -d '\r' | sed -nE 's/.*REG_SZ *//p'; }
undo_files() { find "$(program_folder)/Backup" -name 'R*.reg' 2>/dev/null | sort; }

# --- looking ------------------------------------------------------------------------------------

inspect() { in_wine "$wine_loader" "$built/tests/desktop/inspect_window.exe" "$@" | tr -d '\r'; return "${PIPESTATUS[0]}"; }
field() { inspect control "$1" | cut -f "$2"; }
enabled() { [ "$(field "$1" 1)" = enabled ]; }
visible() { [ "$(field "$1" 2)" = visible ]; }
hidden() { ! visible "$1"; }
disabled() { ! enabled "$1"; }
checked() { [ "$(field "$1" 3)" = checked ]; }
text_of() { inspect text "$1"; }
shot() { screenshot "$artefacts/$1.png"; }

# --- touching -----------------------------------------------------------------------------------

place() { field "$1" 4; }
move_to_middle() {
    local left top right bottom
    read -r left top right bottom <<<"$1"
    xdotool mousemove $(((left + right) / 2)) $(((top + bottom) / 2))
}
click() { move_to_middle "$(place "$1")"; xdotool click "${2:-1}"; settle; }
keys() { xdotool key --delay 60 "$@"; settle; }
click_row() { # LIST ROW [BUTTON] [MODIFIER]
    local left top right bottom
    read -r left top right bottom < <(inspect row-place "$1" "$2")
    xdotool mousemove $((left + 12)) $(((top + bottom) / 2))
    [ -z "${4:-}" ] || xdotool keydown "$4"
    xdotool click "${3:-1}"
    [ -z "${4:-}" ] || xdotool keyup "$4"
    settle
}
click_header() { move_to_middle "$(inspect header-place "$1" "$2")"; xdotool click 1; settle; }
# The list bar: its groups and items by their numbers.
bar_group() { local x y; read -r x y < <(inspect bar-header Menu "$1"); xdotool mousemove "$x" "$y" click 1; sleep 0.4; settle; }
bar_item() { local x y; read -r x y < <(inspect bar-item Menu "$1"); xdotool mousemove "$x" "$y" click 1; settle; }
click_caption() { local left top right bottom; read -r left top right bottom < <(place frmMain); xdotool mousemove $((left + 200)) $((top + 12)) click 1; settle; }
click_close_box() {
    local left top right bottom
    read -r left top right bottom < <(place frmMain)
    xdotool mousemove $((right - 13)) $((top + 14)) click 1
}
