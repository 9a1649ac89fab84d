// velk add PROJECT --store N --kind KIND [--at K] [--description TEXT] [--figure TEXT]...
// [--island TEXT]...: inserts a new operation of a kind, with every parameter at its default and
// the drawing objects it machines, through the library, and saves the project.
#include <velkapi/MillDrillOperation.h>
#include <velkhost/OfflineHost.h>

#include <algorithm>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "HostText.h"
#include "NewRecords.h"
#include "Project.h"
#include "ProjectEdit.h"
#include "StoreKind.h"
#include "TypedValueChecks.h"

namespace velk {

namespace {

using VelkApi::MillDrillOperationType;

// The host keeps three records of its own in front of the operations of a store.
constexpr int kFirstMachiningOperation = 3;

struct AddOptions {
    std::string project;
    int store = 0;
    std::string kind;
    int at = -1;
    std::string description;
    std::vector<std::string> figures;
    std::vector<std::string> islands;
    WriteOptions write;
};

void add(const AddOptions& options) {
    const ProjectEdit edit(options.project, options.write);
    requireStore(options.store);
    refuseToolStore(options.store,
                    "add a tool with velk tools PROJECT --store {store} --add-from STORE:OP");
    const MillDrillOperationType kind = parseKind(options.kind);
    const std::string description = hostBytesOf(options.description, "--description");
    checkTypedText("--description", description);
    const int count =
        static_cast<int>(velkhost::OfflineHost::instance().records(options.store).size());
    const int at = options.at < 0 ? count : options.at;
    const std::string range = std::to_string(kFirstMachiningOperation) + ".." +
                              std::to_string(std::max(count, kFirstMachiningOperation));
    if (at < kFirstMachiningOperation) {
        throw CommandError(
            "operations 0 to 2 of a store are not machining operations: --at must lie in " + range);
    }
    if (at > count) {
        throw CommandError("store " + std::to_string(options.store) + " has " +
                           std::to_string(count) + " operations: --at must lie in " + range);
    }
    const auto op =
        makeOperation(options.store, at, {kind, description, options.figures, options.islands});
    edit.write(*op);
    if (!edit.save()) {
        return;
    }
    std::cout << "store " << options.store << ": added operation " << at << " (" << kindName(kind)
              << ")\n";
}

}  // namespace

void addAddCommand(CLI::App& app) {
    auto options = std::make_shared<AddOptions>();
    CLI::App* addCommand = app.add_subcommand(
        "add", "Insert a new operation of a kind, every parameter at its default, and save");
    addProjectArgument(*addCommand, options->project);
    addStoreOption(*addCommand, options->store);
    addCommand->add_option("--kind", options->kind, "Kind: POCKET, DRILLING, PROFILE, ...")
        ->required();
    addCommand
        ->add_option("--at", options->at,
                     "Operation number the new one takes (default: after the last)")
        ->transform(wholeDecimalNumber());
    addCommand->add_option("--description", options->description,
                           "First line of the operation's message section");
    addCommand->add_option("--figure", options->figures,
                           "An outline figure (or point, or G<number> object) of the drawing "
                           "that the operation machines; repeat for more");
    addCommand->add_option("--island", options->islands,
                           "An island figure of the drawing; repeat for more");
    addWriteOptions(*addCommand, options->write);
    addCommand->callback([options] { add(*options); });
}

}  // namespace velk
