// The expert parameter section: its host texts, its text lines written and read back for every
// kind, the values it takes from an operation's plain section, and its logged failures.
#include <gtest/gtest.h>
#include <velkapi/ExpertParameterSection.h>

#include <map>
#include <memory>
#include <string>

#include "ParametersTest.h"

using namespace VelkApi;
using paramtest::OpenExpertSection;
using paramtest::OpenParameterSection;
using paramtest::TestOperation;
using paramtest::Texts;
using paramtest::TraceLogWatch;
using testsupport::ErrorLogWatch;

namespace {

using Type = MillDrillOperationType;

std::string repeated(const std::string& field, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) {
        text += field;
    }
    return text;
}

// Every value of a section as the caller reads it, by key.
std::map<std::string, std::string> valuesOf(const SectionDictionary& section) {
    std::map<std::string, std::string> values;
    std::vector<std::string> keys;
    for (const std::string& key : section.readKeys(keys)) {
        values[key] = section.getValueAsString(key);
    }
    return values;
}

class ParametersExpert : public paramtest::ParametersTest {
  protected:
    void SetUp() override {
        ParametersTest::SetUp();
        host().setGlobal("w_setup_cle", 0.42);
        host().setGlobal("w_setup_ret", 4.26);
        host().setGlobal("$_project", std::string("bracket"));
    }

    static std::unique_ptr<OpenExpertSection> initialised(Type type) {
        auto section = std::make_unique<OpenExpertSection>(type);
        section->Init();
        return section;
    }

    // The section written into as many lines as hold every entry.
    static Texts written(ExpertParameterSection& section) {
        Texts lines(static_cast<std::size_t>(section.getLineCount()));
        section.writeToStrings(lines);
        return lines;
    }
};

// Gives every entry a value apart from its default: ints count up (one negative), texts are
// numbers, words, the empty text and a text with a quote, options alternate.
void giveEveryEntryAValue(OpenExpertSection& section) {
    int i = 0;
    for (SectionValue* entry : section.entriesByNumber()) {
        ++i;
        switch (entry->getValueDataType()) {
            case ValueDataType::Int: {
                const int value = i == 3 ? -i : 1000 + i;
                entry->setValue(&value);
                break;
            }
            case ValueDataType::String: {
                const std::string texts[] = {"", "deep_pocket_" + std::to_string(i),
                                             std::to_string(i) + ",5", "-" + std::to_string(i),
                                             "it's"};
                entry->setValue(&texts[i % 5]);
                break;
            }
            case ValueDataType::Bool: {
                const bool value = i % 2 == 0;
                entry->setValue(&value);
                break;
            }
            default:
                break;
        }
    }
}

class ParametersExpertRoundTrip : public ParametersExpert,
                                  public ::testing::WithParamInterface<int> {};

}  // namespace

TEST_F(ParametersExpert, SetupValuesBecomeTextsWithOneDecimal) {
    const auto section = initialised(Type::POCKET);
    EXPECT_EQ(section->getString("w_clearp"), "0.4");
    EXPECT_EQ(section->getString("w_retract_height"), "4.3");
    const auto drilling = initialised(Type::DRILLING);
    EXPECT_EQ(drilling->getString("w_retract"), "0.4");
    EXPECT_EQ(drilling->getString("w_clearance"), "4.3");
    EXPECT_TRUE(boxes().empty());
}

// A later form of a kind is the same as the first, with values of its own, and follows the
// host's setup values when they change.
TEST_F(ParametersExpert, EveryFormOfAKindIsDeclaredAlikeAndFollowsTheHost) {
    const auto first = initialised(Type::POCKET);
    first->setString("w_clearp", "9.9");
    const auto second = initialised(Type::POCKET);
    Texts firstKeys;
    Texts secondKeys;
    EXPECT_EQ(second->readKeys(secondKeys), first->readKeys(firstKeys));
    EXPECT_EQ(second->getLineCount(), first->getLineCount());
    EXPECT_EQ(second->getString("w_clearp"), "0.4");
    EXPECT_EQ(written(*second), written(*initialised(Type::POCKET)));
    host().setGlobal("w_setup_cle", 7.25);
    const auto third = initialised(Type::POCKET);
    EXPECT_EQ(third->getString("w_clearp"), "7.2");
    third->setDefault();
    EXPECT_EQ(third->getString("w_clearp"), "7.2");
    second->setDefault();
    EXPECT_EQ(second->getString("w_clearp"), "0.4");
}

