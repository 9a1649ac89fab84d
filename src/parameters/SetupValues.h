// The host's setup clearance and setup retract ("w_setup_cle", "w_setup_ret"), which seed the
// clearance and retract parameters of every catalogue.
#pragma once

namespace VelkApi::parameters {

// Reads the two values in that order, each into its target as the host gives it. The reads stop
// at the first value the host cannot give, and the values that stand are kept; true when both
// were read. Never throws.
bool readSetupValues(double& clearance, double& retract);

}  // namespace VelkApi::parameters
