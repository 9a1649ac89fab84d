// A host that has only VelkGetWnd and MessageBoxA, and no "VelkMissingAPI" either, without the
// machining-parameter library: a call of a missing function then calls nothing and answers as
// zero, an empty text or a null pointer.
#include <gtest/gtest.h>
#include <velkapi/GeolibWrapper.h>
#include <velkapi/MacroExport.h>
#include <velkapi/MacroVdm.h>
#include <velkapi/MillDrillOperation.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "BoxRecorder.h"
#include "host/HostExports.h"
#include "strategy/MachiningLibrary.h"

using stubhost::boxes;

class NoStandInTest : public ::testing::Test {
  protected:
    void SetUp() override { boxes.clear(); }
};

TEST_F(NoStandInTest, AGlobalReadAnswersZeroAndShowsItsFailure) {
    int value = 5;
    EXPECT_EQ(VelkApi::MacroExport::GetGlobalIntVar("i_current_channel", value), 0);
    EXPECT_EQ(value, 0);
    EXPECT_FALSE(VelkApi::host::ReadGlobalI.isCached());
    EXPECT_EQ(boxes, std::vector<std::string>{
                         "VelkApi::MacroExport::GetGlobalIntVar Failed|i_current_channel"});
}

TEST_F(NoStandInTest, TheEnvironmentReadsAsEmpty) {
    EXPECT_EQ(VelkApi::host::environment("TURNDRIVENTOOLS"), "");
    EXPECT_TRUE(boxes.empty());
}

// The operation needs the machine's turning-driven tools setting as a number.
TEST_F(NoStandInTest, AnOperationCannotBeMadeWithoutTheEnvironment) {
    try {
        VelkApi::MillDrillOperation op(1, 0);
        FAIL() << "constructed without the environment";
    } catch (const std::invalid_argument& e) {
        EXPECT_STREQ(e.what(), "invalid stoi argument");
    }
    EXPECT_TRUE(boxes.empty());
}

TEST_F(NoStandInTest, AStoreDoesNotExist) {
    VelkApi::MacroVdm vdm(3);
    EXPECT_FALSE(vdm.Create());
    EXPECT_FALSE(vdm.Open());
    EXPECT_EQ(boxes, std::vector<std::string>{"VelkApi::MacroVdm|3: Open: vdm doesn't exist"});
}

TEST_F(NoStandInTest, TheRoughingSettingsAnswerZero) {
    VelkApi::GeolibWrapper wrapper;
    wrapper.setDepthStep(2.5);
    EXPECT_EQ(wrapper.getDepthStep(), 0.0);
    EXPECT_EQ(wrapper.getNumberOfSlices4DepthStep(), 0);
    EXPECT_EQ(VelkApi::strategy::machiningLibrary(), nullptr);
    EXPECT_TRUE(boxes.empty());
}
