#include <gtest/gtest.h>
#include <velkapi/MillTurnVdm.h>

#include "HostFixture.h"

using namespace VelkApi;
using Texts = std::vector<std::string>;
using Lines = std::vector<std::string>;
using velkhost::Records;

class MillTurnVdmTest : public testsupport::HostTest {
  protected:
    // Operation 0: header and sections of 1, 2 and 1 lines. Operation 1: a new one.
    void SetUp() override {
        HostTest::SetUp();
        host().setStore(9, Records{{"4 1 3 1 2 1", "msg", "t1", "t2", "POCKET"}, {"12 1 0"}});
    }
    MillTurnVdm vdm{9};
};

TEST_F(MillTurnVdmTest, LoadsTheHeader) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    EXPECT_EQ(vdm.getCurrentOperation(), 0);
    EXPECT_EQ(vdm.getOperationType(), 4);
    EXPECT_EQ(vdm.getOperationFlag(), 1);
    EXPECT_EQ(vdm.getSectionLineCounts(), (std::vector<int>{1, 2, 1}));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillTurnVdmTest, NewOperationHeaderHasNoSections) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(1));
    EXPECT_EQ(vdm.getOperationType(), 12);
    EXPECT_EQ(vdm.getOperationFlag(), 1);
    EXPECT_EQ(vdm.getSectionCount(), 0);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillTurnVdmTest, HeaderDeclaringMoreSectionsThanItListsIsReported) {
    host().setStore(9, Records{{"12 1 3 5 0"}});
    ASSERT_TRUE(vdm.Create());
    EXPECT_TRUE(vdm.LoadOperation(0));
    EXPECT_EQ(vdm.getSectionLineCounts(), (std::vector<int>{5, 0}));
    EXPECT_EQ(boxes(), Texts{"VelkApi::MillTurnVdm|9: ReadHeader:: Operation (0) actual number of "
                             "sections (2) differs from that specified in header (3)"});
}

TEST_F(MillTurnVdmTest, HeaderWithoutCountsOrFlag) {
    host().setStore(9, Records{{"12 1"}, {"7"}, {""}, {"x 1 2"}});
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    EXPECT_EQ(vdm.getOperationType(), 12);
    EXPECT_EQ(vdm.getSectionCount(), 0);
    ASSERT_TRUE(vdm.LoadOperation(1));
    EXPECT_EQ(vdm.getOperationType(), 7);
    ASSERT_TRUE(vdm.LoadOperation(2));
    EXPECT_EQ(vdm.getOperationType(), 0);
    ASSERT_TRUE(vdm.LoadOperation(3));
    EXPECT_EQ(vdm.getOperationType(), 0);
    EXPECT_EQ(vdm.getSectionCount(), 0);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillTurnVdmTest, OperationOutOfRangeIsReported) {
    ASSERT_TRUE(vdm.Create());
    EXPECT_FALSE(vdm.LoadOperation(2));
    EXPECT_FALSE(vdm.IsOpValid(-1));
    EXPECT_EQ(vdm.getCurrentOperation(), -1);
    EXPECT_EQ(boxes(),
              (Texts{"VelkApi::MillTurnVdm|9: Operation 2 (0 based) out of range (2 oprations)",
                     "VelkApi::MillTurnVdm|9: Operation -1 (0 based) out of range (2 oprations)"}));
}

TEST_F(MillTurnVdmTest, OperationCheckNeedsAnOpenStore) {
    EXPECT_FALSE(vdm.IsOpValid(0));
    EXPECT_EQ(boxes(), Texts{"VelkApi::MillTurnVdm|9: IsOpValid: Vdm not open"});
}

TEST_F(MillTurnVdmTest, SectionAndItemRangesAreReported) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(1));
    EXPECT_FALSE(vdm.IsSectionValid(3));
    ASSERT_TRUE(vdm.LoadOperation(0));
    EXPECT_TRUE(vdm.SectionHasItems(1));
    ASSERT_TRUE(vdm.ClearSection(2));
    EXPECT_FALSE(vdm.SectionHasItems(2));
    EXPECT_EQ(boxes(),
              (Texts{"VelkApi::MillTurnVdm|9: Operation 1 section 3 (0 based) out of range (0 "
                     "sections)",
                     "VelkApi::MillTurnVdm|9: Operation 0 section 2 item 0 (0 based) out of "
                     "range (0 items)"}));
}

