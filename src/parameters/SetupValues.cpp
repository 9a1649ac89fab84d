#include "parameters/SetupValues.h"

#include <velkapi/MacroExport.h>

namespace VelkApi::parameters {

namespace {

// One of the host's setup values into `target`; false, leaving `target`, when the host cannot
// give it.
bool readSetupValue(const char* name, double& target) {
    double value = 0.0;
    if (MacroExport::GetGlobalDoubleVar(name, value) == 0) {
        return false;
    }
    target = value;
    return true;
}

}  // namespace

bool readSetupValues(double& clearance, double& retract) {
    try {
        return readSetupValue("w_setup_cle", clearance) && readSetupValue("w_setup_ret", retract);
    } catch (...) {
        return false;
    }
}

}  // namespace VelkApi::parameters
