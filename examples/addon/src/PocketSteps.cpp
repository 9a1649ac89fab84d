#include <pocketsteps/PocketSteps.h>

#include <velkapi/VelkApi.h>

#include <cmath>
#include <sstream>

namespace pocketsteps {

namespace {

using VelkApi::MillDrillOperation;
using VelkApi::MillDrillOperationType;

// The parameter of a pocket that holds its depth step, and the tool parameter of its diameter.
const char* const kDepthStep = "w_peck";
const char* const kToolDiameter = "w_t_diam";

// Every action this add-on writes starts so, which is how a later run finds its own action.
const char* const kActionPrefix = "(depth step ";

// A tool record keeps six significant digits, so a diameter that was never set reads back as
// 2147480000 rather than as the "not set" marker 2147483647 itself.
bool isSet(double value) {
    return value > 0.0 && value < 2147480000.0;
}

std::string number(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

int operationCount(int store) {
    VelkApi::MillTurnVdm vdm(store);
    if (!vdm.Create()) {
        return 0;
    }
    const int count = vdm.OperationCount();
    vdm.Close();
    return count;
}

// Replaces the action this add-on wrote before, or adds one after the others. True when the
// list changed.
bool nameTheChange(VelkApi::ActionSection& after, const std::string& text) {
    std::vector<std::string> keys;
    for (const std::string& key : after.readKeys(keys)) {
        VelkApi::Action action;
        after.getValue(key, &action);
        if (action.getCommand().rfind(kActionPrefix, 0) == 0) {
            if (action.getCommand() == text) {
                return false;
            }
            action.setCommand(text);
            after.setValue(key, &action);
            return true;
        }
    }
    // Actions are numbered from 2, as their lines in the store.
    after.addActionParameter(static_cast<int>(keys.size()) + 2, VelkApi::ActionType::Default, text);
    return true;
}

}  // namespace

double depthStepFor(double toolDiameter) {
    return std::floor(toolDiameter / 2.0 * 10.0 + 1e-9) / 10.0;
}

std::string actionText(const Change& change) {
    return kActionPrefix + number(change.depthStep) + " mm: half the " +
           number(change.toolDiameter) + " mm tool)";
}

Report setPocketDepthSteps(int store) {
    Report report;
    const int count = operationCount(store);
    for (int nr = 0; nr < count; ++nr) {
        if (MillDrillOperation::GetOperationType(store, nr) != MillDrillOperationType::POCKET) {
            continue;
        }
        MillDrillOperation pocket(store, nr);
        pocket.readFromVDM();
        const double diameter = pocket.getToolSection()->getDouble(kToolDiameter);
        if (!isSet(diameter)) {
            report.withoutToolDiameter.push_back(nr);
            continue;
        }
        const Change change{nr, diameter, depthStepFor(diameter)};
        VelkApi::ParameterSection& parameters = *pocket.getParameterSection();
        const bool stepChanged = parameters.getDouble(kDepthStep) != change.depthStep;
        parameters.setDouble(kDepthStep, change.depthStep);
        const bool actionChanged = nameTheChange(*pocket.getActionSection(2), actionText(change));
        if (stepChanged || actionChanged) {
            pocket.writeToVDM();
            report.changed.push_back(change);
        }
    }
    return report;
}

}  // namespace pocketsteps
