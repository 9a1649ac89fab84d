// The mill tool section's entries and its record in the store.
#include <gtest/gtest.h>
#include <velkapi/LogFile.h>
#include <velkapi/ToolList.h>

#include "ErrorLog.h"
#include "ToolTest.h"

using namespace VelkApi;

namespace {

// Shows the entries' numbers.
class InspectedToolSection : public MillToolSection {
  public:
    InspectedToolSection() : MillToolSection(1) {}
    int numberOf(const std::string& key) const { return findEntry(key)->getNr(); }
};

}  // namespace

class MillToolSectionTest : public ToolTest {
  protected:
    // A fresh section, read from record 1 of store 2.
    MillToolSection readTool() {
        MillToolSection section(1);
        section.readFromVDM(toolRecord.get());
        return section;
    }
};

TEST_F(MillToolSectionTest, NewSectionHoldsEverySlotUnset) {
    const MillToolSection section(1);
    std::vector<std::string> keys;
    // 105 slots; "i_t_holder_id" names one key from both of its slots.
    EXPECT_EQ(section.readKeys(keys).size(), 104u);
    for (int line = 0; line < ToolSection::LINESCOUNT; ++line) {
        for (int slot = 0; slot < ToolSection::lineslen[line]; ++slot) {
            const std::string& name = ToolSection::lines[line][slot];
            ASSERT_TRUE(section.existsKey(name)) << name;
            switch (name.front()) {
                case 'i':
                    EXPECT_EQ(section.getInt(name), 2147483647) << name;
                    break;
                case 'w':
                    EXPECT_EQ(section.getDouble(name), 2147483647.0) << name;
                    break;
                default:
                    EXPECT_EQ(section.getString(name), "") << name;
                    break;
            }
        }
    }
}

// Later sections take the first one's entries as it declared them, each with values of its own.
TEST_F(MillToolSectionTest, EverySectionHoldsItsOwnValues) {
    MillToolSection first(1);
    first.setDouble("w_t_diam", 12.5);
    first.setString("$_t_tooldesc", "End mill");
    MillToolSection second(1);
    EXPECT_EQ(second.getDouble("w_t_diam"), 2147483647.0);
    EXPECT_EQ(second.getString("$_t_tooldesc"), "");
    second.setInt("i_t_tool_nr", 7);
    EXPECT_EQ(first.getInt("i_t_tool_nr"), 2147483647);
    EXPECT_EQ(first.getDouble("w_t_diam"), 12.5);
    std::vector<std::string> firstKeys;
    std::vector<std::string> secondKeys;
    EXPECT_EQ(first.readKeys(firstKeys), second.readKeys(secondKeys));
    EXPECT_EQ(first.getString("$_t_tooldesc"), "End mill");
}

TEST_F(MillToolSectionTest, EntriesAreNumberedInTableOrder) {
    const InspectedToolSection section;
    EXPECT_EQ(section.numberOf("i_t_tool_id"), 0);
    EXPECT_EQ(section.numberOf("i_t_bin(3)"), 14);
    EXPECT_EQ(section.numberOf("w_t_diam"), 15);
    EXPECT_EQ(section.numberOf("w_t_tur_val(20)"), 56);
    // The first of the two holder slots keeps the key; the second counts all the same.
    EXPECT_EQ(section.numberOf("i_t_holder_id"), 6);
    EXPECT_EQ(section.numberOf("i_t_hld_type"), 58);
    EXPECT_EQ(section.numberOf("$_t_ident_nr"), 92);
    EXPECT_EQ(section.numberOf("$_t_hld_file"), 104);
}

TEST_F(MillToolSectionTest, DataTypeFoldsCase) {
    MillToolSection section(1);
    EXPECT_EQ(section.getValueDataType("W_T_DIAM"), ValueDataType::Double);
    EXPECT_EQ(section.getValueDataType("i_t_nr_theeth"), ValueDataType::Int);
    EXPECT_EQ(section.getValueDataType("w_t_cornerrad_type"), ValueDataType::Double);
    EXPECT_EQ(section.getValueDataType("$_T_Comment"), ValueDataType::String);
    EXPECT_EQ(section.getValueDataType("w_t_nothing"), ValueDataType::None);
}

