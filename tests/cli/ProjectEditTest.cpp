// How velk writes an operation, against the offline host with its faults: a section the host
// cuts short is named and nothing is saved.
#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>
#include <velkhost/OfflineHost.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "ProjectEdit.h"

namespace {

std::string fileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

class ProjectEditTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::copy_file(std::string(SOURCE_DIR) + "/examples/demo-project.json", copy,
                                   std::filesystem::copy_options::overwrite_existing);
        original = fileText(copy);
    }
    void TearDown() override {
        velkhost::OfflineHost::instance().reset();
        std::filesystem::remove(copy);
    }

    const std::string copy = "project-edit-test.json";
    std::string original;
};

TEST_F(ProjectEditTest, ASectionTheHostCutsShortIsNamedAndNothingIsSaved) {
    const velk::ProjectEdit edit(copy, {});
    const auto op = velk::readOperation(1, 6);
    // Two actions before the pocket instead of its two: four lines, of which the host takes two.
    auto& actions = *op->getActionSection(1);
    actions.clear();
    actions.addActionParameter(2, VelkApi::ActionType::Default, "M8");
    actions.addActionParameter(3, VelkApi::ActionType::Default, "M7");
    velkhost::OfflineHost::instance().failAddsAfter(1, 2);
    try {
        edit.write(*op);
        FAIL() << "the short write went unnoticed";
    } catch (const velk::CommandError& e) {
        EXPECT_STREQ(e.what(),
                     "store 1, operation 6 (POCKET): the host stored 2 of the 4 lines of "
                     "Additional_1; nothing saved");
    }
    EXPECT_EQ(fileText(copy), original);
}

TEST_F(ProjectEditTest, AMessageSetSavesThatLineAlone) {
    const velk::ProjectEdit edit(copy, {});
    const auto op = velk::readOperation(1, 6);
    op->getSection(VelkApi::SectionType::Message, 0)->setString("0", "Rough it");
    edit.write(*op);
    EXPECT_TRUE(edit.save());
    std::string expected = original;
    const std::string before = "\"Rough the bracket pocket\"";
    expected.replace(expected.find(before), before.size(), "\"Rough it\"");
    EXPECT_EQ(fileText(copy), expected);
}

}  // namespace
