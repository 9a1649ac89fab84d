#!/usr/bin/env bash
# velk under concurrent use and interruptions, run as a user runs it (POSIX shells only).
# Usage: concurrent-runs.sh VELK EXAMPLE_PROJECT WORK_FOLDER TEST
#   pairs       pairs of `velk set` on one project at once, each setting another value: both
#               changes survive every time
#   lock-held   a run waits for the lock another program holds, then refuses with one line;
#               the same for strategy --set
#   signals     SIGINT and SIGTERM at random moments of a large save: the project is the old or
#               the new one, and no new file is left beside it
#   stale       a new file a killed run left is removed by the next save, one still being
#               written is not
#   file-size   a save past the file-size limit (ulimit -f) fails, keeps the project and leaves
#               nothing behind
set -uo pipefail
velk=$1 example=$2 work=$3 test=$4
rm -rf "$work" && mkdir -p "$work" || exit 1
project=$work/project.json

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# The value of a Parameter key of an operation of store 1, as velk show prints it.
value() {
  "$velk" show "$project" --store 1 --op "$1" --section Parameter | awk -v key="$2" '$1 == key { print $3 }'
}

expect_no_new_files() {
  local left
  left=$(find "$work" -name '*.tmp')
  [[ -z "$left" ]] || fail "new files left behind: $left"
}

# The example with a store 9 of one record of 40000 lines: a project of about 4 MB.
make_large_project() {
  local line='"PROFILE 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 28 29 30 31 32",'
  {
    sed -n '1,/"stores": {/p' "$example"
    echo '    "9": [['
    yes "$line" | head -n 39999
    echo "${line%,}"
    echo '    ]],'
    sed -n '/"stores": {/,$p' "$example" | tail -n +2
  } >"$project"
}

case $test in
pairs)
  for ((i = 1; i <= 40; i++)); do
    cp "$example" "$project"
    "$velk" set "$project" --store 1 --op 9 "Parameter.w_depth=-$i" >"$work/a.out" 2>"$work/a.err" &
    first=$!
    "$velk" set "$project" --store 1 --op 6 "Parameter.w_zdepth=-$i.5" >"$work/b.out" 2>"$work/b.err" &
    second=$!
    wait $first || fail "pair $i: the first run failed: $(cat "$work/a.err")"
    wait $second || fail "pair $i: the second run failed: $(cat "$work/b.err")"
    [[ $(cat "$work/a.out") == "store 1, operation 9: 1 value set" ]] || fail "pair $i: $(cat "$work/a.out")"
    [[ $(cat "$work/b.out") == "store 1, operation 6: 1 value set" ]] || fail "pair $i: $(cat "$work/b.out")"
    [[ $(value 9 w_depth) == "-$i" ]] || fail "pair $i: w_depth is $(value 9 w_depth), not -$i"
    [[ $(value 6 w_zdepth) == "-$i.5" ]] || fail "pair $i: w_zdepth is $(value 6 w_zdepth), not -$i.5"
  done
  expect_no_new_files
  ;;
lock-held)
  cp "$example" "$project"
  before=$(sha256sum <"$project")
  flock "$project" sleep 7 &
  holder=$!
  sleep 0.5
  start=$SECONDS
  "$velk" set "$project" --store 1 --op 9 Parameter.w_depth=-1 >"$work/out" 2>"$work/err"
  status=$?
  waited=$((SECONDS - start))
  kill $holder 2>/dev/null
  wait $holder 2>/dev/null
  [[ $status == 1 ]] || fail "exit $status"
  [[ $(cat "$work/err") == "velk: $project is being changed by another program: try again when it has finished" ]] ||
    fail "error: $(cat "$work/err")"
  ((waited >= 4 && waited <= 7)) || fail "waited $waited seconds"
  [[ $(sha256sum <"$project") == "$before" ]] || fail "the project changed"
  # The same lock guards a strategy settings file.
  settings=$work/settings.bin
  cp "$(dirname "$example")/2dhighspeedrough.bin" "$settings"
  flock "$settings" sleep 7 &
  holder=$!
  sleep 0.5
  "$velk" strategy "$settings" --set RampAngle=3 >"$work/out" 2>"$work/err"
  status=$?
  kill $holder 2>/dev/null
  wait $holder 2>/dev/null
  [[ $status == 1 && $(cat "$work/err") == "velk: $settings is being changed by another program: try again when it has finished" ]] ||
    fail "strategy --set: exit $status, $(cat "$work/err")"
  # Once the lock is free, the same run goes through.
  "$velk" set "$project" --store 1 --op 9 Parameter.w_depth=-1 >"$work/out" || fail "the second run failed"
  [[ $(value 9 w_depth) == -1 ]] || fail "w_depth is $(value 9 w_depth)"
  ;;
signals)
  set -m  # with job control a background run takes SIGINT rather than ignoring it
  make_large_project
  cp "$project" "$work/old.json"
  interrupted_saves=0
  "$velk" set "$project" --store 1 --op 9 Parameter.w_depth=-7 >/dev/null || fail "the reference save failed"
  new=$(sha256sum <"$project")
  old=$(sha256sum <"$work/old.json")
  for signal in INT TERM INT TERM; do
    cp "$work/old.json" "$project"
    "$velk" set "$project" --store 1 --op 9 Parameter.w_depth=-7 >/dev/null 2>&1 &
    run=$!
    # A random moment of the save: once its new file is there, up to 0.2 s later.
    while kill -0 $run 2>/dev/null && [[ -z $(find "$work" -name '*.tmp') ]]; do
      sleep 0.01
    done
    saving=$([[ -n $(find "$work" -name '*.tmp') ]] && echo yes)
    sleep "0.$(printf '%03d' $((RANDOM % 200)))"
    kill -s $signal $run 2>/dev/null
    wait $run
    now=$(sha256sum <"$project")
    [[ $now == "$old" || $now == "$new" ]] || fail "SIG$signal: the project is neither the old nor the new one"
    expect_no_new_files
    [[ -n $saving ]] && interrupted_saves=$((interrupted_saves + 1))
  done
  ((interrupted_saves >= 2)) || fail "only $interrupted_saves of 4 runs reached their save"
  ;;
stale)
  cp "$example" "$project"
  printf 'half a project' >"$project.0123abcd.tmp"
  printf 'still being written' >"$project.89abcdef.tmp"
  printf 'not ours' >"$project.0123abcd.tmp.keep"
  flock "$project.89abcdef.tmp" sleep 3 &
  holder=$!
  sleep 0.3
  "$velk" set "$project" --store 1 --op 9 Parameter.w_depth=-2 >/dev/null || fail "the save failed"
  [[ ! -e $project.0123abcd.tmp ]] || fail "the abandoned new file is still there"
  [[ -e $project.89abcdef.tmp ]] || fail "the new file being written was removed"
  [[ -e $project.0123abcd.tmp.keep ]] || fail "another file was removed"
  kill $holder 2>/dev/null
  wait $holder 2>/dev/null
  ;;
file-size)
  make_large_project
  before=$(sha256sum <"$project")
  (
    ulimit -f 1024
    "$velk" set "$project" --store 1 --op 9 Parameter.w_depth=-3 >"$work/out" 2>"$work/err"
  )
  status=$?
  [[ $status == 2 ]] || fail "exit $status"
  [[ $(cat "$work/err") == "velk: $project: cannot be written: writing the new file beside it failed" ]] ||
    fail "error: $(cat "$work/err")"
  [[ $(sha256sum <"$project") == "$before" ]] || fail "the project changed"
  expect_no_new_files
  ;;
*)
  fail "no test $test"
  ;;
esac
exit 0
