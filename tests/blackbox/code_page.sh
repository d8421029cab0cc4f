#!/usr/bin/env bash
# code_page.sh LOCALE: a system of another code page. What its characters name is judged rightly or left alone; undo file
# and complete copy are written under names that can be listed, and the copy puts everything back.
wine_locale=$1
. "$(dirname "$0")/lib.sh"
need_width 64
work=$wine_top/$test_name.work
rm -rf "$work"
mkdir -p "$work"
iconv -f UTF-8 -t UTF-16LE <(printf '\xef\xbb\xbf'; sed 's/$/\r/' $here/code_page.reg) >"$work/seed.reg"

prepare 64 "$work/seed.reg"
set_windows_version Bromvale.exe winxp
for file in 'Źródło/jest.dll' '表/ある.dll' 'Łódź/jest.dll' 'Größe/da.dll'; do
    mkdir -p "$prefix/drive_c/Daten/${file%/*}"
    : >"$prefix/drive_c/Daten/$file"
done
export_scanned "$work/before"
program
check "the program ends by itself with status 0" [ $? = 0 ]
export_scanned "$work/after"

gone() { ! grep -qF "$1" "$work/after"; }
there() { grep -qF "$1" "$work/after"; }
check "a class whose file is missing is gone" gone '{10000000-0000-0000-0000-000000000001}\InprocServer32'
for live in 2 3 4 5; do
    check "a class whose file is there has stayed ($live)" there "{20000000-0000-0000-0000-00000000000$live}\\InprocServer32"
done
case $wine_locale in
    pl_PL) undo='Rückgängig_*.reg' copy='Vollständig_*.reg' ;;
    *) undo='Rueckgaengig_*.reg' copy='Vollstaendig_*.reg' ;;
esac
count() { find "$(program_folder)/Backup" -name "$1" | wc -l; }
check "there is one undo file" [ "$(count "$undo")" = 1 ]
check "there is one complete copy" [ "$(count "$copy")" = 1 ]
ls "$(program_folder)/Backup"
import_registry "$(find "$(program_folder)/Backup" -name "$copy")"
export_scanned "$work/again"
check "the complete copy puts everything back" cmp "$work/before" "$work/again"
finish
