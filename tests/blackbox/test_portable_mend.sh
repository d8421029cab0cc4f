#!/usr/bin/env bash
# Two starts at once, a starter that is killed, a folder that can't be written, and the end of a session.
. "$(dirname "$0")/lib.sh"
. "$here/portable.sh"
prepare_portable 64
before=$wine_top/$test_name.before.reg after=$wine_top/$test_name.after.reg
settings EMail ich@b.de 1stRun 0
export_all "$before"
is_as_before() { export_all "$after" && same_registry "$before" "$after"; }

box() { inspect wait-box "$1" 60; }
begins() { inspect message-box | grep -qF "$1"; }
settings_of() { in_wine "$wine_loader" reg query 'HKCU\Software\Bromvale' /v "$1" 2>/dev/null | tr -d '\r' | sed -n 's/^.* REG_SZ  *//p'; }
end_program() { in_wine "$wine_loader" taskkill /f /im Bromvale.exe >/dev/null 2>&1; }
no_journal() { ! journal_is_there; }

# The starter's own process, which Wine's loader becomes.
start_it() {
    (cd "$portable" && in_wine "$wine_loader" BromvaleStart.exe >/dev/null 2>&1) &
    shell=$!
}
kill_it() { kill -9 "$(pgrep -P $shell)"; wait $shell 2>/dev/null; }

folder_settings AutoScan 0 AutoClose 0 1stRun 0 EMail stick@b.de
start_it
check "the program opens its window" inspect wait frmMain '' 60
check "it has the folder's settings" [ "$(settings_of EMail)" = stick@b.de ]
starter & second=$!
check "a second starter says so" box 'Bromvale wurde auf diesem Rechner schon von einem Datenträger gestartet. Beenden Sie es zuerst und warten Sie einen Augenblick.'
inspect press 2
wait $second
check "and ends with status 1" [ $? = 1 ]

kill_it
starter & second=$!
check "while the program of a killed starter runs, the next one says so" box 'Bromvale läuft schon. Beenden Sie es zuerst, und starten Sie es dann von hier.'
inspect press 2
wait $second
end_program
check "the journal is there" journal_is_there
# What the user has changed in the program before it ended.
settings AutoScan 1 AutoClose 1
starter
check "the next start ends with status 0" [ $? = 0 ]
check "the registry is as it was" is_as_before
check "what was changed before the kill is saved" grep -qa '^"AutoScan"="1"' "$portable/Einstellungen.reg"
check "and was used" [ -s "$(program_log)" ]

file_before=$(cat "$portable/Einstellungen.reg")
# In the way of the file that tells whose settings these are.
mkdir "$portable/Einstellungen.lauf"
starter & second=$!
check "a folder that can't be written is asked about" wait_for begins 'kann nicht geschrieben werden'
inspect press 7
wait $second
check "with No it ends with status 1" [ $? = 1 ]
check "and the registry is as it was" is_as_before
starter & second=$!
wait_for begins 'kann nicht geschrieben werden'
inspect press 6
wait $second
check "with Yes it runs" [ $? = 0 ]
check "and the registry is as it was" is_as_before
check "so are the settings" [ "$(cat "$portable/Einstellungen.reg")" = "$file_before" ]
rmdir "$portable/Einstellungen.lauf"

folder_settings AutoScan 0 AutoClose 0 1stRun 0
start_it
inspect wait frmMain '' 60
inspect end-session BromvaleStart & session=$!
end_program
wait $session
check "the end of the session is waited for" [ $? = 0 ]
check "all is put back by then" no_journal
wait $shell
check "the registry is as it was" is_as_before
finish
