// A host that has only VelkGetWnd, MessageBoxA and VelkMissingAPI: every other host function
// the library calls is missing, so the host's stand-in answers in its place.
#include <gtest/gtest.h>
#include <velkapi/MacroExport.h>
#include <velkapi/MacroVdm.h>

#include <cstdint>
#include <string>
#include <vector>

#include "BoxRecorder.h"
#include "host/HostExports.h"

namespace {

// The first argument is kept as it came, and read as a name only where a test says the missing
// function takes one.
struct MissingCall {
    const char* first;
    int* status;
    std::string name;
};
bool firstArgumentIsName = true;
std::vector<MissingCall> missingCalls;
using stubhost::boxes;

}  // namespace

// The library calls the stand-in through the missing function's own type, with that function's
// arguments; this one looks at the first two as the global readers pass them.
STUB_EXPORT int VelkMissingAPI(const char* name, int* status) {
    missingCalls.push_back({name, status, firstArgumentIsName && name ? name : ""});
    return 0;
}

class MissingExportTest : public ::testing::Test {
  protected:
    void SetUp() override {
        missingCalls.clear();
        boxes.clear();
        firstArgumentIsName = true;
    }
};

TEST_F(MissingExportTest, MissingReaderIsLookedUpAgainOnEveryCall) {
    int value = 5;
    EXPECT_EQ(VelkApi::MacroExport::GetGlobalIntVar("i_current_channel", value), 0);
    EXPECT_FALSE(VelkApi::host::ReadGlobalI.isCached());
    EXPECT_EQ(VelkApi::MacroExport::GetGlobalIntVar("i_other", value), 0);
    EXPECT_FALSE(VelkApi::host::ReadGlobalI.isCached());
    ASSERT_EQ(missingCalls.size(), 2u);
    EXPECT_EQ(missingCalls[0].name, "i_current_channel");
    EXPECT_NE(missingCalls[0].status, nullptr);
    EXPECT_EQ(missingCalls[1].name, "i_other");
    EXPECT_EQ(value, 0);  // the stand-in's result
    EXPECT_EQ(boxes, (std::vector<std::string>{
                         "VelkApi::MacroExport::GetGlobalIntVar Failed|i_current_channel",
                         "VelkApi::MacroExport::GetGlobalIntVar Failed|i_other"}));
}

TEST_F(MissingExportTest, PresentExportIsCached) {
    VelkApi::host::showError("c", "t");
    EXPECT_TRUE(VelkApi::host::GetWnd.isCached());
    EXPECT_TRUE(missingCalls.empty());
}

TEST_F(MissingExportTest, MissingEnvironmentReadsAsEmpty) {
    EXPECT_EQ(VelkApi::host::environment("TURNDRIVENTOOLS"), "");
    ASSERT_EQ(missingCalls.size(), 1u);
    EXPECT_EQ(missingCalls[0].name, "TURNDRIVENTOOLS");
}

TEST_F(MissingExportTest, StoreThatTheHostCannotNameDoesNotOpen) {
    firstArgumentIsName = false;
    VelkApi::MacroVdm vdm(3);
    EXPECT_FALSE(vdm.Create());
    ASSERT_EQ(missingCalls.size(), 1u);  // in place of VelkMacroVdmExists(3)
    EXPECT_EQ(static_cast<int>(reinterpret_cast<std::intptr_t>(missingCalls[0].first)), 3);
    EXPECT_TRUE(boxes.empty());
}
