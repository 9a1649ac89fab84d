#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "TestEnvironment.h"
#include "platform/Platform.h"

namespace fs = std::filesystem;
namespace platform = VelkApi::platform;

namespace {

// Restores an environment variable when the test ends.
class SavedVariable {
  public:
    explicit SavedVariable(const char* variable) : name(variable) {
        const char* value = std::getenv(variable);
        wasSet = value != nullptr;
        saved = value ? value : "";
    }
    ~SavedVariable() {
        if (wasSet) {
            testsupport::setEnvironmentVariable(name, saved);
        } else {
#ifdef _WIN32
            _putenv_s(name.c_str(), "");
#else
            unsetenv(name.c_str());
#endif
        }
    }

  private:
    std::string name;
    std::string saved;
    bool wasSet;
};

void unset(const char* name) {
#ifdef _WIN32
    _putenv_s(name, "");  // an empty value removes the variable
#else
    unsetenv(name);
#endif
}

}  // namespace

TEST(Platform, AppDataFolderIsAppDataWhenSet) {
    SavedVariable appData("APPDATA");
    testsupport::setEnvironmentVariable("APPDATA", "/some/where");
    EXPECT_EQ(platform::appDataFolder(), "/some/where");
}

// Each platform has its own separator and its own idea of where application data lies; the
// tests of the other platform say why they do not apply.

TEST(Platform, PathSeparatorIsBackslashOnWindows) {
#ifndef _WIN32
    GTEST_SKIP() << "POSIX paths separate with '/'";
#else
    EXPECT_EQ(platform::pathSeparator(), '\\');
#endif
}

TEST(Platform, PathSeparatorIsSlashOnPosix) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows paths separate with '\\'";
#else
    EXPECT_EQ(platform::pathSeparator(), '/');
#endif
}

TEST(Platform, AppDataFolderIsEmptyWithoutAppDataOnWindows) {
#ifndef _WIN32
    GTEST_SKIP() << "POSIX falls back to XDG_DATA_HOME and HOME";
#else
    SavedVariable appData("APPDATA");
    unset("APPDATA");
    EXPECT_EQ(platform::appDataFolder(), "");
#endif
}

TEST(Platform, AppDataFolderFallsBackToXdgThenHomeOnPosix) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows always has APPDATA; XDG_DATA_HOME and HOME mean nothing there";
#else
    SavedVariable appData("APPDATA"), xdg("XDG_DATA_HOME"), home("HOME");
    unset("APPDATA");
    testsupport::setEnvironmentVariable("XDG_DATA_HOME", "/xdg/data");
    EXPECT_EQ(platform::appDataFolder(), "/xdg/data");
    unset("XDG_DATA_HOME");
    testsupport::setEnvironmentVariable("HOME", "/home/user");
    EXPECT_EQ(platform::appDataFolder(), "/home/user/.local/share");
#endif
}

TEST(Platform, FileExistsAndReadable) {
    const std::string path = (fs::path(testsupport::appDataFolder()) / "probe.txt").string();
    EXPECT_FALSE(platform::fileExists(path));
    EXPECT_FALSE(platform::fileReadable(path));
    std::ofstream(path) << "x";
    EXPECT_TRUE(platform::fileExists(path));
    EXPECT_TRUE(platform::fileReadable(path));
    EXPECT_TRUE(platform::fileExists(testsupport::appDataFolder()));
    fs::remove(path);
}

TEST(Platform, LocalTimeIsNow) {
    const std::tm now = platform::localTime();
    EXPECT_GE(now.tm_year, 125);
    EXPECT_GE(now.tm_mday, 1);
}
