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
        host().setStore(
            1, {{"0 1 1 1", "setup"},
                {"0 1 1 1", "origin"},
                {"0 1 1 1", "tool change"},
                {"5 1 3 1 2 3", "Holes", "1 5", "8.5 0 118", "DRILLING", "4 83 1 2 2 -20 ", ""},
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
    EXPECT_EQ(sectionNames(op), (Texts{"Header", "ToolData", "Message", "Parameter", "Geometry",
                                       "Additional_1", "Additional_2"}));
    EXPECT_EQ(op.getSection(SectionType::Parameter, 0), op.getParameterSection());
    EXPECT_EQ(op.getSection(SectionType::Geometry, 0), op.getGeometrySection());
    EXPECT_EQ(op.getSection(SectionType::Additional, 1), op.getActionSection(1));
    EXPECT_EQ(op.getSection(SectionType::Additional, 2), op.getActionSection(2));
    EXPECT_EQ(op.getActionSection(3), nullptr);
    EXPECT_EQ(op.getSection(SectionType::ToolData, 0), op.getToolSection());
    EXPECT_NE(dynamic_cast<MillToolSection*>(op.getToolSection()), nullptr);
    EXPECT_EQ(op.getToolSection()->getSectionNr(), 1);
    EXPECT_EQ(op.getParameterSection()->getSectionNr(), 2);
    EXPECT_EQ(op.getMessageSection()->getSectionNr(), 0);
    EXPECT_EQ(op.getHeaderSection()->getSectionNr(), -1);
    EXPECT_EQ(op.getGeometrySection()->getSectionNr(), 3);
    EXPECT_EQ(op.getActionSection(1)->getSectionNr(), 4);
    EXPECT_EQ(op.getActionSection(1)->getSectionType(), ActionSectionType::PreOperation);
    EXPECT_EQ(op.getActionSection(2)->getSectionNr(), 5);
    EXPECT_EQ(op.getActionSection(2)->getSectionType(), ActionSectionType::PostOperation);
    EXPECT_EQ(op.getParameterSection()->getOperation(), &op);
    EXPECT_EQ(op.getGeometrySection()->getOperation(), &op);
    EXPECT_EQ(op.getActionSection(2)->getOperation(), &op);
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
              (Texts{"5 1 4 1 1 3 0", "Holes", "", "DRILLING"}));
}

TEST_F(MillDrillOperationTest, HeaderCountAboveSixMakesNoFurtherSections) {
    host().setStore(
        1, {{"0 1 0"}, {"0 1 0"}, {"0 1 0"}, {"4 1 9 1 0 1 0 0 0 0 0 0", "Nine", "POCKET"}});
    MillDrillOperation op(1, 3);
    op.readFromVDM();
    EXPECT_EQ(sectionNames(op), (Texts{"Header", "ToolData", "Message", "Parameter", "Geometry",
                                       "Additional_1", "Additional_2"}));
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
    Texts expected = {"4 1 4 1 19 2 0", "Engrave the label"};
    expected.insert(expected.end(), fresh.begin(), fresh.end());
    expected.insert(expected.end(), {"ENGRAVE", "2147483647 "});
    EXPECT_EQ(host().lines(1, 3), expected);
    EXPECT_EQ(host().lines(1, 4)[1], "Holes");
}

