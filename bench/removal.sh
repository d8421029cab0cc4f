# shellcheck shell=bash
# Sourced by bench/run: the removal of rows that were found on a real registry, beside the bare writes and deletions.

# 3,000, 6,000 and 12,000 rows: what each takes, and how it grows.
removal_sizes() { echo "${ROWS:-3000 6000 12000}"; }

# The registry of a real machine; where there is none, a made one of that size and shape.
registry_to_clean() {
    local data=${BROMVALE_SHARED_DATA_DIR:-$top/../shared/data}
    if [ -f "$data/win7-x86-hklm.reg.xz" ]; then
        [ -f "$out/win7.reg" ] || xz -dc "$data/win7-x86-hklm.reg.xz" >"$out/win7.reg"
        registry=$out/win7.reg
    else
        [ -f "$out/made.reg" ] || build/native/bench/write_full_registry "$out/made.reg" || return 1
        registry=$out/made.reg
    fi
}

# Figures of a file with lines of rows, milliseconds of the processor of the program, of the same calls, of the bare writes and
# deletions, kilobytes before and at most.
removal_figures() { # WHERE FILE COLUMN-OF-BARE WORDS-FOR-BARE
    local rows
    for rows in $(removal_sizes); do
        awk -v rows="$rows" '$1 == rows' "$2" >"$2.$rows"
        figure "$rows rows removed $1, against $4" "$(median_of 2 "$2.$rows") ms of the processor" "$(ratio_of 2 "$3" "$2.$rows")" 1.3
    done
}
removal_growth() { # WHERE FILE
    local least most
    least=$(removal_sizes | awk '{ print $1 }') most=$(removal_sizes | awk '{ print $NF }')
    figure "$most rows removed $1, milliseconds a row against those of $least rows" "$(median_of 2 "$2.$most") ms of the processor" \
        "$(awk -v a="$(median_of 2 "$2.$most")" -v b="$(median_of 2 "$2.$least")" -v m="$most" -v l="$least" \
            'BEGIN { printf "%.2f", a / m / (b / l) }')" 1.3
    figure "$most rows removed $1, peak memory" "$(awk -v most="$(median_of 6 "$2.$most")" -v before="$(median_of 5 "$2.$most")" \
        'BEGIN { printf "%.1f MB, of which the removal %.1f MB", most / 1024, (most - before) / 1024 }')" '' ''
}

value_of() { sed -n "s/.*\\b$1=\\([0-9.]*\\).*/\\1/p"; } # NAME

removal_offline() {
    local work=$out/removal i rows took same bare mode
    for mode in all marked; do
        : >"$work.$mode"
        for i in $(seq "$rounds"); do
            for rows in $(removal_sizes); do
                rm -rf "$work.drive" && mkdir -p "$work.drive/Programme/Bromvale/Backup"
                took=$(build/native/bench/offline_removal "$registry" "$work.drive" "$rows" "$mode")
                bare=$(build/native/bench/offline_removal "$registry" "$work.drive" "$rows" bare)
                same=$(build/native/bench/offline_removal "$registry" "$work.drive" "$rows" same)
                echo "$rows $(value_of ms <<<"$took") $(value_of ms <<<"$same") $(value_of ms <<<"$bare") $(value_of before <<<"$took")" \
                    "$(value_of most <<<"$took")" >>"$work.$mode"
            done
        done
        removal_figures "offline ($mode)" "$work.$mode" 3 'the same calls'
        removal_figures "offline ($mode)" "$work.$mode" 4 'the bare writes and deletions'
        removal_growth "offline ($mode)" "$work.$mode"
    done
}

# The complete copy of a removal puts all keys back, byte for byte.
put_back() {
    local copy
    for copy in Backup/Vollst*.reg; do [ ! -f "$copy" ] || import_registry "$copy"; done
    rm -rf Backup
    mkdir Backup
}

removal_under_wine() {
    local work i rows took marked same writing
    start_bench_desktop benchremoval || return 1
    import_registry "$registry" || return 1
    work=$(program_folder)
    mkdir -p "$work/Backup"
    cp build/bench/bench/{removal_timed,removal_recorder,bare_calls}.exe "$work/"
    cp "$out/removal.rows" "$work/rows.txt"
    cd "$work" || return 1
    : >"$out/removal.wine"
    : >"$out/removal.wine_marked"
    for rows in $(removal_sizes); do
        put_back
        in_wine wine removal_recorder.exe "$rows" 2>/dev/null
        for i in $(seq "$rounds"); do
            put_back
            in_wine wine removal_timed.exe "$rows" 2>/dev/null
            took=$(cat removal_timed.txt)
            put_back
            in_wine wine removal_timed.exe "$rows" marked 2>/dev/null
            marked=$(cat removal_timed.txt)
            # The copy that bare calls write is the same.
            put_back
            same=$(times_of bare_calls.exe)
            put_back
            writing=$(times_of bare_calls.exe writing)
            echo "$rows $(value_of cpu <<<"$took") ${same#* } ${writing#* } $(value_of before <<<"$took") $(value_of most <<<"$took")" \
                >>"$out/removal.wine"
            echo "$rows $(value_of cpu <<<"$marked") ${same#* } ${writing#* } $(value_of before <<<"$marked") $(value_of most <<<"$marked")" \
                >>"$out/removal.wine_marked"
        done
    done
    removal_figures 'under Wine' "$out/removal.wine" 3 'the same calls'
    removal_figures 'under Wine' "$out/removal.wine" 4 'the bare writes and deletions'
    removal_growth 'under Wine' "$out/removal.wine"
    removal_figures 'under Wine (marked)' "$out/removal.wine_marked" 3 'the same calls'
    removal_growth 'under Wine (marked)' "$out/removal.wine_marked"
}

bench_removal() {
    scripts/install-tools.sh native windows desktop || return 1
    . scripts/wine-env.sh
    built native offline_removal write_full_registry || return 1
    built bench || return 1
    registry_to_clean || return 1
    removal_offline
    build/native/bench/offline_removal "$registry" "$out/removal.drive" 12000 rows >"$out/removal.rows"
    removal_under_wine
}
