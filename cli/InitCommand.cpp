// velk init FILE [--kind KIND]... [--force]: writes a starter project. Store 1 holds the host's
// three leading records and one operation of each kind asked for (a profile, a pocket and a
// drilling when none is), each with its defaults, the drawing objects it machines and the tool
// it works with; store 2 is the tool store of those tools. The drawing is a plate with an outer
// contour, a pocket and four holes; the host holds its tool variables with no tool in them. A
// machine definition, machine.ini, is written beside the project unless one is there already.
#include <velkapi/MillDrillOperation.h>
#include <velkapi/ToolSection.h>
#include <velkhost/OfflineHost.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <map>
#include <memory>

#include "Commands.h"
#include "NewRecords.h"
#include "Project.h"

namespace velk {

namespace {

using Json = nlohmann::ordered_json;
using VelkApi::MillDrillOperationType;

constexpr int kOperationStore = 1;
constexpr int kToolStore = 2;
// The host keeps three records of its own in front of the operations of a store.
constexpr int kFirstMachiningOperation = 3;

struct InitOptions {
    std::string project;
    std::vector<std::string> kinds;
    bool force = false;
};

const std::vector<std::string> kDefaultKinds = {"PROFILE", "POCKET", "DRILLING"};

const char* const kMachineDefinition =
    "; Machine definition of the project's machine: a milling machine with one channel, no Y\n"
    "; axis, no subspindle and no steady rest. The parameter catalogue consults it when the\n"
    "; host's environment has TURNDRIVENTOOLS 2.\n"
    "[COMMON]\n"
    "MACHINE_NAME=Three-axis mill\n"
    "SWISS_TYPE_LATHE=0\n"
    "NR_OF_CHANNEL=1\n"
    "NR_SPINDEL_SPUR=1\n"
    "SUBSPINDLE_ON_TURRET=0\n"
    "PP_GEN_Version=7\n"
    "Tornelle=0\n"
    "NR_OF_LUN=0\n"
    "\n"
    "[CHANNEL_1]\n"
    "YAXIS_EXIST=0\n";

// The drawing: a plate 100 x 60 with its outer contour, a pocket and four holes.
const char* const kDrawing = R"({
  "figures": [{"number": 1, "name": "OUTER"}, {"number": 2, "name": "POCKET"}],
  "objects": [
    {"number": 101, "type": 20, "name": 1, "start": [0, 0, 0]},
    {"number": 102, "type": 20, "name": 2, "start": [30, 20, 0]},
    {"number": 201, "type": 1, "start": [10, 10, 0]},
    {"number": 202, "type": 1, "start": [90, 10, 0]},
    {"number": 203, "type": 1, "start": [90, 50, 0]},
    {"number": 204, "type": 1, "start": [10, 50, 0]}
  ]
})";

const std::vector<std::string> kHoles = {"X10 Y10 Z0", "X90 Y10 Z0", "X90 Y50 Z0", "X10 Y50 Z0"};

// A tool of the tool store, in the tool record's own names.
struct StarterTool {
    std::string description;
    std::vector<std::pair<std::string, std::string>> values;
};

const StarterTool kEndMill = {"End mill 10 mm, 3 flutes",
                              {{"i_t_tool_id", "1"},
                               {"i_t_tool_nr", "1"},
                               {"i_t_len_nr", "1"},
                               {"i_t_dia_nr", "1"},
                               {"w_t_diam", "10"},
                               {"i_t_nr_theeth", "3"},
                               {"w_t_useable_len", "22"},
                               {"w_t_tool_len", "72"},
                               {"w_t_shaftdiam", "10"},
                               {"w_t_vcut_r", "250"},
                               {"w_t_feed_h_r", "0.05"},
                               {"$_t_ident_nr", "EM10-3F"},
                               {"$_t_tool_type", "End mill"},
                               {"$_t_tool_mat", "Carbide"}}};
const StarterTool kDrill = {"Drill 8.5 mm, 118 degree point",
                            {{"i_t_tool_id", "2"},
                             {"i_t_tool_nr", "2"},
                             {"i_t_len_nr", "2"},
                             {"i_t_dia_nr", "2"},
                             {"w_t_diam", "8.5"},
                             {"w_t_topangle", "118"},
                             {"i_t_nr_theeth", "2"},
                             {"w_t_useable_len", "43"},
                             {"w_t_tool_len", "117"},
                             {"w_t_def_peck", "3"},
                             {"w_t_shaftdiam", "8.5"},
                             {"w_t_vcut_r", "90"},
                             {"w_t_feed_v_r", "0.15"},
                             {"$_t_ident_nr", "DR8.5"},
                             {"$_t_tool_type", "Drill"},
                             {"$_t_tool_mat", "Carbide"}}};

