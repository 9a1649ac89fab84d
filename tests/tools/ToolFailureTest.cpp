// What the tool classes log when something inside them fails, and that they carry on.
#include <gtest/gtest.h>
#include <velkapi/ExpertToolSection.h>
#include <velkapi/TurnToolSection.h>

#include <functional>
#include <set>
#include <stdexcept>

#include "ErrorLog.h"
#include "FailingAllocation.h"
#include "ToolTest.h"

using namespace VelkApi;
using testsupport::ErrorLogWatch;
using testsupport::textsOfEveryFailingAllocation;

namespace {

// A tool record whose number cannot be asked for, as if the caller's object were broken.
class BrokenNumberTool : public ToolOperation {
  public:
    using ToolOperation::ToolOperation;
    int getNumber() const override { throw std::runtime_error("no number"); }
};

// A mill tool section whose doubles can be neither given nor taken.
class BrokenDoubles : public MillToolSection {
  public:
    BrokenDoubles() : MillToolSection(1) {}
    double getDouble(const std::string&) const override { throw std::runtime_error("no double"); }
    void setDouble(const std::string&, double) override { throw std::runtime_error("no double"); }
};

// A mill tool section that has lost its entries.
class EntrylessTool : public MillToolSection {
  public:
    EntrylessTool() : MillToolSection(1) { values.reset(); }
};

// An expert tool section whose texts can be neither given nor taken.
class BrokenTexts : public ExpertToolSection {
  public:
    BrokenTexts() : ExpertToolSection(1) {}
    std::string getString(const std::string&) const override {
        throw std::runtime_error("no text");
    }
    void setString(const std::string& key, const std::string& text) override {
        if (failing) {
            throw std::runtime_error("no text");
        }
        ExpertToolSection::setString(key, text);
    }
    bool failing = true;
};

// The texts logged while `work` runs with each of its allocations failing in turn, until a run
// in which every allocation succeeded.
}  // namespace

class ToolFailureTest : public ToolTest {
  protected:
    void SetUp() override {
        ToolTest::SetUp();
        storeTool(2, testsupport::filledToolRecord());
    }
};

TEST_F(ToolFailureTest, MillRecordWriteAndReadLogAndCloseTheStore) {
    BrokenNumberTool broken(2, 1);
    MillToolSection tool(1);
    ErrorLogWatch log;
    tool.writeToVDM(&broken);
    tool.readFromVDM(&broken);
    EXPECT_EQ(log.texts(), (Texts{"Error in ToolSection::write(VelkApi::MillTurnVdm * vdm)",
                                  "Error in ToolSection::read(VelkApi::MillTurnVdm * vdm)"}));
    EXPECT_FALSE(broken.getVDM()->isOpen());
    EXPECT_EQ(storedToolLines(2, 1), testsupport::filledToolRecord());
}

TEST_F(ToolFailureTest, TurnRecordWriteAndReadLog) {
    BrokenNumberTool broken(2, 1);
    TurnToolSection tool(1);
    ErrorLogWatch log;
    tool.writeToVDM(&broken);
    tool.readFromVDM(&broken);
    EXPECT_EQ(log.texts(), (Texts{"Error in TurnToolSection::write(VelkApi::MillTurnVdm * vdm)",
                                  "Error in ToolSection::read(VelkApi::MillTurnVdm * vdm)"}));
    EXPECT_FALSE(broken.getVDM()->isOpen());
}

TEST_F(ToolFailureTest, WriteToVarsLogsAndKeepsWhatItWrote) {
    declareToolVariables();
    BrokenDoubles tool;
    tool.setInt("i_t_tool_nr", 12);
    ErrorLogWatch log;
    tool.writeToVars();
    EXPECT_EQ(log.texts(), Texts{"Error in ToolSection::writeToVars()"});
    // Line 1 went out before the first double of line 2 failed.
    EXPECT_EQ(global<int>("i_t_tool_nr"), 12);
}

TEST_F(ToolFailureTest, ReadFromVarsLogsAndKeepsWhatItRead) {
    declareToolVariables();
    host().setGlobal("i_t_tool_nr", 12);
    BrokenDoubles tool;
    ErrorLogWatch log;
    tool.readFromVars();
    EXPECT_EQ(log.texts(), Texts{"Error in void ToolSection::readFromVars()"});
    EXPECT_EQ(tool.getInt("i_t_tool_nr"), 12);
}

TEST_F(ToolFailureTest, DataTypeOfASectionWithoutEntriesLogsAndGivesNone) {
    EntrylessTool tool;
    ErrorLogWatch log;
    EXPECT_EQ(tool.getValueDataType("w_t_diam"), ValueDataType::None);
    EXPECT_EQ(log.texts(), Texts{"Error in ToolSection::getValueDataType(const string & key)"});
}

