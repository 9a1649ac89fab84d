#!/usr/bin/env bash
# Times every velk command on a project of many operations (100,000 by default): the example
# project's operation store grown by make-large-project, velk built in Release in build-bench.
# Prints how long loading and saving the project take alone, then one line per command: its
# wall-clock seconds, its peak resident memory (and that as a multiple of the project file's
# size) and the command.
# Usage: scripts/time-velk.sh [OPERATIONS]
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh bench

operations=${1:-100000}
build=build-bench
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVELKAPI_BUILD_TESTS=OFF \
  -DVELKAPI_BUILD_BENCHMARKS=ON -DVELKAPI_WARNINGS_AS_ERRORS=ON >/dev/null
cmake --build "$build" -j2 --target make-large-project time-project-file velk >/dev/null

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
project="$work/large-project.json"
"$build/bench/make-large-project" examples/demo-project.json "$operations" "$project"

# What every command spends on the project file before and after its own work.
"$build/bench/time-project-file" "$project" "$work/saved.json" | sed 's/^/        project file: /'

# The example store repeats its 18 operations after 3 host records: the last operation of the
# grown store whose kind is that of the example's drilling operation (9) or pocket (6).
last_like() { echo $(($1 + (operations - 1 - $1) / 18 * 18)); }
drill=$(last_like 9)
pocket=$(last_like 6)

project_kb=$(($(stat -c %s "$project") / 1024))
echo "        project file: $((project_kb / 1024)) MB"

# velk diff exits 1 when the projects differ, as diff does.
velk() {
  local seconds peak_kb status=0
  /usr/bin/time -q -f '%e %M' -o "$work/time" "$build/cli/velk" "$@" >/dev/null 2>"$work/stderr" ||
    status=$?
  if ((status != 0)) && ! [[ $1 == diff && $status == 1 ]]; then
    echo "velk $*: failed: $(cat "$work/stderr")" >&2
    exit 1
  fi
  read -r seconds peak_kb <"$work/time"
  awk -v s="$seconds" -v kb="$peak_kb" -v file="$project_kb" -v command="velk ${*//$work\//}" \
    'BEGIN { printf "%6.2f s  %5d MB peak (%4.2fx the file)  %s\n", s, kb / 1024, kb / file, command }'
}

velk ops "$project" --store 1
velk walk "$project"
velk show "$project" --store 1 --op "$drill"
velk expert "$project" --store 1
velk expert "$project" --store 1 --op "$drill"
velk actions "$project" --store 1 --op "$pocket"
velk tools "$project" --store 2
cp "$project" "$work/before-the-edits.json"
velk set "$project" --store 1 --op "$drill" Parameter.w_depth=-25
velk add "$project" --store 1 --kind DRILLING
velk actions "$project" --store 1 --op "$pocket" --pre add "M8"
# Two projects of that size: the grown one before and after the three edits above.
velk diff "$work/before-the-edits.json" "$project"
velk strategy examples/2dhighspeedrough.bin
