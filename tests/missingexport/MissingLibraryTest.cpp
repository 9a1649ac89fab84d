// A host program without the machining-parameter library: every operation of the wrapper ends
// in the host's "VelkMissingAPI", called with the library function's own arguments, and the
// library is looked for again at each call.
#include <gtest/gtest.h>
#include <velkapi/GeolibWrapper.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "BoxRecorder.h"
#include "strategy/MachiningLibrary.h"

namespace {

// What the stand-in was called with: the handle (or a global reader's name), and for the
// settings file functions their int and path.
struct MissingCall {
    const void* first;
    int second;
    std::string name;
    std::string path;
};
std::vector<MissingCall> missingCalls;
using stubhost::boxes;
// Set where the only calls are those of the settings file functions (the handle, 0, a path) and
// of the global readers (a name first); the other library functions have no third argument.
bool readNamesAndPaths = false;
// The stand-in's result, which the wrapper takes as the missing function's: as a handle, the
// settings object the calls after it are made with.
constexpr int kStandInResult = 0x1234;
const void* const kHandle = reinterpret_cast<const void*>(std::intptr_t{kStandInResult});

}  // namespace

STUB_EXPORT int VelkMissingAPI(const void* first, int second, const char* third) {
    missingCalls.push_back({first, second, "", ""});
    if (readNamesAndPaths && first == kHandle) {
        missingCalls.back().path = third;
    } else if (readNamesAndPaths) {
        missingCalls.back().name = static_cast<const char*>(first);
    }
    return kStandInResult;
}

namespace {

using VelkApi::GeolibWrapper;
using VelkApi::MachType;

struct Operation {
    const char* name;
    std::function<void(GeolibWrapper&)> call;
    std::size_t calls;  // library functions it calls
};

class MissingLibraryTest : public ::testing::Test {
  protected:
    void SetUp() override {
        missingCalls.clear();
        boxes.clear();
        readNamesAndPaths = false;
    }
};

}  // namespace

