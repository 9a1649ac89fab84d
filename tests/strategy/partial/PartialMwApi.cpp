// A machining-parameter library that has only some of the functions: settings objects and the
// depth step. It is built under the library's own name, for the program beside it.
#if defined(_WIN32)
#define PARTIAL_EXPORT extern "C" __declspec(dllexport)
#else
#define PARTIAL_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

struct Settings {
    double depthStep = 0.0;
};

}  // namespace

PARTIAL_EXPORT void* MwGeoLibCreate() {
    return new Settings;
}

PARTIAL_EXPORT void MwGeoLibDelete(void* handle) {
    delete static_cast<Settings*>(handle);
}

PARTIAL_EXPORT void MwMachParamSetDepthStep(void* handle, double value) {
    static_cast<Settings*>(handle)->depthStep = value;
}

PARTIAL_EXPORT double MwMachParamGetDepthStep(void* handle) {
    return static_cast<Settings*>(handle)->depthStep;
}
