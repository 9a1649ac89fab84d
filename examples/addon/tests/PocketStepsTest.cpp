// The add-on run against the offline host on tests/pockets.json: store 1 holds a profile
// (operation 3) and three pockets: with a 10 mm end mill (4), with a 6 mm end mill and an
// action "M9" after it (5), and with a tool whose diameter is not set (6).
#include <pocketsteps/PocketSteps.h>

#include <velkapi/VelkApi.h>
#include <velkhost/OfflineHost.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using pocketsteps::Change;
using velkhost::OfflineHost;

constexpr int kStore = 1;

class PocketStepsTest : public testing::Test {
  protected:
    void SetUp() override { host().loadProject(TEST_PROJECT); }

    static OfflineHost& host() { return OfflineHost::instance(); }

    static double depthStep(int operation) {
        VelkApi::MillDrillOperation pocket(kStore, operation);
        pocket.readFromVDM();
        return pocket.getParameterSection()->getDouble("w_peck");
    }

    // The commands of the actions after the operation, in order.
    static std::vector<std::string> actionsAfter(int operation) {
        VelkApi::MillDrillOperation op(kStore, operation);
        op.readFromVDM();
        std::vector<VelkApi::Action> actions;
        op.getActionSection(2)->getValues(&actions);
        std::vector<std::string> commands;
        for (const VelkApi::Action& action : actions) {
            commands.push_back(action.getCommand());
        }
        return commands;
    }

    // The last lines of an operation's record in the store.
    static std::vector<std::string> lastLines(int operation, std::size_t count) {
        const velkhost::Record record = host().lines(kStore, operation);
        return {record.end() - static_cast<std::ptrdiff_t>(count), record.end()};
    }
};

TEST(DepthStep, IsHalfTheToolDiameterRoundedDownToATenth) {
    EXPECT_DOUBLE_EQ(pocketsteps::depthStepFor(10.0), 5.0);
    EXPECT_DOUBLE_EQ(pocketsteps::depthStepFor(6.0), 3.0);
    EXPECT_DOUBLE_EQ(pocketsteps::depthStepFor(8.5), 4.2);
    EXPECT_DOUBLE_EQ(pocketsteps::depthStepFor(0.3), 0.1);
}

TEST(ActionText, NamesTheDepthStepAndTheTool) {
    EXPECT_EQ(pocketsteps::actionText(Change{4, 10.0, 5.0}),
              "(depth step 5 mm: half the 10 mm tool)");
    EXPECT_EQ(pocketsteps::actionText(Change{4, 8.5, 4.2}),
              "(depth step 4.2 mm: half the 8.5 mm tool)");
}

TEST_F(PocketStepsTest, ReportsEveryPocketItChanged) {
    const pocketsteps::Report report = pocketsteps::setPocketDepthSteps(kStore);

    ASSERT_EQ(report.changed.size(), 2u);
    EXPECT_EQ(report.changed[0].operation, 4);
    EXPECT_DOUBLE_EQ(report.changed[0].toolDiameter, 10.0);
    EXPECT_DOUBLE_EQ(report.changed[0].depthStep, 5.0);
    EXPECT_EQ(report.changed[1].operation, 5);
    EXPECT_DOUBLE_EQ(report.changed[1].toolDiameter, 6.0);
    EXPECT_DOUBLE_EQ(report.changed[1].depthStep, 3.0);
    EXPECT_EQ(report.withoutToolDiameter, std::vector<int>{6});
}

TEST_F(PocketStepsTest, WritesTheDepthStepFromTheTool) {
    ASSERT_DOUBLE_EQ(depthStep(4), 1.0);  // the pocket's default

    pocketsteps::setPocketDepthSteps(kStore);

    EXPECT_DOUBLE_EQ(depthStep(4), 5.0);
    EXPECT_DOUBLE_EQ(depthStep(5), 3.0);
}

TEST_F(PocketStepsTest, NamesTheChangeInAnActionAfterThePocket) {
    pocketsteps::setPocketDepthSteps(kStore);

    EXPECT_EQ(actionsAfter(4), std::vector<std::string>{"(depth step 5 mm: half the 10 mm tool)"});
    EXPECT_EQ(lastLines(4, 3),
              (std::vector<std::string>{"###POSTOPERATION###", "5 ",
                                        "(depth step 5 mm: half the 10 mm tool)"}));
}

TEST_F(PocketStepsTest, KeepsTheActionsThatWereThere) {
    pocketsteps::setPocketDepthSteps(kStore);

    EXPECT_EQ(lastLines(5, 4), (std::vector<std::string>{"###POSTOPERATION###", "5 5 ", "M9",
                                                         "(depth step 3 mm: half the 6 mm tool)"}));
}

TEST_F(PocketStepsTest, LeavesAPocketWithoutToolDiameterAndOtherKindsAsTheyWere) {
    const velkhost::Record profile = host().lines(kStore, 3);
    const velkhost::Record pocketWithoutTool = host().lines(kStore, 6);

    pocketsteps::setPocketDepthSteps(kStore);

    EXPECT_EQ(host().lines(kStore, 3), profile);
    EXPECT_EQ(host().lines(kStore, 6), pocketWithoutTool);
}

TEST_F(PocketStepsTest, RunningAgainChangesNothing) {
    pocketsteps::setPocketDepthSteps(kStore);
    const velkhost::Records once = host().records(kStore);

    const pocketsteps::Report again = pocketsteps::setPocketDepthSteps(kStore);

    EXPECT_TRUE(again.changed.empty());
    EXPECT_EQ(host().records(kStore), once);
}

TEST_F(PocketStepsTest, ReplacesItsOwnActionWhenTheToolChanged) {
    pocketsteps::setPocketDepthSteps(kStore);
    VelkApi::MillDrillOperation pocket(kStore, 4);
    pocket.readFromVDM();
    pocket.getToolSection()->setDouble("w_t_diam", 12.0);
    pocket.writeToVDM();

    pocketsteps::setPocketDepthSteps(kStore);

    EXPECT_DOUBLE_EQ(depthStep(4), 6.0);
    EXPECT_EQ(actionsAfter(4), std::vector<std::string>{"(depth step 6 mm: half the 12 mm tool)"});
}

TEST_F(PocketStepsTest, AStoreThatDoesNotExistHasNoPockets) {
    const pocketsteps::Report report = pocketsteps::setPocketDepthSteps(9);

    EXPECT_TRUE(report.changed.empty());
    EXPECT_TRUE(report.withoutToolDiameter.empty());
    EXPECT_TRUE(host().messageBoxes().empty());
}

}  // namespace
