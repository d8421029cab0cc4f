# shellcheck shell=bash
# Sourced by the scripts that run Windows programs: private Wine prefixes below build/wine, a screen, a desktop.
#
#   use_prefix NAME 64|32        makes the prefix NAME if need be; all that follows works in it
#   in_wine COMMAND...           runs a command with the prefix's environment (in_wine "$wine_loader" program.exe ...)
#   reset_prefix                 puts the registry back to what a new prefix holds
#   import_registry FILE.reg     merges a file of the registry editor
#   set_windows_version EXE win98|winme|...
#   set_setting NAME VALUE       one text value of the program's own settings
#   install_program EXE          for tests: Bromvale.exe, and the help that lies beside it, copied without the installer to
#                                where that would put them; program_folder says where that is
#   register_components          for tests: the classes that the start looks for, which the installer registers
#   seed_example                 the example machine's entries and files
#   associate_undo_files         the shell's verbs "Open" and "Edit" for registry files
#   program_version              the version of the program
#   start_xvfb, start_desktop, screenshot FILE.png, settle
#
# Nothing outside the project folder is touched: the home folder, the locale and all caches lie in build/wine.

bromvale_top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
wine_top=${BROMVALE_WINE_TOP:-$bromvale_top/build/wine}
# Wine's recycle bin lies in there: who looks at it and runs beside others takes one of their own.
wine_home=${wine_home:-$wine_top/home}
prefix_name= prefix= prefix_bits= wine_loader=wine
xvfb_pid=
# The X server's key file is found by the real home folder, which the programs in the prefix don't see.
: "${XAUTHORITY:=${HOME:-/}/.Xauthority}"

program_version() { "$bromvale_top/scripts/version"; }
have_wine() { command -v wine >/dev/null && command -v wineserver >/dev/null; }
have_wine32() { have_wine && [ -x /usr/lib/wine/wine ]; }

# German dates need a German locale, which a small machine lacks; one of our own saves changing the system's. The
# locale decides the code page of the prefix, too.
wine_locale=${wine_locale:-de_DE}
make_locale() {
    local made=$wine_top/locale/$wine_locale.UTF-8
    [ -d "$made" ] && return 0
    mkdir -p "$wine_top/locale"
    localedef -i "$wine_locale" -f UTF-8 "$wine_top/locale/new.$$" >/dev/null 2>&1
    mv -T "$wine_top/locale/new.$$" "$made" 2>/dev/null || rm -rf "$wine_top/locale/new.$$"
    [ -d "$made" ] || echo "The locale $wine_locale can't be made; is the package 'locales' there?" >&2
}

in_wine() {
    env -u LANG -u LANGUAGE -u XDG_RUNTIME_DIR \
        WINEPREFIX="$prefix" WINEARCH="win$prefix_bits" WINEDEBUG="${WINEDEBUG:--all}" \
        WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d' \
        LOCPATH="$wine_top/locale" LC_ALL="$wine_locale.UTF-8" XAUTHORITY="$XAUTHORITY" \
        HOME="$wine_home" XDG_CONFIG_HOME="$wine_home/.config" XDG_DATA_HOME="$wine_home/.local/share" \
        XDG_CACHE_HOME="$wine_home/.cache" "$@"
}

# From here on all of this shell runs on one processor, the number's: between two of them the waking of Wine's server takes ten
# times as long as the call that it answers.
on_processor() { taskset -cp $(($1 % $(nproc))) $$ >/dev/null 2>&1; }

stop_wine() {
    [ -d "$prefix" ] || return 0
    in_wine wineserver -k 2>/dev/null
    in_wine wineserver -w 2>/dev/null
    return 0
}

