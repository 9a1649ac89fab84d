// velk actions PROJECT --store N --op K [--pre|--post] [add TEXT [--kind N] | clear]: lists the
// actions an operation runs before and after itself, or adds one to, or clears, one of the two
// lists, written back through the library.
#include <velkapi/MillDrillOperation.h>

#include <algorithm>
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

using VelkApi::Action;
using VelkApi::ActionSection;

struct ActionsOptions {
    std::string project;
    int store = 0;
    int op = 0;
    bool pre = false;
    bool post = false;
    std::string command;
    int kind = static_cast<int>(VelkApi::ActionType::Default);
    CLI::App* add = nullptr;
    CLI::App* clear = nullptr;
    WriteOptions write;
};

// An action's number follows the highest number in the list; the first is 2.
constexpr int kFirstActionNumber = 2;

const char* listName(bool after) {
    return after ? "after the operation" : "before the operation";
}

ActionSection& actionList(const VelkApi::MillDrillOperation& op, bool after) {
    ActionSection* section = op.getActionSection(after ? 2 : 1);
    if (!section) {
        throw CommandError("the operation has no actions");
    }
    return *section;
}

// The numbers of the list's actions, ascending.
std::vector<int> numbersOf(const ActionSection& section) {
    std::vector<std::string> keys;
    std::vector<int> numbers;
    for (const std::string& key : section.readKeys(keys)) {
        numbers.push_back(std::stoi(key));
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

// The one list an edit works on.
bool editedList(const ActionsOptions& options) {
    if (options.pre == options.post) {
        throw CommandError(
            "say which list to change: --pre (before the operation) or --post "
            "(after it)");
    }
    return options.post;
}

// Both lists, unless --pre or --post names one.
bool shown(const ActionsOptions& options, bool after) {
    return options.pre == options.post || (after ? options.post : options.pre);
}

void list(const ActionsOptions& options, const VelkApi::MillDrillOperation& op) {
    const Utf8Output utf8;
    std::cout << "store " << options.store << ", operation " << options.op << ": "
              << kindName(op.getOperationType()) << "\n";
    for (const bool after : {false, true}) {
        if (!shown(options, after)) {
            continue;
        }
        std::cout << listName(after) << " (" << actionSectionName(after) << "):\n";
        const ActionSection& section = actionList(op, after);
        const std::vector<int> numbers = numbersOf(section);
        if (numbers.empty()) {
            std::cout << "  none\n";
        }
        for (const int number : numbers) {
            Action action;
            section.getValue(std::to_string(number), &action);
            std::cout << "  " << number << "  " << describeAction(action) << "\n";
        }
    }
}

void add(const ActionsOptions& options, const ProjectEdit& edit, VelkApi::MillDrillOperation& op) {
    const bool after = editedList(options);
    if (options.command.empty() || options.command.find_first_of("\r\n") != std::string::npos) {
        throw CommandError("an action is a command of one line, not empty");
    }
    const std::string command = hostBytesOf(options.command, "the action's command");
    checkTypedText("the action's command", command);
    ActionSection& section = actionList(op, after);
    const std::vector<int> numbers = numbersOf(section);
    const int number = numbers.empty() ? kFirstActionNumber : numbers.back() + 1;
    section.addActionParameter(number, static_cast<VelkApi::ActionType>(options.kind), command);
    edit.write(op);
    if (!edit.save()) {
        return;
    }
    std::cout << "store " << options.store << ", operation " << options.op << ": action " << number
              << " added " << listName(after) << "\n";
}

void clear(const ActionsOptions& options, const ProjectEdit& edit,
           VelkApi::MillDrillOperation& op) {
    const bool after = editedList(options);
    ActionSection& section = actionList(op, after);
    const std::size_t count = numbersOf(section).size();
    section.clear();
    edit.write(op);
    if (!edit.save()) {
        return;
    }
    std::cout << "store " << options.store << ", operation " << options.op << ": " << count
              << (count == 1 ? " action" : " actions") << " cleared " << listName(after) << "\n";
}

void actions(const ActionsOptions& options) {
    if (!options.add->parsed() && !options.clear->parsed()) {
        loadProject(options.project);
        list(options, *readOperation(options.store, options.op));
        reportHostMessages();
        return;
    }
    const ProjectEdit edit(options.project, options.write);
    refuseDamagedOperation(options.store, options.op);
    const auto op = readOperation(options.store, options.op);
    if (options.add->parsed()) {
        add(options, edit, *op);
    } else {
        clear(options, edit, *op);
    }
    reportHostMessages();
}

}  // namespace

void addActionsCommand(CLI::App& app) {
    auto options = std::make_shared<ActionsOptions>();
    CLI::App* actions = app.add_subcommand(
        "actions",
        "List the actions run before and after an operation, or add one to or clear a list");
    addProjectArgument(*actions, options->project);
    addStoreOption(*actions, options->store);
    addOperationOption(*actions, options->op);
    CLI::Option* pre = actions->add_flag("--pre", options->pre, "The actions before the operation");
    CLI::Option* post =
        actions->add_flag("--post", options->post, "The actions after the operation");
    pre->excludes(post);
    addWriteOptions(*actions, options->write);
    actions->require_subcommand(0, 1);

    options->add = actions->add_subcommand("add", "Add an action to the --pre or --post list");
    options->add->add_option("TEXT", options->command, "The action's command")->required();
    options->add->add_option("--kind", options->kind, "The host's kind of action")
        ->capture_default_str()
        ->transform(wholeDecimalNumber());
    options->add->fallthrough();

    options->clear =
        actions->add_subcommand("clear", "Remove every action of the --pre or --post list");
    options->clear->fallthrough();

    actions->callback([options] { velk::actions(*options); });
}

}  // namespace velk
