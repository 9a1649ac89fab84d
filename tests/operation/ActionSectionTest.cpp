#include <gtest/gtest.h>
#include <velkapi/ActionSection.h>

#include <set>
#include <stdexcept>

#include "ErrorLog.h"
#include "FailingAllocation.h"
#include "HostFixture.h"
#include "StoredOperation.h"

using namespace VelkApi;
using Texts = std::vector<std::string>;

namespace {

constexpr ActionSectionType kPre = ActionSectionType::PreOperation;
constexpr ActionSectionType kPost = ActionSectionType::PostOperation;

ActionType kind(int number) {
    return static_cast<ActionType>(number);
}

// The kinds and commands of a section's actions, as "kind:command", in the order getValues gives.
Texts actionsOf(ActionSection& section) {
    std::vector<Action> actions;
    Texts seen;
    for (const Action& action : *section.getValues(&actions)) {
        seen.push_back(std::to_string(static_cast<int>(action.getType())) + ":" +
                       action.getCommand());
    }
    return seen;
}

class BrokenNumberOperation : public StoredOperation {
  public:
    using StoredOperation::StoredOperation;
    int getNumber() const override { throw std::runtime_error("no number"); }
};

}  // namespace

class ActionSectionTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setEnvironment("TURNDRIVENTOOLS", "1");
    }
    Texts stored() { return host().lines(1, 0); }
};

TEST_F(ActionSectionTest, ActionsAreEntriesNamedByTheirNumber) {
    ActionSection section(kPre, 4);
    section.addActionParameter(2, kind(5), "M8");
    section.addActionParameter(3, kind(1), "call probe");
    section.addActionParameter(3, kind(7), "ignored");
    std::vector<std::string> keys;
    EXPECT_EQ(section.readKeys(keys), (Texts{"2", "3"}));
    EXPECT_EQ(section.dataTypeOf("3"), ValueDataType::Action);
    EXPECT_EQ(section.getValueAsString("3"), "call probe");
    EXPECT_EQ(actionsOf(section), (Texts{"5:M8", "1:call probe"}));
    EXPECT_EQ(section.getSectionType(), kPre);
    EXPECT_EQ(section.getSectionNr(), 4);
}

TEST_F(ActionSectionTest, GetValuesAppendsInTheDictionarysOrderOfNames) {
    ActionSection section(kPost, 5);
    for (int nr = 11; nr >= 2; --nr) {
        section.addActionParameter(nr, kind(nr), "c" + std::to_string(nr));
    }
    std::vector<Action> actions{Action()};
    EXPECT_EQ(section.getValues(&actions), &actions);
    ASSERT_EQ(actions.size(), 11u);
    EXPECT_EQ(actions[0].getCommand(), "");
    // Names compare as text: "10" and "11" come before "2".
    EXPECT_EQ(actions[1].getCommand(), "c10");
    EXPECT_EQ(actions[2].getCommand(), "c11");
    EXPECT_EQ(actions[3].getCommand(), "c2");
    EXPECT_EQ(actions[10].getCommand(), "c9");
    EXPECT_EQ(section.getValues(nullptr), nullptr);
}

TEST_F(ActionSectionTest, ThePreOperationListIsWrittenWithItsMarkerAndKinds) {
    host().setStore(1, {{"4 1 3 1 0 1", "message", "POCKET"}});
    StoredOperation op(1, 0);
    ActionSection section(kPre, 4);
    section.addActionParameter(2, kind(5), "M8");
    section.addActionParameter(3, kind(1), "call 'probe.mac'");
    section.writeToVDM(&op);
    EXPECT_EQ(stored(), (Texts{"4 1 5 1 0 1 0 4", "message", "POCKET", "###PREOPERATION###", "5 1 ",
                               "M8", "call 'probe.mac'"}));
    EXPECT_FALSE(op.getVDM()->isOpen());
}

TEST_F(ActionSectionTest, ThePostOperationListHasItsOwnMarker) {
    host().setStore(1,
                    {{"4 1 5 1 0 1 0 3", "message", "POCKET", "###PREOPERATION###", "5 ", "M8"}});
    StoredOperation op(1, 0);
    ActionSection section(kPost, 5);
    section.addActionParameter(2, kind(2), "M9");
    section.writeToVDM(&op);
    EXPECT_EQ(stored(), (Texts{"4 1 6 1 0 1 0 3 3", "message", "POCKET", "###PREOPERATION###", "5 ",
                               "M8", "###POSTOPERATION###", "2 ", "M9"}));
}