# A base prefix is made once a width; the others are copies that share its big files by hard links.
make_base() {
    local base=$wine_top/base$1
    [ -f "$base/ready" ] && return 0
    rm -rf "$base"
    mkdir -p "$wine_home"
    prefix=$base prefix_bits=$1
    (unset DISPLAY; in_wine timeout 300 wineboot -i >/dev/null 2>&1)
    (unset DISPLAY; in_wine timeout 60 wineserver -w)
    [ -f "$base/system.reg" ] || { echo "Wine could not make a $1-bit prefix in $base" >&2; return 1; }
    # Debian's Wine doesn't look into the folder of its own fonts; without them no caption button has its sign.
    cp /usr/share/wine/fonts/* "$base/drive_c/windows/Fonts/" 2>/dev/null
    touch "$base/ready"
}

copy_base() {
    local base=$1 new=$2.new file
    rm -rf "$new" "$2"
    cp -al "$base" "$new" || return 1
    for file in system.reg user.reg userdef.reg; do
        cp --remove-destination "$base/$file" "$new/$file"
    done
    mv -T "$new" "$2"
}

use_prefix() {
    local name=$1 bits=$2
    # Without the folder above it Wine has no recycle bin, and deletes for good.
    mkdir -p "$wine_home/.local/share"
    exec 9>"$wine_top/lock"
    flock 9
    make_locale
    make_base "$bits" || { exec 9>&-; return 1; }
    [ -f "$wine_top/$name/ready" ] || copy_base "$wine_top/base$bits" "$wine_top/$name" || { exec 9>&-; return 1; }
    exec 9>&-
    prefix_name=$name prefix=$wine_top/$name prefix_bits=$bits
    # Each width by its own loader: the common one prefers 32-bit tools, which see another part of the registry.
    wine_loader=wine
    [ "$bits" != 64 ] || [ ! -x /usr/lib/wine/wine64 ] || wine_loader=/usr/lib/wine/wine64
}

reset_prefix() {
    local file
    stop_wine
    for file in system.reg user.reg userdef.reg; do
        cp --remove-destination "$wine_top/base$prefix_bits/$file" "$prefix/$file"
    done
}

# What Windows sets up for registry files and Wine leaves out: "Open" merges them, "Edit" shows them.
associate_undo_files() {
    in_wine "$wine_loader" reg add 'HKLM\Software\Classes\.reg' /ve /d regfile /f >/dev/null &&
        in_wine "$wine_loader" reg add 'HKLM\Software\Classes\regfile\shell\open\command' /ve /d 'C:\windows\regedit.exe "%1"' /f >/dev/null &&
        in_wine "$wine_loader" reg add 'HKLM\Software\Classes\regfile\shell\edit\command' /ve /d 'C:\windows\notepad.exe "%1"' /f >/dev/null
}

# The registry editor of the prefix's own width, so that no entry is redirected.
import_registry() { in_wine "$wine_loader" 'C:\windows\regedit.exe' /S "$(windows_path "$1")"; }

register_components() { import_registry "$bromvale_top/resources/components.reg"; }
windows_path() { local path; path=$(realpath -m "$1"); printf 'Z:%s' "${path//\//\\}"; }

set_windows_version() {
    in_wine "$wine_loader" reg add "HKCU\\Software\\Wine\\AppDefaults\\$1" /v Version /d "$2" /f >/dev/null
}
set_setting() { in_wine "$wine_loader" reg add 'HKCU\Software\Bromvale' /v "$1" /d "$2" /f >/dev/null; }

program_folder() { printf '%s/drive_c/Program Files/Bromvale' "$prefix"; }
install_program() {
    mkdir -p "$(program_folder)"
    cp "$1" "$(program_folder)/Bromvale.exe"
    [ ! -f "${1%/*}/Bromvale.chm" ] || cp "${1%/*}/Bromvale.chm" "$(program_folder)/"
}

seed_example() { import_registry "$bromvale_top/resources/example/wine.reg" && seed_example_files; }

# files.txt names one file a line by its full Windows path; a line that ends in a backslash is a folder. Below
# C:\WINDOWS Wine has its own.
seed_example_files() {
    local line drive path
    while IFS= read -r line || [ -n "$line" ]; do
        line=${line%$'\r'}
        case $line in [Cc]:\\[Ww][Ii][Nn][Dd][Oo][Ww][Ss]\\*) continue ;; [A-Za-z]:\\*) ;; *) continue ;; esac
        drive=${line%%:*} path=${line#*:}
        drive=${drive,,} path=${path//\\//}
        [ -e "$prefix/dosdevices/$drive:" ] || { mkdir -p "$prefix/drive_$drive"; ln -sfn "../drive_$drive" "$prefix/dosdevices/$drive:"; }
        make_windows_file "$prefix/dosdevices/$drive:" "$path"
    done <"$bromvale_top/resources/example/files.txt"
}

# Makes a file or folder where folders that are there already under another spelling are used as they are.
make_windows_file() {
    local here=$1 rest=${2#/} part found
    while [[ $rest == */* ]]; do
        part=${rest%%/*} rest=${rest#*/}
        [ -n "$part" ] || continue
        found=$(find "$here/" -maxdepth 1 -iname "${part//[\[\]]/?}" -print -quit)
        here=${found:-$here/$part}
        mkdir -p "$here"
    done
    [ -z "$rest" ] || [ -e "$here/$rest" ] || : >"$here/$rest"
}

start_xvfb() {
    local size=${1:-1280x1024} number_file tries
    mkdir -p "$wine_top" "$wine_home"
    # Where there are no defaults at all, X's library looks for them anew for each font that is selected.
    [ -f "$wine_home/.Xdefaults" ] || echo 'bromvale.defaults: none' >"$wine_home/.Xdefaults"
    number_file=$(mktemp "$wine_top/display.XXXXXX")
    Xvfb -displayfd 7 -screen 0 "${size}x24" -nolisten tcp -noreset 7>"$number_file" >/dev/null 2>&1 &
    xvfb_pid=$!
    for tries in $(seq 100); do
        [ -s "$number_file" ] && break
        sleep 0.1
    done
    DISPLAY=:$(cat "$number_file")
    export DISPLAY
    rm -f "$number_file"
    [ "$DISPLAY" != : ] || { echo "Xvfb does not start" >&2; return 1; }
}

# From here on every program of the prefix appears on one desktop of its own, with a task bar and its notification area.
start_desktop() {
    local size=${1:-1024x768}
    in_wine "$wine_loader" reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d shell /f >/dev/null
    in_wine "$wine_loader" reg add 'HKCU\Software\Wine\Explorer\Desktops' /v shell /d "$size" /f >/dev/null
    in_wine "$wine_loader" explorer "/desktop=shell,$size" >/dev/null 2>&1 &
}

screenshot() {
    mkdir -p "$(dirname "$1")"
    import -window root "png:$1.new" && mv "$1.new" "$1"
}

# Painting is gathered by the program; a picture is taken when two in a row are the same.
settle() {
    local before='' now tries
    for tries in $(seq 20); do
        now=$(import -window root rgb:- | md5sum)
        [ "$now" = "$before" ] && return 0
        before=$now
        sleep 0.15
    done
}

# Ends what this shell started: the prefix's programs and the screen.
stop_all() {
    [ -n "$prefix" ] && stop_wine
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null
    xvfb_pid=
    return 0
}
