#!/bin/sh
# Runs one fuzz target for some seconds over its seeds; new inputs go to a scratch folder. Arguments: program, seconds.
set -eu
program=$1
seconds=$2
name=$(basename "$program" _fuzz)
scratch=$(mktemp -d)
seeds=fuzz/seeds/$name
[ -d "$seeds" ] || seeds="tests/samples examples/predicates"
# shellcheck disable=SC2086
"$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=65536 -print_final_stats=1 \
    -artifact_prefix="$scratch/" "$scratch" $seeds >"$scratch/log" 2>&1 || {
    tail -n 60 "$scratch/log"
    echo "fuzz target $name failed; its input is in $scratch"
    exit 1
}
grep -E 'stat::number_of_executed_units|stat::peak_rss_mb' "$scratch/log" | sed "s/^/$name /"
rm -rf "$scratch"
