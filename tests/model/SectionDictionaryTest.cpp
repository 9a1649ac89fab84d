#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <new>
#include <string>

#include "ErrorLog.h"
#include "FailingAllocation.h"
#include "TestSection.h"

using namespace VelkApi;
using testsupport::ErrorLogWatch;
using Texts = std::vector<std::string>;

TEST(SectionDictionary, KeysAreFoundWhateverTheirCase) {
    TestSection section;
    section.addIntParameter(0, "I_Type", 0, 42);
    EXPECT_EQ(section.getInt("i_type"), 42);
    EXPECT_EQ(section.getInt("I_TYPE"), 42);
    EXPECT_EQ(section.getInt("i_Type"), 42);
    std::vector<std::string> keys{"stale"};
    EXPECT_EQ(&section.readKeys(keys), &keys);
    EXPECT_EQ(keys, (Texts{"i_type"}));
}

TEST(SectionDictionary, SecondDeclarationKeepsTheFirstEntry) {
    TestSection section;
    section.addDoubleParameter(3, "w_Depth", 1.0, 2.0);
    section.addDoubleParameter(9, "W_DEPTH", 5.0, 6.0);
    const auto entries = section.entriesByNumber();
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0]->getNr(), 3);
    EXPECT_EQ(section.getDouble("w_depth"), 2.0);
    section.setDefault();
    EXPECT_EQ(section.getDouble("w_depth"), 1.0);
}

TEST(SectionDictionary, DeclarationsInAnyOrderKeepTheFirstOfEachKey) {
    TestSection section;
    section.addIntParameter(1, "b", 0, 10);
    section.addIntParameter(2, "d", 0, 20);
    section.addIntParameter(3, "D", 0, 30);  // the last key again
    section.addIntParameter(4, "a", 0, 40);  // before the first
    section.addIntParameter(5, "c", 0, 50);  // between two
    section.addIntParameter(6, "B", 0, 60);  // an earlier key again
    section.addIntParameter(7, "e", 0, 70);  // past the last
    std::vector<std::string> keys;
    EXPECT_EQ(section.readKeys(keys), (Texts{"a", "b", "c", "d", "e"}));
    Texts numbered;
    for (const SectionValue* entry : section.entriesByNumber()) {
        numbered.push_back(entry->getName() + "=" + std::to_string(entry->getNr()) + ":" +
                           entry->getValueAsString());
    }
    EXPECT_EQ(numbered, (Texts{"b=1:10", "d=2:20", "a=4:40", "c=5:50", "e=7:70"}));
}

TEST(SectionDictionary, MissingKeyGivesNeutralResultsWithoutLogging) {
    ErrorLogWatch log;
    TestSection section;
    EXPECT_EQ(section.getInt("nothing"), 0);
    EXPECT_EQ(section.getDouble("nothing"), 0.0);
    EXPECT_FALSE(section.getBool("nothing"));
    EXPECT_EQ(section.getString("nothing"), "");
    EXPECT_EQ(section.getValueAsString("nothing"), "");
    int target = 5;
    EXPECT_EQ(section.getValue("nothing", &target), nullptr);
    EXPECT_EQ(target, 5);
    section.setInt("nothing", 1);
    EXPECT_FALSE(section.existsKey("nothing"));
    EXPECT_FALSE(section.isAxis("nothing"));
    EXPECT_EQ(log.appended(), "");
}

TEST(SectionDictionary, TypedAccessorsReadAndWrite) {
    TestSection section;
    section.addIntParameter(0, "i_a", 1);
    section.addDoubleParameter(1, "w_b", 1.5);
    section.addBoolParameter(2, 1, "o_c", false, false);
    section.addStringParameter(100, "$_d", "dflt");
    section.setInt("I_A", 9);
    section.setDouble("W_B", 0.25);
    section.setBool("O_C", true);
    section.setString("$_D", "text");
    EXPECT_EQ(section.getInt("i_a"), 9);
    EXPECT_EQ(section.getDouble("w_b"), 0.25);
    EXPECT_TRUE(section.getBool("o_c"));
    EXPECT_EQ(section.getString("$_d"), "text");
    EXPECT_EQ(section.getValueAsString("w_b"), "0.250000");
    EXPECT_TRUE(section.existsKey("$_D"));
}