// What the starter operation of a kind machines, with which tool, and how it is described.
struct StarterOperation {
    NewOperation operation;
    const StarterTool* tool;
};

bool isOneOf(MillDrillOperationType kind, std::initializer_list<MillDrillOperationType> kinds) {
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

std::string describe(MillDrillOperationType kind) {
    static const std::map<MillDrillOperationType, std::string> descriptions = {
        {MillDrillOperationType::PROFILE, "Finish the outer contour"},
        {MillDrillOperationType::POCKET, "Clear the pocket"},
        {MillDrillOperationType::DRILLING, "Drill the four holes"},
    };
    const auto found = descriptions.find(kind);
    return found != descriptions.end() ? found->second : kindName(kind) + " with its defaults";
}

// The holes for the kinds that work at points, the pocket for those that clear material inside
// a contour, the outer contour for any other kind that machines figures. Blocks of the program
// (tool list, editors, moves) work with no tool.
StarterOperation starterOperation(MillDrillOperationType kind) {
    using K = MillDrillOperationType;
    StarterOperation starter{{kind, describe(kind), {}, {}}, &kEndMill};
    if (machinesFigures(VelkApi::MillDrillOperation(kind))) {
        if (isOneOf(kind, {K::DRILLING, K::POCCYCLE, K::THREADING})) {
            starter.operation.figures = kHoles;
        } else if (isOneOf(kind, {K::POCKET, K::RESTMATL, K::CORNER})) {
            starter.operation.figures = {"POCKET"};
        } else {
            starter.operation.figures = {"OUTER"};
        }
    }
    if (kind == K::DRILLING) {
        starter.tool = &kDrill;
    } else if (isOneOf(kind, {K::TOOLS, K::MEDITOR, K::MOVING, K::UEDITOR_MAX})) {
        starter.tool = nullptr;
    }
    return starter;
}

// The host's tool variables, every one named in the tool line table, with no tool in them:
// ints and doubles at the "not set" marker, texts a blank. "name(k)" is element k of a list.
Json toolVariables() {
    Json globals = Json::object();
    for (int line = 0; line < VelkApi::ToolSection::LINESCOUNT; ++line) {
        for (int slot = 0; slot < VelkApi::ToolSection::lineslen[line]; ++slot) {
            const std::string& name = VelkApi::ToolSection::lines[line][slot];
            const Json unset = name[0] == 'i'   ? Json(VelkApi::kUnsetInt)
                               : name[0] == 'w' ? Json(VelkApi::kUnsetDouble)
                                                : Json(" ");
            const std::size_t open = name.find('(');
            if (open == std::string::npos) {
                globals[name] = unset;
                continue;
            }
            const std::size_t index = std::stoul(name.substr(open + 1));
            Json& list = globals[name.substr(0, open)];
            while (list.size() < index) {
                list.push_back(unset);
            }
        }
    }
    return globals;
}

Json starterProject(const std::filesystem::path& project) {
    const std::string folder = project.parent_path().string();
    Json globals = {{"$_project", project.stem().string()},
                    {"i_current_channel", 0},
                    {"w_setup_cle", 2.0},
                    {"w_setup_ret", 10.0}};
    globals.update(toolVariables());
    const Json leading =
        Json::array({Json::array({"0 1 1 1", "Raw part 100 x 60 x 20"}),
                     Json::array({"0 1 1 1", "Work offset G54 at the front left top corner"}),
                     Json::array({"0 1 1 1", "Tool change position X0 Y0 Z200"})});
    return {{"environment",
             {{"-d", folder.empty() ? "." : folder},
              {"NrOfChannels", "1"},
              {"SubSpindleAvailable", "0"},
              {"TURNDRIVENTOOLS", "1"},
              {"ppdefini", "machine.ini"}}},
            {"globals", globals},
            {"stores",
             {{std::to_string(kOperationStore), leading},
              {std::to_string(kToolStore),
               Json::array({Json::array({"0 1 1 1", "Tools of the project"})})}}},
            {"cad", Json::parse(kDrawing)}};
}

void setTool(VelkApi::ToolSection& section, const StarterTool& tool) {
    for (const auto& [key, text] : tool.values) {
        switch (section.dataTypeOf(key)) {
            case VelkApi::ValueDataType::Int:
                section.setInt(key, parseWholeNumber(text).value_or(VelkApi::kUnsetInt));
                break;
            case VelkApi::ValueDataType::Double:
                section.setDouble(key, parseNumber(text).value_or(VelkApi::kUnsetDouble));
                break;
            default:
                section.setString(key, text);
                break;
        }
    }
    section.setString("$_t_tooldesc", tool.description);
}

// Writes the operations into store 1; returns the tools they use, each with the record of the
// first operation that uses it, in tool-number order.
std::map<int, std::pair<std::shared_ptr<VelkApi::MillDrillOperation>, const StarterTool*>>
addOperations(const std::vector<MillDrillOperationType>& kinds) {
    std::map<int, std::pair<std::shared_ptr<VelkApi::MillDrillOperation>, const StarterTool*>> used;
    int at = kFirstMachiningOperation;
    for (const MillDrillOperationType kind : kinds) {
        const StarterOperation starter = starterOperation(kind);
        std::shared_ptr<VelkApi::MillDrillOperation> op =
            makeOperation(kOperationStore, at++, starter.operation);
        if (starter.tool != nullptr) {
            setTool(*op->getToolSection(), *starter.tool);
            used.emplace(op->getToolSection()->getInt("i_t_tool_nr"),
                         std::make_pair(op, starter.tool));
        }
        writeOperation(*op);
    }
    return used;
}

void writeMachineDefinition(const std::filesystem::path& path) {
    std::ofstream out(path, std::ios::binary);
    out << kMachineDefinition;
    if (!out.flush()) {
        throw CommandError(path.string() + ": cannot be written");
    }
}

void init(const InitOptions& options) {
    std::vector<MillDrillOperationType> kinds;
    for (const std::string& name : options.kinds.empty() ? kDefaultKinds : options.kinds) {
        kinds.push_back(parseKind(name));
    }
    const std::filesystem::path project(options.project);
    if (std::filesystem::exists(project) && !options.force) {
        throw CommandError(options.project + " exists: give --force to write over it");
    }
    const std::filesystem::path machine = project.parent_path() / "machine.ini";
    if (std::filesystem::exists(machine) && !std::filesystem::is_regular_file(machine)) {
        throw CommandError(machine.string() +
                           " is there but is no file: move it away to get the machine definition");
    }
    auto& host = velkhost::OfflineHost::instance();
    host.loadProjectText(starterProject(project).dump(), options.project);
    const auto tools = addOperations(kinds);
    for (const auto& [number, tool] : tools) {
        appendTool(kToolStore, *tool.first->getToolSection(), tool.second->description);
    }
    saveProject(options.project);

    std::string names;
    for (const MillDrillOperationType kind : kinds) {
        names += (names.empty() ? "" : ", ") + kindName(kind);
    }
    std::cout << options.project << ": store 1 with operations " << kFirstMachiningOperation
              << " to " << kFirstMachiningOperation + static_cast<int>(kinds.size()) - 1 << " ("
              << names << "), tool store 2 with " << tools.size()
              << (tools.size() == 1 ? " tool\n" : " tools\n");

    if (std::filesystem::exists(machine)) {
        std::cout << machine.string() << ": kept, the machine definition already there\n";
    } else {
        writeMachineDefinition(machine);
        std::cout << machine.string() << ": machine definition written\n";
    }
}

}  // namespace

void addInitCommand(CLI::App& app) {
    auto options = std::make_shared<InitOptions>();
    CLI::App* command = app.add_subcommand(
        "init",
        "Write a starter project: one operation of each kind with its defaults, a drawing, a "
        "tool store and a machine definition beside it");
    command->add_option("FILE", options->project, "Project file to write (JSON)")->required();
    command->add_option("--kind", options->kinds,
                        "Kind of an operation to start with (POCKET, DRILLING, PROFILE, ...); "
                        "repeat for more (default: PROFILE, POCKET and DRILLING)");
    command->add_flag("--force", options->force, "Write over an existing project file");
    command->callback([options] { velk::init(*options); });
}

}  // namespace velk
