#include "parameters/ParameterCatalogue.h"

#include <algorithm>
#include <iterator>

#include "util/TextHelpers.h"

namespace VelkApi::catalogue {

namespace {

using Type = MillDrillOperationType;

// ---- how the tables are written

// Sentinel default: "not set" for an int (2147483647) and for a double (2147483647.0).
constexpr double U = 2147483647.0;
// Every axis value starts at the cleared axis marker.
constexpr double kAxisUnset = -999999.0;
// Setup clearance and setup retract, read from the host when the catalogue is declared.
constexpr Default CLE{Default::Source::SetupClearance};
constexpr Default RET{Default::Source::SetupRetract};

constexpr Row integer(int number, const char* name, Default value) {
    return {number, 0, name, Kind::Int, value, nullptr, When::Always, kEveryKind, {}};
}

constexpr Row real(int number, const char* name, Default value) {
    return {number, 0, name, Kind::Double, value, nullptr, When::Always, kEveryKind, {}};
}

constexpr Row axis(int number, const char* name) {
    return {number, 0, name, Kind::Axis, kAxisUnset, nullptr, When::Always, kEveryKind, {}};
}

constexpr Row text(int number, const char* name, const char* value = nullptr) {
    return {number, 0, name, Kind::String, 0.0, value, When::Always, kEveryKind, {}};
}

constexpr Row option(int number, int bit, const char* name, bool value = false) {
    const double fallback = value ? 1.0 : 0.0;
    return {number, bit, name, Kind::Option, fallback, nullptr, When::Always, kEveryKind, {}};
}

// The machine block of option word `number`; `plain` are the bits of its plain form.
constexpr Row machineBlock(int number, PlainBits plain) {
    return {number, 0, "", Kind::MachineBlock, 0.0, nullptr, When::Always, kEveryKind, plain};
}

constexpr Row awareOnly(Row row) {
    row.when = When::MachineAware;
    return row;
}

constexpr Row onlyFor(Type type, Row row) {
    row.onlyForKind = static_cast<int>(type);
    return row;
}

// The plain bits a machine block may declare.
constexpr PlainBit GOHOME{3, "o_gohome"};
constexpr PlainBit RAPID_PECK{10, "o_rapid_peck"};
constexpr PlainBit SUBPROGRAM{23, "o_subprogram"};
constexpr PlainBit POCKETING_REVERSE_DIRECTION{12, "o_pocketing_reverse_direction"};

constexpr PlainBits plain(PlainBit first, PlainBit second, PlainBit third) {
    return {{first, second, third, PlainBit{0, nullptr}}, 3};
}

constexpr PlainBits plain(PlainBit first, PlainBit second, PlainBit third, PlainBit fourth) {
    return {{first, second, third, fourth}, 4};
}

// A machine block without a plain form: nothing is declared for plain operations.
constexpr PlainBits kAwareOnly{};

// ---- the tables

constexpr Row kProfile[] = {
    integer(0, "i_nr_of_figs", U),
    integer(1, "i_nr_of_isle", U),
    integer(2, "i_xz_fig", U),
    integer(3, "i_xz_isle", U),
    integer(4, "i_off_type", 1),
    real(5, "w_offset", 0),
    real(6, "w_zdepth", 0),
    real(7, "w_zstart", 0),
    real(8, "w_peck", 1),
    real(9, "w_angle", 0),
    real(10, "w_rad_top", 0),
    real(11, "w_rad_bottom", 0),
    real(12, "w_entry_type", 0),
    axis(13, "w_xs"),
    axis(14, "w_ys"),
    axis(15, "w_xentry"),
    axis(16, "w_yentry"),
    real(17, "w_exit_type", 0),
    axis(18, "w_xexit"),
    axis(19, "w_yexit"),
    axis(20, "w_xe"),
    axis(21, "w_ye"),
    integer(22, "i_dive_mode", 1),
    real(23, "w_dive_angle", 0),
    real(24, "w_dive_rad", 0),
    real(25, "w_dive_dir", 0),
    option(26, 1, "o_antirotation"),
    option(26, 2, "o_retract", true),
    option(26, 5, "o_hscloop"),
    option(26, 8, "o_const_zpeck"),
    option(26, 9, "o_wandering_entrypoint"),
    option(26, 13, "o_ignore_startpoints"),
    option(26, 24, "o_techno_modify"),
    option(26, 26, "o_retract_between_figures", true),
    option(26, 27, "o_exit equal_entry"),
    option(26, 28, "o_use_height_from_figure"),
    option(26, 30, "o_finishing"),
    option(26, 32, "o_inout_position_checked"),
    machineBlock(26, plain(GOHOME, RAPID_PECK, SUBPROGRAM)),
    integer(27, "i_corner", U),
    real(28, "w_overtravel", 0),
    integer(29, "i_coolant", 0),
    real(30, "w_clearp", CLE),
    real(31, "w_retract_height", RET),
    real(32, "w_tfromx", U),
    real(33, "w_tfromy", U),
    real(34, "w_zoffset", 0),
    real(35, "w_ignore_dist", 1.5),
    real(36, "w_fin_overlap", 50),
    real(37, "w_fin_feed", 100),
    option(38, 1, "o_special_corner"),
    option(38, 2, "o_profile_from_bottom_to_top"),
    real(39, "w_overlap", 50),
    real(40, "w_dir_overlap", 50),
    real(41, "w_extend_start", 0),
    real(42, "w_extend_end", 0),
    integer(43, "i_parent_op", U),
    real(100, "w_largest_offset", 0),
    real(101, "w_peck_xy", 0),
    awareOnly(option(200, 1, "o_dmg_turnplus")),
};

// PROFILE with another offset type and option word, without i_parent_op and o_dmg_turnplus.
constexpr Row kSlot[] = {
    integer(0, "i_nr_of_figs", U),
    integer(1, "i_nr_of_isle", U),
    integer(2, "i_xz_fig", U),
    integer(3, "i_xz_isle", U),
    integer(4, "i_off_type", 4),
    real(5, "w_offset", 0),
    real(6, "w_zdepth", 0),
    real(7, "w_zstart", 0),
    real(8, "w_peck", 1),
    real(9, "w_angle", 0),
    real(10, "w_rad_top", 0),
    real(11, "w_rad_bottom", 0),
    real(12, "w_entry_type", 0),
    axis(13, "w_xs"),
    axis(14, "w_ys"),
    axis(15, "w_xentry"),
    axis(16, "w_yentry"),
    real(17, "w_exit_type", 0),
    axis(18, "w_xexit"),
    axis(19, "w_yexit"),
    axis(20, "w_xe"),
    axis(21, "w_ye"),
    integer(22, "i_dive_mode", 1),
    real(23, "w_dive_angle", 0),
    real(24, "w_dive_rad", 0),
    real(25, "w_dive_dir", 0),
    option(26, 2, "o_retract", true),
    option(26, 5, "o_hscloop"),
    option(26, 9, "o_wandering_entrypoint"),
    option(26, 13, "o_ignore_startpoints", true),
    option(26, 26, "o_retract_between_figures"),
    option(26, 27, "o_exit equal_entry"),
    option(26, 28, "o_use_height_from_figure"),
    option(26, 30, "o_finishing"),
    option(26, 32, "o_inout_position_checked"),
    machineBlock(26, plain(GOHOME, RAPID_PECK, SUBPROGRAM)),
    integer(27, "i_corner", U),
    real(28, "w_overtravel", 0),
    integer(29, "i_coolant", 0),
    real(30, "w_clearp", CLE),
    real(31, "w_retract_height", RET),
    real(32, "w_tfromx", U),
    real(33, "w_tfromy", U),
    real(34, "w_zoffset", 0),
    real(35, "w_ignore_dist", 1.5),
    real(36, "w_fin_overlap", 50),
    real(37, "w_fin_feed", 100),
    option(38, 1, "o_special_corner"),
    option(38, 2, "o_profile_from_bottom_to_top"),
    real(39, "w_overlap", 50),
    real(40, "w_dir_overlap", 50),
    real(41, "w_extend_start", 0),
    real(42, "w_extend_end", 0),
    real(100, "w_largest_offset", 0),
    real(101, "w_peck_xy", 0),
};

constexpr Row kCorner[] = {
    integer(0, "i_nr_of_figs", U),
    integer(1, "i_nr_of_isle", U),
    integer(2, "i_xz_fig", U),
    integer(3, "i_xz_isle", U),
    integer(4, "i_off_type", 1),
    real(5, "w_offset", 0),
    real(6, "w_zdepth", 0),
    real(7, "w_zstart", 0),
    real(8, "w_peck", 1),
    real(9, "w__rough_rad", 2),
    real(10, "w_angle", 0),
    real(11, "w_rad_top", 0),
    real(12, "w_rad_bottom", 0),
    option(13, 1, "o_antirotation"),
    option(13, 2, "o_retract"),
    option(13, 28, "o_use_height_from_figure"),
    machineBlock(13, plain(GOHOME, RAPID_PECK, SUBPROGRAM)),
    integer(14, "i_corner", U),
    integer(15, "i_coolant", 0),
    real(16, "w_clearp", CLE),
    real(17, "w_retract_height", RET),
    real(18, "w_tfromx", U),
    real(19, "w_tfromy", U),
    real(20, "w_zoffset", 0),
    integer(21, "i_parent_op", U),
};

constexpr Row kChamfer[] = {
    integer(0, "i_nr_of_figs", U),
    integer(1, "i_nr_of_isle", U),
    integer(2, "i_xz_fig", U),
    integer(3, "i_xz_isle", U),
    integer(4, "i_off_type", 1),
    real(5, "w_offset", 0),
    real(6, "w_zdepth", 0),
    real(7, "w_zstart", 0),
    real(8, "w_peck", 1),
    real(9, "w_cham_width", 1),
    real(10, "w_cham_angle", 45),
    real(11, "w_entry_type", 0),
    axis(12, "w_xs"),
    axis(13, "w_ys"),
    axis(14, "w_xentry"),
    axis(15, "w_yentry"),
    real(16, "w_exit_type", 0),
    axis(17, "w_xexit"),
    axis(18, "w_yexit"),
    axis(19, "w_xe"),
    axis(20, "w_ye"),
    option(21, 1, "o_antirotation"),
    option(21, 2, "o_retract"),
    option(21, 13, "o_ignore_startpoints", true),
    option(21, 27, "o_exit equal_entry"),
    option(21, 28, "o_use_height_from_figure"),
    option(21, 29, "o_peck_radial"),
    option(21, 32, "o_inout_position_checked"),
    machineBlock(21, plain(SUBPROGRAM, GOHOME, RAPID_PECK)),
    integer(22, "i_coolant", 0),
    real(23, "w_clearp", CLE),
    real(24, "w_retract_height", RET),
    real(25, "w_tfromx", U),
    real(26, "w_tfromy", U),
    real(27, "w_zoffset", 0),
    real(28, "w_extend_start", 0),
    real(29, "w_extend_end", 0),
    real(30, "w_ignore_dist", 1.5),
};

constexpr Row kPocket[] = {
    integer(0, "i_nr_of_figs", U),
    integer(1, "i_nr_of_isle", U),
    integer(2, "i_xz_fig", U),
    integer(3, "i_xz_isle", U),
    integer(4, "i_off_type", 0),
    real(5, "w_offset", 0),
    real(6, "w_zdepth", 0),
    real(7, "w_zstart", 0),
    real(8, "w_peck", 1),
    real(9, "w_angle", 0),
    real(10, "w_rad_top", 0),
    real(11, "w_rad_bottom", 0),
    real(12, "w_overlap", 50),
    real(13, "w_island_offset", 0),
    real(14, "w_island_angle", 0),
    real(15, "w_island_rad_top", 0),
    real(16, "w_island_rad_bottom", 0),
    integer(17, "i_dive_mode", 1),
    real(18, "w_dive_angle", 2),
    real(19, "w_dive_rad", 0),
    real(20, "w_dive_dir", 0),
    option(21, 1, "o_antirotation"),
    option(21, 2, "o_retract", true),
    option(21, 5, "o_hscloop"),
    option(21, 11, "o_pocketing_plunge_down"),
    option(21, 12, "o_pocketing_reverse_direction"),
    option(21, 13, "o_ignore_startpoints"),
    option(21, 27, "o_exit equal_entry"),
    option(21, 28, "o_use_height_from_figure"),
    option(21, 30, "o_finishing"),
    option(21, 31, "o_spiral_circularpocketing"),
    option(21, 32, "o_inout_position_checked"),
    machineBlock(21, plain(RAPID_PECK, SUBPROGRAM, GOHOME)),
    real(22, "w_dir_overlap", 50),
    integer(23, "i_corner", U),
    real(24, "w_hsc_corner", 0),
    integer(25, "i_coolant", 0),
    real(26, "w_clearp", CLE),
    real(27, "w_retract_height", RET),
    real(28, "w_tfromx", U),
    real(29, "w_tfromy", U),
    real(30, "w_xs", U),  // plain doubles here, not axis values
    real(31, "w_ys", U),
    real(32, "w_zoffset", 0),
    real(33, "w_fin_offset", 0),
    real(34, "w_fin_peck", 1),
    real(35, "w_fin_feed", 100),
    option(36, 1, "o_special_corner"),
    option(36, 2, "o_profile_from_bottom_to_top"),
    integer(37, "i_parent_op", U),
    real(38, "w_entry_type", 0),
    real(39, "w_exit_type", 0),
    real(40, "w_overtravel", U),
    awareOnly(option(200, 1, "o_dmg_turnplus")),
};

constexpr Row kFacemill[] = {
    integer(0, "i_nr_of_figs", U),
    integer(1, "i_nr_of_isle", U),
    integer(2, "i_xz_fig", U),
    integer(3, "i_xz_isle", U),
    integer(4, "i_off_type", 0),
    real(5, "w_offset", 1),
    real(6, "w_zdepth", 0),
    real(7, "w_zstart", 0),
    real(8, "w_peck", 1),
    real(9, "w_overtravel", 0),
    real(10, "w_overlap", 50),
    real(11, "w_angle", 0),
    option(12, 1, "o_unidirectional"),
    option(12, 2, "o_stay_on_z"),
    option(12, 3, "o_mill_in_middle"),
    option(13, 2, "o_retract", true),
    option(13, 5, "o_hscloop"),
    option(13, 13, "o_ignore_startpoints"),
    option(13, 28, "o_use_height_from_figure"),
    machineBlock(13, plain(GOHOME, SUBPROGRAM, RAPID_PECK)),
    integer(14, "i_coolant", 0),
    real(15, "w_clearp", CLE),
    real(16, "w_retract_height", RET),
    real(17, "w_tfromx", U),
    real(18, "w_tfromy", U),
    real(19, "w_zoffset", 0),
    real(20, "w__infeed", 100),
};

constexpr Row kRestmatl[] = {
    integer(0, "i_nr_of_figs", U),
    integer(1, "i_nr_of_isle", U),
    integer(2, "i_xz_fig", U),
    integer(3, "i_xz_isle", U),
    integer(4, "i_off_type", 0),
    real(5, "w_offset", 0),
    real(6, "w_zdepth", 0),
    real(7, "w_zstart", 0),
    real(8, "w_peck", 1),
    real(9, "w__rough_rad", 2),
    real(10, "w_angle", 0),
    real(11, "w_rad_top", 0),
    real(12, "w_rad_bottom", 0),
    real(13, "w_overlap", 50),
    real(14, "w_island_offset", 0),
    real(15, "w_island_angle", 0),
    real(16, "w_island_rad_top", 0),
    real(17, "w_island_rad_bottom", 0),
    option(18, 1, "o_antirotation"),
    option(18, 2, "o_retract"),
    option(18, 26, "o_retract_between_figures"),
    option(18, 28, "o_use_height_from_figure"),
    option(18, 30, "o_finishing"),
    option(18, 32, "o_inout_position_checked"),
    machineBlock(18, plain(GOHOME, POCKETING_REVERSE_DIRECTION, RAPID_PECK, SUBPROGRAM)),
    integer(19, "i_corner", U),
    real(20, "w_hsc_corner", 0),
    integer(21, "i_coolant", 0),
    real(22, "w_clearp", CLE),
    real(23, "w_retract_height", RET),
    real(24, "w_tfromx", U),
    real(25, "w_tfromy", U),
    real(26, "w_zoffset", 0),
    integer(27, "i_parent_op", U),
};

constexpr Row kRsurfing[] = {
    integer(0, "i_nr_of_figs", U),
    integer(1, "i_nr_of_isle", 0),
    integer(2, "i_xz_fig", 0),
    integer(3, "i_xz_isle", 0),
    integer(4, "i_off_type", 0),
    real(5, "w_offset", 0),
    real(6, "w_zdepth", 0),
    real(7, "w_zstart", 0),
    real(8, "w_peck", 1),
    real(9, "w_entry_type", 0),
    axis(10, "w_xentry"),
    axis(11, "w_yentry"),
    real(12, "w_exit_type", 0),
    axis(13, "w_xexit"),
    axis(14, "w_yexit"),
    real(15, "w_overlap", 50),
    real(16, "w__cusp", 0.1),
    integer(17, "i_dive_mode", 1),
    real(18, "w_dive_angle", 2),
    real(19, "w_dive_rad", 0),
    real(20, "w_dive_dir", 0),
    option(21, 1, "o_pocket_ruled_surface"),
    option(21, 2, "o_ruled_outside"),
    option(22, 3, "o_gohome"),
    option(22, 10, "o_rapid_peck"),
    option(22, 13, "o_ignore_startpoints"),
    machineBlock(22, kAwareOnly),
    integer(23, "i_coolant", 0),
    real(24, "w_clearp", CLE),
    real(25, "w_retract_height", RET),
    real(26, "w_tfromx", U),
    real(27, "w_tfromy", U),
    real(28, "w_hsc_corner", U),
};

constexpr Row kStd3dgeo[] = {
    integer(0, "i_type", U),
    axis(1, "w__x(1)"),
    axis(2, "w__y(1)"),
    axis(3, "w__z(1)"),
    axis(4, "w__x(2)"),
    axis(5, "w__y(2)"),
    axis(6, "w__z(2)"),
    axis(7, "w__x(3)"),
    axis(8, "w__y(3)"),
    axis(9, "w__z(3)"),
    real(10, "w_radius", 0),
    real(11, "w_offset", 0),
    real(12, "w__surf_offset", 0),
    real(13, "w__material", 0),
    real(14, "w_peck", 1),
    real(15, "w_overlap", 50),
    real(16, "w__cusp", 0.1),
    option(17, 1, "o_mill_inside"),
    option(17, 2, "o_profile_border"),
    option(18, 1, "o_antirotation"),
    option(18, 3, "o_gohome"),
    option(18, 10, "o_rapid_peck"),
    option(18, 13, "o_ignore_startpoints"),
    machineBlock(18, kAwareOnly),
    integer(19, "i_coolant", 0),
    real(20, "w_clearp", CLE),
    real(21, "w_retract_height", RET),
    real(22, "w_tfromx", U),
    real(23, "w_tfromy", U),
};

// Retract and clearance both start at the setup clearance; the setup retract is not used here.
constexpr Row kDrilling[] = {
    integer(0, "i_nr_of_figs", U),
    integer(1, "i_type", U),
    integer(2, "i_g83_chipbr", U),
    real(3, "w_retract", CLE),
    real(4, "w_clearance", CLE),
    real(5, "w_depth", U),
    real(6, "w_first_peck", U),
    real(7, "w_peck", U),
    real(8, "w_min_peck", U),
    real(9, "w_chipbreak", U),
    integer(10, "i_no_of_pecks", U),
    real(11, "w_degress", U),
    real(12, "w_upper_stop", U),
    real(13, "w_lower_stop", U),
    real(14, "w_dwell1", U),
    real(15, "w_dwell2", U),
    real(16, "w_pitch", U),
    real(17, "w_feed_in", U),
    real(18, "w_feed_out", U),
    real(19, "w_xback", U),
    real(20, "w_yback", U),
    real(21, "w_zback", U),
    integer(22, "i_spin_dir1", U),
    integer(23, "i_spin_dir2", U),
    real(24, "w_orient_ang", U),
    integer(25, "i_back_dir", U),
    real(26, "w_tool_thick", U),
    real(27, "w_wp_thick", U),
    real(28, "w_excenter", U),
    real(29, "w_additional(1)", U),
    real(30, "w_additional(2)", U),
    real(31, "w_additional(3)", U),
    real(32, "w_additional(4)", U),
    real(33, "w_additional(5)", U),
    option(34, 1, "o_add_tip_to_depth"),
    option(34, 2, "o_with_subprogram"),
    option(34, 3, "o_expand"),
    option(34, 5, "o_group_reversal"),
    option(35, 3, "o_gohome"),
    real(36, "w_pre_drilled", U),
    integer(37, "i_coolant", 0),
    text(100, "$_project"),
};

// Pocket cycles and thread milling share one list; entry 6 and option word 35 differ.
constexpr Row kPoccycleThreading[] = {
    integer(0, "i_nr_of_figs", U),
    integer(1, "i_type", 1),
    integer(2, "i_finishing", 0),
    real(3, "w_retract", CLE),
    real(4, "w_clearance", CLE),
    real(5, "w_depth", U),
    onlyFor(Type::POCCYCLE, real(6, "w_peck", U)),
    onlyFor(Type::THREADING, real(6, "w_pitch", U)),
    real(7, "w_offset", 0),
    real(8, "w_length", U),
    real(9, "w_width", U),
    real(10, "w_diameter", U),
    real(11, "w_bil_diam", U),
    real(12, "w_bil_length", U),
    real(13, "w_bil_width", U),
    real(14, "w_bil_depth", U),
    real(15, "w_angle", U),
    real(16, "w_cornerrad", U),
    real(17, "w_overlap", U),
    real(18, "w_degress", U),
    real(19, "w_peck_finish", U),
    real(20, "w_feed_z", U),
    real(21, "w_feed_xy", U),
    real(22, "w_core_diam", U),
    real(23, "w_entry_rad", U),
    integer(24, "i_milling_type", U),
    real(25, "w_additional(1)", U),
    real(26, "w_additional(2)", U),
    real(27, "w_additional(3)", U),
    real(28, "w_additional(4)", U),
    real(29, "w_additional(5)", U),
    real(30, "w_additional(6)", U),
    real(31, "w_additional(7)", U),
    real(32, "w_additional(8)", U),
    real(33, "w_additional(9)", U),
    real(34, "w_additional(10)", U),
    onlyFor(Type::POCCYCLE, option(35, 1, "o_finishing")),
    onlyFor(Type::POCCYCLE, option(35, 2, "o_with_subprogram")),
    onlyFor(Type::POCCYCLE, option(35, 3, "o_expand")),
    onlyFor(Type::POCCYCLE, option(35, 5, "o_group_reversal")),
    onlyFor(Type::THREADING, option(35, 3, "o_expand")),
    onlyFor(Type::THREADING, option(35, 4, "o_upside_down")),
    option(36, 1, "o_antirotation"),
    option(36, 3, "o_gohome"),
    real(37, "w_pre_drilled", U),
    integer(38, "i_coolant", 0),
    text(100, "$_project"),
};

// MEDITOR and UEDITOR_MAX.
constexpr Row kEditor[] = {
    integer(0, "i_mct", 1),
    integer(1, "i_origin", 0),
    option(2, 1, "i_yaxdrilling"),
    awareOnly(integer(3, "i_subspindle", 0)),
};

constexpr Row kMoving[] = {
    integer(0, "i_mct", 1),
    integer(1, "i_origin", 0),
    option(2, 1, "i_yaxdrilling"),
};

// Kind 15, between MOVING and STD3DGEO, which has no name of its own.
constexpr Row kKind15[] = {
    integer(0, "blubb1", 1),
    integer(1, "blubb2", 0),
    integer(2, "blubb3", 0),
    integer(3, "blubb4", 0),
};

// Numbering starts at 1.
constexpr Row kMill5ax[] = {
    integer(1, "i_type", U),
    integer(2, "i_size", U),
    integer(3, "i_vdm", U),
    integer(4, "i_coolant", U),
    integer(5, "i_op_version", U),
    integer(6, "i_mill_mode", U),
    real(7, "w_op_toler", U),
    integer(8, "i_axis_mode", U),
    real(9, "w_first_vector(1)", U),
    real(10, "w_first_vector(2)", U),
    real(11, "w_first_vector(3)", U),
    integer(12, "i_with_subprogram", U),
    integer(13, "i_current_origin", U),
    real(14, "w_needed_axis", U),
    real(15, "w_vector(1)", U),
    real(16, "w_vector(2)", U),
    real(17, "w_vector(3)", U),
    integer(18, "i_go_home", U),
    real(19, "w_area_toler", U),
    text(100, "$_info", "*Info"),
    real(101, "w_needed_axis2", 3),
    real(102, "w_len(1)", 0),
    real(103, "w_len(2)", 0),
    real(104, "w_time(1)", 0),
    real(105, "w_time(2)", 0),
    real(106, "w_numberofitems", 0),
};

// ENGRAVE, REDRAW, TOOLS and every kind without a list of its own.
constexpr Row kDummy[] = {
    integer(0, "Dummy", U),
};

// ---- kinds to tables, with the section's line counts (plain, machine-aware)

template <std::size_t N>
constexpr Catalogue lines(const Row (&rows)[N], int plainLineCount, int awareLineCount) {
    return {rows, N, plainLineCount, awareLineCount};
}

constexpr Catalogue kProfileCatalogue = lines(kProfile, 3, 4);
constexpr Catalogue kSlotCatalogue = lines(kSlot, 3, 3);
constexpr Catalogue kCornerCatalogue = lines(kCorner, 2, 2);
constexpr Catalogue kChamferCatalogue = lines(kChamfer, 2, 2);
constexpr Catalogue kPocketCatalogue = lines(kPocket, 2, 4);
constexpr Catalogue kFacemillCatalogue = lines(kFacemill, 2, 2);
constexpr Catalogue kRestmatlCatalogue = lines(kRestmatl, 2, 2);
constexpr Catalogue kRsurfingCatalogue = lines(kRsurfing, 2, 2);
constexpr Catalogue kStd3dgeoCatalogue = lines(kStd3dgeo, 2, 2);
constexpr Catalogue kDrillingCatalogue = lines(kDrilling, 3, 3);
constexpr Catalogue kPoccycleThreadingCatalogue = lines(kPoccycleThreading, 2, 2);
constexpr Catalogue kEditorCatalogue = lines(kEditor, 2, 2);
constexpr Catalogue kMovingCatalogue = lines(kMoving, 2, 2);
constexpr Catalogue kKind15Catalogue = lines(kKind15, 2, 2);
constexpr Catalogue kMill5axCatalogue = lines(kMill5ax, 3, 3);
constexpr Catalogue kDummyCatalogue = lines(kDummy, 2, 2);

constexpr int kind(Type type) {
    return static_cast<int>(type);
}

}  // namespace

const Catalogue& catalogueOf(MillDrillOperationType type) {
    switch (static_cast<int>(type)) {
        case kind(Type::PROFILE):
            return kProfileCatalogue;
        case kind(Type::SLOT):
            return kSlotCatalogue;
        case kind(Type::CORNER):
            return kCornerCatalogue;
        case kind(Type::CHAMFER):
            return kChamferCatalogue;
        case kind(Type::POCKET):
            return kPocketCatalogue;
        case kind(Type::FACEMILL):
            return kFacemillCatalogue;
        case kind(Type::RESTMATL):
            return kRestmatlCatalogue;
        case kind(Type::RSURFING):
            return kRsurfingCatalogue;
        case kind(Type::STD3DGEO):
            return kStd3dgeoCatalogue;
        case kind(Type::DRILLING):
            return kDrillingCatalogue;
        case kind(Type::POCCYCLE):
        case kind(Type::THREADING):
            return kPoccycleThreadingCatalogue;
        case kind(Type::MEDITOR):
        case kind(Type::UEDITOR_MAX):
            return kEditorCatalogue;
        case kind(Type::MOVING):
            return kMovingCatalogue;
        case 15:
            return kKind15Catalogue;
        case kind(Type::MILL_5AX):
            return kMill5axCatalogue;
        default:
            return kDummyCatalogue;
    }
}

namespace {

// The machine-aware bits of a machine block, in the order they are declared.
struct AwareBit {
    int bit;
    const char* name;
    Condition condition;
};

constexpr AwareBit kAwareBits[] = {
    {14, "o_yax_drilling", Condition::YAxis}, {21, "o_cax_index", Condition::YAxis},
    {22, "o_cax_break", Condition::YAxis},    {25, "o_subspindle", Condition::Subspindle},
    {15, "GOH_0", Condition::MachineAware},   {16, "GOH_1", Condition::MachineAware},
    {17, "GOH_2", Condition::MachineAware},   {18, "GOH_3", Condition::MachineAware},
    {19, "GOH_4", Condition::MachineAware},   {20, "GOH_5", Condition::MachineAware},
};

// Bit `bit` of the block's option word, declared under the block's own `when` and kind.
Declaration blockBit(const Row& block, int bit, const char* name, Condition condition) {
    Row row = block;
    row.bit = bit;
    row.name = name;
    row.kind = Kind::Option;
    row.value = 0.0;
    return {text::lowerCased(name), row, condition};
}

void appendMachineBlock(std::vector<Declaration>& list, const Row& block) {
    for (std::size_t i = 0; i < block.plain.count; ++i) {
        const PlainBit& plainBit = block.plain.bits[i];
        list.push_back(blockBit(block, plainBit.bit, plainBit.name, Condition::Plain));
    }
    for (const AwareBit& awareBit : kAwareBits) {
        list.push_back(blockBit(block, awareBit.bit, awareBit.name, awareBit.condition));
    }
}

std::vector<Declaration> declarationsInKeyOrder(const Catalogue& catalogue) {
    std::vector<Declaration> list;
    for (const Row& row : catalogue) {
        if (row.kind == Kind::MachineBlock) {
            appendMachineBlock(list, row);
        } else {
            list.push_back({text::lowerCased(row.name), row, Condition::Always});
        }
    }
    std::stable_sort(list.begin(), list.end(),
                     [](const Declaration& a, const Declaration& b) { return a.key < b.key; });
    return list;
}

}  // namespace

const std::vector<Declaration>& declarationsOf(MillDrillOperationType type) {
    static const Catalogue* const kCatalogues[] = {
        &kProfileCatalogue,
        &kSlotCatalogue,
        &kCornerCatalogue,
        &kChamferCatalogue,
        &kPocketCatalogue,
        &kFacemillCatalogue,
        &kRestmatlCatalogue,
        &kRsurfingCatalogue,
        &kStd3dgeoCatalogue,
        &kDrillingCatalogue,
        &kPoccycleThreadingCatalogue,
        &kEditorCatalogue,
        &kMovingCatalogue,
        &kKind15Catalogue,
        &kMill5axCatalogue,
        &kDummyCatalogue,
    };
    static const auto declarations = [] {
        std::vector<std::vector<Declaration>> lists;
        for (const Catalogue* catalogue : kCatalogues) {
            lists.push_back(declarationsInKeyOrder(*catalogue));
        }
        return lists;
    }();
    const Catalogue* wanted = &catalogueOf(type);
    const auto at = std::find(std::begin(kCatalogues), std::end(kCatalogues), wanted);
    return declarations[static_cast<std::size_t>(at - std::begin(kCatalogues))];
}

bool isDeclared(const Declaration& declaration, MillDrillOperationType type,
                const Machine& machine) {
    const Row& row = declaration.row;
    if (row.when == When::MachineAware && !machine.aware) {
        return false;
    }
    if (row.onlyForKind != kEveryKind && row.onlyForKind != static_cast<int>(type)) {
        return false;
    }
    switch (declaration.condition) {
        case Condition::Plain:
            return !machine.aware;
        case Condition::MachineAware:
            return machine.aware;
        case Condition::YAxis:
            return machine.aware && machine.yAxis;
        case Condition::Subspindle:
            return machine.aware && machine.subspindle;
        default:
            return true;
    }
}

}  // namespace VelkApi::catalogue
