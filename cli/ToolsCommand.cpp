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
#include <sstream>

#include "Commands.h"
#include "Project.h"

namespace velk {

namespace {

using VelkApi::MillToolSection;
using VelkApi::ToolSection;

// The host's operation number of a tool record.
constexpr int kToolRecordType = 0;

struct ToolsOptions {
    std::string project;
    int store = 0;
    bool json = false;
    std::string addFrom;
};

// The value of table name `name`, by the kind its first character gives.
nlohmann::ordered_json parameterJson(const ToolSection& tool, const std::string& name) {
    switch (name.front()) {
        case 'i':
            return tool.getInt(name);
        case 'w':
            return tool.getDouble(name);
        default:
            return tool.getString(name);
    }
}

// Every parameter in the order of the tool line table; the holder, which stands twice, once.
nlohmann::ordered_json parametersJson(const ToolSection& tool) {
    nlohmann::ordered_json parameters = nlohmann::ordered_json::object();
    for (int line = 0; line < ToolSection::LINESCOUNT; ++line) {
        for (int slot = 0; slot < ToolSection::lineslen[line]; ++slot) {
            const std::string& name = ToolSection::lines[line][slot];
            if (!parameters.contains(name)) {
                parameters[name] = parameterJson(tool, name);
            }
        }
    }
    return parameters;
}

// "10", "8.5": six significant digits, as the record keeps them; "" for a diameter not set
// (2147483647, read back from the record as 2147480000).
std::string diameterText(double diameter) {
    if (diameter >= 2147480000.0) {
        return "";
    }
    std::ostringstream text;
    text << diameter;
    return text.str();
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
                  << diameterText(tool.getDouble("w_t_diam")) << "  "
                  << tool.getString("$_t_tooldesc") << "\n";
    }
}

void printJson(const ToolsOptions& options, const VelkApi::ToolList& list) {
    nlohmann::ordered_json tools = nlohmann::ordered_json::array();
    for (int i = 0; i < list.getToolCount(); ++i) {
        tools.push_back(
            {{"tool", i + 1}, {"parameters", parametersJson(*list.getTool(i)->getToolSection())}});
    }
    const nlohmann::ordered_json out = {{"store", options.store}, {"tools", tools}};
    std::cout << out.dump(2) << "\n";
}

void listTools(const ToolsOptions& options) {
    VelkApi::ToolList list(options.store);
    list.readFromVDM();
    if (options.json) {
        printJson(options, list);
    } else {
        printList(list);
    }
    reportHostMessages();
}

// "STORE:OP" as the two numbers.
std::pair<int, int> parseOperationAddress(const std::string& text) {
    const std::size_t colon = text.find(':');
    std::size_t storeEnd = 0;
    std::size_t opEnd = 0;
    try {
        const int store = std::stoi(text.substr(0, colon), &storeEnd);
        const int op = std::stoi(text.substr(colon + 1), &opEnd);
        if (colon != std::string::npos && storeEnd == colon && opEnd == text.size() - colon - 1) {
            return {store, op};
        }
    } catch (const std::logic_error&) {
        // reported below
    }
    throw CommandError("'" + text + "' is not STORE:OP, e.g. 1:3");
}

// The value of every key of `from` into `to`, by the key's data type.
void copyValues(const ToolSection& from, ToolSection& to) {
    std::vector<std::string> keys;
    for (const std::string& key : from.readKeys(keys)) {
        switch (from.dataTypeOf(key)) {
            case VelkApi::ValueDataType::Int:
                to.setInt(key, from.getInt(key));
                break;
            case VelkApi::ValueDataType::Double:
                to.setDouble(key, from.getDouble(key));
                break;
            default:
                to.setString(key, from.getString(key));
                break;
        }
    }
}

void addTool(const ToolsOptions& options) {
    const auto [store, op] = parseOperationAddress(options.addFrom);
    const auto operation = readOperation(store, op);
    const auto* source = dynamic_cast<const MillToolSection*>(operation->getToolSection());
    if (source == nullptr) {
        throw CommandError("operation " + std::to_string(op) + " of store " +
                           std::to_string(store) +
                           " has turning-driven tools: it carries no tool record");
    }
    const int position =
        static_cast<int>(velkhost::OfflineHost::instance().records(options.store).size());
    if (position == 0) {
        throw CommandError("store " + std::to_string(options.store) +
                           " has no leading record: a tool store starts with one record that "
                           "is not a tool");
    }

    VelkApi::ToolOperation tool(options.store, position);
    copyValues(*source, *tool.getToolSection());
    tool.getMessageSection()->createandsetLine(0, source->getString("$_t_tooldesc"));
    writeToHost([&] {
        VelkApi::MillTurnVdm& vdm = *tool.getVDM();
        if (vdm.Create()) {
            vdm.InsertOperation(position, kToolRecordType);
            vdm.Close();
        }
        tool.getMessageSection()->writeToVDM(&tool);
        tool.getToolSection()->writeToVDM(&tool);
    });
    saveProject(options.project);
    std::cout << "store " << options.store << ": added tool " << position << " ("
              << source->getString("$_t_tooldesc") << ")\n";
}

void tools(const ToolsOptions& options) {
    loadProject(options.project);
    requireStore(options.store);
    if (options.addFrom.empty()) {
        listTools(options);
    } else {
        addTool(options);
    }
}

}  // namespace

void addToolsCommand(CLI::App& app) {
    auto options = std::make_shared<ToolsOptions>();
    CLI::App* command = app.add_subcommand(
        "tools",
        "List the tools of a tool store (number, tool number, identifier, type, diameter, "
        "description), or add one");
    addProjectArgument(*command, options->project);
    addStoreOption(*command, options->store);
    command->add_flag("--json", options->json, "Print every parameter of every tool as JSON");
    command
        ->add_option("--add-from", options->addFrom,
                     "Append the tool record of operation OP of store STORE (STORE:OP) as a new "
                     "tool, and save")
        ->excludes("--json");
    command->callback([options] { velk::tools(*options); });
}

}  // namespace velk
