#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test suite.
# Usage: scripts/test.sh [--sanitize]   (--sanitize: AddressSanitizer + UndefinedBehaviorSanitizer)
set -euo pipefail
cd "$(dirname "$0")/.."
# With Doxygen and man, so that the tests check the API reference and the manual page too.
scripts/install-deps.sh docs

build=build
flags=()
if [[ "${1:-}" == --sanitize ]]; then
  build=build-sanitize
  flags=(-DCMAKE_CXX_FLAGS="-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer")
  export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1
  export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
fi

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVELKAPI_WARNINGS_AS_ERRORS=ON \
  "${flags[@]}"
cmake --build "$build" -j2
ctest --test-dir "$build" -j2 --output-on-failure
