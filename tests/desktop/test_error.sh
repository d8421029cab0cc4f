#!/usr/bin/env bash
# The error dialog: a component that is missing at the start, details, the address, sending, both ways of ending it; and
# its four pictures.
program=build/win64/here/Bromvale.exe
. "$(dirname "$0")/lib.sh"
. scripts/web-env.sh
trap 'stop_web; stop_all' EXIT
prepare_example
settings EMail 'kunde@bromvale.de' ScreenSave 1
# Neither the class nor the file is there; an earlier run in this tree has left one.
rm -f "$prefix/drive_c/windows/system32/vbalIml6.ocx"
in_wine "$wine_loader" reg delete 'HKLM\Software\Classes\CLSID\{396F7AC9-A0DD-11D3-93EC-00C0DFE7442A}' /f >/dev/null 2>&1
start_web "$(program_version)" || stop_here "the server does not start"
start_program
inspect wait cmdDetails '' 10 || stop_here "the error dialog does not open"
settle

height() { local left top right bottom; read -r left top right bottom < <(place frmError); echo $((bottom - top)); }
box() { check "the box: $1" inspect wait-box "$1" 10; }
type_address() { # into the box below the details
    local left top right bottom
    read -r left top right bottom < <(place cmdReportSenden)
    xdotool mousemove $((left - 100)) $(((top + bottom) / 2)) click 1
    keys ctrl+a BackSpace
    xdotool type "$1"
    settle
}

shot 01-missing-component
closed=$(height)
check "the dialog offers the end" equal "$(text_of cmdSchließen)" 'Beenden'
click cmdDetails
shot 02-details
check "the dialog is open" [ "$(height)" -gt $((closed + 100)) ]
check "the button offers the way back" equal "$(text_of cmdDetails)" '<< Details'
check "its message names the file" equal "$(text_of txtDetails | sed -n 4p)" \
    'Die Datei vbalIml6.ocx wurde nicht gefunden. Deinstallieren Sie das Programm und installieren Sie es neu.'
type_address 'a.b@c.de'
click cmdReportSenden
box 'Damit Ihr Support-Fall bearbeitet werden kann,   benötigen wir eine korrekt E-Mail-Adresse,   an eine Lösung gemailt werden kann.'
shot 03-address-refused
keys Return
type_address 'kunde@bromvale.de'
click cmdReportSenden
box 'Vielen Dank für Ihre Unterstützung.    Der Bug-Report ist erfolgreich versendet worden.'
shot 04-sent
keys Return
check "the report names the place of the failure" grep -q '^GET /bug_report.php?.*&errnr=60002&.*&errbereich=Modul:%20modLibRegister%20Funktion:%20CheckLibs&.*&vonwo=Programm&email_abs=kunde@bromvale.de HTTP/1.1' "$web/request-1"
click cmdDetails
check "the dialog closes up" equal "$(height)" "$closed"
shot 05-closed-up
click cmdSchließen
check "Beenden ends the program" program_ends 10
check "by the way that keeps the window's place" [ -n "$(stored Form_Height)" ]

# The dialog's own close box leaves the program alone.
start_again() { (cd "$(program_folder)" && in_wine "$wine_loader" Bromvale.exe) >/dev/null 2>&1 & program_pid=$!; }
start_again
inspect wait cmdDetails '' 20 || stop_here "the error dialog does not open again"
settle
read -r left top right bottom < <(place frmError)
xdotool mousemove $((right - 13)) $((top + 14)) click 1
settle
shot 06-closed-by-its-box
check "the main window stays" visible frmMain
click cmdStart
check "and works" inspect wait lblScanTxt 'Scanvorgang erfolgreich abgeschlossen.' 120
end_program

# A component that is there and not registered: a small window names it for a second.
: >"$prefix/drive_c/windows/system32/vbalIml6.ocx"
start_again
check "the waiting window names the component" inspect wait lblLogin 'Die Komponente C:\windows\system32\vbalIml6.ocx wird nachregistriert.' 20
sleep 0.2
shot 07-registration
inspect wait frmMain '' 20
settle
check "and goes" equal "$(inspect tops | grep -c BromvaleForm)" 1
check "without a dialog" equal "$(inspect control frmError 2>/dev/null)" ''
end_program

for style in 16 48 32 64; do
    (cd "$(program_folder)" && in_wine "$wine_loader" "$bromvale_top/$built/tests/desktop/show_error.exe" $style) >/dev/null 2>&1 &
    program_pid=$!
    inspect wait cmdDetails '' 20 || stop_here "the dialog of style $style does not open"
    settle
    click cmdDetails
    shot "08-style-$style"
    wanted='&Schließen'
    [ $style != 16 ] || wanted=Beenden
    check "style $style has its button" equal "$(text_of cmdSchließen)" "$wanted"
    if [ $style = 48 ]; then
        click cmdSchließen
        check "Schließen leaves the program alone" inspect wait frmMain '' 5
        shot 09-only-the-dialog-is-gone
    fi
    kill "$program_pid" 2>/dev/null
    in_wine "$wine_loader" taskkill /f /im show_error.exe >/dev/null 2>&1
    wait "$program_pid" 2>/dev/null
done
finish
