/// \file
/// The sections of an operation: the name an operation keeps each section under, the type and
/// number it is asked for by (OperationBase::SectionTypeToString), and where the section lies in
/// the stored record. Every list of section names, in the library and in velk, is this table.
#pragma once

#include <array>

#include <velkapi/OperationBase.h>

namespace VelkApi {

/// One section of an operation.
struct SectionName {
    const char* name;  ///< the name the operation keeps the section under, e.g. "Message"
    SectionType type;  ///< the type the section is asked for by
    /// The number of an action section (1 before, 2 after the operation); 0 for the others.
    int number;
    /// The section's number in the stored record; -1 for the header, which is not a section there.
    int stored;
};

/// In the order of their names: the order in which an operation keeps and writes its sections.
inline constexpr std::array<SectionName, 7> kSectionNames = {{
    {"Additional_1", SectionType::Additional, 1, 4},
    {"Additional_2", SectionType::Additional, 2, 5},
    {"Geometry", SectionType::Geometry, 0, 3},
    {"Header", SectionType::Header, 0, -1},
    {"Message", SectionType::Message, 0, 0},
    {"Parameter", SectionType::Parameter, 0, 2},
    {"ToolData", SectionType::ToolData, 0, 1},
}};

/// An action section's name is this, then its number.
inline constexpr char kActionSectionPrefix[] = "Additional_";

/// The name of the section asked for as `type` and `number`; "" when there is none.
constexpr const char* sectionName(SectionType type, int number = 0) {
    for (const SectionName& section : kSectionNames) {
        if (section.type == type && section.number == number) {
            return section.name;
        }
    }
    return "";
}

}  // namespace VelkApi
