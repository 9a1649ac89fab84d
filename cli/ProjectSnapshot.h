// A project as velk diff compares it: the lines of every record of every store, the records
// the comparison needs read through the library into their values where they are operations or
// tools, and the project's environment, globals and drawing.
#pragma once

#include <velkhost/OfflineHost.h>
#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
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

// One record of a store, read in full. An operation or a tool has its values keyed
// "Section.key"; any record has its lines, section by section.
struct RecordSnapshot {
    // "DRILLING", "tool", or "" for a record that is neither an operation nor a tool.
    std::string kind;
    std::vector<std::string> lines;
    // The section's name ("header", "Message", ... or "section <n>"), then its lines.
    std::vector<std::pair<std::string, std::vector<std::string>>> sections;
    std::map<std::string, ShownValue> values;
};

// One store: a digest of the lines of every record, the lines themselves unless only the
// digests were kept, and those records a comparison needs read in full (readRecordsInFull), by
// number. Reading every record of a large store in full would take far more time and memory
// than comparing digests.
struct StoreSnapshot {
    std::vector<std::uint64_t> digests;
    velkhost::Records records;
    std::map<std::size_t, RecordSnapshot> read;
};

// What a snapshot keeps of the records' lines besides their digests.
enum class KeptLines { All, None };

struct ProjectSnapshot {
    std::map<int, StoreSnapshot> stores;
    // The project file's "environment", "globals" and "cad" parts, in the offline host's form.
    nlohmann::ordered_json environment;
    nlohmann::ordered_json globals;
    nlohmann::ordered_json drawing;
};

// The numbers of the records to read in full, by store.
using RecordNumbers = std::map<int, std::set<std::size_t>>;

// What record `nr` of the store is, from its header: an operation's kind ("DRILLING"), "tool",
// or "" for neither.
std::string recordKind(int store, int nr);

// Loads the project file into the offline host and takes its stores out of it (throws
// velkhost::ProjectError): the offline host keeps the project's other parts and no store.
ProjectSnapshot readProjectSnapshot(const std::string& path, KeptLines kept);
// The project loaded into the offline host, as it stands now; the host keeps it.
ProjectSnapshot snapshotOfLoadedProject();

// Reads the records `numbers` names in full through the library, against the environment,
// globals and drawing the offline host holds. A store whose lines the snapshot kept is lent to
// the host for the reading, and the store the host held under its number put back after; one
// whose lines it did not keep is read from the host as it stands: the same project must be
// loaded again.
void readRecordsInFull(ProjectSnapshot& snapshot, const RecordNumbers& numbers);

}  // namespace velk
