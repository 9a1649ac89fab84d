// velk ops PROJECT --store N: one line per operation: number, kind, description. A tool store
// is not listed: its records are tools, which `velk tools` lists.
#include <velkapi/MillDrillOperation.h>
#include <velkapi/MillTurnVdm.h>
#include <velkhost/OfflineHost.h>

#include <iomanip>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "HostText.h"
#include "Progress.h"
#include "Project.h"
#include "StoreKind.h"

namespace velk {

namespace {

struct OpsOptions {
    std::string project;
    int store = 0;
};

void listOperations(const OpsOptions& options) {
    loadProject(options.project);
    requireStore(options.store);
    refuseToolStore(options.store, "list its tools with velk tools PROJECT --store {store}");
    const Utf8Output utf8;
    const auto count = velkhost::OfflineHost::instance().records(options.store).size();
    Progress progress("operations", count);
    for (std::size_t nr = 0; nr < count; ++nr) {
        const int number = static_cast<int>(nr);
        // The kind as an operation finds it; the list entry's own kind goes by the header's
        // host number first, which threading shares with the pocket cycle.
        const VelkApi::MillDrillOperationDecl decl(options.store, number, 0);
        const auto kind = VelkApi::MillDrillOperation::GetOperationType(options.store, number);
        std::cout << std::setw(4) << nr << "  " << std::left << std::setw(12) << kindName(kind)
                  << std::right << "  " << decl.getDescription() << "\n";
        progress.advance();
    }
    reportHostMessages();
}

}  // namespace

void addOpsCommand(CLI::App& app) {
    auto options = std::make_shared<OpsOptions>();
    CLI::App* ops = app.add_subcommand("ops",
                                       "List the operations of a store: number, kind and "
                                       "description");
    addProjectArgument(*ops, options->project);
    addStoreOption(*ops, options->store);
    ops->callback([options] { listOperations(*options); });
}

}  // namespace velk
