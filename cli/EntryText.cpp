#include "EntryText.h"

#include <velkapi/SectionNames.h>

#include <array>
#include <charconv>

#include "Project.h"

namespace velk {

using VelkApi::GeometrySectionType;
using VelkApi::SectionDictionary;
using VelkApi::sectionName;
using VelkApi::SectionType;
using VelkApi::ValueDataType;

namespace {

// The double marker as a record gives it back: written with six significant digits
// (2.14748e+09), it reads as 2147480000.
constexpr double kUnsetDoubleAsStored = 2147480000.0;

// The marker of an entry: -999999 for an axis value, 2147483647 for any other.
int unsetMarker(const SectionDictionary& section, const std::string& key) {
    return section.isAxis(key) ? VelkApi::kClearedAxis : VelkApi::kUnsetInt;
}

}  // namespace

std::string roleName(GeometrySectionType role) {
    switch (role) {
        case GeometrySectionType::OutlineFigure:
            return "outline figure";
        case GeometrySectionType::IslandFigure:
            return "island figure";
        case GeometrySectionType::FacemillIslandFigure:
            return "island figure (face milling)";
        case GeometrySectionType::OutlineXzProfile:
            return "outline XZ profile";
        case GeometrySectionType::IslandXzProfile:
            return "island XZ profile";
    }
    return "role " + std::to_string(static_cast<int>(role));
}

std::string objectName(const VelkApi::VelkObject& object) {
    const bool instance = object.getType() == VelkApi::VelkObjectType::Figure &&
                          object.getAttribNo() != 0 && object.getAttribNo() != -1;
    return object.getName() +
           (instance ? ", instance " + std::to_string(object.getAttribNo()) : "");
}

std::string describeObject(const VelkApi::VelkObject& object) {
    const int found = object.getSegNo();
    return roleName(object.getSectiontype()) + ": " + objectName(object) + " -> " +
           (found == -1 ? "not in the drawing" : "object " + std::to_string(found));
}

VelkApi::VelkObject drawingObject(const std::string& text, GeometrySectionType role,
                                  const std::string& what) {
    VelkApi::VelkObject object(text, role);
    if (object.getSegNo() == -1) {
        throw CommandError(what + ": '" + text +
                           "' names no figure, point or object of the drawing");
    }
    return object;
}

std::string describeAction(const VelkApi::Action& action) {
    return "kind " + std::to_string(static_cast<int>(action.getType())) + ": " +
           action.getCommand();
}

const char* actionSectionName(bool afterTheOperation) {
    return sectionName(SectionType::Additional, afterTheOperation ? 2 : 1);
}

VelkApi::VelkObject objectOf(const VelkApi::SectionDictionary& section, const std::string& key) {
    VelkApi::VelkObject object;
    section.getValue(key, &object);
    return object;
}

VelkApi::Action actionOf(const VelkApi::SectionDictionary& section, const std::string& key) {
    VelkApi::Action action;
    section.getValue(key, &action);
    return action;
}

std::string entryText(const VelkApi::SectionDictionary& section, const std::string& key) {
    switch (section.dataTypeOf(key)) {
        case VelkApi::ValueDataType::VelkObject:
            return describeObject(objectOf(section, key));
        case VelkApi::ValueDataType::Action:
            return describeAction(actionOf(section, key));
        default:
            return section.getValueAsString(key);
    }
}

bool holdsUnset(const SectionDictionary& section, const std::string& key) {
    const int marker = unsetMarker(section, key);
    switch (section.dataTypeOf(key)) {
        case ValueDataType::Int:
            return section.getInt(key) == marker;
        case ValueDataType::Double: {
            const double value = section.getDouble(key);
            return value == marker ||
                   (marker == VelkApi::kUnsetInt && value == kUnsetDoubleAsStored);
        }
        case ValueDataType::String:
            return section.getString(key) == std::to_string(marker);
        default:
            return false;
    }
}

bool hasUnsetMarker(ValueDataType type) {
    return type == ValueDataType::Int || type == ValueDataType::Double ||
           type == ValueDataType::String;
}

void setUnset(SectionDictionary& section, const std::string& key) {
    const int marker = unsetMarker(section, key);
    switch (section.dataTypeOf(key)) {
        case ValueDataType::Int:
            section.setInt(key, marker);
            break;
        case ValueDataType::Double:
            // The marker as the record gives it back: the same line is written (2.14748e+09),
            // and the value reads back as it was set.
            section.setDouble(key, marker == VelkApi::kUnsetInt ? kUnsetDoubleAsStored : marker);
            break;
        default:
            section.setString(key, std::to_string(marker));
            break;
    }
}

std::string shortestNumber(double value) {
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return std::string(text.data(), result.ptr);
}

std::string shownValue(const SectionDictionary& section, const std::string& key) {
    if (holdsUnset(section, key)) {
        return kUnsetWord;
    }
    switch (section.dataTypeOf(key)) {
        case ValueDataType::Int:
            return std::to_string(section.getInt(key));
        case ValueDataType::Double:
            return shortestNumber(section.getDouble(key));
        default:
            return entryText(section, key);
    }
}

nlohmann::ordered_json jsonValue(const SectionDictionary& section, const std::string& key) {
    if (holdsUnset(section, key)) {
        return nullptr;
    }
    switch (section.dataTypeOf(key)) {
        case ValueDataType::Int:
            return section.getInt(key);
        case ValueDataType::Double:
            return section.getDouble(key);
        case ValueDataType::Bool:
            return section.getBool(key);
        default:
            return section.getValueAsString(key);
    }
}

}  // namespace velk
