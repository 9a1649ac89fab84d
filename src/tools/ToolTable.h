// Walking the tool line table: by line, by slot, and by the host variables its names stand for.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <velkapi/ToolSection.h>

#include "model/SectionEntries.h"
#include "model/SharedRowsMemo.h"

namespace VelkApi::tools {

// The kind a table name's first character gives: 'i' an int, 'w' a double, '$' a text; 0 for
// any other first character, a name every tool operation passes over.
inline char kindOf(const std::string& name) {
    const char first = name.empty() ? '\0' : name.front();
    return first == 'i' || first == 'w' || first == '$' ? first : '\0';
}

// Calls visit(line, slot, name) for every name of a known kind, line by line and slot by slot,
// both counted from 0.
template <typename Visit>
void forEachName(Visit&& visit) {
    for (int line = 0; line < ToolSection::LINESCOUNT; ++line) {
        for (int slot = 0; slot < ToolSection::lineslen[line]; ++slot) {
            const std::string& name = ToolSection::lines[line][slot];
            if (kindOf(name) != '\0') {
                visit(line, slot, name);
            }
        }
    }
}

// One place of the tool table as a tool section declares it: its name (of a known kind) and
// its entry number, the count of such names before that place.
struct Declaration {
    const std::string* name;
    int number;
};

// The tool section's declarations, built once, ordered by name (the names are lower case, so
// this is the entry map's own order) and, for a name the table holds twice, by number: declared
// in this order, each entry goes to the end of the map, and a name's first place keeps it.
inline const std::vector<Declaration>& declarationsByName() {
    static const std::vector<Declaration> declarations = [] {
        std::vector<Declaration> list;
        forEachName([&](int, int, const std::string& name) {
            list.push_back({&name, static_cast<int>(list.size())});
        });
        std::stable_sort(list.begin(), list.end(), [](const Declaration& a, const Declaration& b) {
            return *a.name < *b.name;
        });
        return list;
    }();
    return declarations;
}

// The entry of each table place (by declaration number), kNoEntry where the section has none of
// that name: one walk of the entries beside the declarations, both in key order, instead of a
// lookup per place.
constexpr std::uint32_t kNoEntry = ~std::uint32_t{0};

inline std::vector<std::uint32_t> walkEntriesByPlace(const SectionDictionary& section) {
    const std::vector<detail::EntryRef> entries = detail::SectionEntries::byName(section);
    std::vector<std::uint32_t> byPlace(declarationsByName().size(), kNoEntry);
    auto entry = entries.begin();
    for (const auto& [name, number] : declarationsByName()) {
        while (entry != entries.end() && entry->name() < *name) {
            ++entry;
        }
        if (entry != entries.end() && entry->name() == *name) {
            byPlace[static_cast<std::size_t>(number)] = entry->position();
        }
    }
    return byPlace;
}

// As walkEntriesByPlace, worked out once for the shared rows tool sections follow.
inline const std::vector<std::uint32_t>& entriesByPlace(const SectionDictionary& section) {
    static detail::SharedRowsMemo<std::vector<std::uint32_t>> byPlace;
    return byPlace.of(detail::SectionEntries::of(section), 0,
                      [&] { return walkEntriesByPlace(section); });
}

// The key of element `index` (from 1) of a host array: "w_t_val(3)".
inline std::string elementKey(const char* array, std::size_t index) {
    return std::string(array) + "(" + std::to_string(index) + ")";
}

// The scratch arrays of one tool section class, one per host array.
struct ScratchArrays {
    int (&bin)[ToolSection::BIN_SIZE];
    double (&val)[ToolSection::VAL_SIZE];
    double (&turVal)[ToolSection::TUR_VAL_SIZE];
};

// Walks the table's names as the host's variables hold them. The names of each host array
// ("i_t_bin(1)" to "i_t_bin(3)", "w_t_val(...)", "w_t_tur_val(...)") are one step, taken at the
// array's first element as onArray(arrayName, scratchArray); every other name is
// onScalar(name). With `keys`, names that are not its keys are passed over.
template <typename OnScalar, typename OnArray>
void forEachVariable(const SectionDictionary* keys, ScratchArrays scratch, OnScalar&& onScalar,
                     OnArray&& onArray) {
    const auto arrayStep = [&](const std::string& name, const char* array, auto& values) {
        if (name.compare(0, std::char_traits<char>::length(array), array) != 0) {
            return false;
        }
        if (name == elementKey(array, 1)) {
            onArray(array, values);
        }
        return true;
    };
    forEachName([&](int, int, const std::string& name) {
        if (keys != nullptr && !keys->existsKey(name)) {
            return;
        }
        if (!arrayStep(name, "i_t_bin", scratch.bin) && !arrayStep(name, "w_t_val", scratch.val) &&
            !arrayStep(name, "w_t_tur_val", scratch.turVal)) {
            onScalar(name);
        }
    });
}

}  // namespace VelkApi::tools