TEST_F(MillTurnVdmTest, ReadsASection) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    Lines lines;
    ASSERT_TRUE(vdm.ReadSection(1, lines));
    EXPECT_EQ(lines, (Lines{"t1", "t2"}));
    lines.clear();
    ASSERT_TRUE(vdm.ReadSection(2, lines));
    EXPECT_EQ(lines, Lines{"POCKET"});
}

TEST_F(MillTurnVdmTest, SeekingPastCountsBeyondTheIntRangeFailsQuietly) {
    host().setStore(9, Records{{"4 1 3 2147483647 2147483647 1", "msg"}});
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    EXPECT_FALSE(vdm.SeekSection(2));
    EXPECT_TRUE(vdm.SeekSection(0));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillTurnVdmTest, SectionCreateAddsZeroCountsUpToTheSection) {
    host().setStore(9, Records{{"4 1 2 1 1", "m", "t"}});
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    EXPECT_TRUE(vdm.SectionCreate(4));
    EXPECT_EQ(vdm.getSectionLineCounts(), (std::vector<int>{1, 1, 0, 0, 0}));
    EXPECT_EQ(vdm.getCurrentSection(), 4);
    EXPECT_EQ(vdm.getCurrentItem(), 0);
}

TEST_F(MillTurnVdmTest, SectionCreateOfAnExistingSectionReports) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    EXPECT_FALSE(vdm.SectionCreate(1));
    EXPECT_EQ(vdm.getCurrentSection(), 1);
    EXPECT_EQ(boxes(), Texts{"VelkApi::MillTurnVdm|9: SectionCreate:: Operation (0) section (1) "
                             "exist"});
}

TEST_F(MillTurnVdmTest, ClearSectionRemovesItsLinesAndRewritesTheHeader) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    ASSERT_TRUE(vdm.ClearSection(1));
    ASSERT_TRUE(vdm.Close());
    EXPECT_EQ(host().lines(9, 0), (Lines{"4 1 3 1 0 1", "msg", "POCKET"}));
}

TEST_F(MillTurnVdmTest, BeginSectionReplacesAnExistingSection) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    ASSERT_TRUE(vdm.BeginSection(1));
    ASSERT_TRUE(vdm.AddLine("n1"));
    ASSERT_TRUE(vdm.AddLine("n2"));
    ASSERT_TRUE(vdm.AddLine("n3"));
    ASSERT_TRUE(vdm.EndSection());
    ASSERT_TRUE(vdm.Close());
    EXPECT_EQ(host().lines(9, 0), (Lines{"4 1 3 1 3 1", "msg", "n1", "n2", "n3", "POCKET"}));
    EXPECT_EQ(host().lines(9, 1), Lines{"12 1 0"});
}

TEST_F(MillTurnVdmTest, BeginSectionCreatesMissingSectionsOnANewOperation) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(1));
    ASSERT_TRUE(vdm.BeginSection(2));
    ASSERT_TRUE(vdm.AddLine("DRILLING"));
    ASSERT_TRUE(vdm.AddLine("1 2 "));
    ASSERT_TRUE(vdm.EndSection());
    ASSERT_TRUE(vdm.BeginSection(0));
    ASSERT_TRUE(vdm.AddLine("hello"));
    ASSERT_TRUE(vdm.EndSection());
    ASSERT_TRUE(vdm.Close());
    EXPECT_EQ(host().lines(9, 1), (Lines{"12 1 3 1 0 2", "hello", "DRILLING", "1 2 "}));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillTurnVdmTest, AddsRefusedByTheHostAreNotCounted) {
    host().failAddsAfter(9, 1);
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    ASSERT_TRUE(vdm.BeginSection(0));
    EXPECT_TRUE(vdm.AddLine("kept"));
    EXPECT_FALSE(vdm.AddLine("lost"));
    ASSERT_TRUE(vdm.EndSection());
    ASSERT_TRUE(vdm.Close());
    EXPECT_EQ(host().lines(9, 0), (Lines{"4 1 3 1 2 1", "kept", "t1", "t2", "POCKET"}));
}