TEST(SectionDictionary, AddersDeclareValueDefaultTypeAndAxis) {
    TestSection section;
    section.addDoubleParameter(1, "w_a", 1.0, 2.0);
    section.addDoubleParameter(2, "w_b", 3.0);
    section.addAxisParameter(3, "w_c", -999999);
    section.addIntParameter(4, "i_d", 4, 5);
    section.addIntParameter(5, "i_e", 6);
    section.addBoolParameter(6, 3, "o_f", true, false);
    section.addStringParameter(7, "$_g", "dg", "vg");
    section.addStringParameter(8, "$_h", "dh");
    section.addStringParameter(9, "$_i");
    section.addStringAxisParameter(10, "$_j", "dj");
    Texts rendered;
    for (const SectionValue* entry : section.entriesByNumber()) {
        rendered.push_back(entry->getName() + " " + std::to_string(entry->getNr()) + "." +
                           std::to_string(entry->getBit()) + " type " +
                           std::to_string(static_cast<int>(entry->getValueDataType())) +
                           (entry->isAxis() ? " axis" : "") + " = '" + entry->getValueAsString() +
                           "'");
    }
    EXPECT_EQ(rendered, (Texts{
                            "w_a 1.0 type 1 = '2.000000'",
                            "w_b 2.0 type 1 = '3.000000'",
                            "w_c 3.0 type 1 axis = ''",
                            "i_d 4.0 type 2 = '5'",
                            "i_e 5.0 type 2 = '6'",
                            "o_f 6.3 type 3 = 'false'",
                            "$_g 7.0 type 4 = 'vg'",
                            "$_h 8.0 type 4 = 'dh'",
                            "$_i 9.0 type 4 = ''",
                            "$_j 10.0 type 4 axis = 'dj'",
                        }));
    section.setDefault();
    EXPECT_EQ(section.getDouble("w_a"), 1.0);
    EXPECT_EQ(section.getInt("i_d"), 4);
    EXPECT_TRUE(section.getBool("o_f"));
    EXPECT_EQ(section.getString("$_g"), "dg");
}

TEST(SectionDictionary, EntriesWithTheSameDefaultKeepTheirOwnValues) {
    TestSection first;
    TestSection second;
    for (TestSection* section : {&first, &second}) {
        section->addDoubleParameter(1, "w_zero", 0.0);
        section->addDoubleParameter(2, "w_unset", kUnsetDouble);
        section->addDoubleParameter(3, "w_minus_zero", -0.0);
        section->addIntParameter(4, "i_zero", 0);
        section->addIntParameter(5, "i_unset", kUnsetInt);
        section->addBoolParameter(6, 1, "o_no", false, false);
        section->addBoolParameter(6, 2, "o_yes", true, true);
        section->addStringParameter(7, "$_empty");
    }
    first.setDouble("w_zero", 1.5);
    first.setDouble("w_unset", 2.5);
    first.setInt("i_zero", 3);
    first.setInt("i_unset", 4);
    first.setBool("o_no", true);
    first.setBool("o_yes", false);
    first.setString("$_empty", "text");
    EXPECT_EQ(second.getDouble("w_zero"), 0.0);
    EXPECT_EQ(second.getDouble("w_unset"), kUnsetDouble);
    EXPECT_EQ(second.getInt("i_zero"), 0);
    EXPECT_EQ(second.getInt("i_unset"), kUnsetInt);
    EXPECT_FALSE(second.getBool("o_no"));
    EXPECT_TRUE(second.getBool("o_yes"));
    EXPECT_EQ(second.getString("$_empty"), "");

    first.setDouble("w_minus_zero", 5.0);
    first.setDefault();
    EXPECT_EQ(first.getDouble("w_zero"), 0.0);
    EXPECT_EQ(first.getDouble("w_unset"), kUnsetDouble);
    EXPECT_TRUE(std::signbit(first.getDouble("w_minus_zero")));
    EXPECT_FALSE(std::signbit(first.getDouble("w_zero")));
    EXPECT_EQ(first.getInt("i_zero"), 0);
    EXPECT_EQ(first.getInt("i_unset"), kUnsetInt);
    EXPECT_FALSE(first.getBool("o_no"));
    EXPECT_TRUE(first.getBool("o_yes"));
    EXPECT_EQ(first.getString("$_empty"), "");
}

