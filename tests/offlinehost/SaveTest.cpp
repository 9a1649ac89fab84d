// Saving a project replaces the file in one step: a save that fails leaves the old file byte for
// byte as it was and no new file beside it.
#include <filesystem>
#include <random>
#include <set>
#include <string>

#include "FileContent.h"
#include "OfflineHostTest.h"

namespace offlinehost {
namespace {

namespace fs = std::filesystem;
using velkhost::ProjectError;

const char* const kOldContent = "{\"stores\": {\"1\": [[\"OP 1 OLD\"]]}}\n";

class SaveTest : public OfflineHostTest {
  protected:
    void SetUp() override {
        OfflineHostTest::SetUp();
        folder =
            fs::temp_directory_path() / ("velkhost-save-" + std::to_string(std::random_device()()));
        fs::create_directories(folder);
        host.setStore(7, {{"OP 1 NEW", "a=1"}});
    }

    void TearDown() override {
        std::error_code ignored;
        for (const auto& entry : fs::recursive_directory_iterator(folder, ignored)) {
            fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, ignored);
        }
        fs::remove_all(folder, ignored);
        OfflineHostTest::TearDown();
    }

    fs::path writeFile(const std::string& name, const std::string& text) {
        const fs::path path = folder / name;
        writeFileContent(path, text);
        return path;
    }

    // The names in the test's folder, or in one inside it.
    std::set<std::string> names(const std::string& inside = "") const {
        std::set<std::string> found;
        for (const auto& entry : fs::directory_iterator(folder / inside)) {
            found.insert(entry.path().filename().string());
        }
        return found;
    }

    // The message of the ProjectError that saving to `path` throws.
    std::string saveError(const fs::path& path) {
        try {
            host.saveProject(path.string());
        } catch (const ProjectError& error) {
            return error.what();
        }
        return "(saved)";
    }

    fs::path folder;
};

TEST_F(SaveTest, AGoodSaveReplacesTheFileAndLeavesNothingBeside) {
    const fs::path path = writeFile("project.json", kOldContent);
    host.saveProject(path.string());
    EXPECT_EQ(fileContent(path), host.projectText());
    EXPECT_EQ(names(), std::set<std::string>{"project.json"});
}

TEST_F(SaveTest, ANewFileIsCreated) {
    const fs::path path = folder / "new.json";
    host.saveProject(path.string());
    EXPECT_EQ(fileContent(path), host.projectText());
    EXPECT_EQ(names(), std::set<std::string>{"new.json"});
}

TEST_F(SaveTest, SavingTwiceReplacesTheFirstSave) {
    const fs::path path = folder / "project.json";
    host.saveProject(path.string());
    host.setStore(7, {{"OP 1 AGAIN"}});
    host.saveProject(path.string());
    EXPECT_EQ(fileContent(path), host.projectText());
    EXPECT_EQ(names(), std::set<std::string>{"project.json"});
}

// Permission bits do not stop a program running as root, so the unwritable folder here is a
// regular file standing where the folder should be: no one can make a file inside it.
TEST_F(SaveTest, AFolderThatCannotHoldFilesIsReported) {
    const fs::path notAFolder = writeFile("plain-file", kOldContent);
    const fs::path path = notAFolder / "project.json";
    EXPECT_EQ(saveError(path),
              path.string() + ": cannot be written: no new file can be made in its folder");
    EXPECT_EQ(fileContent(notAFolder), kOldContent);
    EXPECT_EQ(names(), std::set<std::string>{"plain-file"});
}

// The new file is written in full here and only the last step, taking the old one's place,
// fails: the folder in the way keeps its content and the new file is removed.
TEST_F(SaveTest, AFailingReplacementKeepsWhatWasThereAndRemovesTheNewFile) {
    const fs::path path = folder / "project.json";
    fs::create_directory(path);
    writeFile("project.json/inside.txt", kOldContent);
    EXPECT_EQ(saveError(path),
              path.string() + ": cannot be written: the new file cannot take its place");
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_EQ(fileContent(path / "inside.txt"), kOldContent);
    EXPECT_EQ(names(), std::set<std::string>{"project.json"});
}

TEST_F(SaveTest, AReadOnlyFileIsNotReplaced) {
    const fs::path path = writeFile("project.json", kOldContent);
    fs::permissions(path, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    EXPECT_EQ(saveError(path), path.string() + ": cannot be written: the file is read-only");
    EXPECT_EQ(fileContent(path), kOldContent);
    EXPECT_EQ(names(), std::set<std::string>{"project.json"});
}

TEST_F(SaveTest, TheFileKeepsItsPermissions) {
    const fs::path path = writeFile("project.json", kOldContent);
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    const fs::perms before = fs::status(path).permissions();
    host.saveProject(path.string());
    EXPECT_EQ(fs::status(path).permissions(), before);
    EXPECT_EQ(fileContent(path), host.projectText());
}

#ifndef _WIN32
TEST_F(SaveTest, ALinkStaysALinkAndTheFileItPointsToIsReplaced) {
    fs::create_directory(folder / "real");
    const fs::path real = writeFile("real/project.json", kOldContent);
    const fs::path link = folder / "link.json";
    fs::create_symlink(real, link);
    host.saveProject(link.string());
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fileContent(real), host.projectText());
    EXPECT_EQ(names(), (std::set<std::string>{"link.json", "real"}));
    EXPECT_EQ(names("real"), std::set<std::string>{"project.json"});
}
#endif

}  // namespace
}  // namespace offlinehost
