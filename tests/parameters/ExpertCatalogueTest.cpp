// The expert catalogue of every kind, checked entry by entry against the plain catalogue of the
// same kind: the rules that turn a plain entry into its expert form are restated here from the
// plain section's entries (not from the tables the library derives them from), and the
// exceptions are listed as they stand.
#include <gtest/gtest.h>
#include <velkapi/ExpertParameterSection.h>

#include <map>
#include <set>
#include <string>

#include "ParametersTest.h"
#include "util/TextHelpers.h"

using namespace VelkApi;
using paramtest::OpenExpertSection;
using paramtest::OpenParameterSection;
using paramtest::TestOperation;
using paramtest::Texts;

namespace {

using Type = MillDrillOperationType;

constexpr int kIntUnset = 2147483647;
constexpr double kDoubleUnset = 2147483647.0;

// The host of these tests: setup clearance 2.5 and setup retract 12, project "bracket".
constexpr const char* kClearance = "2.5";
constexpr const char* kRetract = "12.0";
constexpr const char* kProject = "bracket";

// An entry as the tests describe it: number, bit, data type, axis flag and default as text
// ("true"/"false" for options, the decimal for ints).
struct Described {
    int number = 0;
    int bit = 0;
    ValueDataType type = ValueDataType::None;
    bool axis = false;
    std::string fallback;

