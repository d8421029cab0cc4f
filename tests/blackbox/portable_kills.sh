#!/usr/bin/env bash
# portable_kills.sh [ROUNDS]: the starter is killed at a different instant each time; the next start mends all.
rounds=${1:-60}
set --
. "$(dirname "$0")/lib.sh"
. "$here/portable.sh"
prepare_portable 64
before=$wine_top/$test_name.before.reg after=$wine_top/$test_name.after.reg
settings EMail ich@b.de 1stRun 0
export_all "$before"

# Half of the kills fall into the start, half of them around the end of the program.
kill_after() { # SECONDS
    (cd "$portable" && in_wine "$wine_loader" BromvaleStart.exe >/dev/null 2>&1) &
    local shell=$!
    sleep "$1"
    kill -9 "$(pgrep -P $shell)" 2>/dev/null
    wait $shell 2>/dev/null
}
end_program() { in_wine "$wine_loader" taskkill /f /im Bromvale.exe >/dev/null 2>&1; }

bad=0 killed=0
for round in $(seq "$rounds"); do
    folder_settings AutoScan 1 AutoClose 1 1stRun 0 EMail stick@b.de
    file_before=$(cat "$portable/Einstellungen.reg")
    kill_after "$(printf '%d.%03d' $((round * 60 / 1000)) $((round * 60 % 1000)))"
    end_program
    ! journal_is_there || killed=$((killed + 1))
    if ! starter || ! export_all "$after" || ! same_registry "$before" "$after" ||
        ! grep -qa '^"EMail"="stick@b.de"' "$portable/Einstellungen.reg"; then
        printf 'round %s: wrong; the file was:\n%s\n' "$round" "$file_before"
        bad=$((bad + 1))
    fi
done
check "each of $rounds kills is mended, $killed of them with a journal" [ "$bad" = 0 ]
check "some fell into a run" [ "$killed" -gt 0 ]
finish
