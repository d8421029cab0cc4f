# shellcheck shell=bash
# Sourced by the tests of the portable program, behind lib.sh: a folder as the archive has it, started by its starter.
portable=$wine_top/$test_name.folder

# A prefix of a width, without any of the classes, and the folder; settings that scan and end.
prepare_portable() { # 64|32
    need_width "$1"
    [ -f build/win32/BromvaleStart.exe ] || stop_here "build/win32/BromvaleStart.exe is missing: ./test.sh build"
    use_prefix "$test_name" "$1" || exit 1
    reset_prefix
    in_wine wineserver -p20
    in_wine "$wine_loader" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
    chmod -R u+w "$portable" 2>/dev/null
    rm -rf "$portable"
    mkdir -p "$portable/32" "$portable/64"
    cp build/win32/BromvaleStart.exe "$portable/"
    cp build/win32/Bromvale.exe "$portable/32/"
    [ ! -f build/win64/Bromvale.exe ] || cp build/win64/Bromvale.exe "$portable/64/"
    folder_settings AutoScan 1 AutoClose 1 1stRun 0
}

folder_settings() {
    printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Bromvale]\r\n' >"$portable/Einstellungen.reg"
    while [ $# != 0 ]; do printf '"%s"="%s"\r\n' "$1" "$2" >>"$portable/Einstellungen.reg"; shift 2; done
}

starter() { (cd "$portable" && in_wine timeout "${limit:-120}" "$wine_loader" BromvaleStart.exe "$@" >/dev/null 2>&1); }

# All of a prefix's registry that programs write, both views, without what Wine keeps there for itself.
export_all() { # FILE
    local key part=$wine_top/$test_name.part.reg
    : >"$1"
    for key in 'HKEY_CURRENT_USER\Software' 'HKEY_LOCAL_MACHINE\Software'; do
        rm -f "$part"
        in_wine "$wine_loader" 'C:\windows\regedit.exe' /E "$(windows_path "$part")" "$key" >/dev/null 2>&1
        iconv -f UTF-16 -t UTF-8 "$part" | tr -d '\r' |
            awk '/^\[/ { wines = index($0, "[HKEY_CURRENT_USER\\Software\\Wine") == 1 } !wines' >>"$1"
    done
    [ -s "$1" ]
}
same_registry() { # BEFORE AFTER
    diff "$1" "$2" >"$1.diff" && return 0
    head -n 20 "$1.diff"
    return 1
}
journal_is_there() { in_wine "$wine_loader" reg query 'HKCU\Software\Bromvale-Portable' >/dev/null 2>&1; }
program_log() { printf '%s/%s/bromvale.log' "$portable" "$prefix_bits"; }
wait_for() { local tries; for tries in $(seq 300); do "$@" && return 0; sleep 0.1; done; return 1; }
