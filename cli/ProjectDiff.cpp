#include "ProjectDiff.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <utility>

#include "Alignment.h"
#include "EntryText.h"

namespace velk {

namespace {

using Json = nlohmann::ordered_json;

// Adds the changes between two sets of named values, in name order.
void compareValues(const std::map<std::string, ShownValue>& before,
                   const std::map<std::string, ShownValue>& after,
                   std::vector<ValueChange>& changes) {
    std::set<std::string> names;
    for (const auto& [name, value] : before) {
        names.insert(name);
    }
    for (const auto& [name, value] : after) {
        names.insert(name);
    }
    for (const std::string& name : names) {
        const auto was = before.find(name);
        const auto is = after.find(name);
        ValueChange change{name, std::nullopt, std::nullopt};
        if (was != before.end()) {
            change.before = was->second;
        }
        if (is != after.end()) {
            change.after = is->second;
        }
        if (!(change.before && change.after && *change.before == *change.after)) {
            changes.push_back(change);
        }
    }
}

ShownValue shown(const Json& value) {
    return {jsonText(value), value};
}

// The members of a JSON object as named values, each name after `prefix`.
std::map<std::string, ShownValue> members(const std::string& prefix, const Json& object) {
    std::map<std::string, ShownValue> values;
    for (const auto& [name, value] : object.items()) {
        values[prefix + name] = shown(value);
    }
    return values;
}

// The drawing's figures and objects by list and number, each without its number.
std::map<std::pair<std::string, int>, Json> drawingItems(const Json& drawing) {
    std::map<std::pair<std::string, int>, Json> items;
    for (const char* list : {"figures", "objects"}) {
        if (!drawing.contains(list)) {
            continue;
        }
        for (Json item : drawing[list]) {
            const int number = item["number"].get<int>();
            item.erase("number");
            items[{list, number}] = item;
        }
    }
    return items;
}

// A figure or object added or removed is one change; one of both sides, a change per member.
void compareDrawing(const Json& before, const Json& after, std::vector<ValueChange>& changes) {
    const auto was = drawingItems(before);
    const auto is = drawingItems(after);
    std::set<std::pair<std::string, int>> keys;
    for (const auto& [key, item] : was) {
        keys.insert(key);
    }
    for (const auto& [key, item] : is) {
        keys.insert(key);
    }
    for (const auto& key : keys) {
        const std::string name = "cad." + key.first + "." + std::to_string(key.second);
        const auto old = was.find(key);
        const auto now = is.find(key);
        if (old != was.end() && now != is.end()) {
            compareValues(members(name + ".", old->second), members(name + ".", now->second),
                          changes);
        } else if (old != was.end()) {
            changes.push_back({name, shown(old->second), std::nullopt});
        } else {
            changes.push_back({name, std::nullopt, shown(now->second)});
        }
    }
}

// True when a value of the section changed: its changed lines are accounted for.
bool valuesChanged(const std::vector<ValueChange>& values, const std::string& section) {
    for (const ValueChange& value : values) {
        if (value.name.rfind(section + ".", 0) == 0) {
            return true;
        }
    }
    return false;
}

// The lines of each section that only one side has, sections matched by name; with `values`,
// only those of sections none of whose values changed, numbered.
std::vector<LineChange> compareLines(const RecordSnapshot& before, const RecordSnapshot& after,
                                     const std::vector<ValueChange>* values = nullptr) {
    std::vector<std::string> names;
    std::map<std::string, std::vector<std::string>> was;
    std::map<std::string, std::vector<std::string>> is;
    for (const auto& [name, lines] : before.sections) {
        names.push_back(name);
        was[name] = lines;
    }
    for (const auto& [name, lines] : after.sections) {
        if (!was.count(name)) {
            names.push_back(name);
        }
        is[name] = lines;
    }
    std::vector<LineChange> changes;
    for (const std::string& name : names) {
        // The header's counts follow from the other sections, whose lines show the change.
        if (values != nullptr && (name == "header" || valuesChanged(*values, name))) {
            continue;
        }
        const std::vector<std::string>& old = was[name];
        const std::vector<std::string>& now = is[name];
        for (const AlignedPair& step : align(old, now, std::equal_to<>())) {
            const std::size_t index = step.after ? *step.after : *step.before;
            const std::optional<int> number =
                values != nullptr ? std::optional<int>(static_cast<int>(index)) : std::nullopt;
            if (!step.after) {
                changes.push_back({name, false, old[*step.before], number});
            } else if (!step.before) {
                changes.push_back({name, true, now[*step.after], number});
            }
        }
    }
    return changes;
}

RecordChange compareRecord(const RecordSnapshot& before, int beforeNr, const RecordSnapshot& after,
                           int afterNr) {
    RecordChange change{"changed", beforeNr, afterNr, before.kind, {}, {}};
    compareValues(before.values, after.values, change.values);
    // Lines the library does not read show only in the lines: a record with values shows those
    // of its sections whose values did not change.
    const bool hasValues = !before.values.empty() || !after.values.empty();
    change.lines = compareLines(before, after, hasValues ? &change.values : nullptr);
    return change;
}

// The records only one side has, between two records both share.
struct UnmatchedRun {
    std::vector<int> before;
    std::vector<int> after;
};

std::vector<UnmatchedRun> unmatchedRuns(const std::vector<std::uint64_t>& before,
                                        const std::vector<std::uint64_t>& after) {
    std::vector<UnmatchedRun> runs(1);
    for (const AlignedPair& step : align(before, after, std::equal_to<>())) {
        if (step.before && step.after) {
            if (!runs.back().before.empty() || !runs.back().after.empty()) {
                runs.emplace_back();
            }
        } else if (step.before) {
            runs.back().before.push_back(static_cast<int>(*step.before));
        } else {
            runs.back().after.push_back(static_cast<int>(*step.after));
        }
    }
    if (runs.back().before.empty() && runs.back().after.empty()) {
        runs.pop_back();
    }
    return runs;
}

const RecordSnapshot& readRecord(const StoreSnapshot& store, int nr) {
    return store.read.at(static_cast<std::size_t>(nr));
}

// In a run of records only one side has, those of the same kind, in order, are one record
// changed; the others were deleted or inserted.
void compareRun(const StoreSnapshot& before, const StoreSnapshot& after, const UnmatchedRun& run,
                std::vector<RecordChange>& changes) {
    auto kindOf = [](const StoreSnapshot& store, const std::vector<int>& nrs) {
        std::vector<std::string> kinds;
        for (const int nr : nrs) {
            kinds.push_back(readRecord(store, nr).kind);
        }
        return kinds;
    };
    for (const AlignedPair& step :
         align(kindOf(before, run.before), kindOf(after, run.after), std::equal_to<>())) {
        const std::optional<int> was =
            step.before ? std::optional<int>(run.before[*step.before]) : std::nullopt;
        const std::optional<int> is =
            step.after ? std::optional<int>(run.after[*step.after]) : std::nullopt;
        if (was && is) {
            changes.push_back(
                compareRecord(readRecord(before, *was), *was, readRecord(after, *is), *is));
        } else if (was) {
            changes.push_back(
                {"deleted", was, std::nullopt, readRecord(before, *was).kind, {}, {}});
        } else {
            changes.push_back({"inserted", std::nullopt, is, readRecord(after, *is).kind, {}, {}});
        }
    }
}

std::vector<RecordChange> compareRecords(const StoreSnapshot& before, const StoreSnapshot& after) {
    std::vector<RecordChange> changes;
    for (const UnmatchedRun& run : unmatchedRuns(before.digests, after.digests)) {
        compareRun(before, after, run, changes);
    }
    return changes;
}

// Calls `visit(store, before, after)` for every store of either project; a store one side
// lacks is empty there.
template <class Visit>
void forEachStore(const ProjectSnapshot& before, const ProjectSnapshot& after, Visit visit) {
    static const StoreSnapshot none;
    std::set<int> stores;
    for (const auto& [store, records] : before.stores) {
        stores.insert(store);
    }
    for (const auto& [store, records] : after.stores) {
        stores.insert(store);
    }
    for (const int store : stores) {
        const auto was = before.stores.find(store);
        const auto is = after.stores.find(store);
        visit(store, was == before.stores.end() ? nullptr : &was->second,
              is == after.stores.end() ? nullptr : &is->second, none);
    }
}

}  // namespace

ProjectChanges compareProjects(const ProjectSnapshot& before, const ProjectSnapshot& after) {
    ProjectChanges changes;
    compareValues(members("environment.", before.environment),
                  members("environment.", after.environment), changes.environment);
    compareValues(members("globals.", before.globals), members("globals.", after.globals),
                  changes.globals);
    compareDrawing(before.drawing, after.drawing, changes.drawing);

    forEachStore(before, after,
                 [&](int store, const StoreSnapshot* was, const StoreSnapshot* is,
                     const StoreSnapshot& none) {
                     const std::string change = was == nullptr  ? "added"
                                                : is == nullptr ? "removed"
                                                                : "changed";
                     std::vector<RecordChange> records =
                         compareRecords(was == nullptr ? none : *was, is == nullptr ? none : *is);
                     if (!records.empty() || change != "changed") {
                         changes.stores.push_back({store, change, std::move(records)});
                     }
                 });
    return changes;
}

std::pair<RecordNumbers, RecordNumbers> recordsToRead(const ProjectSnapshot& before,
                                                      const ProjectSnapshot& after) {
    RecordNumbers readBefore;
    RecordNumbers readAfter;
    forEachStore(before, after,
                 [&](int store, const StoreSnapshot* was, const StoreSnapshot* is,
                     const StoreSnapshot& none) {
                     for (const UnmatchedRun& run :
                          unmatchedRuns((was ? *was : none).digests, (is ? *is : none).digests)) {
                         if (!run.before.empty()) {
                             readBefore[store].insert(run.before.begin(), run.before.end());
                         }
                         if (!run.after.empty()) {
                             readAfter[store].insert(run.after.begin(), run.after.end());
                         }
                     }
                 });
    return {readBefore, readAfter};
}

void readWhatDiffers(ProjectSnapshot& before, ProjectSnapshot& after) {
    const auto [readBefore, readAfter] = recordsToRead(before, after);
    readRecordsInFull(before, readBefore);
    readRecordsInFull(after, readAfter);
}

std::string jsonText(const Json& value) {
    if (value.is_string()) {
        return value.get<std::string>();
    }
    if (value.is_number_float()) {
        return shortestNumber(value.get<double>());
    }
    if (value.is_array()) {
        std::string text;
        for (const Json& item : value) {
            text += (text.empty() ? "" : ", ") + jsonText(item);
        }
        return "[" + text + "]";
    }
    return value.dump();
}

}  // namespace velk
