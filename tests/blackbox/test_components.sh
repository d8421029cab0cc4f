#!/usr/bin/env bash
# A component that is there but not registered. The start that empties the folders has no window to be closed: it must end,
# also after a component was registered.
. "$(dirname "$0")/lib.sh"
need_width 64
use_prefix "$test_name" 64 || exit 1
reset_prefix
register_components
in_wine "$wine_loader" reg delete 'HKLM\Software\Classes\CLSID\{71A27032-C7D8-11D2-BEF8-525400DFB47A}' /f >/dev/null 2>&1
: >"$prefix/drive_c/windows/system32/SSubTmr6.dll"
rm -rf "$(program_folder)"
install_program build/win64/Bromvale.exe
(cd "$(program_folder)" && in_wine "$wine_loader" Bromvale.exe -d) >/dev/null 2>&1 &
emptying=$!
ends() { local tries; for tries in $(seq 300); do kill -0 "$emptying" 2>/dev/null || return 0; sleep 0.1; done; return 1; }
check "the emptying ends by itself" ends
check "the registration left its line" grep -qaF 'RegisterServer; C:\windows\system32\SSubTmr6.dll' "$(program_folder)/bromvale.log"
finish