TEST(SectionDictionary, ReadKeysListsInByteOrder) {
    TestSection section;
    section.addIntParameter(0, "b", 0);
    section.addIntParameter(1, "ab", 0);
    section.addIntParameter(2, "a", 0);
    section.addIntParameter(3, "B_", 0);
    section.addIntParameter(4, "$_x", 0);
    std::vector<std::string> keys;
    EXPECT_EQ(section.readKeys(keys), (Texts{"$_x", "a", "ab", "b", "b_"}));
}

TEST(SectionDictionary, ClearAdditionalsClearsEveryEntry) {
    TestSection section;
    section.addIntParameter(0, "i_type", 4);
    section.addDoubleParameter(1, "w_additional(1)", 1.0);
    section.addAxisParameter(2, "w_xs", 3.0);
    section.clearAdditionals();
    EXPECT_EQ(section.getInt("i_type"), 2147483647);
    EXPECT_EQ(section.getDouble("w_additional(1)"), 2147483647.0);
    EXPECT_EQ(section.getDouble("w_xs"), -999999.0);
}

TEST(SectionDictionary, ClearRemovesEveryEntry) {
    TestSection section;
    section.addIntParameter(0, "i_a", 4);
    section.clear();
    EXPECT_FALSE(section.existsKey("i_a"));
    std::vector<std::string> keys;
    EXPECT_TRUE(section.readKeys(keys).empty());
}

TEST(SectionDictionary, CopySharesEntriesAndBothMayBeDestroyed) {
    auto original = std::make_unique<TestSection>();
    original->addIntParameter(0, "i_a", 4);
    auto copy = std::make_unique<TestSection>(*original);
    copy->setInt("i_a", 8);
    EXPECT_EQ(original->getInt("i_a"), 8);
    original.reset();
    EXPECT_EQ(copy->getInt("i_a"), 8);
}

TEST(SectionDictionary, OperationLinkAndNumber) {
    TestSection section(3);
    EXPECT_EQ(section.getSectionNr(), 3);
    EXPECT_EQ(section.getOperation(), nullptr);
    auto* op = reinterpret_cast<OperationBase*>(&section);
    section.setOperation(op);
    EXPECT_EQ(section.getOperation(), op);
}

// ---- failures and their log texts

TEST(SectionDictionaryLog, FailingEntryLogsKeyedTexts) {
    TestSection section(12);
    section.addParameter(0, "I_Bad", new ThrowingValue, new IntValue(1), ValueDataType::Int, false);
    ErrorLogWatch log;
    int target = 0;
    EXPECT_EQ(section.getValue("I_Bad", &target), nullptr);
    EXPECT_EQ(section.getValueAsString("I_bad"), "");
    section.setValue("i_BAD", &target);
    EXPECT_EQ(log.texts(), (Texts{
                               "Error in SectionDictionary12::getValue(I_Bad)",
                               "Error in SectionDictionary12::getValue(I_bad)",
                               "Error in SectionDictionary::setValue(i_BAD)",
                           }));
}

TEST(SectionDictionaryLog, FailingKeyedAccessLogsAccessorTexts) {
    ThrowingSection section;
    ErrorLogWatch log;
    section.setInt("k", 1);
    EXPECT_EQ(section.getInt("k"), 0);
    section.setDouble("k", 1.0);
    EXPECT_EQ(section.getDouble("k"), 0.0);
    section.setBool("k", true);
    EXPECT_FALSE(section.getBool("k"));
    section.setString("k", "v");
    EXPECT_EQ(section.getString("Key"), "");
    EXPECT_EQ(log.texts(), (Texts{
                               "Error in SectionDictionary::setInt(const string &  key, int val)",
                               "Error in SectionDictionary::getInt(const string &  key) ",
                               "Error in SectionDictionary::setDouble(const string &  key, "
                               "double val)",
                               "Error in SectionDictionary::getDouble(const string &  key)",
                               "Error in SectionDictionary::setBool(const string &  key, bool val)",
                               "Error in SectionDictionary::getBool(const string &  key)",
                               "Error in SectionDictionary::setString(const string &  key, "
                               "const string & val) ",
                               "Error in SectionDictionary::getString(const string &  key) => Key",
                           }));
}

