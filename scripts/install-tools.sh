#!/usr/bin/env bash
# Installs what is missing to build, run and test Bromvale on Debian 12.
# Usage: scripts/install-tools.sh [native|windows|desktop|setup|whole|release|fuzz|browser|all]...
#
# native:  compiler, CMake, GoogleTest, clang's tools      desktop: virtual screen and its tools
# windows: cross compilers and Wine. For run.sh: a Wine without its 32-bit half counts as there, and without the compiler
#          of the help the program is built without its help.
# setup:   the installer's compiler
# fuzz:    the compiler with libFuzzer and its sanitizers      browser: what the help is rendered in
# release: what packs, signs and checks a release
# whole:   both halves of Wine and the compiler of the help. For the tests, which leave nothing out.
# Ends with 0 if everything asked for is there.
# Nothing but packages is changed.
set -u
cd "$(dirname "$0")/.."

native=(cmake g++ ninja-build googletest libgtest-dev libbenchmark-dev python3 clang-format clang-tidy tidy xz-utils
        pkg-config libhivex-dev libcreg-dev libhivex-bin libwin-hivex-perl reglookup
        bubblewrap mold)
windows=(g++-mingw-w64-i686-win32 g++-mingw-w64-x86-64-win32 g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix
         cmake ninja-build python3 locales)
help=(fp-utils)
wine64=(wine wine64 fonts-wine)
wine32=(wine32:i386)
setup=(nsis)
release=("${setup[@]}" lintian diffoscope-minimal minisign python3-jsonschema python3-yaml zip unzip dpkg-dev fakeroot xz-utils git man-db)
fuzz=(clang libclang-rt-14-dev xxd)
browser=(chromium fonts-dejavu-core)
desktop=(xvfb xdotool imagemagick x11-utils xauth procps python3)

log=build/install.log
root=()
updated=

say() { printf '%s\n' "$*" >&2; }

# One check a package: dpkg-query ends with an error as soon as one of several is unknown.
missing() {
    local package
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Abbrev}\n' "$package" 2>/dev/null | grep -q '^.i' || printf '%s\n' "$package"
    done
}

become_root() {
    [ "$(id -u)" = 0 ] && return 0
    if command -v sudo >/dev/null && sudo -n true 2>/dev/null; then root=(sudo -n); return 0; fi
    if command -v sudo >/dev/null && [ -t 0 ]; then root=(sudo); return 0; fi
    return 1
}

run() { "${root[@]}" env DEBIAN_FRONTEND=noninteractive "$@" >>"$log" 2>&1 </dev/null; }

# The lists of one architecture may be out of step with the other's for a while: then apt-get update complains
# although what is needed can be had. Whether it worked shows in the installation.
update() {
    [ "$updated" = "$1" ] && return 0
    run apt-get -o Acquire::Retries=3 update
    updated=$1
}

install() {
    local attempt
    for attempt in 1 2 3; do
        run apt-get -o Acquire::Retries=3 -o DPkg::Lock::Timeout=120 install -y --no-install-recommends "$@" && return 0
        say "Installing failed (attempt $attempt of 3)."
        sleep $((attempt * 3))
        updated=
        update plain
    done
    return 1
}

give_up() {
    say "$1"
    [ -s "$log" ] && { say "The last lines of $log:"; tail -n 15 "$log" >&2; }
    return 1
}

group() {
    local name=$1 lacking; shift
    mapfile -t lacking < <(missing "$@")
    [ ${#lacking[@]} = 0 ] && return 0
    command -v apt-get >/dev/null || { give_up "Missing for $name: ${lacking[*]}. Install them by hand; this system has no apt-get."; return 1; }
    become_root || { give_up "Missing for $name: ${lacking[*]}. Install them as root, or call this script as root."; return 1; }
    say "Installing for $name: ${lacking[*]}"
    update plain
    install "${lacking[@]}" || give_up "These packages could not be installed: ${lacking[*]}"
}

# Where the packages of the main architecture are ahead of the i386 ones, the pair only fits after a step back.
install_both_wines() {
    local release=() codename
    codename=$(. /etc/os-release && printf '%s' "${VERSION_CODENAME:-}")
    [ "$codename" = bookworm ] && release=(-t bookworm)
    run dpkg --add-architecture i386 || return 1
    update i386
    install --allow-downgrades "${release[@]}" "${wine64[@]}" "${wine32[@]}"
}

# Large, and the program runs without it.
group_help() { group help "${help[@]}" || say "The help's compiler can't be had here; Bromvale.chm is left out."; }

group_wine() {
    local lacking
    mapfile -t lacking < <(missing "${wine64[@]}" "${wine32[@]}")
    [ ${#lacking[@]} = 0 ] && return 0
    command -v apt-get >/dev/null || { give_up "Wine is missing and this system has no apt-get."; return 1; }
    become_root || { give_up "Missing for Wine: ${lacking[*]}. Install them as root, or call this script as root."; return 1; }
    say "Installing for Wine: ${lacking[*]}"
    install_both_wines && return 0
    say "The 32-bit half of Wine can't be had here; going on with the 64-bit one."
    group "64-bit Wine" "${wine64[@]}"
}

# What the tests can't do without.
group_whole() {
    local lacking
    group_help
    group_wine || return 1
    mapfile -t lacking < <(missing "${help[@]}" "${wine64[@]}" "${wine32[@]}")
    [ ${#lacking[@]} = 0 ] || { give_up "Missing for the tests: ${lacking[*]}"; return 1; }
}

mkdir -p build
: >"$log"
status=0
[ $# = 0 ] && set -- all
for what in "$@"; do
    case $what in
        native) group native "${native[@]}" || status=1 ;;
        windows) group windows "${windows[@]}" && group_help && group_wine || status=1 ;;
        desktop) group desktop "${desktop[@]}" || status=1 ;;
        setup) group setup "${setup[@]}" || status=1 ;;
        release) group release "${release[@]}" || status=1 ;;
        fuzz) group fuzz "${fuzz[@]}" || status=1 ;;
        browser) group browser "${browser[@]}" || status=1 ;;
        whole) group_whole || status=1 ;;
        all) group native "${native[@]}" && group windows "${windows[@]}" && group_help && group desktop "${desktop[@]}" &&
             group setup "${setup[@]}" && group_wine || status=1 ;;
        *) say "Usage: scripts/install-tools.sh [native|windows|desktop|setup|whole|release|fuzz|browser|all]..."; exit 2 ;;
    esac
done
exit $status
