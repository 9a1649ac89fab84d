// The velk subcommands. Each registers itself on the application and runs over a project
// loaded into the offline host.
#pragma once

#include <CLI/CLI.hpp>

namespace velk {

void addWalkCommand(CLI::App& app);

}  // namespace velk
