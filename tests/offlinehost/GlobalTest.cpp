#include <array>
#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "OfflineHostTest.h"

namespace offlinehost {
namespace {

using velkhost::GlobalValue;

constexpr int kStringBuffer = 4096;
constexpr char kCanary = '#';
constexpr int kUntouched = -777;

class GlobalTest : public OfflineHostTest {
  protected:
    void SetUp() override {
        OfflineHostTest::SetUp();
        host.setGlobal("n_count", 3);
        host.setGlobal("w_depth", -2.75);
        host.setGlobal("s_name", std::string("Pocket 1"));
        host.setGlobal("n_list", std::vector<int>{10, 20, 30, 40});
        host.setGlobal("w_list", std::vector<double>{1.5, -2.5, 3.25});
    }

    // VelkReadGlobal$ into a 4096-byte buffer followed by canaries; checks nothing is written
    // after the zero byte.
    std::string readText(const char* name, int* textStatus) const {
        std::vector<char> guarded(kStringBuffer + kGuard, kCanary);
        VelkReadGlobal$(name, guarded.data(), textStatus);
        const std::size_t length = std::strlen(guarded.data());
        for (std::size_t i = length + 1; i < guarded.size(); ++i) {
            EXPECT_EQ(guarded[i], kCanary) << "byte " << i << " written";
        }
        return std::string(guarded.data(), length);
    }

