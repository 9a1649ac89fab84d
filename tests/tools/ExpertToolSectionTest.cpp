// The tool record as text lines, for expert editing.
#include <gtest/gtest.h>
#include <velkapi/ExpertToolSection.h>

#include <algorithm>
#include <iterator>

#include "ToolTest.h"

using namespace VelkApi;

namespace {

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

Texts stringsOf(ExpertToolSection& tool) {
    Texts lines;
    tool.writeToStrings(lines);
    return lines;
}

}  // namespace

class ExpertToolSectionTest : public ToolTest {};

TEST_F(ExpertToolSectionTest, EveryNameIsAText) {
    ExpertToolSection tool(1);
    std::vector<std::string> keys;
    EXPECT_EQ(tool.readKeys(keys).size(), 104u);
    EXPECT_EQ(tool.getValueDataType("i_t_tool_id"), ValueDataType::String);
    EXPECT_EQ(tool.getValueDataType("W_T_DIAM"), ValueDataType::String);
    EXPECT_EQ(tool.getString("w_t_diam"), "");
}

TEST_F(ExpertToolSectionTest, FreshSectionGivesNineteenLines) {
    ExpertToolSection tool(1);
    const Texts lines = stringsOf(tool);
    ASSERT_EQ(lines.size(), 19u);
    EXPECT_EQ(lines[0], repeated("2147483647 ", 15));
    EXPECT_EQ(lines[1], repeated("2147483647 ", 12));
    EXPECT_EQ(lines[3], repeated("2147483647 ", 20));
    EXPECT_EQ(lines[5], repeated("2147483647 ", 23));
    for (std::size_t i = 6; i < 19; ++i) {
        EXPECT_EQ(lines[i], "") << i;
    }
}

TEST_F(ExpertToolSectionTest, WritingAppendsAfterTheLinesThere) {
    ExpertToolSection tool(1);
    Texts lines = {"first", "second"};
    tool.writeToStrings(lines);
    ASSERT_EQ(lines.size(), 21u);
    EXPECT_EQ(lines[0], "first");
    EXPECT_EQ(lines[1], "second");
    EXPECT_EQ(lines[2], repeated("2147483647 ", 15));
}

TEST_F(ExpertToolSectionTest, ThreeLinesSetTheirNamesAndUnsetTheRest) {
    ExpertToolSection tool(1);
    tool.setString("w_t_vcut_r", "180");
    tool.setString("$_t_comment", "old");
    tool.readFromStrings({"1 2 3", "10,5 0 118", "2 'a b'"});
    EXPECT_EQ(tool.getString("i_t_tool_id"), "1");
    EXPECT_EQ(tool.getString("i_t_len_nr"), "3");
    EXPECT_EQ(tool.getString("i_t_dia_nr"), "");  // the line has no such field
    EXPECT_EQ(tool.getString("w_t_diam"), "10,5");
    EXPECT_EQ(tool.getString("w_t_topangle"), "118");
    EXPECT_EQ(tool.getString("i_t_tip_code"), "2");
    EXPECT_EQ(tool.getString("i_t_turn_dir"), "a b");
    EXPECT_EQ(tool.getString("w_t_tur_val(1)"), "2147483647");
    EXPECT_EQ(tool.getString("w_t_vcut_r"), "2147483647");
    EXPECT_EQ(tool.getString("$_t_comment"), "");
}

TEST_F(ExpertToolSectionTest, LinesRoundTripWithTheirBlanks) {
    Texts given = testsupport::filledToolRecord();
    ExpertToolSection tool(1);
    tool.readFromStrings(given);
    EXPECT_EQ(tool.getString("$_t_comment"), " keep  the blanks ");
    EXPECT_EQ(tool.getString("w_t_work_time"), "12.3457");
    // Number lines come back with a blank after every value.
    for (std::size_t i = 0; i < 6; ++i) {
        given[i] += " ";
    }
    EXPECT_EQ(stringsOf(tool), given);
}

TEST_F(ExpertToolSectionTest, HolderIdIsReadFromTheLaterSlotAndWrittenInBoth) {
    Texts given = testsupport::filledToolRecord();
    given[4].replace(0, 2, "41");
    ExpertToolSection tool(1);
    tool.readFromStrings(given);
    EXPECT_EQ(tool.getString("i_t_holder_id"), "41");
    const Texts lines = stringsOf(tool);
    EXPECT_EQ(fieldsOf(lines[0])[6], "41");
    EXPECT_EQ(fieldsOf(lines[4])[0], "41");
}

TEST_F(ExpertToolSectionTest, VariablesBecomeTexts) {
    declareToolVariables();
    host().setGlobal("w_t_diam", 12.5);
    host().setGlobal("i_t_tool_nr", 7);
    host().setGlobal("$_t_tooldesc", std::string("Drill  8.5"));
    host().setGlobal("i_t_bin", std::vector<int>{4, 5, 6});
    host().setGlobal("w_t_val", std::vector<double>{0.25, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    ExpertToolSection tool(1);
    tool.readFromVars();
    EXPECT_EQ(tool.getString("w_t_diam"), "12.500000");
    EXPECT_EQ(tool.getString("w_t_topangle"), "2147483647.000000");
    EXPECT_EQ(tool.getString("i_t_tool_nr"), "7");
    EXPECT_EQ(tool.getString("$_t_tooldesc"), "Drill  8.5");
    EXPECT_EQ(tool.getString("i_t_bin(2)"), "5");
    EXPECT_EQ(tool.getString("w_t_val(1)"), "0.250000");
    EXPECT_EQ(tool.getString("w_t_tur_val(20)"), "2147483647.000000");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ExpertToolSectionTest, AVariableTheHostLacksKeepsItsText) {
    ExpertToolSection tool(1);
    tool.setString("w_t_diam", "10");
    tool.readFromVars();
    EXPECT_EQ(tool.getString("w_t_diam"), "10");
    EXPECT_EQ(boxes().front(), "VelkApi::MacroExport::GetGlobalIntVar Failed|i_t_tool_id");
}

TEST_F(ExpertToolSectionTest, ItsScratchArraysAreItsOwn) {
    declareToolVariables();
    host().setGlobal("i_t_bin", std::vector<int>{4, 5, 6});
    std::fill(std::begin(MillToolSection::bin), std::end(MillToolSection::bin), 1);
    ExpertToolSection(1).readFromVars();
    EXPECT_EQ(
        std::vector<int>(std::begin(ExpertToolSection::bin), std::end(ExpertToolSection::bin)),
        (std::vector<int>{4, 5, 6}));
    EXPECT_EQ(std::vector<int>(std::begin(MillToolSection::bin), std::end(MillToolSection::bin)),
              (std::vector<int>{1, 1, 1}));
}

TEST_F(ExpertToolSectionTest, NeitherStoreNorHostIsWritten) {
    declareToolVariables();
    storeTool(2, testsupport::filledToolRecord());
    host().resetCallCounts();
    ExpertToolSection tool(1);
    tool.setString("w_t_diam", "6");
    tool.readFromVDM(toolRecord.get());
    tool.writeToVDM(toolRecord.get());
    tool.writeToVars();
    tool.setDefault();
    EXPECT_EQ(tool.getString("w_t_diam"), "6");
    EXPECT_EQ(host().callCount("VelkMacroVdmExists"), 0);
    EXPECT_EQ(host().callCount("VelkWriteGlobalW"), 0);
    EXPECT_EQ(host().callCount("VelkWriteGlobalArrayI"), 0);
    EXPECT_EQ(global<double>("w_t_diam"), 2147483647.0);
}
