// The tool section of operations with turning-driven tools.
#include <gtest/gtest.h>
#include <velkapi/TurnToolSection.h>

#include "ErrorLog.h"
#include "ToolTest.h"

using namespace VelkApi;

class TurnToolSectionTest : public ToolTest {};

TEST_F(TurnToolSectionTest, NewSectionHoldsNineteenEmptyLines) {
    const TurnToolSection tool(1);
    std::vector<std::string> keys;
    EXPECT_EQ(tool.readKeys(keys).size(), 19u);
    for (int i = 0; i <= 18; ++i) {
        const std::string key = "LINE" + std::to_string(i);
        EXPECT_TRUE(tool.existsKey(key)) << key;
        EXPECT_EQ(tool.getString(key), "") << key;
        EXPECT_EQ(tool.dataTypeOf(key), ValueDataType::String) << key;
    }
    EXPECT_EQ(keys.front(), "line0");
    EXPECT_EQ(tool.getSectionNr(), 1);
}

TEST_F(TurnToolSectionTest, WritingStoresOneEmptyLine) {
    storeTool(2, testsupport::filledToolRecord());
    TurnToolSection tool(1);
    tool.setString("LINE0", "ignored");
    tool.writeToVDM(toolRecord.get());
    EXPECT_EQ(host().lines(2, 1), (Texts{"0 1 2 1 1", "Tool", ""}));
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
}

TEST_F(TurnToolSectionTest, ReadingPassesOverTheStoredLines) {
    storeTool(2, testsupport::filledToolRecord());
    TurnToolSection tool(1);
    tool.setString("LINE1", "kept");
    host().resetCallCounts();
    tool.readFromVDM(toolRecord.get());
    EXPECT_EQ(host().callCount("VelkMacroVdmSingleGet$"), 1 + 19);
    EXPECT_EQ(tool.getString("LINE0"), "");
    EXPECT_EQ(tool.getString("LINE6"), "");
    EXPECT_EQ(tool.getString("LINE1"), "kept");
    EXPECT_EQ(storedToolLines(2, 1), testsupport::filledToolRecord());
}

TEST_F(TurnToolSectionTest, VariablesAreNeitherReadNorWritten) {
    declareToolVariables();
    host().setGlobal("w_t_diam", 8.5);
    host().resetCallCounts();
    TurnToolSection tool(1);
    tool.readFromVars();
    tool.writeToVars();
    tool.setDefault();
    EXPECT_EQ(tool.getString("LINE0"), "");
    EXPECT_EQ(global<double>("w_t_diam"), 8.5);
    for (const char* name :
         {"VelkReadGlobalI", "VelkReadGlobalW", "VelkReadGlobal$", "VelkWriteGlobalI",
          "VelkWriteGlobalW", "VelkWriteGlobal$", "VelkReadGlobalArrayI", "VelkReadGlobalArrayW",
          "VelkWriteGlobalArrayI", "VelkWriteGlobalArrayW"}) {
        EXPECT_EQ(host().callCount(name), 0) << name;
    }
}

TEST_F(TurnToolSectionTest, NoOperationDoesNothing) {
    testsupport::ErrorLogWatch log;
    TurnToolSection tool(1);
    tool.readFromVDM(nullptr);
    tool.writeToVDM(nullptr);
    EXPECT_EQ(host().callCount("VelkMacroVdmExists"), 0);
    EXPECT_TRUE(log.texts().empty());
}

TEST_F(TurnToolSectionTest, DataTypeIsTheToolSectionsRule) {
    TurnToolSection tool(1);
    EXPECT_EQ(tool.getValueDataType("line18"), ValueDataType::String);
    EXPECT_EQ(tool.getValueDataType("w_t_diam"), ValueDataType::None);
}
