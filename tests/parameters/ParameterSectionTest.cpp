// The parameter section in the record: the kind's name line, then value lines on which entry nr
// is field nr % 100 of value line nr / 100.
#include <gtest/gtest.h>

#include <memory>

#include "FailingAllocation.h"
#include "ParametersTest.h"

using namespace VelkApi;
using paramtest::OpenParameterSection;
using paramtest::TestOperation;
using paramtest::Texts;
using testsupport::ErrorLogWatch;
using velkhost::Records;

namespace {

class ParametersSection : public paramtest::ParametersTest {
  protected:
    // Store 7: operation 0 is a new one, without sections.
    void SetUp() override {
        ParametersTest::SetUp();
        host().setStore(7, Records{{"4 1 0"}});
        host().setGlobal("w_setup_cle", 2.5);
        host().setGlobal("w_setup_ret", 12.0);
        operation = std::make_unique<TestOperation>(7, 0, true);
        op = operation.get();
    }

    std::unique_ptr<TestOperation> operation;
    TestOperation* op = nullptr;
};

}  // namespace

TEST_F(ParametersSection, NamesTheKindAndDeclaresNothing) {
    const OpenParameterSection section(MillDrillOperationType::POCKET);
    EXPECT_EQ(section.getOperationTypeName(), "POCKET");
    EXPECT_EQ(section.getOperationType(), MillDrillOperationType::POCKET);
    EXPECT_EQ(section.getSectionNr(), 2);
    EXPECT_EQ(section.getLineCount(), 0);
    EXPECT_EQ(section.getChannel(), 0);
    EXPECT_FALSE(section.isSubspindleAvailable());
    EXPECT_FALSE(section.isYaxAvailable());
    std::vector<std::string> keys;
    EXPECT_TRUE(section.readKeys(keys).empty());
}

TEST_F(ParametersSection, KindsWithoutANameHaveAnEmptyNameLine) {
    EXPECT_EQ(OpenParameterSection(static_cast<MillDrillOperationType>(15)).getOperationTypeName(),
              "");
    EXPECT_EQ(OpenParameterSection(MillDrillOperationType::Unknown).getOperationTypeName(), "");
}

TEST_F(ParametersSection, WritesEntriesOntoTheirValueLines) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(3);
    section.addIntParameter(0, "i_a", 5);
    section.addIntParameter(1, "i_b", 6);
    section.addIntParameter(100, "i_c", 7);
    section.writeToVDM(op);
    EXPECT_EQ(storedLines(7), (Texts{"4 1 3 0 0 3", "POCKET", "5 6 ", "7 "}));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ParametersSection, WritesEachKindOfField) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(2);
    section.addDoubleParameter(0, "w_a", 0.42);
    section.addDoubleParameter(1, "w_b", 2147483647.0);
    section.addIntParameter(2, "i_c", -3);
    section.addStringParameter(3, "$_d", "", "text");
    section.addDoubleParameter(4, "w_e", -999999.0);
    section.writeToVDM(op);
    EXPECT_EQ(storedLines(7)[2], "0.42 2.14748e+09 -3 text -999999 ");
}

TEST_F(ParametersSection, OptionBitsOfOneNumberShareOneField) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(2);
    section.addIntParameter(0, "i_a", 0);
    section.addIntParameter(1, "i_b", 0);
    section.addIntParameter(2, "i_c", 0);
    section.addBoolParameter(3, 1, "o_first", false, true);
    section.addBoolParameter(3, 3, "o_third", false, true);
    section.addIntParameter(4, "i_d", 9);
    section.writeToVDM(op);
    EXPECT_EQ(storedLines(7)[2], "0 0 0 5 9 ");

    host().setStore(7, Records{{"4 1 3 0 0 2", "POCKET", "0 0 0 4 9"}});
    section.readFromVDM(op);
    EXPECT_FALSE(section.getBool("o_first"));
    EXPECT_TRUE(section.getBool("o_third"));
}

TEST_F(ParametersSection, TheThirtySecondBitIsTheSignOfTheField) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(2);
    section.addBoolParameter(0, 2, "o_low", false, true);
    section.addBoolParameter(0, 32, "o_high", false, true);
    section.writeToVDM(op);
    EXPECT_EQ(storedLines(7)[2], "-2147483646 ");

    section.setBool("o_low", false);
    section.setBool("o_high", false);
    section.readFromVDM(op);
    EXPECT_TRUE(section.getBool("o_low"));
    EXPECT_TRUE(section.getBool("o_high"));
}