TEST_F(MillToolSectionTest, FreshSectionWritesNineteenUnsetLines) {
    storeTool(2, {});
    MillToolSection(1).writeToVDM(toolRecord.get());
    EXPECT_EQ(host().lines(2, 1)[0], "0 1 2 1 19");
    EXPECT_EQ(storedToolLines(2, 1), testsupport::freshToolRecord());
    EXPECT_EQ(storedToolLines(2, 1)[0],
              "2147483647 2147483647 2147483647 2147483647 2147483647 2147483647 2147483647 "
              "2147483647 2147483647 2147483647 2147483647 2147483647 2147483647 2147483647 "
              "2147483647");
    EXPECT_EQ(storedToolLines(2, 1)[1].substr(0, 12), "2.14748e+09 ");
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillToolSectionTest, FilledRecordReadsIntoEveryKind) {
    storeTool(2, testsupport::filledToolRecord());
    const MillToolSection tool = readTool();
    EXPECT_EQ(tool.getInt("i_t_tool_id"), 2);
    EXPECT_EQ(tool.getInt("i_t_bin(3)"), 3);
    EXPECT_EQ(tool.getDouble("w_t_diam"), 10.0);
    EXPECT_EQ(tool.getDouble("w_t_2_diam"), 9.5);
    EXPECT_EQ(tool.getInt("i_t_nr_theeth"), 4);
    EXPECT_EQ(tool.getInt("i_t_thread_type"), 0);
    EXPECT_EQ(tool.getDouble("w_t_tur_val(20)"), 10.0);
    EXPECT_EQ(tool.getInt("i_t_hld_type"), 7);
    EXPECT_EQ(tool.getDouble("w_t_val(1)"), 1.25);
    EXPECT_EQ(tool.getDouble("w_t_feed_v_f"), 0.015);
    EXPECT_EQ(tool.getInt("i_t_spindle_nr"), 1);
    EXPECT_EQ(tool.getDouble("w_t_siderad"), 0.0);
    EXPECT_EQ(tool.getString("$_t_tooldesc"), "End mill 10 mm, 4 flutes");
    EXPECT_EQ(tool.getString("$_t_hld_file"), "hsk63.hld");
}

TEST_F(MillToolSectionTest, FilledRecordIsWrittenBackLineForLine) {
    storeTool(2, testsupport::filledToolRecord());
    MillToolSection tool = readTool();
    storeTool(2, {});
    tool.writeToVDM(toolRecord.get());
    EXPECT_EQ(storedToolLines(2, 1), testsupport::filledToolRecord());
}

TEST_F(MillToolSectionTest, ValuesSetByNameAreWrittenInTheirSlots) {
    storeTool(2, {});
    MillToolSection tool(1);
    tool.setInt("i_t_tool_nr", 12);
    tool.setDouble("w_t_diam", 8.5);
    tool.setInt("i_t_nr_theeth", 2);
    tool.setDouble("w_t_topangle", 118.0);
    tool.setDouble("w_t_val(10)", -0.25);
    tool.setString("$_t_tool_type", "Drill");
    tool.writeToVDM(toolRecord.get());
    const Texts lines = storedToolLines(2, 1);
    EXPECT_EQ(fieldsOf(lines[0])[1], "12");
    EXPECT_EQ(lines[1],
              "8.5 2.14748e+09 118 2.14748e+09 2 2.14748e+09 2.14748e+09 2.14748e+09 2.14748e+09 "
              "2.14748e+09 2.14748e+09 2147483647");
    EXPECT_EQ(fieldsOf(lines[4]).back(), "-0.25");
    EXPECT_EQ(lines[7], "Drill");
}

