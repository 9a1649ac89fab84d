// The exported C functions of the stand-in machining-parameter library: settings objects
// created and deleted through handles, a setter and a getter per setting, and the settings file.
// A handle the library did not create (or has deleted) is ignored: its setters do nothing, its
// getters give 0, and loading or saving through it fails. Failures are reported as one line on
// stderr, "MwApi: ...", and as the result 0.
#include <cstdio>
#include <memory>
#include <set>
#include <string>
#include <type_traits>

#include "GeoLib.h"
#include "MwApiAbi.h"

#if defined(_WIN32)
#define MWAPI_EXPORT extern "C" __declspec(dllexport)
#else
#define MWAPI_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

using mwapi::GeoLib;

std::set<GeoLib*>& liveObjects() {
    static std::set<GeoLib*> objects;
    return objects;
}

GeoLib* objectOf(void* handle) {
    auto* object = static_cast<GeoLib*>(handle);
    return liveObjects().count(object) != 0 ? object : nullptr;
}

int reportFailure(const std::string& message) {
    std::fprintf(stderr, "MwApi: %s\n", message.c_str());
    std::fflush(stderr);
    return 0;
}

// Runs `work` on the object of `handle` with the settings file `path`: 1 when done, else 0.
template <typename Work>
int withSettingsFile(void* handle, const char* path, Work work) {
    GeoLib* object = objectOf(handle);
    if (object == nullptr) {
        return reportFailure("no settings object for this handle");
    }
    if (path == nullptr) {
        return reportFailure("no settings file named");
    }
    try {
        work(*object, path);
        return 1;
    } catch (const std::exception& e) {
        return reportFailure(e.what());
    }
}

void setSetting(void* handle, const char* name, double value) {
    if (GeoLib* object = objectOf(handle)) {
        object->setValue(mwapi::settingIndex(name), value);
    }
}

double settingOf(void* handle, const char* name) {
    const GeoLib* object = objectOf(handle);
    return object != nullptr ? object->value(mwapi::settingIndex(name)) : 0.0;
}

}  // namespace

MWAPI_EXPORT void* MwGeoLibCreate() {
    try {
        auto object = std::make_unique<GeoLib>();
        liveObjects().insert(object.get());
        return object.release();
    } catch (const std::exception& e) {
        reportFailure(e.what());
        return nullptr;
    }
}

MWAPI_EXPORT void MwGeoLibDelete(void* handle) {
    if (GeoLib* object = objectOf(handle)) {
        liveObjects().erase(object);
        delete object;
    }
}

MWAPI_EXPORT int MwGeoLibSerialize(void* handle, int, const char* path) {
    return withSettingsFile(handle, path,
                            [](const GeoLib& object, const char* file) { object.write(file); });
}

MWAPI_EXPORT int MwGeoLibDeserialize(void* handle, int, const char* path) {
    return withSettingsFile(handle, path,
                            [](GeoLib& object, const char* file) { object.read(file); });
}

// The setter and the getter of one setting, of the types the library's users call them by.
#define MWAPI_DOUBLE_SETTING(Name)                                                          \
    MWAPI_EXPORT void MwMachParamSet##Name(void* handle, double value) {                    \
        setSetting(handle, #Name, value);                                                   \
    }                                                                                       \
    MWAPI_EXPORT double MwMachParamGet##Name(void* handle) {                                \
        return settingOf(handle, #Name);                                                    \
    }                                                                                       \
    static_assert(std::is_same_v<decltype(&MwMachParamSet##Name), MwMachParamSetDoubleFn>); \
    static_assert(std::is_same_v<decltype(&MwMachParamGet##Name), MwMachParamGetDoubleFn>)

#define MWAPI_INT_SETTING(Name)                                                          \
    MWAPI_EXPORT void MwMachParamSet##Name(void* handle, int value) {                    \
        setSetting(handle, #Name, value);                                                \
    }                                                                                    \
    MWAPI_EXPORT int MwMachParamGet##Name(void* handle) {                                \
        return static_cast<int>(settingOf(handle, #Name));                               \
    }                                                                                    \
    static_assert(std::is_same_v<decltype(&MwMachParamSet##Name), MwMachParamSetIntFn>); \
    static_assert(std::is_same_v<decltype(&MwMachParamGet##Name), MwMachParamGetIntFn>)

MWAPI_DOUBLE_SETTING(AdaptiveRoughingLinkClearanceHeight);
MWAPI_DOUBLE_SETTING(AdaptiveRoughingLinkLengthThresholdFactor);
MWAPI_DOUBLE_SETTING(RampAngle);
MWAPI_DOUBLE_SETTING(RampLengthPercent);
MWAPI_DOUBLE_SETTING(DepthStep);
MWAPI_INT_SETTING(NumberOfSlices4DepthStep);
MWAPI_DOUBLE_SETTING(StartHeight);
MWAPI_DOUBLE_SETTING(EndHeight);
MWAPI_DOUBLE_SETTING(MaxStepoverDistance);
MWAPI_DOUBLE_SETTING(StockRemain);
MWAPI_INT_SETTING(CurMachType);
MWAPI_INT_SETTING(DepthStepMode);

static_assert(std::is_same_v<decltype(&MwGeoLibCreate), MwGeoLibCreateFn>);
static_assert(std::is_same_v<decltype(&MwGeoLibDelete), MwGeoLibDeleteFn>);
static_assert(std::is_same_v<decltype(&MwGeoLibSerialize), MwGeoLibSerializeFn>);
static_assert(std::is_same_v<decltype(&MwGeoLibDeserialize), MwGeoLibDeserializeFn>);
