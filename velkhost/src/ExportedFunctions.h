// The functions the offline host exports from its program, one for each line of the table of
// exports (HostExportTable.h), by the names the library looks up. The whole project builds with
// hidden visibility, so each one is marked for export.
#pragma once

#include "HostAbi.h"

#if defined(_WIN32)
#define VELKHOST_EXPORT __declspec(dllexport)
#else
#define VELKHOST_EXPORT __attribute__((visibility("default")))
#endif

// One declaration per line of the table of exports, e.g.
//   VELKHOST_EXPORT int VelkMacroVdmOpen(int vdm, int mode);
extern "C" {
#define VELKHOST_DECLARE(Symbol, Name, Result, Parameters) VELKHOST_EXPORT Result Symbol Parameters;
VELKAPI_HOST_EXPORTS(VELKHOST_DECLARE)
#undef VELKHOST_DECLARE
}
