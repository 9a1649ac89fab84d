// Definitions of the exported host functions: each counts its call under its own name (and,
// while calls are recorded, records it with its int and text arguments) and hands over to the
// process's offline host.
#include <array>
#include <cstddef>
#include <initializer_list>
#include <type_traits>

#include "ExportedFunctions.h"
#include "HostAbi.h"
#include "HostState.h"

using velkhost::CadObject;

namespace {

velkhost::detail::HostState& counted(std::size_t slot, std::initializer_list<int> numbers = {},
                                     const char* text = nullptr) {
    velkhost::detail::HostState& state = velkhost::detail::hostState();
    state.countCall(slot, numbers, text);
    return state;
}

// A captured project lists the exports the session's host did not have; the offline host leaves
// them missing too. A call to one goes to "VelkMissingAPI" in its place, as the library's own
// fallback sends it in the CAM application, and takes its answer.
template <typename Result>
Result standInFor() {
    const int answer = VelkMissingAPI();
    if constexpr (std::is_void_v<Result>) {
        return;
    } else if constexpr (std::is_pointer_v<Result>) {
        return nullptr;
    } else {
        return static_cast<Result>(answer);
    }
}

}  // namespace

// The slot of the export being defined, looked up by its name once.
#define VELKHOST_THIS_EXPORT                                                      \
    [](const char* exportName) {                                                  \
        static const std::size_t slot = velkhost::detail::exportSlot(exportName); \
        return slot;                                                              \
    }(__func__)

// Returns the stand-in's answer from an exported function the loaded capture lists as missing.
#define VELKHOST_UNLESS_MISSING(Result)                        \
    if (velkhost::detail::hostState().lacksExport(__func__)) { \
        return standInFor<Result>();                           \
    }

extern "C" {

VELKHOST_EXPORT void* VelkGetWnd(int which) {
    VELKHOST_UNLESS_MISSING(void*)
    counted(VELKHOST_THIS_EXPORT, {which});
    return velkhost::detail::fakeWindow(which);
}
VELKHOST_EXPORT const char* VelkEnvironment(const char* name) {
    VELKHOST_UNLESS_MISSING(const char*)
    return counted(VELKHOST_THIS_EXPORT, {}, name).variables.environment(name);
}

VELKHOST_EXPORT int VelkReadGlobalI(const char* name, int* status) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {}, name).variables.readInt(name, status);
}
VELKHOST_EXPORT double VelkReadGlobalW(const char* name, int* status) {
    VELKHOST_UNLESS_MISSING(double)
    return counted(VELKHOST_THIS_EXPORT, {}, name).variables.readDouble(name, status);
}
VELKHOST_EXPORT void VelkReadGlobal$(const char* name, char* buffer, int* status) {
    VELKHOST_UNLESS_MISSING(void)
    counted(VELKHOST_THIS_EXPORT, {}, name).variables.readText(name, buffer, status);
}
VELKHOST_EXPORT void VelkWriteGlobalI(const char* name, int value, int* status) {
    VELKHOST_UNLESS_MISSING(void)
    counted(VELKHOST_THIS_EXPORT, {value}, name).variables.writeInt(name, value, status);
}
VELKHOST_EXPORT void VelkWriteGlobalW(const char* name, double value, int* status) {
    VELKHOST_UNLESS_MISSING(void)
    counted(VELKHOST_THIS_EXPORT, {}, name).variables.writeDouble(name, value, status);
}
VELKHOST_EXPORT void VelkWriteGlobal$(const char* name, const char* value, int* status) {
    VELKHOST_UNLESS_MISSING(void)
    counted(VELKHOST_THIS_EXPORT, {}, name).variables.writeText(name, value, status);
}
VELKHOST_EXPORT void VelkReadGlobalArrayI(const char* name, int first, int count, int* values,
                                          int* status) {
    VELKHOST_UNLESS_MISSING(void)
    counted(VELKHOST_THIS_EXPORT, {first, count}, name)
        .variables.readIntArray(name, first, count, values, status);
}
VELKHOST_EXPORT void VelkReadGlobalArrayW(const char* name, int first, int count, double* values,
                                          int* status) {
    VELKHOST_UNLESS_MISSING(void)
    counted(VELKHOST_THIS_EXPORT, {first, count}, name)
        .variables.readDoubleArray(name, first, count, values, status);
}
VELKHOST_EXPORT void VelkWriteGlobalArrayI(const char* name, int first, int count,
                                           const int* values, int* status) {
    VELKHOST_UNLESS_MISSING(void)
    counted(VELKHOST_THIS_EXPORT, {first, count}, name)
        .variables.writeIntArray(name, first, count, values, status);
}
VELKHOST_EXPORT void VelkWriteGlobalArrayW(const char* name, int first, int count,
                                           const double* values, int* status) {
    VELKHOST_UNLESS_MISSING(void)
    counted(VELKHOST_THIS_EXPORT, {first, count}, name)
        .variables.writeDoubleArray(name, first, count, values, status);
}

