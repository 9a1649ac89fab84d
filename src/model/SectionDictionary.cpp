#include <velkapi/SectionDictionary.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <stdexcept>

#include "util/ErrorBoundary.h"
#include "util/FieldReaders.h"
#include "util/TextHelpers.h"

namespace VelkApi {

using detail::guarded;

using text::lowerCased;

SectionDictionary::SectionDictionary(int sectionnr) : sectionNr(sectionnr) {
    guarded("Error in SectionDictionary(int sectionnr)",
            [&] { values = std::make_shared<Entries>(); });
}

SectionDictionary::~SectionDictionary() = default;

SectionDictionary::Entries& SectionDictionary::entryMap() const {
    if (!values) {  // the constructor failed to make the map
        throw std::logic_error("section has no entry map");
    }
    return *values;
}

SectionValue* SectionDictionary::findEntry(const std::string& key) const {
    Entries& map = entryMap();
    // Keys are kept lower-cased; most keys asked for already are, and are looked up as they are.
    const bool lower =
        std::none_of(key.begin(), key.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    const auto found = lower ? map.find(key) : map.find(lowerCased(key));
    return found == map.end() ? nullptr : found->second.get();
}

std::vector<SectionValue*> SectionDictionary::entriesByNumber() const {
    std::vector<SectionValue*> sorted;
    for (const auto& [key, entry] : entryMap()) {
        sorted.push_back(entry.get());
    }
    std::stable_sort(
        sorted.begin(), sorted.end(),
        [](const SectionValue* a, const SectionValue* b) { return a->getNr() < b->getNr(); });
    return sorted;
}

// ---- keyed access

void* SectionDictionary::getValue(const std::string& key, void* target) const {
    const auto describe = [&] {
        return "Error in SectionDictionary" + std::to_string(sectionNr) + "::getValue(" + key + ")";
    };
    return guarded<void*>(nullptr, describe, [&]() -> void* {
        const SectionValue* entry = findEntry(key);
        return entry ? entry->getValue(target) : nullptr;
    });
}

void SectionDictionary::setValue(const std::string& key, const void* source) {
    const auto describe = [&] { return "Error in SectionDictionary::setValue(" + key + ")"; };
    guarded(describe, [&] {
        if (SectionValue* entry = findEntry(key)) {
            entry->setValue(source);
        }
    });
}

std::string SectionDictionary::getValueAsString(const std::string& key) const {
    const auto describe = [&] {
        return "Error in SectionDictionary" + std::to_string(sectionNr) + "::getValue(" + key + ")";
    };
    return guarded<std::string>("", describe, [&] {
        const SectionValue* entry = findEntry(key);
        return entry ? entry->getValueAsString() : std::string();
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
        for (const auto& entry : entryMap()) {
            keys.push_back(entry.first);
        }
    });
    return keys;
}

bool SectionDictionary::existsKey(const std::string& key) const {
    return guarded(false, "Error in SectionDictionary::existsKey(const string & key)",
                   [&] { return findEntry(key) != nullptr; });
}

bool SectionDictionary::isAxis(const std::string& key) const {
    return guarded(false, "Error in SectionDictionary::isAxis(const string & key)", [&] {
        const SectionValue* entry = findEntry(key);
        return entry != nullptr && entry->isAxis();
    });
}

ValueDataType SectionDictionary::dataTypeOf(const std::string& key) const {
    return guarded(ValueDataType::None,
                   "Error in SectionDictionary::dataTypeOf(const string & key)", [&] {
                       const SectionValue* entry = findEntry(key);
                       return entry ? entry->getValueDataType() : ValueDataType::None;
                   });
}

void SectionDictionary::setDefault() {
    guarded("Error in SectionDictionary::setDefault()", [&] {
        for (auto& entry : entryMap()) {
            entry.second->setValueToDefault();
        }
    });
}

void SectionDictionary::clearAdditionals() {
    guarded("Error in SectionDictionary::clearAdditionals()", [&] {
        for (auto& entry : entryMap()) {
            entry.second->clearValue();
        }
    });
}

void SectionDictionary::clear() {
    guarded("Error in SectionDictionary::clear()", [&] { entryMap().clear(); });
}

// ---- declaring entries

// Sections declare most of their entries from tables kept in key order, so a key past the last
// one goes straight to the end: one comparison instead of a walk down the tree. Any other key
// is looked up first, and one already there keeps its entry (no node is made for it).
void SectionDictionary::insertEntry(std::unique_ptr<SectionValue> entry) {
    Entries& map = entryMap();
    std::string key = entry->getName();
    if (map.empty() || map.rbegin()->first < key) {
        map.emplace_hint(map.end(), std::move(key), std::move(entry));
    } else {
        map.emplace(std::move(key), std::move(entry));
    }
}

namespace {

constexpr const char* kAddParameterText =
    "Error in SectionDictionary::addParameter(int pnr, const string &  name, Value * value, "
    "Value* defaultval, ValueDataType vdtype, bool isaxis)";

// A default is never changed once declared, so the defaults most entries have (zero, the "not
// set" markers, false, the empty text) are one object each, shared by every entry that has it,
// instead of one object per entry. They live as long as the program, so the entries refer to
// them without owning them (and without a shared count).
template <typename Kind>
std::shared_ptr<Value> lastingObject(Kind& object) {
    return std::shared_ptr<Value>(std::shared_ptr<Value>(), &object);
}

std::shared_ptr<Value> defaultObject(double datum) {
    static DoubleValue zero(0.0);
    static DoubleValue unset(kUnsetDouble);
    // A default of -0.0 keeps its own object: it is written as "-0".
    if (datum == 0.0 && !std::signbit(datum)) {
        return lastingObject(zero);
    }
    return datum == kUnsetDouble ? lastingObject(unset) : std::make_shared<DoubleValue>(datum);
}
std::shared_ptr<Value> defaultObject(int datum) {
    static IntValue zero(0);
    static IntValue unset(kUnsetInt);
    if (datum == 0) {
        return lastingObject(zero);
    }
    return datum == kUnsetInt ? lastingObject(unset) : std::make_shared<IntValue>(datum);
}
std::shared_ptr<Value> defaultObject(bool datum) {
    static BoolValue no(false);
    static BoolValue yes(true);
    return datum ? lastingObject(yes) : lastingObject(no);
}
std::shared_ptr<Value> defaultObject(const std::string& datum) {
    static StringValue empty{std::string()};
    return datum.empty() ? lastingObject(empty) : std::make_shared<StringValue>(datum);
}

}  // namespace

// The adders build each value together with its shared count in one allocation; a failure
// there is the adder's own, a failure in making the entry is addParameter's, as for values
// handed to addParameter.
template <typename Kind, typename Datum>
void SectionDictionary::addValuePair(int pnr, const std::string& name, Datum defaultval, Datum val,
                                     ValueDataType vdtype, bool isaxis) {
    std::shared_ptr<Value> value = std::make_shared<Kind>(val);
    std::shared_ptr<Value> fallback = defaultObject(defaultval);
    guarded(kAddParameterText, [&] {
        insertEntry(std::make_unique<SectionValue>(pnr, 0, lowerCased(name), std::move(value),
                                                   std::move(fallback), vdtype, isaxis));
    });
}

void SectionDictionary::addParameter(int pnr, const std::string& name, Value* value,
                                     Value* defaultval, ValueDataType vdtype, bool isaxis) {
    guarded(kAddParameterText, [&] {
        // Owned from here on, whatever fails below.
        std::unique_ptr<Value> valueOwner(value);
        std::unique_ptr<Value> defaultOwner(defaultval);
        std::shared_ptr<Value> ownedValue(std::move(valueOwner));
        std::shared_ptr<Value> ownedDefault(std::move(defaultOwner));
        insertEntry(std::make_unique<SectionValue>(pnr, 0, lowerCased(name), ownedValue,
                                                   ownedDefault, vdtype, isaxis));
    });
}

void SectionDictionary::addDoubleParameter(int pnr, const std::string& name, double defaultval,
                                           double val) {
    guarded(
        "Error in SectionDictionary::addDoubleParameter(int pnr, const string &  name, double "
        "defaultval, double val)",
        [&] {
            addValuePair<DoubleValue>(pnr, name, defaultval, val, ValueDataType::Double, false);
        });
}

void SectionDictionary::addDoubleParameter(int pnr, const std::string& name, double defaultval) {
    guarded(
        "Error in SectionDictionary::addDoubleParameter(int pnr, const string &  name, double "
        "defaultval)",
        [&] {
            addValuePair<DoubleValue>(pnr, name, defaultval, defaultval, ValueDataType::Double,
                                      false);
        });
}

void SectionDictionary::addAxisParameter(int pnr, const std::string& name, double defaultval) {
    guarded(
        "Error in SectionDictionary::addAxisParameter(int pnr, const string &  name, double "
        "defaultval)",
        [&] {
            addValuePair<DoubleValue>(pnr, name, defaultval, defaultval, ValueDataType::Double,
                                      true);
        });
}

void SectionDictionary::addIntParameter(int pnr, const std::string& name, int defaultval, int val) {
    guarded(
        "Error in SectionDictionary::addIntParameter(int pnr, const string &  name, int "
        "defaultval, int val)",
        [&] { addValuePair<IntValue>(pnr, name, defaultval, val, ValueDataType::Int, false); });
}

void SectionDictionary::addIntParameter(int pnr, const std::string& name, int defaultval) {
    guarded(
        "Error in SectionDictionary::addIntParameter(int pnr, const string &  name, int "
        "defaultval)",
        [&] {
            addValuePair<IntValue>(pnr, name, defaultval, defaultval, ValueDataType::Int, false);
        });
}

void SectionDictionary::addBoolParameter(int pnr, int bit, const std::string& name, bool defaultval,
                                         bool val) {
    guarded(
        "Error in SectionDictionary::addBoolParameter(int pnr, int bit, const string &  name, "
        "bool defaultval, bool val)",
        [&] {
            std::shared_ptr<Value> value = std::make_shared<BoolValue>(val);
            std::shared_ptr<Value> fallback = defaultObject(defaultval);
            insertEntry(std::make_unique<SectionValue>(pnr, bit, lowerCased(name), value, fallback,
                                                       ValueDataType::Bool, false));
        });
}

namespace {

constexpr const char* kAddStringText =
    "Error in SectionDictionary::addStringParameter(int pnr, const string &  name, const string "
    "&  defaultval, const string &  value)";

}  // namespace

void SectionDictionary::addStringParameter(int pnr, const std::string& name,
                                           const std::string& defaultval,
                                           const std::string& value) {
    guarded(kAddStringText, [&] {
        addValuePair<StringValue, const std::string&>(pnr, name, defaultval, value,
                                                      ValueDataType::String, false);
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
        addValuePair<StringValue, const std::string&>(pnr, name, defaultval, defaultval,
                                                      ValueDataType::String, true);
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
