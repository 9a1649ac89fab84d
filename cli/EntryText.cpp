#include "EntryText.h"

#include "Project.h"

namespace velk {

using VelkApi::GeometrySectionType;

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
    return afterTheOperation ? "Additional_2" : "Additional_1";
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

}  // namespace velk