TEST_F(ParametersExpert, WithoutEitherSetupValueBothTextsAre2AndTheFailureIsTracedOnce) {
    const std::vector<std::vector<std::string>> missing = {
        {"w_setup_cle"}, {"w_setup_ret"}, {"w_setup_cle", "w_setup_ret"}};
    for (const std::vector<std::string>& names : missing) {
        host().clearMessageBoxes();
        Texts expectedBoxes;
        for (const std::string& name : names) {
            host().removeGlobal(name);
            expectedBoxes.push_back("VelkApi::MacroExport::GetGlobalIntVar Failed|" + name);
        }
        TraceLogWatch trace;
        ErrorLogWatch log;
        const auto section = initialised(Type::PROFILE);
        EXPECT_EQ(trace.appended(), "Error in ExpertParameterSection - GetGlobalDoubleVar\n");
        EXPECT_TRUE(log.texts().empty());
        EXPECT_EQ(boxes(), expectedBoxes);
        EXPECT_EQ(section->getString("w_clearp"), "2");
        EXPECT_EQ(section->getString("w_retract_height"), "2");
        host().setGlobal("w_setup_cle", 0.42);
        host().setGlobal("w_setup_ret", 4.26);
    }
}

TEST_F(ParametersExpert, WithoutTheHostsProjectTheProjectIsEmpty) {
    host().removeGlobal("$_project");
    const auto section = initialised(Type::POCCYCLE);
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroExport::GetGlobalStrVar Failed|$_project"});
    EXPECT_EQ(section->getString("$_project"), "");
    EXPECT_EQ(section->getString("w_clearp"), "");  // pocket cycles have none
    EXPECT_EQ(section->getString("w_retract"), "0.4");
}

TEST_F(ParametersExpert, LineCountHoldsEveryEntry) {
    EXPECT_EQ(initialised(Type::PROFILE)->getLineCount(), 3);
    EXPECT_EQ(initialised(Type::DRILLING)->getLineCount(), 3);
    EXPECT_EQ(initialised(Type::CORNER)->getLineCount(), 2);
    EXPECT_EQ(initialised(Type::MILL_5AX)->getLineCount(), 5);
    EXPECT_EQ(initialised(Type::ENGRAVE)->getLineCount(), 2);
}

TEST_F(ParametersExpert, WritesDrillingWithItsDefaults) {
    const auto section = initialised(Type::DRILLING);
    EXPECT_EQ(written(*section),
              (Texts{repeated("2147483647 ", 3) + "0.4 4.3 " + repeated("2147483647 ", 29) +
                         "0 0 2147483647 2147483647 ",
                     "bracket ", ""}));
}

TEST_F(ParametersExpert, WritesTheFiveAxisFormOnFourValueLines) {
    const auto section = initialised(Type::MILL_5AX);
    EXPECT_EQ(written(*section),
              (Texts{"1 2147483647 2147483647 0 202012 3 0.05 5 2147483647 2147483647 2147483647 "
                     "0 0 3.0 2147483647 2147483647 2147483647 0 0.001 ",
                     "*Info 3.0 0 0 0 0 0 ", repeated("2147483647 ", 10), "dummy.bin ", ""}));
}

// PROFILE's entries below 100 as declared, the host's setup values 0.42 and 4.26 as clearance
// and retract. Option bits are declared off, whatever their defaults: the option word is 0.
const std::string kProfileLine0 =
    "0 0 0 0 1 0.0 0.0 0.0 1.0 0 0 0 0 -999999 -999999 -999999 -999999 0 -999999 -999999 "
    "-999999 -999999 1 0 0 0 0 2147483647 0 0 0.4 4.3 2147483647 2147483647 0.0 1.5 50 100 0 50 "
    "50 0 0 ";

TEST_F(ParametersExpert, TwoLinesReceiveOnlyTheEntriesBelow100) {
    const auto section = initialised(Type::PROFILE);
    section->setString("w_largest_offset", "7.5");
    Texts lines{"old 0", "old 1"};
    section->writeToStrings(lines);
    EXPECT_EQ(lines, (Texts{kProfileLine0, "old 1"}));

    EXPECT_EQ(written(*section), (Texts{kProfileLine0, "7.5 0 ", ""}));
}

TEST_F(ParametersExpert, OneLineReceivesNothingAndNoLinesStayNone) {
    const auto section = initialised(Type::PROFILE);
    Texts one{"old"};
    section->writeToStrings(one);
    EXPECT_EQ(one, Texts{"old"});
    Texts none;
    section->writeToStrings(none);
    EXPECT_TRUE(none.empty());
}

