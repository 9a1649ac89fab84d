// A session run against the example project with capture on, then against the captured file,
// reads the same values, shows the same boxes, logs the same records and leaves the stores with
// the same lines.
#include <gtest/gtest.h>
#include <velkapi/Capture.h>

#include <algorithm>
#include <string>

#include "HostFixture.h"
#include "ScriptedSession.h"

namespace capturetest {
namespace {

class CaptureReplayTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        capturePath = scratchFolder() + "/session.json";
    }

    static void loadExampleProject() {
        host().loadProject(std::string(SOURCE_DIR) + "/examples/demo-project.json");
        // The machine definition is named relative to the host's data folder.
        host().setEnvironment("-d", SOURCE_DIR);
    }

    std::string capturePath;
};

bool holds(const Transcript& transcript, const std::string& line) {
    return std::find(transcript.begin(), transcript.end(), line) != transcript.end();
}

TEST_F(CaptureReplayTest, TheCapturedSessionReplaysOfflineExactly) {
    loadExampleProject();
    VelkApi::Capture::start(capturePath);
    const Transcript live = runScriptedSession();
    ASSERT_TRUE(VelkApi::Capture::stop());

    host().reset();
    host().loadProject(capturePath);
    const Transcript replayed = runScriptedSession();

    EXPECT_EQ(replayed, live);
    // The session read something of every kind: a session that reads nothing cannot pass.
    for (const char* line : {
             "i_current_channel 1 0",
             "w_setup_cle 1 2.000000",
             "$_project 1 bracket",
             "i_not_there 0",
             "box VelkApi::MacroExport::GetGlobalIntVar Failed|i_not_there",
             "actions1.2 = M8",
             "geometry.0001(island) = ISLAND type 20 #103 instance 0 section 1",
             "geometry.0000(x10 y10 z0) = X10 Y10 Z0 type 1 #201 instance -1 section 0",
             "geometry.0000(g1) = G1 type 29 #301 instance -1 section 0",
             "expert: 1 0 0 0 1 0.2 -30 0 5 0 0 0 0 -999999 -999999 -999999 -999999 0 -999999 "
             "-999999 -999999 -999999 1 0 0 0 33554434 2147483647 0 0 2 10 2.14748e+09 "
             "2.14748e+09 0 1.5 50 100 0 50 50 0 0 ",
             "expert: bracket ",
             "tools 7",
             "tool1.$_t_tooldesc = Face mill 50 mm, 5 inserts",
             "tool1.w_t_diam = 50.000000",
             "set w_setup_ret 1",
             "w_setup_ret now 12.500000",
         }) {
        EXPECT_TRUE(holds(live, line)) << line;
    }
    EXPECT_GT(live.size(), 500u);
}

TEST_F(CaptureReplayTest, TheCaptureHoldsTheStoresAsTheyWereBeforeTheSessionWroteThem) {
    loadExampleProject();
    const velkhost::Records before = host().records(1);
    VelkApi::Capture::start(capturePath);
    runScriptedSession();
    ASSERT_TRUE(VelkApi::Capture::stop());
    ASSERT_NE(host().records(1), before);

    host().reset();
    host().loadProject(capturePath);
    EXPECT_EQ(host().records(1), before);
    EXPECT_EQ(host().global("w_setup_ret"), std::optional<velkhost::GlobalValue>(10.0));
}

}  // namespace
}  // namespace capturetest
