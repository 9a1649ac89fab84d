/// \file
/// One named parameter of a section: its number in the section's record text (line nr / 100,
/// field nr % 100), the bit it owns in a packed option word (1..32, 0 for none), its lower-cased
/// name, its value and default, its data type, and whether it is an axis value (cleared to
/// -999999 instead of 2147483647). A copy shares the value objects of its source.
#pragma once

#include <memory>
#include <string>

#include <velkapi/Value.h>

namespace VelkApi {

/// One named entry of a section: its value, its default, its data type and where it stands in the
/// section's lines.
class VELKAPI_EXPORT SectionValue {
  public:
    /// Both constructors take ownership of `value` and `defaultval`.
    SectionValue(int nr, std::string name, Value* value, Value* defaultval, ValueDataType vdtype,
                 bool isaxis);
    /// An option bit: bit `bit` of field `nr`.
    SectionValue(int nr, int bit, std::string name, Value* value, Value* defaultval,
                 ValueDataType vdtype, bool isaxis);
    /// An entry that shares `value` and `defaultval` with another.
    SectionValue(int nr, int bit, std::string name, std::shared_ptr<Value> value,
                 std::shared_ptr<Value> defaultval, ValueDataType vdtype, bool isaxis);
    /// A copy of another SectionValue.
    SectionValue(const SectionValue&) = default;
    /// Becomes a copy of another SectionValue.
    SectionValue& operator=(const SectionValue&) = default;
    virtual ~SectionValue();

    /// Copies the value into *target (of the entry's own type) and returns target.
    virtual void* getValue(void* target) const;
    /// The value as text.
    virtual std::string getValueAsString() const;
    /// The value becomes *source (of the entry's own type).
    virtual void setValue(const void* source);
    /// Sets an Int or Double entry to its "not set" marker (-999999 for axis entries).
    virtual void clearValue();
    /// Copies the default into *target (of the entry's own type) and returns target.
    virtual void* getDefault(void* target) const;
    /// The value becomes the default.
    virtual void setValueToDefault();
    /// True for an axis value, whose "not set" marker is -999999.
    virtual bool isAxis() const;
    /// The number of the field the entry stands in.
    virtual int getNr() const;
    /// The bit of the field for an option bit; 0 otherwise.
    virtual int getBit() const;
    /// The entry's data type.
    virtual ValueDataType getValueDataType() const;

    /// The entry's name, lower-cased.
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
