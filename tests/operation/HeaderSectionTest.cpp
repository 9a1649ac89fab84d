#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>

#include "HostFixture.h"
#include "StoredOperation.h"

using namespace VelkApi;
using Texts = std::vector<std::string>;

class HeaderSectionTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setEnvironment("TURNDRIVENTOOLS", "1");
    }
    Texts keys(const HeaderSection& header) {
        std::vector<std::string> names;
        header.readKeys(names);
        return names;
    }
};

TEST_F(HeaderSectionTest, HeaderWithoutCounts) {
    host().setStore(1, {{"12 1"}});
    StoredOperation op(1, 0);
    HeaderSection header;
    header.readFromVDM(&op);
    EXPECT_EQ(keys(header),
              (Texts{"geometrysectionlinecount", "i_type", "isactive", "messagelinecount",
                     "parametersectionlinecount", "sectioncount", "toolsectionlinecount"}));
    EXPECT_EQ(header.getInt("i_type"), 0);
    EXPECT_TRUE(header.getBool("IsActive"));
    EXPECT_EQ(header.getInt("SectionCount"), 1);
    header.setDefault();
    EXPECT_EQ(header.getInt("i_type"), 12);
    EXPECT_TRUE(header.getBool("IsActive"));
    EXPECT_EQ(header.getInt("SectionCount"), 0);
    for (const char* count : {"MessageLineCount", "ToolSectionLineCount",
                              "ParameterSectionLineCount", "GeometrySectionLineCount"}) {
        EXPECT_EQ(header.getInt(count), 0) << count;
    }
    EXPECT_EQ(header.getSectionLineCounts(), (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(header.getSectionNr(), -1);
    EXPECT_FALSE(op.getVDM()->isOpen());
}

TEST_F(HeaderSectionTest, InactiveFlagDefaultsToFalse) {
    host().setStore(1, {{"4 0 0"}});
    StoredOperation op(1, 0);
    HeaderSection header;
    header.readFromVDM(&op);
    header.setDefault();
    EXPECT_FALSE(header.getBool("isactive"));
    EXPECT_EQ(header.getActiveFlag(), 0);
}

TEST_F(HeaderSectionTest, SixSectionsNameTheAdditionalCounts) {
    host().setStore(1, {{"4 1 6 1 2 3 4 5 6"}});
    StoredOperation op(1, 0);
    HeaderSection header;
    header.readFromVDM(&op);
    header.setDefault();
    EXPECT_EQ(header.getInt("AdditionalSectionLineCount_4"), 5);
    EXPECT_EQ(header.getInt("AdditionalSectionLineCount_5"), 6);
    EXPECT_EQ(header.getInt("ParameterSectionLineCount"), 3);
    EXPECT_EQ(header.getSectionCount(), 6);
    EXPECT_EQ(header.getSectionLineCounts(), (std::vector<int>{1, 2, 3, 4, 5, 6}));
    std::map<std::string, int> numbers;
    for (const std::string& key : keys(header)) {
        numbers[key] = 0;
    }
    EXPECT_EQ(numbers.size(), 9u);
}

TEST_F(HeaderSectionTest, AdditionalCountsCarryNumbersSevenAndEight) {
    class NumberedHeader : public HeaderSection {
      public:
        int numberOf(const std::string& key) const { return findEntry(key)->getNr(); }
        int bitOf(const std::string& key) const { return findEntry(key)->getBit(); }
    };
    host().setStore(1, {{"4 1 6 1 2 3 4 5 6"}});
    StoredOperation op(1, 0);
    NumberedHeader header;
    header.readFromVDM(&op);
    EXPECT_EQ(header.numberOf("i_type"), 0);
    EXPECT_EQ(header.numberOf("isactive"), 1);
    EXPECT_EQ(header.bitOf("isactive"), 1);
    EXPECT_EQ(header.numberOf("sectioncount"), 2);
    EXPECT_EQ(header.numberOf("messagelinecount"), 3);
    EXPECT_EQ(header.numberOf("geometrysectionlinecount"), 6);
    EXPECT_EQ(header.numberOf("additionalsectionlinecount_4"), 7);
    EXPECT_EQ(header.numberOf("additionalsectionlinecount_5"), 8);
}

TEST_F(HeaderSectionTest, ReadingAgainKeepsTheFirstEntriesButGrowsTheCounts) {
    host().setStore(1, {{"4 1 2 1 2"}, {"5 1 2 7 8"}});
    StoredOperation first(1, 0);
    HeaderSection header;
    header.readFromVDM(&first);
    StoredOperation second(1, 1);
    header.readFromVDM(&second);
    header.setDefault();
    EXPECT_EQ(header.getInt("i_type"), 4);
    EXPECT_EQ(header.getInt("MessageLineCount"), 1);
    EXPECT_EQ(header.getSectionLineCounts(), (std::vector<int>{1, 2, 0, 0, 7, 8, 0, 0}));
}

TEST_F(HeaderSectionTest, WritingChangesNothing) {
    host().setStore(1, {{"4 1 2 1 2", "m", "t1", "t2"}});
    StoredOperation op(1, 0);
    HeaderSection header;
    header.readFromVDM(&op);
    header.setInt("SectionCount", 9);
    header.writeToVDM(&op);
    EXPECT_EQ(host().records(1), (velkhost::Records{{"4 1 2 1 2", "m", "t1", "t2"}}));
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 1);
}

TEST_F(HeaderSectionTest, NullOperationOrMissingStoreReadsNothing) {
    HeaderSection header;
    header.readFromVDM(nullptr);
    StoredOperation op(9, 0);
    header.readFromVDM(&op);
    EXPECT_TRUE(keys(header).empty());
}
