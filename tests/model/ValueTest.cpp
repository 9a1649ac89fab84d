#include <gtest/gtest.h>
#include <velkapi/Value.h>

#include <stdexcept>
#include <string>

using namespace VelkApi;

TEST(IntValue, RendersMarkersAsEmptyText) {
    EXPECT_EQ(IntValue(2147483647).getValueAsString(), "");
    EXPECT_EQ(IntValue(-999999).getValueAsString(), "");
    EXPECT_EQ(IntValue(0).getValueAsString(), "0");
    EXPECT_EQ(IntValue(-5).getValueAsString(), "-5");
}

TEST(IntValue, KindCodeIsOneLessThanItsDataType) {
    EXPECT_EQ(DoubleValue(1.0).getKind(), 0);
    EXPECT_EQ(IntValue(1).getKind(), 1);
    EXPECT_EQ(BoolValue(true).getKind(), 2);
    EXPECT_EQ(StringValue("a").getKind(), 3);
}

TEST(IntValue, GetValueStoresIntoTargetAndReturnsIt) {
    IntValue value(42);
    int target = 0;
    EXPECT_EQ(value.getValue(&target), &target);
    EXPECT_EQ(target, 42);
    const int source = 7;
    value.setValue(&source);
    EXPECT_EQ(value.getValueAsString(), "7");
}

TEST(IntValue, CopySharesItsDatum) {
    IntValue original(1);
    IntValue copy(original);
    const int source = 99;
    copy.setValue(&source);
    int seen = 0;
    original.getValue(&seen);
    EXPECT_EQ(seen, 99);
}

TEST(IntValue, AssignedCopySharesItsDatumAndBothMayBeDestroyed) {
    auto* first = new IntValue(1);
    auto* second = new IntValue(2);
    *second = *first;
    const int source = 5;
    first->setValue(&source);
    EXPECT_EQ(second->getValueAsString(), "5");
    delete first;
    EXPECT_EQ(second->getValueAsString(), "5");
    delete second;
}

TEST(DoubleValue, RendersWithSixDecimals) {
    EXPECT_EQ(DoubleValue(0.1).getValueAsString(), "0.100000");
    EXPECT_EQ(DoubleValue(2.5).getValueAsString(), "2.500000");
    EXPECT_EQ(DoubleValue(-999999.0).getValueAsString(), "");
    EXPECT_EQ(DoubleValue(-999999.5).getValueAsString(), "-999999.500000");
    EXPECT_EQ(DoubleValue(2147483647.0).getValueAsString(), "");
    EXPECT_EQ(DoubleValue(2147483646.0).getValueAsString(), "2147483646.000000");
}

TEST(DoubleValue, GetAndSet) {
    DoubleValue value(1.5);
    double target = 0;
    EXPECT_EQ(value.getValue(&target), &target);
    EXPECT_EQ(target, 1.5);
    const double source = -3.25;
    value.setValue(&source);
    EXPECT_EQ(value.getValueAsString(), "-3.250000");
}

TEST(BoolValue, TakesOneBitOfAWord) {
    bool bit = false;
    BoolValue(6, 2).getValue(&bit);
    EXPECT_TRUE(bit);
    BoolValue(6, 1).getValue(&bit);
    EXPECT_FALSE(bit);
    BoolValue(static_cast<int>(0x80000000u), 32).getValue(&bit);
    EXPECT_TRUE(bit);
}

TEST(BoolValue, BitOutsideOneToThirtyTwoThrows) {
    for (const int position : {0, 33}) {
        try {
            BoolValue value(6, position);
            FAIL() << "bit " << position << " was accepted";
        } catch (const std::out_of_range& e) {
            EXPECT_STREQ(e.what(), "invalid bitset position");
        }
    }
}

TEST(BoolValue, RendersTrueAndFalse) {
    EXPECT_EQ(BoolValue(true).getValueAsString(), "true");
    EXPECT_EQ(BoolValue(false).getValueAsString(), "false");
    BoolValue value(false);
    const bool source = true;
    value.setValue(&source);
    EXPECT_EQ(value.getValueAsString(), "true");
}

TEST(StringValue, GetSetAndRender) {
    StringValue value("abc");
    std::string target;
    EXPECT_EQ(value.getValue(&target), &target);
    EXPECT_EQ(target, "abc");
    const std::string source = "with blanks ";
    value.setValue(&source);
    EXPECT_EQ(value.getValueAsString(), "with blanks ");
}
