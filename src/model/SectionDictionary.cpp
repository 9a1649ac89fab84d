#include <velkapi/SectionDictionary.h>

#include <typeinfo>

#include "model/EntryStore.h"
#include "model/SectionEntries.h"
#include "util/ErrorBoundary.h"
#include "util/FieldReaders.h"
#include "util/TextHelpers.h"

namespace VelkApi {

using detail::guarded;

SectionDictionary::SectionDictionary(int sectionnr) : sectionNr(sectionnr) {
    guarded("Error in SectionDictionary(int sectionnr)",
            [&] { values = std::make_shared<detail::EntryStore>(); });
}

SectionDictionary::~SectionDictionary() = default;

detail::EntryStore& SectionDictionary::entryStore() const {
    return detail::SectionEntries::of(*this);
}

SectionValue* SectionDictionary::findEntry(const std::string& key) const {
    detail::EntryStore& store = entryStore();
    const detail::EntryRef entry = store.find(key);
    return entry ? store.view(entry) : nullptr;
}

std::vector<SectionValue*> SectionDictionary::entriesByNumber() const {
    detail::EntryStore& store = entryStore();
    std::vector<SectionValue*> sorted;
    for (const detail::EntryRef& entry : store.byNumber()) {
        sorted.push_back(store.view(entry));
    }
    return sorted;
}

std::size_t SectionDictionary::entryCount() const {
    return entryStore().size();
}

// ---- keyed access

void* SectionDictionary::getValue(const std::string& key, void* target) const {
    const auto describe = [&] {
        return "Error in SectionDictionary" + std::to_string(sectionNr) + "::getValue(" + key + ")";
    };
    return guarded<void*>(nullptr, describe, [&]() -> void* {
        const detail::EntryRef entry = entryStore().find(key);
        return entry ? entry.getValue(target) : nullptr;
    });
}

void SectionDictionary::setValue(const std::string& key, const void* source) {
    const auto describe = [&] { return "Error in SectionDictionary::setValue(" + key + ")"; };
    guarded(describe, [&] {
        if (const detail::EntryRef entry = entryStore().find(key)) {
            entry.setValue(source);
        }
    });
}

std::string SectionDictionary::getValueAsString(const std::string& key) const {
    const auto describe = [&] {
        return "Error in SectionDictionary" + std::to_string(sectionNr) + "::getValue(" + key + ")";
    };
    return guarded<std::string>("", describe, [&] {
        const detail::EntryRef entry = entryStore().find(key);
        return entry ? entry.getValueAsString() : std::string();
    });
}

void SectionDictionary::setInt(const std::string& key, int val) {
    guarded("Error in SectionDictionary::setInt(const string &  key, int val)",
            [&] { setValue(key, &val); });
}

int SectionDictionary::getInt(const std::string& key) const {
    return guarded(0, "Error in SectionDictionary::getInt(const string &  key) ", [&] {
        int result = 0;
        getValue(key, &result);
        return result;
    });
}

void SectionDictionary::setDouble(const std::string& key, double val) {
    guarded("Error in SectionDictionary::setDouble(const string &  key, double val)",
            [&] { setValue(key, &val); });
}

double SectionDictionary::getDouble(const std::string& key) const {
    return guarded(0.0, "Error in SectionDictionary::getDouble(const string &  key)", [&] {
        double result = 0.0;
        getValue(key, &result);
        return result;
    });
}

void SectionDictionary::setBool(const std::string& key, bool val) {
    guarded("Error in SectionDictionary::setBool(const string &  key, bool val)",
            [&] { setValue(key, &val); });
}

bool SectionDictionary::getBool(const std::string& key) const {
    return guarded(false, "Error in SectionDictionary::getBool(const string &  key)", [&] {
        bool result = false;
        getValue(key, &result);
        return result;
    });
}

void SectionDictionary::setString(const std::string& key, const std::string& val) {
    guarded("Error in SectionDictionary::setString(const string &  key, const string & val) ",
            [&] { setValue(key, &val); });
}

std::string SectionDictionary::getString(const std::string& key) const {
    const auto describe = [&] {
        return "Error in SectionDictionary::getString(const string &  key) => " + key;
    };
    return guarded<std::string>("", describe, [&] {
        std::string result;
        getValue(key, &result);
        return result;
    });
}

std::vector<std::string>& SectionDictionary::readKeys(std::vector<std::string>& keys) const {
    guarded("Error in SectionDictionary::readKeys(vector<string> & keys)", [&] {
        keys.clear();
        for (const detail::EntryRef& entry : entryStore().byName()) {
            keys.push_back(entry.name());
        }
    });
    return keys;
}

bool SectionDictionary::existsKey(const std::string& key) const {
    return guarded(false, "Error in SectionDictionary::existsKey(const string & key)",
                   [&] { return static_cast<bool>(entryStore().find(key)); });
}

bool SectionDictionary::isAxis(const std::string& key) const {
    return guarded(false, "Error in SectionDictionary::isAxis(const string & key)", [&] {
        const detail::EntryRef entry = entryStore().find(key);
        return entry && entry.isAxis();
    });
}

ValueDataType SectionDictionary::dataTypeOf(const std::string& key) const {
    return guarded(ValueDataType::None,
                   "Error in SectionDictionary::dataTypeOf(const string & key)", [&] {
                       const detail::EntryRef entry = entryStore().find(key);
                       return entry ? entry.getValueDataType() : ValueDataType::None;
                   });
}

void SectionDictionary::setDefault() {
    guarded("Error in SectionDictionary::setDefault()", [&] {
        for (const detail::EntryRef& entry : entryStore().byName()) {
            entry.setValueToDefault();
        }
    });
}

void SectionDictionary::clearAdditionals() {
    guarded("Error in SectionDictionary::clearAdditionals()", [&] {
        for (const detail::EntryRef& entry : entryStore().byName()) {
            entry.clearValue();
        }
    });
}

void SectionDictionary::clear() {
    guarded("Error in SectionDictionary::clear()", [&] { entryStore().clear(); });
}

// ---- declaring entries

namespace {

constexpr const char* kAddParameterText =
    "Error in SectionDictionary::addParameter(int pnr, const string &  name, Value * value, "
    "Value* defaultval, ValueDataType vdtype, bool isaxis)";

constexpr const char* kAddStringText =
    "Error in SectionDictionary::addStringParameter(int pnr, const string &  name, const string "
    "&  defaultval, const string &  value)";

detail::Cell realCell(double value) {
    detail::Cell cell{};
    cell.real = value;
    return cell;
}

detail::Cell integerCell(int value) {
    detail::Cell cell{};
    cell.integer = value;
    return cell;
}

detail::Cell flagCell(bool value) {
    detail::Cell cell{};
    cell.flag = value;
    return cell;
}

detail::Declaration numberDeclaration(int pnr, int bit, const std::string& name, ValueDataType type,
                                      bool axis) {
    return {pnr, bit, name, type, axis, detail::Storage::Number};
}

}  // namespace

// The adders declare through these, as they would through addParameter: a failure in making the
// entry is logged under its text. A text adder first makes its two texts, under its own text.
void SectionDictionary::addEntry(const detail::Declaration& declaration, detail::Cell fallback,
                                 detail::Cell value) {
    guarded(kAddParameterText, [&] { entryStore().addNumber(declaration, fallback, value); });
}

void detail::SectionEntries::addObject(SectionDictionary& section, int nr, const std::string& key,
                                       VelkObject value, VelkObject fallback) {
    guarded(kAddParameterText, [&] {
        of(section).addObject({nr, 0, key, ValueDataType::VelkObject, false, Storage::Object},
                              std::move(value), std::move(fallback));
    });
}

void detail::SectionEntries::addAction(SectionDictionary& section, int nr, const std::string& key,
                                       Action value, Action fallback) {
    guarded(kAddParameterText, [&] {
        of(section).addAction({nr, 0, key, ValueDataType::Action, false, Storage::Action},
                              std::move(value), std::move(fallback));
    });
}

void SectionDictionary::addTextEntry(const detail::Declaration& declaration, std::string fallback,
                                     std::string value) {
    guarded(kAddParameterText,
            [&] { entryStore().addText(declaration, std::move(fallback), std::move(value)); });
}

namespace {

// True when both values are of the kind `Kind` itself, the kind of the entry's data type.
template <typename Kind>
bool bothOf(const Value* value, const Value* fallback) {
    return value != nullptr && fallback != nullptr && typeid(*value) == typeid(Kind) &&
           typeid(*fallback) == typeid(Kind);
}

template <typename Datum>
Datum datumOf(const Value& value) {
    Datum datum{};
    value.getValue(&datum);
    return datum;
}

// Values of the library's own kinds are kept as any declared entry's: the section takes their
// data and the objects go. False for values of other kinds, or of a kind unlike the data type.
bool keepUnboxed(detail::EntryStore& store, int pnr, const std::string& name, const Value* value,
                 const Value* fallback, ValueDataType vdtype, bool isaxis) {
    const auto declared = [&](detail::Storage storage) {
        return detail::Declaration{pnr, 0, name, vdtype, isaxis, storage};
    };
    switch (vdtype) {
        case ValueDataType::Double:
            if (!bothOf<DoubleValue>(value, fallback)) {
                return false;
            }
            store.addNumber(declared(detail::Storage::Number), realCell(datumOf<double>(*fallback)),
                            realCell(datumOf<double>(*value)));
            return true;
        case ValueDataType::Int:
            if (!bothOf<IntValue>(value, fallback)) {
                return false;
            }
            store.addNumber(declared(detail::Storage::Number), integerCell(datumOf<int>(*fallback)),
                            integerCell(datumOf<int>(*value)));
            return true;
        case ValueDataType::Bool:
            if (!bothOf<BoolValue>(value, fallback)) {
                return false;
            }
            store.addNumber(declared(detail::Storage::Number), flagCell(datumOf<bool>(*fallback)),
                            flagCell(datumOf<bool>(*value)));
            return true;
        case ValueDataType::String:
            if (!bothOf<StringValue>(value, fallback)) {
                return false;
            }
            store.addText(declared(detail::Storage::Text), datumOf<std::string>(*fallback),
                          datumOf<std::string>(*value));
            return true;
        case ValueDataType::VelkObject:
            if (!bothOf<VelkObjectValue>(value, fallback)) {
                return false;
            }
            store.addObject(declared(detail::Storage::Object), datumOf<VelkObject>(*value),
                            datumOf<VelkObject>(*fallback));
            return true;
        case ValueDataType::Action:
            if (!bothOf<ActionValue>(value, fallback)) {
                return false;
            }
            store.addAction(declared(detail::Storage::Action), datumOf<Action>(*value),
                            datumOf<Action>(*fallback));
            return true;
        default:
            return false;
    }
}

}  // namespace

void SectionDictionary::addParameter(int pnr, const std::string& name, Value* value,
                                     Value* defaultval, ValueDataType vdtype, bool isaxis) {
    guarded(kAddParameterText, [&] {
        // Owned from here on, whatever fails below; dropped when the name is taken or the
        // section keeps their data.
        std::unique_ptr<Value> valueOwner(value);
        std::unique_ptr<Value> defaultOwner(defaultval);
        detail::EntryStore& store = entryStore();
        if (keepUnboxed(store, pnr, name, value, defaultval, vdtype, isaxis)) {
            return;
        }
        store.addBoxed({pnr, 0, name, vdtype, isaxis, detail::Storage::Boxed},
                       std::move(valueOwner), std::move(defaultOwner));
    });
}

void SectionDictionary::addDoubleParameter(int pnr, const std::string& name, double defaultval,
                                           double val) {
    guarded(
        "Error in SectionDictionary::addDoubleParameter(int pnr, const string &  name, double "
        "defaultval, double val)",
        [&] {
            addEntry(numberDeclaration(pnr, 0, name, ValueDataType::Double, false),
                     realCell(defaultval), realCell(val));
        });
}

void SectionDictionary::addDoubleParameter(int pnr, const std::string& name, double defaultval) {
    guarded(
        "Error in SectionDictionary::addDoubleParameter(int pnr, const string &  name, double "
        "defaultval)",
        [&] {
            addEntry(numberDeclaration(pnr, 0, name, ValueDataType::Double, false),
                     realCell(defaultval), realCell(defaultval));
        });
}

void SectionDictionary::addAxisParameter(int pnr, const std::string& name, double defaultval) {
    guarded(
        "Error in SectionDictionary::addAxisParameter(int pnr, const string &  name, double "
        "defaultval)",
        [&] {
            addEntry(numberDeclaration(pnr, 0, name, ValueDataType::Double, true),
                     realCell(defaultval), realCell(defaultval));
        });
}

void SectionDictionary::addIntParameter(int pnr, const std::string& name, int defaultval, int val) {
    guarded(
        "Error in SectionDictionary::addIntParameter(int pnr, const string &  name, int "
        "defaultval, int val)",
        [&] {
            addEntry(numberDeclaration(pnr, 0, name, ValueDataType::Int, false),
                     integerCell(defaultval), integerCell(val));
        });
}

void SectionDictionary::addIntParameter(int pnr, const std::string& name, int defaultval) {
    guarded(
        "Error in SectionDictionary::addIntParameter(int pnr, const string &  name, int "
        "defaultval)",
        [&] {
            addEntry(numberDeclaration(pnr, 0, name, ValueDataType::Int, false),
                     integerCell(defaultval), integerCell(defaultval));
        });
}

void SectionDictionary::addBoolParameter(int pnr, int bit, const std::string& name, bool defaultval,
                                         bool val) {
    guarded(
        "Error in SectionDictionary::addBoolParameter(int pnr, int bit, const string &  name, "
        "bool defaultval, bool val)",
        [&] {
            entryStore().addNumber(numberDeclaration(pnr, bit, name, ValueDataType::Bool, false),
                                   flagCell(defaultval), flagCell(val));
        });
}

void SectionDictionary::addStringParameter(int pnr, const std::string& name,
                                           const std::string& defaultval,
                                           const std::string& value) {
    guarded(kAddStringText, [&] {
        addTextEntry({pnr, 0, name, ValueDataType::String, false, detail::Storage::Text},
                     defaultval, value);
    });
}

void SectionDictionary::addStringParameter(int pnr, const std::string& name,
                                           const std::string& defaultval) {
    addStringParameter(pnr, name, defaultval, defaultval);
}

void SectionDictionary::addStringParameter(int pnr, const std::string& name) {
    addStringParameter(pnr, name, "", "");
}

void SectionDictionary::addStringAxisParameter(int pnr, const std::string& name,
                                               const std::string& defaultval) {
    guarded(kAddStringText, [&] {
        addTextEntry({pnr, 0, name, ValueDataType::String, true, detail::Storage::Text}, defaultval,
                     defaultval);
    });
}

int SectionDictionary::getIntFromLine(const std::string& line, size_t n, int defaultval) {
    return fields::intField(line, text::fieldPosition(line, n), defaultval);
}

double SectionDictionary::getDoubleFromLine(const std::string& line, size_t n, double defaultval) {
    return fields::doubleField(line, text::fieldPosition(line, n), defaultval);
}

std::string SectionDictionary::getStringFromLine(const std::string& line, size_t n,
                                                 std::string defaultval) {
    return fields::stringField(line, text::fieldPosition(line, n), defaultval);
}

}  // namespace VelkApi
