#!/usr/bin/env bash
# The installer and the uninstaller by mouse, through all pages, at 96 and 144 dots an inch, with a screenshot of each.
. "$(dirname "$0")/lib.sh"
need_width 64
artefacts=build/artefacts/setup
rm -rf "$artefacts"

shot() { screenshot "$artefacts/$dpi-$1.png"; }
dialog() { inspect dialog; }
shows() { # TEXT  within half a minute, somewhere in the dialog
    local tries
    for tries in $(seq 12); do dialog | cut -f 4 | tr -d '&' | grep -qF "$1" && return 0; sleep 0.5; done
    dialog
    return 1
}
page() { # NAME TEXT
    check "$dpi DPI: $1" shows "$2"
    xdotool mousemove 5 5
    settle
    shot "$1"
}
press() { # CAPTION
    local left top right bottom
    read -r left top right bottom < <(dialog | awk -F '\t' -v wanted="$1" '$1 == "Button" && $2 == "enabled" { text = $4; gsub("&", "", text)
        if (index(text, wanted)) { print $3; exit } }')
    [ -n "${left:-}" ] || { check "$dpi DPI: the button $1 can be pressed" false; dialog; return; }
    xdotool mousemove $((left + 12)) $(((top + bottom) / 2)) click 1
}
# What an installation could have changed, of the machine as it is.
machine_now() { # NAME
    files_now "$work/files-$1"
    in_wine "$wine_loader" 'C:\windows\regedit.exe' /E "$(windows_path "$work/registry-$1")" 'HKEY_LOCAL_MACHINE\Software' >/dev/null 2>&1
    in_wine "$wine_loader" reg query 'HKCU\Software' >"$work/user-$1" 2>/dev/null
    [ -s "$work/registry-$1" ] && [ -s "$work/user-$1" ]
}
cancelled_at_once() {
    check "the machine can be looked at" machine_now before
    in_wine "$wine_loader" "$setup" >/dev/null 2>&1 &
    running=$!
    shows 'Zielverzeichnis'
    press 'Abbrechen'
    shows 'abbrechen möchten'
    press 'Ja'
    check "cancelled at the first page: it ends" ended $running
    wait $running
    check "with 1" [ $? = 1 ]
    machine_now after
    for what in files registry user; do check "$what: nothing was changed" same "$work/$what-before" "$work/$what-after"; done
}
ended() { local tries; for tries in $(seq 60); do kill -0 "$1" 2>/dev/null || return 0; sleep 0.5; done; return 1; }

for dpi in 96 144; do
    machine 64 win10
    in_wine "$wine_loader" reg delete 'HKCU\Software\Wine\Drivers' /f >/dev/null 2>&1
    in_wine "$wine_loader" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
    stop_wine
    start_xvfb 1024x768 || stop_here "no screen"
    start_desktop 1024x768
    timeout 30 xdotool search --sync --onlyvisible --name 'Wine' >/dev/null 2>&1

    [ "$dpi" != 96 ] || cancelled_at_once
    in_wine "$wine_loader" "$setup" >/dev/null 2>&1 &
    running=$!
    page 1-folder 'für alle Benutzer'
    press 'Weiter'
    page 2-parts 'Komponenten auswählen'
    press 'Zurück'
    shows 'Zielverzeichnis'
    press 'Abbrechen'
    page 3-question 'abbrechen möchten'
    press 'Nein'
    shows 'Zielverzeichnis'
    press 'Weiter'
    shows 'Komponenten auswählen'
    press 'Installieren'
    page 4-done 'Bromvale jetzt starten'
    press 'Bromvale jetzt starten'
    press 'Fertig'
    check "$dpi DPI: it ends" ended $running
    wait $running
    check "$dpi DPI: with 0" [ $? = 0 ]
    check "$dpi DPI: the program is there" [ -f "$(program_folder)/Bromvale.exe" ]

    # The program runs: the question to close it.
    set_setting 1stRun 0
    (cd "$(program_folder)" && in_wine "$wine_loader" Bromvale.exe >/dev/null 2>&1 &)
    in_wine "$wine_loader" build/win64/tests/desktop/inspect_window.exe wait frmMain '' 60
    check "$dpi DPI: the program runs" [ -n "$(inspect control frmMain)" ]
    mkdir -p "$(program_folder)/Backup"
    echo x >"$(program_folder)/Backup/R1.reg"
    in_wine "$wine_loader" 'C:\Program Files\Bromvale\Entfernen.exe' '_?=C:\Program Files\Bromvale' >/dev/null 2>&1 &
    running=$!
    page 5-running 'Bromvale läuft noch'
    press 'OK'
    page 6-remove 'Klicken Sie auf Deinstallieren'
    check "$dpi DPI: the program was closed" [ -z "$(inspect control frmMain)" ]
    press 'Deinstallieren'
    page 7-undo-files 'Sollen sie endgültig gelöscht werden'
    press 'Nein'
    page 8-removed 'entfernt worden'
    press 'Fertig'
    check "$dpi DPI: the removal ends" ended $running
    check "$dpi DPI: the undo file stays" [ -f "$(program_folder)/Backup/R1.reg" ]
    stop_all
done
printf 'screenshots: %s\n' "$artefacts"
finish
