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
# As the system itself would prefer them, were they looked for there.
export WINEDLLOVERRIDES='*version,*uxtheme,*wininet,*winmm,*msimg32,*dwmapi,*imm32=n,b'

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
# A planted library that is asked for by its path does tell.
check "a planted library tells when it is loaded" eval \
    'in_wine "$wine_loader" rundll32 "$(windows_path "$portable/version.dll"),none" >/dev/null 2>&1; [ -f "$portable/version.dll.loaded" ]'
finish
