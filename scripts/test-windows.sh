#!/usr/bin/env bash
# Installs what is missing, cross-builds everything for 64-bit Windows with MinGW-w64 (VelkApi.dll,
# the offline host programs, every test suite) and runs every test suite under Wine.
# Build folder: build-windows; Wine prefix: build-windows/wineprefix.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh windows

build="build-windows"
# (--no-warn-unused-cli: a build folder configured before keeps its toolchain and ignores the option)
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug --no-warn-unused-cli \
  -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchain-mingw64.cmake" -DVELKAPI_WARNINGS_AS_ERRORS=ON
cmake --build "$build" -j2

# One Wine server and one set of Wine services for all test programs (scripts/wine-run.sh).
scripts/wine-run.sh --start "$build"
trap 'scripts/wine-run.sh --stop "$build"' EXIT
# A test program that Wine fails to start (rarely, with no output at all) gets another try; a test
# that fails on its own fails every try.
ctest --test-dir "$build" -j2 --output-on-failure --repeat until-pass:3
