// What a capture file holds, and how capture stays out of the host's way.
#include <gtest/gtest.h>
#include <velkapi/Capture.h>
#include <velkapi/MacroExport.h>
#include <velkapi/MacroVdm.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "ErrorLog.h"
#include "HostFixture.h"
#include "ScriptedSession.h"
#include "host/HostExports.h"
#include "host/PointSearch.h"

namespace capturetest {
namespace {

using VelkApi::Capture;
using VelkApi::MacroExport;
namespace host = VelkApi::host;

class CaptureFileTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        folder = scratchFolder();
        path = folder + "/capture.json";
    }
    void TearDown() override {
        Capture::stop();
        HostTest::TearDown();
    }

    // The capture file with its time of writing replaced by "<taken>".
    std::string capturedText() const {
        const std::string text = testsupport::fileContent(path);
        return std::regex_replace(text, std::regex(R"("taken": "[0-9T:Z-]+")"),
                                  "\"taken\": \"<taken>\"");
    }

    static std::vector<std::string> callNames() {
        std::vector<std::string> names;
        for (const velkhost::HostCall& call : host().recordedCalls()) {
            names.push_back(call.exportName);
        }
        return names;
    }

    std::string folder;
    std::string path;
};

// Reads a line of each record of store 3, a global of each kind and an environment value,
// asks about the drawing, and writes a line and a global.
void smallSession() {
    int count = 0;
    double depth = 0.0;
    std::string name;
    MacroExport::GetGlobalIntVar("n_count", count);
    MacroExport::GetGlobalDoubleVar("w_depth", depth);
    MacroExport::GetGlobalStrVar("s_name", name);
    int slice[2] = {};
    int status = 0;
    host::ReadGlobalArrayI("n_list", 2, 2, slice, &status);
    host::environment("VELK_DATA");
    VelkApi::MacroVdm store(3);
    std::string line;
    store.Create();
    store.SingleGet(line);
    store.SingleAdd("added");
    store.Close();
    MacroExport::SetGlobalDoubleVar("w_new", 4.5);
    const int figure = host::GetFigure("OUTER");
    const int object = host::GetFigureObject(figure);
    host::GetObjectType(object);
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    host::ObjectStart(object, &x, &y, &z);
    host::findPointObject(20.0, 30.0, 0.0);
}

void setUpSmallProject(velkhost::OfflineHost& offline) {
    offline.setGlobal("n_count", 3);
    offline.setGlobal("w_depth", 2.5);
    offline.setGlobal("s_name", std::string("Pocket \"A\"\t\xB0"));
    offline.setGlobal("n_list", std::vector<int>{10, 20, 30, 40});
    offline.setGlobal("w_new", 0.0);
    offline.setGlobal("w_unread", 7.0);
    offline.setEnvironment("VELK_DATA", "C:\\Data");
    offline.setStore(3, {{"OP 1", "a=1"}, {"OP 2"}});
    offline.setStore(4, {{"never opened"}});
    offline.setFigure({1, "OUTER"});
    offline.setCadObject({10, velkhost::kFigureObject, 1, 0, {1.0, 2.0, 0.0}, 1, false});
    offline.setCadObject({15, 7, 0, 0, {5.0, 5.0, 0.0}, 0, true});
    offline.setCadObject({20, velkhost::kPointObject, 0, 0, {20.0, 30.0, 1e-5}, 1, false});
    offline.setCadObject({30, velkhost::kPointObject, 0, 0, {1e20, 0.0, 0.0}, 1, false});
}

