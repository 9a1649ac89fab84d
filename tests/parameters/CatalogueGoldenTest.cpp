// Each kind's catalogue as the host stores it: a freshly initialised section, set to its
// defaults and written to the store, compared line by line with a file of expected/ that
// restates the catalogue by hand.
//
// Expected files (expected/README.md): "name: <kind name>", then "line <n>" for each value
// line, each followed by one row per field:
//     <field as written> | <number>[.<bit>] | <kind> | <name>
// kind: int, double, axis, string, option or "option true" (an option whose default is true).
// The further bits of an option word follow on rows with an empty field. Rows after
// "not written" are entries that lie beyond the section's lines.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <ostream>
#include <set>
#include <sstream>

#include "ExpectedLines.h"
#include "ParametersTest.h"
#include "util/TextHelpers.h"

using namespace VelkApi;
using paramtest::OpenParameterSection;
using paramtest::TestOperation;
using paramtest::Texts;

namespace {

struct ExpectedEntry {
    std::string name;
    std::string field;  // the field's text; "" for the further bits of an option word
    int number = 0;
    int bit = 0;
    std::string kind;
    bool written = true;
};

struct Expected {
    Texts lines;  // the section's lines in the store
    std::vector<ExpectedEntry> entries;
};

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::string lowerCased(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

Texts columns(const std::string& row) {
    Texts parts;
    std::istringstream in(row);
    for (std::string part; std::getline(in, part, '|');) {
        parts.push_back(trimmed(part));
    }
    return parts;
}

Expected parse(const std::string& fileName) {
    Expected expected;
    bool written = true;
    std::istringstream in(testdata::expectedLines(fileName));
    for (std::string raw; std::getline(in, raw);) {
        const std::string row = trimmed(raw);
        if (row.empty() || row[0] == '#') {
            continue;
        }
        if (row.rfind("name:", 0) == 0) {
            expected.lines.push_back(trimmed(row.substr(5)));
            continue;
        }
        if (row.rfind("line ", 0) == 0) {
            EXPECT_EQ(row, "line " + std::to_string(expected.lines.size() - 1)) << fileName;
            expected.lines.emplace_back();
            continue;
        }
        if (row == "not written") {
            written = false;
            continue;
        }
        const Texts parts = columns(raw);
        if (parts.size() != 4) {
            ADD_FAILURE() << fileName << ": bad row: " << raw;
            continue;
        }
        ExpectedEntry entry;
        entry.field = parts[0];
        const std::size_t dot = parts[1].find('.');
        entry.number = std::stoi(parts[1].substr(0, dot));
        entry.bit = dot == std::string::npos ? 0 : std::stoi(parts[1].substr(dot + 1));
        entry.kind = parts[2];
        entry.name = parts[3];
        entry.written = written;
        if (written && !entry.field.empty()) {
            expected.lines.back() += entry.field + " ";
        }
        expected.entries.push_back(entry);
    }
    return expected;
}

// The text the section writes for an entry's current value.
std::string writtenText(const OpenParameterSection& section, const SectionValue& entry) {
    switch (entry.getValueDataType()) {
        case ValueDataType::Double:
            return text::general6(section.getDouble(entry.getName()));
        case ValueDataType::Int:
            return std::to_string(section.getInt(entry.getName()));
        case ValueDataType::String: {
            const std::string text = section.getString(entry.getName());
            return text.empty() ? "2147483647" : text;
        }
        default:
            return "";
    }
}

struct GoldenCase {
    int type;
    bool machineAware;
    const char* file;
};

// Shown in the test's name: the expected file.
void PrintTo(const GoldenCase& golden, std::ostream* out) {
    *out << golden.file;
}

std::string caseName(const ::testing::TestParamInfo<GoldenCase>& info) {
    std::string name = info.param.file;
    name = name.substr(0, name.find('.'));
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

class ParametersGolden : public paramtest::ParametersTest,
                         public ::testing::WithParamInterface<GoldenCase> {
  protected:
    // Machine-aware runs: inside a running host whose current channel (1, 0-based) has a Y axis,
    // with a subspindle, setup clearance 2.5 and setup retract 12. Plain runs: outside a host.
    void SetUp() override {
        ParametersTest::SetUp();
        useMachineAwareHost("[COMMON]\nMACHINE_NAME=Golden\nNR_OF_CHANNEL=2\n[Y2]\nRapid=10000\n");
        host().setStore(3, velkhost::Records{{"4 1 0"}});
    }
};

}  // namespace

TEST_P(ParametersGolden, WritesTheCatalogue) {
    const GoldenCase& golden = GetParam();
    const Expected expected = parse(golden.file);

    TestOperation op(3, 0, golden.machineAware);
    OpenParameterSection section(static_cast<MillDrillOperationType>(golden.type));
    section.setOperation(&op);
    section.Init(golden.machineAware);
    section.setDefault();
    section.writeToVDM(&op);

    const Texts stored = storedLines(3);
    ASSERT_FALSE(stored.empty());
    EXPECT_EQ(stored[0], "4 1 3 0 0 " + std::to_string(expected.lines.size()));
    const Texts lines(stored.begin() + 1, stored.end());
    EXPECT_EQ(lines, expected.lines);
    EXPECT_EQ(section.getLineCount(), static_cast<int>(expected.lines.size()));
    EXPECT_TRUE(boxes().empty());

    // Every entry the file names, and nothing else.
    std::set<std::string> named;
    for (const ExpectedEntry& want : expected.entries) {
        SCOPED_TRACE(want.name);
        EXPECT_TRUE(named.insert(lowerCased(want.name)).second) << "named twice";
        const SectionValue* entry = section.findEntry(want.name);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entry->getName(), lowerCased(want.name));
        EXPECT_EQ(entry->getNr(), want.number);
        EXPECT_EQ(entry->getBit(), want.bit);
        EXPECT_EQ(entry->isAxis(), want.kind == "axis");
        const std::map<std::string, ValueDataType> kinds = {
            {"int", ValueDataType::Int},     {"double", ValueDataType::Double},
            {"axis", ValueDataType::Double}, {"string", ValueDataType::String},
            {"option", ValueDataType::Bool}, {"option true", ValueDataType::Bool},
        };
        ASSERT_EQ(kinds.count(want.kind), 1u) << "unknown kind " << want.kind;
        EXPECT_EQ(entry->getValueDataType(), kinds.at(want.kind));
        if (entry->getValueDataType() == ValueDataType::Bool) {
            bool fallback = false;
            entry->getDefault(&fallback);
            EXPECT_EQ(fallback, want.kind == "option true");
        } else if (!want.field.empty()) {
            EXPECT_EQ(writtenText(section, *entry), want.field);
        }
    }
    std::vector<std::string> keys;
    section.readKeys(keys);
    EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()), named);
}