TEST_F(ToolFailureTest, ExpertTextsEndInTheirOwnBlanks) {
    declareToolVariables();
    BrokenTexts tool;
    Texts lines = {"there"};
    ErrorLogWatch log;
    tool.readFromStrings(testsupport::filledToolRecord());
    tool.writeToStrings(lines);
    tool.readFromVars();
    EXPECT_EQ(log.texts(),
              (Texts{"Error in ToolSection::read(VelkApi::MillTurnVdm * vdm)   ",
                     "Error in ToolSection::writeToStrings(VelkApi::MillTurnVdm * vdm)",
                     "Error in void ToolSection::readFromVars()  "}));
    EXPECT_EQ(lines, Texts{"there"});
}

TEST_F(ToolFailureTest, ExpertKeepsTheKeysSetBeforeAFailure) {
    BrokenTexts tool;
    tool.failing = false;
    tool.readFromStrings({"1 2 3"});
    tool.failing = true;
    tool.readFromStrings({"4 5 6"});
    tool.failing = false;
    EXPECT_EQ(tool.ExpertToolSection::getString("i_t_tool_id"), "1");
}

TEST_F(ToolFailureTest, ListOnAHostWithoutAToolSettingLogsAndHoldsNoTools) {
    host().setStore(2, {{"0 1 0"}, {"0 1 0"}, {"0 1 0"}});
    host().setEnvironment("TURNDRIVENTOOLS", "");
    ErrorLogWatch log;
    const ToolList list(2);
    EXPECT_EQ(log.texts(), Texts{"Error in ToolList::ToolList(int vdmname)"});
    EXPECT_EQ(list.getToolCount(), 0);
    EXPECT_EQ(list.getTool(0), nullptr);
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
}

// Each of these operations, with each of its allocations failing in turn, logs its own text and
// leaves no store open. The host starts afresh for each, so that its own first allocations fail
// too.
TEST_F(ToolFailureTest, EveryFailingAllocationOfAToolListIsLogged) {
    const std::set<std::string> seen = textsOfEveryFailingAllocation([] {
        ToolList list(2);
        list.readFromVDM();
    });
    EXPECT_TRUE(seen.count("Error in ToolList::ToolList(int vdmname)"));
    EXPECT_TRUE(seen.count("Error in ToolOperation::ToolOperation()"));
    EXPECT_TRUE(seen.count("Error in ToolSection::readFromVDM()"));
    EXPECT_TRUE(seen.count("Error in ToolSection::read(VelkApi::MillTurnVdm * vdm)"));
}

TEST_F(ToolFailureTest, EveryFailingAllocationOfWritingAMillRecordIsLogged) {
    MillToolSection tool(1);
    const std::set<std::string> seen =
        textsOfEveryFailingAllocation([&] { tool.writeToVDM(toolRecord.get()); });
    EXPECT_TRUE(seen.count("Error in ToolSection::writeToVDM()"));
    EXPECT_TRUE(seen.count("Error in ToolSection::write(VelkApi::MillTurnVdm * vdm)"));
    EXPECT_FALSE(toolRecord->getVDM()->isOpen());
}

TEST_F(ToolFailureTest, EveryFailingAllocationOfReadingATurnRecordIsLogged) {
    TurnToolSection tool(1);
    const std::set<std::string> seen =
        textsOfEveryFailingAllocation([&] { tool.readFromVDM(toolRecord.get()); });
    EXPECT_TRUE(seen.count("Error in TurnToolSection::readFromVDM()"));
    EXPECT_TRUE(seen.count("Error in ToolSection::read(VelkApi::MillTurnVdm * vdm)"));
    EXPECT_FALSE(toolRecord->getVDM()->isOpen());
}

TEST_F(ToolFailureTest, EveryFailingAllocationOfWritingATurnRecordIsLogged) {
    TurnToolSection tool(1);
    const std::set<std::string> seen =
        textsOfEveryFailingAllocation([&] { tool.writeToVDM(toolRecord.get()); });
    EXPECT_TRUE(seen.count("Error in ToolSection::writeToVDM()"));
    EXPECT_TRUE(seen.count("Error in TurnToolSection::write(VelkApi::MillTurnVdm * vdm)"));
    EXPECT_FALSE(toolRecord->getVDM()->isOpen());
}

TEST_F(ToolFailureTest, EveryFailingAllocationOfResettingTheHostIsLogged) {
    host().reset();  // no tool variables: every number the host refuses shows a message box
    MillToolSection tool(1);
    const std::set<std::string> seen = textsOfEveryFailingAllocation([&] { tool.setDefault(); });
    EXPECT_TRUE(seen.count("Error in ToolSection::setDefault()"));
}
