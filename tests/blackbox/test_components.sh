#!/usr/bin/env bash
# The set-up of the classes that the start looks for: never over a key that is there, and taken back without touching what
# others have put there.
. "$(dirname "$0")/lib.sh"
need_width 64
use_prefix "$test_name" 64 || exit 1
reset_prefix

socket='{248DD896-BB45-11CF-9ABC-0080C7E7B78D}'
timer='{71A27032-C7D8-11D2-BEF8-525400DFB47A}'
images='{396F7AC9-A0DD-11D3-93EC-00C0DFE7442A}'
bar='{FE1D1F9D-EC4B-11D3-B06C-00500427A693}'
reg() { in_wine "$wine_loader" reg "$@" 2>/dev/null </dev/null | tr -d '\r'; }
default_of() { reg query "$class_root\\$1" /ve | sed -n 's/^.* REG_SZ  *//p'; }
there() { in_wine "$wine_loader" reg query "$class_root\\$1" >/dev/null 2>&1; }
gone() { ! there "$1"; }
ours() { component_rows | grep -F "$1" | cut -f 2; }
all_there() { local id; while read -r id; do there "$id" || return 1; done < <(component_rows | cut -f 1); }

reg add "$class_root\\$socket" /ve /d 'Von jemand anderem' /f >/dev/null
reg add "$class_root\\$socket\\InprocServer32" /ve /d 'C:\x.ocx' /f >/dev/null
add_components
check "each class is there" all_there
check "under a name of our own" [ "$(default_of "$timer")" = "$(ours "$timer")" ]
check "a class that was there keeps its name" [ "$(default_of "$socket")" = 'Von jemand anderem' ]
add_components
check "a second time nothing is added" [ -z "$(sort "$(components_added)" | uniq -d)" ]

reg add "$class_root\\$images\\InprocServer32" /ve /d 'C:\y.ocx' /f >/dev/null
reg add "$class_root\\$bar" /ve /d 'Anders registriert' /f >/dev/null
remove_components
check "what was added is gone" gone "$timer"
check "a class that was there stays" [ "$(default_of "$socket")" = 'Von jemand anderem' ]
check "and its sub key" there "$socket\\InprocServer32"
check "what others put below one of ours stays" there "$images\\InprocServer32"
check "but not our name" [ "$(default_of "$images" | grep -cF "$(ours "$images")")" = 0 ]
check "a class that others have named anew stays" [ "$(default_of "$bar")" = 'Anders registriert' ]
remove_components
check "a second time nothing goes" there "$socket"

# The start that empties the folders has no window to be closed: it must end, also after a component was registered.
add_components
reg delete "$class_root\\$timer" /f >/dev/null
: >"$prefix/drive_c/windows/system32/SSubTmr6.dll"
rm -rf "$(program_folder)"
install_program build/win64/Bromvale.exe
(cd "$(program_folder)" && in_wine "$wine_loader" Bromvale.exe -d) >/dev/null 2>&1 &
emptying=$!
ends() { local tries; for tries in $(seq 300); do kill -0 "$emptying" 2>/dev/null || return 0; sleep 0.1; done; return 1; }
check "the emptying ends by itself" ends
check "the registration left its line" grep -qaF 'RegisterServer; C:\windows\system32\SSubTmr6.dll' "$(program_folder)/bromvale.log"
finish