TEST_F(CaptureFileTest, ACaptureHoldsWhatTheSessionReadAsItWasAtTheStart) {
    setUpSmallProject(host());
    Capture::start(path);
    EXPECT_TRUE(Capture::running());
    smallSession();
    ASSERT_TRUE(Capture::stop());
    EXPECT_FALSE(Capture::running());
    EXPECT_EQ(capturedText(), R"({
  "environment": {
    "VELK_DATA": "C:\\Data"
  },
  "globals": {
    "n_count": 3,
    "n_list": [
      0,
      20,
      30
    ],
    "s_name": "Pocket \"A\"\t°",
    "w_depth": 2.5,
    "w_new": 4.5
  },
  "stores": {
    "3": [
      [
        "OP 1",
        "a=1"
      ],
      [
        "OP 2"
      ]
    ]
  },
  "cad": {
    "figures": [
      {
        "number": 1,
        "name": "OUTER"
      }
    ],
    "objects": [
      {
        "number": 10,
        "type": 20,
        "name": 1,
        "attribute": 0,
        "start": [
          1.0,
          2.0,
          0.0
        ],
        "flags": 1,
        "deleted": false
      },
      {
        "number": 20,
        "type": 0,
        "name": 0,
        "attribute": 0,
        "start": [
          20.0,
          30.0,
          1e-05
        ],
        "flags": 1,
        "deleted": false
      }
    ]
  },
  "capture": {
    "taken": "<taken>",
    "library": "0.2.0",
    "missingExports": []
  }
}
)");
}

TEST_F(CaptureFileTest, TheOfflineHostSavesACaptureBackUnchanged) {
    setUpSmallProject(host());
    host().setCadObject({30, velkhost::kPointObject, 0, 0, {1e20, -0.001, 123456.789}, 1, false});
    host().setCadObject({20, velkhost::kPointObject, 0, 0, {99.0, 0.0, 0.0}, 1, false});
    Capture::start(path);
    smallSession();
    ASSERT_TRUE(Capture::stop());
    host().loadProject(path);
    EXPECT_EQ(host().projectText(), testsupport::fileContent(path));
    EXPECT_NE(host().projectText().find("1e+20"), std::string::npos);
}

