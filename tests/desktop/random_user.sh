#!/usr/bin/env bash
# The real window under a random user: random_user.sh win32|win64 MINUTES [FIRST-SEED]
#
# Rounds of a minute, each on a fresh example machine: the program is started, the user acts (and the program is started again
# where he ended it), and at the end the promises are looked at: settings and list of folders can be read, and what is gone
# from the registry comes back from the complete copies. What was done and pictures of it lie in build/artefacts/desktop.
width=${1:-win64} minutes=${2:-5} seed=${3:-1}
case $width in win32 | win64) ;; *) echo "win32 or win64" >&2; exit 2 ;; esac
program=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/build/$width/Bromvale.exe
. "$(dirname "$0")/lib.sh"
built=build/$width
test_name=desktop-random-user-$width
artefacts=build/artefacts/desktop/random-user-$width
rm -rf "$artefacts"
mkdir -p "$artefacts"
bits=${width#win}
[ "$bits" = 64 ] || have_wine32 || { echo "Wine has no 32-bit half here"; exit 1; }
round_seconds=60

# No letter leads out of the prefix: what is emptied lies in it.
close_in() { rm -f "$prefix/dosdevices/z:"; }
open_again() { ln -sfn / "$prefix/dosdevices/z:"; }

make_machine() {
    local key folder
    use_prefix "$test_name" "$bits" || exit 1
    open_again
    reset_prefix
    for key in "${scanned_keys[@]}"; do in_wine "$wine_loader" reg delete "$key" /f >/dev/null 2>&1; done
    seed_example
    register_components
    set_windows_version Bromvale.exe winxp
    rm -rf "$(program_folder)" "$prefix/drive_c/Schatten" "$prefix/drive_c/Leeren"
    install_program "$program"
    cp "$built/tests/desktop/random_user.exe" "$prefix/drive_c/"
    mkdir -p "$prefix/drive_c/Leeren/tief" "$(program_folder)/Backup"
    for folder in Leeren Leeren/tief; do touch "$prefix/drive_c/$folder/"{a,b,c}.txt; done
    printf 'C:\\Leeren\r\nQ:\\fehlt\r\nC:\\Leeren\\tief\r\n' >"$(program_folder)/liste.txt"
    : >"$(program_folder)/Backup/alt.reg"
    settings 1stRun 0 ScreenSave 1 DelFilePermanent $((seed % 2)) AutoFileDelAfterReentry $((seed / 2 % 2))
    in_wine wineserver -k
    in_wine wineserver -w
    cp "$prefix/system.reg" "$artefacts/system-before.reg"
    cp "$prefix/user.reg" "$artefacts/user-before.reg"
    close_in
}

# Ends when the round's time is over; a user who ended the program starts it again.
play() {
    local until=$((SECONDS + round_seconds)) record status left
    record=$PWD/$artefacts/seed-$seed.txt
    while left=$((until - SECONDS)); [ "$left" -gt 5 ]; do
        rounds=$((rounds + 1))
        printf -- '-- start %s\n' "$rounds" >>"$record"
        # Into a file: programs that the user has started would keep a pipe open.
        (cd "$prefix/drive_c" && in_wine timeout $((left + 120)) "$wine_loader" 'C:\random_user.exe' "$((seed * 1000 + rounds))" \
            "$left" 'C:\Program Files\Bromvale' 'C:\Schatten' >>"$record" 2>/dev/null)
        status=$?
        check "seed $seed, start $rounds: $(tail -n 1 "$record" | tr -d '\r')" [ "$status" = 0 ]
        [ "$status" = 0 ] || { shot "wrong-$seed-$rounds"; break; }
        # What a user has switched on there would end each start at once, or the screen.
        (cd "$prefix/drive_c" || exit
        settings RebootAfterDelete 0 RebootAfterEntry 0 AutoClose 0 AutoScan 0 Proxy 0)
    done
}

photograph() { while sleep 9; do screenshot "$artefacts/seed-$seed-$((SECONDS / 9)).png" 2>/dev/null; done; }

promises() {
    in_wine wineserver -k
    in_wine wineserver -w
    cp "$prefix/system.reg" "$artefacts/system-after.reg"
    cp "$prefix/user.reg" "$artefacts/user-after.reg"
    check "seed $seed: settings and list can be read" tests/desktop/check_machine readable "$artefacts" "$(program_folder)/liste.txt"
    open_again
    local copy
    (unset DISPLAY
    for copy in "$prefix"/drive_c/Schatten/*.reg; do
        [ ! -f "$copy" ] || in_wine timeout 60 "$wine_loader" 'C:\windows\regedit.exe' /S "$(windows_path "$copy")" >/dev/null 2>&1
    done)
    in_wine wineserver -k
    in_wine wineserver -w
    cp "$prefix/system.reg" "$artefacts/system-back.reg"
    cp "$prefix/user.reg" "$artefacts/user-back.reg"
    check "seed $seed: what is gone comes back whole" tests/desktop/check_machine back "$artefacts"
}

# Registries of example machines differ in nothing between the rounds, but what a user does begins anew with each seed.
until_end=$((SECONDS + minutes * 60))
for (( ; SECONDS < until_end; seed++)); do
    rounds=0
    make_machine
    start_xvfb 1024x768 || exit 1
    start_desktop 1024x768
    timeout 30 xdotool search --sync --onlyvisible --name 'Wine' >/dev/null 2>&1
    photograph &
    photographer=$!
    play
    kill "$photographer" 2>/dev/null
    promises
    kill "$xvfb_pid" 2>/dev/null
    xvfb_pid=
done
finish
