#!/usr/bin/env bash
# The main job by mouse: start (by Return, which many people press first), show the results, mark two rows, remove these by
# the context menu, remove the rest, close.
. "$(dirname "$0")/lib.sh"
prepare_example
start_program
shot 01-start
check "the button reads &Start" equal "$(text_of cmdStart)" '&Start'
check "the window is called Bromvale" equal "$(text_of frmMain)" Bromvale
check "the result list is hidden" hidden lvwRegKeys
check "its box can't be ticked yet" disabled chbRegKeysShow
check "the panels stand as designed" equal "$(inspect panels StatusBar | tr '\n' '|')" "Status|Version $(program_version)||"

# The navigation bar has the keyboard, but the default button wears the frame.
keys Return
inspect wait cmdStart '&Entfernen' 120 || stop_here "Return right after the start begins no scan that ends"
settle
shot 02-report
check "the scan says that it is done" equal "$(text_of lblScanTxt)" 'Scanvorgang erfolgreich abgeschlossen.'
report=$(text_of lblScanBericht)
echo "      report: $report"
found=$(sed -nE 's/.*\(([0-9]+) von [0-9]+ Einträgen = .*%\)$/\1/p' <<<"$report")
check "the report counts the faults" [ "${found:-0}" -gt 2 ]
check "the results may be shown now" enabled chbRegKeysShow
check "and are still hidden" hidden lvwRegKeys

click chbRegKeysShow
shot 03-results
check "the list is shown" visible lvwRegKeys
check "the box for marked rows is enabled" enabled chbMarkierteKeysEntfernen
all_rows=$(inspect rows lvwRegKeys)
check "the list holds what the report counts" equal "$(wc -l <<<"$all_rows")" "$found"
check "the fourth column has no width" equal "$(inspect widths lvwRegKeys | cut -d ' ' -f 4)" 0

# Two rows whose keys have no sub keys, so that NT deletes them.
mapfile -t picks < <(grep -n 'InprocServer32]' <<<"$all_rows" | grep '@' | cut -d : -f 1 | sed -n '2p;4p')
[ ${#picks[@]} = 2 ] || stop_here "the example has too few servers among its faults"
click_row lvwRegKeys "${picks[0]}"
click_row lvwRegKeys "${picks[1]}" 1 ctrl
shot 04-two-marked
marked=$(inspect rows lvwRegKeys | grep '^\*' | sed 's/^\*/-/')
check "two rows are marked" equal "$(wc -l <<<"$marked")" 2

click_row lvwRegKeys "${picks[1]}" 3
shot 05-menu
# The first item of the menu that opened at the mouse.
eval "$(xdotool getmouselocation --shell)"
xdotool mousemove $((X + 30)) $((Y + 12)) click 1
inspect wait lblScanBericht 'Die markierten Fehler wurden erfolgreich entfernt und gesichert.' 30
check "the report names the marked faults" [ $? = 0 ]
settle
shot 06-marked-removed
left=$(inspect rows lvwRegKeys)
check "two rows are gone" equal "$(wc -l <<<"$left")" $((found - 2))
check "they are the marked ones" equal "$(sort <(printf '%s\n' "$marked" "$left") | tr -d '*-')" "$(sort <<<"$all_rows" | tr -d '*-')"
check "the box for marked rows is unticked again" [ "$(field chbMarkierteKeysEntfernen 3)" = - ]
check "the button still offers the removal" equal "$(text_of cmdStart)" '&Entfernen'
first_undo=$(undo_files)
check "the marked rows are in the undo file" tests/desktop/check_undo "$first_undo" <<<"$marked"
while IFS=$'\t' read -r _ key _; do
    key=${key#[} key=${key%]}
    check "$key is deleted" eval '! in_wine "$wine_loader" reg query "$key" >/dev/null 2>&1'
done <<<"$marked"

sleep 1 # undo files are named by the second
click cmdStart
inspect wait cmdStart '&Start' 30 || stop_here "the removal does not end"
settle
shot 07-all-removed
check "the report names the faults found" equal "$(text_of lblScanBericht)" 'Die erkannten Fehler wurden erfolgreich entfernt und gesichert.'
check "the list is hidden again" hidden lvwRegKeys
check "its box is unticked and disabled" eval 'disabled chbRegKeysShow && [ "$(field chbRegKeysShow 3)" = - ]'
check "the list is empty" equal "$(inspect rows lvwRegKeys)" ''
check "there are two undo files" equal "$(undo_files | wc -l)" 2
check "the other rows are in the second one" tests/desktop/check_undo "$(undo_files | grep -vF "$first_undo")" <<<"$left"

click_close_box
check "the close box ends the program" program_ends 10
settle
shot 08-closed
finish
