// The folder every test program uses as the user's application-data folder. The test main sets
// APPDATA to it, with a "Velk" subfolder, before anything is logged, so the logs land there.
#pragma once

#include <string>

namespace testsupport {

std::string appDataFolder();
void setEnvironmentVariable(const std::string& name, const std::string& value);

}  // namespace testsupport
