#include <array>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "OfflineHostTest.h"

namespace offlinehost {
namespace {

using velkhost::Record;
using velkhost::Records;

constexpr int kStore = 100;
constexpr int kLineBuffer = 5000;
constexpr char kCanary = '#';

const Records kOperations = {
    {"OP 1 DRILL", "a=1", "b=2"},
    {"OP 2 MILL", "c=3"},
    {"OP 3 TEXT"},
};

class StoreTest : public OfflineHostTest {
  protected:
    void SetUp() override {
        OfflineHostTest::SetUp();
        host.setStore(kStore, kOperations);
        handle = VelkMacroVdmOpen(kStore, 0);
        ASSERT_GT(handle, 0);
    }

    // The next line at the handle's position, or "<none>" when SingleGet$ refuses.
    static std::string next(int at) {
        std::array<char, kLineBuffer> buffer{};
        return VelkMacroVdmSingleGet$(at, buffer.data(), 1) ? std::string(buffer.data()) : "<none>";
    }
    std::string next() const { return next(handle); }

    void moveTo(int record, int line) const {
        ASSERT_NE(VelkMacroVdmSeek(handle, record, 0), 0);
        ASSERT_NE(VelkMacroVdmSingleSeek(handle, line), 0);
    }

    const Records& stored() const { return host.records(kStore); }

    int handle = 0;
};

TEST_F(StoreTest, ExistsOnlyForStoresOfTheProject) {
    EXPECT_EQ(VelkMacroVdmExists(kStore), 1);
    EXPECT_EQ(VelkMacroVdmExists(101), 0);
    host.removeStore(kStore);
    EXPECT_EQ(VelkMacroVdmExists(kStore), 0);
}

TEST_F(StoreTest, StoreNumbersAreListedAscending) {
    host.setStore(10, {});
    host.setStore(-2, {{"x"}});
    EXPECT_EQ(host.storeNumbers(), (std::vector<int>{-2, 10, kStore}));
    host.removeStore(10);
    EXPECT_EQ(host.storeNumbers(), (std::vector<int>{-2, kStore}));
}

TEST_F(StoreTest, TakingAStoreHandsOverItsRecordsAndRemovesIt) {
    host.setStore(10, {{"0 1 1 1", "first"}, {"0 1 1 1", "second"}});
    EXPECT_EQ(host.takeStore(10), (Records{{"0 1 1 1", "first"}, {"0 1 1 1", "second"}}));
    EXPECT_FALSE(host.hasStore(10));
    EXPECT_EQ(VelkMacroVdmExists(10), 0);
    EXPECT_THROW(host.takeStore(10), std::out_of_range);
}

TEST_F(StoreTest, TakingAStoreClosesItsHandles) {
    host.takeStore(kStore);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 0);
    EXPECT_EQ(VelkMacroVdmClose(handle), 0);
}

TEST_F(StoreTest, OpenGivesAFreshPositiveHandleEachTime) {
    const int second = VelkMacroVdmOpen(kStore, 0);
    EXPECT_GT(second, 0);
    EXPECT_NE(second, handle);
    ASSERT_NE(VelkMacroVdmClose(second), 0);
    const int third = VelkMacroVdmOpen(kStore, 0);
    EXPECT_NE(third, second);
    EXPECT_NE(third, handle);
}

TEST_F(StoreTest, OpenOfAnUnknownStoreFails) {
    EXPECT_EQ(VelkMacroVdmOpen(101, 0), -1);
}

TEST_F(StoreTest, CloseSucceedsOnlyWhileTheHandleIsOpen) {
    EXPECT_NE(VelkMacroVdmClose(handle), 0);
    EXPECT_EQ(VelkMacroVdmClose(handle), 0);
    EXPECT_EQ(VelkMacroVdmClose(0), 0);
    EXPECT_EQ(VelkMacroVdmClose(-1), 0);
}

TEST_F(StoreTest, CheckOpenCountsTheHandlesOnTheStore) {
    host.setStore(7, {{"OP"}});
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 1);
    const int second = VelkMacroVdmOpen(kStore, 0);
    const int other = VelkMacroVdmOpen(7, 0);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 2);
    EXPECT_EQ(VelkMacroVdmCheckOpen(7), 1);
    VelkMacroVdmClose(second);
    VelkMacroVdmClose(handle);
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 0);
    EXPECT_EQ(VelkMacroVdmCheckOpen(7), 1);
    VelkMacroVdmClose(other);
    EXPECT_EQ(VelkMacroVdmCheckOpen(101), 0);
}

