// The exact names under which the offline host program exports the host functions.
#pragma once

#include <string>
#include <vector>

namespace offlinehost {

inline const std::vector<std::string> kExportNames = {
    "VelkGetWnd",
    "VelkEnvironment",
    "VelkReadGlobalI",
    "VelkReadGlobalW",
    "VelkReadGlobal$",
    "VelkWriteGlobalI",
    "VelkWriteGlobalW",
    "VelkWriteGlobal$",
    "VelkReadGlobalArrayI",
    "VelkReadGlobalArrayW",
    "VelkWriteGlobalArrayI",
    "VelkWriteGlobalArrayW",
    "VelkMacroVdmExists",
    "VelkMacroVdmCheckOpen",
    "VelkMacroVdmOpen",
    "VelkMacroVdmClose",
    "VelkMacroVdmSize",
    "VelkMacroVdmSeek",
    "VelkMacroVdmSingleSeek",
    "VelkMacroVdmSingleGet$",
    "VelkMacroVdmSingleAdd$",
    "VelkMacroVdmSingleReplace$",
    "VelkMacroVdmInsert$",
    "VelkMacroVdmSingleDelete",
    "VelkGetFigure",
    "VelkGetFigureObject",
    "VelkGetFigureInstance",
    "VelkGetNonCadObject",
    "VelkGetObjectDelete",
    "VelkGetObjectType",
    "VelkGetObjectName",
    "VelkGetObjectAttribute",
    "VelkFigureFindName",
    "VelkObjectStart",
    "VelkProcessCad",
    "VelkMissingAPI",
    "MessageBoxA",
};

}  // namespace offlinehost
