// The tool line table, held against the tool record's reference listing line by line.
#include <gtest/gtest.h>
#include <velkapi/ToolSection.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tools/ToolTable.h"

using VelkApi::ToolSection;

namespace {

// The names of table line `line` (from 0), joined by blanks.
std::string namesOf(int line) {
    std::string joined;
    for (int slot = 0; slot < ToolSection::lineslen[line]; ++slot) {
        joined += (slot == 0 ? "" : " ") + ToolSection::lines[line][slot];
    }
    return joined;
}

}  // namespace

TEST(ToolTable, NineteenLinesOf105Names) {
    EXPECT_EQ(ToolSection::LINESCOUNT, 19);
    const std::vector<int> lengths(ToolSection::lineslen,
                                   ToolSection::lineslen + ToolSection::LINESCOUNT);
    EXPECT_EQ(lengths,
              (std::vector<int>{15, 12, 10, 20, 12, 23, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}));
    int names = 0;
    for (int line = 0; line < ToolSection::LINESCOUNT; ++line) {
        for (int slot = 0; slot < ToolSection::LINESLOTS; ++slot) {
            const std::string& name = ToolSection::lines[line][slot];
            if (slot < ToolSection::lineslen[line]) {
                EXPECT_NE(std::string("iw$").find(name.front()), std::string::npos) << name;
                ++names;
            } else {
                EXPECT_EQ(name, "") << "line " << line + 1 << " slot " << slot;
            }
        }
    }
    EXPECT_EQ(names, 105);
}

TEST(ToolTable, NamesLineByLine) {
    EXPECT_EQ(namesOf(0),
              "i_t_tool_id i_t_tool_nr i_t_len_nr i_t_dia_nr i_t_metr_imp i_t_sister_tool "
              "i_t_holder_id i_t_tooltype_id i_t_color i_t_origin i_t_turret_id i_t_mill_turn "
              "i_t_bin(1) i_t_bin(2) i_t_bin(3)");
    EXPECT_EQ(namesOf(1),
              "w_t_diam w_t_2_diam w_t_topangle w_t_cornerrad i_t_nr_theeth w_t_useable_len "
              "w_t_tool_len w_t_def_peck w_t_def_overlap w_t_cle w_t_total_len i_t_thread_type");
    EXPECT_EQ(namesOf(2),
              "i_t_tip_code i_t_turn_dir w_t_cutoff_x w_t_cutoff_z w_t_plate_ang w_t_plane_ang "
              "w_t_plate_thick w_t_plate_rad w_t_plate_width w_t_pitch");
    std::string turningValues;
    for (int i = 1; i <= 20; ++i) {
        turningValues += (i == 1 ? "" : " ") + ("w_t_tur_val(" + std::to_string(i) + ")");
    }
    EXPECT_EQ(namesOf(3), turningValues);
    std::string holderValues = "i_t_holder_id i_t_hld_type";
    for (int i = 1; i <= 10; ++i) {
        holderValues += " w_t_val(" + std::to_string(i) + ")";
    }
    EXPECT_EQ(namesOf(4), holderValues);
    EXPECT_EQ(namesOf(5),
              "i_t_spin_dir i_t_spin_type i_t_feed_type w_t_vcut_r w_t_feed_h_r w_t_feed_v_r "
              "w_t_vcut_f w_t_feed_h_f w_t_feed_v_f w_t_work_time i_t_gear_range i_t_coolant "
              "i_t_tool_output i_t_spin_speed_output i_t_spindle_nr w_t_shaftdiam "
              "w_t_shoulder_len w_t_upperdiam w_t_profilerad w_t_flatbottomdiam "
              "w_t_cornerrad_type w_t_max_diam w_t_siderad");
    const std::vector<std::string> texts = {
        "$_t_ident_nr", "$_t_tool_type", "$_t_tooldesc", "$_t_tool_fig", "$_t_manufacturer",
        "$_t_order_nr", "$_t_comment",   "$_t_tool_mat", "$_t_iso_code", "$_t_mac",
        "$_t_hld_fig",  "$_t_tool_bmp",  "$_t_hld_file"};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(namesOf(static_cast<int>(i) + 6), texts[i]);
    }
}

TEST(ToolTable, HolderIdStandsOnLinesOneAndFive) {
    std::vector<std::pair<int, int>> places;
    for (int line = 0; line < ToolSection::LINESCOUNT; ++line) {
        for (int slot = 0; slot < ToolSection::lineslen[line]; ++slot) {
            if (ToolSection::lines[line][slot] == "i_t_holder_id") {
                places.emplace_back(line + 1, slot);
            }
        }
    }
    EXPECT_EQ(places, (std::vector<std::pair<int, int>>{{1, 6}, {5, 0}}));
}

TEST(ToolTable, ScratchArraySizes) {
    EXPECT_EQ(ToolSection::BIN_SIZE, 3);
    EXPECT_EQ(ToolSection::VAL_SIZE, 10);
    EXPECT_EQ(ToolSection::TUR_VAL_SIZE, 20);
}

TEST(ToolTable, DeclarationsAreByNameWithTheirPlaceInTheTable) {
    const auto& declarations = VelkApi::tools::declarationsByName();
    ASSERT_EQ(declarations.size(), 105u);
    std::vector<int> numbers;
    for (std::size_t i = 0; i < declarations.size(); ++i) {
        if (i > 0) {
            EXPECT_LE(*declarations[i - 1].name, *declarations[i].name) << i;
        }
        numbers.push_back(declarations[i].number);
    }
    EXPECT_EQ(*declarations.front().name, "$_t_comment");
    EXPECT_EQ(*declarations.back().name, "w_t_work_time");
    // Every place of the table once: 0 .. 104.
    std::sort(numbers.begin(), numbers.end());
    for (int i = 0; i < 105; ++i) {
        EXPECT_EQ(numbers[static_cast<std::size_t>(i)], i);
    }
    // The holder's two places, the first (line 1) ahead of the second (line 5).
    const auto holder = std::find_if(declarations.begin(), declarations.end(),
                                     [](const auto& d) { return *d.name == "i_t_holder_id"; });
    ASSERT_NE(holder, declarations.end());
    ASSERT_NE(holder + 1, declarations.end());
    EXPECT_EQ(holder->number, 6);
    EXPECT_EQ(*(holder + 1)->name, "i_t_holder_id");
    EXPECT_EQ((holder + 1)->number, 57);
}
