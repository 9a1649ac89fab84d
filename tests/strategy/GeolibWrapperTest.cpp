// The machining-strategy wrapper against the stand-in library, which this program finds as an
// installation finds the real one: every setting, the infeed, the settings file and the
// installed standard settings.
#include <gtest/gtest.h>
#include <velkapi/GeolibWrapper.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>

#include "ErrorLog.h"
#include "HostFixture.h"
#include "TestEnvironment.h"
#include "strategy/MachiningLibrary.h"

using namespace VelkApi;

namespace {

namespace fs = std::filesystem;

constexpr const char* kFileName = "2dhighspeedrough.bin";
constexpr char kSeparator = static_cast<char>(fs::path::preferred_separator);

// A wrapper with every setting apart from the stand-in's initial values.
void setEverySetting(GeolibWrapper& wrapper) {
    wrapper.setStartHeight(2.0);
    wrapper.setEndHeight(-12.5);
    wrapper.setDepthStep(0.1);
    wrapper.setNumberOfSlices4DepthStep(4);
    wrapper.setMaxStepoverDistance(4.0 / 3.0);
    wrapper.setStockRemain(0.3);
    wrapper.setRampAngle(2.0);
    wrapper.setRampLengthPercent(50.0);
    wrapper.setAdaptiveRoughingLinkClearanceHeight(5.0);
    wrapper.setAdaptiveRoughingLinkLengthThresholdFactor(1e-7);
    wrapper.setCurMachType(MachType::Mill5Axis);
}

void expectEverySetting(const GeolibWrapper& wrapper) {
    EXPECT_EQ(wrapper.getStartHeight(), 2.0);
    EXPECT_EQ(wrapper.getEndHeight(), -12.5);
    EXPECT_EQ(wrapper.getDepthStep(), 0.1);
    EXPECT_EQ(wrapper.getNumberOfSlices4DepthStep(), 4);
    EXPECT_EQ(wrapper.getMaxStepoverDistance(), 4.0 / 3.0);
    EXPECT_EQ(wrapper.getStockRemain(), 0.3);
    EXPECT_EQ(wrapper.getRampAngle(), 2.0);
    EXPECT_EQ(wrapper.getRampLengthPercent(), 50.0);
    EXPECT_EQ(wrapper.getAdaptiveRoughingLinkClearanceHeight(), 5.0);
    EXPECT_EQ(wrapper.getAdaptiveRoughingLinkLengthThresholdFactor(), 1e-7);
    EXPECT_EQ(wrapper.getCurMachType(), MachType::Mill5Axis);
}

class GeolibWrapperTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        folder = fs::path(testsupport::appDataFolder()) /
                 ::testing::UnitTest::GetInstance()->current_test_info()->name();
        fs::remove_all(folder);
        fs::create_directories(folder);
    }

    // A path in this test's scratch folder.
    std::string path(const std::string& name) const { return (folder / name).string(); }

    // The host's root and user-data folders, each ending in its separator.
    void useHostFolders() {
        rootFolder = path("root") + kSeparator;
        userFolder = path("user") + kSeparator;
        host().setGlobal("$_root_dir", rootFolder);
        host().setGlobal("$_user_data_dir", userFolder);
    }

    static void write(const std::string& file, const std::string& content) {
        fs::create_directories(fs::path(file).parent_path());
        std::ofstream(file, std::ios::binary) << content;
    }

    fs::path folder;
    std::string rootFolder;
    std::string userFolder;
};

// Path pieces joined with the platform's separator.
std::string joined(std::initializer_list<const char*> pieces) {
    fs::path joinedPath;
    for (const char* piece : pieces) {
        joinedPath /= piece;
    }
    return joinedPath.string();
}

}  // namespace