TEST_F(ActionSectionTest, TenActionsAreWrittenInTheOrderOfTheirNames) {
    host().setStore(1, {{"4 1 3 1 0 1", "message", "POCKET"}});
    StoredOperation op(1, 0);
    ActionSection section(kPre, 4);
    for (int nr = 2; nr <= 11; ++nr) {
        section.addActionParameter(nr, kind(nr), "c" + std::to_string(nr));
    }
    section.writeToVDM(&op);
    EXPECT_EQ(stored(), (Texts{"4 1 5 1 0 1 0 12", "message", "POCKET", "###PREOPERATION###",
                               "10 11 2 3 4 5 6 7 8 9 ", "c10", "c11", "c2", "c3", "c4", "c5", "c6",
                               "c7", "c8", "c9"}));
}

TEST_F(ActionSectionTest, ReadingNumbersTheActionsFromTwo) {
    host().setStore(
        1, {{"4 1 6 0 0 0 0 0 5", "###POSTOPERATION###", "3 7 ", "first", "second", "third"}});
    StoredOperation op(1, 0);
    ActionSection section(kPost, 5);
    section.readFromVDM(&op);
    std::vector<std::string> keys;
    EXPECT_EQ(section.readKeys(keys), (Texts{"2", "3", "4"}));
    // The kinds line has no number left for the third action.
    EXPECT_EQ(actionsOf(section), (Texts{"3:first", "7:second", "0:third"}));
    EXPECT_FALSE(op.getVDM()->isOpen());
}

TEST_F(ActionSectionTest, AKindThatIsNoNumberIsZeroAndTheKindsLineStaysThere) {
    host().setStore(1, {{"4 1 5 0 0 0 0 5", "###PREOPERATION###", "5 x 1 ", "a", "b", "c"}});
    StoredOperation op(1, 0);
    ActionSection section(kPre, 4);
    section.readFromVDM(&op);
    EXPECT_EQ(actionsOf(section), (Texts{"5:a", "0:b", "0:c"}));
}

TEST_F(ActionSectionTest, TheMarkerLineIsNotChecked) {
    host().setStore(1, {{"4 1 5 0 0 0 0 3", "###POSTOPERATION###", "4 ", "M5"}});
    StoredOperation op(1, 0);
    ActionSection section(kPre, 4);
    section.readFromVDM(&op);
    EXPECT_EQ(actionsOf(section), Texts{"4:M5"});
    section.writeToVDM(&op);
    EXPECT_EQ(stored(), (Texts{"4 1 5 0 0 0 0 3", "###PREOPERATION###", "4 ", "M5"}));
}

TEST_F(ActionSectionTest, ASectionOfFewerThanThreeLinesHasNoActions) {
    for (const velkhost::Record& record :
         {velkhost::Record{"4 1 5 0 0 0 0 2", "###PREOPERATION###", "5 "},
          velkhost::Record{"4 1 5 0 0 0 0 1", "###PREOPERATION###"},
          velkhost::Record{"4 1 5 0 0 0 0 0"}, velkhost::Record{"4 1 3 0 0 0"}}) {
        host().setStore(1, {record});
        StoredOperation op(1, 0);
        ActionSection section(kPre, 4);
        section.readFromVDM(&op);
        EXPECT_EQ(actionsOf(section), Texts{}) << record[0];
    }
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ActionSectionTest, BothListsRoundTripToTheSameLines) {
    const velkhost::Record record = {"4 1 6 1 0 1 0 4 5",
                                     "message",
                                     "POCKET",
                                     "###PREOPERATION###",
                                     "5 1 ",
                                     "M8",
                                     "  call 'probe.mac' 3  ",
                                     "###POSTOPERATION###",
                                     "2 5 9 ",
                                     "M9",
                                     "",
                                     "M5"};
    host().setStore(1, {record, {"4 1 0"}});
    StoredOperation op(1, 0);
    ActionSection pre(kPre, 4);
    ActionSection post(kPost, 5);
    pre.readFromVDM(&op);
    post.readFromVDM(&op);
    EXPECT_EQ(actionsOf(pre), (Texts{"5:M8", "1:  call 'probe.mac' 3  "}));
    EXPECT_EQ(actionsOf(post), (Texts{"2:M9", "5:", "9:M5"}));
    pre.writeToVDM(&op);
    post.writeToVDM(&op);
    EXPECT_EQ(stored(), record);
    EXPECT_EQ(host().lines(1, 1), Texts{"4 1 0"});
}

