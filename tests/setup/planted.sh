# shellcheck shell=bash
# Sourced where the installer is started from a folder in which somebody has put libraries of the system's names.
planted_names=(wininet.dll hhctrl.ocx version.dll shfolder.dll riched20.dll userenv.dll setupapi.dll apphelp.dll
    propsys.dll dwmapi.dll cryptbase.dll oleacc.dll clbcatq.dll ntmarta.dll msimg32.dll cabinet.dll profapi.dll secur32.dll
    mpr.dll netapi32.dll urlmon.dll winmm.dll dbghelp.dll wtsapi32.dll linkinfo.dll ntshrui.dll windowscodecs.dll
    textshaping.dll iertutil.dll srvcli.dll samcli.dll sspicli.dll comctl32.dll imm32.dll usp10.dll shlwapi.dll wsock32.dll)
plant() { # FOLDER
    local compiler=i686-w64-mingw32-g++ name
    mkdir -p "$1"
    "$compiler" -DPLANTED_LIBRARY -Os -s -shared -static -o "$1/planted.dll" tests/setup/planted.cpp || return 1
    "$compiler" -Os -s -static -o "$1/loads.exe" tests/setup/planted.cpp -lole32 -lshell32 -lgdi32 || return 1
    for name in "${planted_names[@]}"; do cp "$1/planted.dll" "$1/$name"; done
    rm "$1/planted.dll"
}
loaded() { find "$1" -name '*.loaded' -printf '%f\n' | sed 's/\.loaded$//' | sort; }
# Left to itself Wine takes its own libraries, wherever it finds others of their names; Windows does not.
in_order_of_windows() {
    local names=${planted_names[*]}
    names=${names//.dll/}
    in_wine env WINEDLLOVERRIDES="${names// /,}=n,b;mscoree,mshtml=;winemenubuilder.exe=d" "$@"
}
# What Wine's own basic libraries bring in by name, before a program's first instruction, no program can prevent: it is
# taken out of the folder again. Its common controls look for uxtheme.dll so, for which nothing is planted.
take_out_wines_own() { # FOLDER
    local name
    (cd "$1" && in_order_of_windows "$wine_loader" loads.exe) >/dev/null 2>&1
    for name in $(loaded "$1"); do printf 'taken out, as Wine itself loads it: %s\n' "$name"; rm -f "$1/$name" "$1/$name.loaded"; done
}