TEST_F(ParametersSection, NumbersFrom300OnAreWrittenWithTheEntryBeforeButReadByNumber) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(5);
    section.addIntParameter(0, "i_a", 1);
    section.addIntParameter(200, "i_b", 2);
    section.addIntParameter(350, "i_c", 3);
    section.writeToVDM(op);
    EXPECT_EQ(storedLines(7), (Texts{"4 1 3 0 0 5", "POCKET", "1 ", "", "2 3 ", ""}));

    std::string fourth;
    for (int field = 0; field <= 50; ++field) {
        fourth += std::to_string(field + 100) + " ";
    }
    host().setStore(7, Records{{"4 1 3 0 0 5", "POCKET", "11", "", "22 33", fourth}});
    section.readFromVDM(op);
    EXPECT_EQ(section.getInt("i_a"), 11);
    EXPECT_EQ(section.getInt("i_b"), 22);
    EXPECT_EQ(section.getInt("i_c"), 150);
}

TEST_F(ParametersSection, EntriesBeyondTheLineCountAreNotWritten) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(2);
    section.addIntParameter(0, "i_a", 1);
    section.addIntParameter(100, "i_b", 2);
    section.addIntParameter(250, "i_c", 3);
    section.writeToVDM(op);
    EXPECT_EQ(storedLines(7), (Texts{"4 1 3 0 0 2", "POCKET", "1 "}));
}

TEST_F(ParametersSection, AnEmptyTextIsWrittenAsTheSentinelAndReadBackAsIt) {
    OpenParameterSection section(MillDrillOperationType::DRILLING);
    section.setLineCount(2);
    section.addStringParameter(0, "$_project");
    section.writeToVDM(op);
    EXPECT_EQ(storedLines(7)[2], "2147483647 ");
    section.readFromVDM(op);
    EXPECT_EQ(section.getString("$_project"), "2147483647");
}

TEST_F(ParametersSection, ReadsEachKindOfField) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(2);
    section.addDoubleParameter(0, "w_a", 0.0);
    section.addIntParameter(1, "i_b", 0);
    section.addStringParameter(2, "$_c");
    section.addDoubleParameter(3, "w_d", 0.0);
    section.addStringParameter(4, "$_e", "fallback");
    host().setStore(7, Records{{"4 1 3 0 0 2", "POCKET", "2,5 -4 plain 1e+08 'two words'"}});
    section.readFromVDM(op);
    EXPECT_DOUBLE_EQ(section.getDouble("w_a"), 2.5);
    EXPECT_EQ(section.getInt("i_b"), -4);
    EXPECT_EQ(section.getString("$_c"), "plain");
    EXPECT_DOUBLE_EQ(section.getDouble("w_d"), 1e8);
    EXPECT_EQ(section.getString("$_e"), "two words");
}

TEST_F(ParametersSection, MissingFieldsReadAsTheDefaults) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(2);
    section.addIntParameter(0, "i_a", 1, 10);
    section.addDoubleParameter(1, "w_b", 2.0, 20.0);
    section.addStringParameter(2, "$_c", "three", "thirty");
    section.addBoolParameter(3, 1, "o_d", true, true);
    host().setStore(7, Records{{"4 1 3 0 0 2", "POCKET", "5"}});
    section.readFromVDM(op);
    EXPECT_EQ(section.getInt("i_a"), 5);
    EXPECT_DOUBLE_EQ(section.getDouble("w_b"), 2.0);
    EXPECT_EQ(section.getString("$_c"), "three");
    EXPECT_FALSE(section.getBool("o_d"));
}

TEST_F(ParametersSection, EntriesBeyondTheLinesReadKeepTheirValues) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(3);
    section.addIntParameter(0, "i_a", 0);
    section.addIntParameter(100, "i_b", 0, 42);
    host().setStore(7, Records{{"4 1 3 0 0 2", "POCKET", "8"}});
    section.readFromVDM(op);
    EXPECT_EQ(section.getInt("i_a"), 8);
    EXPECT_EQ(section.getInt("i_b"), 42);
}

TEST_F(ParametersSection, ReadingTakesTheNameLineAsTheKindName) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    host().setStore(7, Records{{"4 1 3 1 1 2", "message", "tool", "RESTMATL", "0"}});
    section.readFromVDM(op);
    EXPECT_EQ(section.getOperationTypeName(), "RESTMATL");
}

TEST_F(ParametersSection, BoringReadsAsDrilling) {
    OpenParameterSection section(MillDrillOperationType::DRILLING);
    section.setLineCount(3);
    section.addIntParameter(0, "i_nr_of_figs", 0);
    host().setStore(7, Records{{"5 1 3 0 0 3", "BORING", "3", "2147483647"}});
    section.readFromVDM(op);
    EXPECT_EQ(section.getOperationTypeName(), "DRILLING");
    EXPECT_EQ(section.getInt("i_nr_of_figs"), 3);

    section.writeToVDM(op);
    EXPECT_EQ(storedLines(7)[1], "DRILLING");
}

