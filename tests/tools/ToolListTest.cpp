// The tools of a tool store.
#include <gtest/gtest.h>
#include <velkapi/ToolList.h>

#include "ErrorLog.h"
#include "ToolTest.h"

using namespace VelkApi;

namespace {

// A tool store: its leading record, then one record per tool with the tool's description and
// its record lines.
velkhost::Records toolStore(const std::vector<Texts>& tools) {
    velkhost::Records records = {{"0 1 1 1", "Tools of the job"}};
    for (const Texts& lines : tools) {
        velkhost::Record record = {"0 1 2 1 " + std::to_string(lines.size()), "A tool"};
        record.insert(record.end(), lines.begin(), lines.end());
        records.push_back(record);
    }
    return records;
}

// The filled record with another tool number and diameter.
Texts toolNumbered(int number, const std::string& diameter) {
    Texts lines = testsupport::filledToolRecord();
    lines[0].replace(2, 1, std::to_string(number));
    lines[1].replace(0, 2, diameter);
    return lines;
}

}  // namespace

class ToolListTest : public ToolTest {};

TEST_F(ToolListTest, MissingStoreHasNoTools) {
    const ToolList list(5);
    EXPECT_EQ(list.getToolCount(), 0);
    EXPECT_EQ(list.getTool(0), nullptr);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ToolListTest, StoreOfOnlyItsLeadingRecordHasNoTools) {
    host().setStore(2, toolStore({}));
    EXPECT_EQ(ToolList(2).getToolCount(), 0);
}

TEST_F(ToolListTest, EmptyStoreHasNoTools) {
    host().setStore(2, {});
    const ToolList list(2);
    EXPECT_EQ(list.getToolCount(), 0);
    EXPECT_EQ(list.getTool(0), nullptr);
}

TEST_F(ToolListTest, StoreOfSixRecordsHoldsFiveTools) {
    host().setStore(2, toolStore({{}, {}, {}, {}, {}}));
    const ToolList list(2);
    ASSERT_EQ(list.getToolCount(), 5);
    for (int i = 0; i < 5; ++i) {
        ASSERT_NE(list.getTool(i), nullptr);
        EXPECT_EQ(list.getTool(i)->getNumber(), i + 1);
        EXPECT_EQ(list.getTool(i)->getVdmname(), 2);
    }
    EXPECT_EQ(list.getTool(5), nullptr);
    EXPECT_EQ(list.getTool(-1), nullptr);
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 1);
    EXPECT_EQ(host().callCount("VelkMacroVdmClose"), 1);
}

TEST_F(ToolListTest, ConstructionReadsNoTool) {
    host().setStore(2, toolStore({toolNumbered(1, "12")}));
    const ToolList list(2);
    EXPECT_EQ(host().callCount("VelkMacroVdmSingleGet$"), 0);
    EXPECT_EQ(list.getTool(0)->getToolSection()->getDouble("w_t_diam"), 2147483647.0);
}

