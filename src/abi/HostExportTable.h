// The C functions a CAM host executable exports for this library, one line each:
//   X(exported name, the name the library calls it by, result, (parameters))
// Everything that names the exports is made from these lines: the function pointer types
// Velk<Name>Fn (HostAbi.h), the library's binding host::<Name> (host/HostExports.h), the offline
// host's declarations and the checks of its definitions (velkhost/src/ExportedFunctions.h,
// velkhost/src/HostExports.cpp), the tests' list of exported names and the benchmark's replay
// of recorded calls.
//
// Adding an export is one line here, in the group it belongs to, and its definition in the
// offline host (velkhost/src/HostExports.cpp): the offline host does not link until it has one.
// Where the capture should keep the export's answers, capture/Capture.cpp notes them as well
// (host/CaptureHooks.h); without that, calls of it are made and not noted.
//
// Status out-parameters are non-zero on success.
#pragma once

extern "C" {
// The callback of the host's walk of its drawing (VelkProcessCad).
using VelkCadCallback = int (*)(const int* object, void* arg, const double* xyz, void* context);
}

// The host's main window and its environment.
#define VELKAPI_HOST_WINDOW_EXPORTS(X)        \
    X(VelkGetWnd, GetWnd, void*, (int which)) \
    X(VelkEnvironment, Environment, const char*, (const char* name))

// Global variables by name: ints (I), doubles (W) and strings ($).
#define VELKAPI_HOST_GLOBAL_EXPORTS(X)                                                     \
    X(VelkReadGlobalI, ReadGlobalI, int, (const char* name, int* status))                  \
    X(VelkReadGlobalW, ReadGlobalW, double, (const char* name, int* status))               \
    X(VelkReadGlobal$, ReadGlobalStr, void, (const char* name, char* buffer, int* status)) \
    X(VelkWriteGlobalI, WriteGlobalI, void, (const char* name, int value, int* status))    \
    X(VelkWriteGlobalW, WriteGlobalW, void, (const char* name, double value, int* status)) \
    X(VelkWriteGlobal$, WriteGlobalStr, void, (const char* name, const char* value, int* status))

// Elements first .. first + count - 1 of an array global.
#define VELKAPI_HOST_GLOBAL_ARRAY_EXPORTS(X)                                    \
    X(VelkReadGlobalArrayI, ReadGlobalArrayI, void,                             \
      (const char* name, int first, int count, int* values, int* status))       \
    X(VelkReadGlobalArrayW, ReadGlobalArrayW, void,                             \
      (const char* name, int first, int count, double* values, int* status))    \
    X(VelkWriteGlobalArrayI, WriteGlobalArrayI, void,                           \
      (const char* name, int first, int count, const int* values, int* status)) \
    X(VelkWriteGlobalArrayW, WriteGlobalArrayW, void,                           \
      (const char* name, int first, int count, const double* values, int* status))

// Record stores by their number; opening one gives out a handle.
#define VELKAPI_HOST_STORE_EXPORTS(X)                           \
    X(VelkMacroVdmExists, MacroVdmExists, int, (int vdm))       \
    X(VelkMacroVdmCheckOpen, MacroVdmCheckOpen, int, (int vdm)) \
    X(VelkMacroVdmOpen, MacroVdmOpen, int, (int vdm, int mode))

// An open record store, by the handle its opening gave out.
#define VELKAPI_HOST_STORE_HANDLE_EXPORTS(X)                                                 \
    X(VelkMacroVdmClose, MacroVdmClose, int, (int handle))                                   \
    X(VelkMacroVdmSize, MacroVdmSize, int, (int handle))                                     \
    X(VelkMacroVdmSeek, MacroVdmSeek, int, (int handle, int pos, int origin))                \
    X(VelkMacroVdmSingleSeek, MacroVdmSingleSeek, int, (int handle, int n))                  \
    X(VelkMacroVdmSingleGet$, MacroVdmSingleGet, int, (int handle, char* buffer, int n))     \
    X(VelkMacroVdmSingleAdd$, MacroVdmSingleAdd, int, (int handle, const char* line, int n)) \
    X(VelkMacroVdmSingleReplace$, MacroVdmSingleReplace, int,                                \
      (int handle, const char* line, int n))                                                 \
    X(VelkMacroVdmInsert$, MacroVdmInsert, int, (int handle, const char* text, int n))       \
    X(VelkMacroVdmSingleDelete, MacroVdmSingleDelete, int, (int handle, int n))

// The drawing: figures by name and number, objects by number, the walk of every object.
#define VELKAPI_HOST_DRAWING_EXPORTS(X)                                                  \
    X(VelkGetFigure, GetFigure, int, (const char* name))                                 \
    X(VelkGetFigureObject, GetFigureObject, int, (int figure))                           \
    X(VelkGetFigureInstance, GetFigureInstance, int, (int figure, int attrib))           \
    X(VelkGetNonCadObject, GetNonCadObject, int, (int number, int mode))                 \
    X(VelkGetObjectDelete, GetObjectDelete, int, (int object))                           \
    X(VelkGetObjectType, GetObjectType, int, (int object))                               \
    X(VelkGetObjectName, GetObjectName, int, (int object))                               \
    X(VelkGetObjectAttribute, GetObjectAttribute, int, (int object))                     \
    X(VelkFigureFindName, FigureFindName, const char*, (int figure))                     \
    X(VelkObjectStart, ObjectStart, void, (int object, double* x, double* y, double* z)) \
    X(VelkProcessCad, ProcessCad, void,                                                  \
      (VelkCadCallback cb, int mode, void* a, void* b, void* c, int d, void* context))

// The exports the library calls through its binding (host/HostExports.h).
#define VELKAPI_HOST_CALLED_EXPORTS(X)   \
    VELKAPI_HOST_WINDOW_EXPORTS(X)       \
    VELKAPI_HOST_GLOBAL_EXPORTS(X)       \
    VELKAPI_HOST_GLOBAL_ARRAY_EXPORTS(X) \
    VELKAPI_HOST_STORE_EXPORTS(X)        \
    VELKAPI_HOST_STORE_HANDLE_EXPORTS(X) \
    VELKAPI_HOST_DRAWING_EXPORTS(X)

// The exports the library looks up by name outside the binding: the host's stand-in for an
// export it lacks, and its message box (platform/), which the system's replaces where the host
// has none.
#define VELKAPI_HOST_FALLBACK_EXPORTS(X)   \
    X(VelkMissingAPI, MissingAPI, int, ()) \
    X(MessageBoxA, MessageBoxA, int,       \
      (void* owner, const char* text, const char* caption, unsigned style))

// Every export, in this order.
#define VELKAPI_HOST_EXPORTS(X)    \
    VELKAPI_HOST_CALLED_EXPORTS(X) \
    VELKAPI_HOST_FALLBACK_EXPORTS(X)
