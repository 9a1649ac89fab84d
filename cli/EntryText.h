// How velk shows and reads the values of an operation: the "not set" marker as `unset`, numbers
// in their shortest exact form, geometry objects and actions described.
#pragma once

#include <velkapi/ActionSection.h>
#include <velkapi/GeometrySection.h>

#include <nlohmann/json.hpp>

#include <string>

namespace velk {

// "outline figure", "island figure", ... of a geometry object's role.
std::string roleName(VelkApi::GeometrySectionType role);

// The object's name, with its instance when it is one: "POCKET, instance 1".
std::string objectName(const VelkApi::VelkObject& object);

// "outline figure: OUTER -> object 10", or "... -> not in the drawing".
std::string describeObject(const VelkApi::VelkObject& object);

// The drawing object that `text` names, in the role given; throws CommandError, saying `what`
// was given the text, when the drawing has none.
VelkApi::VelkObject drawingObject(const std::string& text, VelkApi::GeometrySectionType role,
                                  const std::string& what);

// "kind 5: M8"
std::string describeAction(const VelkApi::Action& action);

// The action section's name in the operation: "Additional_1" before, "Additional_2" after.
const char* actionSectionName(bool afterTheOperation);

// The object or the action an entry holds.
VelkApi::VelkObject objectOf(const VelkApi::SectionDictionary& section, const std::string& key);
VelkApi::Action actionOf(const VelkApi::SectionDictionary& section, const std::string& key);

// An entry's value as the library renders it: an object or an action described, anything else
// as its text.
std::string entryText(const VelkApi::SectionDictionary& section, const std::string& key);

// What velk prints for a value that holds the "not set" marker, and reads back as that marker.
inline const std::string kUnsetWord = "unset";

// True when the entry holds the "not set" marker of its kind: 2147483647 for an int, a double or
// a text, -999999 for an axis value. A double read back from a record has kept six significant
// digits of the marker, 2147480000, which counts as the marker too. Bools are always set.
bool holdsUnset(const VelkApi::SectionDictionary& section, const std::string& key);
// Ints, doubles and texts have a "not set" marker; bools, objects and actions have none.
bool hasUnsetMarker(VelkApi::ValueDataType type);
// Sets an int, double or text entry to its "not set" marker.
void setUnset(VelkApi::SectionDictionary& section, const std::string& key);

// The shortest text that reads back as exactly this number: 2 as "2", -14.5 as "-14.5".
std::string shortestNumber(double value);

// An entry's value as velk show prints it: "unset", a number in its shortest exact form, true
// or false, a text as it stands, an object or an action described.
std::string shownValue(const VelkApi::SectionDictionary& section, const std::string& key);
// The same as JSON: null for "not set", a number, a bool, or a text (an object's name, an
// action's command).
nlohmann::ordered_json jsonValue(const VelkApi::SectionDictionary& section, const std::string& key);

}  // namespace velk
