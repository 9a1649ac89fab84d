// The one place the library touches the operating system. Each OS has one implementation file
// behind this header (PlatformPosix.cpp, PlatformWindows.cpp); nothing else includes <dlfcn.h>
// or <windows.h>.
#pragma once

#include <ctime>
#include <string>

namespace VelkApi::platform {

// Message box styles, with the values the Windows API gives them.
constexpr unsigned kMbOk = 0x0;
constexpr unsigned kMbIconExclamation = 0x30;

// An export of the host executable (the module that loaded the library), or null. The host
// module is taken once, when the library is loaded.
void* findHostExport(const char* name);

// The type of "MessageBoxA", the host's export as well as the system's.
using MessageBoxFn = int (*)(void* owner, const char* text, const char* caption, unsigned style);

// Shows a box through the host's own "MessageBoxA" export when it has one; otherwise through
// the system (Windows) or as one line "caption: text" on stderr (POSIX).
int showMessageBox(void* owner, const std::string& text, const std::string& caption,
                   unsigned style);

// The machining-parameter library and its exports; null when it cannot be loaded or lacks one.
void* loadMachiningLibrary();
void* findLibraryExport(void* library, const char* name);

bool fileExists(const std::string& path);
bool fileReadable(const std::string& path);

// `path` when it is already complete (Windows: it names a drive; POSIX: it starts with '/'),
// else `path` inside `folder`: folder, separator, path.
std::string resolveInFolder(const std::string& path, const std::string& folder);

// A value of an INI file: [section] and key matched without case, the value trimmed of blanks,
// lines starting with ';' are comments, the first match wins; `fallback` when the file, the
// section or the key is missing.
std::string iniValue(const std::string& file, const std::string& section, const std::string& key,
                     const std::string& fallback);

// The process's environment variable `name`; "" when it has none.
std::string environmentVariable(const char* name);

// The user's application-data folder, without a trailing separator.
std::string appDataFolder();

char pathSeparator();

std::tm localTime();

}  // namespace VelkApi::platform
