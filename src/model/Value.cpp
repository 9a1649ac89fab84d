#include <velkapi/Value.h>

#include <stdexcept>

#include "util/TextHelpers.h"

namespace VelkApi {

Value::Value(int kindCode, std::shared_ptr<void> datumPtr)
    : kind(kindCode), datum(std::move(datumPtr)) {}

Value::~Value() = default;

// ---- IntValue

IntValue::IntValue(int value) : Value(1, std::make_shared<int>(value)) {}

IntValue::~IntValue() {
    datum.reset();
}

void* IntValue::getValue(void* target) const {
    *static_cast<int*>(target) = *data<int>();
    return target;
}

void IntValue::setValue(const void* source) {
    *data<int>() = *static_cast<const int*>(source);
}

std::string IntValue::getValueAsString() const {
    const int* value = data<int>();
    if (!value || *value == kUnsetInt || *value == kClearedAxis) {
        return "";
    }
    return std::to_string(*value);
}

// ---- DoubleValue

DoubleValue::DoubleValue(double value) : Value(0, std::make_shared<double>(value)) {}

DoubleValue::~DoubleValue() {
    datum.reset();
}

void* DoubleValue::getValue(void* target) const {
    *static_cast<double*>(target) = *data<double>();
    return target;
}

void DoubleValue::setValue(const void* source) {
    *data<double>() = *static_cast<const double*>(source);
}

std::string DoubleValue::getValueAsString() const {
    const double* value = data<double>();
    if (!value || *value == kUnsetDouble || *value == double(kClearedAxis)) {
        return "";
    }
    return text::fixed6(*value);
}

// ---- BoolValue

BoolValue::BoolValue(bool value) : Value(2, std::make_shared<bool>(value)) {}

BoolValue::BoolValue(int word, int bit) : Value(2, nullptr) {
    if (bit < 1 || bit > 32) {
        throw std::out_of_range("invalid bitset position");
    }
    const auto bits = static_cast<unsigned>(word);
    datum = std::make_shared<bool>(((bits >> (bit - 1)) & 1u) != 0);
}

BoolValue::~BoolValue() {
    datum.reset();
}

void* BoolValue::getValue(void* target) const {
    *static_cast<bool*>(target) = *data<bool>();
    return target;
}

void BoolValue::setValue(const void* source) {
    *data<bool>() = *static_cast<const bool*>(source);
}

std::string BoolValue::getValueAsString() const {
    return *data<bool>() ? "true" : "false";
}

// ---- StringValue

StringValue::StringValue(const std::string& value)
    : Value(3, std::make_shared<std::string>(value)) {}

StringValue::~StringValue() {
    datum.reset();
}

void* StringValue::getValue(void* target) const {
    *static_cast<std::string*>(target) = *data<std::string>();
    return target;
}

void StringValue::setValue(const void* source) {
    *data<std::string>() = *static_cast<const std::string*>(source);
}

std::string StringValue::getValueAsString() const {
    return *data<std::string>();
}

}  // namespace VelkApi