    bool operator==(const Described& other) const {
        return number == other.number && bit == other.bit && type == other.type &&
               axis == other.axis && fallback == other.fallback;
    }
};

void PrintTo(const Described& entry, std::ostream* out) {
    *out << entry.number << "." << entry.bit << " type " << static_cast<int>(entry.type)
         << (entry.axis ? " axis" : "") << " default '" << entry.fallback << "'";
}

using Catalogue = std::map<std::string, Described>;

Described describe(const SectionValue& entry) {
    Described described{entry.getNr(), entry.getBit(), entry.getValueDataType(), entry.isAxis(),
                        ""};
    switch (entry.getValueDataType()) {
        case ValueDataType::Int: {
            int value = 0;
            entry.getDefault(&value);
            described.fallback = std::to_string(value);
            break;
        }
        case ValueDataType::Double: {
            double value = 0.0;
            entry.getDefault(&value);
            described.fallback = text::general6(value);
            break;
        }
        case ValueDataType::Bool: {
            bool value = false;
            entry.getDefault(&value);
            described.fallback = value ? "true" : "false";
            break;
        }
        case ValueDataType::String:
            entry.getDefault(&described.fallback);
            break;
        default:
            break;
    }
    return described;
}

template <typename Section>
Catalogue catalogueOf(const Section& section) {
    Catalogue catalogue;
    std::vector<std::string> keys;
    for (const std::string& key : section.readKeys(keys)) {
        catalogue[key] = describe(*section.findEntry(key));
    }
    return catalogue;
}

bool isOneOf(Type type, std::initializer_list<Type> types) {
    for (Type candidate : types) {
        if (candidate == type) {
            return true;
        }
    }
    return false;
}

// ---- the rules, restated

const std::set<Type> kContourKinds = {Type::PROFILE,  Type::SLOT,    Type::CORNER,
                                      Type::CHAMFER,  Type::POCKET,  Type::FACEMILL,
                                      Type::RESTMATL, Type::RSURFING};

std::string expertName(Type type, const std::string& plain) {
    if (type == Type::POCCYCLE) {
        const std::map<std::string, std::string> renamed = {{"i_nr_of_figs", "i_nr_grxy"},
                                                            {"w_overlap", "w_w_overlap"},
                                                            {"i_milling_type", "w_milling_type"}};
        const auto found = renamed.find(plain);
        return found == renamed.end() ? plain : found->second;
    }
    return type == Type::THREADING && plain == "i_milling_type" ? "w_milling_type" : plain;
}

int expertNumber(Type type, const std::string& name, int plain) {
    if (type == Type::SLOT) {
        const std::map<std::string, int> dive = {
            {"i_dive_mode", 17}, {"w_dive_angle", 18}, {"w_dive_rad", 19}, {"w_dive_dir", 20}};
        if (dive.count(name) != 0) {
            return dive.at(name);
        }
    }
    return type == Type::MILL_5AX && plain < 100 ? plain - 1 : plain;
}

bool isLeftOut(Type type, const std::string& name) {
    return name == "i_parent_op" &&
           isOneOf(type, {Type::PROFILE, Type::CORNER, Type::RESTMATL, Type::SLOT});
}

bool isTextInteger(Type type, const std::string& name) {
    const std::map<Type, std::set<std::string>> texts = {
        {Type::DRILLING, {"i_no_of_pecks", "i_spin_dir1", "i_spin_dir2", "i_back_dir"}},
        {Type::POCCYCLE, {"w_milling_type"}},
        {Type::THREADING, {"w_milling_type"}},
        {Type::MEDITOR, {"i_mct", "i_origin"}},
        {Type::MOVING, {"i_mct", "i_origin"}},
        {static_cast<Type>(15), {"blubb1", "blubb2", "blubb3", "blubb4"}},
        {Type::MILL_5AX, {"i_type", "i_size", "i_vdm", "i_op_version"}},
    };
    const auto found = texts.find(type);
    return found != texts.end() && found->second.count(name) != 0;
}

// The defaults that no rule gives.
const std::map<std::pair<Type, std::string>, std::string> kChangedDefaults = {
    {{Type::FACEMILL, "w_overlap"}, "70.0"},
    {{Type::FACEMILL, "w__infeed"}, "100.0"},
    {{Type::DRILLING, "i_coolant"}, "2147483647"},
    {{Type::POCCYCLE, "i_type"}, "2147483647"},
    {{Type::POCCYCLE, "i_finishing"}, "2147483647"},
    {{Type::POCCYCLE, "i_coolant"}, "2147483647"},
    {{Type::THREADING, "i_type"}, "2147483647"},
    {{Type::THREADING, "i_finishing"}, "2147483647"},
    {{Type::THREADING, "i_coolant"}, "2147483647"},
    {{Type::MOVING, "i_mct"}, ""},
    {{Type::MILL_5AX, "i_type"}, "1"},
    {{Type::MILL_5AX, "i_coolant"}, "0"},
    {{Type::MILL_5AX, "i_op_version"}, "202012"},
    {{Type::MILL_5AX, "i_mill_mode"}, "3"},
    {{Type::MILL_5AX, "w_op_toler"}, "0.05"},
    {{Type::MILL_5AX, "i_axis_mode"}, "5"},
    {{Type::MILL_5AX, "i_with_subprogram"}, "0"},
    {{Type::MILL_5AX, "i_current_origin"}, "0"},
    {{Type::MILL_5AX, "w_needed_axis"}, "3.0"},
    {{Type::MILL_5AX, "i_go_home"}, "0"},
    {{Type::MILL_5AX, "w_area_toler"}, "0.001"},
    {{Type::MILL_5AX, "w_needed_axis2"}, "3.0"},
};

// The default text of a plain double that is neither a setup value nor "not set".
std::string numberText(Type type, const std::string& name, double value) {
    if (value == 0.0) {
        const std::set<std::string> pointed = {"w_offset", "w_zdepth", "w_zstart", "w_zoffset"};
        return pointed.count(name) != 0 ? "0.0" : "0";
    }
    if (value == 1.0) {
        const bool pointed = (name == "w_peck" && isOneOf(type, {Type::PROFILE, Type::SLOT})) ||
                             name == "w_cham_width";
        return pointed ? "1.0" : "1";
    }
    // Every other number a plain catalogue has.
    const std::map<double, std::string> texts = {{45.0, "45.0"}, {2.0, "2.0"},   {1.5, "1.5"},
                                                 {50.0, "50"},   {100.0, "100"}, {0.1, "0.1"},
                                                 {3.0, "3"}};
    const auto found = texts.find(value);
    if (found == texts.end()) {
        ADD_FAILURE() << name << ": no rule for the plain default " << value;
        return "";
    }
    return found->second;
}

std::string doubleText(Type type, const std::string& name, double plainDefault) {
    // The plain section of these tests lies outside a running host: its setup values are
    // 0.42 and 4.2, and the expert form takes the host's, by name.
    if (name == "w_clearp" || name == "w_retract") {
        return kClearance;
    }
    if (name == "w_retract_height" || name == "w_clearance") {
        return kRetract;
    }
    return plainDefault == kDoubleUnset ? "" : numberText(type, name, plainDefault);
}

Described expertOf(Type type, const std::string& name, const SectionValue& plain) {
    Described expected = describe(plain);
    expected.number = expertNumber(type, plain.getName(), plain.getNr());
    switch (plain.getValueDataType()) {
        case ValueDataType::Int:
            if (isTextInteger(type, name)) {
                expected.type = ValueDataType::String;
                if (expected.fallback == std::to_string(kIntUnset)) {
                    expected.fallback = "";
                }
            }
            if (kContourKinds.count(type) != 0 &&
                std::set<std::string>{"i_nr_of_figs", "i_nr_of_isle", "i_xz_fig", "i_xz_isle"}
                        .count(name) != 0) {
                expected.fallback = "0";
            }
            break;
        case ValueDataType::Double: {
            double value = 0.0;
            plain.getDefault(&value);
            expected.type = ValueDataType::String;
            expected.fallback = plain.isAxis() ? "-999999" : doubleText(type, name, value);
            break;
        }
        case ValueDataType::String:
            if (name == "$_project") {
                expected.fallback = kProject;
            }
            break;
        default:
            break;
    }
    if (const auto changed = kChangedDefaults.find({type, name});
        changed != kChangedDefaults.end()) {
        expected.fallback = changed->second;
    }
    return expected;
}

// The machining-strategy block that ends the five-axis form.
Catalogue strategyBlock() {
    const auto text = [](int number, const std::string& fallback = "") {
        return Described{number, 0, ValueDataType::String, false, fallback};
    };
    return {
        {"w_start_height", text(200)},
        {"w_depth", text(201)},
        {"w_infeed", text(202)},
        {"w_allowance", text(203)},
        {"i_cur_mach_type", Described{204, 0, ValueDataType::Int, false, "2147483647"}},
        {"w_max_stepover_distance", text(205)},
        {"w_ramp_length_percent", text(206)},
        {"w_ramp_angle", text(207)},
        {"w_adaptive_roughing_link_clearance_height", text(208)},
        {"w_adaptive_roughing_link_threshold_factor", text(209)},
        {"$_binfilename", text(300, "dummy.bin")},
    };
}

// The expert catalogue of `type` that the rules give, from the plain catalogue outside a
// running host (machine-aware entries left out, the plain machine bits in).
Catalogue expectedCatalogue(Type type) {
    const int kind = static_cast<int>(type);
    if (kind < 1 || kind > 19) {
        return {{"dummy", Described{0, 0, ValueDataType::Int, false, "2147483647"}}};
    }
    TestOperation op(7, 0, false);
    OpenParameterSection plain(type);
    plain.setOperation(&op);
    plain.Init(false);
    plain.setOperation(nullptr);

    Catalogue expected;
    std::vector<std::string> keys;
    for (const std::string& key : plain.readKeys(keys)) {
        const std::string name = expertName(type, key);
        if (!isLeftOut(type, key)) {
            expected[name] = expertOf(type, name, *plain.findEntry(key));
        }
    }
    if (type == Type::MILL_5AX) {
        const Catalogue block = strategyBlock();
        expected.insert(block.begin(), block.end());
    }
    return expected;
}

class ParametersExpertCatalogue : public paramtest::ParametersTest {
  protected:
    void SetUp() override {
        ParametersTest::SetUp();
        host().setGlobal("w_setup_cle", 2.5);
        host().setGlobal("w_setup_ret", 12.0);
        host().setGlobal("$_project", std::string(kProject));
    }

