#include "ProjectDiff.h"

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

// Records only one side has, between two records both share: those of the same kind, in order,
// are one record changed; the others were deleted or inserted.
void compareUnmatched(const std::vector<RecordSnapshot>& before, const std::vector<int>& beforeNrs,
                      const std::vector<RecordSnapshot>& after, const std::vector<int>& afterNrs,
                      std::vector<RecordChange>& changes) {
    auto kindOf = [](const std::vector<RecordSnapshot>& records, const std::vector<int>& nrs) {
        std::vector<std::string> kinds;
        for (const int nr : nrs) {
            kinds.push_back(records[static_cast<std::size_t>(nr)].kind);
        }
        return kinds;
    };
    for (const AlignedPair& step :
         align(kindOf(before, beforeNrs), kindOf(after, afterNrs), std::equal_to<>())) {
        const std::optional<int> was =
            step.before ? std::optional<int>(beforeNrs[*step.before]) : std::nullopt;
        const std::optional<int> is =
            step.after ? std::optional<int>(afterNrs[*step.after]) : std::nullopt;
        if (was && is) {
            changes.push_back(compareRecord(before[static_cast<std::size_t>(*was)], *was,
                                            after[static_cast<std::size_t>(*is)], *is));
        } else if (was) {
            changes.push_back({"deleted",
                               was,
                               std::nullopt,
                               before[static_cast<std::size_t>(*was)].kind,
                               {},
                               {}});
        } else {
            changes.push_back(
                {"inserted", std::nullopt, is, after[static_cast<std::size_t>(*is)].kind, {}, {}});
        }
    }
}

std::vector<RecordChange> compareRecords(const std::vector<RecordSnapshot>& before,
                                         const std::vector<RecordSnapshot>& after) {
    std::vector<RecordChange> changes;
    std::vector<int> beforeNrs;
    std::vector<int> afterNrs;
    auto flush = [&] {
        compareUnmatched(before, beforeNrs, after, afterNrs, changes);
        beforeNrs.clear();
        afterNrs.clear();
    };
    const auto sameLines = [](const RecordSnapshot& a, const RecordSnapshot& b) {
        return a.lines == b.lines;
    };
    for (const AlignedPair& step : align(before, after, sameLines)) {
        if (step.before && step.after) {
            flush();
        } else if (step.before) {
            beforeNrs.push_back(static_cast<int>(*step.before));
        } else {
            afterNrs.push_back(static_cast<int>(*step.after));
        }
    }
    flush();
    return changes;
}

}  // namespace

ProjectChanges compareProjects(const ProjectSnapshot& before, const ProjectSnapshot& after) {
    ProjectChanges changes;
    compareValues(members("environment.", before.environment),
                  members("environment.", after.environment), changes.environment);
    compareValues(members("globals.", before.globals), members("globals.", after.globals),
                  changes.globals);
    compareDrawing(before.drawing, after.drawing, changes.drawing);

    static const std::vector<RecordSnapshot> none;
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
        const std::string change = was == before.stores.end() ? "added"
                                   : is == after.stores.end() ? "removed"
                                                              : "changed";
        std::vector<RecordChange> records =
            compareRecords(was == before.stores.end() ? none : was->second,
                           is == after.stores.end() ? none : is->second);
        if (!records.empty() || change != "changed") {
            changes.stores.push_back({store, change, std::move(records)});
        }
    }
    return changes;
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
