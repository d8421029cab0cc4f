#!/usr/bin/env bash
# The button "Abbrechen" in both phases of a scan of 100,000 values. How fast it answers is printed, not judged: the
# machine of a test run may be busy with other things.
. "$(dirname "$0")/lib.sh"
use_prefix "$test_name" 64 || exit 1
reset_prefix
# Written into the stopped prefix: 10,000 classes of ten values, sound and faulty ones.
python3 - "$prefix/system.reg" <<'EOF'
import sys
with open(sys.argv[1], "a", newline="\n") as registry:
    for number in range(10000):
        key = f"Software\\\\Classes\\\\CLSID\\\\{{B0000000-0000-4000-8000-{number:012X}}}"
        registry.write(f'\n[{key}] 1700000000\n@="Probe {number}"\n')
        for value in range(6):
            registry.write(f'"Wert {value}"="Inhalt {value}"\n')
        registry.write(f'\n[{key}\\\\InprocServer32] 1700000000\n@="C:\\\\Probe\\\\{number}.dll"\n')
        registry.write('"ThreadingModel"="Apartment"\n"Mehr"="nichts"\n')
EOF
# Wine reads a whole folder for each file that it looks for in it: the second phase lasts for seconds.
mkdir -p "$prefix/drive_c/Probe"
(cd "$prefix/drive_c/Probe" && seq -f '%g.txt' 2000 | xargs touch)
register_components
set_windows_version Bromvale.exe winxp
rm -rf "$(program_folder)"
install_program build/win64/Bromvale.exe
settings 1stRun 0
start_program

# Without waiting for a settled screen, since the first phase may be over by then.
start_scan() { move_to_middle "$(place cmdStart)"; xdotool click 1; }

# Milliseconds from the click to the end of the scan, the start of the program that sees it included.
abort_time() {
    local since
    since=$(date +%s%N)
    move_to_middle "$(place cmdAbbrechen)"
    xdotool click 1
    inspect wait-enabled cmdStart 10 || return 1
    echo $((($(date +%s%N) - since) / 1000000))
}

aborted() {
    check "the button reads Start" equal "$(text_of cmdStart)" Start
    check "the labels are empty" equal "$(text_of lblScanTxt)$(text_of lblScanProzent)$(text_of lblScanBericht)" ''
    check "the first panel reads Status" equal "$(inspect panels StatusBar | head -n 1)" Status
    check "the list stays hidden" hidden lvwRegKeys
}

start_scan
inspect wait lblScanTxt 'ActiveX' 20 || stop_here "the scan does not start"
shot 01-phase-1
check "the button is disabled during a scan" disabled cmdStart
time_1=$(abort_time) || stop_here "the abort in phase 1 gets no answer"
settle
shot 02-phase-1-aborted
aborted

start_scan
inspect wait lblScanTxt 'Registryschlüssel werden auf Fehler gescannt...' 120 || stop_here "phase 2 does not begin"
sleep 1
shot 03-phase-2
check "the percentage is shown" grep -qE '^[0-9]+% fertig$' <<<"$(text_of lblScanProzent)"
time_2=$(abort_time) || stop_here "the abort in phase 2 gets no answer"
settle
shot 04-phase-2-aborted
aborted
echo "answer of the button: $time_1 ms in phase 1, $time_2 ms in phase 2"
finish