TEST_F(ActionSectionTest, AnEmptyListIsRemovedFromTheStore) {
    host().setStore(1, {{"4 1 6 1 0 0 0 3 3", "message", "###PREOPERATION###", "5 ", "M8",
                         "###POSTOPERATION###", "5 ", "M9"},
                        {"4 1 0"}});
    StoredOperation op(1, 0);
    ActionSection pre(kPre, 4);
    ActionSection post(kPost, 5);
    pre.readFromVDM(&op);
    post.readFromVDM(&op);
    pre.clear();
    EXPECT_EQ(actionsOf(pre), Texts{});
    // The post-operation list after it keeps the pre-operation list's place, with no lines.
    pre.writeToVDM(&op);
    EXPECT_EQ(stored(), (Texts{"4 1 6 1 0 0 0 0 3", "message", "###POSTOPERATION###", "5 ", "M9"}));
    // Without lists after them, both places leave the header.
    post.clear();
    post.writeToVDM(&op);
    EXPECT_EQ(stored(), (Texts{"4 1 4 1 0 0 0", "message"}));
    pre.writeToVDM(&op);
    EXPECT_EQ(stored(), (Texts{"4 1 4 1 0 0 0", "message"}));
    EXPECT_EQ(host().lines(1, 1), Texts{"4 1 0"});
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ActionSectionTest, AnEmptyListOfAnOperationWithoutItWritesNothing) {
    host().setStore(1, {{"4 1 3 1 0 1", "message", "POCKET"}});
    StoredOperation op(1, 0);
    ActionSection post(kPost, 5);
    host().resetCallCounts();
    post.writeToVDM(&op);
    EXPECT_EQ(host().callCount("VelkMacroVdmSingleReplace$"), 0);
    EXPECT_EQ(stored(), (Texts{"4 1 3 1 0 1", "message", "POCKET"}));
}

TEST_F(ActionSectionTest, NullOperationDoesNothing) {
    ActionSection section(kPre, 4);
    host().resetCallCounts();
    section.readFromVDM(nullptr);
    section.writeToVDM(nullptr);
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
}

TEST_F(ActionSectionTest, FailingReadAndWriteLogTheirTexts) {
    host().setStore(1, {{"4 1 5 0 0 0 0 3", "###PREOPERATION###", "5 ", "M8"}});
    BrokenNumberOperation op(1, 0);
    ActionSection section(kPre, 4);
    section.addActionParameter(2, kind(5), "M9");
    testsupport::ErrorLogWatch log;
    section.readFromVDM(&op);
    section.writeToVDM(&op);
    EXPECT_EQ(log.texts(), (Texts{"Error in ActionSection::readFromVDM()",
                                  "Error in ActionSection::writeToVDM()"}));
    EXPECT_FALSE(op.getVDM()->isOpen());
    EXPECT_EQ(stored(), (Texts{"4 1 5 0 0 0 0 3", "###PREOPERATION###", "5 ", "M8"}));
}

TEST_F(ActionSectionTest, AKindOutOfRangeEndsTheReadingAndKeepsTheActionsBefore) {
    host().setStore(1, {{"4 1 5 0 0 0 0 4", "###PREOPERATION###", "5 99999999999 ", "M8", "M9"}});
    StoredOperation op(1, 0);
    ActionSection section(kPre, 4);
    testsupport::ErrorLogWatch log;
    section.readFromVDM(&op);
    EXPECT_EQ(log.texts(), Texts{"Error in ActionSection::readFromVDM()"});
    EXPECT_EQ(actionsOf(section), Texts{"5:M8"});
    EXPECT_FALSE(op.getVDM()->isOpen());
}

// Every allocation of adding and listing actions fails once, in turn: each failure is logged
// with the operation's own text (or the dictionary's, for a failure inside it).
TEST_F(ActionSectionTest, FailingAddsAndListsLogTheirTexts) {
    const std::string command(64, 'c');
    const std::set<std::string> allowed = {
        "Error in ActionSection::addActionParameter()", "Error in ActionSection::getValues()",
        "Error in SectionDictionary::addParameter(int pnr, const string &  name, Value * value, "
        "Value* defaultval, ValueDataType vdtype, bool isaxis)"};
    std::set<std::string> seen;
    for (int skip = 0; skip < 200; ++skip) {
        ActionSection section(kPre, 4);
        section.addActionParameter(2, kind(5), "M8");
        std::vector<Action> actions;
        testsupport::ErrorLogWatch log;
        testsupport::failAllocationAfter(skip);
        section.addActionParameter(3, kind(1), command);
        section.getValues(&actions);
        testsupport::stopFailingAllocations();
        const Texts texts = log.texts();
        seen.insert(texts.begin(), texts.end());
        EXPECT_TRUE(section.existsKey("2"));
        if (texts.empty()) {
            EXPECT_EQ(actions.size(), 2u);
            break;
        }
    }
    for (const std::string& text : seen) {
        EXPECT_TRUE(allowed.count(text)) << text;
    }
    // The action's own allocation is its command's copy, which the MinGW runtime's strings
    // share instead.
    if (testsupport::copyingAllocates(command)) {
        EXPECT_TRUE(seen.count("Error in ActionSection::addActionParameter()"));
    }
    EXPECT_TRUE(seen.count("Error in ActionSection::getValues()"));
}