TEST_F(ParametersExpert, SlotsDiveModeAndExitTypeBothNumbered17AreTwoFields) {
    const auto section = initialised(Type::SLOT);
    section->setInt("i_dive_mode", 3);
    section->setString("w_exit_type", "2");
    section->setString("w_xexit", "12.5");
    section->setString("w_dive_angle", "7");
    Texts lines(2);
    section->writeToStrings(lines);
    EXPECT_EQ(lines,
              (Texts{"0 0 0 0 4 0.0 0.0 0.0 1.0 0 0 0 0 -999999 -999999 -999999 -999999 "
                     // 17 i_dive_mode, 17 w_exit_type, 18 w_dive_angle, 18 w_xexit, 19, 20
                     "3 2 7 12.5 0 -999999 0 -999999 "
                     // 21 w_ye, 26 the option word, 27 i_corner, ...
                     "-999999 0 2147483647 0 0 0.4 4.3 2147483647 2147483647 0.0 1.5 50 100 0 50 "
                     "50 0 0 ",
                     ""}));

    const auto read = initialised(Type::SLOT);
    read->readFromStrings(lines);
    EXPECT_EQ(read->getInt("i_dive_mode"), 3);
    EXPECT_EQ(read->getString("w_exit_type"), "2");
    EXPECT_EQ(read->getString("w_xexit"), "12.5");
    EXPECT_EQ(read->getString("w_dive_angle"), "7");
}

TEST_F(ParametersExpert, AnEntryNumbered450LandsInTheLineOfTheEntryBeforeIt) {
    OpenExpertSection section(Type::ENGRAVE);
    section.addIntParameter(5, "i_first", 1);
    section.addIntParameter(301, "i_third_line", 3);
    section.addIntParameter(450, "i_far", 4);
    Texts lines(5);
    section.writeToStrings(lines);
    EXPECT_EQ(lines, (Texts{"1 ", "", "", "3 4 ", ""}));

    OpenExpertSection read(Type::ENGRAVE);
    read.addIntParameter(5, "i_first", 0);
    read.addIntParameter(301, "i_third_line", 0);
    read.addIntParameter(450, "i_far", 0);
    read.readFromStrings(lines);
    EXPECT_EQ(read.getInt("i_first"), 1);
    EXPECT_EQ(read.getInt("i_third_line"), 3);
    EXPECT_EQ(read.getInt("i_far"), 4);
}

TEST_F(ParametersExpert, OptionWordsAreWrittenUnsigned) {
    const auto profile = initialised(Type::PROFILE);
    profile->setBool("o_inout_position_checked", true);  // bit 32
    profile->setBool("o_antirotation", true);            // bit 1
    const Texts lines = written(*profile);
    EXPECT_NE(lines[0].find(" 2147483649 "), std::string::npos) << lines[0];

    const auto read = initialised(Type::PROFILE);
    read->readFromStrings(lines);
    EXPECT_TRUE(read->getBool("o_inout_position_checked"));
    EXPECT_TRUE(read->getBool("o_antirotation"));
    EXPECT_FALSE(read->getBool("o_retract"));
}

TEST_F(ParametersExpert, TheRecordsSignedOptionWordReadsAsWell) {
    const auto section = initialised(Type::CORNER);
    section->readFromStrings({"0 0 0 0 1 0.0 0.0 0.0 1 2.0 0 0 0 -2147483647 ", ""});
    EXPECT_TRUE(section->getBool("o_antirotation"));
    EXPECT_FALSE(section->getBool("o_retract"));
}

TEST_P(ParametersExpertRoundTrip, EveryValueReadsBackAsItWasWritten) {
    const auto type = static_cast<Type>(GetParam());
    const auto section = initialised(type);
    giveEveryEntryAValue(*section);
    const Texts lines = written(*section);
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(section->getLineCount()));

    ErrorLogWatch log;
    const auto read = initialised(type);
    read->readFromStrings(lines);
    EXPECT_TRUE(log.texts().empty());
    EXPECT_EQ(valuesOf(*read), valuesOf(*section));
    EXPECT_EQ(written(*read), lines);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, ParametersExpertRoundTrip,
                         ::testing::Values(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16,
                                           17, 18, 19, 20, 30, 42));

