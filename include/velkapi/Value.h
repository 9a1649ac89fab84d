/// \file
/// Typed cells behind every parameter of every section. A value owns one datum; a copy shares it,
/// so setting a value through one copy is seen through the other, and destroying both is safe.
#pragma once

#include <memory>
#include <string>

#include <velkapi/Export.h>

namespace VelkApi {

class VelkObject;
class Action;

/// The type tag a section entry carries. Each Value's kind code is one less than its tag.
enum class ValueDataType : int {
    None = 0,
    Double = 1,
    Int = 2,
    Bool = 3,
    String = 4,
    VelkObject = 5,
    Action = 6,
};

/// Markers for "not set" and "cleared axis value"; both render as an empty text.
constexpr int kUnsetInt = 2147483647;
/// The "not set" marker of a double.
constexpr double kUnsetDouble = 2147483647.0;
/// The marker of an axis value that was cleared.
constexpr int kClearedAxis = -999999;

/// A typed value of a section entry, of one of the kinds of ValueDataType.
class VELKAPI_EXPORT Value {
  public:
    virtual ~Value();
    /// Copies the datum into *target (an object of the datum's own type) and returns target.
    virtual void* getValue(void* target) const = 0;
    /// The datum becomes *source (an object of the datum's own type).
    virtual void setValue(const void* source) = 0;
    /// The value as text.
    virtual std::string getValueAsString() const = 0;

    /// The value's data type, as a ValueDataType number.
    int getKind() const { return kind; }

  protected:
    Value(int kind, std::shared_ptr<void> datum);
    /// A copy of another Value.
    Value(const Value&) = default;
    /// Becomes a copy of another Value.
    Value& operator=(const Value&) = default;

    template <typename T>
    T* data() const {
        return static_cast<T*>(datum.get());
    }

    int kind;
    std::shared_ptr<void> datum;
};

/// An int value.
class VELKAPI_EXPORT IntValue : public Value {
  public:
    /// The int `value`.
    explicit IntValue(int value);
    ~IntValue() override;
    void* getValue(void* target) const override;
    void setValue(const void* source) override;
    std::string getValueAsString() const override;
};

/// A double value.
class VELKAPI_EXPORT DoubleValue : public Value {
  public:
    /// The double `value`.
    explicit DoubleValue(double value);
    ~DoubleValue() override;
    void* getValue(void* target) const override;
    void setValue(const void* source) override;
    std::string getValueAsString() const override;
};

/// A bool value.
class VELKAPI_EXPORT BoolValue : public Value {
  public:
    /// The bool `value`.
    explicit BoolValue(bool value);
    /// Bit `bit` (1 = least significant .. 32) of `word`; any other bit throws std::out_of_range
    /// "invalid bitset position".
    BoolValue(int word, int bit);
    ~BoolValue() override;
    void* getValue(void* target) const override;
    void setValue(const void* source) override;
    std::string getValueAsString() const override;
};

/// A text value.
class VELKAPI_EXPORT StringValue : public Value {
  public:
    /// The text `value`.
    explicit StringValue(const std::string& value);
    ~StringValue() override;
    void* getValue(void* target) const override;
    void setValue(const void* source) override;
    std::string getValueAsString() const override;
};

/// A geometry object reference (VelkObject) of a geometry section.
class VELKAPI_EXPORT VelkObjectValue : public Value {
  public:
    /// A copy of `object`.
    explicit VelkObjectValue(const VelkObject& object);
    ~VelkObjectValue() override;
    /// Copies the object into *target (a VelkObject) and returns target. A null target gives a
    /// new copy that the caller owns and deletes.
    void* getValue(void* target) const override;
    /// Copies *source (a VelkObject); a null source changes nothing.
    void setValue(const void* source) override;
    /// The object's name.
    std::string getValueAsString() const override;
};

/// A pre- or post-operation action (Action) of an action section.
class VELKAPI_EXPORT ActionValue : public Value {
  public:
    /// A copy of `action`.
    explicit ActionValue(const Action& action);
    ~ActionValue() override;
    /// Copies the action into *target (an Action) and returns target; null for a null target.
    void* getValue(void* target) const override;
    /// Copies *source (an Action); a null source changes nothing.
    void setValue(const void* source) override;
    /// The action's command.
    std::string getValueAsString() const override;
};

}  // namespace VelkApi