TEST_F(StoreTest, SizeIsTheNumberOfRecords) {
    EXPECT_EQ(VelkMacroVdmSize(handle), 3);
    host.setStore(7, {});
    EXPECT_EQ(VelkMacroVdmSize(VelkMacroVdmOpen(7, 0)), 0);
}

TEST_F(StoreTest, AFreshHandleStandsOnTheHeaderOfTheFirstRecord) {
    EXPECT_EQ(next(), "OP 1 DRILL");
}

TEST_F(StoreTest, GetReadsTheLinesOfOneRecordInOrder) {
    EXPECT_EQ(next(), "OP 1 DRILL");
    EXPECT_EQ(next(), "a=1");
    EXPECT_EQ(next(), "b=2");
    EXPECT_EQ(next(), "<none>");
    ASSERT_NE(VelkMacroVdmSingleSeek(handle, -1), 0);
    EXPECT_EQ(next(), "b=2");
}

TEST_F(StoreTest, GetAtTheEndOfARecordLeavesTheBufferAlone) {
    moveTo(1, 2);
    std::array<char, kLineBuffer> buffer{};
    buffer.fill(kCanary);
    EXPECT_EQ(VelkMacroVdmSingleGet$(handle, buffer.data(), 1), 0);
    EXPECT_EQ(buffer[0], kCanary);
}

TEST_F(StoreTest, GetIntoANullBufferFails) {
    EXPECT_EQ(VelkMacroVdmSingleGet$(handle, nullptr, 1), 0);
    EXPECT_EQ(next(), "OP 1 DRILL");
}

TEST_F(StoreTest, GetIgnoresItsCountArgument) {
    std::array<char, kLineBuffer> buffer{};
    ASSERT_NE(VelkMacroVdmSingleGet$(handle, buffer.data(), 7), 0);
    EXPECT_STREQ(buffer.data(), "OP 1 DRILL");
    EXPECT_EQ(next(), "a=1");
}

TEST_F(StoreTest, SeekGoesToTheHeaderOfARecord) {
    next();
    EXPECT_NE(VelkMacroVdmSeek(handle, 1, 0), 0);
    EXPECT_EQ(next(), "OP 2 MILL");
    EXPECT_NE(VelkMacroVdmSeek(handle, 0, 0), 0);
    EXPECT_EQ(next(), "OP 1 DRILL");
}

TEST_F(StoreTest, SeekRefusesPositionsOutsideTheStoreAndOtherOrigins) {
    moveTo(1, 1);
    EXPECT_EQ(VelkMacroVdmSeek(handle, -1, 0), 0);
    EXPECT_EQ(VelkMacroVdmSeek(handle, 4, 0), 0);
    EXPECT_EQ(VelkMacroVdmSeek(handle, 0, 1), 0);
    EXPECT_EQ(VelkMacroVdmSeek(handle, 0, 2), 0);
    EXPECT_EQ(next(), "c=3");
    EXPECT_EQ(stored(), kOperations);
}

TEST_F(StoreTest, AtTheEndOfTheStoreOnlyInsertWorks) {
    ASSERT_NE(VelkMacroVdmSeek(handle, 3, 0), 0);
    EXPECT_EQ(VelkMacroVdmSingleSeek(handle, 0), 0);
    EXPECT_EQ(VelkMacroVdmSingleAdd$(handle, "x", 1), 0);
    EXPECT_EQ(VelkMacroVdmSingleReplace$(handle, "x", 1), 0);
    EXPECT_EQ(VelkMacroVdmSingleDelete(handle, 0), 0);
    EXPECT_EQ(next(), "<none>");
    EXPECT_EQ(stored(), kOperations);

    ASSERT_NE(VelkMacroVdmInsert$(handle, "OP 4 NEW", 1), 0);
    Records expected = kOperations;
    expected.push_back({"OP 4 NEW"});
    EXPECT_EQ(stored(), expected);
    EXPECT_EQ(next(), "OP 4 NEW");
}

