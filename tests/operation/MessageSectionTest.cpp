#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>

#include "HostFixture.h"
#include "StoredOperation.h"

using namespace VelkApi;
using Texts = std::vector<std::string>;

class MessageSectionTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setEnvironment("TURNDRIVENTOOLS", "1");
        host().setStore(1, {{"4 1 3 3 1 0", "first", "second line", "'third'", "tool"}});
    }
};

TEST_F(MessageSectionTest, LineTwoAloneWritesNoLine) {
    StoredOperation op(1, 0);
    MessageSection message(0);
    message.createandsetLine(2, "abc");
    std::vector<std::string> keys;
    EXPECT_EQ(message.readKeys(keys), Texts{"2"});
    Texts lines;
    message.writeToStrings(lines);
    EXPECT_TRUE(lines.empty());
    op.getVDM()->Create();
    op.getVDM()->LoadOperation(0);
    op.getVDM()->Close();
    message.writeToVDM(&op);
    EXPECT_EQ(host().lines(1, 0), (Texts{"4 1 3 0 1 0", "tool"}));
}

TEST_F(MessageSectionTest, CreateLineKeepsAnExistingLine) {
    MessageSection message(0);
    message.createandsetLine(0, "x");
    message.createLine(0);
    EXPECT_EQ(message.getString("0"), "x");
    message.createLine(1);
    EXPECT_EQ(message.getString("1"), "");
    EXPECT_TRUE(message.existsKey("1"));
}

TEST_F(MessageSectionTest, LinesAreStringEntriesNumberedByIndex) {
    MessageSection message(0);
    message.readFromStrings({"a", "b"});
    EXPECT_EQ(message.getString("0"), "a");
    EXPECT_EQ(message.getString("1"), "b");
    message.setDefault();
    EXPECT_EQ(message.getString("1"), "");
}

TEST_F(MessageSectionTest, ThreeLinesReadAndWrittenBackUnchanged) {
    StoredOperation op(1, 0);
    MessageSection message(0);
    message.readFromVDM(&op);
    EXPECT_EQ(message.getString("2"), "'third'");
    message.writeToVDM(&op);
    EXPECT_EQ(host().lines(1, 0),
              (Texts{"4 1 3 3 1 0", "first", "second line", "'third'", "tool"}));
    Texts lines;
    message.writeToStrings(lines);
    EXPECT_EQ(lines, (Texts{"first", "second line", "'third'"}));
    EXPECT_FALSE(op.getVDM()->isOpen());
}

TEST_F(MessageSectionTest, EditedLinesReplaceTheSection) {
    StoredOperation op(1, 0);
    MessageSection message(0);
    message.readFromVDM(&op);
    message.setString("1", "changed");
    message.createandsetLine(3, "added");
    message.writeToVDM(&op);
    EXPECT_EQ(host().lines(1, 0),
              (Texts{"4 1 3 4 1 0", "first", "changed", "'third'", "added", "tool"}));
}

TEST_F(MessageSectionTest, WriteToStringsAppendsAfterExistingLines) {
    MessageSection message(0);
    message.readFromStrings({"c"});
    Texts lines{"a", "b"};
    message.writeToStrings(lines);
    EXPECT_EQ(lines, (Texts{"a", "b", "c"}));
}

TEST_F(MessageSectionTest, NullOperationDoesNothing) {
    MessageSection message(0);
    message.readFromVDM(nullptr);
    message.writeToVDM(nullptr);
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
}