TEST_F(GeolibWrapperTest, TheStandInIsFoundAndNothingGoesToTheHostsStandIn) {
    GeolibWrapper wrapper;
    wrapper.setRampAngle(3.0);
    EXPECT_NE(strategy::machiningLibrary(), nullptr);
    EXPECT_TRUE(strategy::RampAngle.set.isCached());
    EXPECT_EQ(host().missingApiCalls(), 0);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(GeolibWrapperTest, EverySettingKeepsItsValue) {
    GeolibWrapper wrapper;
    setEverySetting(wrapper);
    expectEverySetting(wrapper);
}

TEST_F(GeolibWrapperTest, EachWrapperHasSettingsOfItsOwn) {
    GeolibWrapper first;
    GeolibWrapper second;
    first.setRampAngle(5.0);
    second.setRampAngle(7.0);
    EXPECT_EQ(first.getRampAngle(), 5.0);
    EXPECT_EQ(second.getRampAngle(), 7.0);
}

TEST_F(GeolibWrapperTest, AssignmentSharesTheSettingsObject) {
    GeolibWrapper first;
    {
        GeolibWrapper second;
        second.setStockRemain(0.5);
        first = second;
        first.setRampAngle(9.0);
        EXPECT_EQ(second.getRampAngle(), 9.0);
    }
    // The shared object outlives the wrapper it came from.
    EXPECT_EQ(first.getStockRemain(), 0.5);
    EXPECT_EQ(first.getRampAngle(), 9.0);
}

TEST_F(GeolibWrapperTest, AnyMachineTypeIsPassedThrough) {
    GeolibWrapper wrapper;
    EXPECT_EQ(wrapper.getCurMachType(), MachType::Undefined);
    wrapper.setCurMachType(static_cast<MachType>(77));
    EXPECT_EQ(static_cast<int>(wrapper.getCurMachType()), 77);
    wrapper.setCurMachType(static_cast<MachType>(-3));
    EXPECT_EQ(static_cast<int>(wrapper.getCurMachType()), -3);
}

TEST_F(GeolibWrapperTest, ANegativeInfeedIsAFixedDepthStep) {
    GeolibWrapper wrapper;
    wrapper.setNumberOfSlices4DepthStep(6);
    wrapper.setInfeed(-2.5);
    EXPECT_EQ(wrapper.getInfeed(), -2.5);
    EXPECT_EQ(wrapper.getDepthStep(), 2.5);
    EXPECT_EQ(wrapper.getNumberOfSlices4DepthStep(), 6);
}

TEST_F(GeolibWrapperTest, AnInfeedOfZeroOrMoreIsANumberOfSlices) {
    GeolibWrapper wrapper;
    wrapper.setDepthStep(1.5);
    wrapper.setInfeed(3.9);
    EXPECT_EQ(wrapper.getInfeed(), 3.0);
    EXPECT_EQ(wrapper.getNumberOfSlices4DepthStep(), 3);
    EXPECT_EQ(wrapper.getDepthStep(), 1.5);

    wrapper.setInfeed(0.0);
    EXPECT_EQ(wrapper.getNumberOfSlices4DepthStep(), 0);
    EXPECT_EQ(wrapper.getInfeed(), 0.0);
    EXPECT_FALSE(std::signbit(wrapper.getInfeed()));  // slices, not a depth step of 0

    wrapper.setInfeed(1e12);
    EXPECT_EQ(wrapper.getNumberOfSlices4DepthStep(), 2147483647);
}

// NaN is not below zero, so it is taken as a number of slices, and a number that has none is 0.
TEST_F(GeolibWrapperTest, AnInfeedThatIsNoNumberIsZeroSlices) {
    const testsupport::ErrorLogWatch errors;
    GeolibWrapper wrapper;
    wrapper.setDepthStep(1.5);
    wrapper.setNumberOfSlices4DepthStep(6);
    wrapper.setInfeed(std::nan(""));
    EXPECT_EQ(wrapper.getNumberOfSlices4DepthStep(), 0);
    EXPECT_EQ(wrapper.getInfeed(), 0.0);
    EXPECT_FALSE(std::signbit(wrapper.getInfeed()));
    EXPECT_EQ(wrapper.getDepthStep(), 1.5);
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(errors.texts(), std::vector<std::string>{});
}

TEST_F(GeolibWrapperTest, AFreshObjectCutsInOneSlice) {
    GeolibWrapper wrapper;
    EXPECT_EQ(wrapper.getInfeed(), 1.0);
}

TEST_F(GeolibWrapperTest, AnUnknownDepthStepModeHasNoInfeed) {
    const std::string file = path("mode7.bin");
    write(file, "MwApi settings 1\nDepthStepMode = 7\n");
    GeolibWrapper wrapper;
    ASSERT_TRUE(wrapper.OpenBin(file));
    EXPECT_EQ(wrapper.getInfeed(), 2147483647.0);
}

TEST_F(GeolibWrapperTest, SavedSettingsReadBackWithEveryValueKept) {
    const std::string file = path(kFileName);
    GeolibWrapper saved;
    setEverySetting(saved);
    ASSERT_TRUE(saved.SaveBin(file));
    EXPECT_EQ(testsupport::fileContent(file),
              "MwApi settings 1\n"
              "StartHeight = 2\n"
              "EndHeight = -12.5\n"
              "DepthStepMode = 1\n"
              "DepthStep = 0.1\n"
              "NumberOfSlices4DepthStep = 4\n"
              "MaxStepoverDistance = 1.3333333333333333\n"
              "StockRemain = 0.3\n"
              "RampAngle = 2\n"
              "RampLengthPercent = 50\n"
              "AdaptiveRoughingLinkClearanceHeight = 5\n"
              "AdaptiveRoughingLinkLengthThresholdFactor = 1e-07\n"
              "CurMachType = 3\n");

    GeolibWrapper read;
    ASSERT_TRUE(read.OpenBin(file));
    expectEverySetting(read);
    EXPECT_EQ(read.getInfeed(), 4.0);
    EXPECT_FALSE(fs::exists(file + ".new"));
}

TEST_F(GeolibWrapperTest, AFileTheLibraryCannotReadChangesNothing) {
    const struct {
        const char* content;
        const char* message;
    } files[] = {
        {"MwApi settings 1\nRampAngle = 4\nFeedRate = 100\n",
         "line 3 names no setting: 'FeedRate'"},
        {"# settings\n\nMwApi settings 1\nRampAngle = steep\n",
         "line 4 gives RampAngle the value 'steep', which is not a number"},
        {"MwApi settings 1\nNumberOfSlices4DepthStep = 2.5\n",
         "line 2 gives NumberOfSlices4DepthStep the value '2.5', which is not a whole number"},
        {"MwApi settings 1\nRampAngle = 1\nRampAngle = 2\n",
         "line 3 names RampAngle a second time"},
        {"MwApi settings 1\nRampAngle 4\n", "line 2 is not \"<Name> = <value>\""},
        {"Settings 2\nRampAngle = 4\n", "line 1 is not \"MwApi settings 1\""},
    };
    const std::string file = path("bad.bin");
    for (const auto& bad : files) {
        SCOPED_TRACE(bad.content);
        write(file, bad.content);
        GeolibWrapper wrapper;
        setEverySetting(wrapper);
        ::testing::internal::CaptureStderr();
        EXPECT_FALSE(wrapper.OpenBin(file));
        EXPECT_EQ(::testing::internal::GetCapturedStderr(),
                  "MwApi: cannot read settings from '" + file + "': " + bad.message + "\n");
        expectEverySetting(wrapper);
        EXPECT_EQ(testsupport::fileContent(file), bad.content);
    }
}

TEST_F(GeolibWrapperTest, AnEmptyOrMissingFileIsNoSettingsFile) {
    const std::string empty = path("empty.bin");
    write(empty, "# nothing\n");
    GeolibWrapper wrapper;
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(wrapper.OpenBin(empty));
    EXPECT_FALSE(wrapper.OpenBin(path("missing.bin")));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "MwApi: cannot read settings from '" + empty +
                  "': it is not a file of settings (no line \"MwApi settings 1\")\n"
                  "MwApi: cannot open '" +
                  path("missing.bin") + "' for reading\n");
    EXPECT_EQ(wrapper.getInfeed(), 1.0);
}