    static Catalogue expertCatalogue(Type type) {
        OpenExpertSection section(type);
        section.Init();
        return catalogueOf(section);
    }
};

class ParametersExpertKinds : public ParametersExpertCatalogue,
                              public ::testing::WithParamInterface<int> {};

}  // namespace

TEST_P(ParametersExpertKinds, FollowTheRulesFromThePlainCatalogue) {
    const auto type = static_cast<Type>(GetParam());
    const Catalogue expected = expectedCatalogue(type);
    const Catalogue actual = expertCatalogue(type);
    for (const auto& [name, entry] : expected) {
        const auto found = actual.find(name);
        if (found == actual.end()) {
            ADD_FAILURE() << name << " is missing";
            continue;
        }
        EXPECT_EQ(found->second, entry) << name;
    }
    for (const auto& [name, entry] : actual) {
        EXPECT_EQ(expected.count(name), 1u) << name << " is not in the expert form";
    }
    EXPECT_TRUE(boxes().empty());
}

INSTANTIATE_TEST_SUITE_P(EveryKind, ParametersExpertKinds,
                         ::testing::Values(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16,
                                           17, 18, 19, 20, 30, 42));

TEST_F(ParametersExpertCatalogue, SlotsDiveEntriesShareTheNumbersOfItsExitEntries) {
    OpenExpertSection section(Type::SLOT);
    section.Init();
    const std::map<std::string, int> numbers = {
        {"i_dive_mode", 17}, {"w_exit_type", 17}, {"w_dive_angle", 18}, {"w_xexit", 18},
        {"w_dive_rad", 19},  {"w_yexit", 19},     {"w_dive_dir", 20},   {"w_xe", 20}};
    for (const auto& [name, number] : numbers) {
        ASSERT_NE(section.findEntry(name), nullptr) << name;
        EXPECT_EQ(section.findEntry(name)->getNr(), number) << name;
    }
    EXPECT_EQ(section.getValueDataType("i_dive_mode"), ValueDataType::Int);
    EXPECT_EQ(section.getInt("i_dive_mode"), 1);
    EXPECT_EQ(section.getString("w_exit_type"), "0");
    EXPECT_EQ(section.getString("w_peck"), "1.0");
    EXPECT_FALSE(section.existsKey("i_parent_op"));
}