TEST_F(CaptureFileTest, ACaptureIsWrittenOnlyWhileOneRuns) {
    setUpSmallProject(host());
    EXPECT_FALSE(Capture::running());
    smallSession();
    EXPECT_FALSE(Capture::stop());
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(CaptureFileTest, StartingAgainWritesTheRunningCaptureFirst) {
    setUpSmallProject(host());
    const std::string second = folder + "/second.json";
    Capture::start(path);
    int count = 0;
    MacroExport::GetGlobalIntVar("n_count", count);
    Capture::start(second);
    double depth = 0.0;
    MacroExport::GetGlobalDoubleVar("w_depth", depth);
    ASSERT_TRUE(Capture::stop());
    host().loadProject(path);
    EXPECT_EQ(host().global("n_count"), std::optional<velkhost::GlobalValue>(3));
    EXPECT_FALSE(host().global("w_depth"));
    host().loadProject(second);
    EXPECT_EQ(host().global("w_depth"), std::optional<velkhost::GlobalValue>(2.5));
    EXPECT_FALSE(host().global("n_count"));
}

// A global the session writes before it ever reads it is captured with what the session wrote,
// for every kind: that is all the session saw of it. Array elements before the first one the
// session reached are 0.
TEST_F(CaptureFileTest, GlobalsWrittenBeforeTheyAreReadAreCapturedAsWritten) {
    using velkhost::GlobalValue;
    host().setGlobal("n_count", 3);
    host().setGlobal("s_name", std::string("old"));
    host().setGlobal("n_list", std::vector<int>{1, 2, 3});
    host().setGlobal("w_list", std::vector<double>{1.5, 2.5, 3.5});
    host().setGlobal("w_read", std::vector<double>{0.25, 0.5, 0.75});
    Capture::start(path);
    int status = -1;
    host::WriteGlobalI("n_count", 8, &status);
    host::WriteGlobalStr("s_name", "new", &status);
    const int ints[] = {20, 30};
    host::WriteGlobalArrayI("n_list", 2, 2, ints, &status);
    const double doubles[] = {9.5};
    host::WriteGlobalArrayW("w_list", 1, 1, doubles, &status);
    double slice[2] = {};
    host::ReadGlobalArrayW("w_read", 2, 2, slice, &status);
    ASSERT_TRUE(Capture::stop());

    host().loadProject(path);
    EXPECT_EQ(host().global("n_count"), std::optional<GlobalValue>(8));
    EXPECT_EQ(host().global("s_name"), std::optional<GlobalValue>(std::string("new")));
    EXPECT_EQ(host().global("n_list"), std::optional<GlobalValue>(std::vector<int>{0, 20, 30}));
    EXPECT_EQ(host().global("w_list"), std::optional<GlobalValue>(std::vector<double>{9.5}));
    EXPECT_EQ(host().global("w_read"),
              std::optional<GlobalValue>(std::vector<double>{0.0, 0.5, 0.75}));
}

TEST_F(CaptureFileTest, AFileThatCannotBeWrittenCostsOneErrorRecordAndNothingElse) {
    setUpSmallProject(host());
    const std::string unwritable = folder + "/no-such-folder/capture.json";
    const testsupport::ErrorLogWatch log;
    Capture::start(unwritable);
    int count = 0;
    EXPECT_EQ(MacroExport::GetGlobalIntVar("n_count", count), 1);
    EXPECT_EQ(count, 3);
    EXPECT_FALSE(Capture::stop());
    EXPECT_EQ(log.texts(), std::vector<std::string>{"Capture: cannot write " + unwritable});
    EXPECT_TRUE(boxes().empty());
}

TEST_F(CaptureFileTest, TheHostSeesTheSameCallsApartFromOneWholeStoreReadAtFirstOpening) {
    setUpSmallProject(host());
    host().startRecordingCalls();
    smallSession();
    smallSession();
    const std::vector<std::string> withoutCapture = callNames();

    setUpSmallProject(host());
    host().setStore(3, {{"OP 1", "a=1"}, {"OP 2"}});
    host().startRecordingCalls();
    Capture::start(path);
    smallSession();
    smallSession();
    Capture::stop();

    std::vector<std::string> expected = withoutCapture;
    const auto firstOpen =
        std::find(expected.begin(), expected.end(), "VelkMacroVdmOpen") - expected.begin() + 1;
    expected.insert(expected.begin() + firstOpen,
                    {"VelkMacroVdmSize", "VelkMacroVdmSeek", "VelkMacroVdmSingleGet$",
                     "VelkMacroVdmSingleGet$", "VelkMacroVdmSingleGet$", "VelkMacroVdmSeek",
                     "VelkMacroVdmSingleGet$", "VelkMacroVdmSingleGet$", "VelkMacroVdmSeek"});
    EXPECT_EQ(callNames(), expected);
}

TEST_F(CaptureFileTest, AnExportTheHostLacksIsListedAsMissing) {
    host::HostExport<VelkMacroVdmExistsFn> lacking{"VelkNoSuchExport"};
    Capture::start(path);
    lacking(1);
    lacking(2);
    ASSERT_TRUE(Capture::stop());
    const std::string text = capturedText();
    EXPECT_NE(text.find(R"("missingExports": [
      "VelkNoSuchExport"
    ])"),
              std::string::npos)
        << text;
    EXPECT_EQ(host().missingApiCalls(), 2);
}

TEST_F(CaptureFileTest, AFigureReachedOnlyThroughItsObjectHasAStandInName) {
    setUpSmallProject(host());
    Capture::start(path);
    const int object = host::GetFigureObject(1);
    ASSERT_TRUE(Capture::stop());
    host().loadProject(path);
    EXPECT_EQ(host::GetFigureObject(1), object);
    ASSERT_EQ(host().figures().size(), 1u);
    EXPECT_EQ(host().figures()[0].name, "#1");
}

TEST_F(CaptureFileTest, ThePointSearchFindsTheSameObjectInTheCapture) {
    setUpSmallProject(host());
    Capture::start(path);
    const int found = host::findPointObject(20.0, 30.0, 0.0);
    const int none = host::findPointObject(1.0, 1.0, 0.0);
    ASSERT_TRUE(Capture::stop());
    EXPECT_EQ(found, 20);
    EXPECT_EQ(none, -1);
    host().loadProject(path);
    EXPECT_EQ(host::findPointObject(20.0, 30.0, 0.0), found);
    EXPECT_EQ(host::findPointObject(1.0, 1.0, 0.0), none);
    // Every object the walk handed over is in the capture; the deleted one was never handed.
    std::vector<int> numbers;
    for (const velkhost::CadObject& object : host().cadObjects()) {
        numbers.push_back(object.number);
    }
    EXPECT_EQ(numbers, (std::vector<int>{10, 20, 30}));
}

}  // namespace
}  // namespace capturetest