// Geometry before the parameters and the actions around them, each in its own place.
TEST_F(MillDrillOperationTest, GeometryAndActionsAreReadAndWrittenInTheirPlaces) {
    host().setStore(1, {{"0 1 0"},
                        {"0 1 0"},
                        {"0 1 0"},
                        {"5 1 6 1 0 3 2 4 3", "Holes", "DRILLING", "2 83 1 2 2 -20 ", "",
                         "X10 Y10 Z0", "X20 Y10 Z0", "###PREOPERATION###", "5 1 ", "M8",
                         "call 'probe.mac'", "###POSTOPERATION###", "5 ", "M9"},
                        {"4 1 0"}});
    MillDrillOperation op(1, 3);
    op.readFromVDM();
    std::vector<std::string> keys;
    EXPECT_EQ(op.getGeometrySection()->readKeys(keys),
              (Texts{"0000(x10 y10 z0)", "0001(x20 y10 z0)"}));
    std::vector<Action> pre, post;
    op.getActionSection(1)->getValues(&pre);
    op.getActionSection(2)->getValues(&post);
    ASSERT_EQ(pre.size(), 2u);
    EXPECT_EQ(pre[1].getCommand(), "call 'probe.mac'");
    EXPECT_EQ(pre[1].getType(), static_cast<ActionType>(1));
    ASSERT_EQ(post.size(), 1u);
    EXPECT_EQ(post[0].getCommand(), "M9");

    op.getGeometrySection()->addVelkObjectParameter(2, "X30 Y10 Z0",
                                                    GeometrySectionType::OutlineFigure);
    op.getActionSection(1)->clear();
    op.writeToVDM();
    // The operation had no tool record; it is written with one that holds no tool.
    const Texts record = host().lines(1, 3);
    const std::size_t tool = testsupport::freshToolRecord().size();
    ASSERT_EQ(record.size(), 11u + tool);
    EXPECT_EQ(record[0], "5 1 6 1 19 3 3 0 3");
    EXPECT_EQ(record[3 + tool].substr(0, 7), "3 83 1 ");
    EXPECT_EQ(Texts(record.begin() + 5 + tool, record.end()),
              (Texts{"X10 Y10 Z0", "X20 Y10 Z0", "X30 Y10 Z0", "###POSTOPERATION###", "5 ", "M9"}));
    EXPECT_EQ(host().lines(1, 4), Texts{"4 1 0"});
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
    EXPECT_TRUE(boxes().empty());
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

// ENGRAVE, TOOLS and MOVING keep no geometry counters among their parameters. Their geometry
// objects are written, but a read finds no counter saying how many lines are figures, so it reads
// none of them, and the next write of the operation stores an empty geometry section.
namespace {

struct GeometryCase {
    Kind kind;
};

void PrintTo(const GeometryCase& c, std::ostream* out) {
    *out << millDrillOperationTypeToString(c.kind);
}

class GeometryWithoutCountersTest : public MillDrillOperationTest,
                                    public ::testing::WithParamInterface<GeometryCase> {
  protected:
    // The header of operation 3 of store 1 without its last field, the geometry's line count.
    std::string headerWithoutGeometryCount() {
        const std::string header = host().lines(1, 3).front();
        return header.substr(0, header.rfind(' '));
    }
};

}  // namespace

TEST_P(GeometryWithoutCountersTest, WrittenObjectsAreNotReadBackAndTheNextWriteDropsThem) {
    const Kind kind = GetParam().kind;
    const testsupport::ErrorLogWatch errors;
    {
        MillDrillOperation op(kind, 1, 3);
        op.setMode(1);
        op.getMessageSection()->createandsetLine(0, "Label");
        op.getParameterSection()->setDefault();
        GeometrySection& geometry = *op.getGeometrySection();
        geometry.addVelkObjectParameter(0, "CONTOUR1", GeometrySectionType::OutlineFigure);
        geometry.addVelkObjectParameter(1, "X1 Y2 Z3", GeometrySectionType::OutlineFigure);
        op.writeToVDM();
    }
    Texts written = host().lines(1, 3);
    const std::string headerStart = headerWithoutGeometryCount();
    EXPECT_EQ(written.front(), headerStart + " 2");
    EXPECT_EQ(Texts(written.end() - 2, written.end()), (Texts{"CONTOUR1", "X1 Y2 Z3"}));

    MillDrillOperation again(1, 3);
    ASSERT_EQ(again.getOperationType(), kind);
    again.readFromVDM();
    Texts keys;
    EXPECT_EQ(again.getGeometrySection()->readKeys(keys), Texts{});
    again.writeToVDM();

    // The record as written, without its geometry lines, and the header counting none.
    const Texts rewritten = host().lines(1, 3);
    EXPECT_EQ(rewritten.front(), headerStart + " 0");
    EXPECT_EQ(Texts(rewritten.begin() + 1, rewritten.end()),
              Texts(written.begin() + 1, written.end() - 2));
    EXPECT_EQ(boxes(), Texts{});
    EXPECT_EQ(errors.texts(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(Kinds, GeometryWithoutCountersTest,
                         ::testing::Values(GeometryCase{Kind::ENGRAVE}, GeometryCase{Kind::TOOLS},
                                           GeometryCase{Kind::MOVING}),
                         [](const ::testing::TestParamInfo<GeometryCase>& param) {
                             return millDrillOperationTypeToString(param.param.kind);
                         });
