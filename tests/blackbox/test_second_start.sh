#!/usr/bin/env bash
# A second start ends silently: no window, no message, no line in the log; the first one goes on.
. "$(dirname "$0")/lib.sh"
need_width 64
prepare 64 tests/blackbox/sound.reg
settings AutoScan 0 AutoEntfernen 0 AutoClose 0 1stRun 0 Protokoll 0

(program &)
in_wine "$wine_loader" build/win64/tests/desktop/inspect_window.exe wait frmMain '' 60
check "the first start opens its window" [ $? = 0 ]
windows_before=$(inspect all | wc -l)
log_before=$(cat "$(log_file)")
check "the log begins with the start record" grep -q '; started; Bromvale; ' <<<"$log_before"

limit=20 program
check "the second start ends by itself with status 0" [ $? = 0 ]
check "the log is as it was" [ "$(cat "$(log_file)")" = "$log_before" ]
check "no window is added" [ "$(inspect all | wc -l)" = "$windows_before" ]
check "no message is shown" [ -z "$(inspect message-box)" ]
finish
