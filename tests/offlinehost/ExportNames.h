// The exact names under which the offline host program exports the host functions.
#pragma once

#include <string>
#include <vector>

#include "HostExportTable.h"

namespace offlinehost {

#define OFFLINEHOST_EXPORT_NAME(Symbol, Name, Result, Parameters) #Symbol,
inline const std::vector<std::string> kExportNames = {
    VELKAPI_HOST_EXPORTS(OFFLINEHOST_EXPORT_NAME)};
#undef OFFLINEHOST_EXPORT_NAME

}  // namespace offlinehost
