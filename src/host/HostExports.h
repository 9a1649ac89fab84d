// Binding to the functions the host executable exports. Every export is looked up by its exact
// name on first use and the address is kept for the life of the process. An export the host
// does not have is not cached: each call looks it up again and, failing that, calls the host's
// "VelkMissingAPI" in its place with the same arguments, taking its result as the missing
// function's result. The library shows nothing itself for a missing export. While a capture
// runs, every call is also noted for the capture file (CaptureHooks.h).
#pragma once

#include <string>
#include <type_traits>
#include <utility>

#include "HostAbi.h"
#include "host/CaptureHooks.h"
#include "platform/Platform.h"

namespace VelkApi::host {

template <typename Fn>
class HostExport {
  public:
    explicit constexpr HostExport(const char* exportName) noexcept : name(exportName) {}

    template <typename... Args>
    auto operator()(Args&&... args) {
        using Result = std::invoke_result_t<Fn, Args...>;
        const Fn fn = resolve();
        if (capture::active) {
            return capture::Recorder<Fn>::call(*this, fn, std::forward<Args>(args)...);
        }
        if (!fn) {  // neither the export nor "VelkMissingAPI": nothing to call
            return Result();
        }
        return fn(std::forward<Args>(args)...);
    }

    // The function to call: the export, or the host's stand-in for a missing one.
    Fn resolve() {
        if (!cached) {
            cached = reinterpret_cast<Fn>(platform::findHostExport(name));
        }
        return cached ? cached : reinterpret_cast<Fn>(platform::findHostExport("VelkMissingAPI"));
    }

    bool isCached() const { return cached != nullptr; }
    const char* exportName() const { return name; }

  private:
    const char* name;
    Fn cached = nullptr;
};

inline HostExport<VelkGetWndFn> GetWnd{"VelkGetWnd"};
inline HostExport<VelkEnvironmentFn> Environment{"VelkEnvironment"};

inline HostExport<VelkReadGlobalIFn> ReadGlobalI{"VelkReadGlobalI"};
inline HostExport<VelkReadGlobalWFn> ReadGlobalW{"VelkReadGlobalW"};
inline HostExport<VelkReadGlobalStrFn> ReadGlobalStr{"VelkReadGlobal$"};
inline HostExport<VelkWriteGlobalIFn> WriteGlobalI{"VelkWriteGlobalI"};
inline HostExport<VelkWriteGlobalWFn> WriteGlobalW{"VelkWriteGlobalW"};
inline HostExport<VelkWriteGlobalStrFn> WriteGlobalStr{"VelkWriteGlobal$"};
inline HostExport<VelkReadGlobalArrayIFn> ReadGlobalArrayI{"VelkReadGlobalArrayI"};
inline HostExport<VelkReadGlobalArrayWFn> ReadGlobalArrayW{"VelkReadGlobalArrayW"};
inline HostExport<VelkWriteGlobalArrayIFn> WriteGlobalArrayI{"VelkWriteGlobalArrayI"};
inline HostExport<VelkWriteGlobalArrayWFn> WriteGlobalArrayW{"VelkWriteGlobalArrayW"};

inline HostExport<VelkMacroVdmExistsFn> MacroVdmExists{"VelkMacroVdmExists"};
inline HostExport<VelkMacroVdmCheckOpenFn> MacroVdmCheckOpen{"VelkMacroVdmCheckOpen"};
inline HostExport<VelkMacroVdmOpenFn> MacroVdmOpen{"VelkMacroVdmOpen"};
inline HostExport<VelkMacroVdmCloseFn> MacroVdmClose{"VelkMacroVdmClose"};
inline HostExport<VelkMacroVdmSizeFn> MacroVdmSize{"VelkMacroVdmSize"};
inline HostExport<VelkMacroVdmSeekFn> MacroVdmSeek{"VelkMacroVdmSeek"};
inline HostExport<VelkMacroVdmSingleSeekFn> MacroVdmSingleSeek{"VelkMacroVdmSingleSeek"};
inline HostExport<VelkMacroVdmSingleGetFn> MacroVdmSingleGet{"VelkMacroVdmSingleGet$"};
inline HostExport<VelkMacroVdmSingleAddFn> MacroVdmSingleAdd{"VelkMacroVdmSingleAdd$"};
inline HostExport<VelkMacroVdmSingleReplaceFn> MacroVdmSingleReplace{"VelkMacroVdmSingleReplace$"};
inline HostExport<VelkMacroVdmInsertFn> MacroVdmInsert{"VelkMacroVdmInsert$"};
inline HostExport<VelkMacroVdmSingleDeleteFn> MacroVdmSingleDelete{"VelkMacroVdmSingleDelete"};

inline HostExport<VelkGetFigureFn> GetFigure{"VelkGetFigure"};
inline HostExport<VelkGetFigureObjectFn> GetFigureObject{"VelkGetFigureObject"};
inline HostExport<VelkGetFigureInstanceFn> GetFigureInstance{"VelkGetFigureInstance"};
inline HostExport<VelkGetNonCadObjectFn> GetNonCadObject{"VelkGetNonCadObject"};
inline HostExport<VelkGetObjectDeleteFn> GetObjectDelete{"VelkGetObjectDelete"};
inline HostExport<VelkGetObjectTypeFn> GetObjectType{"VelkGetObjectType"};
inline HostExport<VelkGetObjectNameFn> GetObjectName{"VelkGetObjectName"};
inline HostExport<VelkGetObjectAttributeFn> GetObjectAttribute{"VelkGetObjectAttribute"};
inline HostExport<VelkFigureFindNameFn> FigureFindName{"VelkFigureFindName"};
inline HostExport<VelkObjectStartFn> ObjectStart{"VelkObjectStart"};
inline HostExport<VelkProcessCadFn> ProcessCad{"VelkProcessCad"};

// The host's environment value `name`; "" when the host has none (or no such export).
std::string environment(const char* name);

// A message box owned by the host's window (VelkGetWnd(2)), style MB_OK.
void showError(const std::string& caption, const std::string& text);

}  // namespace VelkApi::host
