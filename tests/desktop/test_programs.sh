#!/usr/bin/env bash
# The programs page by mouse and keyboard: what is listed, the order, real uninstallers that start, an entry whose
# uninstaller is missing, and the program's own entry.
. "$(dirname "$0")/lib.sh"
prepare_example
drive=$prefix/drive_c
uninstall='Software\Microsoft\Windows\CurrentVersion\Uninstall'
for root in HKCU HKLM; do in_wine "$wine_loader" reg delete "$root\\$uninstall" /f >/dev/null 2>&1; done
rm -rf "$drive"/Werkzeug* "$drive"/spur-*

# The command interpreter under other names is an uninstaller that leaves a trace.
mkdir -p "$drive/Werkzeug Alpha" "$drive/WerkzeugBeta"
cp "$drive/windows/system32/cmd.exe" "$drive/Werkzeug Alpha/entfernen.exe"
cp "$drive/windows/system32/cmd.exe" "$drive/WerkzeugBeta/weg.exe"
entries=build/artefacts/desktop/programs/entries.reg
mkdir -p "$(dirname "$entries")"
cat >"$entries" <<'REG'
REGEDIT4

[HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Uninstall\Alpha]
"DisplayName"="Alpha Werkzeug"
"UninstallString"="C:\\Werkzeug Alpha\\entfernen.exe /c echo fort>C:\\spur-alpha.txt"

[HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Uninstall\Beta]
"DisplayName"="Beta Werkzeug"
"UninstallString"="\"C:\\WerkzeugBeta\\weg.exe\" /c echo fort>C:\\spur-beta.txt"

[HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Uninstall\Delta]
"DisplayName"="Delta ohne Aufruf"

[HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Uninstall\Namenlos]
"UninstallString"="C:\\WerkzeugBeta\\weg.exe /c echo fort>C:\\spur-namenlos.txt"

[HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zwilling]
"DisplayName"="Zwilling"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zwilling]
"DisplayName"="Zwilling"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Alpha]
"DisplayName"="Alpha der Maschine"
"UninstallString"="cmd.exe /c echo fort>C:\\spur-maschine.txt"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Bromvale]
"DisplayName"="Bromvale 1.0"
"UninstallString"="cmd.exe /c echo fort>C:\\spur-bromvale.txt"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Gamma]
"DisplayName"="Gamma Rest"
"UninstallString"="C:\\Nirgends\\weg.exe /entfernen"
REG
import_registry "$entries"
start_program

names() { inspect rows lvwDeinstall | cut -f 2 | paste -sd '|'; }
eventually() { # COMMAND... within fifteen seconds
    local end=$((SECONDS + 15))
    while :; do
        "$@" && return 0
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}
no_box() { inspect wait-box '' 1 2>/dev/null; }
asked() { # TEXT SHOT: a box that says so opens
    check "a box says: $1" inspect wait-box "$1" 15
    settle
    shot "$2"
}
# The program that a former answer started may have taken the keyboard along; a click on the caption brings it back.
into_box() {
    local left top right bottom
    read -r left top right bottom < <(inspect tops | awk -F '\t' '$1 == "#32770" { print $2; exit }')
    xdotool mousemove $((left + 60)) $((top + 12)) click 1
    settle
}
answer() { into_box; xdotool key "$1"; check "it closes" inspect wait-box '' 15; }
row_of() { inspect rows lvwDeinstall | cut -f 2 | grep -nxF "$1" | cut -d : -f 1 | sed -n "${2:-1}p"; }
trace() { [ -s "$drive/spur-$1.txt" ]; }
has_key() { in_wine "$wine_loader" reg query "$1\\$uninstall\\$2" >/dev/null 2>&1; }
click_bar() { local x y; read -r x y < <(inspect "$1" Menu "$2"); xdotool mousemove "$x" "$y" click 1; sleep 0.4; settle; }

# --- what is listed -------------------------------------------------------------------------------

click_bar bar-header 2
click_bar bar-item 6
eventually eval '[ "$(inspect rows lvwDeinstall | wc -l)" = 8 ]'
settle
shot 01-list
check "the page is shown" visible Frame4
check "the machine's entries stand before the user's, by their keys" equal "$(names)" \
    'Alpha der Maschine|Bromvale 1.0|Gamma Rest|Zwilling|Alpha Werkzeug|Beta Werkzeug|Delta ohne Aufruf|Zwilling'
check "the row of the missing one" equal "$(inspect rows lvwDeinstall | grep Gamma | cut -f 2- | tr '\t' '|')" \
    'Gamma Rest|C:\Nirgends\weg.exe /entfernen|-2147483646|Software\Microsoft\Windows\CurrentVersion\Uninstall\Gamma]'
check "an entry without a command has an empty column" equal "$(inspect rows lvwDeinstall | grep Delta | cut -f 3)" ''
check "both roots' entries stand" equal "$(inspect rows lvwDeinstall | grep Zwilling | cut -f 4 | sort | paste -sd '|')" '-2147483646|-2147483647'

# --- the order --------------------------------------------------------------------------------------

