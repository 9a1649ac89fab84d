#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>
#include <velkapi/TurnToolSection.h>

#include "ErrorLog.h"
#include "HostFixture.h"
#include "ToolRecordLines.h"

using namespace VelkApi;
using Kind = MillDrillOperationType;
using Texts = std::vector<std::string>;

class MillDrillOperationTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setEnvironment("TURNDRIVENTOOLS", "1");
        host().setGlobal("w_setup_cle", 2.5);
        host().setGlobal("w_setup_ret", 12.0);
        host().setStore(1, {{"0 1 1 1", "setup"},
                            {"0 1 1 1", "origin"},
                            {"0 1 1 1", "tool change"},
                            {"5 1 3 1 2 3", "Holes", "1 5", "8.5 0 118", "DRILLING",
                             "4 83 1 2 2 -20 ", ""},
                            {"4 1 3 1 0 1", "Spiral", "SPIRAL"},
                            {"15 1 3 1 0 3", "Cycle", "POCCYCLE", "1 2 1 ", ""}});
    }

    static Texts sectionNames(const OperationBase& op) {
        Texts names;
        for (const SectionType type :
             {SectionType::Header, SectionType::ToolData, SectionType::Message,
              SectionType::Parameter, SectionType::Geometry}) {
            if (op.existsSection(type, 0)) {
                names.push_back(OperationBase::SectionTypeToString(type, 0));
            }
        }
        for (const int n : {1, 2}) {
            if (op.existsSection(SectionType::Additional, n)) {
                names.push_back(OperationBase::SectionTypeToString(SectionType::Additional, n));
            }
        }
        return names;
    }
};

TEST_F(MillDrillOperationTest, OperationBelowThreeHasNoSectionsAndDoesNothing) {
    MillDrillOperation op(1, 2);
    EXPECT_EQ(op.getOperationType(), Kind::REDRAW);
    EXPECT_FALSE(op.isVelkActive());
    EXPECT_TRUE(sectionNames(op).empty());
    host().resetCallCounts();
    op.readFromVDM();
    op.writeToVDM();
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
}

TEST_F(MillDrillOperationTest, UnknownKindHasHeaderMessageAndAnEmptyToolPlace) {
    MillDrillOperation op(1, 4);
    EXPECT_EQ(op.getOperationType(), Kind::Unknown);
    EXPECT_EQ(sectionNames(op), (Texts{"Header", "ToolData", "Message"}));
    EXPECT_EQ(op.getSection(SectionType::ToolData, 0), nullptr);
    EXPECT_NE(op.getSection(SectionType::Message, 0), nullptr);
    host().resetCallCounts();
    op.readFromVDM();
    op.writeToVDM();
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
}

TEST_F(MillDrillOperationTest, SectionsOfAKnownKind) {
    MillDrillOperation op(1, 3);
    EXPECT_EQ(op.getOperationType(), Kind::DRILLING);
    EXPECT_TRUE(op.isVelkActive());
    EXPECT_EQ(sectionNames(op), (Texts{"Header", "ToolData", "Message", "Parameter"}));
    EXPECT_EQ(op.getSection(SectionType::Parameter, 0), op.getParameterSection());
    EXPECT_EQ(op.getSection(SectionType::ToolData, 0), op.getToolSection());
    EXPECT_NE(dynamic_cast<MillToolSection*>(op.getToolSection()), nullptr);
    EXPECT_EQ(op.getToolSection()->getSectionNr(), 1);
    EXPECT_EQ(op.getParameterSection()->getSectionNr(), 2);
    EXPECT_EQ(op.getMessageSection()->getSectionNr(), 0);
    EXPECT_EQ(op.getHeaderSection()->getSectionNr(), -1);
    EXPECT_EQ(op.getParameterSection()->getOperation(), &op);
    EXPECT_EQ(op.getToolSection()->getOperation(), &op);
}

TEST_F(MillDrillOperationTest, TurningDrivenToolsGiveTheTurnToolSection) {
    host().setEnvironment("TURNDRIVENTOOLS", "2");
    MillDrillOperation op(1, 3);
    EXPECT_NE(dynamic_cast<TurnToolSection*>(op.getToolSection()), nullptr);
    EXPECT_EQ(op.getSection(SectionType::ToolData, 0), op.getToolSection());
    EXPECT_EQ(op.getToolSection()->getSectionNr(), 1);
    op.readFromVDM();
    op.writeToVDM();
    // The two stored tool lines became one empty line.
    const Texts written = host().lines(1, 3);
    EXPECT_EQ(Texts(written.begin(), written.begin() + 4),
              (Texts{"5 1 3 1 1 3", "Holes", "", "DRILLING"}));
}

TEST_F(MillDrillOperationTest, HeaderCountAboveSixMakesNoFurtherSections) {
    host().setStore(
        1, {{"0 1 0"}, {"0 1 0"}, {"0 1 0"}, {"4 1 9 1 0 1 0 0 0 0 0 0", "Nine", "POCKET"}});
    MillDrillOperation op(1, 3);
    op.readFromVDM();
    EXPECT_EQ(sectionNames(op), (Texts{"Header", "ToolData", "Message", "Parameter"}));
    op.getHeaderSection()->setDefault();
    EXPECT_EQ(op.getHeaderSection()->getInt("SectionCount"), 9);
}

