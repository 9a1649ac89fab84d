#include "parameters/SetupValues.h"

#include <velkapi/MacroExport.h>

namespace VelkApi::parameters {

bool readSetupValues(double& clearance, double& retract) {
    try {
        // Both are read whatever the first gives; the host's read assigns its result either way.
        const bool clearanceRead = MacroExport::GetGlobalDoubleVar("w_setup_cle", clearance) != 0;
        const bool retractRead = MacroExport::GetGlobalDoubleVar("w_setup_ret", retract) != 0;
        return clearanceRead && retractRead;
    } catch (...) {
        return false;
    }
}

}  // namespace VelkApi::parameters
