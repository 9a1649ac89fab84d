#!/usr/bin/env bash
# Rebuilds examples/demo-project.json through velk itself: a store with the host's three leading
# records and one operation of every kind, each added with its defaults and then given the
# values a programmer would set for a small bracket.
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
  }
}
JSON

add() { "$velk" add "$project" --store 1 --kind "$1" --description "$2" >/dev/null; }
set_values() { local op=$1; shift; "$velk" set "$project" --store 1 --op "$op" "$@" >/dev/null; }

add PROFILE "Finish the outer contour"
set_values 3 Parameter.i_nr_of_figs=1 Parameter.w_zdepth=-30 Parameter.w_peck=5 Parameter.w_offset=0.2
add CORNER "Clean the inner corners"
set_values 4 Parameter.i_nr_of_figs=1 Parameter.w_zdepth=-12 Parameter.w__rough_rad=6
add CHAMFER "Chamfer the top edge 0.5 x 45"
set_values 5 Parameter.i_nr_of_figs=1 Parameter.w_cham_width=0.5
add POCKET "Rough the bracket pocket"
set_values 6 Parameter.i_nr_of_figs=1 Parameter.w_zdepth=-12 Parameter.w_peck=3 Parameter.w_offset=0.5
add FACEMILL "Face the top"
set_values 7 Parameter.i_nr_of_figs=1 Parameter.w_zdepth=-0.5 Parameter.w_overlap=70
add RESTMATL "Rest material in the pocket corners"
set_values 8 Parameter.i_nr_of_figs=1 Parameter.w_zdepth=-12 Parameter.w__rough_rad=8
add DRILLING "Drill the four mounting holes"
set_values 9 Parameter.i_nr_of_figs=4 Parameter.i_type=83 Parameter.i_g83_chipbr=0 Parameter.w_depth=-20 Parameter.w_peck=3 'Parameter.$_project=bracket'
add POCCYCLE "Circular pocket for the bearing"
set_values 10 Parameter.i_type=1 Parameter.i_finishing=1 Parameter.w_depth=-8 Parameter.w_diameter=22
add ENGRAVE "Engrave the part number"
add THREADING "Thread mill M8 in the boss"
set_values 12 Parameter.i_type=1 Parameter.w_depth=-12 Parameter.w_pitch=1.25 Parameter.w_diameter=8
add TOOLS "Tool list"
add MEDITOR "Program start block"
add MOVING "Move to the second clamping"
add STD3DGEO "Round the top face"
add RSURFING "Ruled surface of the ramp"
add MILL_5AX "Five-axis swarf of the flank"
add SLOT "Slot for the cable"
set_values 19 Parameter.i_nr_of_figs=1 Parameter.w_zdepth=-4
add UEDITOR_MAX "Program end block"
