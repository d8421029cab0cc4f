# shellcheck shell=bash
# Sourced by bench/run: all figures in one table, docs/figures.md.

# The table before, as lines of title and ratio.
ratios_of_table() { sed -n 's/^| \(.*\) | .* | \([0-9.]*\) | [^|]* |$/\1\t\2/p' "$1"; } # FILE

# A title that stands several times in the list of figures counts as it was measured last.
rows_of_table() { # FIGURES
    awk -F'\t' '!($1 in place) { place[$1] = ++count; title[count] = $1 } { line[$1] = $2 " | " $3 " | " ($4 == "" ? "" : "at most " $4) }
        END { for (i = 1; i <= count; ++i) print "| " title[i] " | " line[title[i]] " |" }' "$1"
}

# What got worse by more than a tenth since the table before.
worse_rows() { # BEFORE AFTER
    awk -F'\t' 'NR == FNR { before[$1] = $2; next }
        ($1 in before) && before[$1] > 0 && $2 > 1.1 * before[$1] { printf "- %s: ratio %s, before %s\n", $1, $2, before[$1] }' "$1" "$2"
}

machine_text() {
    printf '%s processors (%s), %s, load %s at the end' "$(nproc)" "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -1)" \
        "$(wine --version 2>/dev/null || echo 'no Wine')" "$(cut -d' ' -f1 /proc/loadavg)"
}

write_table() {
    local table=$top/docs/figures.md before=$out/ratios.before after=$out/ratios.after worse
    [ -f "$out/figures.tsv" ] || { echo "No figures yet: bench/run all"; return 1; }
    if [ -f "$table" ]; then ratios_of_table "$table" >"$before"; else : >"$before"; fi
    {
        echo '# Figures'
        echo
        echo 'Written by `bench/run all`; what each benchmark does stands at the head of `bench/run`. A ratio is the median of'
        echo 'several rounds in which the program and what it is compared with run by turns; under Wine and for removals it is one'
        echo "of the processor's time (the program and Wine's server), since the clock also tells what else a machine does."
        echo
        printf 'Machine: %s. Commit: %s%s.\n\n' "$(machine_text)" "$(git -C "$top" rev-parse --short HEAD)" \
            "$(git -C "$top" diff --quiet HEAD -- . ':!docs/figures.md' || echo ' with changes')"
        echo '| figure | value | ratio | target |'
        echo '| --- | --- | --- | --- |'
        rows_of_table "$out/figures.tsv"
    } >"$table.new"
    ratios_of_table "$table.new" >"$after"
    worse=$(worse_rows "$before" "$after")
    [ -z "$worse" ] || printf '\nWorse by more than a tenth than in the table before:\n\n%s\n' "$worse" | tee -a "$table.new"
    mv "$table.new" "$table"
}

bench_all() {
    local name
    rm -f "$out/figures.tsv"
    # Each in a shell of its own: they end their own Wine and screen.
    for name in windows pages removal offline hives emptying size; do
        "$top/bench/run" "$name" || echo "$name could not be measured"
    done
    write_table
}
