#!/usr/bin/env bash
# Installs what is missing, builds the velk tool and shows it at work on the example project:
# list the operations of a store and the tools of the tool store, show one operation, set
# parameters in a copy of the project and show what changed with velk diff; check what a write
# through the library would change (the five-axis operation) and see a write that would change
# more refused; import a small tool library into the copy and export its tool store as a table;
# show the operation's expert form and change a copy of the machining-strategy settings file.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build-demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DVELKAPI_BUILD_TESTS=OFF \
  -DVELKAPI_WARNINGS_AS_ERRORS=ON >/dev/null
cmake --build build-demo -j2 --target velk
velk=build-demo/cli/velk
project=examples/demo-project.json

run() {
  echo
  echo "\$ velk $*"
  "$velk" "$@"
}

run ops "$project" --store 1
run tools "$project" --store 2
run show "$project" --store 1 --op 9 --section Parameter
run show "$project" --store 1 --op 6 --section Geometry
run actions "$project" --store 1 --op 6

copy="$(mktemp -d)/demo-project.json"
cp "$project" "$copy"
run set "$copy" --store 1 --op 9 Parameter.w_depth=-25 Parameter.i_coolant=1 \
  "Message.0=Drill the four mounting holes 25 deep"
run diff "$project" "$copy" || true
run check "$project" || true
run set "$copy" --store 1 --op 18 Parameter.i_coolant=1 || true

# A small FreeCAD tool library into the copy's tool store, and the store out as a LinuxCNC table.
run tools "$copy" --store 2 --import examples/tools/Library/small-shop.fctl
table="$(dirname "$copy")/tools.tbl"
run tools "$copy" --store 2 --export "$table"
echo
echo "\$ cat $table"
cat "$table"

run expert "$project" --store 1 --op 9
settings="$(dirname "$copy")/2dhighspeedrough.bin"
cp examples/2dhighspeedrough.bin "$settings"
run strategy "$settings" --set Infeed=3 --set RampAngle=1.5
rm -r "$(dirname "$copy")"
