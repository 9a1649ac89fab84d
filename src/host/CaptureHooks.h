// Capture's place in the seam every host call passes through (HostExports.h). While a capture
// runs, a call goes through Recorder: the host is called as always, with the same arguments,
// and what it answered is noted for the capture file. While none runs, the test of `active` is
// all a call costs. See <velkapi/Capture.h>.
#pragma once

#include <type_traits>

#include "HostAbi.h"

namespace VelkApi::host {

template <typename Fn>
class HostExport;

namespace capture {

// True while a capture runs.
inline bool active = false;

// An export the host does not have: the capture file leaves it missing too.
void noteMissingExport(const char* exportName);

// What the host answered, for the exports whose answers make up the capture file: answer
// first, then the call's arguments. Exports of one C type share a function, which tells them
// apart by the export object. None of them throws.
void note(HostExport<VelkEnvironmentFn>& from, const char* answer, const char* name);
void note(HostExport<VelkReadGlobalIFn>& from, int answer, const char* name, int* status);
void note(HostExport<VelkReadGlobalWFn>& from, double answer, const char* name, int* status);
void note(HostExport<VelkReadGlobalStrFn>& from, const char* name, char* buffer, int* status);
void note(HostExport<VelkWriteGlobalIFn>& from, const char* name, int value, int* status);
void note(HostExport<VelkWriteGlobalWFn>& from, const char* name, double value, int* status);
void note(HostExport<VelkWriteGlobalStrFn>& from, const char* name, const char* value, int* status);
void note(HostExport<VelkReadGlobalArrayIFn>& from, const char* name, int first, int count,
          int* values, int* status);
void note(HostExport<VelkReadGlobalArrayWFn>& from, const char* name, int first, int count,
          double* values, int* status);
void note(HostExport<VelkWriteGlobalArrayIFn>& from, const char* name, int first, int count,
          const int* values, int* status);
void note(HostExport<VelkWriteGlobalArrayWFn>& from, const char* name, int first, int count,
          const double* values, int* status);
// The exports of one int argument: store existence, figure objects, object properties.
void note(HostExport<VelkMacroVdmExistsFn>& from, int answer, int number);
// The exports of two int arguments: opening a store, figure instances, non-CAD objects.
void note(HostExport<VelkMacroVdmOpenFn>& from, int answer, int first, int second);
void note(HostExport<VelkGetFigureFn>& from, int answer, const char* name);
void note(HostExport<VelkFigureFindNameFn>& from, const char* answer, int figure);
void note(HostExport<VelkObjectStartFn>& from, int object, double* x, double* y, double* z);
// The other exports answer nothing the capture keeps.
template <typename Export, typename... Args>
void note(Export& /*from*/, Args... /*call*/) {}

// The host's walk of its drawing, with a callback of the capture's in front of the caller's
// that notes every object the host hands over.
void walkDrawing(VelkProcessCadFn walk, VelkCadCallback callback, int mode, void* a, void* b,
                 void* c, int d, void* context);

template <typename Fn>
struct Recorder;

template <typename Result, typename... Params>
struct Recorder<Result (*)(Params...)> {
    using Fn = Result (*)(Params...);

    // Calls the host through `fn` (the export, or the host's stand-in for a missing one; null
    // when there is neither) and notes its answer.
    static Result call(HostExport<Fn>& from, Fn fn, Params... args) {
        if (!from.isCached()) {
            noteMissingExport(from.exportName());
            return fn ? fn(args...) : Result();
        }
        if constexpr (std::is_same_v<Fn, VelkProcessCadFn>) {
            walkDrawing(fn, args...);
        } else if constexpr (std::is_void_v<Result>) {
            fn(args...);
            note(from, args...);
        } else {
            const Result answer = fn(args...);
            note(from, answer, args...);
            return answer;
        }
    }
};

}  // namespace capture
}  // namespace VelkApi::host
