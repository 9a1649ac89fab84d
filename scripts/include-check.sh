#!/usr/bin/env bash
# Checks that includes run down the floors of the sources (docs/architecture.md):
# - abi and platform include nothing of the library's other folders, util only platform, and
#   model only util and platform;
# - velk and the offline host (the stand-in library with it) reach the library's private sources only
#   through the abi target (include "HostAbi.h", not "host/..."), never by a path into src/.
# Fails naming each include that climbs.
set -euo pipefail
cd "$(dirname "$0")/.."

climbs=()
# below FOLDER ALLOWED...: every quoted include of src/FOLDER names a file of FOLDER or ALLOWED.
below() {
  local folder=$1
  shift
  local allowed="$folder"
  local name
  for name in "$@"; do allowed+="|$name"; done
  while IFS= read -r line; do
    climbs+=("$line")
  done < <(grep -rnE '^#include "[a-z]+/' "src/$folder" | grep -vE "#include \"($allowed)/" || true)
}
below abi
below platform
below util platform
below model util platform

# Outside src/, a quoted include of one of the library's folders must be a file of the includer's
# own tree (the offline host has a platform folder of its own).
library_folders='abi|capture|geometry|host|model|operation|parameters|platform|strategy|tools|util'
for tree in cli velkhost; do
  while IFS=: read -r file number text; do
    included=$(sed -E 's/^#include "([^"]+)".*/\1/' <<<"$text")
    [[ -e "$(dirname "$file")/$included" || -e "$tree/src/$included" ]] && continue
    climbs+=("$file:$number:$text")
  done < <(grep -rnE "^#include \"($library_folders)/" "$tree" || true)
done
if grep -rn 'PROJECT_SOURCE_DIR}/src' cli velkhost --include=CMakeLists.txt >/dev/null; then
  climbs+=("$(grep -rn 'PROJECT_SOURCE_DIR}/src' cli velkhost --include=CMakeLists.txt)")
fi

if ((${#climbs[@]})); then
  echo "include-check.sh: ${#climbs[@]} includes climb to a higher floor or into src/:" >&2
  printf '  %s\n' "${climbs[@]}" >&2
  exit 1
fi
echo "include-check.sh: every include runs down the floors"
