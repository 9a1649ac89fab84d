#include <string>
#include <vector>

#include "ExportNames.h"
#include "OfflineHostTest.h"

namespace offlinehost {
namespace {

using ObservationTest = OfflineHostTest;

TEST_F(ObservationTest, WindowsAreFixedDistinctAndNeverNull) {
    EXPECT_NE(VelkGetWnd(0), nullptr);
    EXPECT_NE(VelkGetWnd(2), nullptr);
    EXPECT_NE(VelkGetWnd(0), VelkGetWnd(2));
    EXPECT_EQ(VelkGetWnd(2), VelkGetWnd(2));
    EXPECT_EQ(VelkGetWnd(2), host.window(2));
}

TEST_F(ObservationTest, MessageBoxesAreRecordedAndAnsweredOk) {
    EXPECT_EQ(MessageBoxA(VelkGetWnd(2), "Store 100 is open elsewhere", "VelkApi", 0x30U), 1);
    EXPECT_EQ(MessageBoxA(nullptr, "second", "caption", 0U), 1);
    const std::vector<velkhost::MessageBox> boxes = host.messageBoxes();
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_EQ(boxes[0].owner, host.window(2));
    EXPECT_EQ(boxes[0].text, "Store 100 is open elsewhere");
    EXPECT_EQ(boxes[0].caption, "VelkApi");
    EXPECT_EQ(boxes[0].style, 0x30U);
    EXPECT_EQ(boxes[1].owner, nullptr);
    EXPECT_EQ(boxes[1].text, "second");
}

TEST_F(ObservationTest, NullTextsOfAMessageBoxAreRecordedEmpty) {
    MessageBoxA(nullptr, nullptr, nullptr, 0U);
    ASSERT_EQ(host.messageBoxes().size(), 1U);
    EXPECT_EQ(host.messageBoxes()[0].text, "");
    EXPECT_EQ(host.messageBoxes()[0].caption, "");
}

TEST_F(ObservationTest, ClearingMessageBoxesForgetsThem) {
    MessageBoxA(nullptr, "text", "caption", 0U);
    host.clearMessageBoxes();
    EXPECT_TRUE(host.messageBoxes().empty());
}

TEST_F(ObservationTest, MissingApiCallsAreCountedAndAnsweredZero) {
    EXPECT_EQ(host.missingApiCalls(), 0);
    EXPECT_EQ(VelkMissingAPI(), 0);
    EXPECT_EQ(VelkMissingAPI(), 0);
    EXPECT_EQ(host.missingApiCalls(), 2);
}

TEST_F(ObservationTest, EveryExportCountsItsCallsUnderItsOwnName) {
    host.setStore(1, {{"OP"}});
    char line[5000] = {};
    char text[4096] = {};
    int values[1] = {};
    double reals[1] = {};
    int status = 0;
    VelkGetWnd(0);
    VelkEnvironment("A");
    VelkReadGlobalI("a", &status);
    VelkReadGlobalW("a", &status);
    VelkReadGlobal$("a", text, &status);
    VelkWriteGlobalI("a", 1, &status);
    VelkWriteGlobalW("a", 1.0, &status);
    VelkWriteGlobal$("a", "x", &status);
    VelkReadGlobalArrayI("a", 1, 1, values, &status);
    VelkReadGlobalArrayW("a", 1, 1, reals, &status);
    VelkWriteGlobalArrayI("a", 1, 1, values, &status);
    VelkWriteGlobalArrayW("a", 1, 1, reals, &status);
    VelkMacroVdmExists(1);
    VelkMacroVdmCheckOpen(1);
    const int handle = VelkMacroVdmOpen(1, 0);
    VelkMacroVdmSize(handle);
    VelkMacroVdmSeek(handle, 0, 0);
    VelkMacroVdmSingleSeek(handle, 0);
    VelkMacroVdmSingleGet$(handle, line, 1);
    VelkMacroVdmSingleAdd$(handle, "x", 1);
    VelkMacroVdmSingleReplace$(handle, "x", 1);
    VelkMacroVdmInsert$(handle, "x", 1);
    VelkMacroVdmSingleDelete(handle, 0);
    VelkMacroVdmClose(handle);
    double x = 0.0, y = 0.0, z = 0.0;
    VelkGetFigure("F");
    VelkGetFigureObject(1);
    VelkGetFigureInstance(1, 1);
    VelkGetNonCadObject(1, 3);
    VelkGetObjectDelete(1);
    VelkGetObjectType(1);
    VelkGetObjectName(1);
    VelkGetObjectAttribute(1);
    VelkFigureFindName(1);
    VelkObjectStart(1, &x, &y, &z);
    VelkProcessCad(nullptr, 1, nullptr, nullptr, nullptr, -1, nullptr);
    VelkMissingAPI();
    MessageBoxA(nullptr, "", "", 0U);

    for (const std::string& name : kExportNames) {
        EXPECT_EQ(host.callCount(name), 1) << name;
    }
}

TEST_F(ObservationTest, FailedCallsCountToo) {
    VelkMacroVdmOpen(404, 0);
    VelkMacroVdmOpen(404, 0);
    EXPECT_EQ(host.callCount("VelkMacroVdmOpen"), 2);
}

TEST_F(ObservationTest, NamesNeverCalledCountZero) {
    EXPECT_EQ(host.callCount("VelkMacroVdmOpen"), 0);
    EXPECT_EQ(host.callCount("NoSuchExport"), 0);
}

TEST_F(ObservationTest, TheProgramSideDoesNotCount) {
    host.window(1);
    host.environment("A");
    EXPECT_EQ(host.callCount("VelkGetWnd"), 0);
    EXPECT_EQ(host.callCount("VelkEnvironment"), 0);
}

TEST_F(ObservationTest, ResettingCallCountsStartsFromZero) {
    VelkMacroVdmExists(1);
    host.resetCallCounts();
    EXPECT_EQ(host.callCount("VelkMacroVdmExists"), 0);
    VelkMacroVdmExists(1);
    EXPECT_EQ(host.callCount("VelkMacroVdmExists"), 1);
}

TEST_F(ObservationTest, ResetClearsEveryRecord) {
    MessageBoxA(nullptr, "text", "caption", 0U);
    VelkMissingAPI();
    host.reset();
    EXPECT_TRUE(host.messageBoxes().empty());
    EXPECT_EQ(host.missingApiCalls(), 0);
    EXPECT_EQ(host.callCount("MessageBoxA"), 0);
}

TEST_F(ObservationTest, NothingIsRecordedUntilRecordingStarts) {
    VelkMacroVdmExists(1);
    EXPECT_TRUE(host.recordedCalls().empty());
}

TEST_F(ObservationTest, RecordedCallsKeepTheirOrderAndArguments) {
    host.setStore(5, {{"3 1 1 1", "first"}});
    char line[5000] = {};
    int status = 0;
    host.startRecordingCalls();
    VelkEnvironment("TURNDRIVENTOOLS");
    const int handle = VelkMacroVdmOpen(5, 1);
    VelkMacroVdmSeek(handle, 0, 0);
    VelkMacroVdmSingleGet$(handle, line, 1);
    VelkMacroVdmSingleReplace$(handle, "3 1 1 2", 1);
    VelkMacroVdmClose(handle);
    VelkReadGlobalW("w_setup_cle", &status);
    host.stopRecordingCalls();
    VelkMacroVdmExists(5);

    const std::vector<velkhost::HostCall> calls = host.recordedCalls();
    ASSERT_EQ(calls.size(), 7U);
    const std::vector<std::string> names = {
        "VelkEnvironment",        "VelkMacroVdmOpen",           "VelkMacroVdmSeek",
        "VelkMacroVdmSingleGet$", "VelkMacroVdmSingleReplace$", "VelkMacroVdmClose",
        "VelkReadGlobalW"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(calls[i].exportName, names[i]) << i;
    }
    EXPECT_EQ(calls[0].text, "TURNDRIVENTOOLS");
    EXPECT_TRUE(calls[0].numbers.empty());
    EXPECT_EQ(calls[1].numbers, (std::vector<int>{5, 1}));
    EXPECT_EQ(calls[2].numbers, (std::vector<int>{handle, 0, 0}));
    EXPECT_EQ(calls[3].numbers, (std::vector<int>{handle, 1}));
    EXPECT_EQ(calls[3].text, "");
    EXPECT_EQ(calls[4].text, "3 1 1 2");
    EXPECT_EQ(calls[5].numbers, (std::vector<int>{handle}));
    EXPECT_EQ(calls[6].text, "w_setup_cle");
}

TEST_F(ObservationTest, StartingAgainEmptiesTheRecord) {
    host.startRecordingCalls();
    VelkMacroVdmExists(1);
    host.startRecordingCalls();
    VelkMacroVdmCheckOpen(2);
    const std::vector<velkhost::HostCall> calls = host.recordedCalls();
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].exportName, "VelkMacroVdmCheckOpen");
    EXPECT_EQ(calls[0].numbers, (std::vector<int>{2}));
}

TEST_F(ObservationTest, ResetStopsAndClearsTheRecord) {
    host.startRecordingCalls();
    VelkMacroVdmExists(1);
    host.reset();
    VelkMacroVdmExists(1);
    EXPECT_TRUE(host.recordedCalls().empty());
}

}  // namespace
}  // namespace offlinehost
