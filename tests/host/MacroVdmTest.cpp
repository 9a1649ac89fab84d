#include <gtest/gtest.h>
#include <velkapi/MacroVdm.h>

#include "HostFixture.h"

using namespace VelkApi;
using Texts = std::vector<std::string>;
using velkhost::Records;

class MacroVdmTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setStore(5, Records{{"4 1 0", "a", "b"}, {"3 1 0"}});
    }
};

TEST_F(MacroVdmTest, OpenAndCloseAnExistingStore) {
    MacroVdm vdm(5);
    EXPECT_FALSE(vdm.isOpen());
    EXPECT_TRUE(vdm.Open());
    EXPECT_TRUE(vdm.isOpen());
    EXPECT_EQ(host().callCount("VelkMacroVdmCheckOpen"), 1);
    EXPECT_TRUE(vdm.Close());
    EXPECT_FALSE(vdm.isOpen());
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MacroVdmTest, ConstructionCallsNoHostFunction) {
    MacroVdm vdm(5);
    EXPECT_EQ(vdm.getVdmName(), 5);
    EXPECT_EQ(vdm.getHandle(), 0);
    EXPECT_EQ(host().callCount("VelkMacroVdmExists"), 0);
}

TEST_F(MacroVdmTest, OpenTwiceReports) {
    MacroVdm vdm(5);
    ASSERT_TRUE(vdm.Open());
    EXPECT_FALSE(vdm.Open());
    EXPECT_FALSE(vdm.Create());
    EXPECT_EQ(boxes(), (Texts{"VelkApi::MacroVdm|5: Open: class already open",
                              "VelkApi::MacroVdm|5: Create: class already open"}));
}

TEST_F(MacroVdmTest, OpenMissingStoreReports) {
    MacroVdm vdm(6);
    EXPECT_FALSE(vdm.Open());
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroVdm|6: Open: vdm doesn't exist"});
}

TEST_F(MacroVdmTest, OpenStoreHeldElsewhereReports) {
    host().holdOpenElsewhere(5, true);
    MacroVdm vdm(5);
    EXPECT_FALSE(vdm.Open());
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroVdm|5: Open: already open by another process"});
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
}

TEST_F(MacroVdmTest, HostRefusingToOpenReports) {
    host().failOpen(5, true);
    MacroVdm vdm(5);
    EXPECT_FALSE(vdm.Open());
    EXPECT_FALSE(vdm.isOpen());
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroVdm|5: Open: VELK can not open"});
}

TEST_F(MacroVdmTest, CreateOnMissingStoreIsSilent) {
    MacroVdm vdm(6);
    EXPECT_FALSE(vdm.Create());
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
}

TEST_F(MacroVdmTest, CreateOpensAnExistingStore) {
    MacroVdm vdm(5);
    EXPECT_TRUE(vdm.Create());
    EXPECT_TRUE(vdm.isOpen());
}

TEST_F(MacroVdmTest, CloseAfterHostClosedItElsewhere) {
    MacroVdm vdm(5);
    ASSERT_TRUE(vdm.Open());
    host().closeBehindLibrary(5);
    EXPECT_FALSE(vdm.Close());
    EXPECT_EQ(vdm.getHandle(), 0);
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroVdm|5: Close: already closed by another process"});
}

TEST_F(MacroVdmTest, EveryLineOperationNeedsAnOpenStore) {
    MacroVdm vdm(5);
    std::string line = "unchanged";
    EXPECT_FALSE(vdm.SingleGet(line));
    EXPECT_EQ(line, "unchanged");
    EXPECT_FALSE(vdm.Close());
    EXPECT_FALSE(vdm.DeleteItems(1));
    EXPECT_FALSE(vdm.SingleAdd("x"));
    EXPECT_FALSE(vdm.SingleReplace("x"));
    EXPECT_FALSE(vdm.SeekFromStart(0));
    EXPECT_FALSE(vdm.SingleSeek(1));
    EXPECT_EQ(boxes(), (Texts{
                           "VelkApi::MacroVdm|5: SingleGet::str: Vdm not open",
                           "VelkApi::MacroVdm|5: Close: Vdm not open",
                           "VelkApi::MacroVdm|5: DeleteItems: Vdm not open",
                           "VelkApi::MacroVdm|5: SingleAdd::str: Vdm not open",
                           "VelkApi::MacroVdm|5: SingleReplace::str: Vdm not open",
                           "VelkApi::MacroVdm|5: SeekFromStart: Vdm not open",
                           "VelkApi::MacroVdm|5: SingleSeek: Vdm not open",
                       }));
    EXPECT_EQ(host().callCount("VelkMacroVdmSingleGet$"), 0);
}