TEST_F(ToolListTest, ReadingReadsEveryToolsHeaderAndToolData) {
    host().setStore(
        2, toolStore({toolNumbered(1, "12"), toolNumbered(2, "6"), toolNumbered(3, "50")}));
    ToolList list(2);
    list.readFromVDM();
    const std::vector<std::pair<int, double>> expected = {{1, 12.0}, {2, 6.0}, {3, 50.0}};
    for (int i = 0; i < 3; ++i) {
        const ToolOperation& tool = *list.getTool(i);
        EXPECT_EQ(tool.getToolSection()->getInt("i_t_tool_nr"), expected[i].first);
        EXPECT_EQ(tool.getToolSection()->getDouble("w_t_diam"), expected[i].second);
        EXPECT_EQ(tool.getToolSection()->getString("$_t_tooldesc"), "End mill 10 mm, 4 flutes");
        tool.getHeaderSection()->setDefault();
        EXPECT_EQ(tool.getHeaderSection()->getInt("ToolSectionLineCount"), 19);
        // The message section is not read.
        EXPECT_FALSE(tool.getMessageSection()->existsKey("0"));
    }
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ToolListTest, ABrokenRecordReadsWhatItHasAndTheOthersReadWhole) {
    velkhost::Records records = toolStore({toolNumbered(1, "12"), {}, toolNumbered(3, "50")});
    // The second tool's header promises 19 lines that the record does not have, and its first
    // line holds no number.
    records[2] = {"0 1 2 1 19", "Broken", "abc 7"};
    host().setStore(2, records);
    testsupport::ErrorLogWatch log;
    ToolList list(2);
    list.readFromVDM();
    const MillToolSection& broken = *list.getTool(1)->getToolSection();
    EXPECT_EQ(broken.getInt("i_t_tool_id"), 0);
    EXPECT_EQ(broken.getInt("i_t_tool_nr"), 7);
    EXPECT_EQ(broken.getDouble("w_t_diam"), 2147483647.0);
    EXPECT_EQ(
        log.texts(),
        Texts{"Error in SectionDictionary::getIntFromLine(const string & line, int defaultval)"});
    EXPECT_EQ(list.getTool(0)->getToolSection()->getDouble("w_t_diam"), 12.0);
    EXPECT_EQ(list.getTool(2)->getToolSection()->getDouble("w_t_diam"), 50.0);
    EXPECT_EQ(list.getTool(2)->getToolSection()->getString("$_t_hld_file"), "hsk63.hld");
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
}

TEST_F(ToolListTest, StoreHeldElsewhereGivesNoToolsAndSaysWhy) {
    host().setStore(2, toolStore({{}, {}}));
    host().holdOpenElsewhere(2, true);
    EXPECT_EQ(ToolList(2).getToolCount(), 0);
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroVdm|2: Open: already open by another process"});
}

TEST_F(ToolListTest, StoreThatWillNotOpenGivesNoTools) {
    host().setStore(2, toolStore({{}, {}}));
    host().failOpen(2, true);
    EXPECT_EQ(ToolList(2).getToolCount(), 0);
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroVdm|2: Open: VELK can not open"});
}

TEST_F(ToolListTest, WritingChangesNothing) {
    host().setStore(2, toolStore({toolNumbered(1, "12")}));
    ToolList list(2);
    list.readFromVDM();
    list.getTool(0)->getToolSection()->setDouble("w_t_diam", 3.0);
    host().resetCallCounts();
    list.writeToVDM();
    list.getTool(0)->writeToVDM();
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
    EXPECT_EQ(host().records(2), toolStore({toolNumbered(1, "12")}));
}

TEST_F(ToolListTest, ToolsAreRecordsOfHeaderMessageAndMillToolData) {
    host().setEnvironment("TURNDRIVENTOOLS", "2");
    const ToolOperation tool(2, 1);
    EXPECT_EQ(tool.getSection(SectionType::Header, 0), tool.getHeaderSection());
    EXPECT_EQ(tool.getSection(SectionType::Message, 0), tool.getMessageSection());
    EXPECT_EQ(tool.getSection(SectionType::ToolData, 0), tool.getToolSection());
    EXPECT_EQ(tool.getHeaderSection()->getSectionNr(), -1);
    EXPECT_EQ(tool.getMessageSection()->getSectionNr(), 0);
    EXPECT_EQ(tool.getToolSection()->getSectionNr(), 1);
    EXPECT_EQ(tool.getToolSection()->getOperation(), &tool);
    EXPECT_FALSE(tool.existsSection(SectionType::Parameter, 0));
}

TEST_F(ToolListTest, CopiesShareTheirToolsAndBothMayBeDestroyed) {
    host().setStore(2, toolStore({toolNumbered(1, "12")}));
    auto original = std::make_unique<ToolList>(2);
    auto copy = std::make_unique<ToolList>(*original);
    EXPECT_EQ(copy->getTool(0), original->getTool(0));
    original.reset();
    copy->readFromVDM();
    EXPECT_EQ(copy->getTool(0)->getToolSection()->getDouble("w_t_diam"), 12.0);
}
