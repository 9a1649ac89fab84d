// velk tools --import FILE... and --export PATH: tools moved between a tool store and FreeCAD
// tool bits and libraries (.fctb, .fctl) or LinuxCNC tool tables (.tbl).
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace velk {

struct ToolTransferOptions {
    std::vector<std::string> imports;
    std::string exportPath;
    std::string units = "mm";
    bool replace = false;
};

// Adds --import, --export, --units and --replace to the tools command, after its --json and
// --add-from.
void addToolTransferOptions(CLI::App& command, ToolTransferOptions& options);

// Runs the import or export asked for on the loaded project; false when neither is.
bool transferTools(const std::string& project, int store, const ToolTransferOptions& options);

}  // namespace velk
