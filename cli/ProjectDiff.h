// What changed between two projects: values of the environment, globals and drawing; stores
// added or removed; and within a store the operations inserted, deleted or changed, a changed
// one by its values (Section.key old -> new) and by the lines of the sections whose values did
// not change (what the library does not read), or, where it has no values, by its lines.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ProjectSnapshot.h"

namespace velk {

// A value that changed: before only, it was removed; after only, it was added.
struct ValueChange {
    std::string name;  // "Parameter.w_depth", "environment.TURNDRIVENTOOLS", ...
    std::optional<ShownValue> before;
    std::optional<ShownValue> after;
};

// A line removed from or added to a section of a record.
struct LineChange {
    std::string section;
    bool added = false;
    std::string line;
    // Its number in the section (in the project before when removed, after when added), given
    // for a line of an operation or tool whose values did not account for it.
    std::optional<int> number;
};

// A record of a store: "inserted" (after only), "deleted" (before only) or "changed".
struct RecordChange {
    std::string change;
    std::optional<int> before;  // its number in the project before
    std::optional<int> after;   // and after
    std::string kind;
    std::vector<ValueChange> values;
    std::vector<LineChange> lines;
};

struct StoreChange {
    int store = 0;
    std::string change;  // "added", "removed" or "changed"
    std::vector<RecordChange> records;
};

struct ProjectChanges {
    std::vector<ValueChange> environment;
    std::vector<ValueChange> globals;
    std::vector<ValueChange> drawing;
    std::vector<StoreChange> stores;

    bool empty() const {
        return environment.empty() && globals.empty() && drawing.empty() && stores.empty();
    }
};

// The records of each side a comparison reads in full: in every store, those only one side
// has between the records both share.
std::pair<RecordNumbers, RecordNumbers> recordsToRead(const ProjectSnapshot& before,
                                                      const ProjectSnapshot& after);
// Reads those records of both sides in full, each against the environment, globals and drawing
// the offline host holds.
void readWhatDiffers(ProjectSnapshot& before, ProjectSnapshot& after);

// The changes between two snapshots whose differing records have been read in full.
ProjectChanges compareProjects(const ProjectSnapshot& before, const ProjectSnapshot& after);

// Prints the changes as velk diff does, one line each.
void printChanges(const ProjectChanges& changes);

// A JSON value as velk prints it: a text as it stands, a number in its shortest exact form, a
// list as "[a, b]", an object as compact JSON.
std::string jsonText(const nlohmann::ordered_json& value);

}  // namespace velk
