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

// One binding per export the library calls, by the names of the table of exports:
// host::MacroVdmOpen calls "VelkMacroVdmOpen", of type VelkMacroVdmOpenFn.
#define VELKAPI_HOST_EXPORT(Symbol, Name, Result, Parameters) \
    inline HostExport<Velk##Name##Fn> Name{#Symbol};
VELKAPI_HOST_CALLED_EXPORTS(VELKAPI_HOST_EXPORT)
#undef VELKAPI_HOST_EXPORT

// The host's environment value `name`; "" when the host has none (or no such export).
std::string environment(const char* name);

// A message box owned by the host's window (VelkGetWnd(2)), style MB_OK.
void showError(const std::string& caption, const std::string& text);

}  // namespace VelkApi::host
