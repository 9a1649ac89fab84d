#!/usr/bin/env bash
# Rebuilds examples/demo-project.json through velk itself: the drawing of a small bracket (its
# outer contour, a pocket with an island, four holes and a clamp kept as a non-CAD object), a
# store with the host's three leading records and one operation of every kind, each added with
# its defaults and the drawing objects it machines, then given the values, the tool it works
# with and the actions before and after it that a programmer would set, and a tool store
# (store 2) of the job's tools. The machine is a milling machine (TURNDRIVENTOOLS 1), so
# operations carry mill tool records; the host's tool variables hold no tool.
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
    "TURNDRIVENTOOLS": "1",
    "ppdefini": "examples/machine.ini"
  },
  "globals": {
    "$_project": "bracket",
    "i_current_channel": 0,
    "w_setup_cle": 2.0,
    "w_setup_ret": 10.0,
    "i_t_tool_id": 2147483647, "i_t_tool_nr": 2147483647, "i_t_len_nr": 2147483647,
    "i_t_dia_nr": 2147483647, "i_t_metr_imp": 2147483647, "i_t_sister_tool": 2147483647,
    "i_t_holder_id": 2147483647, "i_t_tooltype_id": 2147483647, "i_t_color": 2147483647,
    "i_t_origin": 2147483647, "i_t_turret_id": 2147483647, "i_t_mill_turn": 2147483647,
    "i_t_bin": [2147483647, 2147483647, 2147483647],
    "w_t_diam": 2147483647.0, "w_t_2_diam": 2147483647.0, "w_t_topangle": 2147483647.0,
    "w_t_cornerrad": 2147483647.0, "i_t_nr_theeth": 2147483647, "w_t_useable_len": 2147483647.0,
    "w_t_tool_len": 2147483647.0, "w_t_def_peck": 2147483647.0, "w_t_def_overlap": 2147483647.0,
    "w_t_cle": 2147483647.0, "w_t_total_len": 2147483647.0, "i_t_thread_type": 2147483647,
    "i_t_tip_code": 2147483647, "i_t_turn_dir": 2147483647, "w_t_cutoff_x": 2147483647.0,
    "w_t_cutoff_z": 2147483647.0, "w_t_plate_ang": 2147483647.0, "w_t_plane_ang": 2147483647.0,
    "w_t_plate_thick": 2147483647.0, "w_t_plate_rad": 2147483647.0,
    "w_t_plate_width": 2147483647.0, "w_t_pitch": 2147483647.0,
    "w_t_tur_val": [2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0,
                    2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0,
                    2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0,
                    2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0],
    "i_t_hld_type": 2147483647,
    "w_t_val": [2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0,
                2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0],
    "i_t_spin_dir": 2147483647, "i_t_spin_type": 2147483647, "i_t_feed_type": 2147483647,
    "w_t_vcut_r": 2147483647.0, "w_t_feed_h_r": 2147483647.0, "w_t_feed_v_r": 2147483647.0,
    "w_t_vcut_f": 2147483647.0, "w_t_feed_h_f": 2147483647.0, "w_t_feed_v_f": 2147483647.0,
    "w_t_work_time": 2147483647.0, "i_t_gear_range": 2147483647, "i_t_coolant": 2147483647,
    "i_t_tool_output": 2147483647, "i_t_spin_speed_output": 2147483647,
    "i_t_spindle_nr": 2147483647, "w_t_shaftdiam": 2147483647.0,
    "w_t_shoulder_len": 2147483647.0, "w_t_upperdiam": 2147483647.0,
    "w_t_profilerad": 2147483647.0, "w_t_flatbottomdiam": 2147483647.0,
    "w_t_cornerrad_type": 2147483647.0, "w_t_max_diam": 2147483647.0,
    "w_t_siderad": 2147483647.0,
    "$_t_ident_nr": " ", "$_t_tool_type": " ", "$_t_tooldesc": " ", "$_t_tool_fig": " ",
    "$_t_manufacturer": " ", "$_t_order_nr": " ", "$_t_comment": " ", "$_t_tool_mat": " ",
    "$_t_iso_code": " ", "$_t_mac": " ", "$_t_hld_fig": " ", "$_t_tool_bmp": " ",
    "$_t_hld_file": " "
  },
  "stores": {
    "1": [
      ["0 1 1 1", "Raw part 120 x 80 x 30, aluminium"],
      ["0 1 1 1", "Work offset G54 at the front left top corner"],
      ["0 1 1 1", "Tool change position X0 Y0 Z200"]
    ],
    "2": [
      ["0 1 1 1", "Tools of the bracket job"]
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
# The CAM application numbers the first value line of a five-axis operation from 1: its field 0
# holds 0 and the values follow from field 1 on. velk writes the parameters one after another
# from field 0, so the line is put in here as the CAM application holds it (velk check shows
# what a write through the library would make of it).
sed -i '/^ *"MILL_5AX",$/{n;s/"[^"]*"/"0 1 2147483647 2147483647 0 202012 3 0.05 5 0 0 1 0 0 3 0 0 1 0 0.001 "/}' "$project"
add SLOT --description "Slot for the cable"
set_values 19 Parameter.w_zdepth=-4
add UEDITOR_MAX --description "Program end block"

# The job's tools, in the tool record's own names.
face_mill_50=(i_t_tool_id=1 i_t_tool_nr=1 i_t_len_nr=1 i_t_dia_nr=1 w_t_diam=50 i_t_nr_theeth=5
  w_t_useable_len=6 w_t_tool_len=40 w_t_shaftdiam=22 w_t_vcut_r=300 w_t_feed_h_r=0.15
  '$_t_ident_nr=FM50-5' '$_t_tool_type=Face mill' '$_t_tooldesc=Face mill 50 mm, 5 inserts'
  '$_t_tool_mat=Carbide inserts')
end_mill_10=(i_t_tool_id=2 i_t_tool_nr=2 i_t_len_nr=2 i_t_dia_nr=2 w_t_diam=10 i_t_nr_theeth=4
  w_t_useable_len=22 w_t_tool_len=72 w_t_shaftdiam=10 w_t_vcut_r=250 w_t_feed_h_r=0.05
  '$_t_ident_nr=EM10-4F' '$_t_tool_type=End mill' '$_t_tooldesc=End mill 10 mm, 4 flutes'
  '$_t_tool_mat=Carbide')
end_mill_6=(i_t_tool_id=3 i_t_tool_nr=3 i_t_len_nr=3 i_t_dia_nr=3 w_t_diam=6 i_t_nr_theeth=3
  w_t_useable_len=13 w_t_tool_len=57 w_t_shaftdiam=6 w_t_vcut_r=220 w_t_feed_h_r=0.03
  '$_t_ident_nr=EM6-3F' '$_t_tool_type=End mill' '$_t_tooldesc=End mill 6 mm, 3 flutes'
  '$_t_tool_mat=Carbide')
ball_nose_6=(i_t_tool_id=4 i_t_tool_nr=4 i_t_len_nr=4 i_t_dia_nr=4 w_t_diam=6 w_t_cornerrad=3
  i_t_nr_theeth=2 w_t_useable_len=10 w_t_tool_len=57 w_t_shaftdiam=6 w_t_vcut_r=200
  w_t_feed_h_r=0.04 '$_t_ident_nr=BN6-2F' '$_t_tool_type=Ball nose'
  '$_t_tooldesc=Ball nose 6 mm, 2 flutes' '$_t_tool_mat=Carbide')
drill_8_5=(i_t_tool_id=5 i_t_tool_nr=5 i_t_len_nr=5 i_t_dia_nr=5 w_t_diam=8.5 w_t_topangle=118
  i_t_nr_theeth=2 w_t_useable_len=43 w_t_tool_len=117 w_t_def_peck=3 w_t_shaftdiam=8.5
  w_t_vcut_r=90 w_t_feed_v_r=0.15 '$_t_ident_nr=DR8.5' '$_t_tool_type=Drill'
  '$_t_tooldesc=Drill 8.5 mm, 118 degree point' '$_t_tool_mat=Carbide')
thread_mill_m8=(i_t_tool_id=6 i_t_tool_nr=6 i_t_len_nr=6 i_t_dia_nr=6 w_t_diam=6.3 w_t_pitch=1.25
  i_t_nr_theeth=3 w_t_useable_len=20 w_t_tool_len=60 w_t_shaftdiam=8 w_t_vcut_r=120
  w_t_feed_h_r=0.03 '$_t_ident_nr=TM-M8' '$_t_tool_type=Thread mill'
  '$_t_tooldesc=Thread mill M8 x 1.25' '$_t_tool_mat=Carbide')
chamfer_mill_90=(i_t_tool_id=7 i_t_tool_nr=7 i_t_len_nr=7 i_t_dia_nr=7 w_t_diam=10 w_t_2_diam=1
  w_t_topangle=90 i_t_nr_theeth=4 w_t_useable_len=4.5 w_t_tool_len=60 w_t_shaftdiam=10
  w_t_vcut_r=180 w_t_feed_h_r=0.04 '$_t_ident_nr=CH90-10' '$_t_tool_type=Chamfer mill'
  '$_t_tooldesc=Chamfer mill 90 degrees, 10 mm' '$_t_tool_mat=Carbide')

# The tool each operation works with; the four without one keep a record that holds no tool.
use_tool() { local op=$1; shift; set_values "$op" "${@/#/ToolData.}"; }
use_tool 3 "${end_mill_10[@]}"
use_tool 4 "${end_mill_6[@]}"
use_tool 5 "${chamfer_mill_90[@]}"
use_tool 6 "${end_mill_10[@]}"
use_tool 7 "${face_mill_50[@]}"
use_tool 8 "${end_mill_6[@]}"
use_tool 9 "${drill_8_5[@]}"
use_tool 10 "${end_mill_10[@]}"
use_tool 11 "${chamfer_mill_90[@]}"
use_tool 12 "${thread_mill_m8[@]}"
use_tool 16 "${ball_nose_6[@]}"
use_tool 17 "${ball_nose_6[@]}"
use_tool 18 "${end_mill_10[@]}"
use_tool 19 "${end_mill_6[@]}"

# The tool store: each tool taken from an operation that uses it, in tool number order.
keep_tool() { "$velk" tools "$project" --store 2 --add-from "1:$1" >/dev/null; }
keep_tool 7   # T1, the face mill
keep_tool 3   # T2, the 10 mm end mill
keep_tool 4   # T3, the 6 mm end mill
keep_tool 16  # T4, the ball nose
keep_tool 9   # T5, the drill
keep_tool 12  # T6, the thread mill
keep_tool 5   # T7, the chamfer mill
