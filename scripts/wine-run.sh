#!/usr/bin/env bash
# Runs a program of the Windows build under Wine: the emulator CMake uses for test discovery and
# ctest (cmake/toolchain-mingw64.cmake). Headless and quiet, in a Wine prefix of the build's own.
#
# Usage: scripts/wine-run.sh [--dll-folder=DIR]... PROGRAM.exe [ARGUMENTS]...
#
#  - The build folder is the nearest folder above PROGRAM that holds a CMakeCache.txt; the Wine
#    prefix is its "wineprefix" subfolder (or $VELKAPI_WINEPREFIX), made on first use.
#  - Windows finds DLLs through PATH: it gets every --dll-folder (the compiler's runtime DLLs)
#    and every folder of the build that holds a DLL (VelkApi.dll, MwApi.dll, ...).
set -euo pipefail

dll_folders=()
while [[ $# -gt 0 && "$1" == --dll-folder=* ]]; do
  dll_folders+=("${1#--dll-folder=}")
  shift
done
if [[ $# -eq 0 ]]; then
  echo "usage: $0 [--dll-folder=DIR]... PROGRAM [ARGUMENTS]..." >&2
  exit 2
fi

program_dir=$(cd "$(dirname "$1")" && pwd)
build_dir=$program_dir
while [[ "$build_dir" != / && ! -f "$build_dir/CMakeCache.txt" ]]; do
  build_dir=$(dirname "$build_dir")
done
[[ -f "$build_dir/CMakeCache.txt" ]] || build_dir=$program_dir

if [[ -x /usr/lib/wine/wine64 ]]; then
  wine=/usr/lib/wine/wine64       # Debian keeps the 64-bit loader off the PATH
elif command -v wine64 >/dev/null; then
  wine=wine64
else
  wine=wine
fi

export WINEPREFIX=${VELKAPI_WINEPREFIX:-$build_dir/wineprefix}
export WINEARCH=win64
export WINEDEBUG=-all
# No Mono or Gecko installers (they would ask through a dialog), no desktop menu entries.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
unset DISPLAY WAYLAND_DISPLAY

# The prefix is made once; test programs that start together wait for the first to make it.
if [[ ! -f "$WINEPREFIX/.initialised" ]]; then
  mkdir -p "$WINEPREFIX"
  (
    flock 9
    if [[ ! -f "$WINEPREFIX/.initialised" ]]; then
      "$wine" wineboot.exe --init >/dev/null 2>&1 || true
      wineserver -w
      [[ -f "$WINEPREFIX/system.reg" ]] || { echo "wine-run: cannot make the Wine prefix $WINEPREFIX" >&2; exit 1; }
      touch "$WINEPREFIX/.initialised"
    fi
  ) 9>"$WINEPREFIX.lock"
fi

windows_path() {
  local dir
  dir=$(cd "$1" && pwd)
  printf 'Z:%s' "${dir//\//\\}"
}

search=()
for dir in "${dll_folders[@]}"; do
  search+=("$(windows_path "$dir")")
done
while IFS= read -r dir; do
  search+=("$(windows_path "$dir")")
done < <(find "$build_dir" -path "$WINEPREFIX" -prune -o -name '*.dll' -printf '%h\n' | sort -u)
WINEPATH=$(IFS=';'; printf '%s' "${search[*]}")
export WINEPATH

exec "$wine" "$@"
