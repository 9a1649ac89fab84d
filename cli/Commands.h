// The velk subcommands. Each registers itself on the application; its callback runs over the
// project loaded into the offline host and throws CommandError or velkhost::ProjectError to
// fail with one clear line.
#pragma once

#include <CLI/CLI.hpp>

namespace velk {

// The arguments several commands share.
void addProjectArgument(CLI::App& command, std::string& project);
void addStoreOption(CLI::App& command, int& store);
void addOperationOption(CLI::App& command, int& op);
// Takes a number argument in plain decimal digits only (no "0x", no octal, not empty), so that
// "--op 010" means operation 10.
const CLI::Validator& wholeDecimalNumber();

void addWalkCommand(CLI::App& app);
void addOpsCommand(CLI::App& app);
void addShowCommand(CLI::App& app);
void addSetCommand(CLI::App& app);
void addAddCommand(CLI::App& app);
void addActionsCommand(CLI::App& app);
void addExpertCommand(CLI::App& app);
void addStrategyCommand(CLI::App& app);
void addToolsCommand(CLI::App& app);
void addDiffCommand(CLI::App& app);
void addInitCommand(CLI::App& app);
void addCheckCommand(CLI::App& app);

}  // namespace velk
