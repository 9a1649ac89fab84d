// The functions the offline host exports from its program, by the names the library looks up.
// The whole project builds with hidden visibility, so each one is marked for export.
#pragma once

#include "HostAbi.h"

#if defined(_WIN32)
#define VELKHOST_EXPORT __declspec(dllexport)
#else
#define VELKHOST_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {

VELKHOST_EXPORT void* VelkGetWnd(int which);
VELKHOST_EXPORT const char* VelkEnvironment(const char* name);

VELKHOST_EXPORT int VelkReadGlobalI(const char* name, int* status);
VELKHOST_EXPORT double VelkReadGlobalW(const char* name, int* status);
VELKHOST_EXPORT void VelkReadGlobal$(const char* name, char* buffer, int* status);
VELKHOST_EXPORT void VelkWriteGlobalI(const char* name, int value, int* status);
VELKHOST_EXPORT void VelkWriteGlobalW(const char* name, double value, int* status);
VELKHOST_EXPORT void VelkWriteGlobal$(const char* name, const char* value, int* status);
VELKHOST_EXPORT void VelkReadGlobalArrayI(const char* name, int first, int count, int* values,
                                          int* status);
VELKHOST_EXPORT void VelkReadGlobalArrayW(const char* name, int first, int count, double* values,
                                          int* status);
VELKHOST_EXPORT void VelkWriteGlobalArrayI(const char* name, int first, int count,
                                           const int* values, int* status);
VELKHOST_EXPORT void VelkWriteGlobalArrayW(const char* name, int first, int count,
                                           const double* values, int* status);

VELKHOST_EXPORT int VelkMacroVdmExists(int vdm);
VELKHOST_EXPORT int VelkMacroVdmCheckOpen(int vdm);
VELKHOST_EXPORT int VelkMacroVdmOpen(int vdm, int mode);
VELKHOST_EXPORT int VelkMacroVdmClose(int handle);
VELKHOST_EXPORT int VelkMacroVdmSize(int handle);
VELKHOST_EXPORT int VelkMacroVdmSeek(int handle, int pos, int origin);
VELKHOST_EXPORT int VelkMacroVdmSingleSeek(int handle, int n);
VELKHOST_EXPORT int VelkMacroVdmSingleGet$(int handle, char* buffer, int n);
VELKHOST_EXPORT int VelkMacroVdmSingleAdd$(int handle, const char* line, int n);
VELKHOST_EXPORT int VelkMacroVdmSingleReplace$(int handle, const char* line, int n);
VELKHOST_EXPORT int VelkMacroVdmInsert$(int handle, const char* text, int n);
VELKHOST_EXPORT int VelkMacroVdmSingleDelete(int handle, int n);

VELKHOST_EXPORT int VelkGetFigure(const char* name);
VELKHOST_EXPORT int VelkGetFigureObject(int figure);
VELKHOST_EXPORT int VelkGetFigureInstance(int figure, int attrib);
VELKHOST_EXPORT int VelkGetNonCadObject(int number, int mode);
VELKHOST_EXPORT int VelkGetObjectDelete(int object);
VELKHOST_EXPORT int VelkGetObjectType(int object);
VELKHOST_EXPORT int VelkGetObjectName(int object);
VELKHOST_EXPORT int VelkGetObjectAttribute(int object);
VELKHOST_EXPORT const char* VelkFigureFindName(int figure);
VELKHOST_EXPORT void VelkObjectStart(int object, double* x, double* y, double* z);
VELKHOST_EXPORT void VelkProcessCad(VelkCadCallback cb, int mode, void* a, void* b, void* c, int d,
                                    void* context);

VELKHOST_EXPORT int VelkMissingAPI();
VELKHOST_EXPORT int MessageBoxA(void* owner, const char* text, const char* caption, unsigned style);
}