TEST_F(ParametersSection, ProjectKindsKeepASecondValueLineAfterReading) {
    for (const auto type : {MillDrillOperationType::DRILLING, MillDrillOperationType::POCCYCLE,
                            MillDrillOperationType::THREADING}) {
        host().setStore(7, Records{{"5 1 3 0 0 2", "DRILLING", "1"}});
        OpenParameterSection section(type);
        section.setLineCount(2);
        section.readFromVDM(op);
        EXPECT_EQ(section.getLineCount(), 3);
    }
    // Other kinds keep their count.
    OpenParameterSection pocket(MillDrillOperationType::POCKET);
    pocket.setLineCount(2);
    pocket.readFromVDM(op);
    EXPECT_EQ(pocket.getLineCount(), 2);
}

TEST_F(ParametersSection, ProjectKindsKeepASecondValueLineAlsoWhenTheStoreIsMissing) {
    host().removeStore(7);
    OpenParameterSection section(MillDrillOperationType::DRILLING);
    section.setLineCount(2);
    ErrorLogWatch log;
    section.readFromVDM(op);
    EXPECT_EQ(section.getLineCount(), 3);
    EXPECT_TRUE(log.texts().empty());
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ParametersSection, APocketCycleReadFromTheStoreWritesItsProject) {
    host().setStore(7, Records{{"15 1 3 0 0 2", "POCCYCLE", "0"}});
    OpenParameterSection section(MillDrillOperationType::POCCYCLE);
    section.setOperation(op);
    section.Init(false);
    ASSERT_EQ(section.getLineCount(), 2);
    section.readFromVDM(op);
    ASSERT_EQ(section.getLineCount(), 3);
    section.setString("$_project", "job7");
    section.writeToVDM(op);
    const Texts lines = storedLines(7);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], "15 1 3 0 0 3");
    EXPECT_EQ(lines[3], "job7 ");
}

TEST_F(ParametersSection, ANameLineOnlyIsTheNameAndNoValues) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.addIntParameter(0, "i_a", 1, 4);
    host().setStore(7, Records{{"4 1 3 0 0 1", "CORNER"}});
    ErrorLogWatch log;
    section.readFromVDM(op);
    EXPECT_EQ(section.getOperationTypeName(), "CORNER");
    EXPECT_EQ(section.getInt("i_a"), 4);
    EXPECT_TRUE(log.texts().empty());
}

TEST_F(ParametersSection, ASectionWithoutLinesInTheRecordFailsToRead) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(2);
    section.addIntParameter(0, "i_a", 1, 4);
    host().setStore(7, Records{{"4 1 3 0 0 0"}});
    ErrorLogWatch log;
    section.readFromVDM(op);
    EXPECT_EQ(log.texts(), Texts{"Error in ParameterSection::readFromVDM()"});
    EXPECT_EQ(section.getInt("i_a"), 4);
    EXPECT_EQ(section.getOperationTypeName(), "POCKET");
    EXPECT_FALSE(host().lines(7, 0).empty());
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
}

TEST_F(ParametersSection, AnOperationWithoutAParameterSectionFailsToRead) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.addIntParameter(0, "i_a", 1, 4);
    ErrorLogWatch log;
    section.readFromVDM(op);  // the operation has no sections at all
    EXPECT_EQ(log.texts(), Texts{"Error in ParameterSection::readFromVDM()"});
    EXPECT_EQ(section.getInt("i_a"), 4);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ParametersSection, AMissingOperationIsReportedByTheStore) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(2);
    section.addIntParameter(0, "i_a", 1, 4);
    TestOperation missing(7, 3, true);
    section.writeToVDM(&missing);
    EXPECT_EQ(storedLines(7), Texts{"4 1 0"});
    EXPECT_EQ(boxes(),
              Texts{"VelkApi::MillTurnVdm|7: Operation 3 (0 based) out of range (1 oprations)"});
    EXPECT_EQ(section.getInt("i_a"), 4);
}

TEST_F(ParametersSection, WritingReplacesTheSectionAndLeavesTheOthers) {
    host().setStore(
        7, Records{{"4 1 4 1 1 3 1", "msg", "tool", "POCKET", "1 2 3 ", "9 ", "geo"}, {"4 1 0"}});
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(2);
    section.addIntParameter(0, "i_a", 5);
    section.writeToVDM(op);
    EXPECT_EQ(storedLines(7, 0), (Texts{"4 1 4 1 1 2 1", "msg", "tool", "POCKET", "5 ", "geo"}));
    EXPECT_EQ(storedLines(7, 1), Texts{"4 1 0"});
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
}

