// The mill tool section and the host's tool variables.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "ToolTest.h"

using namespace VelkApi;

namespace {

std::vector<double> arrayOf(const double* values, int size) {
    return std::vector<double>(values, values + size);
}

}  // namespace

class MillToolVariablesTest : public ToolTest {
  protected:
    void SetUp() override {
        ToolTest::SetUp();
        declareToolVariables();
    }

    // The host's tool: a drill with its holder and turning values.
    static void hostHoldsADrill() {
        host().setGlobal("i_t_tool_nr", 7);
        host().setGlobal("w_t_diam", 8.5);
        host().setGlobal("w_t_topangle", 118.0);
        host().setGlobal("i_t_holder_id", 40);
        host().setGlobal("$_t_tooldesc", std::string("Drill 8.5 mm"));
        host().setGlobal("$_t_comment", std::string(" two  blanks "));
        host().setGlobal("i_t_bin", std::vector<int>{4, 5, 6});
        // Longer than the record's ten: elements 1 to 10 are the record's.
        host().setGlobal("w_t_val", std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
        std::vector<double> turning(20);
        for (std::size_t i = 0; i < turning.size(); ++i) {
            turning[i] = 0.5 * static_cast<double>(i + 1);
        }
        host().setGlobal("w_t_tur_val", turning);
    }
};

TEST_F(MillToolVariablesTest, ReadFromVarsTakesEveryVariable) {
    hostHoldsADrill();
    MillToolSection tool(1);
    tool.readFromVars();
    EXPECT_EQ(tool.getInt("i_t_tool_nr"), 7);
    EXPECT_EQ(tool.getDouble("w_t_diam"), 8.5);
    EXPECT_EQ(tool.getDouble("w_t_topangle"), 118.0);
    EXPECT_EQ(tool.getInt("i_t_holder_id"), 40);
    EXPECT_EQ(tool.getString("$_t_tooldesc"), "Drill 8.5 mm");
    EXPECT_EQ(tool.getString("$_t_comment"), " two  blanks ");
    EXPECT_EQ(tool.getString("$_t_iso_code"), " ");
    EXPECT_EQ(tool.getInt("i_t_tool_id"), 2147483647);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillToolVariablesTest, ArraysAreReadAsOneBasedSlices) {
    hostHoldsADrill();
    MillToolSection tool(1);
    tool.readFromVars();
    EXPECT_EQ(tool.getInt("i_t_bin(1)"), 4);
    EXPECT_EQ(tool.getInt("i_t_bin(3)"), 6);
    EXPECT_EQ(tool.getDouble("w_t_val(1)"), 1.0);
    EXPECT_EQ(tool.getDouble("w_t_val(10)"), 10.0);
    EXPECT_EQ(tool.getDouble("w_t_tur_val(1)"), 0.5);
    EXPECT_EQ(tool.getDouble("w_t_tur_val(20)"), 10.0);
    EXPECT_EQ(std::vector<int>(std::begin(MillToolSection::bin), std::end(MillToolSection::bin)),
              (std::vector<int>{4, 5, 6}));
    EXPECT_EQ(host().callCount("VelkReadGlobalArrayI"), 1);
    EXPECT_EQ(host().callCount("VelkReadGlobalArrayW"), 2);
}

TEST_F(MillToolVariablesTest, AVariableTheHostLacksKeepsItsKey) {
    host().removeGlobal("i_t_color");
    host().removeGlobal("w_t_cle");
    host().removeGlobal("$_t_mac");
    MillToolSection tool(1);
    tool.setInt("i_t_color", 3);
    tool.setDouble("w_t_cle", 2.0);
    tool.setString("$_t_mac", "m");
    tool.readFromVars();
    EXPECT_EQ(tool.getInt("i_t_color"), 3);
    EXPECT_EQ(tool.getDouble("w_t_cle"), 2.0);
    EXPECT_EQ(tool.getString("$_t_mac"), "m");
    EXPECT_EQ(boxes(), (Texts{"VelkApi::MacroExport::GetGlobalIntVar Failed|i_t_color",
                              "VelkApi::MacroExport::GetGlobalIntVar Failed|w_t_cle",
                              "VelkApi::MacroExport::GetGlobalStrVar Failed|$_t_mac"}));
}

TEST_F(MillToolVariablesTest, AnArrayTheHostLacksGivesWhatTheScratchArrayHolds) {
    host().removeGlobal("i_t_bin");
    std::fill(std::begin(MillToolSection::bin), std::end(MillToolSection::bin), 9);
    MillToolSection tool(1);
    tool.readFromVars();
    EXPECT_EQ(tool.getInt("i_t_bin(1)"), 9);
    EXPECT_EQ(tool.getInt("i_t_bin(3)"), 9);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillToolVariablesTest, WriteToVarsLeavesTheDoubleArraysAsTheHostHasThem) {
    hostHoldsADrill();
    MillToolSection tool(1);
    tool.setInt("i_t_tool_nr", 12);
    tool.setDouble("w_t_diam", 10.0);
    tool.setString("$_t_tooldesc", "End mill 10 mm");
    tool.setInt("i_t_bin(2)", 22);
    tool.setDouble("w_t_val(1)", 99.0);
    tool.setDouble("w_t_tur_val(20)", 99.0);
    tool.writeToVars();
    EXPECT_EQ(global<int>("i_t_tool_nr"), 12);
    EXPECT_EQ(global<double>("w_t_diam"), 10.0);
    EXPECT_EQ(global<double>("w_t_topangle"), 2147483647.0);
    EXPECT_EQ(global<std::string>("$_t_tooldesc"), "End mill 10 mm");
    EXPECT_EQ(global<std::string>("$_t_comment"), "");
    EXPECT_EQ(global<std::vector<int>>("i_t_bin"), (std::vector<int>{2147483647, 22, 2147483647}));
    EXPECT_EQ(global<std::vector<double>>("w_t_val"),
              (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(global<std::vector<double>>("w_t_tur_val")[19], 10.0);
    EXPECT_EQ(host().callCount("VelkWriteGlobalArrayW"), 0);
    // The scratch arrays hold what was read back from the host.
    EXPECT_EQ(arrayOf(MillToolSection::val, 10),
              (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_EQ(MillToolSection::tur_val[19], 10.0);
    // The section itself keeps its values.
    EXPECT_EQ(tool.getDouble("w_t_val(1)"), 99.0);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillToolVariablesTest, VariablesRoundTripThroughTheHost) {
    storeTool(2, testsupport::filledToolRecord());
    MillToolSection written(1);
    written.readFromVDM(toolRecord.get());
    written.writeToVars();

    MillToolSection read(1);
    read.readFromVars();
    for (int line = 0; line < ToolSection::LINESCOUNT; ++line) {
        for (int slot = 0; slot < ToolSection::lineslen[line]; ++slot) {
            const std::string& name = ToolSection::lines[line][slot];
            if (name.rfind("w_t_val", 0) == 0 || name.rfind("w_t_tur_val", 0) == 0) {
                EXPECT_EQ(read.getDouble(name), 2147483647.0) << name;  // the host's own
            } else {
                EXPECT_EQ(read.getValueAsString(name), written.getValueAsString(name)) << name;
            }
        }
    }
}

TEST_F(MillToolVariablesTest, SetDefaultResetsTheHostAndKeepsTheSection) {
    hostHoldsADrill();
    host().setGlobal("$_t_comment", std::string("old"));
    MillToolSection tool(1);
    tool.setDouble("w_t_diam", 10.0);
    tool.setString("$_t_tooldesc", "End mill");
    tool.setDefault();
    EXPECT_EQ(tool.getDouble("w_t_diam"), 10.0);
    EXPECT_EQ(tool.getString("$_t_tooldesc"), "End mill");
    EXPECT_EQ(global<std::string>("$_t_comment"), " ");
    EXPECT_EQ(global<std::string>("$_t_tooldesc"), " ");
    EXPECT_EQ(global<int>("i_t_tool_nr"), 2147483647);
    EXPECT_EQ(global<double>("w_t_diam"), 2147483647.0);
    EXPECT_EQ(global<std::vector<int>>("i_t_bin"), std::vector<int>(3, 2147483647));
    EXPECT_EQ(global<std::vector<double>>("w_t_val"),
              (std::vector<double>{2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0,
                                   2147483647.0, 2147483647.0, 2147483647.0, 2147483647.0,
                                   2147483647.0, 2147483647.0, 11, 12}));
    EXPECT_EQ(global<std::vector<double>>("w_t_tur_val"), std::vector<double>(20, 2147483647.0));
    EXPECT_EQ(arrayOf(MillToolSection::tur_val, 20), std::vector<double>(20, 2147483647.0));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillToolVariablesTest, SetDefaultOnAHostWithoutToolVariablesReportsEveryNumber) {
    host().reset();
    MillToolSection tool(1);
    tool.setDefault();
    const Texts shown = boxes();
    const auto count = [&](const std::string& caption) {
        return std::count_if(shown.begin(), shown.end(), [&](const std::string& box) {
            return box.rfind(caption + "|", 0) == 0;
        });
    };
    // 26 int writes ("i_t_holder_id" twice) and 33 double writes; texts have no message.
    EXPECT_EQ(count("VelkApi::MacroExport::SetGlobalIntVar Failed"), 26);
    EXPECT_EQ(count("VelkApi::MacroExport::SetGlobalDoubeleVar Failed"), 33);
    EXPECT_EQ(shown.size(), 59u);
    EXPECT_EQ(shown.front(), "VelkApi::MacroExport::SetGlobalIntVar Failed|i_t_tool_id");
    EXPECT_EQ(host().callCount("VelkWriteGlobal$"), 13);
}
