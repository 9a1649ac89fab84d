#include <array>
#include <string>

#include "OfflineHostTest.h"

namespace offlinehost {
namespace {

using velkhost::Records;

constexpr int kStore = 100;
constexpr int kOtherStore = 200;

const Records kOperations = {{"OP 1 DRILL", "a=1"}, {"OP 2 MILL"}};

class FaultTest : public OfflineHostTest {
  protected:
    void SetUp() override {
        OfflineHostTest::SetUp();
        host.setStore(kStore, kOperations);
        host.setStore(kOtherStore, kOperations);
    }
};

TEST_F(FaultTest, AStoreHeldElsewhereCountsOneMoreHolder) {
    host.holdOpenElsewhere(kStore, true);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 1);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kOtherStore), 0);
    const int handle = VelkMacroVdmOpen(kStore, 0);
    EXPECT_GT(handle, 0);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 2);
    VelkMacroVdmClose(handle);
    host.holdOpenElsewhere(kStore, false);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 0);
}

TEST_F(FaultTest, AFailingOpenReturnsMinusOne) {
    host.failOpen(kStore, true);
    EXPECT_EQ(VelkMacroVdmOpen(kStore, 0), -1);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 0);
    EXPECT_GT(VelkMacroVdmOpen(kOtherStore, 0), 0);
    host.failOpen(kStore, false);
    EXPECT_GT(VelkMacroVdmOpen(kStore, 0), 0);
}

TEST_F(FaultTest, AddsFailAfterTheGivenNumberOfSuccessfulOnes) {
    host.failAddsAfter(kStore, 2);
    const int handle = VelkMacroVdmOpen(kStore, 0);
    ASSERT_NE(VelkMacroVdmSingleSeek(handle, 2), 0);
    EXPECT_NE(VelkMacroVdmSingleAdd$(handle, "b=2", 1), 0);
    EXPECT_NE(VelkMacroVdmSingleAdd$(handle, "c=3", 1), 0);
    EXPECT_EQ(VelkMacroVdmSingleAdd$(handle, "d=4", 1), 0);
    EXPECT_EQ(VelkMacroVdmSingleAdd$(handle, "d=4", 1), 0);
    EXPECT_EQ(host.lines(kStore, 0), (velkhost::Record{"OP 1 DRILL", "a=1", "b=2", "c=3"}));
}

TEST_F(FaultTest, AFailedAddKeepsThePosition) {
    host.failAddsAfter(kStore, 0);
    const int handle = VelkMacroVdmOpen(kStore, 0);
    EXPECT_EQ(VelkMacroVdmSingleAdd$(handle, "x", 1), 0);
    std::array<char, 5000> buffer{};
    ASSERT_NE(VelkMacroVdmSingleGet$(handle, buffer.data(), 1), 0);
    EXPECT_STREQ(buffer.data(), "OP 1 DRILL");
    EXPECT_EQ(host.records(kStore), kOperations);
}

TEST_F(FaultTest, AddsRefusedForTheirPositionDoNotUseUpTheAllowance) {
    host.failAddsAfter(kStore, 1);
    const int handle = VelkMacroVdmOpen(kStore, 0);
    ASSERT_NE(VelkMacroVdmSeek(handle, 2, 0), 0);
    EXPECT_EQ(VelkMacroVdmSingleAdd$(handle, "x", 1), 0);
    ASSERT_NE(VelkMacroVdmSeek(handle, 1, 0), 0);
    EXPECT_NE(VelkMacroVdmSingleAdd$(handle, "x", 1), 0);
}

TEST_F(FaultTest, FailingAddsTouchNoOtherCallNorStore) {
    host.failAddsAfter(kStore, 0);
    const int handle = VelkMacroVdmOpen(kStore, 0);
    EXPECT_NE(VelkMacroVdmSingleReplace$(handle, "OP 1 RENAMED", 1), 0);
    EXPECT_NE(VelkMacroVdmInsert$(handle, "OP 0", 1), 0);
    EXPECT_NE(VelkMacroVdmSingleDelete(handle, 1), 0);
    const int other = VelkMacroVdmOpen(kOtherStore, 0);
    EXPECT_NE(VelkMacroVdmSingleAdd$(other, "x", 1), 0);
}

