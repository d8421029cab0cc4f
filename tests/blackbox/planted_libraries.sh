#!/usr/bin/env bash
# Libraries that bear the system's names and lie beside the program and in the current folder: none is loaded, although Wine
# is told to take such ones before its own. Start, help and live update ask for several of them.
# Usage: planted_libraries.sh 64|32
. "$(dirname "$0")/lib.sh"
width=$1
need_width "$width"
prepare "$width" tests/blackbox/sound.reg
settings AutoScan 0 AutoEntfernen 0 AutoClose 0 1stRun 1 Protokoll 0
set_windows_version Bromvale.exe win7

compiler=x86_64-w64-mingw32-gcc-win32
[ "$width" = 64 ] || compiler=i686-w64-mingw32-gcc-win32
libraries=(wininet.dll hhctrl.ocx version.dll uxtheme.dll shdocvw.dll wsock32.dll urlmon.dll ws2_32.dll)
elsewhere=$prefix/drive_c/woanders marks=$prefix/drive_c/planted
rm -rf "$elsewhere" "$marks"
mkdir -p "$elsewhere" "$marks"
made=$wine_top/$test_name.made
mkdir -p "$made"
$compiler -s -shared -o "$made/planted.dll" tests/blackbox/planted.c || stop_here "the planted library does not build"
$compiler -s -o "$made/loads_by_name.exe" tests/blackbox/loads_by_name.c || stop_here "the careless program does not build"
for library in "${libraries[@]}"; do
    cp "$made/planted.dll" "$(program_folder)/$library"
    cp "$made/planted.dll" "$elsewhere/$library"
done
prefer() { preferred=$(printf '%s,' "${libraries[@]}") preferred="mscoree,mshtml=;winemenubuilder.exe=d;${preferred%,}=n,b"; }
prefer
planted_here() { (cd "$elsewhere" && in_wine env WINEDLLOVERRIDES="$preferred" "$@"); }

# Windows takes what its own libraries import from a list of known ones, Wine from wherever it comes first: what a program of
# the same imports and the same manifest has loaded before its first instruction, no program can help.
printf '1 24 "resources/bromvale.manifest"\n' | ${compiler%gcc-win32}windres -I. -o "$made/manifest.o" ||
    stop_here "the manifest does not compile"
printf '#include <windows.h>\n#include <commctrl.h>\nint main(void){if(GetTickCount()==1)InitCommonControls();return 0;}\n' |
    $compiler -s -xc - -xnone "$made/manifest.o" -o "$(program_folder)/idle.exe" -lcomctl32 || stop_here "the idle program does not build"
skip_what_idle_loads() { # fails where that is nothing
    local library tested=()
    rm -f "$marks"/*
    planted_here "$wine_loader" 'C:\Program Files\Bromvale\idle.exe' >/dev/null 2>&1
    [ -n "$(ls "$marks")" ] || return 1
    for library in "${libraries[@]}"; do
        if [ -z "$(find "$marks" -name "*_$library")" ]; then tested+=("$library"); continue; fi
        printf 'skip  %s: whatever the program does, a library of Wine has asked for it before\n' "$library"
        rm -f "$(program_folder)/$library" "$elsewhere/$library"
    done
    libraries=("${tested[@]}")
    prefer
}
while skip_what_idle_loads; do :; done
rm -f "$(program_folder)/idle.exe" "$marks"/*
check "most of them can be tested" [ ${#libraries[@]} -ge 6 ]

# The careless program proves that each would be loaded.
cp "$made/loads_by_name.exe" "$(program_folder)/"
planted_here "$wine_loader" "C:\\Program Files\\Bromvale\\loads_by_name.exe" "${libraries[@]}" >/dev/null 2>&1
for library in "${libraries[@]}"; do
    check "a careless program loads $library" [ -n "$(find "$marks" -name "*_$library")" ]
done
rm -f "$(program_folder)/loads_by_name.exe" "$marks"/*

log=$made/loaded
(planted_here env WINEDEBUG=+loaddll "$wine_loader" 'C:\Program Files\Bromvale\Bromvale.exe' >/dev/null 2>"$log" &)
loaded() { # LIBRARY SECONDS: from the system's folder
    local tries
    for tries in $(seq $(($2 * 10))); do
        grep -qi "system32\\\\\\\\$1\\|syswow64\\\\\\\\$1" "$log" && return 0
        sleep 0.1
    done
    return 1
}
check "the window opens" inspect wait frmMain '' 60
check "the first start has loaded the system's help" loaded hhctrl.ocx 20
press_bar() { local x y; read -r x y < <(inspect "$1" Menu "$2"); inspect press "$x" "$y"; sleep 1; }
press_bar bar-header 3
press_bar bar-item 10
check "the live update has loaded the system's internet library" loaded wininet.dll 20
check "nothing that was planted was loaded" [ -z "$(ls "$marks")" ]
ls "$marks"
finish