    static constexpr std::size_t kGuard = 64;
    int status = kUntouched;
};

TEST_F(GlobalTest, ReadsAnIntGlobal) {
    EXPECT_EQ(VelkReadGlobalI("n_count", &status), 3);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(VelkReadGlobalW("n_count", &status), 3.0);
    EXPECT_EQ(status, 1);
}

TEST_F(GlobalTest, ReadsADoubleGlobalAndTruncatesItTowardZeroAsInt) {
    EXPECT_EQ(VelkReadGlobalW("w_depth", &status), -2.75);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(VelkReadGlobalI("w_depth", &status), -2);
    EXPECT_EQ(status, 1);
    host.setGlobal("w_depth", 2.99);
    EXPECT_EQ(VelkReadGlobalI("w_depth", &status), 2);
}

TEST_F(GlobalTest, DoublesOutsideTheIntRangeReadAsTheNearestInt) {
    host.setGlobal("w_depth", 1e12);
    EXPECT_EQ(VelkReadGlobalI("w_depth", &status), INT_MAX);
    host.setGlobal("w_depth", -1e12);
    EXPECT_EQ(VelkReadGlobalI("w_depth", &status), INT_MIN);
}

TEST_F(GlobalTest, NumericReadsOfUnknownNamesFail) {
    EXPECT_EQ(VelkReadGlobalI("n_missing", &status), 0);
    EXPECT_EQ(status, 0);
    status = kUntouched;
    EXPECT_EQ(VelkReadGlobalW("n_missing", &status), 0.0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(VelkReadGlobalI(nullptr, &status), 0);
    EXPECT_EQ(status, 0);
}

TEST_F(GlobalTest, NumericReadsOfTextAndArrayGlobalsFail) {
    for (const char* name : {"s_name", "n_list", "w_list"}) {
        status = kUntouched;
        EXPECT_EQ(VelkReadGlobalI(name, &status), 0) << name;
        EXPECT_EQ(status, 0) << name;
        status = kUntouched;
        EXPECT_EQ(VelkReadGlobalW(name, &status), 0.0) << name;
        EXPECT_EQ(status, 0) << name;
    }
}

TEST_F(GlobalTest, StatusPointersMayBeNull) {
    EXPECT_EQ(VelkReadGlobalI("n_count", nullptr), 3);
    EXPECT_EQ(VelkReadGlobalW("n_missing", nullptr), 0.0);
    VelkWriteGlobalI("n_count", 4, nullptr);
    VelkWriteGlobalW("n_missing", 4.0, nullptr);
    VelkWriteGlobal$("s_name", "x", nullptr);
    VelkReadGlobal$("s_name", std::array<char, kStringBuffer>{}.data(), nullptr);
    int values[1] = {};
    VelkReadGlobalArrayI("n_list", 1, 1, values, nullptr);
    VelkWriteGlobalArrayW("w_list", 9, 1, nullptr, nullptr);
    EXPECT_EQ(host.globalAs<int>("n_count"), 4);
    EXPECT_EQ(values[0], 10);
}

TEST_F(GlobalTest, ReadsATextGlobal) {
    EXPECT_EQ(readText("s_name", &status), "Pocket 1");
    EXPECT_EQ(status, 1);
}

TEST_F(GlobalTest, NumericGlobalsAreNotReadableAsText) {
    for (const char* name : {"n_count", "w_depth", "n_list", "n_missing"}) {
        status = kUntouched;
        EXPECT_EQ(readText(name, &status), "") << name;
        EXPECT_EQ(status, 0) << name;
    }
}

TEST_F(GlobalTest, TextReadIntoANullBufferFails) {
    VelkReadGlobal$("s_name", nullptr, &status);
    EXPECT_EQ(status, 0);
}

TEST_F(GlobalTest, TextsUpTo4095BytesAreReadWhole) {
    host.setGlobal("s_name", textOfLength(4095));
    EXPECT_EQ(readText("s_name", &status), textOfLength(4095));
    EXPECT_EQ(status, 1);
}

TEST_F(GlobalTest, LongerTextsAreReadCutTo4095Bytes) {
    for (const std::size_t length : {4096U, 10000U}) {
        host.setGlobal("s_name", textOfLength(length));
        EXPECT_EQ(readText("s_name", &status), textOfLength(4095)) << length;
        EXPECT_EQ(status, 1);
    }
}

TEST_F(GlobalTest, WritesKeepTheKindOfTheGlobal) {
    VelkWriteGlobalW("n_count", 2.7, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(host.global("n_count"), GlobalValue(2));
    VelkWriteGlobalW("n_count", -2.7, &status);
    EXPECT_EQ(host.global("n_count"), GlobalValue(-2));
    VelkWriteGlobalI("w_depth", 7, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(host.global("w_depth"), GlobalValue(7.0));
}

TEST_F(GlobalTest, WritesNumbersOfTheSameKind) {
    VelkWriteGlobalI("n_count", 12, &status);
    EXPECT_EQ(status, 1);
    VelkWriteGlobalW("w_depth", 0.125, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(host.globalAs<int>("n_count"), 12);
    EXPECT_EQ(host.globalAs<double>("w_depth"), 0.125);
}

TEST_F(GlobalTest, WritesToUnknownNamesFailAndCreateNothing) {
    VelkWriteGlobalI("n_new", 1, &status);
    EXPECT_EQ(status, 0);
    status = kUntouched;
    VelkWriteGlobalW("w_new", 1.0, &status);
    EXPECT_EQ(status, 0);
    status = kUntouched;
    VelkWriteGlobal$("s_new", "x", &status);
    EXPECT_EQ(status, 0);
    VelkWriteGlobalI(nullptr, 1, &status);
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(host.global("n_new"));
    EXPECT_FALSE(host.global("w_new"));
    EXPECT_FALSE(host.global("s_new"));
}

TEST_F(GlobalTest, NumericWritesToTextAndArrayGlobalsFail) {
    for (const char* name : {"s_name", "n_list", "w_list"}) {
        const auto before = host.global(name);
        status = kUntouched;
        VelkWriteGlobalI(name, 1, &status);
        EXPECT_EQ(status, 0) << name;
        status = kUntouched;
        VelkWriteGlobalW(name, 1.0, &status);
        EXPECT_EQ(status, 0) << name;
        EXPECT_EQ(host.global(name), before) << name;
    }
}

TEST_F(GlobalTest, WritesATextGlobal) {
    VelkWriteGlobal$("s_name", "Contour 2", &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(host.globalAs<std::string>("s_name"), "Contour 2");
}

TEST_F(GlobalTest, TextWritesToNumericGlobalsOrOfNullFail) {
    VelkWriteGlobal$("n_count", "5", &status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(host.global("n_count"), GlobalValue(3));
    status = kUntouched;
    VelkWriteGlobal$("s_name", nullptr, &status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(host.globalAs<std::string>("s_name"), "Pocket 1");
}

TEST_F(GlobalTest, WrittenTextsAreCutTo4095Bytes) {
    for (const std::size_t length : {4095U, 4096U, 10000U}) {
        VelkWriteGlobal$("s_name", textOfLength(length).c_str(), &status);
        EXPECT_EQ(status, 1);
        EXPECT_EQ(host.globalAs<std::string>("s_name"), textOfLength(4095)) << length;
    }
}

TEST_F(GlobalTest, ReadsArraySlicesFromOneBasedPositions) {
    int integers[3] = {};
    VelkReadGlobalArrayI("n_list", 2, 3, integers, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(std::vector<int>(integers, integers + 3), (std::vector<int>{20, 30, 40}));
    double reals[3] = {};
    VelkReadGlobalArrayW("w_list", 1, 3, reals, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(std::vector<double>(reals, reals + 3), (std::vector<double>{1.5, -2.5, 3.25}));
}

TEST_F(GlobalTest, ArrayReadsConvertBetweenIntAndDouble) {
    int integers[3] = {};
    VelkReadGlobalArrayI("w_list", 1, 3, integers, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(std::vector<int>(integers, integers + 3), (std::vector<int>{1, -2, 3}));
    double reals[2] = {};
    VelkReadGlobalArrayW("n_list", 3, 2, reals, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(std::vector<double>(reals, reals + 2), (std::vector<double>{30.0, 40.0}));
}

TEST_F(GlobalTest, ArrayReadsOfNothingAreDone) {
    VelkReadGlobalArrayI("n_list", 5, 0, nullptr, &status);
    EXPECT_EQ(status, 1);
}

TEST_F(GlobalTest, ArrayReadsOutsideTheArrayCopyNothing) {
    struct Slice {
        const char* name;
        int first;
        int count;
    };
    for (const Slice slice :
         {Slice{"n_list", 0, 1}, Slice{"n_list", 1, -1}, Slice{"n_list", 4, 2},
          Slice{"n_list", 5, 1}, Slice{"n_list", INT_MAX, 2}, Slice{"n_missing", 1, 1},
          Slice{"n_count", 1, 1}, Slice{"s_name", 1, 1}}) {
        int integers[2] = {kUntouched, kUntouched};
        double reals[2] = {kUntouched, kUntouched};
        status = kUntouched;
        VelkReadGlobalArrayI(slice.name, slice.first, slice.count, integers, &status);
        EXPECT_EQ(status, 0) << slice.name << " " << slice.first << " " << slice.count;
        status = kUntouched;
        VelkReadGlobalArrayW(slice.name, slice.first, slice.count, reals, &status);
        EXPECT_EQ(status, 0) << slice.name << " " << slice.first << " " << slice.count;
        EXPECT_EQ(integers[0], kUntouched);
        EXPECT_EQ(integers[1], kUntouched);
        EXPECT_EQ(reals[0], kUntouched);
        EXPECT_EQ(reals[1], kUntouched);
    }
    VelkReadGlobalArrayI("n_list", 1, 1, nullptr, &status);
    EXPECT_EQ(status, 0);
}

TEST_F(GlobalTest, WritesArraySlices) {
    const int integers[2] = {-1, -2};
    VelkWriteGlobalArrayI("n_list", 3, 2, integers, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(host.globalAs<std::vector<int>>("n_list"), (std::vector<int>{10, 20, -1, -2}));
    const double reals[1] = {9.5};
    VelkWriteGlobalArrayW("w_list", 2, 1, reals, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(host.globalAs<std::vector<double>>("w_list"), (std::vector<double>{1.5, 9.5, 3.25}));
}

TEST_F(GlobalTest, ArrayWritesConvertToTheArraysKind) {
    const double reals[2] = {2.9, -2.9};
    VelkWriteGlobalArrayW("n_list", 1, 2, reals, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(host.globalAs<std::vector<int>>("n_list"), (std::vector<int>{2, -2, 30, 40}));
    const int integers[1] = {8};
    VelkWriteGlobalArrayI("w_list", 3, 1, integers, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(host.globalAs<std::vector<double>>("w_list"), (std::vector<double>{1.5, -2.5, 8.0}));
}

TEST_F(GlobalTest, ArrayWritesOutsideTheArrayChangeNothing) {
    const int integers[2] = {1, 2};
    const double reals[2] = {1.0, 2.0};
    const std::vector<std::pair<int, int>> slices = {{0, 1}, {1, -1}, {4, 2}, {5, 1}};
    for (const auto& [first, count] : slices) {
        status = kUntouched;
        VelkWriteGlobalArrayI("n_list", first, count, integers, &status);
        EXPECT_EQ(status, 0) << first << " " << count;
        status = kUntouched;
        VelkWriteGlobalArrayW("w_list", first, count, reals, &status);
        EXPECT_EQ(status, 0) << first << " " << count;
    }
    VelkWriteGlobalArrayI("n_count", 1, 1, integers, &status);
    EXPECT_EQ(status, 0);
    VelkWriteGlobalArrayW("n_missing", 1, 1, reals, &status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(host.globalAs<std::vector<int>>("n_list"), (std::vector<int>{10, 20, 30, 40}));
    EXPECT_EQ(host.globalAs<std::vector<double>>("w_list"), (std::vector<double>{1.5, -2.5, 3.25}));
    EXPECT_EQ(host.global("n_count"), GlobalValue(3));
    EXPECT_FALSE(host.global("n_missing"));
}

TEST_F(GlobalTest, TheProgramSideSetsReadsAndRemovesGlobals) {
    host.setGlobal("w_depth", 4);
    EXPECT_EQ(host.global("w_depth"), GlobalValue(4));
    EXPECT_EQ(host.globalAs<double>("w_depth"), std::nullopt);
    host.removeGlobal("w_depth");
    EXPECT_EQ(host.global("w_depth"), std::nullopt);
    EXPECT_EQ(host.globalAs<std::string>("s_name"), "Pocket 1");
}

TEST_F(OfflineHostTest, EnvironmentValuesAreReadByName) {
    host.setEnvironment("VELK_DATA", "C:\\Data");
    EXPECT_STREQ(VelkEnvironment("VELK_DATA"), "C:\\Data");
    EXPECT_EQ(host.environment("VELK_DATA"), "C:\\Data");
}

TEST_F(OfflineHostTest, UnknownEnvironmentValuesAreEmptyTexts) {
    ASSERT_NE(VelkEnvironment("VELK_NONE"), nullptr);
    EXPECT_STREQ(VelkEnvironment("VELK_NONE"), "");
    ASSERT_NE(VelkEnvironment(nullptr), nullptr);
    EXPECT_STREQ(VelkEnvironment(nullptr), "");
    EXPECT_EQ(host.environment("VELK_NONE"), "");
}

TEST_F(OfflineHostTest, AnEnvironmentValueStaysValidWhileOthersChange) {
    host.setEnvironment("A", "first");
    const char* value = VelkEnvironment("A");
    for (int i = 0; i < 100; ++i) {
        host.setEnvironment("B" + std::to_string(i), "other");
    }
    EXPECT_STREQ(value, "first");
    EXPECT_EQ(value, VelkEnvironment("A"));
}

}  // namespace
}  // namespace offlinehost
