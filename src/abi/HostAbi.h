// The C functions a CAM host executable exports for this library, as function pointer types.
// The library looks every one of them up by name in the host process (HostExports.h); the
// offline host (velkhost/) defines them. Status out-parameters are non-zero on success.
#pragma once

extern "C" {

using VelkGetWndFn = void* (*)(int which);
using VelkEnvironmentFn = const char* (*)(const char* name);

using VelkReadGlobalIFn = int (*)(const char* name, int* status);
using VelkReadGlobalWFn = double (*)(const char* name, int* status);
using VelkReadGlobalStrFn = void (*)(const char* name, char* buffer, int* status);
using VelkWriteGlobalIFn = void (*)(const char* name, int value, int* status);
using VelkWriteGlobalWFn = void (*)(const char* name, double value, int* status);
using VelkWriteGlobalStrFn = void (*)(const char* name, const char* value, int* status);
using VelkReadGlobalArrayIFn = void (*)(const char* name, int first, int count, int* values,
                                        int* status);
using VelkReadGlobalArrayWFn = void (*)(const char* name, int first, int count, double* values,
                                        int* status);
using VelkWriteGlobalArrayIFn = void (*)(const char* name, int first, int count, const int* values,
                                         int* status);
using VelkWriteGlobalArrayWFn = void (*)(const char* name, int first, int count,
                                         const double* values, int* status);

using VelkMacroVdmExistsFn = int (*)(int vdm);
using VelkMacroVdmCheckOpenFn = int (*)(int vdm);
using VelkMacroVdmOpenFn = int (*)(int vdm, int mode);
using VelkMacroVdmCloseFn = int (*)(int handle);
using VelkMacroVdmSizeFn = int (*)(int handle);
using VelkMacroVdmSeekFn = int (*)(int handle, int pos, int origin);
using VelkMacroVdmSingleSeekFn = int (*)(int handle, int n);
using VelkMacroVdmSingleGetFn = int (*)(int handle, char* buffer, int n);
using VelkMacroVdmSingleAddFn = int (*)(int handle, const char* line, int n);
using VelkMacroVdmSingleReplaceFn = int (*)(int handle, const char* line, int n);
using VelkMacroVdmInsertFn = int (*)(int handle, const char* text, int n);
using VelkMacroVdmSingleDeleteFn = int (*)(int handle, int n);

using VelkGetFigureFn = int (*)(const char* name);
using VelkGetFigureObjectFn = int (*)(int figure);
using VelkGetFigureInstanceFn = int (*)(int figure, int attrib);
using VelkGetNonCadObjectFn = int (*)(int number, int mode);
using VelkGetObjectDeleteFn = int (*)(int object);
using VelkGetObjectTypeFn = int (*)(int object);
using VelkGetObjectNameFn = int (*)(int object);
using VelkGetObjectAttributeFn = int (*)(int object);
using VelkFigureFindNameFn = const char* (*)(int figure);
using VelkObjectStartFn = void (*)(int object, double* x, double* y, double* z);
using VelkCadCallback = int (*)(const int* object, void* arg, const double* xyz, void* context);
using VelkProcessCadFn = void (*)(VelkCadCallback cb, int mode, void* a, void* b, void* c, int d,
                                  void* context);

using VelkMissingAPIFn = int (*)();
using MessageBoxAFn = int (*)(void* owner, const char* text, const char* caption, unsigned style);
}

namespace VelkApi::host {

// Sizes of the buffers the library hands to the host.
constexpr int kLineBufferSize = 5000;    // one store line, zero byte included
constexpr int kStringBufferSize = 4096;  // one string global, zero byte included

}  // namespace VelkApi::host