TEST_F(FaultTest, MinusOneLiftsTheAddLimit) {
    host.failAddsAfter(kStore, 0);
    host.failAddsAfter(kStore, -1);
    const int handle = VelkMacroVdmOpen(kStore, 0);
    EXPECT_NE(VelkMacroVdmSingleAdd$(handle, "x", 1), 0);
}

TEST_F(FaultTest, ClosingBehindTheLibraryInvalidatesEveryHandleOnTheStore) {
    const int first = VelkMacroVdmOpen(kStore, 0);
    const int second = VelkMacroVdmOpen(kStore, 0);
    const int other = VelkMacroVdmOpen(kOtherStore, 0);
    host.closeBehindLibrary(kStore);

    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 0);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kOtherStore), 1);
    for (const int handle : {first, second}) {
        std::array<char, 5000> buffer{};
        EXPECT_EQ(VelkMacroVdmSize(handle), 0);
        EXPECT_EQ(VelkMacroVdmSeek(handle, 0, 0), 0);
        EXPECT_EQ(VelkMacroVdmSingleSeek(handle, 1), 0);
        EXPECT_EQ(VelkMacroVdmSingleGet$(handle, buffer.data(), 1), 0);
        EXPECT_EQ(VelkMacroVdmSingleAdd$(handle, "x", 1), 0);
        EXPECT_EQ(VelkMacroVdmSingleReplace$(handle, "x", 1), 0);
        EXPECT_EQ(VelkMacroVdmInsert$(handle, "x", 1), 0);
        EXPECT_EQ(VelkMacroVdmSingleDelete(handle, 1), 0);
        EXPECT_EQ(VelkMacroVdmClose(handle), 0);
    }
    EXPECT_EQ(host.records(kStore), kOperations);
    EXPECT_EQ(VelkMacroVdmSize(other), 2);
    EXPECT_GT(VelkMacroVdmOpen(kStore, 0), 0);
}

TEST_F(FaultTest, AStoreClosedOnOpenGivesOutAHandleThatNoCallTakes) {
    host.closeBehindLibraryOnOpen(kStore, true);
    const int handle = VelkMacroVdmOpen(kStore, 0);
    EXPECT_GT(handle, 0);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 0);
    std::array<char, 5000> buffer{};
    EXPECT_EQ(VelkMacroVdmSize(handle), 0);
    EXPECT_EQ(VelkMacroVdmSingleGet$(handle, buffer.data(), 1), 0);
    EXPECT_EQ(VelkMacroVdmSingleAdd$(handle, "x", 1), 0);
    EXPECT_EQ(VelkMacroVdmClose(handle), 0);
    EXPECT_EQ(host.records(kStore), kOperations);
    EXPECT_GT(VelkMacroVdmSize(VelkMacroVdmOpen(kOtherStore, 0)), 0);
    host.closeBehindLibraryOnOpen(kStore, false);
    EXPECT_EQ(VelkMacroVdmSize(VelkMacroVdmOpen(kStore, 0)), 2);
}

TEST_F(FaultTest, ClearFaultsLiftsEveryFault) {
    host.holdOpenElsewhere(kStore, true);
    host.failOpen(kStore, true);
    host.failAddsAfter(kStore, 0);
    host.closeBehindLibraryOnOpen(kStore, true);
    host.clearFaults();
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 0);
    const int handle = VelkMacroVdmOpen(kStore, 0);
    EXPECT_GT(handle, 0);
    EXPECT_NE(VelkMacroVdmSingleAdd$(handle, "x", 1), 0);
}

TEST_F(FaultTest, ResetLiftsFaultsAndClosesHandles) {
    const int handle = VelkMacroVdmOpen(kStore, 0);
    host.failOpen(kStore, true);
    host.holdOpenElsewhere(kStore, true);
    host.reset();
    host.setStore(kStore, kOperations);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 0);
    EXPECT_EQ(VelkMacroVdmClose(handle), 0);
    EXPECT_GT(VelkMacroVdmOpen(kStore, 0), 0);
}

}  // namespace
}  // namespace offlinehost
