// Sections of one kind describe their entries by shared rows and keep only their values.
#include <gtest/gtest.h>

#include <velkapi/ActionSection.h>
#include <velkapi/VelkObject.h>

#include <cctype>
#include <memory>
#include <string>
#include <vector>

#include "TestSection.h"

using namespace VelkApi;
using Texts = std::vector<std::string>;

namespace {

// Rows no other test declares, so that each test starts its own part of the shared tables. The
// number has four digits, so that names made later sort after the ones before.
std::string unique(const std::string& name) {
    static int next = 0;
    const std::string number = std::to_string(next++);
    return "entry_store_test_" + std::string(4 - number.size(), '0') + number + "_" + name;
}

Texts namesByNumber(const TestSection& section) {
    Texts names;
    for (const SectionValue* entry : section.entriesByNumber()) {
        names.push_back(entry->getName());
    }
    return names;
}

int defaultOf(const TestSection& section, const std::string& key) {
    int fallback = 0;
    section.findEntry(key)->getDefault(&fallback);
    return fallback;
}

}  // namespace

TEST(EntryStore, SectionsDeclaringAlikeShareRowsAndKeepTheirOwnValues) {
    const std::string a = unique("a");
    const std::string b = unique("b");
    TestSection one;
    TestSection other;
    for (TestSection* section : {&one, &other}) {
        section->addIntParameter(0, a, 1);
        section->addStringParameter(1, b, "text");
    }
    EXPECT_TRUE(one.sharesRowsWith(other));
    one.setInt(a, 5);
    one.setString(b, "changed");
    EXPECT_EQ(other.getInt(a), 1);
    EXPECT_EQ(other.getString(b), "text");
    EXPECT_EQ(one.getInt(a), 5);
    EXPECT_EQ(one.getString(b), "changed");
}

TEST(EntryStore, ANameOfAnyCaseFollowsTheLowerCasedRow) {
    const std::string name = unique("w_depth");
    TestSection one;
    TestSection other;
    one.addDoubleParameter(0, name, 1.0);
    std::string upper = name;
    for (char& c : upper) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    other.addDoubleParameter(0, upper, 1.0);
    EXPECT_TRUE(one.sharesRowsWith(other));
    std::vector<std::string> keys;
    EXPECT_EQ(other.readKeys(keys), Texts{name});
}

TEST(EntryStore, ADefaultUnlikeTheRowsStaysTheSections) {
    const std::string type = unique("i_type");
    TestSection one;
    TestSection other;
    one.addIntParameter(0, type, 5, 0);
    other.addIntParameter(0, type, 7, 0);
    EXPECT_TRUE(one.sharesRowsWith(other));
    EXPECT_EQ(defaultOf(one, type), 5);
    EXPECT_EQ(defaultOf(other, type), 7);
    other.setDefault();
    EXPECT_EQ(other.getInt(type), 7);
    EXPECT_EQ(one.getInt(type), 0);
}

TEST(EntryStore, ATextDefaultUnlikeTheRowsStaysTheSections) {
    const std::string text = unique("$_text");
    TestSection one;
    TestSection other;
    one.addStringParameter(0, text, "first", "");
    other.addStringParameter(0, text, "second", "");
    one.setDefault();
    other.setDefault();
    EXPECT_EQ(one.getString(text), "first");
    EXPECT_EQ(other.getString(text), "second");
}

TEST(EntryStore, ASectionDepartingFromItsRowsGoesOnInABranchOthersTakeToo) {
    const std::string a = unique("a");
    const std::string b = unique("b");
    const std::string c = unique("c");
    const std::string d = unique("d");
    TestSection first;
    TestSection second;
    TestSection third;
    first.addIntParameter(0, a, 0);
    first.addIntParameter(1, b, 0);
    first.addIntParameter(2, c, 0);
    for (TestSection* section : {&second, &third}) {
        section->addIntParameter(0, a, 0);
        section->addIntParameter(1, b, 0);
        section->addIntParameter(2, d, 0);
    }
    EXPECT_FALSE(first.sharesRowsWith(second));
    EXPECT_TRUE(second.sharesRowsWith(third));
    EXPECT_EQ(namesByNumber(first), (Texts{a, b, c}));
    EXPECT_EQ(namesByNumber(second), (Texts{a, b, d}));
    EXPECT_FALSE(second.existsKey(c));
    EXPECT_FALSE(first.existsKey(d));
}

// A section that declared fewer of a table's rows sees only its own, and in number order.
TEST(EntryStore, ASectionSeesOnlyTheRowsItDeclared) {
    const std::string a = unique("a");
    const std::string b = unique("b");
    const std::string c = unique("c");
    TestSection longer;
    TestSection shorter;
    longer.addIntParameter(5, a, 0);
    longer.addIntParameter(1, b, 0);
    longer.addIntParameter(3, c, 0);
    shorter.addIntParameter(5, a, 0);
    shorter.addIntParameter(1, b, 0);
    EXPECT_TRUE(longer.sharesRowsWith(shorter));
    EXPECT_EQ(namesByNumber(shorter), (Texts{b, a}));
    EXPECT_EQ(namesByNumber(longer), (Texts{b, c, a}));
    std::vector<std::string> keys;
    EXPECT_EQ(shorter.readKeys(keys), (Texts{a, b}));
    EXPECT_FALSE(shorter.existsKey(c));
    // The shorter one's next row is not the longer one's: it goes on in a branch.
    shorter.addDoubleParameter(9, c, 0.0);
    EXPECT_EQ(shorter.dataTypeOf(c), ValueDataType::Double);
    EXPECT_EQ(longer.dataTypeOf(c), ValueDataType::Int);
    EXPECT_EQ(namesByNumber(shorter), (Texts{b, a, c}));
}

