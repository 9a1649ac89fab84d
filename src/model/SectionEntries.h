// The library's own look at a section's entries, for code outside the section classes that
// compares sections (the write preview).
#pragma once

#include <velkapi/SectionDictionary.h>

#include <string>
#include <vector>

namespace VelkApi::detail {

struct SectionEntries {
    static const SectionValue* find(const SectionDictionary& section, const std::string& key) {
        return section.findEntry(key);
    }
    static std::vector<SectionValue*> byNumber(const SectionDictionary& section) {
        return section.entriesByNumber();
    }
    static std::size_t count(const SectionDictionary& section) { return section.entries().size(); }
};

}  // namespace VelkApi::detail
