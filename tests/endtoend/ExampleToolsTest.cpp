// The tools of the example project: every operation's tool record survives a read and a write
// through the library, an edit of a tool changes exactly its line, the tool store lists the
// job's tools, and the host holds every tool variable.
#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>
#include <velkapi/ToolList.h>

#include "HostFixture.h"

using namespace VelkApi;
using Lines = std::vector<std::string>;

class ExampleToolsTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().loadProject(std::string(SOURCE_DIR) + "/examples/demo-project.json");
    }
};

TEST_F(ExampleToolsTest, EveryOperationsToolRecordSurvivesReadAndWrite) {
    const velkhost::Records before = host().records(1);
    // The header, the message line and the 19 lines of the tool record.
    const std::size_t toolRecordEnd = 2 + 19;
    for (int number = 3; number < static_cast<int>(before.size()); ++number) {
        MillDrillOperation op(1, number);
        ASSERT_NE(dynamic_cast<MillToolSection*>(op.getToolSection()), nullptr) << number;
        op.readFromVDM();
        op.writeToVDM();
        const Lines& stored = before[static_cast<std::size_t>(number)];
        const Lines after = host().lines(1, number);
        ASSERT_GE(after.size(), toolRecordEnd) << number;
        EXPECT_EQ(Lines(after.begin(), after.begin() + toolRecordEnd),
                  Lines(stored.begin(), stored.begin() + toolRecordEnd))
            << number;
    }
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ExampleToolsTest, EditingTheToolChangesOnlyItsLine) {
    Lines expected = host().lines(1, 9);
    MillDrillOperation op(1, 9);
    op.readFromVDM();
    ToolSection& tool = *op.getToolSection();
    EXPECT_EQ(tool.getDouble("w_t_diam"), 8.5);
    EXPECT_EQ(tool.getString("$_t_tooldesc"), "Drill 8.5 mm, 118 degree point");
    tool.setDouble("w_t_diam", 9.0);
    op.writeToVDM();
    // Line 1 of the record is the message; the tool's diameter opens the tool record's line 2.
    expected[3].replace(0, 3, "9");
    EXPECT_EQ(host().lines(1, 9), expected);
}

TEST_F(ExampleToolsTest, TheToolStoreListsTheJobsTools) {
    ToolList list(2);
    list.readFromVDM();
    ASSERT_EQ(list.getToolCount(), 7);
    const std::vector<std::pair<std::string, double>> tools = {
        {"FM50-5", 50.0}, {"EM10-4F", 10.0}, {"EM6-3F", 6.0},  {"BN6-2F", 6.0},
        {"DR8.5", 8.5},   {"TM-M8", 6.3},    {"CH90-10", 10.0}};
    for (int i = 0; i < 7; ++i) {
        const MillToolSection& tool = *list.getTool(i)->getToolSection();
        EXPECT_EQ(tool.getInt("i_t_tool_nr"), i + 1);
        EXPECT_EQ(tool.getString("$_t_ident_nr"), tools[i].first);
        EXPECT_EQ(tool.getDouble("w_t_diam"), tools[i].second);
        // The description stands in the tool's message section too.
        EXPECT_EQ(host().lines(2, i + 1)[1], tool.getString("$_t_tooldesc"));
    }
}

TEST_F(ExampleToolsTest, TheHostHoldsEveryToolVariableAndNoTool) {
    MillToolSection tool(1);
    tool.setDouble("w_t_diam", 10.0);
    tool.readFromVars();
    EXPECT_EQ(tool.getDouble("w_t_diam"), 2147483647.0);
    EXPECT_EQ(tool.getString("$_t_tooldesc"), " ");
    tool.setDefault();
    EXPECT_TRUE(boxes().empty());
}
