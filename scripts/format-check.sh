#!/usr/bin/env bash
# Checks that every C++ source the repository holds is formatted as .clang-format says, and fails
# naming each file that is not. With --fix it formats them instead.
# Usage: scripts/format-check.sh [--fix]
# The formatter's version is pinned, since another version may lay out the same code differently.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh format

formatter=clang-format-14
mapfile -t sources < <(git ls-files '*.cpp' '*.h')

if [[ "${1:-}" == --fix ]]; then
  "$formatter" -i "${sources[@]}"
  exit 0
fi

unformatted=()
for source in "${sources[@]}"; do
  "$formatter" --dry-run -Werror "$source" >/dev/null 2>&1 || unformatted+=("$source")
done
if ((${#unformatted[@]})); then
  echo "format-check.sh: ${#unformatted[@]} files differ from what $formatter makes of them" \
    "(scripts/format-check.sh --fix formats them):" >&2
  printf '  %s\n' "${unformatted[@]}" >&2
  exit 1
fi
echo "format-check.sh: ${#sources[@]} files formatted as .clang-format says"