TEST_F(ParametersExpertCatalogue, DrillingHoldsFourIntegersAsTextAndTakesTheHostsProject) {
    OpenExpertSection section(Type::DRILLING);
    section.Init();
    for (const char* name : {"i_no_of_pecks", "i_spin_dir1", "i_spin_dir2", "i_back_dir"}) {
        EXPECT_EQ(section.getValueDataType(name), ValueDataType::String) << name;
        EXPECT_EQ(section.getString(name), "") << name;
    }
    for (const char* name : {"i_type", "i_g83_chipbr", "i_coolant"}) {
        EXPECT_EQ(section.getValueDataType(name), ValueDataType::Int) << name;
        EXPECT_EQ(section.getInt(name), 2147483647) << name;
    }
    EXPECT_EQ(section.getString("$_project"), "bracket");
    EXPECT_EQ(section.getString("w_retract"), "2.5");
    EXPECT_EQ(section.getString("w_clearance"), "12.0");
    EXPECT_EQ(section.getString("w_depth"), "");
}

TEST_F(ParametersExpertCatalogue, PocketCyclesRenameThreeEntriesAndThreadingOneOfThem) {
    OpenExpertSection poccycle(Type::POCCYCLE);
    poccycle.Init();
    EXPECT_EQ(poccycle.findEntry("i_nr_grxy")->getNr(), 0);
    EXPECT_EQ(poccycle.findEntry("w_w_overlap")->getNr(), 17);
    EXPECT_EQ(poccycle.findEntry("w_milling_type")->getNr(), 24);
    EXPECT_EQ(poccycle.getValueDataType("w_milling_type"), ValueDataType::String);
    for (const char* plainName : {"i_nr_of_figs", "w_overlap", "i_milling_type"}) {
        EXPECT_FALSE(poccycle.existsKey(plainName)) << plainName;
    }
    EXPECT_EQ(poccycle.getString("w_peck"), "");

    OpenExpertSection threading(Type::THREADING);
    threading.Init();
    EXPECT_EQ(threading.findEntry("i_nr_of_figs")->getNr(), 0);
    EXPECT_EQ(threading.findEntry("w_overlap")->getNr(), 17);
    EXPECT_EQ(threading.findEntry("w_milling_type")->getNr(), 24);
    EXPECT_EQ(threading.getString("w_pitch"), "");
    EXPECT_FALSE(threading.existsKey("w_peck"));
    for (OpenExpertSection* section : {&poccycle, &threading}) {
        for (const char* name : {"i_type", "i_finishing", "i_coolant"}) {
            EXPECT_EQ(section->getInt(name), 2147483647) << name;
        }
        EXPECT_EQ(section->getString("$_project"), "bracket");
    }
}

