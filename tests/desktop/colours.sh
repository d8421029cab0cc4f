#!/usr/bin/env bash
# Three schemes of colours, each from the start and each switched to while the program runs: every text that is not disabled
# stands out from its ground by 4.5 to 1 at least.
. "$(dirname "$0")/lib.sh"
. tests/desktop/schemes.sh

readable() { # NAME
    shot "$1"
    places_of_texts >"$artefacts/$1.places"
    tests/desktop/contrast "$artefacts/$1.png" <"$artefacts/$1.places" >"$artefacts/$1.contrast" && return 0
    sed 's/^/      /' <(grep 'TOO LITTLE' "$artefacts/$1.contrast" || echo 'nothing to be read')
    return 1
}
page() { # NAME ITEM
    local x y
    read -r x y < <(inspect bar-item Menu "$2") || { check "$1 is in sight" false; return; }
    xdotool mousemove "$x" "$y" click 1 mousemove 2 2
    settle
    check "$scheme: $1 is to be read" readable "$scheme-$1"
}
pages() {
    bar_group 1
    page scan 1
    page backup 2
    bar_group 2
    page programs 6
    page cleanup 7
    page options 8
    bar_group 3
    page bug-report 9
}

mkdir -p "$artefacts"
for scheme in black white sea; do
    prepare_example
    store_scheme "$scheme"
    stop_wine
    start_program
    [ "$scheme" = black ] || { pages; stop_all; continue; }
    check "$scheme: the start page is to be read" readable "$scheme-start"
    click cmdStart
    inspect wait cmdStart '&Entfernen' 60 || stop_here "the scan does not end"
    click chbRegKeysShow
    check "$scheme: the results are to be read" readable "$scheme-results"
    for next in white sea black; do
        switch_scheme "$next"
        settle
        scheme=$next-later
        check "$scheme: at once" readable "$scheme-at-once"
        pages
    done
    stop_all
done
finish