TEST_F(MacroVdmTest, NegativeStoreNumberStartsTheText) {
    MacroVdm vdm(-7);
    EXPECT_FALSE(vdm.SeekFromStart(0));
    EXPECT_FALSE(vdm.Open());
    EXPECT_EQ(boxes(), (Texts{"VelkApi::MacroVdm|-7: SeekFromStart: Vdm not open",
                              "VelkApi::MacroVdm|-7: Open: vdm doesn't exist"}));
}

TEST_F(MacroVdmTest, ReadsSeeksAndEditsLines) {
    MacroVdm vdm(5);
    ASSERT_TRUE(vdm.Open());
    std::string line;
    ASSERT_TRUE(vdm.SeekFromStart(0));
    ASSERT_TRUE(vdm.SingleSeek(1));
    ASSERT_TRUE(vdm.SingleGet(line));
    EXPECT_EQ(line, "a");
    ASSERT_TRUE(vdm.SingleReplace("B"));
    ASSERT_TRUE(vdm.SingleAdd("new"));
    ASSERT_TRUE(vdm.SeekFromStart(1));
    ASSERT_TRUE(vdm.SingleAdd("first"));
    ASSERT_TRUE(vdm.SeekFromStart(0));
    ASSERT_TRUE(vdm.SingleSeek(1));
    ASSERT_TRUE(vdm.DeleteItems(1));
    EXPECT_FALSE(vdm.SeekFromStart(9));
    ASSERT_TRUE(vdm.Close());
    EXPECT_EQ(host().records(5), (Records{{"4 1 0", "new", "B"}, {"first", "3 1 0"}}));
}

TEST_F(MacroVdmTest, DestructorClosesAnOpenStore) {
    {
        MacroVdm vdm(5);
        ASSERT_TRUE(vdm.Open());
    }
    EXPECT_EQ(host().callCount("VelkMacroVdmClose"), 1);
    MacroVdm again(5);
    EXPECT_TRUE(again.Open());
}

// The open handle stays with the handle that opened it: a copy is not open, so only the original
// closes the store, once.
TEST_F(MacroVdmTest, CopyOfAnOpenHandleIsNotOpenAndTheStoreClosesOnce) {
    {
        MacroVdm original(5);
        ASSERT_TRUE(original.Open());
        const MacroVdm copy(original);
        EXPECT_FALSE(copy.isOpen());
        EXPECT_EQ(copy.getHandle(), 0);
        EXPECT_EQ(copy.getVdmName(), 5);
        EXPECT_TRUE(original.isOpen());
    }
    EXPECT_EQ(host().callCount("VelkMacroVdmClose"), 1);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MacroVdmTest, CopyOpensTheStoreOnceTheOriginalClosedIt) {
    MacroVdm original(5);
    ASSERT_TRUE(original.Open());
    MacroVdm copy(original);
    ASSERT_TRUE(original.Close());
    ASSERT_TRUE(copy.Open());
    std::string line;
    ASSERT_TRUE(copy.SingleGet(line));
    EXPECT_EQ(line, "4 1 0");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MacroVdmTest, AssigningOntoAnOpenHandleClosesItsStoreFirst) {
    host().setStore(6, Records{{"1 1 0"}});
    MacroVdm target(5);
    ASSERT_TRUE(target.Open());
    MacroVdm source(6);
    ASSERT_TRUE(source.Open());
    target = source;
    EXPECT_EQ(host().callCount("VelkMacroVdmClose"), 1);
    EXPECT_FALSE(target.isOpen());
    EXPECT_EQ(target.getVdmName(), 6);
    EXPECT_TRUE(source.isOpen());
    EXPECT_FALSE(target.Open());  // `source` still holds store 6
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroVdm|6: Open: already open by another process"});
    MacroVdm again(5);
    EXPECT_TRUE(again.Open());
}
