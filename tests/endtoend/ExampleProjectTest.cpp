// Every operation of the example project read and written back through the library: the store
// keeps exactly its lines, and an edit of the tool record changes exactly its line.
#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>
#include <velkapi/ToolList.h>

#include "HostFixture.h"

using namespace VelkApi;
using Lines = std::vector<std::string>;

class ExampleProjectTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().loadProject(EXAMPLE_PROJECT);
    }
};

TEST_F(ExampleProjectTest, EveryOperationSurvivesReadAndWrite) {
    const velkhost::Records before = host().records(1);
    for (int number = 3; number < static_cast<int>(before.size()); ++number) {
        MillDrillOperation op(1, number);
        ASSERT_NE(op.getOperationType(), MillDrillOperationType::REDRAW) << number;
        ASSERT_NE(dynamic_cast<MillToolSection*>(op.getToolSection()), nullptr) << number;
        op.readFromVDM();
        op.writeToVDM();
        Lines expected = before[static_cast<std::size_t>(number)];
        Lines after = host().lines(1, number);
        if (op.getOperationType() == MillDrillOperationType::MILL_5AX) {
            // Its first parameter line moves one place on every round trip (see
            // EveryKindTest); the header, the message and the tool record stay.
            const std::size_t toolRecordEnd = 2 + 19;
            expected.resize(toolRecordEnd);
            after.resize(toolRecordEnd);
        }
        EXPECT_EQ(after, expected) << number;
    }
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ExampleProjectTest, EditingTheToolChangesOnlyItsLine) {
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

TEST_F(ExampleProjectTest, TheToolStoreListsTheJobsTools) {
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

TEST_F(ExampleProjectTest, TheHostHoldsEveryToolVariableAndNoTool) {
    MillToolSection tool(1);
    tool.setDouble("w_t_diam", 10.0);
    tool.readFromVars();
    EXPECT_EQ(tool.getDouble("w_t_diam"), 2147483647.0);
    EXPECT_EQ(tool.getString("$_t_tooldesc"), " ");
    tool.setDefault();
    EXPECT_TRUE(boxes().empty());
}