TEST_F(ParametersExpert, TextsAreWrittenAsTheyStandAndTheEmptyTextReadsBackEmpty) {
    const auto section = initialised(Type::MILL_5AX);
    section->setString("$_info", "it's");
    section->setString("w_len(1)", "");
    section->setString("$_binfilename", "'settings'.bin");
    ErrorLogWatch log;
    const Texts lines = written(*section);
    EXPECT_TRUE(log.texts().empty());
    EXPECT_EQ(lines[1], "it's 3.0 2147483647 0 0 0 0 ");
    EXPECT_EQ(lines[3], "'settings'.bin ");

    const auto read = initialised(Type::MILL_5AX);
    read->readFromStrings(lines);
    EXPECT_EQ(read->getString("$_info"), "it's");
    EXPECT_EQ(read->getString("w_len(1)"), "");
    EXPECT_EQ(read->getString("$_binfilename"), "'settings'.bin");
}

// The form has no quoting: a text with a blank is written as it stands and reads back as its
// first word, the next word going to the entry after it.
TEST_F(ParametersExpert, ATextWithABlankDoesNotReadBackWhole) {
    const auto section = initialised(Type::MILL_5AX);
    section->setString("$_info", "five axis");
    const Texts lines = written(*section);
    EXPECT_EQ(lines[1], "five axis 3.0 0 0 0 0 0 ");

    const auto read = initialised(Type::MILL_5AX);
    read->readFromStrings(lines);
    EXPECT_EQ(read->getString("$_info"), "five");
    EXPECT_EQ(read->getString("w_needed_axis2"), "axis");
    EXPECT_EQ(read->getString("w_len(1)"), "3.0");
}

TEST_F(ParametersExpert, AFieldThatDoesNotFitChangesNothingAndIsLogged) {
    const auto section = initialised(Type::CORNER);
    section->setString("w_zdepth", "-3");
    ErrorLogWatch log;
    section->readFromStrings({"7 x 0 0 1 -9 ", ""});
    EXPECT_EQ(log.texts(), Texts{"Error in ExpertParameterSection::readFromStrings()"});
    EXPECT_EQ(section->getInt("i_nr_of_figs"), 0);
    EXPECT_EQ(section->getString("w_zdepth"), "-3");
    EXPECT_EQ(section->getOperationTypeName(), "CORNER");
}

TEST_F(ParametersExpert, ProfileAndSlotNameThemselvesInTheReadFailure) {
    for (const Type type : {Type::PROFILE, Type::SLOT}) {
        const auto section = initialised(type);
        ErrorLogWatch log;
        section->readFromStrings({"0 0 0 0 1.5 ", ""});
        EXPECT_EQ(log.texts(),
                  Texts{"Error in ExpertParameterSection::readFromStrings()  Profile or Slot"});
        EXPECT_EQ(section->getInt("i_off_type"), type == Type::PROFILE ? 1 : 4);
    }
    const auto section = initialised(Type::POCKET);
    ErrorLogWatch log;
    section->readFromStrings({"0 0 0 0 x ", ""});
    EXPECT_EQ(log.texts(), Texts{"Error in ExpertParameterSection::readFromStrings()"});
}

TEST_F(ParametersExpert, MissingLinesAndFieldsKeepTheirValues) {
    const auto section = initialised(Type::PROFILE);
    section->setString("w_peck_xy", "0.5");
    section->readFromStrings({"3 2 ", ""});
    EXPECT_EQ(section->getInt("i_nr_of_figs"), 3);
    EXPECT_EQ(section->getInt("i_nr_of_isle"), 2);
    EXPECT_EQ(section->getInt("i_xz_fig"), 0);
    EXPECT_EQ(section->getString("w_peck"), "1.0");
    EXPECT_EQ(section->getString("w_peck_xy"), "0.5");
    section->readFromStrings({});
    section->readFromStrings({"5 5 "});  // one line: nothing to read, as nothing is written
    EXPECT_EQ(section->getOperationTypeName(), "PROFILE");
    EXPECT_EQ(section->getInt("i_nr_of_figs"), 3);
    EXPECT_EQ(section->getInt("i_nr_of_isle"), 2);
}

TEST_F(ParametersExpert, TheStoreIsNeverTouched) {
    host().setStore(7, velkhost::Records{{"4 1 0"}});
    TestOperation op(7, 0, true);
    const auto section = initialised(Type::POCKET);
    host().resetCallCounts();
    section->writeToVDM(&op);
    section->readFromVDM(&op);
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
    EXPECT_EQ(storedLines(7), Texts{"4 1 0"});
}

