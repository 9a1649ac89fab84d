#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>
#include <velkapi/ToolList.h>
#include <velkapi/WritePreview.h>

#include <algorithm>
#include <string>
#include <vector>

#include "HostFixture.h"
#include "ToolRecordLines.h"

using namespace VelkApi;
using Kind = MillDrillOperationType;
using Texts = std::vector<std::string>;

namespace {

// Every machining kind with a host number (kind 15 has none: the library cannot write it).
const std::vector<Kind> kKinds = {Kind::PROFILE,  Kind::CORNER,     Kind::CHAMFER,  Kind::POCKET,
                                  Kind::FACEMILL, Kind::RESTMATL,   Kind::DRILLING, Kind::POCCYCLE,
                                  Kind::ENGRAVE,  Kind::THREADING,  Kind::TOOLS,    Kind::MEDITOR,
                                  Kind::MOVING,   Kind::STD3DGEO,   Kind::RSURFING, Kind::MILL_5AX,
                                  Kind::SLOT,     Kind::UEDITOR_MAX};

// Pocket cycles and threading are written with one value line and read with room for a second,
// the project's: the next write adds it, unset, and changes no value.
bool gainsTheProjectLine(Kind kind) {
    return kind == Kind::POCCYCLE || kind == Kind::THREADING;
}

const SectionWrite& sectionOf(const std::vector<SectionWrite>& sections, const std::string& name) {
    const auto found = std::find_if(sections.begin(), sections.end(),
                                    [&](const SectionWrite& s) { return s.section == name; });
    if (found == sections.end()) {
        throw std::out_of_range("no section " + name);
    }
    return *found;
}

std::vector<std::string> namesOf(const std::vector<SectionWrite>& sections) {
    std::vector<std::string> names;
    for (const SectionWrite& section : sections) {
        names.push_back(section.section);
    }
    return names;
}

}  // namespace

class WritePreviewTest : public testsupport::HostTest {
  protected:
    static constexpr int kFirst = 3;  // the first machining operation of a store

    void SetUp() override {
        HostTest::SetUp();
        host().setEnvironment("TURNDRIVENTOOLS", "1");
        host().setStore(1, leading());
    }

    // Operations 0 to 2 of a store are the host's own records, not machining operations.
    static std::vector<Texts> leading() {
        return {{"0 1 1 1", "raw part"}, {"0 1 1 1", "offset"}, {"0 1 1 1", "tool change"}};
    }

    // A new operation of the kind, written by the library as operation `nr` of store 1.
    static void writeNew(Kind kind, int nr = kFirst) {
        MillDrillOperation op(kind, 1, nr);
        op.setMode(1);
        op.writeToVDM();
    }

    // A record of the given section lines (message, tool, parameter, geometry, actions) as
    // operation 3 of store 1, under a header of that kind's host number.
    static void storeRecord(int type, const std::vector<Texts>& sections) {
        std::string header = std::to_string(type) + " 1 " + std::to_string(sections.size());
        Texts record = {""};
        for (const Texts& lines : sections) {
            header += " " + std::to_string(lines.size());
            record.insert(record.end(), lines.begin(), lines.end());
        }
        record.front() = header;
        std::vector<Texts> records = leading();
        records.push_back(record);
        host().setStore(1, records);
    }

    // Section `number` of the stored operation, replaced by what `edit` makes of its lines.
    template <typename Edit>
    static void rewriteSection(int number, Edit edit) {
        MillTurnVdm vdm(1);
        ASSERT_TRUE(vdm.Create());
        ASSERT_TRUE(vdm.LoadOperation(kFirst));
        Texts lines;
        if (number < vdm.getSectionCount()) {
            ASSERT_TRUE(vdm.ReadSection(number, lines));
        }
        edit(lines);
        ASSERT_TRUE(vdm.WriteSection(number, lines));
        vdm.Close();
    }

    // A profile written by the library, with `count` actions M1, M2, ... of the given kinds
    // before it.
    static void profileWithActions(int count, const std::string& kinds) {
        writeNew(Kind::PROFILE);
        rewriteSection(4, [&](Texts& lines) {
            lines = {"###PREOPERATION###", kinds};
            for (int i = 1; i <= count; ++i) {
                lines.push_back("M" + std::to_string(i));
            }
        });
    }

