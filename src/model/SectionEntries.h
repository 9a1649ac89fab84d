// The library's own look at a section's entries: the sections' readers and writers and the write
// preview walk them here, without the SectionValue objects the protected interface hands out.
#pragma once

#include <velkapi/SectionDictionary.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "model/EntryStore.h"

namespace VelkApi::detail {

struct SectionEntries {
    static EntryStore& of(const SectionDictionary& section) {
        if (!section.values) {  // the constructor failed to make the entries
            throw std::logic_error("section has no entry map");
        }
        return *section.values;
    }
    static EntryRef find(const SectionDictionary& section, const std::string& key) {
        return of(section).find(key);
    }
    static std::vector<EntryRef> byNumber(const SectionDictionary& section) {
        return of(section).byNumber();
    }
    static std::vector<EntryRef> byName(const SectionDictionary& section) {
        return of(section).byName();
    }
    static std::size_t count(const SectionDictionary& section) { return of(section).size(); }

    // Declares an entry as addParameter does when handed a value and a default of the library's
    // own object or action kind, without making the two Value objects it would only copy from.
    static void addObject(SectionDictionary& section, int nr, const std::string& key,
                          VelkObject value, VelkObject fallback);
    static void addAction(SectionDictionary& section, int nr, const std::string& key, Action value,
                          Action fallback);
};

}  // namespace VelkApi::detail
