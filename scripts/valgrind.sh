#!/usr/bin/env bash
# Runs the end-to-end tests under valgrind's memcheck, from the native Debug build (build): any
# memory error, and any block definitely lost, fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh valgrind

build=build
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVELKAPI_WARNINGS_AS_ERRORS=ON
cmake --build "$build" -j2 --target endtoend_tests
valgrind --error-exitcode=1 --leak-check=full --errors-for-leak-kinds=definite \
  --show-leak-kinds=definite "$build/tests/endtoend/endtoend_tests"
