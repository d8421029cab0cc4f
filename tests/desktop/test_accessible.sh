#!/usr/bin/env bash
# What a reader of the screen hears: asks every control of every page for name, role, state and place, presses the
# navigation bar by its default actions, and listens to what the program tells. Prints the table.
. "$(dirname "$0")/lib.sh"
prepare_example
# The example has no classes, those by which calls go from one process to another neither.
in_wine "$wine_loader" regsvr32 /s oleacc.dll oleaut32.dll ole32.dll
start_program

reader() { in_wine "$wine_loader" "$built/tests/desktop/read_accessible.exe" "$@" | sed -u 's/\r//'; return "${PIPESTATUS[0]}"; }
shown_pages() { inspect all | awk -F '\t' '$1 ~ /^Frame[123457]$/ && $3 == "visible" { printf "%s ", $1 }'; }
stops=0
table() { # PAGE: each control of it
    printf -- '--- %s\n' "$1"
    reader table >"$artefacts/$1.txt"
    local found=$?
    cut -c 1-150 "$artefacts/$1.txt"
    check "$1: every control answers with a name" [ "$found" = 0 ]
    stops=$((stops + $(grep -c '^\* ' "$artefacts/$1.txt")))
}
names() { cut -f 2 "$artefacts/$1.txt" | paste -sd '|'; }
line() { grep "^. *$2	" "$artefacts/$1.txt"; }
has() { grep -qF -- "$2" <<<"$1" || { printf '      in:     %s\n      wanted: %s\n' "$1" "$2"; return 1; }; }
mkdir -p "$artefacts"

open_page() { # BAR ITEM FRAME
    reader press Menu "$1"
    check "the bar $1 is open" waits_for "$1" expanded
    check "$2 is pressed" reader press Menu "$2"
    local tries
    for tries in $(seq 50); do [ "$(shown_pages)" = "$3 " ] && break; sleep 0.1; done
    check "and its page is there" equal "$(shown_pages)" "$3 "
}
waits_for() { # PART STATE
    local tries
    for tries in $(seq 50); do reader part Menu "$1" | cut -f 4 | grep -q "$2" && return 0; sleep 0.1; done
    return 1
}

# --- the bar --------------------------------------------------------------------------------------------

table scan
bar='Registry Scan starten|Backup|Registriereditor starten|Hilfe|Beenden'
check "the bar's parts stand in their order" equal "$(reader walk Menu all | paste -sd '|')" \
    "Allgemein|$bar|Features|Programme deinstallieren|Festplatte aufräumen|Optionen|Service|Bug-Report|Live-Update|Homepage"
check "those that are seen go from one to the next" equal "$(reader walk Menu seen | paste -sd '|')" "Allgemein|$bar|Features|Service"
check "the bar has the keyboard itself at first" equal "$(reader focus | cut -f 1)" Navigation
check "an open bar says so" has "$(reader part Menu Allgemein)" expanded
check "a closed one offers to open" has "$(reader part Menu Features)" Öffnen
check "an item tells what it is for" has "$(reader part Menu Backup)" 'Hier können Sie die entfernten Einträgen wieder'
check "and is found at its place" reader hit Menu Backup
check "so is a header" reader hit Menu Service
check "one of a closed bar is not seen" has "$(reader part Menu Optionen)" invisible

reader events 2 >"$artefacts/bar-events.txt" &
listener=$!
for tries in $(seq 50); do grep -q listening "$artefacts/bar-events.txt" && break; sleep 0.1; done
keys Home Down
check "the keyboard brings the focus to an item" equal "$(reader focus | cut -f 1)" Backup
check "which is marked" has "$(reader part Menu Backup)" selected,focused
keys Page_Down
check "the next bar opens at its first item" equal "$(reader focus | cut -f 1)" 'Programme deinstallieren'
check "a part takes the keyboard when it is told to" reader select Menu Allgemein
check "and has it" equal "$(reader focus | cut -f 1)" Allgemein
wait "$listener"
heard() { cut -f 2- "$artefacts/bar-events.txt" | grep -qxF "$1	Menu	$2"; }
check "the focus is told as it moves" heard focus Backup
check "the mark too" heard selection Backup
check "the focus in the opened bar" heard focus 'Programme deinstallieren'
check "and that the bar is open" heard state Features

# --- the pages ------------------------------------------------------------------------------------------

open_page Allgemein Backup Frame2
table backup
open_page Features 'Programme deinstallieren' Frame4
table programs
open_page Features 'Festplatte aufräumen' Frame7
table cleanup
open_page Features Optionen Frame5
table options
check "fields are called as their labels" has "$(line options 'txtProxyAdresse')" 'Adresse:'
check "the field in a combo box as its box" has "$(line options cboAutoRegFileDel.field)" 'Dateien nach'
open_page Service Bug-Report Frame3
table bug-report
check "the focus says what is to be typed" equal "$(reader focus | cut -f 1)" Fehlernummer:
shot 01-bug-report
open_page Allgemein 'Registry Scan starten' Frame1

# --- a scan ---------------------------------------------------------------------------------------------

reader events 2 >"$artefacts/scan-events.txt" &
listener=$!
for tries in $(seq 50); do grep -q listening "$artefacts/scan-events.txt" && break; sleep 0.1; done
keys alt+s
inspect wait cmdStart '&Entfernen' 120 || stop_here "the scan does not end"
keys Tab space
settle
check "the list of faults is there" visible lvwRegKeys
table scan-results
check "the list has a name" has "$(line scan-results lvwRegKeys)" 'Gefundene Fehler'
check "the panels tell their texts" has "$(line scan-results StatusBar/2)" 'Gefundene Fehler:'
wait "$listener"
told() { awk -F '\t' '$2 == "name" && $3 ~ /^lblScan/' "$artefacts/scan-events.txt"; }
told
check "the scan's end is told" has "$(told)" 'Scanvorgang erfolgreich abgeschlossen.'
check "and what it found" has "$(told | grep lblScanBericht)" Fehler
check "one text a second" equal "$(told | awk -F '\t' 'before && $1 - before < 950 { print } { before = $1 }')" ''
check "the labels tell, when they are asked: the percent too" has "$(told | grep lblScanProzent)" '% fertig'

# --- the error dialog -----------------------------------------------------------------------------------

end_program
(cd "$(program_folder)" && in_wine "$wine_loader" "$bromvale_top/$built/tests/desktop/show_error.exe" 48) >/dev/null 2>&1 &
inspect wait frmError '' 30 || stop_here "the error dialog does not open"
click cmdDetails
table error
in_wine "$wine_loader" taskkill /f /im show_error.exe >/dev/null 2>&1
printf 'stops of the keyboard, over all tables: %s\n' "$stops"
finish
