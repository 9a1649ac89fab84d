#!/usr/bin/env bash
# Line and branch coverage of the library (src/) over every test suite, with gcovr.
# Usage: scripts/coverage.sh   (report in build-coverage/coverage/index.html, summary on stdout;
#        fails when line coverage is below 95% or branch coverage below 85%)
#
# Branches that no decision in the source makes are left out: those the compiler adds for
# exceptions thrown and unwound (--exclude-throw-branches) and those it proves unreachable
# (--exclude-unreachable-branches). Everything else counts.
#
# The library is compiled twice from the same sources: as the shared library programs load and
# as the static one the test programs link to reach its internals. Only the static copy is read
# (--exclude-directories): gcov marks an exception edge as such only in a function that ran, so
# a function run through one copy would count its exception edges as untaken branches of the
# other. Reading one copy can only under-report, never over-report: a line reached only through
# the shared copy would count as uncovered.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh coverage

build=build-coverage
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVELKAPI_WARNINGS_AS_ERRORS=ON \
  -DCMAKE_CXX_FLAGS="--coverage -fprofile-update=atomic" \
  -DCMAKE_EXE_LINKER_FLAGS=--coverage -DCMAKE_SHARED_LINKER_FLAGS=--coverage
cmake --build "$build" -j2
find "$build" -name '*.gcda' -delete
ctest --test-dir "$build" -j2 --output-on-failure

mkdir -p "$build/coverage"
gcovr --root . --filter 'src/' "$build" --exclude-directories '.*/velkapi\.dir$' \
  --exclude-throw-branches --exclude-unreachable-branches \
  --html-details "$build/coverage/index.html" \
  --txt "$build/coverage/summary.txt" --print-summary \
  --fail-under-line 95 --fail-under-branch 85
