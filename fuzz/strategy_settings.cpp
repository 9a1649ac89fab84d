// The machining-strategy settings file of the stand-in machining-parameter library, read from any
// bytes. A file that reads is written and read back, and must give the same values: the file
// keeps every number exactly. A read that fails must change nothing.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "FuzzSupport.h"
#include "GeoLib.h"

namespace {

// A file of this run's own in the temporary folder, removed when the run ends.
struct ScratchFile {
    explicit ScratchFile(const char* role)
        : path((std::filesystem::temp_directory_path() /
                ("velkapi-fuzz-settings-" + std::to_string(getpid()) + "-" + role))
                   .string()) {}
    ~ScratchFile() { std::remove(path.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string path;
};

bool sameValue(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool sameValues(const mwapi::GeoLib& a, const mwapi::GeoLib& b) {
    for (std::size_t i = 0; i < mwapi::kSettingCount; ++i) {
        if (!sameValue(a.value(i), b.value(i))) {
            return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile input("input");
    static const ScratchFile output("output");
    std::ofstream(input.path, std::ios::binary | std::ios::trunc) << fuzzsupport::text(data, size);

    const mwapi::GeoLib initial;
    mwapi::GeoLib settings;
    try {
        settings.read(input.path);
    } catch (const mwapi::SettingsFileError&) {
        if (!sameValues(settings, initial)) {
            std::abort();  // a failed read changed a value
        }
        return 0;
    }
    settings.write(output.path);
    mwapi::GeoLib again;
    again.read(output.path);
    if (!sameValues(again, settings)) {
        std::abort();  // a value did not survive its own file
    }
    return 0;
}
