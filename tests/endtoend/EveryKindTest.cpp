// Reads, edits and writes back one operation of every kind, with its tool record, geometry and
// actions, through MillDrillOperation, checking the store's lines afterwards. The parameter lines
// come from the hand-written expected files of the catalogue, so this test and the catalogue's
// own are checked against the same reference.
#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "HostFixture.h"
#include "ToolRecordLines.h"

using namespace VelkApi;
using Kind = MillDrillOperationType;
using Lines = std::vector<std::string>;

namespace {

// One row of an expected-lines file: the field as written (empty on the further bits of an
// option word), the entry's number and bit, its kind and its name.
struct Row {
    std::string field;
    int line = 0;
    int number = 0;
    int bit = 0;
    std::string kind;
    std::string name;
};

struct ExpectedSection {
    std::string name;
    std::vector<Row> rows;        // written rows, in order
    std::vector<Row> notWritten;  // entries beyond the section's lines
    int lineCount = 0;
};

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> columns(const std::string& row) {
    std::vector<std::string> parts;
    std::istringstream in(row);
    for (std::string part; std::getline(in, part, '|');) {
        parts.push_back(trimmed(part));
    }
    return parts;
}

ExpectedSection readExpected(const std::string& file) {
    std::ifstream in(std::string(EXPECTED_PARAMETER_LINES) + "/" + file);
    EXPECT_TRUE(in) << file;
    ExpectedSection section;
    int line = -1;
    bool written = true;
    for (std::string text; std::getline(in, text);) {
        if (text.empty() || text[0] == '#') {
            continue;
        } else if (text.rfind("name: ", 0) == 0) {
            section.name = text.substr(6);
        } else if (text.rfind("line ", 0) == 0) {
            line = std::stoi(text.substr(5));
            section.lineCount = line + 2;
        } else if (text == "not written") {
            written = false;
        } else {
            const auto parts = columns(text);
            Row row;
            row.field = parts.at(0);
            const auto dot = parts.at(1).find('.');
            row.number = std::stoi(parts.at(1).substr(0, dot));
            row.bit = dot == std::string::npos ? 0 : std::stoi(parts.at(1).substr(dot + 1));
            row.line = written ? line : row.number / 100;
            row.kind = parts.at(2);
            row.name = parts.at(3);
            (written ? section.rows : section.notWritten).push_back(row);
        }
    }
    return section;
}

Lines valueLines(const ExpectedSection& section) {
    Lines lines(section.lineCount - 1);
    for (const Row& row : section.rows) {
        if (!row.field.empty()) {
            lines[row.line] += row.field + " ";
        }
    }
    return lines;
}

// The option word's field that holds `row` (the word's first row carries it).
Row& wordOf(std::vector<Row>& rows, const Row& bit) {
    for (Row& row : rows) {
        if (row.number == bit.number && !row.field.empty()) {
            return row;
        }
    }
    throw std::logic_error("option word without a field");
}

// Reading a drilling, pocket-cycle or threading section of two lines makes its next write
// produce three, so the entries of the second value line are written from then on.
void growAfterReading(Kind kind, ExpectedSection& section) {
    const bool grows = kind == Kind::DRILLING || kind == Kind::POCCYCLE || kind == Kind::THREADING;
    if (!grows || section.lineCount != 2) {
        return;
    }
    section.lineCount = 3;
    for (const Row& row : section.notWritten) {
        if (row.line == 1) {
            section.rows.push_back(row);
        }
    }
}

bool isGeometryCounter(const std::string& name) {
    return name == "i_nr_of_figs" || name == "i_nr_of_isle" || name == "i_xz_fig" ||
           name == "i_xz_isle";
}

// The geometry lines an operation of the kind keeps: an editor's macro lines, a plain object
// list, or as many outline figures, islands and profiles as its counters (set here in its
// parameter rows) say.
Lines geometryFor(Kind kind, ExpectedSection& parameters) {
    if (kind == Kind::MEDITOR || kind == Kind::UEDITOR_MAX) {
        return {"G0 X0 Y0", "  M30 "};
    }
    if (kind == Kind::STD3DGEO || kind == Kind::RSURFING) {
        return {"CONTOUR1", "G12"};
    }
    const std::vector<std::pair<std::string, Lines>> roles = {
        {"i_nr_of_figs", {"CONTOUR1", "X1 Y2 Z3"}},
        {"i_nr_of_isle", {"ISLAND" + std::string(200, ' ') + "#ATTRIB#= 2"}},
        {"i_xz_fig", {"XZ1"}},
        {"i_xz_isle", {"XZ2"}}};
    Lines lines;
    for (const auto& [counter, roleLines] : roles) {
        for (Row& row : parameters.rows) {
            if (row.name == counter) {
                row.field = std::to_string(roleLines.size());
                lines.insert(lines.end(), roleLines.begin(), roleLines.end());
            }
        }
    }
    return lines;
}

const Lines kPreActions = {"###PREOPERATION###", "5 1 ", "M8", "call 'probe.mac' 3"};
const Lines kPostActions = {"###POSTOPERATION###", "2 ", "M9"};

struct Case {
    Kind kind;
    const char* file;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.file;
}

class EveryKindTest : public testsupport::HostTest, public ::testing::WithParamInterface<Case> {};

}  // namespace

