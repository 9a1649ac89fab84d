#include "ScriptedSession.h"

#include <gtest/gtest.h>

#include <velkapi/VelkApi.h>
#include <velkhost/OfflineHost.h>

#include <filesystem>
#include <memory>

#include "ErrorLog.h"

namespace capturetest {

namespace {

using namespace VelkApi;

constexpr int kOperationStore = 1;
constexpr int kToolStore = 2;

void readGlobals(Transcript& out) {
    int channel = -1;
    const int channelRead = MacroExport::GetGlobalIntVar("i_current_channel", channel);
    out.push_back("i_current_channel " + std::to_string(channelRead) + " " +
                  std::to_string(channel));
    double clearance = -1.0;
    const int clearanceRead = MacroExport::GetGlobalDoubleVar("w_setup_cle", clearance);
    out.push_back("w_setup_cle " + std::to_string(clearanceRead) + " " + std::to_string(clearance));
    std::string project;
    const int projectRead = MacroExport::GetGlobalStrVar("$_project", project);
    out.push_back("$_project " + std::to_string(projectRead) + " " + project);
    int missing = -1;
    out.push_back("i_not_there " +
                  std::to_string(MacroExport::GetGlobalIntVar("i_not_there", missing)));
}

void readSection(const std::string& title, const SectionDictionary* section, Transcript& out) {
    if (!section) {
        out.push_back(title + " none");
        return;
    }
    std::vector<std::string> keys;
    for (const std::string& key : section->readKeys(keys)) {
        out.push_back(title + "." + key + " = " + section->getValueAsString(key));
    }
}

void readGeometry(GeometrySection& geometry, Transcript& out) {
    std::vector<std::string> keys;
    for (const std::string& key : geometry.readKeys(keys)) {
        VelkObject object;
        geometry.getVelkObject(key, object);
        out.push_back("geometry." + key + " = " + object.getName() + " type " +
                      std::to_string(static_cast<int>(object.getType())) + " #" +
                      std::to_string(object.getSegNo()) + " instance " +
                      std::to_string(object.getAttribNo()) + " section " +
                      std::to_string(static_cast<int>(object.getSectiontype())));
    }
}

void readExpertForm(const MillDrillOperation& op, Transcript& out) {
    ExpertParameterSection expert(op.getOperationType());
    expert.Init();
    expert.readFromParameters(*op.getParameterSection());
    std::vector<std::string> lines(static_cast<std::size_t>(expert.getLineCount()));
    expert.writeToStrings(lines);
    for (const std::string& line : lines) {
        out.push_back("expert: " + line);
    }
}

void readOperations(Transcript& out) {
    MillTurnVdm vdm(kOperationStore);
    const int count = vdm.Create() ? vdm.OperationCount() : -1;
    vdm.Close();
    out.push_back("operations " + std::to_string(count));
    for (int nr = 0; nr < count; ++nr) {
        const MillDrillOperationType type =
            MillDrillOperation::GetOperationType(kOperationStore, nr);
        out.push_back("operation " + std::to_string(nr) + " type " +
                      std::to_string(static_cast<int>(type)));
        if (type == MillDrillOperationType::REDRAW) {
            continue;
        }
        MillDrillOperation op(kOperationStore, nr);
        op.readFromVDM();
        readSection("header", op.getHeaderSection(), out);
        readSection("parameter", op.getParameterSection(), out);
        readSection("tool", op.getToolSection(), out);
        readSection("actions1", op.getActionSection(1), out);
        readSection("actions2", op.getActionSection(2), out);
        readGeometry(*op.getGeometrySection(), out);
        readExpertForm(op, out);
    }
}

void readTools(Transcript& out) {
    ToolList tools(kToolStore);
    tools.readFromVDM();
    out.push_back("tools " + std::to_string(tools.getToolCount()));
    for (int i = 0; i < tools.getToolCount(); ++i) {
        readSection("tool" + std::to_string(i + 1), tools.getTool(i)->getToolSection(), out);
    }
}

// Changes the first pocket's depth step and adds an action after it, and one global.
void editAndWriteBack(Transcript& out) {
    MillTurnVdm vdm(kOperationStore);
    const int count = vdm.Create() ? vdm.OperationCount() : 0;
    vdm.Close();
    for (int nr = 0; nr < count; ++nr) {
        if (MillDrillOperation::GetOperationType(kOperationStore, nr) ==
            MillDrillOperationType::POCKET) {
            MillDrillOperation pocket(kOperationStore, nr);
            pocket.readFromVDM();
            pocket.getParameterSection()->setDouble("w_peck", 1.25);
            pocket.getActionSection(2)->addActionParameter(9, ActionType::Default, "M30");
            pocket.writeToVDM();
            out.push_back("edited pocket " + std::to_string(nr));
            break;
        }
    }
    out.push_back("set w_setup_ret " +
                  std::to_string(MacroExport::SetGlobalDoubleVar("w_setup_ret", 12.5)));
    double retract = 0.0;
    MacroExport::GetGlobalDoubleVar("w_setup_ret", retract);
    out.push_back("w_setup_ret now " + std::to_string(retract));
}

void whatTheHostSaw(Transcript& out, const testsupport::ErrorLogWatch& log) {
    velkhost::OfflineHost& host = velkhost::OfflineHost::instance();
    for (const velkhost::MessageBox& box : host.messageBoxes()) {
        out.push_back("box " + box.caption + "|" + box.text);
    }
    for (const std::string& record : log.texts()) {
        out.push_back("log " + record);
    }
    for (const int store : {kOperationStore, kToolStore}) {
        const velkhost::Records& records = host.records(store);
        for (std::size_t r = 0; r < records.size(); ++r) {
            for (const std::string& line : records[r]) {
                out.push_back("store " + std::to_string(store) + "/" + std::to_string(r) + ": " +
                              line);
            }
        }
    }
}

}  // namespace

Transcript runScriptedSession() {
    const testsupport::ErrorLogWatch log;
    Transcript out;
    readGlobals(out);
    readOperations(out);
    readTools(out);
    editAndWriteBack(out);
    whatTheHostSaw(out, log);
    return out;
}

std::string scratchFolder() {
    namespace fs = std::filesystem;
    // A folder of the running test's own: ctest runs the tests of this program side by side.
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    const fs::path folder =
        fs::temp_directory_path() /
        ("velkapi-capture-test-" + std::string(test->test_suite_name()) + "." + test->name());
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    fs::create_directories(folder);
    return folder.string();
}

}  // namespace capturetest