TEST(EntryStore, ANameTakenKeepsItsFirstEntryWhereverTheRowsLie) {
    const std::string a = unique("a");
    const std::string b = unique("b");
    TestSection section;
    section.addIntParameter(0, a, 1);
    section.addIntParameter(1, b, 2);
    section.addDoubleParameter(2, a, 3.0);
    EXPECT_EQ(namesByNumber(section), (Texts{a, b}));
    EXPECT_EQ(section.getInt(a), 1);
}

TEST(EntryStore, ClearedSectionsDeclareAfresh) {
    const std::string a = unique("a");
    TestSection section;
    section.addIntParameter(0, a, 1);
    section.clear();
    EXPECT_FALSE(section.existsKey(a));
    section.addStringParameter(4, a, "", "again");
    EXPECT_EQ(section.getString(a), "again");
    EXPECT_EQ(section.dataTypeOf(a), ValueDataType::String);
}

// Values handed over as objects are the section's own, also beside shared rows.
TEST(EntryStore, HandedOverValuesStayWithTheirSection) {
    const std::string a = unique("a");
    const std::string b = unique("b");
    TestSection one;
    TestSection other;
    for (TestSection* section : {&one, &other}) {
        section->addIntParameter(0, a, 0);
        section->addParameter(1, b, new IntValue(4), new IntValue(6), ValueDataType::Int, false);
    }
    one.setInt(b, 9);
    EXPECT_EQ(one.getInt(b), 9);
    EXPECT_EQ(other.getInt(b), 4);
    other.setDefault();
    EXPECT_EQ(other.getInt(b), 6);
}

// The SectionValue a section hands out reads and writes the section's own value.
TEST(EntryStore, AnEntryHandedOutIsTheSectionsValue) {
    const std::string a = unique("a");
    TestSection section;
    section.addAxisParameter(205, a, 1.5);
    SectionValue* entry = section.findEntry(a);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(section.findEntry(a), entry);  // made once
    EXPECT_EQ(entry->getNr(), 205);
    EXPECT_TRUE(entry->isAxis());
    const double value = 2.5;
    entry->setValue(&value);
    EXPECT_EQ(section.getDouble(a), 2.5);
    entry->clearValue();
    EXPECT_EQ(section.getDouble(a), -999999.0);
    EXPECT_EQ(entry->getValueAsString(), "");
    section.setDouble(a, 3.25);
    EXPECT_EQ(entry->getValueAsString(), "3.250000");
    double fallback = 0.0;
    entry->getDefault(&fallback);
    EXPECT_EQ(fallback, 1.5);
}

// A copy of a section shares its entries, also those declared after the copy was made.
TEST(EntryStore, ACopySharesEntriesDeclaredLater) {
    const std::string a = unique("a");
    TestSection section;
    TestSection copy(section);
    section.addIntParameter(0, a, 3);
    EXPECT_EQ(copy.getInt(a), 3);
    copy.setInt(a, 4);
    EXPECT_EQ(section.getInt(a), 4);
}

namespace {

// An int value of a caller's own kind, that counts what is set through it.
class CountingValue : public IntValue {
  public:
    CountingValue(int value, int& counter) : IntValue(value), sets(counter) {}
    void setValue(const void* source) override {
        ++sets;
        IntValue::setValue(source);
    }

  private:
    int& sets;
};

}  // namespace

TEST(EntryStore, AValueOfACallersOwnKindIsKeptAsItIs) {
    const std::string a = unique("a");
    int sets = 0;
    TestSection section;
    section.addParameter(0, a, new CountingValue(1, sets), new IntValue(2), ValueDataType::Int,
                         false);
    section.setInt(a, 7);
    EXPECT_EQ(sets, 1);
    EXPECT_EQ(section.getInt(a), 7);
}

TEST(EntryStore, ObjectsAndActionsHandedOverKeepValueAndDefault) {
    const std::string object = unique("object");
    const std::string action = unique("action");
    const VelkObject named("G12", GeometrySectionType::OutlineFigure);
    const std::string name = named.getName();
    ASSERT_FALSE(name.empty());
    const auto command = static_cast<ActionType>(3);
    TestSection section;
    section.addParameter(0, object, new VelkObjectValue(named), new VelkObjectValue(VelkObject()),
                         ValueDataType::VelkObject, false);
    section.addParameter(1, action, new ActionValue(Action(command, "M8")),
                         new ActionValue(Action(command, "M9")), ValueDataType::Action, false);
    EXPECT_EQ(section.getValueAsString(object), name);
    EXPECT_EQ(section.getValueAsString(action), "M8");
    // A null target gets a new copy of the object, and nothing of the action.
    std::unique_ptr<VelkObject> copy(static_cast<VelkObject*>(section.getValue(object, nullptr)));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getName(), name);
    EXPECT_EQ(section.getValue(action, nullptr), nullptr);
    // A null source changes nothing.
    section.setValue(object, nullptr);
    EXPECT_EQ(section.getValueAsString(object), name);
    const Action changed(command, "M3");
    section.setValue(action, &changed);
    EXPECT_EQ(section.getValueAsString(action), "M3");
    section.setDefault();
    EXPECT_EQ(section.getValueAsString(object), "");
    EXPECT_EQ(section.getValueAsString(action), "M3");  // an action has no default to take
}