TEST_P(EveryKindTest, ReadEditWriteGivesTheExactLines) {
    const Case& c = GetParam();
    ExpectedSection expected = readExpected(c.file);
    host().setEnvironment("TURNDRIVENTOOLS", "1");
    host().setGlobal("w_setup_cle", 0.42);
    host().setGlobal("w_setup_ret", 4.2);

    const Lines geometry = geometryFor(c.kind, expected);
    Lines toolRecord = testsupport::filledToolRecord();
    // The record of the operation: header, message, tool record, parameters, geometry and both
    // actions.
    const auto recordWith = [&](const std::string& message, const Lines& tools,
                                const Lines& postActions) {
        velkhost::Record record = {
            std::to_string(millDrillOperationTypeToVelk(c.kind)) + " 1 6 1 " +
                std::to_string(tools.size()) + " " + std::to_string(expected.lineCount) + " " +
                std::to_string(geometry.size()) + " " + std::to_string(kPreActions.size()) + " " +
                std::to_string(postActions.size()),
            message};
        record.insert(record.end(), tools.begin(), tools.end());
        record.push_back(expected.name);
        for (const Lines& lines : {valueLines(expected), geometry, kPreActions, postActions}) {
            record.insert(record.end(), lines.begin(), lines.end());
        }
        return record;
    };
    host().setStore(7, {{"0 1 0"},
                        {"0 1 0"},
                        {"0 1 0"},
                        recordWith("Before", toolRecord, kPostActions),
                        {"4 1 0"}});

    MillDrillOperation op(7, 3);
    ASSERT_EQ(op.getOperationType(), c.kind);
    op.readFromVDM();
    ParameterSection& parameters = *op.getParameterSection();
    ToolSection& tool = *op.getToolSection();
    EXPECT_EQ(tool.getDouble("w_t_diam"), 10.0);
    EXPECT_EQ(tool.getString("$_t_comment"), " keep  the blanks ");

    // Every written entry reads back as the value its field holds.
    for (const Row& row : expected.rows) {
        const Row& word = row.kind.rfind("option", 0) == 0 ? wordOf(expected.rows, row) : row;
        if (row.kind == "int") {
            EXPECT_EQ(parameters.getInt(row.name), std::stoi(row.field)) << row.name;
        } else if (row.kind == "double" || row.kind == "axis") {
            EXPECT_EQ(parameters.getDouble(row.name), std::stod(row.field)) << row.name;
        } else if (row.kind == "string") {
            EXPECT_EQ(parameters.getString(row.name), row.field) << row.name;
        } else {
            const bool set = (std::stoll(word.field) >> (row.bit - 1)) & 1;
            EXPECT_EQ(parameters.getBool(row.name), set) << row.name;
        }
    }

    growAfterReading(c.kind, expected);

    // The geometry and the actions as stored.
    std::vector<std::string> keys;
    EXPECT_EQ(op.getGeometrySection()->readKeys(keys).size(), geometry.size());
    std::vector<Action> pre;
    ASSERT_EQ(op.getActionSection(1)->getValues(&pre)->size(), 2u);
    EXPECT_EQ(pre[1].getCommand(), "call 'probe.mac' 3");
    EXPECT_EQ(static_cast<int>(pre[1].getType()), 1);

    // One edit of every data type the kind has, of the tool record, and one more action after
    // the operation.
    op.getMessageSection()->setString("0", "After");
    tool.setDouble("w_t_diam", 12.5);
    toolRecord[1].replace(0, 2, "12.5");
    op.getActionSection(2)->addActionParameter(3, ActionType::Default, "M5");
    bool editedInt = false, editedDouble = false, editedOption = false, editedText = false;
    for (Row& row : expected.rows) {
        if (isGeometryCounter(row.name)) {
            continue;  // they follow the geometry
        }
        if (row.kind == "int" && !editedInt) {
            parameters.setInt(row.name, 7);
            row.field = "7";
            editedInt = true;
        } else if ((row.kind == "double" || row.kind == "axis") && !editedDouble) {
            parameters.setDouble(row.name, 12.5);
            row.field = "12.5";
            editedDouble = true;
        } else if (row.kind.rfind("option", 0) == 0 && !editedOption) {
            const bool now = !parameters.getBool(row.name);
            parameters.setBool(row.name, now);
            Row& word = wordOf(expected.rows, row);
            const long long mask = 1LL << (row.bit - 1);
            word.field =
                std::to_string(now ? std::stoll(word.field) + mask : std::stoll(word.field) - mask);
            editedOption = true;
        } else if (row.kind == "string" && !editedText) {
            parameters.setString(row.name, "edited");
            row.field = "edited";
            editedText = true;
        }
    }
    op.writeToVDM();

    EXPECT_EQ(host().lines(7, 3),
              recordWith("After", toolRecord, {"###POSTOPERATION###", "2 5 ", "M9", "M5"}));
    EXPECT_EQ(host().lines(7, 4), Lines{"4 1 0"});
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
    EXPECT_TRUE(boxes().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, EveryKindTest,
    ::testing::Values(
        Case{Kind::PROFILE, "profile-plain.lines"}, Case{Kind::CORNER, "corner-plain.lines"},
        Case{Kind::CHAMFER, "chamfer-plain.lines"}, Case{Kind::POCKET, "pocket-plain.lines"},
        Case{Kind::FACEMILL, "facemill-plain.lines"}, Case{Kind::RESTMATL, "restmatl-plain.lines"},
        Case{Kind::DRILLING, "drilling-plain.lines"}, Case{Kind::POCCYCLE, "poccycle-plain.lines"},
        Case{Kind::ENGRAVE, "engrave-plain.lines"}, Case{Kind::THREADING, "threading-plain.lines"},
        Case{Kind::TOOLS, "tools-plain.lines"}, Case{Kind::MEDITOR, "meditor-plain.lines"},
        Case{Kind::MOVING, "moving-plain.lines"}, Case{Kind::STD3DGEO, "std3dgeo-plain.lines"},
        Case{Kind::RSURFING, "rsurfing-plain.lines"}, Case{Kind::SLOT, "slot-plain.lines"},
        Case{Kind::UEDITOR_MAX, "ueditormax-plain.lines"}),
    [](const ::testing::TestParamInfo<Case>& param) {
        return millDrillOperationTypeToString(param.param.kind);
    });

// The five-axis catalogue numbers its first line from 1 while fields are written from 0, so
// every entry of that line reads the field of the entry after it: each read and write moves the
// line's values one place to the left, and the last entry keeps its value.
TEST_F(EveryKindTest, FiveAxisFirstLineMovesOnePlaceOnEveryRoundTrip) {
    host().setEnvironment("TURNDRIVENTOOLS", "1");
    host().setGlobal("w_setup_cle", 0.42);
    host().setGlobal("w_setup_ret", 4.2);
    host().setStore(7, {{"0 1 0"},
                        {"0 1 0"},
                        {"0 1 0"},
                        {"64 1 3 1 0 3", "Swarf", "MILL_5AX",
                         "1 2 3 4 5 6 7.5 8 9.5 10.5 11.5 12 13 14.5 15.5 16.5 17.5 18 19.5 ",
                         "*Info 3 0 0 0 0 0 "}});
    MillDrillOperation op(7, 3);
    ASSERT_EQ(op.getOperationType(), Kind::MILL_5AX);
    op.readFromVDM();
    ParameterSection& parameters = *op.getParameterSection();
    EXPECT_EQ(parameters.getInt("i_type"), 2);
    EXPECT_EQ(parameters.getInt("i_mill_mode"), 7);
    EXPECT_EQ(parameters.getDouble("w_op_toler"), 8.0);
    EXPECT_EQ(parameters.getDouble("w_first_vector(1)"), 10.5);
    EXPECT_EQ(parameters.getInt("i_go_home"), 19);
    EXPECT_EQ(parameters.getDouble("w_area_toler"), 2147483647.0);
    EXPECT_EQ(parameters.getString("$_info"), "*Info");
    op.writeToVDM();
    Lines after = {"64 1 4 1 19 3 0", "Swarf"};
    const Lines& fresh = testsupport::freshToolRecord();
    after.insert(after.end(), fresh.begin(), fresh.end());
    after.insert(
        after.end(),
        {"MILL_5AX", "2 3 4 5 6 7 8 9 10.5 11.5 12 13 14 15.5 16.5 17.5 18 19 2.14748e+09 ",
         "*Info 3 0 0 0 0 0 "});
    EXPECT_EQ(host().lines(7, 3), after);
}