TEST_F(MillToolSectionTest, HolderIdIsWrittenInBothSlotsAndReadFromTheLaterOne) {
    storeTool(2, {});
    MillToolSection tool(1);
    tool.setInt("i_t_holder_id", 40);
    tool.writeToVDM(toolRecord.get());
    const Texts lines = storedToolLines(2, 1);
    EXPECT_EQ(fieldsOf(lines[0])[6], "40");
    EXPECT_EQ(fieldsOf(lines[4])[0], "40");
    EXPECT_EQ(fieldsOf(lines[4])[1], "2147483647");

    Texts differing = testsupport::filledToolRecord();
    differing[4].replace(0, 2, "41");
    storeTool(2, differing);
    EXPECT_EQ(readTool().getInt("i_t_holder_id"), 41);
}

TEST_F(MillToolSectionTest, DoublesKeepSixSignificantDigits) {
    storeTool(2, {});
    MillToolSection tool(1);
    tool.setDouble("w_t_work_time", 12.3456789);
    tool.writeToVDM(toolRecord.get());
    EXPECT_EQ(fieldsOf(storedToolLines(2, 1)[5])[9], "12.3457");
    const MillToolSection back = readTool();
    EXPECT_EQ(back.getDouble("w_t_work_time"), 12.3457);
    EXPECT_EQ(back.getDouble("w_t_diam"), 2147480000.0);
}

TEST_F(MillToolSectionTest, TextsWithBlanksSurvive) {
    storeTool(2, {});
    MillToolSection tool(1);
    tool.setString("$_t_comment", "  two  blanks, and 'quotes' ");
    tool.setString("$_t_tooldesc", "a\ttab");
    tool.writeToVDM(toolRecord.get());
    EXPECT_EQ(storedToolLines(2, 1)[12], "  two  blanks, and 'quotes' ");
    const MillToolSection back = readTool();
    EXPECT_EQ(back.getString("$_t_comment"), "  two  blanks, and 'quotes' ");
    EXPECT_EQ(back.getString("$_t_tooldesc"), "a\ttab");
}

TEST_F(MillToolSectionTest, CommaReadsAsDecimalPoint) {
    Texts lines = testsupport::filledToolRecord();
    lines[1] = "12,5 0 0 0 4";
    storeTool(2, lines);
    const MillToolSection tool = readTool();
    EXPECT_EQ(tool.getDouble("w_t_diam"), 12.5);
    // Fields the line does not have read as 0.
    EXPECT_EQ(tool.getDouble("w_t_total_len"), 0.0);
    EXPECT_EQ(tool.getInt("i_t_thread_type"), 0);
}

TEST_F(MillToolSectionTest, ZeroLinesInTheHeaderReadNothing) {
    storeTool(2, testsupport::filledToolRecord());
    host().setStore(2, {{"0 1 0"}, {"0 1 2 1 0", "Tool"}});
    MillToolSection tool(1);
    tool.setDouble("w_t_diam", 6.0);
    tool.readFromVDM(toolRecord.get());
    EXPECT_EQ(tool.getDouble("w_t_diam"), 6.0);
    EXPECT_EQ(tool.getString("$_t_tooldesc"), "");
}

TEST_F(MillToolSectionTest, HeaderWithoutAToolSectionReadsNothing) {
    host().setStore(2, {{"0 1 0"}, {"0 1 1 1", "Tool", "2 2 2"}});
    MillToolSection tool(1);
    tool.readFromVDM(toolRecord.get());
    EXPECT_EQ(tool.getInt("i_t_tool_id"), 2147483647);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillToolSectionTest, LinesBeyondTheNineteenthAreReadAndIgnored) {
    Texts lines = testsupport::filledToolRecord();
    lines.push_back("99 99 99");
    lines.push_back("extra");
    velkhost::Record record = {"0 1 3 1 21 1", "Tool"};
    record.insert(record.end(), lines.begin(), lines.end());
    record.push_back("after");
    host().setStore(2, {{"0 1 0"}, record});
    host().resetCallCounts();
    const MillToolSection tool = readTool();
    EXPECT_EQ(host().callCount("VelkMacroVdmSingleGet$"), 1 + 21);  // the header, then the lines
    EXPECT_EQ(tool.getInt("i_t_tool_id"), 2);
    EXPECT_EQ(tool.getString("$_t_hld_file"), "hsk63.hld");
    EXPECT_EQ(host().lines(2, 1), record);
}

