#!/usr/bin/env bash
# Runs a program of the Windows build under Wine: the emulator CMake uses for test discovery and
# ctest (cmake/toolchain-mingw64.cmake). Headless and quiet, in a Wine prefix of the build's own.
#
# Usage: scripts/wine-run.sh [--dll-folder=DIR]... PROGRAM.exe [ARGUMENTS]...
#        scripts/wine-run.sh --start BUILD_DIR | --stop BUILD_DIR
#
#  - The build folder is the outermost folder above PROGRAM that holds a CMakeCache.txt (a project
#    built inside the build, like the installed package's consumer, shares it); the Wine prefix
#    is its "wineprefix" subfolder (or $VELKAPI_WINEPREFIX), made on first use.
#  - Windows finds DLLs through PATH: it gets every --dll-folder (the compiler's runtime DLLs;
#    without one, those of x86_64-w64-mingw32-g++-posix) and every folder of the build that holds
#    a DLL (VelkApi.dll, ...). MwApi.dll is left out: a program finds it next to itself, as an
#    installation has it, and a program without it beside must not find it anywhere.
#  - ARGUMENTS that are absolute paths of an existing file or folder (or of a file in an existing
#    folder) are passed as paths on Wine's drive Z:, which maps the root folder.
#  - --start keeps a Wine server and the prefix's background services running until --stop (or
#    until no program has run for two minutes), so that each program starts in a fraction of a
#    second instead of bringing them up again. Wine would otherwise start those services from
#    whichever program runs first, and they would keep that program's output open: ctest would
#    wait for them as if the program were still running.
set -euo pipefail

if [[ -x /usr/lib/wine/wine64 ]]; then
  wine=/usr/lib/wine/wine64       # Debian keeps the 64-bit loader off the PATH
elif command -v wine64 >/dev/null; then
  wine=wine64
else
  wine=wine
fi

export WINEARCH=win64
export WINEDEBUG=-all
# No Mono or Gecko installers (they would ask through a dialog), no desktop menu entries.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
unset DISPLAY WAYLAND_DISPLAY

use_prefix_of() {
  export WINEPREFIX=${VELKAPI_WINEPREFIX:-$1/wineprefix}
}

# Makes the prefix once; programs that start together wait for the first to make it.
make_prefix() {
  [[ -f "$WINEPREFIX/.initialised" ]] && return 0
  mkdir -p "$WINEPREFIX"
  (
    flock 9
    if [[ ! -f "$WINEPREFIX/.initialised" ]]; then
      "$wine" wineboot.exe --init </dev/null >/dev/null 2>&1 || true
      wineserver -w
      if [[ ! -f "$WINEPREFIX/system.reg" ]]; then
        echo "wine-run: cannot make the Wine prefix $WINEPREFIX" >&2
        exit 1
      fi
      touch "$WINEPREFIX/.initialised"
    fi
  ) 9>"$WINEPREFIX.lock"
}

case "${1:-}" in
  --start)
    use_prefix_of "$(cd "${2:?--start needs the build folder}" && pwd)"
    make_prefix
    wineserver -k </dev/null >/dev/null 2>&1 || true   # a server left from an earlier run
    wineserver -p120 </dev/null >/dev/null 2>&1
    "$wine" wineboot.exe </dev/null >/dev/null 2>&1
    exit 0
    ;;
  --stop)
    use_prefix_of "$(cd "${2:?--stop needs the build folder}" && pwd)"
    wineserver -k </dev/null >/dev/null 2>&1 || true
    exit 0
    ;;
esac

dll_folders=()
while [[ $# -gt 0 && "$1" == --dll-folder=* ]]; do
  dll_folders+=("${1#--dll-folder=}")
  shift
done
if [[ ${#dll_folders[@]} -eq 0 ]]; then
  for dll in libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll; do
    path=$(x86_64-w64-mingw32-g++-posix -print-file-name="$dll" 2>/dev/null || true)
    if [[ "$path" == /* && -f "$path" ]]; then dll_folders+=("$(dirname "$path")"); fi
  done
fi
if [[ $# -eq 0 ]]; then
  echo "usage: $0 [--dll-folder=DIR]... PROGRAM [ARGUMENTS]...  |  --start|--stop BUILD_DIR" >&2
  exit 2
fi

program_dir=$(cd "$(dirname "$1")" && pwd)
build_dir=$program_dir
folder=$program_dir
while [[ "$folder" != / ]]; do
  if [[ -f "$folder/CMakeCache.txt" ]]; then build_dir=$folder; fi
  folder=$(dirname "$folder")
done
use_prefix_of "$build_dir"
make_prefix

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
done < <(find "$build_dir" -path "$WINEPREFIX" -prune -o -name '*.dll' ! -name MwApi.dll -printf '%h\n' |
  sort -u)
WINEPATH=$(IFS=';'; printf '%s' "${search[*]}")
export WINEPATH

# Arguments that are paths of this machine ("/work/x.json") reach the program as Windows paths on
# Wine's drive Z: ("Z:\work\x.json"); a Windows program would take "/work" for an option.
arguments=("$1")
shift
for argument in "$@"; do
  if [[ "$argument" == /?* && ( -e "$argument" || ( "$(dirname "$argument")" != / && -d "$(dirname "$argument")" ) ) ]]; then
    argument="Z:${argument//\//\\}"
  fi
  arguments+=("$argument")
done

exec "$wine" "${arguments[@]}"
