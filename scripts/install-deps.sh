#!/usr/bin/env bash
# Installs the Debian packages the build needs, only those that are missing.
# Usage: scripts/install-deps.sh [windows|docs|bench|fuzz|valgrind|coverage|format]   ("windows" adds the
#        MinGW-w64 cross compiler, the GoogleTest sources it builds GoogleTest from, and Wine to
#        run the Windows programs; "docs" adds Doxygen for the API reference and man to check the
#        manual page; "bench" adds Google Benchmark, gnuplot and jq for the plot of the
#        results, and GNU time for the peak memory of a command; "fuzz" adds clang with libFuzzer and the sanitizer runtimes; "valgrind" adds
#        valgrind; "coverage" adds gcovr for the coverage report; "format" adds clang-format)
set -euo pipefail

packages=(cmake ninja-build g++ pkg-config libgtest-dev nlohmann-json3-dev libcli11-dev)
if [[ "${1:-}" == windows ]]; then
  packages+=(g++-mingw-w64-x86-64-posix googletest wine64 wine)
elif [[ "${1:-}" == docs ]]; then
  packages+=(doxygen man-db)
elif [[ "${1:-}" == bench ]]; then
  packages+=(libbenchmark-dev gnuplot-nox jq time)
elif [[ "${1:-}" == fuzz ]]; then
  packages+=(clang libclang-rt-14-dev)
elif [[ "${1:-}" == valgrind ]]; then
  packages+=(valgrind)
elif [[ "${1:-}" == coverage ]]; then
  packages+=(gcovr)
elif [[ "${1:-}" == format ]]; then
  packages+=(clang-format-14)
fi

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" \
    || missing+=("$package")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  sudo_cmd=()
  [[ $(id -u) -eq 0 ]] || sudo_cmd=(sudo)
  "${sudo_cmd[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
