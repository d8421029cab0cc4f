#!/usr/bin/env bash
# Installs what is missing and runs the stages of the test run: ./test.sh [STAGE...]
#
# A stage is a workflow preset; it builds what its tests need and runs them. Here are its tools, and its share of the time
# on two cores: all of them but the last two take twenty minutes from a fresh clone.
set -u
cd "$(dirname "$0")" || exit 1

stages=(style native build windows blackbox setup desktop)
declare -A share=([style]=60 [native]=480 [build]=90 [windows]=330 [blackbox]=70 [setup]=60 [desktop]=130 [real]=40 [long]=7200)
declare -A tools=([style]='native windows' [native]='native release' [build]='windows whole release' [windows]='native windows whole'
                  [blackbox]='native windows whole' [setup]='windows whole release desktop' [desktop]='windows whole desktop'
                  [real]=native [long]='native windows whole release desktop fuzz browser')

usage() {
    cat <<'EOF'
./test.sh [STAGE...]   all stages but the last two, or the named ones, in the order of cost:

  style      formatting, layering, the checks of the checks, and clang-tidy over what differs from the last release
  native     all tests on the offline platform, with address, undefined-behaviour and leak checks
  build      Bromvale.exe in both widths, warnings as errors; what the 32-bit one imports
  windows    the tests built for Windows, run under Wine; the lower folders' as 32-bit programs too
  blackbox   the whole program through its settings alone, under Wine and offline
  setup      the installer under Wine, in both widths: the machine before and after it; all its pages by mouse
  desktop    the window by real mouse and keyboard; its screenshots are kept in build/artefacts
  real       two real registries, which are no part of the project: BROMVALE_SHARED_DATA_DIR, or ../shared/data
  long       only where it is named: clang-tidy over every source, 20,000 generated machines, 2,000 random users, all faults
             with the log on, a release made twice in different circumstances, a minute of fuzzing a target, the help in a
             browser

One stage without the tools' installation: cmake --workflow --preset STAGE. One test: ctest --test-dir build/stages -R NAME
EOF
}

data=${BROMVALE_SHARED_DATA_DIR:-../shared/data}
have_real() { [ -f "$data/win7-x86-hklm.reg.xz" ] && [ -f "$data/winme-hklm.reg.xz" ]; }

chosen=()
for stage in "$@"; do
    case " ${stages[*]} real long " in
        *" $stage "*) chosen+=("$stage") ;;
        *) usage; [ "$stage" = --help ]; exit ;;
    esac
done
if [ ${#chosen[@]} = 0 ]; then
    chosen=("${stages[@]}")
    ! have_real || chosen+=(real)
fi

# Many tests under Wine wait more than they work.
: "${CTEST_PARALLEL_LEVEL:=$(($(nproc) + 2))}"
export CTEST_PARALLEL_LEVEL

table=
status=0 real='not run'
for stage in "${stages[@]}" real long; do
    [[ " ${chosen[*]} " == *" $stage "* ]] || continue
    printf '== %s\n' "$stage"
    start=$SECONDS result=
    # shellcheck disable=SC2086
    if ! { scripts/install-tools.sh ${tools[$stage]} && cmake --workflow --preset "$stage"; }; then
        result=failed status=1
        printf 'Stage %s failed. Just this again: ./test.sh %s\n' "$stage" "$stage" >&2
    fi
    [ "$stage" != real ] || real="ran${result:+ and failed}"
    took=$((SECONDS - start))
    [ $took -le "${share[$stage]}" ] || result+=' over its share'
    line=$(printf '%-10s %6s s %6s s  %s' "$stage" "${share[$stage]}" "$took" "$result")
    printf '== %s\n' "$line"
    table+=$line$'\n'
done
printf '\n%-10s %8s %8s\n%s%-10s %8s %6s s\n' stage share took "$table" all '' "$SECONDS"
have_real || real+=" (nothing in $data)"
printf 'Real registries: %s\n' "$real"
exit $status
