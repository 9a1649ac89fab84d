// velk walk PROJECT: every store of the project, operation by operation and section by section,
// read through the library's store classes.
#include <velkapi/MillTurnVdm.h>
#include <velkhost/OfflineHost.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "Commands.h"
#include "HostText.h"
#include "Progress.h"
#include "Project.h"

namespace velk {

namespace {

void printOperation(VelkApi::MillTurnVdm& vdm, int number) {
    if (!vdm.LoadOperation(number)) {
        return;
    }
    std::cout << "  operation " << number << ": host type " << vdm.getOperationType() << ", flag "
              << vdm.getOperationFlag() << ", " << vdm.getSectionCount()
              << (vdm.getSectionCount() == 1 ? " section\n" : " sections\n");
    for (int section = 0; section < vdm.getSectionCount(); ++section) {
        std::vector<std::string> lines;
        vdm.ReadSection(section, lines);
        std::cout << "    section " << section << " (" << lines.size()
                  << (lines.size() == 1 ? " line)\n" : " lines)\n");
        for (const std::string& line : lines) {
            std::cout << "      | " << line << "\n";
        }
    }
}

void printStore(int store) {
    VelkApi::MillTurnVdm vdm(store);
    if (!vdm.Create()) {
        std::cout << "store " << store << ": cannot be opened\n";
        return;
    }
    const int count = vdm.OperationCount();
    std::cout << "store " << store << ": " << count
              << (count == 1 ? " operation\n" : " operations\n");
    Progress progress("operations of store " + std::to_string(store),
                      static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number) {
        printOperation(vdm, number);
        progress.advance();
    }
    vdm.Close();
}

}  // namespace

void addWalkCommand(CLI::App& app) {
    auto project = std::make_shared<std::string>();
    CLI::App* walk = app.add_subcommand("walk",
                                        "Print every store of a project, operation by "
                                        "operation, as the library reads it");
    addProjectArgument(*walk, *project);
    walk->callback([project] {
        loadProject(*project);
        const Utf8Output utf8;
        for (const int store : velkhost::OfflineHost::instance().storeNumbers()) {
            printStore(store);
        }
    });
}

}  // namespace velk
