#!/usr/bin/env bash
# The share that the 32-bit program shows is the one of doubles: 23 / 160 * 100 lies just below the middle of two hundredths,
# and in the middle where the coprocessor keeps all its digits.
. "$(dirname "$0")/lib.sh"
need_width 32
entries=build/artefacts/blackbox/share.reg
mkdir -p "$(dirname "$entries")"
classes='HKEY_LOCAL_MACHINE\Software\Classes\CLSID'
# Each of the nine scanned keys is an entry, too, and so is each component.
sound=$((160 - 23 - ${#scanned_keys[@]} - $(grep -c '^\[' resources/components.reg)))
{
    printf 'REGEDIT4\r\n\r\n'
    for number in $(seq "$sound"); do
        printf '[%s\\{10000000-0000-0000-0000-%012d}]\r\n@="Sound %d"\r\n\r\n' "$classes" "$number" "$number"
    done
    for number in $(seq 23); do
        printf '[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\weg%02d.exe]\r\n@="C:\\\\Gibt\\\\es\\\\nicht%02d.exe"\r\n\r\n' \
            "$number" "$number"
    done
} >"$entries"
prepare 32 "$entries"
settings AutoScan 1 AutoEntfernen 0 AutoClose 0 Protokoll 0

(program &)
inspect wait lblScanTxt 'Scanvorgang erfolgreich abgeschlossen.' 60
check "the scan ends" [ $? = 0 ]
report=$(inspect text lblScanBericht)
check "the report: $report" [ "$report" = 'Sehr viele Fehler gefunden. (23 von 160 Einträgen = 14,37%)' ]
finish
