# shellcheck shell=bash
# Sourced by the installer's tests: the finished installer under Wine, and what it leaves in the registry and on the disk.
. "$(dirname "${BASH_SOURCE[0]}")/../blackbox/lib.sh"
here=tests/setup
setup=$(tests/setup/make_setup) || stop_here "the installer can't be built: scripts/install-tools.sh release"
work=$wine_top/$test_name.work
rm -rf "$work"
mkdir -p "$work"

entry_key='Software\Microsoft\Windows\CurrentVersion\Uninstall\Bromvale'
entry_root=HKLM
menu() { printf '%s/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/Bromvale' "$prefix"; }

# A prefix as a machine without Bromvale, whose scanned keys hold what small.reg says.
machine() { # 64|32 [VERSION]
    local key
    use_prefix "$test_name" "$1" || exit 1
    reset_prefix
    # What an earlier run of the test has left.
    rm -rf "$(program_folder)" "$(program_folder)".neu "$prefix/drive_c/Mein Bromvale" "$prefix"/drive_c/users/*/AppData/Local/Programs "$(menu)"
    in_wine "$wine_loader" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
    [ $# = 1 ] || in_wine "$wine_loader" reg add 'HKCU\Software\Wine' /v Version /d "$2" /f >/dev/null
    for key in "${scanned_keys[@]}"; do in_wine "$wine_loader" reg delete "$key" /f >/dev/null 2>&1; done
    import_registry tests/blackbox/small.reg
    # The shell's own class, by which an installer of this width makes its icons.
    key='HKLM\Software\Classes\CLSID\{00021401-0000-0000-C000-000000000046}\InProcServer32'
    in_wine "$wine_loader" reg add "$key" /ve /d 'C:\windows\system32\shell32.dll' /f >/dev/null
    in_wine "$wine_loader" reg add "$key" /v ThreadingModel /d Apartment /f >/dev/null
    # The rest of what is to be there before anything is compared: Wine makes some keys at the first use. Without its
    # components' classes the program waits for somebody who reads what it tells.
    register_components
    mkdir -p "$prefix/drive_c/warm"
    cp "build/win$1/Bromvale.exe" "$prefix/drive_c/warm/"
    (cd "$prefix/drive_c/warm" && in_wine timeout 60 "$wine_loader" Bromvale.exe -d >/dev/null 2>&1)
    rm -rf "$prefix/drive_c/warm"
    sed 's/^\[/[-/; /^@/d' resources/components.reg >"$work/no-components.reg"
    import_registry "$work/no-components.reg"
    in_wine "$wine_loader" reg delete 'HKCU\Software\Bromvale' /f >/dev/null 2>&1
}

# By a batch file, as Windows gives a line to a program: what stands behind /D= and _?= has no quotes.
started() {
    printf '@echo off\r\n%s\r\nexit %%errorlevel%%\r\n' "$*" | iconv -f UTF-8 -t CP1252 >"$work/started.bat"
    in_wine timeout "${limit:-120}" "$wine_loader" cmd /c "$(windows_path "$work/started.bat")" >/dev/null 2>&1 </dev/null
}
install() { started "$(windows_path "$setup")" /S "$@"; }
entry() { in_wine "$wine_loader" reg query "$entry_root\\$entry_key" /v "$1" 2>/dev/null | tr -d '\r' | sed -nE 's/^ .* REG_(SZ|DWORD) +//p'; }
# The uninstaller itself goes a moment after it has ended.
uninstall() {
    local folder result tries
    folder=$(entry InstallLocation)
    folder=$prefix/drive_c/${folder#?:\\}
    started "$(entry QuietUninstallString)"
    result=$?
    [ $result = 0 ] || return $result
    for tries in $(seq 100); do [ -e "${folder//\\//}/Entfernen.exe" ] || break; sleep 0.1; done
    return 0
}

# The registry without the times of its keys, and all files but temporary ones. The system's list of files that are to go
# at its next start holds the uninstaller's last copy, and Wine dates the driver of its screen at each start.
registry_now() { # FILE
    in_wine wineserver -k; in_wine wineserver -w
    sed -E ':a; /\\$/ { N; s/\\\n *//; ba }
        /^#time=/d; s/^(\[.*\]) [0-9]+$/\1/; /^"(PendingFileRenameOperations|DriverDateData)"=/d
        /^\[System.*Session Manager\\\\Environment\]/,/^$/d' "$prefix/system.reg" "$prefix/user.reg" >"$1"
}
files_now() { # FILE
    (cd "$prefix/drive_c" && find . -path './users/*/Temp/*' -prune -o -path './windows/temp/*' -prune -o -printf '%p\t%s\n' |
        sed -E 's/^(.*)\t4096$/\1/' | sort) >"$1"
}
same() { # FILE FILE
    cmp -s "$1" "$2" && return 0
    diff "$1" "$2" | head -n 20
    return 1
}