    static std::vector<SectionWrite> previewOfStored(int nr = kFirst) {
        MillDrillOperation op(1, nr);
        op.readFromVDM();
        return WritePreview::sections(op);
    }
};

TEST_F(WritePreviewTest, ARecordTheLibraryWroteKeepsEverythingButTheFiveAxisShift) {
    for (const Kind kind : kKinds) {
        SCOPED_TRACE(static_cast<int>(kind));
        host().setStore(1, leading());
        writeNew(kind);
        const std::vector<SectionWrite> sections = previewOfStored();
        ASSERT_FALSE(sections.empty());
        for (const SectionWrite& section : sections) {
            SCOPED_TRACE(section.section);
            EXPECT_FALSE(section.edited);
            if (kind == Kind::MILL_5AX && section.section == "Parameter") {
                EXPECT_EQ(section.outcome, WriteOutcome::BeyondSet);
                for (const WriteChange& change : section.changes) {
                    EXPECT_EQ(change.cause, "MILL_5AX moves its first value line by one field");
                }
            } else if (gainsTheProjectLine(kind) && section.section == "Parameter") {
                EXPECT_EQ(section.outcome, WriteOutcome::AsSet);
                EXPECT_TRUE(section.changes.empty());
                Texts expected = section.storedLines;
                expected.push_back("2147483647 ");
                EXPECT_EQ(section.writtenLines, expected);
            } else {
                EXPECT_EQ(section.outcome, WriteOutcome::Unchanged);
                EXPECT_TRUE(section.changes.empty());
                EXPECT_EQ(section.writtenLines, section.storedLines);
            }
        }
    }
}

TEST_F(WritePreviewTest, SectionsComeInTheOrderTheOperationWritesThem) {
    writeNew(Kind::POCKET);
    EXPECT_EQ(namesOf(previewOfStored()), (Texts{"Additional_1", "Additional_2", "Geometry",
                                                 "Message", "Parameter", "ToolData"}));
}

TEST_F(WritePreviewTest, AnEditedValueChangesItsSectionAsSetAndNoOther) {
    writeNew(Kind::POCKET);
    MillDrillOperation op(1, kFirst);
    op.readFromVDM();
    op.getSection(SectionType::Parameter, 0)->setDouble("w_zdepth", -12.5);
    const std::vector<SectionWrite> sections = WritePreview::sections(op);
    const SectionWrite& parameters = sectionOf(sections, "Parameter");
    EXPECT_TRUE(parameters.edited);
    EXPECT_EQ(parameters.outcome, WriteOutcome::AsSet);
    EXPECT_TRUE(parameters.changes.empty());
    EXPECT_NE(parameters.writtenLines, parameters.storedLines);
    EXPECT_EQ(sectionOf(sections, "Message").outcome, WriteOutcome::Unchanged);
    EXPECT_FALSE(sectionOf(sections, "Message").edited);
    EXPECT_TRUE(WritePreview::keepsEverything(sections));
    // The caller's value stays as it was set.
    EXPECT_EQ(op.getSection(SectionType::Parameter, 0)->getDouble("w_zdepth"), -12.5);
}

TEST_F(WritePreviewTest, ThePreviewWritesNothing) {
    writeNew(Kind::MILL_5AX);
    const auto before = host().lines(1, kFirst);
    MillDrillOperation op(1, kFirst);
    op.readFromVDM();
    host().resetCallCounts();
    WritePreview::sections(op);
    for (const char* write : {"VelkMacroVdmSingleAdd$", "VelkMacroVdmSingleReplace$",
                              "VelkMacroVdmSingleDelete", "VelkMacroVdmInsert$"}) {
        EXPECT_EQ(host().callCount(write), 0) << write;
    }
    EXPECT_GT(host().callCount("VelkMacroVdmSingleGet$"), 0);
    EXPECT_EQ(host().lines(1, kFirst), before);
}

TEST_F(WritePreviewTest, TheFiveAxisShiftNamesEveryValueOfTheFirstLine) {
    storeRecord(
        64, {{"5 axis"},
             testsupport::freshToolRecord(),
             {"MILL_5AX", "0 1 2147483647 2147483647 0 202012 3 0.05 5 0 0 1 0 0 3 0 0 1 0 0.001 ",
              "*Info 3 0 0 0 0 0 "}});
    const SectionWrite parameters = sectionOf(previewOfStored(), "Parameter");
    EXPECT_EQ(parameters.outcome, WriteOutcome::BeyondSet);
    ASSERT_FALSE(parameters.changes.empty());
    const WriteChange& first = parameters.changes.front();
    EXPECT_EQ(first.key, "i_type");
    EXPECT_EQ(first.line, 1);
    EXPECT_EQ(first.before, "1");
    EXPECT_EQ(first.after, "unset");
    EXPECT_EQ(first.cause, "MILL_5AX moves its first value line by one field");
}

