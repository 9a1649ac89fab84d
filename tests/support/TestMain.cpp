#include <gtest/gtest.h>

#include <cstdlib>
#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif
#include <filesystem>
#include <string>

#include "TestEnvironment.h"

namespace testsupport {

namespace {

std::string& folder() {
    static std::string path;
    return path;
}

}  // namespace

std::string appDataFolder() {
    return folder();
}

void setEnvironmentVariable(const std::string& name, const std::string& value) {
#ifdef _WIN32
    _putenv_s(name.c_str(), value.c_str());
#else
    setenv(name.c_str(), value.c_str(), 1);
#endif
}

}  // namespace testsupport

namespace {

long processId() {
#ifdef _WIN32
    return _getpid();
#else
    return getpid();
#endif
}

}  // namespace

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    const fs::path appData =
        fs::temp_directory_path() / ("velkapi-tests-" + std::to_string(processId()));
    fs::create_directories(appData / "Velk");
    testsupport::folder() = appData.string();
    testsupport::setEnvironmentVariable("APPDATA", appData.string());
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    std::error_code ignored;
    fs::remove_all(appData, ignored);
    return result;
}
