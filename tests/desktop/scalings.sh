#!/usr/bin/env bash
# Every scaling from 100 to 300 %; two screens that are too small for the window; and a window that is dragged to a screen
# of another scaling.
. "$(dirname "$0")/lib.sh"

# The progress bar lies on the status bar; rows of the design touch by up to three of its pixels.
faults() { inspect layout | grep -vE $'^overlap\t(ProgressBar\tStatusBar|StatusBar\tProgressBar)\t' | awk -F '\t' '$1 != "overlap" || $4 > '"$dpi"' / 24'; }
bar() { # bar-header|bar-item NUMBER
    local x y
    read -r x y < <(inspect "$1" Menu "$2") || return 1
    xdotool mousemove "$x" "$y" click 1
    [ "$1" = bar-item ] || sleep 0.4
    settle
}
pages() { # COMMAND: for each page its frame and its item
    bar bar-header 1
    "$1" scan Frame1 1
    "$1" backup Frame2 2
    bar bar-header 2
    "$1" programs Frame4 6
    "$1" cleanup Frame7 7
    "$1" options Frame5 8
    bar bar-header 3
    "$1" bug-report Frame3 9
}
in_order() { # NAME FRAME ITEM
    bar bar-item "$3"
    xdotool mousemove 2 2
    shot "$stage-$1"
    check "$stage: $1 is shown" visible "$2"
    check "$stage: $1 is in order" equal "$(faults)" ''
}
width_and_height() { local l t r b; read -r l t r b < <(place "$1"); echo "$((r - l)) $((b - t))"; }
begin() { # DPI SCREEN
    dpi=$1 stage=$1
    prepare_example
    in_wine "$wine_loader" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null
    stop_wine
    start_program "$2"
}

# 10515 x 7800 twips.
while read -r dpi size; do
    begin "$dpi" "$((dpi * 10))x$((dpi * 7))"
    check "$dpi DPI: the window's size" equal "$(width_and_height frmMain)" "$size"
    pages in_order
    stop_all
done <<'ROWS'
96 701 520
120 876 650
144 1052 780
168 1227 910
192 1402 1040
216 1577 1170
240 1753 1300
264 1928 1430
288 2103 1560
ROWS

# --- small screens ------------------------------------------------------------------------------

within() { # NAME OUTER
    local l t r b L T R B
    read -r l t r b < <(place "$1")
    read -r L T R B < <(place "$2")
    [ "$l" -ge "$L" ] && [ "$t" -ge "$T" ] && [ "$r" -le "$R" ] && [ "$b" -le "$B" ] && return 0
    printf '      %s at %s of %s at %s\n' "$1" "$l $t $r $b" "$2" "$L $T $R $B"
    return 1
}
# A list is as large as the page and is seen from its upper edge on.
begins_within() {
    local l t r b L T R B
    read -r l t r b < <(place "$1")
    read -r L T R B < <(place "$2")
    [ "$t" -ge "$T" ] && [ "$t" -lt "$B" ] && [ "$l" -lt "$R" ]
}
every_stop_in_view() { # NAME FRAME ITEM
    local stop first= tries
    bar bar-item "$3" || { keys Tab; }
    shot "$stage-$1-top"
    for tries in $(seq 20); do
        keys Tab
        stop=$(inspect focus)
        [ "$stop" != "$first" ] || break
        first=${first:-$stop}
        case $stop in
            '' | Menu) continue ;;
            lvw*) check "$stage: $1: $stop begins in view" begins_within "$stop" "$2" ;;
            *) check "$stage: $1: $stop is in view" within "$stop" "$2" ;;
        esac
    done
    shot "$stage-$1-tabbed"
}
for screen in '120 800x600' '144 1280x720'; do
    begin $screen
    stage=${screen/ /-}
    read -r _ _ right bottom < <(place frmMain)
    size=${screen#* }
    check "$stage: the window is within the screen" [ "$right" -le "${size%x*}" -a "$bottom" -le "${size#*x}" ]
    pages every_stop_in_view
    stop_all
done

# --- dragged to another screen ------------------------------------------------------------------

begin 96 2000x1500
all_places() { inspect all | cut -f 1,5; }
before=$(all_places)
for dpi in 168 120; do
    stage=dragged-$dpi
    check "$stage: the window takes it" inspect dpi frmMain "$dpi"
    settle
    pages in_order
done
dpi=96 stage=dragged-back
inspect dpi frmMain 96
bar bar-header 1
in_order scan Frame1 1
check "back on the first screen all is as it was" equal "$(all_places)" "$before"
finish
