#include <gtest/gtest.h>
#include <velkapi/SectionValue.h>

#include "ErrorLog.h"

using namespace VelkApi;
using testsupport::ErrorLogWatch;

namespace {

SectionValue doubleEntry(bool axis) {
    return SectionValue(5, "w_x", new DoubleValue(1.5), new DoubleValue(2.5), ValueDataType::Double,
                        axis);
}

SectionValue intEntry() {
    return SectionValue(205, "i_count", new IntValue(3), new IntValue(8), ValueDataType::Int,
                        false);
}

}  // namespace

TEST(SectionValue, ReportsItsMembers) {
    const SectionValue entry = intEntry();
    EXPECT_EQ(entry.getNr(), 205);
    EXPECT_EQ(entry.getNr() / 100, 2);
    EXPECT_EQ(entry.getNr() % 100, 5);
    EXPECT_EQ(entry.getBit(), 0);
    EXPECT_EQ(entry.getName(), "i_count");
    EXPECT_EQ(entry.getValueDataType(), ValueDataType::Int);
    EXPECT_FALSE(entry.isAxis());

    const SectionValue option(26, 3, "o_gohome", new BoolValue(false), new BoolValue(true),
                              ValueDataType::Bool, false);
    EXPECT_EQ(option.getBit(), 3);
}

TEST(SectionValue, ClearedAxisDoubleHoldsAxisMarker) {
    SectionValue entry = doubleEntry(true);
    entry.clearValue();
    double value = 0;
    entry.getValue(&value);
    EXPECT_EQ(value, -999999.0);
    EXPECT_EQ(entry.getValueAsString(), "");
}

TEST(SectionValue, ClearedDoubleHoldsUnsetMarker) {
    SectionValue entry = doubleEntry(false);
    entry.clearValue();
    double value = 0;
    entry.getValue(&value);
    EXPECT_EQ(value, 2147483647.0);
}

TEST(SectionValue, ClearedIntHoldsUnsetMarker) {
    SectionValue entry = intEntry();
    entry.clearValue();
    int value = 0;
    entry.getValue(&value);
    EXPECT_EQ(value, 2147483647);
    EXPECT_EQ(entry.getValueAsString(), "");
}

TEST(SectionValue, ClearingBoolOrStringChangesNothing) {
    SectionValue option(3, 1, "o_a", new BoolValue(true), new BoolValue(false), ValueDataType::Bool,
                        false);
    option.clearValue();
    EXPECT_EQ(option.getValueAsString(), "true");
    SectionValue text(100, "$_a", new StringValue("abc"), new StringValue(""),
                      ValueDataType::String, false);
    text.clearValue();
    EXPECT_EQ(text.getValueAsString(), "abc");
}

TEST(SectionValue, SetValueToDefaultCopiesTheDefault) {
    SectionValue number = doubleEntry(false);
    number.setValueToDefault();
    EXPECT_EQ(number.getValueAsString(), "2.500000");
    SectionValue count = intEntry();
    count.setValueToDefault();
    EXPECT_EQ(count.getValueAsString(), "8");
    SectionValue option(3, 1, "o_a", new BoolValue(false), new BoolValue(true), ValueDataType::Bool,
                        false);
    option.setValueToDefault();
    EXPECT_EQ(option.getValueAsString(), "true");
    SectionValue text(100, "$_a", new StringValue("x"), new StringValue("dflt"),
                      ValueDataType::String, false);
    text.setValueToDefault();
    EXPECT_EQ(text.getValueAsString(), "dflt");
}

TEST(SectionValue, WithoutValueLogsNullReference) {
    ErrorLogWatch log;
    SectionValue entry(1, "i_a", nullptr, nullptr, ValueDataType::Int, false);
    EXPECT_EQ(entry.getValueAsString(), "");
    int target = 0;
    EXPECT_EQ(entry.getValue(&target), nullptr);
    const int source = 1;
    entry.setValue(&source);
    EXPECT_EQ(entry.getDefault(&target), nullptr);
    EXPECT_EQ(log.texts(), (std::vector<std::string>{
                               "NULLREFERENCE-Error in SectionValue::getValueAsString",
                               "NULLREFERENCE-Error in SectionValue::getValue",
                               "NULLREFERENCE-Error in SectionValue::setValue",
                               "NULLREFERENCE-Error in SectionValue::getDefault",
                           }));
}

TEST(SectionValue, ClearingWithoutValueLogsNothing) {
    ErrorLogWatch log;
    SectionValue entry(1, "i_a", nullptr, nullptr, ValueDataType::Int, false);
    entry.clearValue();
    EXPECT_EQ(log.appended(), "");
}

TEST(SectionValue, DefaultMissingLeavesZeroAndLogs) {
    ErrorLogWatch log;
    SectionValue entry(1, "i_a", new IntValue(5), nullptr, ValueDataType::Int, false);
    entry.setValueToDefault();
    EXPECT_EQ(entry.getValueAsString(), "0");
    EXPECT_EQ(log.texts(),
              (std::vector<std::string>{"NULLREFERENCE-Error in SectionValue::getDefault"}));
}

namespace {

class ThrowingValue : public IntValue {
  public:
    ThrowingValue() : IntValue(0) {}
    void* getValue(void*) const override { throw std::runtime_error("broken"); }
};

}  // namespace

TEST(SectionValue, FailedResetIsLoggedUnderTheWritersText) {
    ErrorLogWatch log;
    SectionValue entry(1, "i_a", new IntValue(5), new ThrowingValue, ValueDataType::Int, false);
    entry.setValueToDefault();
    EXPECT_EQ(log.texts(), (std::vector<std::string>{"Error in MillDrillOperation::writeToVDM()"}));
    EXPECT_EQ(entry.getValueAsString(), "5");
}

TEST(SectionValue, CopySharesValuesAndBothMayBeDestroyed) {
    auto* original = new SectionValue(intEntry());
    auto* copy = new SectionValue(*original);
    const int source = 77;
    copy->setValue(&source);
    EXPECT_EQ(original->getValueAsString(), "77");
    delete copy;
    EXPECT_EQ(original->getValueAsString(), "77");
    delete original;
}
