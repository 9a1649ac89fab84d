#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>

#include "ErrorLog.h"
#include "HostFixture.h"

using namespace VelkApi;
using Kind = MillDrillOperationType;

namespace {

Kind kind(int value) {
    return static_cast<Kind>(value);
}

}  // namespace

TEST(OperationType, NamesReadInAnyCase) {
    EXPECT_EQ(StringToMillDrillOperationType("POCKET"), Kind::POCKET);
    EXPECT_EQ(StringToMillDrillOperationType("pocket"), Kind::POCKET);
    EXPECT_EQ(StringToMillDrillOperationType("PoCkEt"), Kind::POCKET);
    EXPECT_EQ(StringToMillDrillOperationType("POCKET "), Kind::Unknown);
    EXPECT_EQ(StringToMillDrillOperationType(" POCKET"), Kind::Unknown);
    EXPECT_EQ(StringToMillDrillOperationType(""), Kind::Unknown);
}

TEST(OperationType, EveryNameReadsAsItsKind) {
    const std::pair<const char*, int> names[] = {
        {"PROFILE", 1},        {"CORNER", 2},    {"CHAMFER", 3},   {"POCKET", 4},
        {"FACEMILL", 5},       {"RESTMATL", 6},  {"DRILLING", 7},  {"BORING", 7},
        {"POCCYCLE", 8},       {"ENGRAVE", 9},   {"REDRAW", 10},   {"THREADING", 11},
        {"THREADMILLING", 11}, {"TOOLS", 12},    {"MEDITOR", 13},  {"MOVING", 14},
        {"STD3DGEO", 16},      {"RSURFING", 17}, {"MILL_5AX", 18}, {"SLOT", 19},
        {"UEDITOR_MAX", 20},
    };
    for (const auto& [name, value] : names) {
        EXPECT_EQ(StringToMillDrillOperationType(name), kind(value)) << name;
    }
}

TEST(OperationType, BoringAndThreadMillingWriteBackUnderTheirKindsNames) {
    EXPECT_EQ(millDrillOperationTypeToString(StringToMillDrillOperationType("BORING")), "DRILLING");
    EXPECT_EQ(millDrillOperationTypeToString(StringToMillDrillOperationType("threadmilling")),
              "THREADING");
}

TEST(OperationType, KindsWithoutNameWriteEmptyText) {
    for (const int value : {0, 15, 21, 30, 40, 41, 42, -1, 43}) {
        EXPECT_EQ(millDrillOperationTypeToString(kind(value)), "") << value;
    }
    EXPECT_EQ(millDrillOperationTypeToString(Kind::UEDITOR_MAX), "UEDITOR_MAX");
}

TEST(OperationType, HostNumbers) {
    EXPECT_EQ(millDrillOperationTypeToVelk(kind(42)), -1);
    EXPECT_EQ(millDrillOperationTypeToVelk(kind(10)), -1);
    EXPECT_EQ(millDrillOperationTypeToVelk(kind(9)), 4);
    EXPECT_EQ(millDrillOperationTypeToVelk(kind(41)), 4);
    EXPECT_EQ(millDrillOperationTypeToVelk(kind(0)), 4);
    EXPECT_EQ(millDrillOperationTypeToVelk(kind(15)), 4);
    EXPECT_EQ(millDrillOperationTypeToVelk(kind(-3)), 4);
    EXPECT_EQ(millDrillOperationTypeToVelk(kind(43)), 4);
    for (const Kind three :
         {Kind::PROFILE, Kind::CORNER, Kind::CHAMFER, Kind::RSURFING, Kind::SLOT}) {
        EXPECT_EQ(millDrillOperationTypeToVelk(three), 3);
    }
    EXPECT_EQ(millDrillOperationTypeToVelk(Kind::DRILLING), 5);
    EXPECT_EQ(millDrillOperationTypeToVelk(Kind::POCCYCLE), 15);
    EXPECT_EQ(millDrillOperationTypeToVelk(Kind::THREADING), 15);
    EXPECT_EQ(millDrillOperationTypeToVelk(Kind::MEDITOR), 9);
    EXPECT_EQ(millDrillOperationTypeToVelk(Kind::UEDITOR_MAX), 9);
    EXPECT_EQ(millDrillOperationTypeToVelk(Kind::MOVING), 6);
    EXPECT_EQ(millDrillOperationTypeToVelk(Kind::MILL_5AX), 64);
    EXPECT_EQ(millDrillOperationTypeToVelk(Kind::FACEMILL), 10);
    EXPECT_EQ(millDrillOperationTypeToVelk(Kind::POCKET), 4);
    EXPECT_EQ(millDrillOperationTypeToVelk(Kind::STD3DGEO), 4);
}

class StoredOperationTypeTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setStore(2, {{"0 1 1 1", "first"},
                            {"0 1 1 1", "second"},
                            {"0 1 1 1", "third"},
                            {"4 1 3 1 0 1", "Pocket", "pocket"},
                            {"5 1 3 1 0 1", "Holes", "POCKET"},
                            {"3 1 2 1 0", "No parameters"},
                            {"4 1 3 1 0 1", "Odd", "SPIRAL"}});
    }
};

TEST_F(StoredOperationTypeTest, OperationsBelowThreeAreNoMachiningWithoutTouchingTheStore) {
    for (const int nr : {0, 1, 2}) {
        EXPECT_EQ(MillDrillOperation::GetOperationType(2, nr), Kind::REDRAW);
    }
    EXPECT_EQ(host().callCount("VelkMacroVdmExists"), 0);
    MillTurnVdm vdm(2);
    EXPECT_EQ(GetMillDrillOperationType(&vdm, 1), Kind::REDRAW);
    EXPECT_EQ(GetMillDrillOperationType(nullptr, 5), Kind::REDRAW);
}

TEST_F(StoredOperationTypeTest, KindComesFromTheParameterSectionsFirstLine) {
    EXPECT_EQ(MillDrillOperation::GetOperationType(2, 3), Kind::POCKET);
    EXPECT_EQ(MillDrillOperation::GetOperationType(2, 6), Kind::Unknown);
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(StoredOperationTypeTest, ClosesTheStoreItOpenedOnce) {
    EXPECT_EQ(MillDrillOperation::GetOperationType(2, 3), Kind::POCKET);
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 1);
    EXPECT_EQ(host().callCount("VelkMacroVdmClose"), 1);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(StoredOperationTypeTest, AStoreClosedBehindItsBackIsLetGoWithoutAMessageOfItsOwn) {
    host().closeBehindLibraryOnOpen(2, true);
    testsupport::ErrorLogWatch log;
    EXPECT_EQ(MillDrillOperation::GetOperationType(2, 3), Kind::REDRAW);
    // Only the read that found the store closed speaks; closing adds nothing.
    EXPECT_EQ(boxes(), std::vector<std::string>{"VelkApi::MillTurnVdm|2: Operation 3 (0 based) "
                                                "out of range (0 oprations)"});
    EXPECT_EQ(host().callCount("VelkMacroVdmClose"), 0);
    EXPECT_TRUE(log.texts().empty());
    // No handle stays behind: the store opens again, with no box.
    host().clearFaults();
    host().clearMessageBoxes();
    EXPECT_EQ(MillDrillOperation::GetOperationType(2, 3), Kind::POCKET);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(StoredOperationTypeTest, OperationWithoutParameterLinesIsNoMachining) {
    EXPECT_EQ(MillDrillOperation::GetOperationType(2, 5), Kind::REDRAW);
    EXPECT_EQ(boxes(), std::vector<std::string>{"VelkApi::MillTurnVdm|2: Operation 5 section 2 "
                                                "(0 based) out of range (2 sections)"});
}

TEST_F(StoredOperationTypeTest, MissingStoreOrOperationIsNoMachining) {
    EXPECT_EQ(MillDrillOperation::GetOperationType(99, 3), Kind::REDRAW);
    EXPECT_EQ(MillDrillOperation::GetOperationType(2, 7), Kind::REDRAW);
}

TEST_F(StoredOperationTypeTest, HeaderTypeFiveIsDrillingWhateverTheParametersSay) {
    const MillDrillOperationDecl decl(2, 4, 0);
    EXPECT_EQ(decl.getType(), Kind::DRILLING);
    EXPECT_EQ(decl.getDescription(), "Holes");
    EXPECT_EQ(decl.getNr(), 4);
    EXPECT_EQ(decl.getVdmName(), 2);
    EXPECT_EQ(decl.getMode(), 0);
    MillTurnVdm vdm(2);
    ASSERT_TRUE(vdm.Create());
    ASSERT_TRUE(vdm.LoadOperation(4));
    EXPECT_EQ(GetMillDrillOperationType(&vdm, 4), Kind::DRILLING);
    vdm.Close();
}

TEST_F(StoredOperationTypeTest, HeaderTypeFifteenIsPocketCycle) {
    host().setStore(2, {{"0 1 0"}, {"0 1 0"}, {"0 1 0"}, {"15 1 3 1 0 1", "Cycle", "PROFILE"}});
    EXPECT_EQ(MillDrillOperationDecl(2, 3, 1).getType(), Kind::POCCYCLE);
}

TEST_F(StoredOperationTypeTest, DeclListsDescriptionAndKind) {
    const MillDrillOperationDecl decl(2, 3, 1);
    EXPECT_EQ(decl.getType(), Kind::POCKET);
    EXPECT_EQ(decl.getDescription(), "Pocket");
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
}

TEST_F(StoredOperationTypeTest, DeclOfAMissingStoreStaysEmpty) {
    const MillDrillOperationDecl decl(99, 3, 1);
    EXPECT_EQ(decl.getDescription(), "");
    EXPECT_EQ(decl.getType(), Kind::REDRAW);
}
