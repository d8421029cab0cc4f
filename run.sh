#!/usr/bin/env bash
# Builds Bromvale and shows it at work.
set -u
cd "$(dirname "$0")"

usage() {
    cat <<'EOF'
./run.sh               installs what is missing, builds Bromvale.exe and its installer, installs it under Wine in a
                       private prefix that holds the example machine's entries, opens its window, scans and prints
                       the report. Without a display it runs on a virtual one and leaves screenshots in build/run. Its
                       web services are a server on this machine, which answers from build/web/site and keeps what it
                       was sent in build/web.
./run.sh --offline [ARGUMENT...]
                       needs no Wine: builds bromvale-offline and runs it, by default on the example machine.
                       Its arguments are told by ./run.sh --offline --help.
./run.sh --fresh       as ./run.sh, on a prefix made anew
./run.sh --help        this text
EOF
}

shots=build/run
say() { printf '%s\n' "$*"; }
die() { printf '%s\n' "$*" >&2; exit 1; }

build() {
    local preset=$1 log=build/$1.log; shift
    mkdir -p build
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" --target "$@"; } >"$log" 2>&1; then
        tail -n 30 "$log" >&2
        die "The build failed. Once more with all its output: cmake --preset $preset && cmake --build --preset $preset"
    fi
}

offline() {
    scripts/install-tools.sh native || die "bromvale-offline can't be built without these tools."
    build native bromvale-offline
    exec build/native/bromvale-offline "$@"
}

# Without Wine there is still the whole program but for its window.
fall_back() {
    say "$1"
    say "Running bromvale-offline on the example machine instead; what failed stands in build/install.log."
    offline
}

inspect() { in_wine "$wine_loader" build/win64/tests/desktop/inspect_window.exe "$@" 2>/dev/null; }

click() {
    local enabled visible checked place rest left top right bottom
    IFS=$'\t' read -r enabled visible checked place rest < <(inspect control "$1" | tr -d '\r')
    read -r left top right bottom <<<"$place"
    xdotool mousemove $(((left + right) / 2)) $(((top + bottom) / 2)) click 1
}

# As a user would, who leaves all pages as they are.
install_silently() {
    in_wine "$wine_loader" "$setup" /S >/dev/null 2>&1
    case $? in
        0) ;;
        3) die "Bromvale is running in $prefix already; close it first." ;;
        *) die "The installer fails." ;;
    esac
}

prepare_prefix() {
    [ -z "$fresh" ] || rm -rf "$wine_top/run64"
    use_prefix run64 64 || return 1
    [ -z "$own_screen" ] || start_xvfb 1024x768 || exit 1
    say "Installing it..."
    install_silently
    if [ ! -f "$prefix/seeded" ]; then
        say "Putting the example machine's entries beside Wine's own..."
        seed_example && associate_undo_files && touch "$prefix/seeded" || return 1
    fi
    # The scan starts with the window, and the first start's help stays closed.
    set_setting AutoScan 1 && set_setting 1stRun 0
}

show() {
    local program
    start_desktop 1024x768
    rm -rf "$shots"
    mkdir -p "$shots"
    (cd "$(program_folder)" && in_wine "$wine_loader" Bromvale.exe) >/dev/null 2>&1 &
    program=$!
    inspect wait frmMain '' 60 || { say "The window does not open." >&2; return 1; }
    say "The window is open; scanning..."
    [ -z "$own_screen" ] || screenshot "$shots/1-scan.png"
    inspect wait lblScanTxt 'Scanvorgang erfolgreich abgeschlossen.' 600 || { say "The scan does not end." >&2; return 1; }
    say "Report: $(inspect text lblScanBericht | tr -d '\r')"
    if [ -n "$own_screen" ]; then
        screenshot "$shots/2-report.png"
        click chbRegKeysShow
        inspect wait lvwRegKeys '' 10 && sleep 0.5 && screenshot "$shots/3-found-entries.png"
        say "No display here: the window was on a virtual one. Its screenshots are in $shots:"
        ls "$shots"
    else
        say "Nothing is removed before you click \"Entfernen\". This ends when you close the window."
        wait "$program"
    fi
}

fresh=
case ${1:-} in
    --help|-h) usage; exit 0 ;;
    --offline) shift; offline "$@" ;;
    --fresh) fresh=1 ;;
    '') ;;
    *) usage >&2; exit 2 ;;
esac

scripts/install-tools.sh windows || fall_back "Wine or the cross compiler can't be installed here."
scripts/install-tools.sh desktop || [ -n "${DISPLAY:-}" ] || fall_back "There is no display, and a virtual one can't be installed."
scripts/install-tools.sh setup || fall_back "The installer's compiler can't be installed here."
say "Building Bromvale.exe, 64-bit and 32-bit, and its installer..."
build win64 bromvale bromvale-here inspect_window
build win32 bromvale bromvale-here

. scripts/wine-env.sh
. scripts/web-env.sh
setup=build/run-setup.exe
packaging/setup/build-setup build/win32 build/win64 "$(program_version)" "$setup" program-here >build/setup.log 2>&1 ||
    { cat build/setup.log >&2; die "The installer can't be made."; }
say "Built: build/win64/Bromvale.exe and build/win32/Bromvale.exe; installed by $setup are the same, but with this machine as web host"
own_screen=
[ -n "${DISPLAY:-}" ] || own_screen=1
trap 'stop_web; stop_all' EXIT
# Nothing is newer than the program, until build/web/site/appver.txt says so.
start_web "$(program_version)" || say "The web services can't be offered here; the program will find no network."
prepare_prefix || fall_back "Wine is installed but can't make its prefix."
show
