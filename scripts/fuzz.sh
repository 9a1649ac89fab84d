#!/usr/bin/env bash
# Builds the fuzz targets with clang (in build-fuzz) and runs them.
# Usage: scripts/fuzz.sh [TARGET|all] [SECONDS]
#   TARGET SECONDS  runs fuzz_TARGET that long; its new inputs and findings are kept in
#                   build-fuzz/findings/TARGET/.
#   all, or nothing runs every target for the CI budget (20 seconds each unless SECONDS says
#                   otherwise), one after another.
# Any finding (a crash, a sanitizer report, a leak, a time-out) stops the script with an error;
# the input that caused it is in build-fuzz/findings/TARGET/ and reproduces with
#   build-fuzz/fuzz/fuzz_TARGET build-fuzz/findings/TARGET/crash-...
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh fuzz

target=${1:-all}
seconds=${2:-20}
if ! [[ "$seconds" =~ ^[0-9]+$ ]]; then
  echo "fuzz.sh: SECONDS must be a whole number, not \"$seconds\"" >&2
  exit 2
fi
build=build-fuzz

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_COMPILER=clang++ -DVELKAPI_BUILD_FUZZERS=ON \
  -DVELKAPI_BUILD_TESTS=OFF -DVELKAPI_BUILD_TOOLS=OFF -DVELKAPI_WARNINGS_AS_ERRORS=ON
mapfile -t targets < "$build/fuzz/targets.txt"
if [[ "$target" == all ]]; then
  cmake --build "$build" -j2 --target fuzzers
elif printf '%s\n' "${targets[@]}" | grep -qx "$target"; then
  cmake --build "$build" -j2 --target "fuzz_$target"
  targets=("$target")
else
  echo "fuzz.sh: no target \"$target\"; the targets are: ${targets[*]}" >&2
  exit 2
fi

export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
for name in "${targets[@]}"; do
  findings="$build/findings/$name"
  mkdir -p "$findings/corpus"
  echo "== fuzz_$name for ${seconds}s (findings in $findings)"
  # The checked-in seeds are read, new inputs go to the findings folder, not into the sources.
  status=0
  "$build/fuzz/fuzz_$name" "$findings/corpus" "fuzz/corpus/$name" \
    -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=4096 \
    -artifact_prefix="$findings/" -print_final_stats=1 >"$findings/run.log" 2>&1 || status=$?
  grep -E '^(#[0-9]+.*DONE|stat::number_of_executed_units|SUMMARY)' "$findings/run.log" || true
  if ((status != 0)); then
    echo "fuzz_$name found a fault (exit $status); see $findings/run.log" >&2
    tail -n 40 "$findings/run.log" >&2
    exit 1
  fi
done
