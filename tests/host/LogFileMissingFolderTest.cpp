#include <gtest/gtest.h>
#include <velkapi/LogFile.h>

#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

fs::path appData() {
    return fs::temp_directory_path() / "velkapi-no-velk-folder";
}

void setAppData(const std::string& value) {
#ifdef _WIN32
    _putenv_s("APPDATA", value.c_str());
#else
    setenv("APPDATA", value.c_str(), 1);
#endif
}

}  // namespace

TEST(LogFile, MissingVelkFolderLosesTheTextQuietly) {
    fs::remove_all(appData());
    fs::create_directories(appData());
    setAppData(appData().string());
    VelkApi::LogFile::instance().error("nowhere to go");
    VelkApi::LogFile::instance().setLevel(1);
    VelkApi::LogFile::instance().trace("nowhere either", true);
    VelkApi::LogFile::instance().setLevel(2);
    EXPECT_FALSE(fs::exists(appData() / "Velk"));
    EXPECT_TRUE(fs::is_empty(appData()));
    fs::remove_all(appData());
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
