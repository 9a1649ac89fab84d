// velk expert PROJECT --store N [--op K] [--lines]: the machining parameters of one operation, or
// of every machining operation of the store, in their expert form: every value as text. --lines
// prints the expert form's text lines instead of one line per key.
#include <velkapi/ExpertParameterSection.h>
#include <velkapi/MillDrillOperation.h>
#include <velkhost/OfflineHost.h>

#include <iostream>
#include <memory>
#include <optional>

#include "Commands.h"
#include "HostText.h"
#include "EntryText.h"
#include "Progress.h"
#include "Project.h"
#include "StoreKind.h"

namespace velk {

namespace {

struct ExpertOptions {
    std::string project;
    int store = 0;
    std::optional<int> op;
    bool lines = false;
};

// The operation asked for, or every machining operation of the store.
std::vector<int> chosenOperations(const ExpertOptions& options) {
    if (options.op) {
        return {*options.op};
    }
    requireStore(options.store);
    std::vector<int> chosen;
    const auto count = velkhost::OfflineHost::instance().records(options.store).size();
    for (int nr = 0; static_cast<std::size_t>(nr) < count; ++nr) {
        const auto kind = VelkApi::MillDrillOperation::GetOperationType(options.store, nr);
        if (kind != VelkApi::MillDrillOperationType::REDRAW) {
            chosen.push_back(nr);
        }
    }
    return chosen;
}

void printExpertForm(const ExpertOptions& options, int nr) {
    const auto op = readOperation(options.store, nr);
    VelkApi::ExpertParameterSection expert(op->getOperationType());
    expert.Init();
    if (const VelkApi::ParameterSection* parameters = op->getParameterSection()) {
        expert.readFromParameters(*parameters);
    }
    std::cout << "store " << options.store << ", operation " << nr << ": "
              << kindName(op->getOperationType()) << "\n";
    if (options.lines) {
        std::vector<std::string> lines(static_cast<std::size_t>(expert.getLineCount()));
        expert.writeToStrings(lines);
        for (const std::string& line : lines) {
            std::cout << line << "\n";
        }
    } else {
        printEntries(expert, entryText);
    }
}

void printExpert(const ExpertOptions& options) {
    loadProject(options.project);
    requireStore(options.store);
    refuseToolStore(options.store, "list its tools with velk tools PROJECT --store {store}");
    const std::vector<int> chosen = chosenOperations(options);
    const Utf8Output utf8;
    Progress progress("operations", chosen.size());
    for (const int nr : chosen) {
        printExpertForm(options, nr);
        progress.advance();
    }
    reportHostMessages();
}

}  // namespace

void addExpertCommand(CLI::App& app) {
    auto options = std::make_shared<ExpertOptions>();
    CLI::App* expert = app.add_subcommand(
        "expert",
        "Show the machining parameters of an operation in their expert form, every value as text");
    addProjectArgument(*expert, options->project);
    addStoreOption(*expert, options->store);
    expert->add_option("--op", options->op,
                       "Operation number in the store (from 0); every machining operation of the "
                       "store when left out")
        ->transform(wholeDecimalNumber());
    expert->add_flag("--lines", options->lines,
                     "Print the expert form's text lines: the kind's name, then the values by "
                     "number, each followed by a blank");
    expert->callback([options] { printExpert(*options); });
}

}  // namespace velk