TEST_F(ParametersExpertCatalogue, FiveAxisIsNumberedFromZeroAndEndsInTheStrategyBlock) {
    struct Row {
        int number;
        const char* name;
        ValueDataType type;
        const char* fallback;
    };
    constexpr ValueDataType I = ValueDataType::Int;
    constexpr ValueDataType S = ValueDataType::String;
    const Row rows[] = {
        {0, "i_type", S, "1"},
        {1, "i_size", S, ""},
        {2, "i_vdm", S, ""},
        {3, "i_coolant", I, "0"},
        {4, "i_op_version", S, "202012"},
        {5, "i_mill_mode", I, "3"},
        {6, "w_op_toler", S, "0.05"},
        {7, "i_axis_mode", I, "5"},
        {8, "w_first_vector(1)", S, ""},
        {9, "w_first_vector(2)", S, ""},
        {10, "w_first_vector(3)", S, ""},
        {11, "i_with_subprogram", I, "0"},
        {12, "i_current_origin", I, "0"},
        {13, "w_needed_axis", S, "3.0"},
        {14, "w_vector(1)", S, ""},
        {15, "w_vector(2)", S, ""},
        {16, "w_vector(3)", S, ""},
        {17, "i_go_home", I, "0"},
        {18, "w_area_toler", S, "0.001"},
        {100, "$_info", S, "*Info"},
        {101, "w_needed_axis2", S, "3.0"},
        {102, "w_len(1)", S, "0"},
        {103, "w_len(2)", S, "0"},
        {104, "w_time(1)", S, "0"},
        {105, "w_time(2)", S, "0"},
        {106, "w_numberofitems", S, "0"},
        {200, "w_start_height", S, ""},
        {201, "w_depth", S, ""},
        {202, "w_infeed", S, ""},
        {203, "w_allowance", S, ""},
        {204, "i_cur_mach_type", I, "2147483647"},
        {205, "w_max_stepover_distance", S, ""},
        {206, "w_ramp_length_percent", S, ""},
        {207, "w_ramp_angle", S, ""},
        {208, "w_adaptive_roughing_link_clearance_height", S, ""},
        {209, "w_adaptive_roughing_link_threshold_factor", S, ""},
        {300, "$_binfilename", S, "dummy.bin"},
    };
    Catalogue expected;
    for (const Row& row : rows) {
        expected[row.name] = Described{row.number, 0, row.type, false, row.fallback};
    }
    EXPECT_EQ(expertCatalogue(Type::MILL_5AX), expected);
}

