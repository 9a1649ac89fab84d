// How velk shows and reads the geometry objects and the actions of an operation.
#pragma once

#include <velkapi/ActionSection.h>
#include <velkapi/GeometrySection.h>

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

// An entry's value as velk shows it: an object or an action described, anything else as its
// text.
std::string entryText(const VelkApi::SectionDictionary& section, const std::string& key);

}  // namespace velk
