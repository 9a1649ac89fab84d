#!/usr/bin/env bash
# Builds everything, the test suites included, in one build type with one compiler, warnings as
# errors: every build type must build warning-free with GCC and with Clang, not only the Debug
# build the tests run in. The suites are built, not run.
# Usage: scripts/build-check.sh [BUILD_TYPE] [COMPILER]
#   BUILD_TYPE  Debug, Release, RelWithDebInfo (the default) or MinSizeRel
#   COMPILER    g++ or clang++ (the default)
# It builds in build-check-BUILD_TYPE-COMPILER, which is kept for the next run.
set -euo pipefail
cd "$(dirname "$0")/.."

type=${1:-RelWithDebInfo}
compiler=${2:-clang++}
case "$type" in
  Debug | Release | RelWithDebInfo | MinSizeRel) ;;
  *) echo "build-check.sh: BUILD_TYPE is Debug, Release, RelWithDebInfo or MinSizeRel, not \"$type\"" >&2
     exit 2 ;;
esac
case "$compiler" in
  g++) scripts/install-deps.sh ;;
  clang++) scripts/install-deps.sh fuzz ;;  # clang comes with the fuzzing tools
  *) echo "build-check.sh: COMPILER is g++ or clang++, not \"$compiler\"" >&2
     exit 2 ;;
esac

build=build-check-$type-${compiler%++}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE="$type" -DCMAKE_CXX_COMPILER="$compiler" \
  -DVELKAPI_WARNINGS_AS_ERRORS=ON >/dev/null
cmake --build "$build" -j2
echo "build-check.sh: $type with $compiler builds without a warning"
