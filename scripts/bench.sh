#!/usr/bin/env bash
# Builds the benchmarks in Release (build folder build-bench), runs them, writes Google
# Benchmark's JSON to build-bench/bench.json and prints the table.
# Usage: scripts/bench.sh [--quick|--smoke] [Google Benchmark options...]
#   (default) every benchmark at full length, for the figures of docs/performance.md
#   --quick   every benchmark, shorter runs: about a minute
#   --smoke   every benchmark briefly, only to see that they build and run
# e.g. scripts/bench.sh --quick --benchmark_filter='RoundTrip/'
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh bench

build=build-bench
min_time=0.5
case "${1:-}" in
  --quick) min_time=0.05; shift ;;
  --smoke) min_time=0.001; shift ;;
esac

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVELKAPI_BUILD_TESTS=OFF \
  -DVELKAPI_BUILD_BENCHMARKS=ON -DVELKAPI_WARNINGS_AS_ERRORS=ON >/dev/null
cmake --build "$build" -j2 --target velkapi_bench make-large-project velk

"$build/bench/velkapi_bench" --benchmark_min_time="$min_time" \
  --benchmark_out="$build/bench.json" --benchmark_out_format=json "$@"

# Every benchmark the results are read for must be there (unless a filter left some out).
if [[ " $* " != *--benchmark_filter* ]]; then
  missing=0
  kinds=$("$build/bench/velkapi_bench" --benchmark_list_tests | sed -n 's|^RoundTrip/||p')
  for name in $(for kind in $kinds; do echo "RoundTrip/$kind HostFloor/$kind RoundTripCaptured/$kind ExpertForm/$kind"; done) \
    ReadAll/1000 ReadAll/10000 ReadAll/100000 ToolList/1000 ToolList/10000 \
    HostCall/{seek,get,add,replace}/{1000,100000} \
    NumberText/{general,fixed}/{to_chars,snprintf} NumberText/read/{library,strtod}; do
    grep -q "\"name\": \"$name\"" "$build/bench.json" || { echo "missing: $name" >&2; missing=1; }
  done
  # ... with the heap bytes it holds live.
  for counter in 'RoundTrip/ live_bytes_per_op' 'ToolList/ live_bytes_per_tool'; do
    read -r prefix field <<<"$counter"
    jq -e --arg prefix "$prefix" --arg field "$field" \
      '[.benchmarks[] | select(.name | startswith($prefix)) | has($field)] | all' \
      "$build/bench.json" >/dev/null || { echo "missing: $field on $prefix*" >&2; missing=1; }
  done
  ((missing == 0)) || exit 1
  echo "$build/bench.json: every benchmark is there, with its heap counters"
fi
