// The names of an operation's sections: the name an operation keeps each section under, the
// key it is asked for by, and where the section lies in the stored record. Every list of
// section names, in the library and in velk, is taken from this one table.
#pragma once

#include <array>

#include <velkapi/OperationBase.h>

namespace VelkApi::detail {

struct SectionName {
    const char* name;
    SectionType type;
    int number;  // the number of an action section (1 before, 2 after the operation); else 0
    int stored;  // the section's number in the stored record; -1 for the header, which is none
};

// In the order of their names: the order in which an operation keeps and writes its sections.
inline constexpr std::array<SectionName, 7> kSectionNames = {{
    {"Additional_1", SectionType::Additional, 1, 4},
    {"Additional_2", SectionType::Additional, 2, 5},
    {"Geometry", SectionType::Geometry, 0, 3},
    {"Header", SectionType::Header, 0, -1},
    {"Message", SectionType::Message, 0, 0},
    {"Parameter", SectionType::Parameter, 0, 2},
    {"ToolData", SectionType::ToolData, 0, 1},
}};

// An action section's name is this, then its number.
inline constexpr char kActionSectionPrefix[] = "Additional_";

// The name of the section asked for as `type` and `number`; "" when there is none.
constexpr const char* sectionName(SectionType type, int number = 0) {
    for (const SectionName& section : kSectionNames) {
        if (section.type == type && section.number == number) {
            return section.name;
        }
    }
    return "";
}

}  // namespace VelkApi::detail
