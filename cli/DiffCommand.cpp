// velk diff BEFORE AFTER [--json]: what changed between two project files, store by store and
// operation by operation. A changed value is "Section.key: old -> new" (an added one "+ new", a
// removed one "- old"); a record whose values tell nothing shows the lines it lost ("-") and
// gained ("+"); operations inserted or deleted are named with their kind. The exit status is
// 0 when the projects are equal and 1 when they differ, as diff's; trouble is 2 or more.
#include <iostream>
#include <memory>

#include "Commands.h"
#include "HostText.h"
#include "Project.h"
#include "ProjectDiff.h"

namespace velk {

namespace {

using Json = nlohmann::ordered_json;

struct DiffOptions {
    std::string before;
    std::string after;
    bool json = false;
};

// An empty text shows as "", so that a value that became empty is seen.
std::string valueText(const ShownValue& value) {
    return value.text.empty() ? "\"\"" : value.text;
}

std::string changeText(const ValueChange& change) {
    if (!change.before) {
        return "+ " + valueText(*change.after);
    }
    if (!change.after) {
        return "- " + valueText(*change.before);
    }
    return valueText(*change.before) + " -> " + valueText(*change.after);
}

void printValues(const std::vector<ValueChange>& changes, const std::string& indent) {
    for (const ValueChange& change : changes) {
        std::cout << indent << change.name << ": " << changeText(change) << "\n";
    }
}

// "store 1, operation 9 (DRILLING)", with both numbers when the operation moved.
std::string recordTitle(int store, const RecordChange& record) {
    std::string title = "store " + std::to_string(store) + ", operation ";
    if (record.before && record.after && *record.before != *record.after) {
        title += std::to_string(*record.before) + " -> " + std::to_string(*record.after);
    } else {
        title += std::to_string(record.before ? *record.before : *record.after);
    }
    return record.kind.empty() ? title : title + " (" + record.kind + ")";
}

void printText(const ProjectChanges& changes) {
    printValues(changes.environment, "");
    printValues(changes.globals, "");
    printValues(changes.drawing, "");
    const Utf8Output utf8;  // the stores' texts are the host's; the project file's are UTF-8
    for (const StoreChange& store : changes.stores) {
        if (store.change != "changed") {
            std::cout << "store " << store.store << ": " << store.change << "\n";
        }
        for (const RecordChange& record : store.records) {
            if (record.change != "changed") {
                std::cout << recordTitle(store.store, record) << ": " << record.change << "\n";
                continue;
            }
            std::cout << recordTitle(store.store, record) << ":\n";
            printValues(record.values, "  ");
            for (const LineChange& line : record.lines) {
                const std::string number =
                    line.number ? " line " + std::to_string(*line.number) : "";
                std::cout << "  " << line.section << number << ": " << (line.added ? "+ " : "- ")
                          << line.line << "\n";
            }
        }
    }
}

Json valuesJson(const std::vector<ValueChange>& changes) {
    Json values = Json::array();
    for (const ValueChange& change : changes) {
        Json value = {{"name", change.name}};
        if (change.before) {
            value["before"] = change.before->json;
        }
        if (change.after) {
            value["after"] = change.after->json;
        }
        values.push_back(value);
    }
    return values;
}

Json recordJson(const RecordChange& record) {
    Json out = {{"change", record.change}};
    if (record.before) {
        out["before"] = *record.before;
    }
    if (record.after) {
        out["after"] = *record.after;
    }
    out["kind"] = record.kind;
    out["values"] = valuesJson(record.values);
    Json lines = Json::array();
    for (const LineChange& line : record.lines) {
        Json entry = {{"section", line.section}, {line.added ? "added" : "removed", line.line}};
        if (line.number) {
            entry["line"] = *line.number;
        }
        lines.push_back(entry);
    }
    out["lines"] = lines;
    return out;
}

void printJson(const ProjectChanges& changes) {
    Json stores = Json::array();
    for (const StoreChange& store : changes.stores) {
        Json records = Json::array();
        for (const RecordChange& record : store.records) {
            records.push_back(recordJson(record));
        }
        stores.push_back(
            {{"store", store.store}, {"change", store.change}, {"operations", records}});
    }
    const Json out = {{"equal", changes.empty()},
                      {"environment", valuesJson(changes.environment)},
                      {"globals", valuesJson(changes.globals)},
                      {"cad", valuesJson(changes.drawing)},
                      {"stores", utf8Json(stores)}};
    std::cout << out.dump(2) << "\n";
}

void diff(const DiffOptions& options) {
    // Only one project is held at a time: the first as digests while the second is read, the
    // second's records read in full where they differ, then the first loaded again for its own.
    ProjectSnapshot before = readProjectSnapshot(options.before, KeptLines::None);
    ProjectSnapshot after = readProjectSnapshot(options.after, KeptLines::All);
    const auto [readBefore, readAfter] = recordsToRead(before, after);
    readRecordsInFull(after, readAfter);
    for (auto& [number, store] : after.stores) {
        velkhost::Records().swap(store.records);
    }
    loadProject(options.before);
    readRecordsInFull(before, readBefore);
    const ProjectChanges changes = compareProjects(before, after);
    if (options.json) {
        printJson(changes);
    } else {
        printText(changes);
    }
    if (!changes.empty()) {
        throw CLI::RuntimeError(1);  // different: diff's exit status, with nothing more to say
    }
}

}  // namespace

void printChanges(const ProjectChanges& changes) {
    printText(changes);
}

void addDiffCommand(CLI::App& app) {
    auto options = std::make_shared<DiffOptions>();
    CLI::App* command =
        app.add_subcommand("diff",
                           "Show what changed between two project files, operation by operation "
                           "(exit status 0: equal, 1: different, 2 or more: trouble)");
    command->add_option("BEFORE", options->before, "Project file before (JSON)")
        ->required()
        ->check(CLI::ExistingFile);
    command->add_option("AFTER", options->after, "Project file after (JSON)")
        ->required()
        ->check(CLI::ExistingFile);
    command->add_flag("--json", options->json, "Print JSON instead of text");
    command->callback([options] { velk::diff(*options); });
}

}  // namespace velk
