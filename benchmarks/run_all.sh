#!/bin/sh
# Runs every benchmark of the release build. Argument: the build folder (build/release by default).
set -eu
build=${1:-build/release}
cases=${VELTRANE_CASES:-../shared/cases}
for program in "$build"/bin/*_bench; do
    echo "== $(basename "$program")"
    "$program" --benchmark_min_time=0.5
done
echo "== host_throughput, transform"
python3 benchmarks/host_throughput.py "$build/bin/veltrane" transform \
    "$cases/transform/ozone-scale.pmml" "$cases/transform/ozone-scale.csv"
echo "== host_throughput, score"
python3 benchmarks/host_throughput.py --by-hand "$build/bin/csv_by_hand" "$build/bin/veltrane" score \
    "$cases/models/rattle-tree-iris.pmml" "$cases/models/rattle-tree-iris.csv"
