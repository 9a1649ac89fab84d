#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <io.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>

#include "platform/Platform.h"

namespace VelkApi::platform {

namespace {

HMODULE hostModule() {
    static const HMODULE module = GetModuleHandleA(nullptr);
    return module;
}

// The host module is taken when the library is loaded, not at its first use.
[[maybe_unused]] const HMODULE hostModuleAtLoad = hostModule();

// GetProcAddress hands back a generic function pointer; the callers cast the address to the
// export's real type, so it travels as a plain address in between.
void* exportAddress(HMODULE module, const char* name) {
    if (!module) {
        return nullptr;
    }
    const FARPROC address = GetProcAddress(module, name);
    return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(address));
}

// The host's own MessageBoxA when it exports one; else the system's, from user32, which is
// loaded only when a box is first shown without the host's help.
MessageBoxFn messageBoxFunction() {
    if (void* hostBox = exportAddress(hostModule(), "MessageBoxA")) {
        return reinterpret_cast<MessageBoxFn>(hostBox);
    }
    return reinterpret_cast<MessageBoxFn>(exportAddress(LoadLibraryA("user32.dll"), "MessageBoxA"));
}

}  // namespace

void* findHostExport(const char* name) {
    return exportAddress(hostModule(), name);
}

int showMessageBox(void* owner, const std::string& text, const std::string& caption,
                   unsigned style) {
    static const MessageBoxFn box = messageBoxFunction();
    return box ? box(owner, text.c_str(), caption.c_str(), style) : 0;
}

void* loadMachiningLibrary() {
    return LoadLibraryA("MwApi.dll");
}

void* findLibraryExport(void* library, const char* name) {
    return exportAddress(static_cast<HMODULE>(library), name);
}

bool fileExists(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool fileReadable(const std::string& path) {
    constexpr int kReadPermission = 4;
    return _access(path.c_str(), kReadPermission) == 0;
}

// A path that names a drive ("C:...") is complete; anything else, a leading backslash included,
// lies in `folder`.
std::string resolveInFolder(const std::string& path, const std::string& folder) {
    const bool namesDrive = path.size() >= 2 && path[1] == ':';
    return namesDrive ? path : folder + pathSeparator() + path;
}

std::string iniValue(const std::string& file, const std::string& section, const std::string& key,
                     const std::string& fallback) {
    char value[1024];
    const DWORD length = GetPrivateProfileStringA(section.c_str(), key.c_str(), fallback.c_str(),
                                                  value, sizeof value, file.c_str());
    return std::string(value, length);
}

std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string appDataFolder() {
    return environmentVariable("APPDATA");
}

char pathSeparator() {
    return '\\';
}

std::tm localTime() {
    const __time64_t now = _time64(nullptr);
    std::tm local{};
    _localtime64_s(&local, &now);
    return local;
}

}  // namespace VelkApi::platform