TEST_F(WritePreviewTest, GeometryOfAKindWithoutFigureCountersIsLost) {
    storeRecord(
        4, {{"engrave"}, testsupport::freshToolRecord(), {"ENGRAVE", "2147483647 "}, {"OUTER"}});
    const SectionWrite geometry = sectionOf(previewOfStored(), "Geometry");
    EXPECT_EQ(geometry.outcome, WriteOutcome::BeyondSet);
    EXPECT_EQ(geometry.storedLines, Texts{"OUTER"});
    EXPECT_TRUE(geometry.writtenLines.empty());
    ASSERT_EQ(geometry.changes.size(), 1u);
    EXPECT_EQ(geometry.changes[0].key, "");
    EXPECT_EQ(geometry.changes[0].line, 0);
    EXPECT_EQ(geometry.changes[0].before, "OUTER");
    EXPECT_EQ(geometry.changes[0].after, "none");
    EXPECT_EQ(geometry.changes[0].cause, "this kind does not read its geometry back");
}

TEST_F(WritePreviewTest, AnIslandOfADrillingIsLost) {
    writeNew(Kind::DRILLING);
    // The geometry section (number 3) gains a second line the counters do not count.
    rewriteSection(3, [](Texts& lines) { lines = {"X10 Y10 Z0", "ISLAND"}; });
    MillDrillOperation op(1, kFirst);
    op.readFromVDM();
    op.getSection(SectionType::Parameter, 0)->setInt("i_nr_of_figs", 1);
    op.getSection(SectionType::Parameter, 0)->writeToVDM(&op);
    const SectionWrite geometry = sectionOf(previewOfStored(), "Geometry");
    EXPECT_EQ(geometry.outcome, WriteOutcome::BeyondSet);
    ASSERT_EQ(geometry.changes.size(), 1u);
    EXPECT_EQ(geometry.changes[0].line, 1);
    EXPECT_EQ(geometry.changes[0].before, "ISLAND");
    EXPECT_EQ(geometry.changes[0].cause, "this kind reads back only its outline figures");
}

TEST_F(WritePreviewTest, ValuesALineCannotCarryAreNamedWithTheirCause) {
    writeNew(Kind::DRILLING);
    rewriteSection(2, [](Texts& parameters) {
        // w_depth and w_first_peck, fields 5 and 6.
        const std::string unsetPair = " 2.14748e+09 2.14748e+09 ";
        parameters[1].replace(parameters[1].find(unsetPair), unsetPair.size(),
                              " 1234.5678 2147483647 ");
        parameters[2] = "'bracket job' ";
    });
    const SectionWrite section = sectionOf(previewOfStored(), "Parameter");
    EXPECT_EQ(section.outcome, WriteOutcome::BeyondSet);
    ASSERT_EQ(section.changes.size(), 3u);
    EXPECT_EQ(section.changes[0].key, "w_depth");
    EXPECT_EQ(section.changes[0].before, "1234.5678");
    EXPECT_EQ(section.changes[0].after, "1234.57");
    EXPECT_EQ(section.changes[0].cause, "a number keeps six significant digits");
    EXPECT_EQ(section.changes[1].key, "w_first_peck");
    EXPECT_EQ(section.changes[1].before, "unset");
    EXPECT_EQ(section.changes[1].after, "2147480000");
    EXPECT_EQ(section.changes[1].cause,
              "the not-set marker of a double is written as 2.14748e+09 and reads back as "
              "2147480000, a set value");
    EXPECT_EQ(section.changes[2].key, "$_project");
    EXPECT_EQ(section.changes[2].line, 2);
    EXPECT_EQ(section.changes[2].before, "bracket job");
    EXPECT_EQ(section.changes[2].after, "bracket");
    EXPECT_EQ(section.changes[2].cause, "a text holding a blank reads back cut at the blank");
}