TEST_F(MillDrillOperationTest, ReadsEverySectionAndClosesTheStore) {
    MillDrillOperation op(1, 3);
    op.readFromVDM();
    EXPECT_EQ(op.getMessageSection()->getString("0"), "Holes");
    EXPECT_EQ(op.getParameterSection()->getInt("i_type"), 83);
    EXPECT_EQ(op.getParameterSection()->getDouble("w_depth"), -20.0);
    EXPECT_EQ(op.getToolSection()->getInt("i_t_tool_nr"), 5);
    EXPECT_EQ(op.getToolSection()->getDouble("w_t_diam"), 8.5);
    EXPECT_EQ(op.getToolSection()->getDouble("w_t_topangle"), 118.0);
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
    EXPECT_EQ(boxes(), Texts{});
}

TEST_F(MillDrillOperationTest, WritingAnExistingOperationInsertsNothing) {
    MillDrillOperation op(1, 3);
    op.readFromVDM();
    op.getMessageSection()->setString("0", "Four holes");
    op.writeToVDM();
    EXPECT_EQ(host().callCount("VelkMacroVdmInsert$"), 0);
    EXPECT_EQ(host().records(1).size(), 6u);
    EXPECT_EQ(host().lines(1, 3)[1], "Four holes");
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
}

TEST_F(MillDrillOperationTest, NewOperationIsInsertedBeforeItsSectionsAreWritten) {
    MillDrillOperation op(Kind::ENGRAVE, 1, 3);
    op.setMode(1);
    op.getMessageSection()->createandsetLine(0, "Engrave the label");
    op.getParameterSection()->setDefault();
    op.writeToVDM();
    EXPECT_EQ(host().callCount("VelkMacroVdmInsert$"), 1);
    EXPECT_EQ(host().records(1).size(), 7u);
    const Texts& fresh = testsupport::freshToolRecord();
    Texts expected = {"4 1 3 1 19 2", "Engrave the label"};
    expected.insert(expected.end(), fresh.begin(), fresh.end());
    expected.insert(expected.end(), {"ENGRAVE", "2147483647 "});
    EXPECT_EQ(host().lines(1, 3), expected);
    EXPECT_EQ(host().lines(1, 4)[1], "Holes");
}

TEST_F(MillDrillOperationTest, CycleOfADrillingOperation) {
    MillDrillOperation op(1, 3);
    ParameterSection& parameters = *op.getParameterSection();
    parameters.setInt("i_type", 83);
    parameters.setInt("i_g83_chipbr", 0);
    EXPECT_EQ(op.getCycle(), "g83_retract");
    parameters.setInt("i_g83_chipbr", 1);
    EXPECT_EQ(op.getCycle(), "g83_chipbreak");
    parameters.setInt("i_type", 73);
    EXPECT_EQ(op.getCycle(), "g73");
    parameters.setInt("i_type", 81);
    EXPECT_EQ(op.getCycle(), "g81");
}

TEST_F(MillDrillOperationTest, CycleOfAPocketCycle) {
    MillDrillOperation op(Kind::POCCYCLE, 1, 5);
    ParameterSection& parameters = *op.getParameterSection();
    const Texts shapes = {"circle", "rectangle", "slot", "thread"};
    for (int t = 1; t <= 4; ++t) {
        parameters.setInt("i_type", t);
        parameters.setInt("i_finishing", 0);
        EXPECT_EQ(op.getCycle(), shapes[t - 1]);
        parameters.setInt("i_finishing", 1);
        EXPECT_EQ(op.getCycle(), shapes[t - 1] + "fin");
    }
    parameters.setInt("i_type", 2);
    EXPECT_EQ(op.getCycle(), "rectanglefin");
    parameters.setInt("i_type", 7);
    EXPECT_EQ(op.getCycle(), "fin");
    parameters.setInt("i_finishing", 0);
    EXPECT_EQ(op.getCycle(), "");
}

TEST_F(MillDrillOperationTest, CycleOfAThreadAndOfOtherKinds) {
    MillDrillOperation thread(Kind::THREADING);
    thread.getParameterSection()->setInt("i_type", 1);
    EXPECT_EQ(thread.getCycle(), "insidethread");
    thread.getParameterSection()->setInt("i_type", 2);
    EXPECT_EQ(thread.getCycle(), "outsidethread");
    MillDrillOperation pocket(Kind::POCKET);
    EXPECT_EQ(pocket.getCycle(), "");
    MillDrillOperation nothing(Kind::REDRAW);
    EXPECT_EQ(nothing.getCycle(), "");
}

TEST_F(MillDrillOperationTest, KindOnlyOperationTouchesNoHost) {
    host().resetCallCounts();
    MillDrillOperation op(Kind::PROFILE);
    EXPECT_FALSE(op.isVelkActive());
    EXPECT_EQ(op.getVDM(), nullptr);
    EXPECT_EQ(op.getParameterSection()->getDouble("w_clearp"), 0.42);
    EXPECT_EQ(host().callCount("VelkReadGlobalW"), 0);
    op.readFromVDM();
    op.writeToVDM();
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
}

TEST_F(MillDrillOperationTest, CopiesShareSectionsAndBothMayBeDestroyed) {
    auto original = std::make_unique<MillDrillOperation>(1, 3);
    auto copy = std::make_unique<MillDrillOperation>(*original);
    copy->getParameterSection()->setInt("i_type", 81);
    EXPECT_EQ(original->getParameterSection()->getInt("i_type"), 81);
    original.reset();
    copy->readFromVDM();
    EXPECT_EQ(copy->getParameterSection()->getInt("i_type"), 83);
}