TEST_F(StoreTest, SingleSeekMovesWithinTheRecord) {
    EXPECT_NE(VelkMacroVdmSingleSeek(handle, 2), 0);
    EXPECT_EQ(next(), "b=2");
    EXPECT_NE(VelkMacroVdmSingleSeek(handle, -3), 0);
    EXPECT_EQ(next(), "OP 1 DRILL");
    EXPECT_NE(VelkMacroVdmSingleSeek(handle, 0), 0);
    EXPECT_EQ(next(), "a=1");
}

TEST_F(StoreTest, SingleSeekMayReachTheEndOfTheRecord) {
    EXPECT_NE(VelkMacroVdmSingleSeek(handle, 3), 0);
    EXPECT_EQ(next(), "<none>");
}

TEST_F(StoreTest, SingleSeekRefusesToLeaveTheRecord) {
    moveTo(0, 1);
    EXPECT_EQ(VelkMacroVdmSingleSeek(handle, 3), 0);
    EXPECT_EQ(VelkMacroVdmSingleSeek(handle, -2), 0);
    EXPECT_EQ(next(), "a=1");
}

TEST_F(StoreTest, AddInsertsBeforeTheCurrentLineAndMovesPastIt) {
    moveTo(0, 1);
    ASSERT_NE(VelkMacroVdmSingleAdd$(handle, "new", 1), 0);
    EXPECT_EQ(next(), "a=1");
    EXPECT_EQ(host.lines(kStore, 0), (Record{"OP 1 DRILL", "new", "a=1", "b=2"}));
}

TEST_F(StoreTest, AddAtTheEndOfTheRecordAppends) {
    moveTo(1, 2);
    ASSERT_NE(VelkMacroVdmSingleAdd$(handle, "d=4", 1), 0);
    ASSERT_NE(VelkMacroVdmSingleAdd$(handle, "e=5", 1), 0);
    EXPECT_EQ(host.lines(kStore, 1), (Record{"OP 2 MILL", "c=3", "d=4", "e=5"}));
    EXPECT_EQ(next(), "<none>");
}

TEST_F(StoreTest, AddOfANullLineFails) {
    EXPECT_EQ(VelkMacroVdmSingleAdd$(handle, nullptr, 1), 0);
    EXPECT_EQ(stored(), kOperations);
    EXPECT_EQ(next(), "OP 1 DRILL");
}

TEST_F(StoreTest, ReplaceChangesTheCurrentLineAndStays) {
    moveTo(0, 2);
    ASSERT_NE(VelkMacroVdmSingleReplace$(handle, "b=20", 1), 0);
    EXPECT_EQ(next(), "b=20");
    EXPECT_EQ(host.lines(kStore, 0), (Record{"OP 1 DRILL", "a=1", "b=20"}));
}

TEST_F(StoreTest, ReplaceAtTheEndOfTheRecordFails) {
    moveTo(0, 3);
    EXPECT_EQ(VelkMacroVdmSingleReplace$(handle, "x", 1), 0);
    EXPECT_EQ(VelkMacroVdmSingleReplace$(handle, nullptr, 1), 0);
    EXPECT_EQ(stored(), kOperations);
}

TEST_F(StoreTest, DeleteRemovesLinesFromTheCurrentOneAndStays) {
    moveTo(0, 1);
    ASSERT_NE(VelkMacroVdmSingleDelete(handle, 2), 0);
    EXPECT_EQ(host.lines(kStore, 0), (Record{"OP 1 DRILL"}));
    EXPECT_EQ(next(), "<none>");
}

TEST_F(StoreTest, DeleteInTheMiddleKeepsTheFollowingLineCurrent) {
    moveTo(0, 1);
    ASSERT_NE(VelkMacroVdmSingleDelete(handle, 1), 0);
    EXPECT_EQ(next(), "b=2");
    EXPECT_EQ(host.lines(kStore, 0), (Record{"OP 1 DRILL", "b=2"}));
}

TEST_F(StoreTest, DeleteOfNoLinesIsDone) {
    moveTo(0, 3);
    EXPECT_NE(VelkMacroVdmSingleDelete(handle, 0), 0);
    EXPECT_EQ(stored(), kOperations);
}