TEST_F(WritePreviewTest, TextNoEntryReadsIsNamedByItsLine) {
    writeNew(Kind::POCKET);
    rewriteSection(2, [](Texts& parameters) {
        parameters[1] += "77 ";
        parameters.push_back("extra");
    });
    const SectionWrite section = sectionOf(previewOfStored(), "Parameter");
    ASSERT_EQ(section.changes.size(), 2u);
    EXPECT_EQ(section.changes[0].line, 1);
    EXPECT_EQ(section.changes[0].cause, "the line holds fields beyond those this kind writes");
    EXPECT_EQ(section.changes[1].line, 2);
    EXPECT_EQ(section.changes[1].before, "extra");
    EXPECT_EQ(section.changes[1].after, "none");
    EXPECT_EQ(section.changes[1].cause, "the line lies beyond the lines this kind writes");
}

TEST_F(WritePreviewTest, TenActionsComeBackInAnotherOrder) {
    profileWithActions(10, "1 2 3 4 5 6 7 8 9 10 ");
    const SectionWrite section = sectionOf(previewOfStored(), "Additional_1");
    EXPECT_EQ(section.outcome, WriteOutcome::BeyondSet);
    ASSERT_EQ(section.changes.size(), 11u);  // the kinds line and every command line
    EXPECT_EQ(section.changes[0].line, 1);
    EXPECT_EQ(section.changes[0].before, "1 2 3 4 5 6 7 8 9 10 ");
    EXPECT_EQ(section.changes[0].after, "9 10 1 2 3 4 5 6 7 8 ");
    EXPECT_EQ(section.changes[1].before, "M1");
    EXPECT_EQ(section.changes[1].after, "M9");
    EXPECT_EQ(section.changes[1].cause, "nine or more actions come back in another order");
}

TEST_F(WritePreviewTest, EightActionsKeepTheirOrder) {
    profileWithActions(8, "5 5 5 5 5 5 5 5 ");
    EXPECT_EQ(sectionOf(previewOfStored(), "Additional_1").outcome, WriteOutcome::Unchanged);
}

TEST_F(WritePreviewTest, ANewOperationWritesAsSet) {
    MillDrillOperation op(Kind::POCKET, 1, kFirst);
    op.setMode(1);
    const std::vector<SectionWrite> sections = WritePreview::sections(op);
    const SectionWrite& parameters = sectionOf(sections, "Parameter");
    EXPECT_TRUE(parameters.edited);
    EXPECT_EQ(parameters.outcome, WriteOutcome::AsSet);
    EXPECT_TRUE(parameters.storedLines.empty());
    EXPECT_EQ(parameters.writtenLines.front(), "POCKET");
    // The action lists hold no action: the write leaves them out.
    EXPECT_EQ(sectionOf(sections, "Additional_1").outcome, WriteOutcome::Unchanged);
}

TEST_F(WritePreviewTest, NothingForAnOperationThatIsNoMachiningOperation) {
    storeRecord(0, {{"raw part"}});
    MillDrillOperation op(1, kFirst);
    EXPECT_TRUE(WritePreview::sections(op).empty());
    MillDrillOperation kindOnly(Kind::POCKET);
    EXPECT_TRUE(WritePreview::sections(kindOnly).empty());
}

TEST_F(WritePreviewTest, TheToolRecordOfAToolStore) {
    Texts tool = testsupport::filledToolRecord();
    const std::size_t diameter = tool[1].find("10 ");
    ASSERT_NE(diameter, std::string::npos);
    tool[1].replace(diameter, 3, "10.0000005 ");
    Texts record = {"0 1 2 1 19", "End mill"};
    record.insert(record.end(), tool.begin(), tool.end());
    host().setStore(2, {{"0 1 1 1", "tools"}, record});
    ToolOperation op(2, 1);
    op.readFromVDM();
    const std::vector<SectionWrite> sections = WritePreview::sections(op);
    ASSERT_EQ(namesOf(sections), Texts{"ToolData"});
    EXPECT_EQ(sections[0].outcome, WriteOutcome::BeyondSet);
    ASSERT_EQ(sections[0].changes.size(), 1u);
    EXPECT_EQ(sections[0].changes[0].key, "w_t_diam");
    EXPECT_EQ(sections[0].changes[0].before, "10.0000005");
    EXPECT_EQ(sections[0].changes[0].after, "10");
    EXPECT_EQ(sections[0].changes[0].cause, "a number keeps six significant digits");
}
