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
}

# Runs PROGRAM and prints the number behind NAME= in its answer: what it prints, or what it writes into its file.
number_of() { # NAME PROGRAM WORD...
    local name=$1 answer
    shift
    answer=$(in_wine wine "$@" 2>/dev/null | tr -d '\r')
    [ -n "$answer" ] || answer=$(cat "${1%.exe}.txt")
    sed -n "s/.*\\b$name=\\([0-9.]*\\).*/\\1/p" <<<"$answer"
}

# The program and the bare calls by turns, so that what else the machine does meets both; then the program while another
# process asks its window.
time_page() { # TITLE PREPARE TARGET-OF-BARE WORD...
    local title=$1 prepare=$2 words=("${@:3}") name i took same writing
    name=${title// /-}
    "$prepare"; in_wine wine pages_recorder.exe "${words[@]}" 2>/dev/null
    : >"$out/$name"
    for i in $(seq "$rounds"); do
        "$prepare"; took=$(number_of ms pages_timed.exe "${words[@]}")
        "$prepare"; same=$(number_of ms bare_calls.exe)
        writing=$same
        [ "${words[0]}" != emptying ] || { "$prepare"; writing=$(number_of ms bare_calls.exe writing); }
        echo "$took $same $writing" >>"$out/$name"
    done
    : >"$out/$name.asked"
    for i in $(seq 3); do "$prepare"; number_of longest pages_timed.exe "${words[@]}" asked >>"$out/$name.asked"; done
    took=$(median_of 1 "$out/$name") same=$(ratio_of 1 2 "$out/$name") writing=$(ratio_of 1 3 "$out/$name")
    figure "$title under Wine, against the same calls" "$took ms" "$same" 1.3
    [ "${words[0]}" != emptying ] || figure "$title under Wine, against the bare deletions" "$took ms" "$writing" 1.3
    figure "$title under Wine, longest answer of the window" "$(sort -n "$out/$name.asked" | tail -1) ms" \
        "$(sort -n "$out/$name.asked" | tail -1 | awk '{ printf "%.2f", $1 / 100 }')" 1
}

nothing_to_prepare() { :; }
prepare_emptying() { rm -rf "$wine_home/.local/share/Trash"; fill_folder "$prefix/drive_c/Leeren"; }

bench_pages() {
    scripts/install-tools.sh windows desktop || return 1
    . scripts/wine-env.sh
    cmake --preset bench >/dev/null && cmake --build --preset bench || return 1
    start_bench_desktop benchpages || return 1
    many_programs "$out/programs.reg" && import_registry "$out/programs.reg"
    local work
    work=$(program_folder)
    many_undo_files "$work/Backup"
    cp build/bench/bench/{pages_timed,pages_recorder,bare_calls,window_asker}.exe "$work/" && cd "$work" || return 1
    printf 'C:\\Leeren\r\n' >liste.txt
    time_page '5,000 undo files listed' nothing_to_prepare backup
    time_page '3,000 programs listed' nothing_to_prepare programs
    time_page '10,000 files emptied for good' prepare_emptying emptying permanent
    time_page '10,000 files emptied into the recycle bin' prepare_emptying emptying
}