TEST_F(MillToolSectionTest, ARecordCutShortKeepsWhatItCannotRead) {
    host().setStore(2, {{"0 1 0"}, {"0 1 2 1 19", "Tool", "2 2 2", "10"}});
    MillToolSection tool(1);
    tool.setString("$_t_tooldesc", "kept");
    tool.readFromVDM(toolRecord.get());
    EXPECT_EQ(tool.getInt("i_t_len_nr"), 2);
    EXPECT_EQ(tool.getInt("i_t_dia_nr"), 0);
    EXPECT_EQ(tool.getDouble("w_t_diam"), 10.0);
    EXPECT_EQ(tool.getInt("i_t_tip_code"), 2147483647);
    EXPECT_EQ(tool.getString("$_t_tooldesc"), "kept");
}

TEST_F(MillToolSectionTest, LineCountComesFromTheToolDataEntryWhateverTheSectionNumber) {
    host().setStore(2, {{"0 1 0"}, {"0 1 4 0 3 0 2", "1 1", "x", "y", "7 8", "9"}});
    MillToolSection tool(3);
    tool.readFromVDM(toolRecord.get());
    // Positioned at section 3, it reads the tool data section's three lines' worth: the two
    // lines section 3 has before the record ends.
    EXPECT_EQ(tool.getInt("i_t_tool_id"), 7);
    EXPECT_EQ(tool.getInt("i_t_tool_nr"), 8);
    EXPECT_EQ(tool.getDouble("w_t_diam"), 9.0);
    EXPECT_EQ(tool.getInt("i_t_tip_code"), 2147483647);
    tool.writeToVDM(toolRecord.get());
    EXPECT_EQ(host().lines(2, 1).front(), "0 1 4 0 3 0 19");
}

TEST_F(MillToolSectionTest, NoOperationDoesNothing) {
    host().resetCallCounts();
    testsupport::ErrorLogWatch log;
    MillToolSection tool(1);
    tool.readFromVDM(nullptr);
    tool.writeToVDM(nullptr);
    EXPECT_EQ(host().callCount("VelkMacroVdmExists"), 0);
    EXPECT_EQ(tool.getInt("i_t_tool_id"), 2147483647);
    EXPECT_TRUE(log.texts().empty());
}

TEST_F(MillToolSectionTest, MissingStoreDoesNothingAndSaysNothing) {
    MillToolSection tool(1);
    tool.readFromVDM(toolRecord.get());
    tool.writeToVDM(toolRecord.get());
    EXPECT_FALSE(host().hasStore(2));
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillToolSectionTest, StoreHeldElsewhereIsReportedByTheStore) {
    storeTool(2, testsupport::filledToolRecord());
    host().holdOpenElsewhere(2, true);
    MillToolSection tool(1);
    tool.readFromVDM(toolRecord.get());
    EXPECT_EQ(tool.getInt("i_t_tool_id"), 2147483647);
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroVdm|2: Open: already open by another process"});
}

TEST_F(MillToolSectionTest, ReadingTracesAFramedLine) {
    storeTool(2, testsupport::filledToolRecord());
    const std::string path = LogFile::traceLogPath();
    const std::size_t before = testsupport::fileContent(path).size();
    LogFile::instance().setLevel(1);
    readTool();
    LogFile::instance().setLevel(2);
    readTool();
    EXPECT_EQ(testsupport::withoutTimeStamps(testsupport::fileContent(path).substr(before)),
              "---------------\n<time>:\nread ToolSection\n---------------\n");
}