click_header lvwDeinstall 1
check "a click on the column turns the order round" equal "$(names)" \
    'Zwilling|Zwilling|Gamma Rest|Delta ohne Aufruf|Bromvale 1.0|Beta Werkzeug|Alpha Werkzeug|Alpha der Maschine'
shot 02-descending
click_row lvwDeinstall 1
keys F4
check "F4 turns it back" equal "$(names)" \
    'Alpha der Maschine|Alpha Werkzeug|Beta Werkzeug|Bromvale 1.0|Delta ohne Aufruf|Gamma Rest|Zwilling|Zwilling'

in_wine "$wine_loader" reg add "HKCU\\$uninstall\\Neu" /v DisplayName /d Nachzügler /f >/dev/null
click_row lvwDeinstall 1
keys F5
check "F5 lists a new entry" eventually eval 'names | grep -q Nachzügler'
check "the panel is back" equal "$(inspect panels StatusBar | head -n 1)" Status

# --- the menu ---------------------------------------------------------------------------------------

click_row lvwDeinstall "$(row_of 'Beta Werkzeug')"
click_row lvwDeinstall "$(row_of 'Beta Werkzeug')" 3
shot 04-menu-one
keys Escape
click_row lvwDeinstall "$(row_of 'Gamma Rest')" 1 ctrl
click_row lvwDeinstall "$(row_of 'Gamma Rest')" 3
shot 05-menu-two
keys Escape
check "two rows are marked" equal "$(inspect rows lvwDeinstall | grep -c '^\*')" 2
check "an escaped menu asks nothing" no_box

# --- uninstallers -----------------------------------------------------------------------------------

click_row lvwDeinstall "$(row_of 'Beta Werkzeug')"
click cmdDeinstall
asked 'Wollen Sie das Programm Beta Werkzeug wirklich deinstallieren?' 06-question
answer alt+n
check "No starts nothing" [ ! -e "$drive/spur-beta.txt" ]
click_row lvwDeinstall "$(row_of 'Beta Werkzeug')"
keys Delete
asked 'Wollen Sie das Programm Beta Werkzeug wirklich deinstallieren?' 07-question-by-key
answer Return
check "Yes starts the quoted command" eventually trace beta
check "its row stays" [ -n "$(row_of 'Beta Werkzeug')" ]

# Two marked together, by the menu: two questions, two programs.
click_row lvwDeinstall "$(row_of 'Alpha der Maschine')"
click_row lvwDeinstall "$(row_of 'Alpha Werkzeug')" 1 ctrl
click_row lvwDeinstall "$(row_of 'Alpha Werkzeug')" 3
keys Down Return
asked 'Wollen Sie das Programm Alpha der Maschine wirklich deinstallieren?' 08-first-of-two
into_box
xdotool key Return
asked 'Wollen Sie das Programm Alpha Werkzeug wirklich deinstallieren?' 09-second-of-two
answer Return
check "a path with blanks and without quotes starts" eventually trace alpha
check "a program found by its name alone starts" eventually trace maschine

# --- what can't be started ----------------------------------------------------------------------------

missing='Das Programm kann nicht deinstalliert werden, da das Deinstallationsprogramm fehlt. Soll der Eintrag jetzt entfernt werden?'
click_row lvwDeinstall "$(row_of 'Gamma Rest')"
keys Return
asked 'Wollen Sie das Programm Gamma Rest wirklich deinstallieren?' 10-missing
into_box
xdotool key Return
asked "$missing" 11-missing-question
answer alt+n
check "No keeps the entry" has_key HKLM Gamma
click_row lvwDeinstall "$(row_of 'Gamma Rest')"
click cmdDeinstall
asked 'Wollen Sie das Programm Gamma Rest wirklich deinstallieren?' 12-missing-again
into_box
xdotool key Return
asked "$missing" 13-missing-question-again
answer Return
check "Yes takes the entry away" eventually eval '! has_key HKLM Gamma'
check "and the row" eventually eval '[ -z "$(row_of "Gamma Rest")" ]'
check "the neighbours stay" eval 'has_key HKLM Alpha && has_key HKLM Bromvale && has_key HKCU Delta'
shot 14-entry-gone

click_row lvwDeinstall "$(row_of 'Delta ohne Aufruf')"
click cmdDeinstall
asked 'Wollen Sie das Programm Delta ohne Aufruf wirklich deinstallieren?' 15-no-command
answer Return
sleep 0.3
check "an empty command is passed over" no_box
check "and its entry stays" has_key HKCU Delta

# --- the program's own entry ----------------------------------------------------------------------------

rm -f "$drive"/spur-*
click_row lvwDeinstall "$(row_of 'Bromvale 1.0')"
click_row lvwDeinstall "$(row_of 'Delta ohne Aufruf')" 1 ctrl
click cmdDeinstall
asked 'Der Bromvale kann nur über die Windows Systemsteuerung deinstalliert werden.' 16-own-entry
answer Return
sleep 0.5
check "no row behind it is asked about" no_box
check "nothing was started" eval '! ls "$drive"/spur-* >/dev/null 2>&1'

click_close_box
check "the close box ends the program" program_ends 10
finish
