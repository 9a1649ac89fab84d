// velk tools PROJECT --store N [--json]: the tools of a tool store, one a line: number, tool
// number, identifier, type, diameter and description; with --json every parameter of every
// tool. --add-from STORE:OP appends the tool record of an operation to the tool store as a new
// tool.
//
// A tool store's record 0 is not a tool; records 1 to n are the tools, each a header, a message
// section (the tool's description) and its tool data.
#include <velkapi/ToolList.h>
#include <velkhost/OfflineHost.h>

#include <nlohmann/json.hpp>

#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>

#include "Commands.h"
#include "EntryText.h"
#include "HostText.h"
#include "NewRecords.h"
#include "Project.h"
#include "ProjectEdit.h"
#include "ProjectLock.h"
#include "StoreKind.h"
#include "ToolTransfer.h"

namespace velk {

namespace {

using VelkApi::MillToolSection;
using VelkApi::ToolSection;

struct ToolsOptions {
    std::string project;
    int store = 0;
    bool json = false;
    std::string addFrom;
    WriteOptions write;
    ToolTransferOptions transfer;
};

// Every parameter in the order of the tool line table; the holder, which stands twice, once.
nlohmann::ordered_json parametersJson(const ToolSection& tool) {
    nlohmann::ordered_json parameters = nlohmann::ordered_json::object();
    for (int line = 0; line < ToolSection::LINESCOUNT; ++line) {
        for (int slot = 0; slot < ToolSection::lineslen[line]; ++slot) {
            const std::string& name = ToolSection::lines[line][slot];
            if (!parameters.contains(name)) {
                parameters[name] = jsonValue(tool, name);
            }
        }
    }
    return parameters;
}

// "10", "8.5"; "" for a diameter not set.
std::string diameterText(const ToolSection& tool) {
    return holdsUnset(tool, "w_t_diam") ? "" : shortestNumber(tool.getDouble("w_t_diam"));
}

// "T12"; "" for a tool number not set.
std::string toolNumberText(int number) {
    return number == VelkApi::kUnsetInt ? "" : "T" + std::to_string(number);
}

void printList(const VelkApi::ToolList& list) {
    for (int i = 0; i < list.getToolCount(); ++i) {
        const MillToolSection& tool = *list.getTool(i)->getToolSection();
        std::cout << std::setw(4) << i + 1 << "  " << std::left << std::setw(5)
                  << toolNumberText(tool.getInt("i_t_tool_nr")) << " " << std::setw(12)
                  << tool.getString("$_t_ident_nr") << " " << std::setw(14)
                  << tool.getString("$_t_tool_type") << std::right << std::setw(8)
                  << diameterText(tool) << "  " << tool.getString("$_t_tooldesc") << "\n";
    }
}

void printJson(const ToolsOptions& options, const VelkApi::ToolList& list) {
    nlohmann::ordered_json tools = nlohmann::ordered_json::array();
    for (int i = 0; i < list.getToolCount(); ++i) {
        tools.push_back(
            {{"tool", i + 1}, {"parameters", parametersJson(*list.getTool(i)->getToolSection())}});
    }
    const nlohmann::ordered_json out = {{"store", options.store}, {"tools", tools}};
    std::cout << utf8Json(out).dump(2) << "\n";
}

void listTools(const ToolsOptions& options) {
    VelkApi::ToolList list(options.store);
    list.readFromVDM();
    if (options.json) {
        printJson(options, list);
    } else {
        const Utf8Output utf8;
        printList(list);
    }
    reportHostMessages();
}

// "STORE:OP" as the two numbers.
std::pair<int, int> parseOperationAddress(const std::string& text) {
    const std::size_t colon = text.find(':');
    if (colon != std::string::npos) {
        const std::optional<int> store = parseWholeNumber(text.substr(0, colon));
        const std::optional<int> op = parseWholeNumber(text.substr(colon + 1));
        if (store && op) {
            return {*store, *op};
        }
    }
    throw CommandError("'" + text + "' is not STORE:OP, e.g. 1:3");
}

void addTool(const ToolsOptions& options, const ProjectEdit& edit) {
    const auto [store, op] = parseOperationAddress(options.addFrom);
    const auto operation = readOperation(store, op);
    const auto* source = dynamic_cast<const MillToolSection*>(operation->getToolSection());
    if (source == nullptr) {
        throw CommandError("operation " + std::to_string(op) + " of store " +
                           std::to_string(store) +
                           " has turning-driven tools: it carries no tool record");
    }
    refuseOperationStore(options.store);
    const int position = appendTool(options.store, *source, source->getString("$_t_tooldesc"));
    if (!edit.save()) {
        return;
    }
    std::cout << "store " << options.store << ": added tool " << position << " ("
              << source->getString("$_t_tooldesc") << ")\n";
}

void tools(const ToolsOptions& options) {
    if (!options.transfer.imports.empty()) {
        const ProjectLock lock(options.project);
        loadProject(options.project);
        if (velkhost::OfflineHost::instance().hasStore(options.store)) {
            refuseOperationStore(options.store);
        }
        transferTools(options.project, options.store, options.transfer);
        return;
    }
    if (options.addFrom.empty()) {
        loadProject(options.project);
        requireStore(options.store);
        refuseOperationStore(options.store);
        if (!transferTools(options.project, options.store, options.transfer)) {
            listTools(options);
        }
        return;
    }
    const ProjectEdit edit(options.project, options.write);
    requireStore(options.store);
    addTool(options, edit);
}

}  // namespace

void addToolsCommand(CLI::App& app) {
    auto options = std::make_shared<ToolsOptions>();
    CLI::App* command = app.add_subcommand(
        "tools",
        "List the tools of a tool store (number, tool number, identifier, type, diameter, "
        "description), add one, or import and export tools");
    addProjectArgument(*command, options->project);
    addStoreOption(*command, options->store);
    command->add_flag("--json", options->json, "Print every parameter of every tool as JSON");
    command
        ->add_option("--add-from", options->addFrom,
                     "Append the tool record of operation OP of store STORE (STORE:OP) as a new "
                     "tool, and save")
        ->excludes("--json");
    addWriteOptions(*command, options->write);
    addToolTransferOptions(*command, options->transfer);
    command->callback([options] { velk::tools(*options); });
}

}  // namespace velk
