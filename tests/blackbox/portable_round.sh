#!/usr/bin/env bash
# portable_round.sh 64|32: a scan from the folder, beside a machine's own settings; afterwards the registry is as before.
. "$(dirname "$0")/lib.sh"
. "$here/portable.sh"
prepare_portable "$1"
before=$wine_top/$test_name.before.reg after=$wine_top/$test_name.after.reg
settings AutoScan 0 EMail ich@b.de 1stRun 0
in_wine "$wine_loader" reg add 'HKCU\Software\Bromvale' /v Fremd /t REG_BINARY /d 00ff /f >/dev/null
check "the registry is exported" export_all "$before"

starter
check "the starter ends with status 0" [ $? = 0 ]
check "the program of this width has run" [ -s "$(program_log)" ]
check "and found its components" eval '! grep -qa "wurde nicht gefunden" "$(program_log)"'
export_all "$after"
check "the registry is as it was" same_registry "$before" "$after"
check "the settings are those of the folder" grep -qa '^"AutoClose"="1"' "$portable/Einstellungen.reg"
check "and none of the machine's" eval '! grep -qaE "EMail|Fremd" "$portable/Einstellungen.reg"'
check "nothing else is left in the folder" [ "$(ls "$portable" | tr '\n' ' ')" = '32 64 BromvaleStart.exe Einstellungen.reg ' ]

starter -d
check "the starter hands on its arguments" [ $? = 0 ]
check "the emptying made its list" [ -f "$portable/$prefix_bits/liste.txt" ]

chmod -R u+w "$portable"
finish
