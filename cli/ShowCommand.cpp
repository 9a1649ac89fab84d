// velk show PROJECT --store N --op K [--section NAME] [--json]: every key of every section of
// one operation, with its data type and value. A value that holds the "not set" marker shows as
// `unset` (null in JSON), numbers in their shortest exact form. The header's values are the
// record's numbers; a geometry object shows its role, its text and the drawing object it
// resolves to, an action its kind and command.
#include <velkapi/MillDrillOperation.h>

#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>

#include "Commands.h"
#include "EntryText.h"
#include "HostText.h"
#include "Project.h"

namespace velk {

namespace {

using VelkApi::SectionDictionary;
using VelkApi::ValueDataType;

struct ShowOptions {
    std::string project;
    int store = 0;
    int op = 0;
    std::string section;
    bool json = false;
};

std::vector<std::string> keysOf(const SectionDictionary& section) {
    std::vector<std::string> keys;
    section.readKeys(keys);
    return keys;
}

// The entry's type and value, and what an object or an action holds besides.
nlohmann::ordered_json jsonEntry(const SectionDictionary& section, const std::string& key) {
    nlohmann::ordered_json entry = {{"type", dataTypeName(section.dataTypeOf(key))},
                                    {"value", jsonValue(section, key)}};
    if (section.dataTypeOf(key) == ValueDataType::VelkObject) {
        const VelkApi::VelkObject object = objectOf(section, key);
        entry["role"] = roleName(object.getSectiontype());
        entry["attribute"] = object.getAttribNo();
        entry["text"] = object.toString();
        entry["object"] = object.getSegNo();
    } else if (section.dataTypeOf(key) == ValueDataType::Action) {
        entry["kind"] = static_cast<int>(actionOf(section, key).getType());
    }
    return entry;
}

std::vector<std::string> chosenSections(const VelkApi::MillDrillOperation& op,
                                        const std::string& only) {
    if (only.empty()) {
        return presentSections(op);
    }
    requireSection(op, only);
    return {only};
}

void printText(const VelkApi::MillDrillOperation& op, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        std::cout << "[" << name << "]\n";
        printEntries(*findSection(op, name), shownValue);
    }
}

void printJson(const ShowOptions& options, const VelkApi::MillDrillOperation& op,
               const std::vector<std::string>& names) {
    nlohmann::ordered_json out;
    out["store"] = options.store;
    out["operation"] = options.op;
    out["kind"] = kindName(op.getOperationType());
    nlohmann::ordered_json sections = nlohmann::ordered_json::object();
    for (const std::string& name : names) {
        const SectionDictionary& section = *findSection(op, name);
        nlohmann::ordered_json entries = nlohmann::ordered_json::object();
        for (const std::string& key : keysOf(section)) {
            entries[key] = jsonEntry(section, key);
        }
        sections[name] = entries;
    }
    out["sections"] = sections;
    std::cout << utf8Json(out).dump(2) << "\n";
}

void show(const ShowOptions& options) {
    loadProject(options.project);
    const auto op = readOperation(options.store, options.op);
    op->getHeaderSection()->setDefault();
    const std::vector<std::string> names = chosenSections(*op, options.section);
    if (options.json) {
        printJson(options, *op, names);
    } else {
        const Utf8Output utf8;
        std::cout << "store " << options.store << ", operation " << options.op << ": "
                  << kindName(op->getOperationType()) << "\n";
        printText(*op, names);
    }
    reportHostMessages();
}

}  // namespace

void addShowCommand(CLI::App& app) {
    auto options = std::make_shared<ShowOptions>();
    CLI::App* show = app.add_subcommand("show",
                                        "Show every section of one operation: keys, "
                                        "data types and values");
    addProjectArgument(*show, options->project);
    addStoreOption(*show, options->store);
    addOperationOption(*show, options->op);
    show->add_option("--section", options->section,
                     "Only this section (Header, Message, Parameter, Geometry, Additional_1, ...)");
    show->add_flag("--json", options->json, "Print JSON instead of text");
    show->callback([options] { velk::show(*options); });
}

}  // namespace velk
