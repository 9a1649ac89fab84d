#include <dlfcn.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "platform/IniReader.h"
#include "platform/Platform.h"

namespace VelkApi::platform {

namespace {

void* hostModule() {
    static void* const module = dlopen(nullptr, RTLD_NOW);
    return module;
}

// The host module is taken when the library is loaded, not at its first use.
[[maybe_unused]] void* const hostModuleAtLoad = hostModule();

}  // namespace

std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

void* findHostExport(const char* name) {
    void* module = hostModule();
    return module ? dlsym(module, name) : nullptr;
}

int showMessageBox(void* owner, const std::string& text, const std::string& caption,
                   unsigned style) {
    static const auto hostBox = reinterpret_cast<MessageBoxFn>(findHostExport("MessageBoxA"));
    if (hostBox) {
        return hostBox(owner, text.c_str(), caption.c_str(), style);
    }
    std::fprintf(stderr, "%s: %s\n", caption.c_str(), text.c_str());
    return 1;
}

void* loadMachiningLibrary() {
    return dlopen("libMwApi.so", RTLD_NOW);
}

void* findLibraryExport(void* library, const char* name) {
    return library ? dlsym(library, name) : nullptr;
}

bool fileExists(const std::string& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0;
}

bool fileReadable(const std::string& path) {
    return access(path.c_str(), R_OK) == 0;
}

std::string resolveInFolder(const std::string& path, const std::string& folder) {
    if (!path.empty() && path.front() == '/') {
        return path;
    }
    return folder + pathSeparator() + path;
}

std::string iniValue(const std::string& file, const std::string& section, const std::string& key,
                     const std::string& fallback) {
    return IniReader::lookup(file, section, key, fallback);
}

std::string appDataFolder() {
    if (std::string appData = environmentVariable("APPDATA"); !appData.empty()) {
        return appData;
    }
    if (std::string xdg = environmentVariable("XDG_DATA_HOME"); !xdg.empty()) {
        return xdg;
    }
    return environmentVariable("HOME") + "/.local/share";
}

char pathSeparator() {
    return '/';
}

std::tm localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

}  // namespace VelkApi::platform