TEST_F(StoreTest, DeleteRefusesANegativeCountOrMoreLinesThanFollow) {
    moveTo(0, 1);
    EXPECT_EQ(VelkMacroVdmSingleDelete(handle, -1), 0);
    EXPECT_EQ(VelkMacroVdmSingleDelete(handle, 3), 0);
    EXPECT_EQ(stored(), kOperations);
    EXPECT_EQ(next(), "a=1");
}

TEST_F(StoreTest, InsertAddsARecordBeforeTheCurrentOneAndGoesToIt) {
    moveTo(1, 1);
    ASSERT_NE(VelkMacroVdmInsert$(handle, "OP NEW", 1), 0);
    EXPECT_EQ(stored(), (Records{kOperations[0], {"OP NEW"}, kOperations[1], kOperations[2]}));
    EXPECT_EQ(VelkMacroVdmSize(handle), 4);
    EXPECT_EQ(next(), "OP NEW");
    EXPECT_EQ(next(), "<none>");
}

TEST_F(StoreTest, InsertAtTheFirstRecordPrepends) {
    ASSERT_NE(VelkMacroVdmInsert$(handle, "OP 0", 1), 0);
    EXPECT_EQ(host.lines(kStore, 0), (Record{"OP 0"}));
    EXPECT_EQ(host.lines(kStore, 1), kOperations[0]);
}

TEST_F(StoreTest, InsertOfNullTextFails) {
    EXPECT_EQ(VelkMacroVdmInsert$(handle, nullptr, 1), 0);
    EXPECT_EQ(stored(), kOperations);
}

TEST_F(StoreTest, ACreatedRecordTakesFurtherLines) {
    ASSERT_NE(VelkMacroVdmSeek(handle, 3, 0), 0);
    ASSERT_NE(VelkMacroVdmInsert$(handle, "OP 4 NEW", 1), 0);
    ASSERT_NE(VelkMacroVdmSingleSeek(handle, 1), 0);
    ASSERT_NE(VelkMacroVdmSingleAdd$(handle, "f=6", 1), 0);
    EXPECT_EQ(host.lines(kStore, 3), (Record{"OP 4 NEW", "f=6"}));
}

TEST_F(StoreTest, EveryCallOnAClosedOrUnknownHandleFails) {
    VelkMacroVdmClose(handle);
    for (const int stale : {handle, 0, -1, 12345}) {
        std::array<char, kLineBuffer> buffer{};
        buffer.fill(kCanary);
        EXPECT_EQ(VelkMacroVdmSize(stale), 0);
        EXPECT_EQ(VelkMacroVdmSeek(stale, 0, 0), 0);
        EXPECT_EQ(VelkMacroVdmSingleSeek(stale, 0), 0);
        EXPECT_EQ(VelkMacroVdmSingleGet$(stale, buffer.data(), 1), 0);
        EXPECT_EQ(VelkMacroVdmSingleAdd$(stale, "x", 1), 0);
        EXPECT_EQ(VelkMacroVdmSingleReplace$(stale, "x", 1), 0);
        EXPECT_EQ(VelkMacroVdmInsert$(stale, "x", 1), 0);
        EXPECT_EQ(VelkMacroVdmSingleDelete(stale, 0), 0);
        EXPECT_EQ(VelkMacroVdmClose(stale), 0);
        EXPECT_EQ(buffer[0], kCanary);
    }
    EXPECT_EQ(stored(), kOperations);
}

TEST_F(StoreTest, TwoHandlesKeepTheirOwnPositions) {
    const int other = VelkMacroVdmOpen(kStore, 0);
    ASSERT_NE(VelkMacroVdmSeek(other, 1, 0), 0);
    EXPECT_EQ(next(handle), "OP 1 DRILL");
    EXPECT_EQ(next(other), "OP 2 MILL");
    EXPECT_EQ(next(handle), "a=1");
    EXPECT_EQ(next(other), "c=3");
}

TEST_F(StoreTest, AnotherHandleSeesChangesAtItsOwnPosition) {
    const int other = VelkMacroVdmOpen(kStore, 0);
    moveTo(0, 1);
    ASSERT_NE(VelkMacroVdmSingleReplace$(handle, "a=10", 1), 0);
    ASSERT_NE(VelkMacroVdmSingleSeek(other, 1), 0);
    EXPECT_EQ(next(other), "a=10");
}

