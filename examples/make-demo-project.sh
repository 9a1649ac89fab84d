#!/usr/bin/env bash
# Rebuilds examples/demo-project.json through velk itself: the drawing of a small bracket (its
# outer contour, a pocket with an island, four holes and a clamp kept as a non-CAD object), a
# store with the host's three leading records and one operation of every kind, each added with
# its defaults and the drawing objects it machines, then given the values and the actions
# before and after it that a programmer would set.
# Usage: examples/make-demo-project.sh BUILD_DIR
set -euo pipefail
cd "$(dirname "$0")/.."
velk="${1:?build folder}/cli/velk"
project=examples/demo-project.json

cat > "$project" <<'JSON'
{
  "environment": {
    "-d": ".",
    "NrOfChannels": "1",
    "SubSpindleAvailable": "1",
    "TURNDRIVENTOOLS": "2",
    "ppdefini": "examples/machine.ini"
  },
  "globals": {
    "$_project": "bracket",
    "i_current_channel": 0,
    "w_setup_cle": 2.0,
    "w_setup_ret": 10.0
  },
  "stores": {
    "1": [
      ["0 1 1 1", "Raw part 120 x 80 x 30, aluminium"],
      ["0 1 1 1", "Work offset G54 at the front left top corner"],
      ["0 1 1 1", "Tool change position X0 Y0 Z200"]
    ]
  },
  "cad": {
    "figures": [
      {"number": 1, "name": "OUTER"},
      {"number": 2, "name": "POCKET"},
      {"number": 3, "name": "ISLAND"}
    ],
    "objects": [
      {"number": 101, "type": 20, "name": 1, "start": [0, 0, 0]},
      {"number": 102, "type": 20, "name": 2, "start": [30, 20, 0]},
      {"number": 103, "type": 20, "name": 3, "start": [55, 35, 0]},
      {"number": 201, "type": 1, "start": [10, 10, 0]},
      {"number": 202, "type": 1, "start": [110, 10, 0]},
      {"number": 203, "type": 1, "start": [110, 70, 0]},
      {"number": 204, "type": 1, "start": [10, 70, 0]},
      {"number": 301, "type": 29, "name": 1}
    ]
  }
}
JSON

add() { "$velk" add "$project" --store 1 --kind "$@" >/dev/null; }
set_values() { local op=$1; shift; "$velk" set "$project" --store 1 --op "$op" "$@" >/dev/null; }
action() { local op=$1 list=$2; shift 2; "$velk" actions "$project" --store 1 --op "$op" "$list" add "$@" >/dev/null; }

add PROFILE --description "Finish the outer contour" --figure OUTER
set_values 3 Parameter.w_zdepth=-30 Parameter.w_peck=5 Parameter.w_offset=0.2
action 3 --post "M5"
add CORNER --description "Clean the inner corners" --figure POCKET
set_values 4 Parameter.w_zdepth=-12 Parameter.w__rough_rad=6
add CHAMFER --description "Chamfer the top edge 0.5 x 45" --figure OUTER
set_values 5 Parameter.w_cham_width=0.5
add POCKET --description "Rough the bracket pocket" --figure POCKET --island ISLAND
set_values 6 Parameter.w_zdepth=-12 Parameter.w_peck=3 Parameter.w_offset=0.5
action 6 --pre "M8"
action 6 --pre --kind 1 "call 'probe_pocket.mac'"
action 6 --post "M9"
add FACEMILL --description "Face the top" --figure OUTER
set_values 7 Parameter.w_zdepth=-0.5 Parameter.w_overlap=70
add RESTMATL --description "Rest material in the pocket corners" --figure POCKET --island ISLAND
set_values 8 Parameter.w_zdepth=-12 Parameter.w__rough_rad=8
add DRILLING --description "Drill the four mounting holes" \
  --figure "X10 Y10 Z0" --figure "X110 Y10 Z0" --figure "X110 Y70 Z0" --figure "X10 Y70 Z0"
set_values 9 Parameter.i_type=83 Parameter.i_g83_chipbr=0 Parameter.w_depth=-20 Parameter.w_peck=3 'Parameter.$_project=bracket'
action 9 --pre "M8"
action 9 --post "M9"
add POCCYCLE --description "Circular pocket for the bearing"
set_values 10 Parameter.i_type=1 Parameter.i_finishing=1 Parameter.w_depth=-8 Parameter.w_diameter=22
add ENGRAVE --description "Engrave the part number"
add THREADING --description "Thread mill M8 in the boss"
set_values 12 Parameter.i_type=1 Parameter.w_depth=-12 Parameter.w_pitch=1.25 Parameter.w_diameter=8
add TOOLS --description "Tool list"
add MEDITOR --description "Program start block"
add MOVING --description "Move to the second clamping"
action 15 --pre --kind 1 "call 'release_clamp.mac'"
add STD3DGEO --description "Round the top face" --figure G1
add RSURFING --description "Ruled surface of the ramp"
add MILL_5AX --description "Five-axis swarf of the flank"
add SLOT --description "Slot for the cable"
set_values 19 Parameter.w_zdepth=-4
add UEDITOR_MAX --description "Program end block"
