#include <velkapi/ToolSection.h>

#include "model/SectionEntries.h"
#include "util/ErrorBoundary.h"

namespace VelkApi {

// clang-format off
const std::string ToolSection::lines[LINESCOUNT][LINESLOTS] = {
    /*  1 */ {"i_t_tool_id", "i_t_tool_nr", "i_t_len_nr", "i_t_dia_nr", "i_t_metr_imp",
              "i_t_sister_tool", "i_t_holder_id", "i_t_tooltype_id", "i_t_color", "i_t_origin",
              "i_t_turret_id", "i_t_mill_turn", "i_t_bin(1)", "i_t_bin(2)", "i_t_bin(3)"},
    /*  2 */ {"w_t_diam", "w_t_2_diam", "w_t_topangle", "w_t_cornerrad", "i_t_nr_theeth",
              "w_t_useable_len", "w_t_tool_len", "w_t_def_peck", "w_t_def_overlap", "w_t_cle",
              "w_t_total_len", "i_t_thread_type"},
    /*  3 */ {"i_t_tip_code", "i_t_turn_dir", "w_t_cutoff_x", "w_t_cutoff_z", "w_t_plate_ang",
              "w_t_plane_ang", "w_t_plate_thick", "w_t_plate_rad", "w_t_plate_width", "w_t_pitch"},
    /*  4 */ {"w_t_tur_val(1)", "w_t_tur_val(2)", "w_t_tur_val(3)", "w_t_tur_val(4)",
              "w_t_tur_val(5)", "w_t_tur_val(6)", "w_t_tur_val(7)", "w_t_tur_val(8)",
              "w_t_tur_val(9)", "w_t_tur_val(10)", "w_t_tur_val(11)", "w_t_tur_val(12)",
              "w_t_tur_val(13)", "w_t_tur_val(14)", "w_t_tur_val(15)", "w_t_tur_val(16)",
              "w_t_tur_val(17)", "w_t_tur_val(18)", "w_t_tur_val(19)", "w_t_tur_val(20)"},
    /*  5 */ {"i_t_holder_id", "i_t_hld_type", "w_t_val(1)", "w_t_val(2)", "w_t_val(3)",
              "w_t_val(4)", "w_t_val(5)", "w_t_val(6)", "w_t_val(7)", "w_t_val(8)", "w_t_val(9)",
              "w_t_val(10)"},
    /*  6 */ {"i_t_spin_dir", "i_t_spin_type", "i_t_feed_type", "w_t_vcut_r", "w_t_feed_h_r",
              "w_t_feed_v_r", "w_t_vcut_f", "w_t_feed_h_f", "w_t_feed_v_f", "w_t_work_time",
              "i_t_gear_range", "i_t_coolant", "i_t_tool_output", "i_t_spin_speed_output",
              "i_t_spindle_nr", "w_t_shaftdiam", "w_t_shoulder_len", "w_t_upperdiam",
              "w_t_profilerad", "w_t_flatbottomdiam", "w_t_cornerrad_type", "w_t_max_diam",
              "w_t_siderad"},
    /*  7 */ {"$_t_ident_nr"},
    /*  8 */ {"$_t_tool_type"},
    /*  9 */ {"$_t_tooldesc"},
    /* 10 */ {"$_t_tool_fig"},
    /* 11 */ {"$_t_manufacturer"},
    /* 12 */ {"$_t_order_nr"},
    /* 13 */ {"$_t_comment"},
    /* 14 */ {"$_t_tool_mat"},
    /* 15 */ {"$_t_iso_code"},
    /* 16 */ {"$_t_mac"},
    /* 17 */ {"$_t_hld_fig"},
    /* 18 */ {"$_t_tool_bmp"},
    /* 19 */ {"$_t_hld_file"},
};

const int ToolSection::lineslen[LINESCOUNT] = {
    15, 12, 10, 20, 12, 23, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1,
};
// clang-format on

ToolSection::ToolSection(int sectionnr) : SectionDictionary(sectionnr) {}

ToolSection::~ToolSection() = default;

ValueDataType ToolSection::getValueDataType(const std::string& key) {
    return detail::guarded(
        ValueDataType::None, "Error in ToolSection::getValueDataType(const string & key)", [&] {
            const detail::EntryRef entry = detail::SectionEntries::find(*this, key);
            return entry ? entry->getValueDataType() : ValueDataType::None;
        });
}

}  // namespace VelkApi
