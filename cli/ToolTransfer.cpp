#include "ToolTransfer.h"

#include <velkapi/ToolList.h>
#include <velkhost/OfflineHost.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>

#include "FreeCadToolBits.h"
#include "LinuxCncToolTable.h"
#include "NewRecords.h"
#include "Project.h"

namespace velk {

namespace {

// A new tool store's record 0, which is no tool.
const velkhost::Record kToolStoreLead = {"0 1 1 1", "Tools of the project"};

std::string extensionOf(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

Units unitsOf(const ToolTransferOptions& options) {
    return options.units == "inch" ? Units::Inch : Units::Millimetre;
}

std::string toolLabel(int number) {
    return "T" + std::to_string(number);
}

std::vector<ExchangedTool> readImport(const std::string& path, Units units) {
    const std::string extension = extensionOf(path);
    if (extension == ".fctb") {
        return {readToolBit(path)};
    }
    if (extension == ".fctl") {
        return readToolLibrary(path);
    }
    if (extension == ".tbl") {
        return readToolTable(path, units);
    }
    throw ExchangeFileError(path +
                            ": expected a FreeCAD tool bit (.fctb) or library (.fctl) or "
                            "a LinuxCNC tool table (.tbl)");
}

// The store's tools by tool number: their positions in the store.
std::map<int, int> toolPositions(int store) {
    std::map<int, int> positions;
    if (!velkhost::OfflineHost::instance().hasStore(store)) {
        return positions;
    }
    VelkApi::ToolList list(store);
    list.readFromVDM();
    for (int i = 0; i < list.getToolCount(); ++i) {
        positions.emplace(list.getTool(i)->getToolSection()->getInt(kToolNumber), i + 1);
    }
    return positions;
}

// Gives every tool a number: its own, else the lowest one neither the store nor another tool
// of the import has. A number given twice in the import is refused, and so is one the store
// has unless `replace`.
void numberTools(std::vector<ExchangedTool>& tools, const std::map<int, int>& inStore, int store,
                 bool replace) {
    std::map<int, const ExchangedTool*> given;
    for (const ExchangedTool& tool : tools) {
        if (!tool.has(kToolNumber)) {
            continue;
        }
        const int number = static_cast<int>(tool.numbers.at(kToolNumber));
        const auto [other, added] = given.emplace(number, &tool);
        if (!added) {
            throw CommandError(tool.origin + ": " + toolLabel(number) +
                               " is given twice, also by " + other->second->origin);
        }
        if (inStore.count(number) != 0 && !replace) {
            throw CommandError(tool.origin + ": store " + std::to_string(store) + " has " +
                               toolLabel(number) + " already (tool " +
                               std::to_string(inStore.at(number)) +
                               "): give --replace to write over it");
        }
    }
    int next = 1;
    for (ExchangedTool& tool : tools) {
        if (tool.has(kToolNumber)) {
            continue;
        }
        while (given.count(next) != 0 || inStore.count(next) != 0) {
            ++next;
        }
        tool.numbers[kToolNumber] = next;
        given.emplace(next, &tool);
    }
}

// Writes the tool over tool `position` of the store: its description and a fresh tool record.
void replaceTool(int store, int position, const ExchangedTool& tool) {
    VelkApi::ToolOperation record(store, position);
    fillToolRecord(tool, *record.getToolSection());
    record.getMessageSection()->createandsetLine(0, tool.text(kDescription));
    writeToHost([&] {
        record.getMessageSection()->writeToVDM(&record);
        record.getToolSection()->writeToVDM(&record);
    });
}

void importTools(const std::string& project, int store, const ToolTransferOptions& options) {
    std::vector<ExchangedTool> tools;
    for (const std::string& path : options.imports) {
        for (ExchangedTool& tool : readImport(path, unitsOf(options))) {
            tools.push_back(std::move(tool));
        }
    }
    const std::map<int, int> inStore = toolPositions(store);
    numberTools(tools, inStore, store, options.replace);

    auto& host = velkhost::OfflineHost::instance();
    if (!host.hasStore(store)) {
        host.setStore(store, {kToolStoreLead});
    }
    std::vector<std::string> report;
    for (const ExchangedTool& tool : tools) {
        const int number = static_cast<int>(tool.numbers.at(kToolNumber));
        const auto existing = inStore.find(number);
        int position = 0;
        if (existing != inStore.end()) {
            position = existing->second;
            replaceTool(store, position, tool);
        } else {
            VelkApi::MillToolSection record(1);
            fillToolRecord(tool, record);
            position = appendTool(store, record, tool.text(kDescription));
        }
        report.push_back("store " + std::to_string(store) +
                         (existing != inStore.end() ? ": replaced tool " : ": added tool ") +
                         std::to_string(position) + " (" + toolLabel(number) +
                         (tool.has(kDescription) ? ", " + utf8Text(tool.text(kDescription)) : "") +
                         ")");
        for (const std::string& kept : tool.kept) {
            report.push_back("  " + toolLabel(number) + ": kept in its comment: " + utf8Text(kept));
        }
    }
    saveProject(project);
    for (const std::string& line : report) {
        std::cout << line << "\n";
    }
}

void exportTools(int store, const ToolTransferOptions& options) {
    requireStore(store);
    const std::string extension = extensionOf(options.exportPath);
    const bool table = extension == ".tbl";
    if (!table && extension != ".fctl") {
        throw CommandError(options.exportPath +
                           ": expected a LinuxCNC tool table (.tbl) or a FreeCAD tool library "
                           "(.fctl) to write");
    }
    VelkApi::ToolList list(store);
    list.readFromVDM();
    std::vector<ExchangedTool> tools;
    std::vector<std::string> notes;
    const std::vector<std::string> carried = table ? toolTableNames() : toolBitNames();
    for (int i = 0; i < list.getToolCount(); ++i) {
        const VelkApi::ToolSection& record = *list.getTool(i)->getToolSection();
        ExchangedTool tool = fromToolRecord(record);
        if (!tool.has(kToolNumber)) {
            tool.numbers[kToolNumber] = i + 1;
            notes.push_back("tool " + std::to_string(i + 1) + " has no tool number: written as " +
                            toolLabel(i + 1));
        }
        std::string left;
        for (const std::string& name : notCarried(record, carried)) {
            left += (left.empty() ? "" : ", ") + name;
        }
        if (!left.empty()) {
            notes.push_back(toolLabel(static_cast<int>(tool.numbers.at(kToolNumber))) +
                            ": not carried by " +
                            (table ? "a LinuxCNC tool table: " : "a FreeCAD tool bit: ") + left);
        }
        tools.push_back(std::move(tool));
    }
    std::vector<TextFile> files;
    if (table) {
        files.push_back({options.exportPath, toolTableText(tools, unitsOf(options))});
    } else {
        files = toolLibraryFiles(options.exportPath, tools, unitsOf(options), notes);
    }
    for (const TextFile& file : files) {
        writeTextFile(file.path, file.text);
    }
    std::cout << "store " << store << ": " << tools.size()
              << (tools.size() == 1 ? " tool" : " tools") << " written to " << options.exportPath
              << (table ? "" : " and a bit file each beside it") << "\n";
    for (const std::string& note : notes) {
        std::cout << "  " << note << "\n";
    }
}

}  // namespace

void addToolTransferOptions(CLI::App& command, ToolTransferOptions& options) {
    CLI::Option* imports =
        command.add_option("--import", options.imports,
                           "Append the tools of FreeCAD tool bits (.fctb) and libraries (.fctl) "
                           "and LinuxCNC tool tables (.tbl) to the tool store, and save");
    CLI::Option* exported = command.add_option(
        "--export", options.exportPath,
        "Write the tool store as a LinuxCNC tool table (.tbl) or as a FreeCAD tool library "
        "(.fctl) with a tool bit file (.fctb) per tool beside it");
    command
        .add_option("--units", options.units,
                    "Units of the lengths of a LinuxCNC table read, and of a table or library "
                    "written (default mm)")
        ->check(CLI::IsMember({"mm", "inch"}));
    CLI::Option* replace =
        command.add_flag("--replace", options.replace,
                         "Let an imported tool write over the store's tool of its number");
    replace->needs(imports);
    imports->excludes(exported);
    for (const char* other : {"--json", "--add-from"}) {
        imports->excludes(command.get_option(other));
        exported->excludes(command.get_option(other));
    }
}

bool transferTools(const std::string& project, int store, const ToolTransferOptions& options) {
    if (!options.imports.empty()) {
        importTools(project, store, options);
        return true;
    }
    if (!options.exportPath.empty()) {
        exportTools(store, options);
        return true;
    }
    return false;
}

}  // namespace velk
