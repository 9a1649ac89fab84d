// The example project: every operation survives a read and a write through the library
// unchanged, its drawing included, and the operations machine the drawing's objects.
#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>

#include <algorithm>

#include "HostFixture.h"

using namespace VelkApi;
using Texts = std::vector<std::string>;

class ExampleProjectTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().loadProject(std::string(SOURCE_DIR) + "/examples/demo-project.json");
        // The machine definition is named relative to the host's data folder.
        host().setEnvironment("-d", SOURCE_DIR);
    }
};

TEST_F(ExampleProjectTest, EveryOperationIsWrittenBackAsItWasRead) {
    const velkhost::Records before = host().records(1);
    const std::string drawing = host().projectText().substr(host().projectText().find("\"cad\""));
    ASSERT_GT(before.size(), 3u);
    for (int nr = 3; nr < static_cast<int>(before.size()); ++nr) {
        MillDrillOperation op(1, nr);
        ASSERT_NE(op.getOperationType(), MillDrillOperationType::REDRAW) << nr;
        op.readFromVDM();
        op.writeToVDM();
        velkhost::Record expected = before[static_cast<std::size_t>(nr)];
        if (op.getOperationType() == MillDrillOperationType::MILL_5AX) {
            // Its first value line, after the kind's name, moves one place on every round trip
            // (see EveryKindTest).
            const auto name = std::find(expected.begin(), expected.end(), "MILL_5AX");
            ASSERT_NE(name, expected.end());
            const auto line = static_cast<std::size_t>(name - expected.begin()) + 1;
            expected[line] = host().lines(1, nr)[line];
        }
        EXPECT_EQ(host().lines(1, nr), expected) << nr;
    }
    EXPECT_EQ(host().records(1).size(), before.size());
    EXPECT_EQ(host().projectText().substr(host().projectText().find("\"cad\"")), drawing);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ExampleProjectTest, ThePocketMachinesItsContourAroundTheIslandBetweenItsActions) {
    MillDrillOperation op(1, 6);
    op.readFromVDM();
    ASSERT_EQ(op.getOperationType(), MillDrillOperationType::POCKET);
    VelkObject pocket, island;
    op.getGeometrySection()->getVelkObject("0000(pocket)", pocket);
    op.getGeometrySection()->getVelkObject("0001(island)", island);
    EXPECT_EQ(pocket.getSectiontype(), GeometrySectionType::OutlineFigure);
    EXPECT_EQ(pocket.getSegNo(), 102);
    EXPECT_EQ(island.getSectiontype(), GeometrySectionType::IslandFigure);
    EXPECT_EQ(island.getSegNo(), 103);
    EXPECT_EQ(op.getParameterSection()->getInt("i_nr_of_figs"), 1);
    EXPECT_EQ(op.getParameterSection()->getInt("i_nr_of_isle"), 1);
    std::vector<Action> pre, post;
    op.getActionSection(1)->getValues(&pre);
    op.getActionSection(2)->getValues(&post);
    ASSERT_EQ(pre.size(), 2u);
    EXPECT_EQ(pre[0].getCommand(), "M8");
    EXPECT_EQ(pre[1].getCommand(), "call 'probe_pocket.mac'");
    ASSERT_EQ(post.size(), 1u);
    EXPECT_EQ(post[0].getCommand(), "M9");
}

TEST_F(ExampleProjectTest, TheDrillingFindsItsFourHolesAtTheirPoints) {
    MillDrillOperation op(1, 9);
    op.readFromVDM();
    std::vector<std::string> keys;
    Texts found;
    for (const std::string& key : op.getGeometrySection()->readKeys(keys)) {
        VelkObject hole;
        op.getGeometrySection()->getVelkObject(key, hole);
        found.push_back(hole.getName() + " #" + std::to_string(hole.getSegNo()));
    }
    EXPECT_EQ(found, (Texts{"X10 Y10 Z0 #201", "X110 Y10 Z0 #202", "X110 Y70 Z0 #203",
                            "X10 Y70 Z0 #204"}));
    EXPECT_EQ(op.getParameterSection()->getInt("i_nr_of_figs"), 4);
}
