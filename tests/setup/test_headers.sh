#!/usr/bin/env bash
# The installer's file: starts where Bromvale.exe starts, says in German what it is, and comes out the same twice.
. "$(dirname "$0")/lib.sh"
need_width 32
check "it asks Windows for protection" tools/checks/check_hardening --installer "$setup"
check "it imports what Windows 98 and NT4 have" tools/checks/check_imports --for setup "$setup"
flat=$(tr -d '\0' <"$setup")
for words in 'Installation von Bromvale' 'Bromvale developers' "$(basename "$setup" | sed 's/^setup-\(.*\).exe/Bromvale-\1-setup.exe/')"; do
    check "its version tells: $words" grep -aqF "$words" <<<"$flat"
done
manifest=$(grep -ao '<assembly.*</assembly>' <<<"$flat")
check "it asks for the user's highest rights" grep -q 'level="highestAvailable"' <<<"$manifest"
check "it knows Windows 10" grep -q '8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a' <<<"$manifest"
check "it knows scaled screens" grep -q 'dpiAware[^>]*>true' <<<"$manifest"

version=$(basename "$setup" .exe)
again() { # FOLDER COMMAND...
    mkdir -p "$1"
    (cd "$1" && umask 027 && "${@:2}" "$bromvale_top/packaging/setup/build-setup" "$bromvale_top"/build/win{32,64} "${version#setup-}" out.exe)
}
again "$work/one" env SOURCE_DATE_EPOCH=1700000000
sleep 1
again "$work/two/deeper" env SOURCE_DATE_EPOCH=1700000000 TZ=Asia/Tokyo LC_ALL=C USER=other
check "twice the same files make the same bytes" cmp "$work/one/out.exe" "$work/two/deeper/out.exe"
finish