VELKHOST_EXPORT int VelkMacroVdmExists(int vdm) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {vdm}).stores.exists(vdm);
}
VELKHOST_EXPORT int VelkMacroVdmCheckOpen(int vdm) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {vdm}).stores.checkOpen(vdm);
}
VELKHOST_EXPORT int VelkMacroVdmOpen(int vdm, int mode) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {vdm, mode}).stores.open(vdm);
}
VELKHOST_EXPORT int VelkMacroVdmClose(int handle) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {handle}).stores.close(handle);
}
VELKHOST_EXPORT int VelkMacroVdmSize(int handle) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {handle}).stores.size(handle);
}
VELKHOST_EXPORT int VelkMacroVdmSeek(int handle, int pos, int origin) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {handle, pos, origin}).stores.seek(handle, pos, origin);
}
VELKHOST_EXPORT int VelkMacroVdmSingleSeek(int handle, int n) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {handle, n}).stores.singleSeek(handle, n);
}
VELKHOST_EXPORT int VelkMacroVdmSingleGet$(int handle, char* buffer, int n) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {handle, n}).stores.singleGet(handle, buffer);
}
VELKHOST_EXPORT int VelkMacroVdmSingleAdd$(int handle, const char* line, int n) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {handle, n}, line).stores.singleAdd(handle, line);
}
VELKHOST_EXPORT int VelkMacroVdmSingleReplace$(int handle, const char* line, int n) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {handle, n}, line).stores.singleReplace(handle, line);
}
VELKHOST_EXPORT int VelkMacroVdmInsert$(int handle, const char* text, int n) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {handle, n}, text).stores.insert(handle, text);
}
VELKHOST_EXPORT int VelkMacroVdmSingleDelete(int handle, int n) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {handle, n}).stores.singleDelete(handle, n);
}

// The drawing: an unknown figure is -1, an unknown object 0 (and deleted, without a type,
// name or attribute, at the origin).
VELKHOST_EXPORT int VelkGetFigure(const char* name) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {}, name).project.cad.figureNumber(name);
}
VELKHOST_EXPORT int VelkGetFigureObject(int figure) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {figure}).project.cad.figureObject(figure, 0);
}
VELKHOST_EXPORT int VelkGetFigureInstance(int figure, int attrib) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {figure, attrib}).project.cad.figureObject(figure, attrib);
}
VELKHOST_EXPORT int VelkGetNonCadObject(int number, int mode) {
    VELKHOST_UNLESS_MISSING(int)
    return counted(VELKHOST_THIS_EXPORT, {number, mode}).project.cad.nonCadObject(number);
}
VELKHOST_EXPORT int VelkGetObjectDelete(int object) {
    VELKHOST_UNLESS_MISSING(int)
    const CadObject* found = counted(VELKHOST_THIS_EXPORT, {object}).project.cad.object(object);
    return !found || found->deleted ? 1 : 0;
}
VELKHOST_EXPORT int VelkGetObjectType(int object) {
    VELKHOST_UNLESS_MISSING(int)
    const CadObject* found = counted(VELKHOST_THIS_EXPORT, {object}).project.cad.object(object);
    return found ? found->type : 0;
}
VELKHOST_EXPORT int VelkGetObjectName(int object) {
    VELKHOST_UNLESS_MISSING(int)
    const CadObject* found = counted(VELKHOST_THIS_EXPORT, {object}).project.cad.object(object);
    return found ? found->name : 0;
}
VELKHOST_EXPORT int VelkGetObjectAttribute(int object) {
    VELKHOST_UNLESS_MISSING(int)
    const CadObject* found = counted(VELKHOST_THIS_EXPORT, {object}).project.cad.object(object);
    return found ? found->attribute : 0;
}
VELKHOST_EXPORT const char* VelkFigureFindName(int figure) {
    VELKHOST_UNLESS_MISSING(const char*)
    return counted(VELKHOST_THIS_EXPORT, {figure}).project.cad.figureName(figure);
}
VELKHOST_EXPORT void VelkObjectStart(int object, double* x, double* y, double* z) {
    VELKHOST_UNLESS_MISSING(void)
    const CadObject* found = counted(VELKHOST_THIS_EXPORT, {object}).project.cad.object(object);
    const std::array<double, 3> start = found ? found->start : std::array<double, 3>{};
    *x = start[0];
    *y = start[1];
    *z = start[2];
}
VELKHOST_EXPORT void VelkProcessCad(VelkCadCallback cb, int mode, void* /*a*/, void* /*b*/,
                                    void* /*c*/, int d, void* context) {
    VELKHOST_UNLESS_MISSING(void)
    counted(VELKHOST_THIS_EXPORT, {mode, d}).project.cad.walk(cb, context);
}

VELKHOST_EXPORT int VelkMissingAPI() {
    return counted(VELKHOST_THIS_EXPORT).missingApi();
}
VELKHOST_EXPORT int MessageBoxA(void* owner, const char* text, const char* caption,
                                unsigned style) {
    return counted(VELKHOST_THIS_EXPORT, {static_cast<int>(style)}, text)
        .showMessageBox(owner, text, caption, style);
}
}

// Every definition above matches its line of the table of exports (a definition that differs
// from the declaration made from it does not compile), and so has the type the library calls
// it through.
#define VELKHOST_CHECK(Symbol, Name, Result, Parameters) \
    static_assert(std::is_same_v<decltype(&Symbol), Velk##Name##Fn>);
VELKAPI_HOST_EXPORTS(VELKHOST_CHECK)
#undef VELKHOST_CHECK