TEST_F(MissingLibraryTest, CreatingAndDeletingTheSettingsObjectGoToTheHost) {
    {
        GeolibWrapper wrapper;
        ASSERT_EQ(missingCalls.size(), 1u);
    }
    ASSERT_EQ(missingCalls.size(), 2u);
    EXPECT_EQ(missingCalls[1].first, kHandle);  // MwGeoLibDelete(handle)
    EXPECT_EQ(VelkApi::strategy::machiningLibrary(), nullptr);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(MissingLibraryTest, EveryOperationCallsTheHostsStandInWithTheHandle) {
    const Operation operations[] = {
        {"setAdaptiveRoughingLinkClearanceHeight",
         [](GeolibWrapper& w) { w.setAdaptiveRoughingLinkClearanceHeight(1.0); }, 1},
        {"getAdaptiveRoughingLinkClearanceHeight",
         [](GeolibWrapper& w) { w.getAdaptiveRoughingLinkClearanceHeight(); }, 1},
        {"setAdaptiveRoughingLinkLengthThresholdFactor",
         [](GeolibWrapper& w) { w.setAdaptiveRoughingLinkLengthThresholdFactor(1.0); }, 1},
        {"getAdaptiveRoughingLinkLengthThresholdFactor",
         [](GeolibWrapper& w) { w.getAdaptiveRoughingLinkLengthThresholdFactor(); }, 1},
        {"setRampAngle", [](GeolibWrapper& w) { w.setRampAngle(1.0); }, 1},
        {"getRampAngle", [](GeolibWrapper& w) { w.getRampAngle(); }, 1},
        {"setRampLengthPercent", [](GeolibWrapper& w) { w.setRampLengthPercent(1.0); }, 1},
        {"getRampLengthPercent", [](GeolibWrapper& w) { w.getRampLengthPercent(); }, 1},
        {"setDepthStep", [](GeolibWrapper& w) { w.setDepthStep(1.0); }, 1},
        {"getDepthStep", [](GeolibWrapper& w) { w.getDepthStep(); }, 1},
        {"setNumberOfSlices4DepthStep", [](GeolibWrapper& w) { w.setNumberOfSlices4DepthStep(1); },
         1},
        {"getNumberOfSlices4DepthStep",
         [](GeolibWrapper& w) { EXPECT_EQ(w.getNumberOfSlices4DepthStep(), kStandInResult); }, 1},
        {"setStartHeight", [](GeolibWrapper& w) { w.setStartHeight(1.0); }, 1},
        {"getStartHeight", [](GeolibWrapper& w) { w.getStartHeight(); }, 1},
        {"setEndHeight", [](GeolibWrapper& w) { w.setEndHeight(1.0); }, 1},
        {"getEndHeight", [](GeolibWrapper& w) { w.getEndHeight(); }, 1},
        {"setMaxStepoverDistance", [](GeolibWrapper& w) { w.setMaxStepoverDistance(1.0); }, 1},
        {"getMaxStepoverDistance", [](GeolibWrapper& w) { w.getMaxStepoverDistance(); }, 1},
        {"setStockRemain", [](GeolibWrapper& w) { w.setStockRemain(1.0); }, 1},
        {"getStockRemain", [](GeolibWrapper& w) { w.getStockRemain(); }, 1},
        {"setCurMachType", [](GeolibWrapper& w) { w.setCurMachType(MachType::Mill3Axis); }, 1},
        {"getCurMachType",
         [](GeolibWrapper& w) { EXPECT_EQ(static_cast<int>(w.getCurMachType()), kStandInResult); },
         1},
        {"setInfeed (depth step)", [](GeolibWrapper& w) { w.setInfeed(-1.0); }, 2},
        {"setInfeed (slices)", [](GeolibWrapper& w) { w.setInfeed(2.0); }, 2},
        // The depth-step mode the stand-in gives is neither of the two.
        {"getInfeed", [](GeolibWrapper& w) { EXPECT_EQ(w.getInfeed(), 2147483647.0); }, 1},
        {"OpenBin", [](GeolibWrapper& w) { EXPECT_TRUE(w.OpenBin("in.bin")); }, 1},
        {"SaveBin", [](GeolibWrapper& w) { EXPECT_TRUE(w.SaveBin("out.bin")); }, 1},
    };
    GeolibWrapper wrapper;
    for (const Operation& operation : operations) {
        SCOPED_TRACE(operation.name);
        missingCalls.clear();
        operation.call(wrapper);
        ASSERT_EQ(missingCalls.size(), operation.calls);
        for (const MissingCall& call : missingCalls) {
            EXPECT_EQ(call.first, kHandle);
        }
    }
    EXPECT_TRUE(boxes.empty());
}

TEST_F(MissingLibraryTest, TheSettingsFileFunctionsGetTheirPath) {
    GeolibWrapper wrapper;
    missingCalls.clear();
    readNamesAndPaths = true;
    wrapper.OpenBin("in.bin");
    wrapper.SaveBin("out.bin");
    ASSERT_EQ(missingCalls.size(), 2u);
    EXPECT_EQ(missingCalls[0].second, 0);
    EXPECT_EQ(missingCalls[0].path, "in.bin");
    EXPECT_EQ(missingCalls[1].path, "out.bin");
    readNamesAndPaths = false;
}

TEST_F(MissingLibraryTest, TheStandardSettingsAskTheHostForBothFolders) {
    GeolibWrapper wrapper;
    missingCalls.clear();
    readNamesAndPaths = true;
    wrapper.OpenStandardBin();
    // The two folder globals (the host lacks their reader too), then MwGeoLibDeserialize.
    ASSERT_EQ(missingCalls.size(), 3u);
    EXPECT_EQ(missingCalls[0].name, "$_root_dir");
    EXPECT_EQ(missingCalls[1].name, "$_user_data_dir");
    EXPECT_EQ(missingCalls[2].first, kHandle);
    const std::string sep(1, VelkApi::platform::pathSeparator());
    EXPECT_EQ(missingCalls[2].path,
              "data" + sep + "mill" + sep + "settings" + sep + "2dhighspeedrough.bin");
    EXPECT_EQ(boxes, (std::vector<std::string>{
                         "VelkApi::MacroExport::GetGlobalStrVar Failed|$_root_dir",
                         "VelkApi::MacroExport::GetGlobalStrVar Failed|$_user_data_dir"}));
    readNamesAndPaths = false;
}

TEST_F(MissingLibraryTest, TheLibraryIsLookedForAgainAndNothingIsCached) {
    GeolibWrapper wrapper;
    wrapper.setRampAngle(1.0);
    wrapper.setRampAngle(2.0);
    EXPECT_EQ(VelkApi::strategy::machiningLibrary(), nullptr);
    EXPECT_FALSE(VelkApi::strategy::RampAngle.set.isCached());
    EXPECT_FALSE(VelkApi::strategy::GeoLibCreate.isCached());
}