TEST(SectionDictionaryLog, LostEntryMapLogsWholeSectionTexts) {
    TestSection section;
    section.loseEntryMap();
    ErrorLogWatch log;
    std::vector<std::string> keys{"stale"};
    EXPECT_TRUE(section.readKeys(keys).empty());
    EXPECT_FALSE(section.existsKey("k"));
    EXPECT_FALSE(section.isAxis("k"));
    section.setDefault();
    section.addParameter(0, "i_a", new IntValue(1), new IntValue(1), ValueDataType::Int, false);
    section.addBoolParameter(1, 1, "o_a", false, false);
    EXPECT_EQ(log.texts(),
              (Texts{
                  "Error in SectionDictionary::readKeys(vector<string> & keys)",
                  "Error in SectionDictionary::existsKey(const string & key)",
                  "Error in SectionDictionary::isAxis(const string & key)",
                  "Error in SectionDictionary::setDefault()",
                  "Error in SectionDictionary::addParameter(int pnr, const string &  name, Value "
                  "* value, Value* defaultval, ValueDataType vdtype, bool isaxis)",
                  "Error in SectionDictionary::addBoolParameter(int pnr, int bit, const string &  "
                  "name, bool defaultval, bool val)",
              }));
}

// Each adder makes its entry as addParameter does, and a failure there is logged under
// addParameter's text; a text adder first copies its two texts, a failure there under its own
// text; addBoolParameter makes its entry itself. Nothing is declared by a failed adder.
TEST(SectionDictionaryLog, FailingAllocationLogsAdderTexts) {
    TestSection section;
    section.addIntParameter(0, "first", 0);
    const std::string name = "a_name_long_enough_to_allocate_its_lower_cased_copy";
    const std::string text = "a text too long for the small-string buffer";
    const std::string addParameterText =
        "Error in SectionDictionary::addParameter(int pnr, const string &  name, Value * value, "
        "Value* defaultval, ValueDataType vdtype, bool isaxis)";
    const std::string addStringText =
        "Error in SectionDictionary::addStringParameter(int pnr, const string &  name, const "
        "string &  defaultval, const string &  value)";
    // Where copying takes no allocation, the first one a text adder makes is its entry's.
    const std::string& copyText =
        testsupport::copyingAllocates(text) ? addStringText : addParameterText;
    struct Case {
        std::function<void()> add;
        int allocationsBefore;
        std::string text;
    };
    const std::vector<Case> cases = {
        {[&] { section.addDoubleParameter(0, name, 1.0, 2.0); }, 0, addParameterText},
        {[&] { section.addDoubleParameter(0, name, 1.0); }, 0, addParameterText},
        {[&] { section.addAxisParameter(0, name, 1.0); }, 0, addParameterText},
        {[&] { section.addIntParameter(0, name, 1, 2); }, 0, addParameterText},
        {[&] { section.addIntParameter(0, name, 1); }, 0, addParameterText},
        {[&] { section.addBoolParameter(1, 1, name, false, true); }, 0,
         "Error in SectionDictionary::addBoolParameter(int pnr, int bit, const string &  name, "
         "bool defaultval, bool val)"},
        // The copies of the two texts, then the entry.
        {[&] { section.addStringParameter(0, name, text, text); }, 0, copyText},
        {[&] { section.addStringParameter(0, name, text, text); }, 1, copyText},
        {[&] { section.addStringParameter(0, name, text, text); }, 2, addParameterText},
        {[&] { section.addStringParameter(0, name, text); }, 0, copyText},
        {[&] { section.addStringAxisParameter(0, name, text); }, 2, addParameterText},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        ErrorLogWatch log;
        testsupport::failAllocationAfter(cases[i].allocationsBefore);
        cases[i].add();
        testsupport::stopFailingAllocations();
        EXPECT_EQ(log.texts(), Texts{cases[i].text}) << "case " << i;
        EXPECT_FALSE(section.existsKey(name)) << "case " << i;
    }
    // A failed adder leaves the section able to declare the same name.
    section.addStringParameter(0, name, text, "v");
    EXPECT_EQ(section.getString(name), "v");
    std::string fallback;
    EXPECT_EQ(*static_cast<std::string*>(section.findEntry(name)->getDefault(&fallback)), text);
}

TEST(SectionDictionaryLog, FailingConstructionIsLogged) {
    ErrorLogWatch log;
    testsupport::failAllocationAfter(0);
    TestSection section;
    testsupport::stopFailingAllocations();
    EXPECT_EQ(log.texts(), Texts{"Error in SectionDictionary(int sectionnr)"});
    EXPECT_FALSE(section.existsKey("k"));
}
