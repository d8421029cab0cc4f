#!/usr/bin/env bash
# Bug report, live update and web site as a user meets them, against a server on this machine: with an answer, with a newer
# version, with no network. What was sent is read byte by byte from the server's record.
program=build/win64/here/Bromvale.exe
. "$(dirname "$0")/lib.sh"
. scripts/web-env.sh
trap 'stop_web; stop_all' EXIT
prepare_example
settings Proxy 0 EMail '' Protokoll 0
start_web "$(program_version)" || stop_here "the server does not start"
start_program

log_has() { iconv -f CP1252 -t UTF-8 "$(program_folder)/bromvale.log" | grep -qF "$1"; }
box() { check "the box: $1" inspect wait-box "$1" 10; }
first_line() { head -n 1 "$1" | iconv -f CP1252 -t UTF-8 | tr -d '\r'; }
request() { # NUMBER: waits for the record
    local tries
    for tries in $(seq 50); do
        [ -s "$web/request-$1" ] && break
        sleep 0.1
    done
    printf '%s/request-%s' "$web" "$1"
}

bar_group 3
bar_item 9
shot 01-bug-report
check "the focus is in the number" equal "$(inspect focus)" txtErrNr
click cmdBugReportSenden
box 'Sie haben noch keine Fehlernummer angegeben.'
shot 02-no-number
keys Return
click txtErrNr
xdotool type 13
click txtErrDesc
xdotool type 'Typen unvertr'
xdotool type 'aeglich'
click txtErrtxt
xdotool type 'Beim Start'
click txtEMail
xdotool type 'a.b@c.de'
click cmdBugReportSenden
box 'Um Ihnen eine Lösung anbieten zu können,   benötigen wir eine korrekt E-Mail-Adresse.'
shot 03-address-refused
keys Return
check "an address that was refused isn't kept" equal "$(stored EMail)" ''
click txtEMail
keys ctrl+a
xdotool type 'kunde@bromvale.de'
click cmdBugReportSenden
box 'Vielen Dank für Ihre Unterstützung.    Der Bug-Report ist erfolgreich versendet worden.'
shot 04-sent
keys Return
check "the address is kept" equal "$(stored EMail)" 'kunde@bromvale.de'
check "the fields go out in their order, blanks as %20" equal "$(first_line "$(request 1)")" \
    "GET /bug_report.php?bromvaleversion=$(program_version)&errnr=13&errdesc=Typen%20unvertraeglich&errbereich=$(text_of cboErrHow | sed 's/ /%20/g')&os=Windows%20XP&sp=$(text_of cboServicePack | sed 's/ /%20/g')&errtxt=Beim%20Start"
check "what follows the line break comes raw behind it" grep -q '^;%20Bericht%20aus%20dem%20Programm&vonwo=Programm&email_abs=kunde@bromvale.de' "$web/request-1"

bar_item 10
box 'Zur Zeit gibt es kein Update.'
shot 05-no-update
keys Return
check "the version was asked for" equal "$(first_line "$(request 2)")" 'GET /appver.txt HTTP/1.1'

# Reached by the keyboard, a held Return is one order, and answers no box that it has opened.
bar_group 3
keys Home Down
xdotool keydown Return
box 'Zur Zeit gibt es kein Update.'
sleep 2
check "the box is still there" inspect wait-box 'Zur Zeit gibt es kein Update.' 1
xdotool keyup Return
shot 06-held-return
check "one more request came" eval '[ -s "$(request 3)" ] && [ ! -e "$web/request-4" ]'
keys Return
check "a new Return answers it" inspect wait-box '' 5

printf '99.0.0' >"$web/site/appver.txt"
bar_item 10
sleep 2
settle
shot 07-where-to-save
rm -f "$prefix/drive_c/Update.exe"
xdotool type 'C:\Update.exe'
keys Return
sleep 1
check "the update lies where the user wanted it" cmp "$prefix/drive_c/Update.exe" "$web/site/download.php"
settle
shot 08-after-the-download

stop_web
sleep 1
bar_item 10
box 'Es besteht ein Problem mit Ihrer Internetverbindung.    Stellen Sie sicher, das eine Internetverbindung besteht.    Soll erneut nach einem Update gesucht werden?'
shot 09-no-network
keys alt+n
check "the failure is in the log" log_has 'modInternet; LiveUpdate; ; 61000; Es besteht ein Problem mit Ihrer Internetverbindung.'
click cmdBugReportSenden
box 'Es besteht ein Problem mit Ihrer Internetverbindung.    Der Bug-Report konnte noch nicht versendet werden.  Stellen Sie sicher, das eine Internetverbindung besteht.    Soll der Versand noch einmal versucht werden?'
shot 10-not-sent
keys alt+n
check "the page stays filled" equal "$(text_of txtErrNr)" 13
click cmdBugReportLöschen
check "and can be cleared" equal "$(text_of txtErrNr)" ''
shot 11-cleared
end_program
finish