TEST_F(StoreTest, ReplacingAStoreKeepsPositionsAndRefusesThoseThatAreGone) {
    moveTo(2, 1);
    host.setStore(kStore, {{"ONLY"}});
    EXPECT_EQ(VelkMacroVdmSize(handle), 1);
    EXPECT_EQ(next(), "<none>");
    EXPECT_EQ(VelkMacroVdmSingleAdd$(handle, "x", 1), 0);
    EXPECT_EQ(VelkMacroVdmInsert$(handle, "x", 1), 0);
    EXPECT_EQ(host.records(kStore), (Records{{"ONLY"}}));
    ASSERT_NE(VelkMacroVdmSeek(handle, 0, 0), 0);
    EXPECT_EQ(next(), "ONLY");
}

TEST_F(StoreTest, RemovingAStoreClosesItsHandles) {
    host.removeStore(kStore);
    EXPECT_FALSE(host.hasStore(kStore));
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 0);
    EXPECT_EQ(VelkMacroVdmClose(handle), 0);
}

TEST_F(StoreTest, RecordsAndLinesOfWhatDoesNotExistThrow) {
    EXPECT_THROW(host.records(101), std::out_of_range);
    EXPECT_THROW(host.lines(101, 0), std::out_of_range);
    EXPECT_THROW(host.lines(kStore, 3), std::out_of_range);
    EXPECT_THROW(host.lines(kStore, -1), std::out_of_range);
}

class StoreLineLimitTest : public StoreTest {
  protected:
    // Reads the current line into a buffer of exactly 5000 bytes followed by canaries.
    std::string readIntoGuardedBuffer() const {
        std::vector<char> guarded(kLineBuffer + kGuard, kCanary);
        EXPECT_NE(VelkMacroVdmSingleGet$(handle, guarded.data(), 1), 0);
        const std::size_t length = std::strlen(guarded.data());
        for (std::size_t i = length + 1; i < guarded.size(); ++i) {
            EXPECT_EQ(guarded[i], kCanary) << "byte " << i << " written";
        }
        return std::string(guarded.data(), length);
    }

    static constexpr std::size_t kGuard = 64;
};

TEST_F(StoreLineLimitTest, ShortLineWritesNothingAfterItsZeroByte) {
    EXPECT_EQ(readIntoGuardedBuffer(), "OP 1 DRILL");
}

TEST_F(StoreLineLimitTest, StoredLinesUpTo4999BytesComeBackWhole) {
    host.setStore(kStore, {{textOfLength(4999)}});
    EXPECT_EQ(readIntoGuardedBuffer(), textOfLength(4999));
}

TEST_F(StoreLineLimitTest, LongerStoredLinesComeBackCutTo4999Bytes) {
    host.setStore(kStore, {{textOfLength(5000), textOfLength(10000)}});
    EXPECT_EQ(readIntoGuardedBuffer(), textOfLength(4999));
    EXPECT_EQ(readIntoGuardedBuffer(), textOfLength(4999));
    EXPECT_EQ(host.lines(kStore, 0)[1], textOfLength(10000));
}

TEST_F(StoreLineLimitTest, WrittenLinesAreStoredCutTo4999Bytes) {
    for (const std::size_t length : {4999U, 5000U, 10000U}) {
        host.setStore(kStore, {{"OP", "x"}});
        ASSERT_NE(VelkMacroVdmSeek(handle, 0, 0), 0);
        ASSERT_NE(VelkMacroVdmSingleAdd$(handle, textOfLength(length).c_str(), 1), 0);
        ASSERT_NE(VelkMacroVdmSingleReplace$(handle, textOfLength(length).c_str(), 1), 0);
        ASSERT_NE(VelkMacroVdmInsert$(handle, textOfLength(length).c_str(), 1), 0);
        const std::string kept = textOfLength(4999);
        EXPECT_EQ(host.records(kStore), (Records{{kept}, {kept, kept, "x"}})) << length;
    }
}

}  // namespace
}  // namespace offlinehost
