// The host's setup clearance and setup retract ("w_setup_cle", "w_setup_ret"), which seed the
// clearance and retract parameters of every catalogue.
#pragma once

namespace VelkApi::parameters {

// Reads both values, in that order, each straight into its target: the host's read assigns what
// the host returned, whether or not it could give the value. A value that cannot be read does
// not stop the other; true when both were read. Never throws.
bool readSetupValues(double& clearance, double& retract);

}  // namespace VelkApi::parameters
