# shellcheck shell=bash
# Sourced by bench/run: the pages with long lists, in the real window under Wine, beside a program that makes the same calls.

# 3,000 programs of six values each, and 5,000 undo files in the folder.
many_programs() {
    python3 - "$1" <<'PY'
import sys
key = r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall"
with open(sys.argv[1], "w", encoding="cp1252", newline="\r\n") as out:
    out.write("REGEDIT4\n\n")
    for n in range(3000):
        out.write('[%s\\Programm%04d]\n"UninstallString"="C:\\\\P\\\\weg%d.exe"\n"DisplayName"="Programm %d"\n'
                  '"Publisher"="Jemand"\n"DisplayVersion"="1.%d"\n"InstallDate"="20261115"\n"EstimatedSize"=dword:1000\n\n'
                  % (key, (n * 7919) % 3000, n, n, n))
PY
}
many_undo_files() {
    local i
    mkdir -p "$1"
    for i in $(seq 5000); do printf 'REGEDIT4\r\n\r\n' >"$1/Rückgängig_15112026_$(printf %06d "$i").reg"; done
}
fill_folder() { # FOLDER
    rm -rf "$1" && mkdir -p "$1" && (cd "$1" && seq -f 'datei%.0f.tmp' "${FILES:-10000}" | xargs touch)
}

# A prefix of 64 bits with a screen and a desktop, all on one processor: Wine's server answers each call, and between two
# processors its waking takes ten times as long as the call and differs by a third from run to run. Without a window
# manager Wine waits two seconds for each window that is hidden; in a desktop of its own it doesn't.
start_bench_desktop() { # NAME
    use_prefix "$1" 64 || return 1
    on_processor 0
    trap 'stop_wine; [ -n "${xvfb_pid:-}" ] && kill "$xvfb_pid" 2>/dev/null' EXIT
    [ -n "${DISPLAY:-}" ] || start_xvfb || return 1
    in_wine wine reg add 'HKCU\Software\Bromvale' /v 1stRun /d 0 /f >/dev/null 2>&1
    start_desktop
    # A pointer over a button makes Wine send it a message every 10 ms.
    xdotool mousemove 1279 1023
    WINE_SERVER_PID=$(server_of_prefix)
    export WINE_SERVER_PID
}

# The server's own folder is named by the prefix.
server_of_prefix() {
    local pid
    for pid in $(pgrep wineserver); do
        [ "$(basename "$(readlink "/proc/$pid/cwd")")" != "server-$(stat -c %D-%i "$prefix" | sed 's/-/ /' |
            while read -r device inode; do printf '%s-%x' "$device" "$inode"; done)" ] || echo "$pid"
    done
}

# Runs PROGRAM and prints what it answers, or has written into its file, as "MILLISECONDS THOSE-OF-THE-PROCESSOR".
times_of() { # PROGRAM WORD...
    local answer
    answer=$(in_wine wine "$@" 2>/dev/null | tr -d '\r')
    [ -n "$answer" ] || answer=$(cat "${1%.exe}.txt")
    echo "$(value_of ms <<<"$answer") $(value_of cpu <<<"$answer")"
}
value_of() { sed -n "s/.*\b$1=\([0-9.]*\).*/\1/p"; } # NAME

# The longest answer of the window in three rounds, milliseconds.
longest_answer() { # PREPARE WORD...
    local i
    for i in 1 2 3; do
        "$1"
        in_wine wine pages_timed.exe "${@:2}" asked 2>/dev/null
        value_of longest <pages_timed.txt
    done | sort -n | tail -1
}

# The program and the bare calls by turns, so that what else the machine does meets both; then the program while another
# process asks its window. Ratios are those of the processor's time: on a machine that others use, too, the clock tells more of
# them than of the program.
time_page() { # TITLE PREPARE WORD...
    local title=$1 prepare=$2 words=("${@:3}") file i longest
    file=$out/${title// /-}
    "$prepare"; in_wine wine pages_recorder.exe "${words[@]}" 2>/dev/null
    : >"$file"
    for i in $(seq "$rounds"); do
        {
            "$prepare"; times_of pages_timed.exe "${words[@]}"
            "$prepare"; times_of bare_calls.exe
            [ "${words[0]}" != emptying ] || { "$prepare"; times_of bare_calls.exe writing; }
        } | paste -sd ' ' >>"$file"
    done
    figure "$title under Wine, against the same calls" "$(median_of 1 "$file") ms" "$(ratio_of 2 4 "$file")" 1.3
    [ "${words[0]}" != emptying ] ||
        figure "$title under Wine, against the bare deletions" "$(median_of 2 "$file") ms of the processor" "$(ratio_of 2 6 "$file")" 1.3
    longest=$(longest_answer "$prepare" "${words[@]}")
    figure "$title under Wine, longest answer of the window" "$longest ms" "$(awk "BEGIN { printf \"%.2f\", $longest / 100 }")" 1
}

nothing_to_prepare() { :; }
prepare_emptying() { rm -rf "$wine_home/.local/share/Trash"; fill_folder "$prefix/drive_c/Leeren"; }

bench_pages() {
    scripts/install-tools.sh windows desktop || return 1
    . scripts/wine-env.sh
    built bench || return 1
    start_bench_desktop benchpages || return 1
    many_programs "$out/programs.reg" && import_registry "$out/programs.reg"
    local work
    work=$(program_folder)
    many_undo_files "$work/Backup"
    cp build/bench/bench/{pages_timed,pages_recorder,bare_calls,window_asker}.exe "$work/" && cd "$work" || return 1
    printf 'C:\\Leeren\r\n' >liste.txt
    figure 'Longest answer of the idle window under Wine, for comparison' "$(longest_answer nothing_to_prepare nothing) ms" '' ''
    time_page '5,000 undo files listed' nothing_to_prepare backup
    time_page '3,000 programs listed' nothing_to_prepare programs
    time_page '10,000 files emptied for good' prepare_emptying emptying permanent
    time_page '10,000 files emptied into the recycle bin' prepare_emptying emptying
}
