# shellcheck shell=bash
# Sourced by the black-box tests: the whole program, driven by its settings alone.
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit 1
# A prefix and a home of its own for each test, so that they run beside each other.
test_name=blackbox-$(basename "$0" .sh)${*:+-$*} test_name=${test_name// /-}
wine_home=$PWD/build/wine/$test_name.home
. scripts/wine-env.sh
on_processor $$
here=tests/blackbox
failures=0
trap stop_all EXIT
# No test may depend on the user's screen, and none needs one.
unset DISPLAY WAYLAND_DISPLAY

check() { # TEXT COMMAND...
    local text=$1; shift
    if "$@"; then printf 'ok    %s\n' "$text"; else printf 'WRONG %s\n' "$text"; failures=$((failures + 1)); fi
}
finish() { [ "$failures" = 0 ] && exit 0; printf '%s checks failed\n' "$failures"; exit 1; }
stop_here() { printf 'WRONG %s\n' "$*"; exit 1; }

need_width() { # 64|32
    have_wine || stop_here "Wine is not installed: scripts/install-tools.sh whole"
    [ "$1" = 64 ] || have_wine32 || stop_here "Wine has no 32-bit half here: scripts/install-tools.sh whole"
    [ -f "build/win$1/Bromvale.exe" ] || stop_here "build/win$1/Bromvale.exe is missing: ./test.sh build"
}

scanned_keys=('HKCU\Software\Classes\CLSID' 'HKLM\Software\Classes\CLSID'
    'HKCU\Software\Classes\Interface' 'HKLM\Software\Classes\Interface'
    'HKCU\Software\Classes\TypeLib' 'HKLM\Software\Classes\TypeLib'
    'HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths'
    'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall'
    'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall')

# A prefix whose scanned keys hold what FILE.reg says and nothing else, with the settings of an automatic run.
prepare() { # 64|32 FILE.reg
    local key
    use_prefix "$test_name" "$1" || exit 1
    reset_prefix
    in_wine wineserver -p20
    in_wine "$wine_loader" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
    for key in "${scanned_keys[@]}"; do in_wine "$wine_loader" reg delete "$key" /f >/dev/null 2>&1; done
    register_components
    import_registry "$2"
    rm -rf "$(program_folder)"
    install_program "build/win$1/Bromvale.exe"
    settings AutoScan 1 AutoEntfernen 1 AutoClose 1 1stRun 0
}
settings() { while [ $# != 0 ]; do set_setting "$1" "$2"; shift 2; done; }

program() { (cd "$(program_folder)" && in_wine timeout "${limit:-120}" "$wine_loader" Bromvale.exe "$@" >/dev/null 2>&1); }
inspect() { in_wine "$wine_loader" "build/win$prefix_bits/tests/desktop/inspect_window.exe" "$@" 2>/dev/null | tr -d '\r'; }
undo_file() { find "$(program_folder)/Backup" -name 'R*.reg' 2>/dev/null | sort | tail -n 1; }
undo_files() { find "$(program_folder)/Backup" -name 'R*.reg' 2>/dev/null | wc -l; }
log_file() { printf '%s/bromvale.log' "$(program_folder)"; }

# The scanned keys as they are now, merged into one file of the registry editor.
export_scanned() { # FILE
    local key file=$wine_top/$test_name.part.reg
    : >"$1"
    for key in "${scanned_keys[@]}"; do
        key=${key/#HKLM/HKEY_LOCAL_MACHINE}
        rm -f "$file"
        in_wine "$wine_loader" 'C:\windows\regedit.exe' /E "$(windows_path "$file")" "${key/#HKCU/HKEY_CURRENT_USER}" >/dev/null 2>&1
        [ ! -f "$file" ] || iconv -f UTF-16 -t UTF-8 "$file" >>"$1"
    done
}