TEST_F(GeolibWrapperTest, AFailedSaveLeavesTheFileAsItWas) {
    const std::string file = path(kFileName);
    write(file, "MwApi settings 1\nRampAngle = 4\n");
    fs::create_directories(file + ".new");  // where the new content would be written first
    GeolibWrapper wrapper;
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(wrapper.SaveBin(file));
    EXPECT_FALSE(wrapper.SaveBin(path("no-such-folder/settings.bin")));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "MwApi: cannot write settings to '" + file +
                                                            "'\n"
                                                            "MwApi: cannot write settings to '" +
                                                            path("no-such-folder/settings.bin") +
                                                            "'\n");
    EXPECT_EQ(testsupport::fileContent(file), "MwApi settings 1\nRampAngle = 4\n");
}

TEST_F(GeolibWrapperTest, TheStandardSettingsComeFromTheRootFolder) {
    useHostFolders();
    write(rootFolder + joined({"support", "mill", "bin", kFileName}),
          "MwApi settings 1\nRampAngle = 1.5\n");
    write(userFolder + joined({"data", "mill", "settings", kFileName}),
          "MwApi settings 1\nRampAngle = 2.5\n");
    GeolibWrapper wrapper;
    EXPECT_TRUE(wrapper.OpenStandardBin());
    EXPECT_EQ(wrapper.getRampAngle(), 1.5);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(GeolibWrapperTest, WithoutTheRootFileTheUsersSettingsAreLoaded) {
    useHostFolders();
    write(userFolder + joined({"data", "mill", "settings", kFileName}),
          "MwApi settings 1\nRampAngle = 2.5\n");
    GeolibWrapper wrapper;
    EXPECT_TRUE(wrapper.OpenStandardBin());
    EXPECT_EQ(wrapper.getRampAngle(), 2.5);
}

TEST_F(GeolibWrapperTest, WithNeitherFolderKnownTheBareFileNameIsTried) {
    GeolibWrapper wrapper;
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(wrapper.OpenStandardBin());
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "MwApi: cannot open '" + joined({"data", "mill", "settings", kFileName}) +
                  "' for reading\n");
    EXPECT_EQ(boxes(), (std::vector<std::string>{
                           "VelkApi::MacroExport::GetGlobalStrVar Failed|$_root_dir",
                           "VelkApi::MacroExport::GetGlobalStrVar Failed|$_user_data_dir"}));
}
