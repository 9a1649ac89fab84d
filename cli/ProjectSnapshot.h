// A project as velk diff compares it: every record of every store, read through the library
// into its values where it is an operation or a tool, and the project's environment, globals
// and drawing.
#pragma once

#include <nlohmann/json.hpp>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace velk {

// A value as velk shows it: its text (velk show's form) and its JSON.
struct ShownValue {
    std::string text;
    nlohmann::ordered_json json;

    bool operator==(const ShownValue& other) const {
        return text == other.text && json == other.json;
    }
};

// One record of a store. An operation or a tool has its values keyed "Section.key"; any record
// has its lines, section by section.
struct RecordSnapshot {
    // "DRILLING", "tool", or "" for a record that is neither an operation nor a tool.
    std::string kind;
    std::vector<std::string> lines;
    // The section's name ("header", "Message", ... or "section <n>"), then its lines.
    std::vector<std::pair<std::string, std::vector<std::string>>> sections;
    std::map<std::string, ShownValue> values;
};

struct ProjectSnapshot {
    std::map<int, std::vector<RecordSnapshot>> stores;
    // The project file's "environment", "globals" and "cad" parts, in the offline host's form.
    nlohmann::ordered_json environment;
    nlohmann::ordered_json globals;
    nlohmann::ordered_json drawing;
};

// What record `nr` of the store is, from its header: an operation's kind ("DRILLING"), "tool",
// or "" for neither.
std::string recordKind(int store, int nr);

// Loads the project file into the offline host and reads it (throws velkhost::ProjectError).
ProjectSnapshot readProjectSnapshot(const std::string& path);
// The project loaded into the offline host, as it stands now.
ProjectSnapshot snapshotOfLoadedProject();

}  // namespace velk
