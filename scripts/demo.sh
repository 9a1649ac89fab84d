#!/usr/bin/env bash
# Installs what is missing, builds the velk tool and walks the example project with it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build-demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DVELKAPI_BUILD_TESTS=OFF >/dev/null
cmake --build build-demo -j2 --target velk
build-demo/cli/velk walk examples/demo-project.json