TEST_F(MillTurnVdmTest, InsertOperationWritesANewHeaderAndLoadsIt) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.InsertOperation(1, 5));
    EXPECT_EQ(vdm.getCurrentOperation(), 1);
    EXPECT_EQ(vdm.getOperationType(), 5);
    EXPECT_EQ(vdm.OperationCount(), 3);
    ASSERT_TRUE(vdm.Close());
    EXPECT_EQ(host().lines(9, 1), Lines{"5 1 0"});
    EXPECT_EQ(host().lines(9, 2), Lines{"12 1 0"});
}

TEST_F(MillTurnVdmTest, WriteHeaderWritesFlagZeroForAnythingButOne) {
    host().setStore(9, Records{{"4 3 1 0"}});
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    ASSERT_TRUE(vdm.WriteHeader());
    ASSERT_TRUE(vdm.Close());
    EXPECT_EQ(host().lines(9, 0), Lines{"4 0 1 0"});
}

TEST_F(MillTurnVdmTest, OperationExistOpensAndClosesTheStore) {
    EXPECT_TRUE(vdm.OperationExist(1));
    EXPECT_FALSE(vdm.OperationExist(2));
    EXPECT_FALSE(vdm.OperationExist(-1));
    EXPECT_FALSE(vdm.isOpen());
    EXPECT_EQ(host().callCount("VelkMacroVdmClose"), 3);
    MillTurnVdm missing(10);
    EXPECT_FALSE(missing.OperationExist(0));
}

TEST_F(MillTurnVdmTest, WriteSectionReplacesTheLinesAndTheirCount) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    EXPECT_TRUE(vdm.WriteSection(1, {"a", "b", "c"}));
    EXPECT_TRUE(vdm.WriteSection(4, {"d"}));
    vdm.Close();
    EXPECT_EQ(host().lines(9, 0), (Lines{"4 1 5 1 3 1 0 1", "msg", "a", "b", "c", "POCKET", "d"}));
}

TEST_F(MillTurnVdmTest, DeleteSectionKeepsTheHeaderPlaceOfASectionWithLinesAfterIt) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    EXPECT_TRUE(vdm.DeleteSection(1, 1));
    vdm.Close();
    EXPECT_EQ(host().lines(9, 0), (Lines{"4 1 3 1 0 1", "msg", "POCKET"}));
}

TEST_F(MillTurnVdmTest, DeleteSectionDropsTheEmptySectionsAtTheEndDownToTheFirstOptional) {
    host().setStore(9, Records{{"4 1 5 1 0 0 2 1", "msg", "a", "b", "c"}});
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    EXPECT_TRUE(vdm.DeleteSection(3, 1));
    EXPECT_EQ(host().lines(9, 0), (Lines{"4 1 5 1 0 0 0 1", "msg", "c"}));
    EXPECT_TRUE(vdm.DeleteSection(4, 2));
    EXPECT_EQ(vdm.getSectionLineCounts(), (std::vector<int>{1, 0}));
    vdm.Close();
    EXPECT_EQ(host().lines(9, 0), (Lines{"4 1 2 1 0", "msg"}));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MillTurnVdmTest, DeleteSectionOfASectionTheHeaderDoesNotListChangesNothing) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    host().resetCallCounts();
    EXPECT_FALSE(vdm.DeleteSection(3, 0));
    EXPECT_EQ(host().callCount("VelkMacroVdmSingleReplace$"), 0);
    vdm.Close();
    EXPECT_EQ(host().lines(9, 0), (Lines{"4 1 3 1 2 1", "msg", "t1", "t2", "POCKET"}));
}

TEST_F(MillTurnVdmTest, CopyKeepsTheLoadedOperationButNotTheOpenHandle) {
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(0));
    {
        const MillTurnVdm copy(vdm);
        EXPECT_FALSE(copy.isOpen());
        EXPECT_EQ(copy.getCurrentOperation(), 0);
        EXPECT_EQ(copy.getSectionLineCounts(), (std::vector<int>{1, 2, 1}));
    }
    EXPECT_EQ(host().callCount("VelkMacroVdmClose"), 0);
    EXPECT_TRUE(vdm.Close());
    EXPECT_EQ(host().callCount("VelkMacroVdmClose"), 1);
    EXPECT_TRUE(boxes().empty());
}
