// The C functions a CAM host executable exports for this library, as function pointer types
// Velk<Name>Fn, made from the table of exports (HostExportTable.h). The library looks every one
// of them up by name in the host process (host/HostExports.h); the offline host (velkhost/)
// defines them.
#pragma once

#include "HostExportTable.h"

extern "C" {

#define VELKAPI_FUNCTION_TYPE(Symbol, Name, Result, Parameters) \
    using Velk##Name##Fn = Result(*) Parameters;
VELKAPI_HOST_EXPORTS(VELKAPI_FUNCTION_TYPE)
#undef VELKAPI_FUNCTION_TYPE
}

namespace VelkApi::host {

// Sizes of the buffers the library hands to the host.
constexpr int kLineBufferSize = 5000;    // one store line, zero byte included
constexpr int kStringBufferSize = 4096;  // one string global, zero byte included

}  // namespace VelkApi::host
