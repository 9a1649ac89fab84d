// One named parameter of a section: its number in the section's record text (line nr / 100,
// field nr % 100), the bit it owns in a packed option word (1..32, 0 for none), its lower-cased
// name, its value and default, its data type, and whether it is an axis value (cleared to
// -999999 instead of 2147483647). A copy shares the value objects of its source.
#pragma once

#include <memory>
#include <string>

#include <velkapi/Value.h>

namespace VelkApi {

class VELKAPI_EXPORT SectionValue {
  public:
    // Both constructors take ownership of `value` and `defaultval`.
    SectionValue(int nr, std::string name, Value* value, Value* defaultval, ValueDataType vdtype,
                 bool isaxis);
    SectionValue(int nr, int bit, std::string name, Value* value, Value* defaultval,
                 ValueDataType vdtype, bool isaxis);
    SectionValue(int nr, int bit, std::string name, std::shared_ptr<Value> value,
                 std::shared_ptr<Value> defaultval, ValueDataType vdtype, bool isaxis);
    SectionValue(const SectionValue&) = default;
    SectionValue& operator=(const SectionValue&) = default;
    virtual ~SectionValue();

    virtual void* getValue(void* target) const;
    virtual std::string getValueAsString() const;
    virtual void setValue(const void* source);
    // Sets an Int or Double entry to its "not set" marker (-999999 for axis entries).
    virtual void clearValue();
    virtual void* getDefault(void* target) const;
    virtual void setValueToDefault();
    virtual bool isAxis() const;
    virtual int getNr() const;
    virtual int getBit() const;
    virtual ValueDataType getValueDataType() const;

    std::string getName() const { return name; }

  protected:
    int nr;
    int bit;
    std::string name;
    std::shared_ptr<Value> value;
    std::shared_ptr<Value> defaultValue;
    ValueDataType dataType;
    bool axis;
};

}  // namespace VelkApi