TEST_F(ParametersExpertCatalogue, EditorsAndKind15HoldTheirIntegersAsText) {
    const Catalogue meditor = expertCatalogue(Type::MEDITOR);
    EXPECT_EQ(meditor, (Catalogue{
                           {"i_mct", Described{0, 0, ValueDataType::String, false, "1"}},
                           {"i_origin", Described{1, 0, ValueDataType::String, false, "0"}},
                           {"i_yaxdrilling", Described{2, 1, ValueDataType::Bool, false, "false"}},
                       }));
    const Catalogue moving = expertCatalogue(Type::MOVING);
    EXPECT_EQ(moving.at("i_mct").fallback, "");
    EXPECT_EQ(moving.at("i_origin").fallback, "0");
    EXPECT_EQ(moving.size(), 3u);
    const Catalogue kind15 = expertCatalogue(static_cast<Type>(15));
    EXPECT_EQ(kind15.at("blubb1"), (Described{0, 0, ValueDataType::String, false, "1"}));
    for (const char* name : {"blubb2", "blubb3", "blubb4"}) {
        EXPECT_EQ(kind15.at(name).fallback, "0") << name;
        EXPECT_EQ(kind15.at(name).type, ValueDataType::String) << name;
    }
    // The last editor kind lies beyond the expert form's kinds.
    EXPECT_EQ(expertCatalogue(Type::UEDITOR_MAX),
              (Catalogue{{"dummy", Described{0, 0, ValueDataType::Int, false, "2147483647"}}}));
}

TEST_F(ParametersExpertCatalogue, TheMachineBitsAreAlwaysThePlainOnes) {
    const Catalogue profile = expertCatalogue(Type::PROFILE);
    EXPECT_EQ(profile.at("o_gohome"), (Described{26, 3, ValueDataType::Bool, false, "false"}));
    EXPECT_EQ(profile.at("o_rapid_peck").bit, 10);
    EXPECT_EQ(profile.at("o_subprogram").bit, 23);
    for (const char* name :
         {"goh_0", "o_yax_drilling", "o_subspindle", "o_dmg_turnplus", "i_parent_op"}) {
        EXPECT_EQ(profile.count(name), 0u) << name;
    }
    const Catalogue restmatl = expertCatalogue(Type::RESTMATL);
    EXPECT_EQ(restmatl.at("o_pocketing_reverse_direction"),
              (Described{18, 12, ValueDataType::Bool, false, "false"}));
    // Machine-aware or not makes no difference.
    host().setEnvironment("TURNDRIVENTOOLS", "2");
    OpenExpertSection aware(Type::PROFILE);
    aware.Init(true);
    EXPECT_EQ(catalogueOf(aware), profile);
}

TEST_F(ParametersExpertCatalogue, AxisValuesAreAxisTexts) {
    OpenExpertSection section(Type::PROFILE);
    section.Init();
    EXPECT_TRUE(section.isAxis("w_xs"));
    EXPECT_EQ(section.getValueDataType("w_xs"), ValueDataType::String);
    EXPECT_EQ(section.getString("w_xs"), "-999999");
    EXPECT_FALSE(section.isAxis("w_offset"));
    // POCKET's start point is a plain double, not set.
    OpenExpertSection pocket(Type::POCKET);
    pocket.Init();
    EXPECT_FALSE(pocket.isAxis("w_xs"));
    EXPECT_EQ(pocket.getString("w_xs"), "");
}

TEST_F(ParametersExpertCatalogue, FacemillHasItsOwnOverlapAndInfeed) {
    OpenExpertSection section(Type::FACEMILL);
    section.Init();
    EXPECT_EQ(section.getString("w_overlap"), "70.0");
    EXPECT_EQ(section.getString("w__infeed"), "100.0");
    EXPECT_EQ(section.getString("w_offset"), "1");
    EXPECT_EQ(section.getInt("i_nr_of_figs"), 0);
}