INSTANTIATE_TEST_SUITE_P(
    Parameters, ParametersGolden,
    ::testing::Values(
        GoldenCase{1, true, "profile-machine.lines"}, GoldenCase{1, false, "profile-plain.lines"},
        GoldenCase{2, true, "corner-machine.lines"}, GoldenCase{2, false, "corner-plain.lines"},
        GoldenCase{3, true, "chamfer-machine.lines"}, GoldenCase{3, false, "chamfer-plain.lines"},
        GoldenCase{4, true, "pocket-machine.lines"}, GoldenCase{4, false, "pocket-plain.lines"},
        GoldenCase{5, true, "facemill-machine.lines"}, GoldenCase{5, false, "facemill-plain.lines"},
        GoldenCase{6, true, "restmatl-machine.lines"}, GoldenCase{6, false, "restmatl-plain.lines"},
        GoldenCase{7, true, "drilling-machine.lines"}, GoldenCase{7, false, "drilling-plain.lines"},
        GoldenCase{8, true, "poccycle-machine.lines"}, GoldenCase{8, false, "poccycle-plain.lines"},
        GoldenCase{9, true, "engrave-machine.lines"}, GoldenCase{9, false, "engrave-plain.lines"},
        GoldenCase{10, true, "redraw-machine.lines"}, GoldenCase{10, false, "redraw-plain.lines"},
        GoldenCase{11, true, "threading-machine.lines"},
        GoldenCase{11, false, "threading-plain.lines"}, GoldenCase{12, true, "tools-machine.lines"},
        GoldenCase{12, false, "tools-plain.lines"}, GoldenCase{13, true, "meditor-machine.lines"},
        GoldenCase{13, false, "meditor-plain.lines"}, GoldenCase{14, true, "moving-machine.lines"},
        GoldenCase{14, false, "moving-plain.lines"}, GoldenCase{15, true, "kind15-machine.lines"},
        GoldenCase{15, false, "kind15-plain.lines"}, GoldenCase{16, true, "std3dgeo-machine.lines"},
        GoldenCase{16, false, "std3dgeo-plain.lines"},
        GoldenCase{17, true, "rsurfing-machine.lines"},
        GoldenCase{17, false, "rsurfing-plain.lines"},
        GoldenCase{18, true, "mill5ax-machine.lines"}, GoldenCase{18, false, "mill5ax-plain.lines"},
        GoldenCase{19, true, "slot-machine.lines"}, GoldenCase{19, false, "slot-plain.lines"},
        GoldenCase{20, true, "ueditormax-machine.lines"},
        GoldenCase{20, false, "ueditormax-plain.lines"},
        GoldenCase{30, true, "kind30-machine.lines"}, GoldenCase{30, false, "kind30-plain.lines"}),
    caseName);
