// The arguments several velk commands share.
#include "Commands.h"

namespace velk {

void addProjectArgument(CLI::App& command, std::string& project) {
    command.add_option("PROJECT", project, "Project file (JSON)")
        ->required()
        ->check(CLI::ExistingFile);
}

void addStoreOption(CLI::App& command, int& store) {
    command.add_option("--store", store, "Store number")->required();
}

void addOperationOption(CLI::App& command, int& op) {
    command.add_option("--op", op, "Operation number in the store (from 0)")->required();
}

}  // namespace velk
