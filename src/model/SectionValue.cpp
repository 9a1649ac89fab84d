#include <velkapi/SectionValue.h>

#include <velkapi/LogFile.h>
#include <velkapi/VelkObject.h>

#include "model/EntryDefaults.h"

namespace VelkApi {

namespace {

void logNullReference(const char* operation) {
    LogFile::instance().error(std::string("NULLREFERENCE-Error in SectionValue::") + operation);
}

}  // namespace

SectionValue::SectionValue(int number, std::string entryName, Value* entryValue, Value* defaultval,
                           ValueDataType vdtype, bool isaxis)
    : SectionValue(number, 0, std::move(entryName), entryValue, defaultval, vdtype, isaxis) {}

SectionValue::SectionValue(int number, int bitNumber, std::string entryName, Value* entryValue,
                           Value* defaultval, ValueDataType vdtype, bool isaxis)
    : SectionValue(number, bitNumber, std::move(entryName), std::shared_ptr<Value>(entryValue),
                   std::shared_ptr<Value>(defaultval), vdtype, isaxis) {}

SectionValue::SectionValue(int number, int bitNumber, std::string entryName,
                           std::shared_ptr<Value> entryValue, std::shared_ptr<Value> defaultval,
                           ValueDataType vdtype, bool isaxis)
    : nr(number),
      bit(bitNumber),
      name(std::move(entryName)),
      value(std::move(entryValue)),
      defaultValue(std::move(defaultval)),
      dataType(vdtype),
      axis(isaxis) {}

SectionValue::~SectionValue() = default;

void* SectionValue::getValue(void* target) const {
    if (!value) {
        logNullReference("getValue");
        return nullptr;
    }
    return value->getValue(target);
}

std::string SectionValue::getValueAsString() const {
    if (!value) {
        logNullReference("getValueAsString");
        return "";
    }
    return value->getValueAsString();
}

void SectionValue::setValue(const void* source) {
    if (!value) {
        logNullReference("setValue");
        return;
    }
    value->setValue(source);
}

void SectionValue::clearValue() {
    const int marker = isAxis() ? kClearedAxis : kUnsetInt;
    if (!value) {
        return;
    }
    if (dataType == ValueDataType::Int) {
        setValue(&marker);
    } else if (dataType == ValueDataType::Double) {
        const double cleared = marker;
        setValue(&cleared);
    }
}

void* SectionValue::getDefault(void* target) const {
    if (!defaultValue) {
        logNullReference("getDefault");
        return nullptr;
    }
    return defaultValue->getValue(target);
}

void SectionValue::setValueToDefault() {
    detail::setToDefault(*this, dataType);
}

bool SectionValue::isAxis() const {
    return axis;
}

int SectionValue::getNr() const {
    return nr;
}

int SectionValue::getBit() const {
    return bit;
}

ValueDataType SectionValue::getValueDataType() const {
    return dataType;
}

}  // namespace VelkApi
