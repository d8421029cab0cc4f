#!/usr/bin/env bash
# Libraries that somebody has laid beside the starter under the system's names: none of them is loaded.
. "$(dirname "$0")/lib.sh"
. "$here/portable.sh"
prepare_portable 32
planted=build/win32/tests/desktop/planted.dll
[ -f "$planted" ] || stop_here "$planted is missing: ./test.sh build"
for name in version uxtheme wininet comctl32 shell32 winmm msimg32 dwmapi cryptbase imm32 apphelp propsys userenv; do
    cp "$planted" "$portable/$name.dll"
done

starter
check "the starter ends with status 0" [ $? = 0 ]
check "none was loaded" [ -z "$(find "$portable" -name '*.loaded')" ]
# A box of the system loads more.
mkdir "$portable/Einstellungen.lauf"
starter & started=$!
check "it asks" wait_for eval 'inspect message-box | grep -qF "kann nicht geschrieben werden"'
inspect press 7
wait $started
check "none was loaded" [ -z "$(find "$portable" -name '*.loaded')" ]
# One that is asked for by a name of its own does tell.
cp "$planted" "$portable/anders.dll"
in_wine timeout 20 "$wine_loader" rundll32 "$(windows_path "$portable/anders.dll"),none" >/dev/null 2>&1
check "a library that is loaded tells" [ -f "$portable/anders.dll.loaded" ]
finish
