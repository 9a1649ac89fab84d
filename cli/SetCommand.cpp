// velk set PROJECT --store N --op K SECTION.KEY=VALUE...: edits one operation through the
// library, writes it back and saves the project. Every assignment is checked before anything
// is written; on any error the project file stays untouched. A geometry object is pointed at
// another figure, point or object of the drawing by its text. The value `unset` sets an int, a
// double or a text to the "not set" marker, as velk show prints it.
#include <velkapi/MillDrillOperation.h>
#include <velkapi/SectionNames.h>
#include <velkapi/TurnToolSection.h>

#include <functional>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "EntryText.h"
#include "HostText.h"
#include "Project.h"
#include "ProjectEdit.h"
#include "RecordDamage.h"
#include "TypedValueChecks.h"

namespace velk {

namespace {

using VelkApi::SectionDictionary;
using VelkApi::sectionName;
using VelkApi::SectionType;
using VelkApi::ValueDataType;

struct SetOptions {
    std::string project;
    int store = 0;
    int op = 0;
    std::vector<std::string> assignments;
    WriteOptions write;
};

struct Assignment {
    std::string text;  // as given, for messages
    std::string section;
    std::string key;
    std::string value;
};

Assignment parseAssignment(const std::string& text) {
    const std::size_t dot = text.find('.');
    const std::size_t equals = text.find('=', dot == std::string::npos ? 0 : dot);
    if (dot == std::string::npos || equals == std::string::npos || dot == 0 || equals == dot + 1) {
        throw CommandError("'" + text +
                           "' is not SECTION.KEY=VALUE, e.g. Parameter.w_zdepth=-12.5");
    }
    return {text, text.substr(0, dot), text.substr(dot + 1, equals - dot - 1),
            text.substr(equals + 1)};
}

int parseInt(const Assignment& a) {
    if (const std::optional<int> value = parseWholeNumber(a.value)) {
        return *value;
    }
    throw CommandError(a.section + "." + a.key + " is an int, and '" + a.value +
                       "' is not a whole number");
}

double parseDouble(const Assignment& a) {
    if (const std::optional<double> value = parseNumber(a.value)) {
        return *value;
    }
    throw CommandError(a.section + "." + a.key + " is a double, and '" + a.value +
                       "' is not a number");
}

bool parseBool(const Assignment& a) {
    if (a.value == "true" || a.value == "1") {
        return true;
    }
    if (a.value == "false" || a.value == "0") {
        return false;
    }
    throw CommandError(a.section + "." + a.key + " is a bool, and '" + a.value +
                       "' is not true, false, 1 or 0");
}

// The object the text names in the drawing, in the role of the object it replaces.
VelkApi::VelkObject parseObject(const SectionDictionary& section, const Assignment& a) {
    VelkApi::VelkObject current;
    section.getValue(a.key, &current);
    return drawingObject(a.value, current.getSectiontype(), a.section + "." + a.key);
}

// Checks the assignment against the operation and returns the edit that applies it.
std::function<void()> prepare(VelkApi::MillDrillOperation& op, const Assignment& a,
                              bool allowLoss) {
    if (a.section == sectionName(SectionType::Header)) {
        throw CommandError("the Header section is read-only: it follows from the other sections");
    }
    SectionDictionary& section = requireSection(op, a.section);
    if (dynamic_cast<VelkApi::TurnToolSection*>(&section) != nullptr) {
        throw CommandError(
            "the operation has turning-driven tools: its ToolData section holds no tool "
            "parameters");
    }
    if (!section.existsKey(a.key)) {
        throw CommandError("section " + a.section + " has no key '" + a.key + "' (velk show " +
                           "PROJECT --store " + std::to_string(op.getVdmname()) + " --op " +
                           std::to_string(op.getNumber()) + " --section " + a.section +
                           " lists its keys)");
    }
    const ValueDataType type = section.dataTypeOf(a.key);
    if (a.value == kUnsetWord && hasUnsetMarker(type)) {
        return [&section, a] { setUnset(section, a.key); };
    }
    switch (type) {
        case ValueDataType::Int:
            return [&section, a, v = parseInt(a)] { section.setInt(a.key, v); };
        case ValueDataType::Double: {
            const double v = parseDouble(a);
            checkTypedDouble(a.section + "." + a.key, a.value, v, allowLoss);
            return [&section, a, v] { section.setDouble(a.key, v); };
        }
        case ValueDataType::Bool:
            return [&section, a, v = parseBool(a)] { section.setBool(a.key, v); };
        case ValueDataType::String: {
            const std::string name = a.section + "." + a.key;
            const std::string text = hostBytesOf(a.value, name);
            checkTypedText(name, text);
            return [&section, a, text] { section.setString(a.key, text); };
        }
        case ValueDataType::VelkObject:
            return [&section, a, v = parseObject(section, a)] { section.setValue(a.key, &v); };
        default:
            throw CommandError(a.section + "." + a.key + " cannot be set from the command line");
    }
}

// Every value set reads back from the written record as it was set (a double rounded to six
// digits only with --allow-loss); the project is saved only then. A geometry entry is named by
// the object it points at, so its key changes with the value: velk checks its text beforehand.
void requireReadBack(const VelkApi::MillDrillOperation& edited,
                     const std::vector<Assignment>& assignments, const SetOptions& options) {
    const auto written = readOperation(options.store, options.op);
    for (const Assignment& a : assignments) {
        const SectionDictionary& before = requireSection(edited, a.section);
        const ValueDataType type = before.dataTypeOf(a.key);
        if (type == ValueDataType::VelkObject ||
            (options.write.allowLoss && type == ValueDataType::Double)) {
            continue;
        }
        checkReadBack(a.section + "." + a.key, a.value, utf8Of(shownValue(before, a.key)),
                      utf8Of(shownValue(requireSection(*written, a.section), a.key)));
    }
}

void set(const SetOptions& options) {
    const ProjectEdit project(options.project, options.write);
    refuseDamagedOperation(options.store, options.op);
    const auto op = readOperation(options.store, options.op);
    std::vector<std::function<void()>> edits;
    std::vector<Assignment> assignments;
    for (const std::string& text : options.assignments) {
        assignments.push_back(parseAssignment(text));
        edits.push_back(prepare(*op, assignments.back(), options.write.allowLoss));
    }
    for (const auto& edit : edits) {
        edit();
    }
    project.write(*op);
    requireReadBack(*op, assignments, options);
    if (!project.save()) {
        return;
    }
    std::cout << "store " << options.store << ", operation " << options.op << ": "
              << options.assignments.size()
              << (options.assignments.size() == 1 ? " value set\n" : " values set\n");
}

}  // namespace

void addSetCommand(CLI::App& app) {
    auto options = std::make_shared<SetOptions>();
    CLI::App* set = app.add_subcommand(
        "set",
        "Set values of one operation (SECTION.KEY=VALUE), write it back and save the project");
    addProjectArgument(*set, options->project);
    addStoreOption(*set, options->store);
    addOperationOption(*set, options->op);
    set->add_option("ASSIGNMENT", options->assignments,
                    "SECTION.KEY=VALUE, e.g. Parameter.w_zdepth=-12.5, Message.0=\"Rough\" or "
                    "Geometry.0000(outer)=POCKET")
        ->required();
    addWriteOptions(*set, options->write);
    set->callback([options] { velk::set(*options); });
}

}  // namespace velk