TEST_F(ParametersExpert, KnowsTheDataTypeOfEachEntry) {
    const auto section = initialised(Type::DRILLING);
    EXPECT_EQ(section->getValueDataType("I_TYPE"), ValueDataType::Int);
    EXPECT_EQ(section->getValueDataType("w_depth"), ValueDataType::String);
    EXPECT_EQ(section->getValueDataType("o_expand"), ValueDataType::Bool);
    EXPECT_EQ(section->getValueDataType("w_nothing"), ValueDataType::None);
}

TEST_F(ParametersExpert, ACopySharesTheEntries) {
    const auto section = initialised(Type::CHAMFER);
    ExpertParameterSection copy(*section);
    copy.setString("w_cham_angle", "30");
    EXPECT_EQ(section->getString("w_cham_angle"), "30");
    ExpertParameterSection assigned(Type::ENGRAVE);
    assigned = copy;
    EXPECT_EQ(assigned.getOperationType(), Type::CHAMFER);
    EXPECT_EQ(assigned.getString("w_cham_width"), "1.0");
}

TEST_F(ParametersExpert, TakesTheValuesOfThePlainSection) {
    TestOperation op(7, 0, false);
    OpenParameterSection plain(Type::DRILLING);
    plain.setOperation(&op);
    plain.Init(false);
    plain.setOperation(nullptr);
    plain.setInt("i_nr_of_figs", 4);
    plain.setDouble("w_depth", -20.0);
    plain.setDouble("w_first_peck", 1.0 / 3.0);
    plain.setInt("i_no_of_pecks", 3);
    plain.setBool("o_expand", true);
    plain.setString("$_project", "2147483647");  // an empty project, as the record holds it

    const auto section = initialised(Type::DRILLING);
    section->setString("w_peck", "5");
    section->readFromParameters(plain);
    EXPECT_EQ(section->getInt("i_nr_of_figs"), 4);
    EXPECT_EQ(section->getInt("i_coolant"), 0);
    EXPECT_EQ(section->getString("w_depth"), "-20");
    EXPECT_EQ(section->getString("w_first_peck"), "0.333333");
    EXPECT_EQ(section->getString("w_peck"), "");  // not set in the plain section
    EXPECT_EQ(section->getString("w_retract"), "0.42");
    EXPECT_EQ(section->getString("i_no_of_pecks"), "3");
    EXPECT_EQ(section->getString("i_spin_dir1"), "");
    EXPECT_TRUE(section->getBool("o_expand"));
    EXPECT_EQ(section->getString("$_project"), "");
}

TEST_F(ParametersExpert, TakesRenamedAndAxisValuesAndKeepsItsOwnEntries) {
    TestOperation op(7, 0, false);
    OpenParameterSection poccycle(Type::POCCYCLE);
    poccycle.setOperation(&op);
    poccycle.Init(false);
    poccycle.setInt("i_nr_of_figs", 2);
    poccycle.setDouble("w_overlap", 40.0);
    poccycle.setInt("i_milling_type", 1);
    const auto expert = initialised(Type::POCCYCLE);
    expert->readFromParameters(poccycle);
    EXPECT_EQ(expert->getInt("i_nr_grxy"), 2);
    EXPECT_EQ(expert->getString("w_w_overlap"), "40");
    EXPECT_EQ(expert->getString("w_milling_type"), "1");

    OpenParameterSection profile(Type::PROFILE);
    profile.setOperation(&op);
    profile.Init(false);
    profile.setDouble("w_xs", 12.5);
    const auto expertProfile = initialised(Type::PROFILE);
    expertProfile->readFromParameters(profile);
    EXPECT_EQ(expertProfile->getString("w_xs"), "12.5");
    EXPECT_EQ(expertProfile->getString("w_ys"), "-999999");

    OpenParameterSection fiveAxis(Type::MILL_5AX);
    fiveAxis.setOperation(&op);
    fiveAxis.Init(false);
    const auto expertFiveAxis = initialised(Type::MILL_5AX);
    expertFiveAxis->setString("w_ramp_angle", "2.5");
    expertFiveAxis->readFromParameters(fiveAxis);
    EXPECT_EQ(expertFiveAxis->getString("w_ramp_angle"), "2.5");
    EXPECT_EQ(expertFiveAxis->getString("i_op_version"), "");
    EXPECT_EQ(expertFiveAxis->getString("w_len(1)"), "0");
    EXPECT_EQ(expertFiveAxis->getString("$_binfilename"), "dummy.bin");
}
