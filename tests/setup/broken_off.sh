#!/usr/bin/env bash
# An installation that is killed, at one instant after the other, or whose disk is full, leaves the older version working
# or nothing that shows; the next one mends what is left.
. "$(dirname "$0")/lib.sh"
need_width 64
machine 64 win10
folder=$(program_folder)
older=$work/older.exe newer=build/win64/Bromvale.exe
printf 'the program of an older version' >"$older"
step=${BROKEN_OFF_STEP:-50} last=${BROKEN_OFF_LAST:-3000}

is_there() { cmp -s "$folder/Bromvale.exe" "$1"; }
killed_after() { # MILLISECONDS
    in_wine "$wine_loader" "$setup" /S >/dev/null 2>&1 &
    local loader=$!
    sleep "$(printf '%d.%03d' $(($1 / 1000)) $(($1 % 1000)))"
    in_wine "$wine_loader" taskkill /f /im "$(basename "$setup")" >/dev/null 2>&1
    wait $loader
}
whole() {
    is_there "$newer" && cmp -s "$folder/Bromvale.chm" build/win64/Bromvale.chm && [ "$(entry DisplayName)" = Bromvale ] &&
        [ -z "$(find "$folder" "$folder.neu" -name 'Bromvale.*' -type d 2>/dev/null)" ] && [ ! -e "$folder.neu" ]
}

# A first installation: nothing, or a program with its components.
for ((after = 0; after <= last; after += step)); do
    [ ! -f "$folder/Entfernen.exe" ] || uninstall
    rm -rf "$folder"
    killed_after "$after"
    if [ -e "$folder" ]; then
        check "killed after $after ms, first: the program is whole" is_there "$newer"
    else
        check "killed after $after ms, first: no entry shows" [ -z "$(entry DisplayName)" ]
    fi
    install
    check "the next one succeeds" [ $? = 0 ]
    check "and leaves all in its place" whole
done

# Over an older version: one of the two, and the entry.
for ((after = 0; after <= last; after += step)); do
    cp "$older" "$folder/Bromvale.exe"
    mkdir -p "$folder/Backup"
    echo kept >"$folder/Backup/R1.reg"
    killed_after "$after"
    check "killed after $after ms, update: a program is there" eval 'is_there "$older" || is_there "$newer"'
    check "it is in the list" [ "$(entry DisplayName)" = Bromvale ]
    install
    check "the next one succeeds" [ $? = 0 ]
    check "and leaves all in its place" whole
    check "the undo file too" [ "$(cat "$folder/Backup/R1.reg")" = kept ]
done
uninstall
rm -rf "$folder"

# A volume too small for the new files, their copies, or the last of them.
volume=$prefix/drive_x
mkdir -p "$volume"
ln -sfn ../drive_x "$prefix/dosdevices/x:"
mount -t tmpfs -o size=64k none "$volume" || stop_here "no small volume can be made: run this as root"
trap 'umount "$volume"; stop_all' EXIT
for size in 64k 256k 900k 1200k 1300k; do
    mount -o "remount,size=$size" "$volume"
    install '/D=X:\Bromvale'
    check "full at $size: the failure is told" [ $? = 2 ]
    check "nothing is left" [ -z "$(ls "$volume")" ]
    check "no entry is left" [ -z "$(entry UninstallString)" ]
done
mount -o remount,size=8m "$volume"
install '/D=X:\Bromvale'
check "installed where there is room" [ $? = 0 ]
cp "$older" "$volume/Bromvale/Bromvale.exe"
used=$(df -k --output=used "$volume" | tail -n 1)
for room in 0 100 1000 1300; do
    mount -o "remount,size=$((used + room))k" "$volume"
    install '/D=X:\Bromvale'
    check "full with $room KB left: the failure is told" [ $? = 2 ]
    check "the older version stays" cmp -s "$volume/Bromvale/Bromvale.exe" "$older"
    check "with nothing beside" [ -z "$(find "$volume" -mindepth 2 -type d)" ]
done
mount -o remount,size=8m "$volume"
uninstall
finish
