// Binding to the machining-parameter library ("MwApi.dll" on Windows, "libMwApi.so" elsewhere).
// The library is loaded on first use and kept for the life of the process; a load that fails is
// tried again at the next call, and until it succeeds every call goes to the host's
// "VelkMissingAPI" instead, with the same arguments, whose result is taken as the function's.
// Each function is looked up by name once; one the library lacks is replaced for good by the
// host's "VelkMissingAPI".
#pragma once

#include <string>
#include <type_traits>
#include <utility>

#include "MwApiAbi.h"
#include "platform/Platform.h"

namespace VelkApi::strategy {

// The loaded library; null while it cannot be loaded.
void* machiningLibrary();

template <typename Fn>
class LibraryFunction {
  public:
    explicit LibraryFunction(std::string functionName) : name(std::move(functionName)) {}

    template <typename... Args>
    auto operator()(Args&&... args) {
        using Result = std::invoke_result_t<Fn, Args...>;
        const Fn fn = resolve();
        if (!fn) {  // no library and no "VelkMissingAPI" either: nothing to call
            return Result();
        }
        return fn(std::forward<Args>(args)...);
    }

    // The function to call: the library's, or the host's stand-in.
    Fn resolve() {
        void* library = machiningLibrary();
        if (!library) {
            return missingApi();
        }
        if (!cached) {
            cached = reinterpret_cast<Fn>(platform::findLibraryExport(library, name.c_str()));
            if (!cached) {
                cached = missingApi();
            }
        }
        return cached;
    }

    bool isCached() const { return cached != nullptr; }

  private:
    static Fn missingApi() {
        return reinterpret_cast<Fn>(platform::findHostExport("VelkMissingAPI"));
    }

    std::string name;
    Fn cached = nullptr;
};

inline LibraryFunction<MwGeoLibCreateFn> GeoLibCreate{"MwGeoLibCreate"};
inline LibraryFunction<MwGeoLibDeleteFn> GeoLibDelete{"MwGeoLibDelete"};
inline LibraryFunction<MwGeoLibSerializeFn> GeoLibSerialize{"MwGeoLibSerialize"};
inline LibraryFunction<MwGeoLibDeserializeFn> GeoLibDeserialize{"MwGeoLibDeserialize"};

template <typename Value>
struct SettingFunctions;

template <>
struct SettingFunctions<double> {
    using Set = MwMachParamSetDoubleFn;
    using Get = MwMachParamGetDoubleFn;
};

template <>
struct SettingFunctions<int> {
    using Set = MwMachParamSetIntFn;
    using Get = MwMachParamGetIntFn;
};

// One setting of the library: "MwMachParamSet" and "MwMachParamGet" followed by its name.
template <typename Value>
struct Setting {
    explicit Setting(const std::string& name)
        : set("MwMachParamSet" + name), get("MwMachParamGet" + name) {}

    LibraryFunction<typename SettingFunctions<Value>::Set> set;
    LibraryFunction<typename SettingFunctions<Value>::Get> get;
};

inline Setting<double> AdaptiveRoughingLinkClearanceHeight{"AdaptiveRoughingLinkClearanceHeight"};
inline Setting<double> AdaptiveRoughingLinkLengthThresholdFactor{
    "AdaptiveRoughingLinkLengthThresholdFactor"};
inline Setting<double> RampAngle{"RampAngle"};
inline Setting<double> RampLengthPercent{"RampLengthPercent"};
inline Setting<double> DepthStep{"DepthStep"};
inline Setting<int> NumberOfSlices4DepthStep{"NumberOfSlices4DepthStep"};
inline Setting<double> StartHeight{"StartHeight"};
inline Setting<double> EndHeight{"EndHeight"};
inline Setting<double> MaxStepoverDistance{"MaxStepoverDistance"};
inline Setting<double> StockRemain{"StockRemain"};
inline Setting<int> CurMachType{"CurMachType"};
// 0: a fixed depth step (DepthStep); 1: a number of slices (NumberOfSlices4DepthStep).
inline Setting<int> DepthStepMode{"DepthStepMode"};

}  // namespace VelkApi::strategy
