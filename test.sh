#!/usr/bin/env bash
# Installs what is missing, builds, and runs the tests: ./test.sh [STAGE...]
set -u
cd "$(dirname "$0")"
top=$PWD
stages=(style native build windows blackbox desktop)

usage() {
    cat <<'EOF'
./test.sh [STAGE...]   all stages, or the named ones, in the order of cost:

  style      formatting, layering, and the checks of the checks
  native     all tests on the offline platform, with address, undefined-behaviour and leak checks
  build      Bromvale.exe in both widths, warnings as errors; what the 32-bit one imports
  windows    the tests built for Windows, run under Wine; core, scanner and contract as 32-bit programs too
  blackbox   the whole program through its settings alone, under Wine and offline
  desktop    the window by real mouse and keyboard; its screenshots are kept in build/artefacts
  long       only where it is named: 20,000 generated machines, and faults everywhere with the log switched on

All tests run in one ctest. One test once more: ctest --test-dir build/all --output-on-failure -R NAME
EOF
}

say() { printf '== %s\n' "$*"; }
fail() {
    printf '\nStage %s failed: %s\nRun just this again: ./test.sh %s\n' "$stage" "$1" "$stage" >&2
    exit 1
}
wanted() { [[ " ${chosen[*]} " == *" $1 "* ]]; }

tools() { scripts/install-tools.sh "$@" || fail "the tools for it can't be installed"; }

build() {
    local preset=$1; shift
    local log=build/$preset.log target=()
    [ $# = 0 ] || target=(--target "$@")
    say "building $preset"
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" "${target[@]}"; } >"$log" 2>&1; then
        grep -nE 'error:|FAILED:|CMake Error|undefined reference' "$log" | head -n 20 >&2
        tail -n 30 "$log" >&2
        fail "the build of preset $preset; all of its output is in $log"
    fi
}

# What needs nothing but the source is told before anything is built.
prepare_style() {
    tools native
    local check
    for check in scripts/check-format tools/checks/check_layering; do
        "$check" || fail "$check"
    done
}
prepare_native() { tools native; build native-asan; }
prepare_build() { tools windows; build win64; build win32; }
prepare_windows() { tools windows native; build win64-tests; build win32-tests; }
prepare_blackbox() { tools windows native; build win64; build win32; build native bromvale-offline; }
prepare_desktop() { tools windows desktop; build win64; build try; }

prepare_long() { tools native; build native test_proof; build native-asan test_proof test_offline; }

chosen=()
for stage in "$@"; do
    case " ${stages[*]} long " in
        *" $stage "*) chosen+=("$stage") ;;
        *) usage; [ "$stage" = --help ]; exit ;;
    esac
done
[ ${#chosen[@]} != 0 ] || chosen=("${stages[@]}")

mkdir -p build
for stage in "${stages[@]}" long; do
    wanted "$stage" && "prepare_$stage"
done

scripts/ctest-all write "${chosen[@]}"
say "running the tests; one of them again: ctest --test-dir build/all --output-on-failure -R NAME"
scripts/ctest-all run