TEST_F(ParametersSection, TheHeaderCountsTheLinesTheStoreTook) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(4);
    host().failAddsAfter(7, 2);
    section.writeToVDM(op);
    EXPECT_EQ(storedLines(7), (Texts{"4 1 3 0 0 2", "POCKET", ""}));
}

TEST_F(ParametersSection, WritingAndReadingBackGiveTheSameValues) {
    OpenParameterSection written(MillDrillOperationType::POCKET);
    written.setOperation(op);
    written.Init(false);
    written.setDefault();
    written.setDouble("w_zdepth", -12.75);
    written.setInt("i_coolant", 3);
    written.setBool("o_finishing", true);
    written.setBool("o_retract", false);
    written.setDouble("w_xs", 1.5);
    written.writeToVDM(op);

    OpenParameterSection read(MillDrillOperationType::POCKET);
    read.setOperation(op);
    read.Init(false);
    read.readFromVDM(op);
    std::vector<std::string> keys;
    for (const std::string& key : written.readKeys(keys)) {
        if (written.getValueDataType(key) == ValueDataType::Double &&
            written.getDouble(key) == 2147483647.0) {
            // Six digits of the "not set" marker come back as a number.
            EXPECT_DOUBLE_EQ(read.getDouble(key), 2147480000.0) << key;
        } else {
            EXPECT_EQ(read.getValueAsString(key), written.getValueAsString(key)) << key;
        }
    }
    EXPECT_DOUBLE_EQ(read.getDouble("w_zdepth"), -12.75);
    EXPECT_TRUE(read.getBool("o_finishing"));
    EXPECT_FALSE(read.getBool("o_retract"));
}

TEST_F(ParametersSection, WithoutAnOperationNothingHappens) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setLineCount(2);
    section.addIntParameter(0, "i_a", 1, 4);
    ErrorLogWatch log;
    section.writeToVDM(nullptr);
    section.readFromVDM(nullptr);
    EXPECT_EQ(storedLines(7), Texts{"4 1 0"});
    EXPECT_EQ(section.getInt("i_a"), 4);
    EXPECT_TRUE(log.texts().empty());
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
}

TEST_F(ParametersSection, ASectionThatWasNeverInitialisedFailsToWrite) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    ErrorLogWatch log;
    section.writeToVDM(op);
    EXPECT_EQ(log.texts(), Texts{"Error in ParameterSection::writeToVDM()"});
    EXPECT_EQ(storedLines(7), Texts{"4 1 0"});
}

TEST_F(ParametersSection, TellsTheDataTypeOfAnEntry) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setOperation(op);
    section.Init(false);
    EXPECT_EQ(section.getValueDataType("i_coolant"), ValueDataType::Int);
    EXPECT_EQ(section.getValueDataType("W_ZDEPTH"), ValueDataType::Double);
    EXPECT_EQ(section.getValueDataType("o_Retract"), ValueDataType::Bool);
    EXPECT_EQ(section.getValueDataType("w_xs"), ValueDataType::Double);
    EXPECT_EQ(section.getValueDataType("no_such_entry"), ValueDataType::None);
    section.addStringParameter(99, "$_text");
    EXPECT_EQ(section.getValueDataType("$_TEXT"), ValueDataType::String);
}

TEST_F(ParametersSection, ASectionWithoutItsEntryMapLogsEachOperation) {
    testsupport::failAllocationAfter(0);
    OpenParameterSection section(MillDrillOperationType::POCKET);
    testsupport::stopFailingAllocations();
    section.setLineCount(2);
    host().setStore(7, Records{{"4 1 3 0 0 2", "POCKET", "1"}});
    ErrorLogWatch log;
    EXPECT_EQ(section.getValueDataType("i_a"), ValueDataType::None);
    section.writeToVDM(op);
    section.readFromVDM(op);
    EXPECT_EQ(log.texts(), (Texts{"Error in ParameterSection::getValueDataType()",
                                  "Error in ParameterSection::writeToVDM()",
                                  "Error in ParameterSection::readFromVDM()"}));
    EXPECT_EQ(storedLines(7), (Texts{"4 1 3 0 0 2", "POCKET", "1"}));
}

TEST_F(ParametersSection, ACopySharesTheEntriesAndKeepsTheFlags) {
    OpenParameterSection section(MillDrillOperationType::MEDITOR);
    section.setOperation(op);
    section.Init(false);
    section.setYaxAvailable(true);
    ParameterSection copy(section);
    EXPECT_EQ(copy.getLineCount(), 2);
    EXPECT_TRUE(copy.isYaxAvailable());
    EXPECT_EQ(copy.getOperationTypeName(), "MEDITOR");
    copy.setInt("i_mct", 9);
    EXPECT_EQ(section.getInt("i_mct"), 9);
}
