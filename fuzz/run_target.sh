#!/bin/sh
# Runs one fuzz target for some seconds over its seeds; new inputs go to a scratch folder. Arguments: program, seconds.
set -eu
program=$1
seconds=$2
name=$(basename "$program" _fuzz)
scratch=$(mktemp -d)

# The words of the vocabularies and the names of functions, which no chance would put together.
{
    sed -n 's/^VELTRANE_TAG([A-Z0-9_a-z]*, \("[^"]*"\))$/\1/p' include/MCVeltrane_900/PMMLModelTags.def \
        include/MCVeltrane_900/KORDModelTags.def
    sed -n 's/^VELTRANE_TRANSFORM_FUNCTION([A-Z0-9_]*, [0-9]*, (\(.*\)),$/\1/p' \
        include/MCVeltrane_900/TransformFunctions.def | sed 's/, /\n/g'
} | sort -u >"$scratch/words"

# What was freed is held back for long enough to find a use of it, and no longer than the processor's caches like. Who took
# a block of memory is recorded only when the input of a finding runs again: in every run it would take a tenth of the time.
options="${ASAN_OPTIONS:+$ASAN_OPTIONS:}quarantine_size_mb=16"
export ASAN_OPTIONS="$options:malloc_context_size=1"

# Without the entropic schedule, whose bookkeeping takes as long as the runs do. The targets stay below 100 MB; what is kept
# of failed runs would pass the limit after some 6,000 of them.
mkdir "$scratch/found"
"$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=256 -max_len=8192 -entropic=0 -print_final_stats=1 \
    -dict="$scratch/words" -artifact_prefix="$scratch/" "$scratch/found" "fuzz/seeds/$name" >"$scratch/log" 2>&1 || {
    tail -n 60 "$scratch/log"
    for input in "$scratch"/crash-* "$scratch"/leak-*; do
        [ -e "$input" ] || continue
        echo "its input again, with those who took the memory:"
        ASAN_OPTIONS="$options" "$program" "$input" 2>&1 | tail -n 100
    done
    echo "fuzz target $name failed; its input is in $scratch"
    exit 1
}
grep -E 'stat::number_of_executed_units|stat::average_exec_per_sec|stat::peak_rss_mb' "$scratch/log" | sed "s/^/$name /"
rm -rf "$scratch"
