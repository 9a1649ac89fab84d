#!/usr/bin/env bash
# Draws docs/performance.png from the benchmark results: time per operation (ReadAll), per tool
# (ToolList) and per host call (HostCall) against the size of the store, on log-log axes.
# Usage: scripts/plot-bench.sh [BENCH_JSON] [PNG]
#        (defaults: build-bench/bench.json, written by scripts/bench.sh; docs/performance.png)
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh bench

results=${1:-build-bench/bench.json}
png=${2:-docs/performance.png}
mkdir -p "$(dirname "$png")"
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT

# One data file per series: store size, then microseconds per item (from items_per_second).
series() {
  jq -r --arg prefix "$1/" '.benchmarks[]
      | select(.run_type == "iteration" and (.name | startswith($prefix)))
      | "\(.name | split("/") | last | rtrimstr("_mean")) \(1e6 / .items_per_second)"' \
    "$results" | sort -n >"$data/$2"
}
series ReadAll read-all
series ToolList tool-list
for call in seek get add replace; do
  series "HostCall/$call" "host-$call"
done

gnuplot <<PLOT
set terminal pngcairo size 900,560 font ",10"
set output "$png"
set title "Time per item against store size"
set xlabel "records in the store"
set ylabel "microseconds per item"
set logscale xy
set format x "%.0s%c"
set key outside right
set grid
plot "$data/read-all" using 1:2 with linespoints lw 2 title "ReadAll: operation read", \
     "$data/tool-list" using 1:2 with linespoints lw 2 title "ToolList: tool listed and read", \
     "$data/host-seek" using 1:2 with linespoints title "HostCall: seek", \
     "$data/host-get" using 1:2 with linespoints title "HostCall: get", \
     "$data/host-add" using 1:2 with linespoints title "HostCall: add", \
     "$data/host-replace" using 1:2 with linespoints title "HostCall: replace"
PLOT
echo "$png"
