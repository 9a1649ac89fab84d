// Texts pass through a capture byte for byte: every byte 1..255 in store lines, text globals,
// the names of globals and the names of figures comes back from the captured file unchanged.
#include <gtest/gtest.h>
#include <velkapi/Capture.h>
#include <velkapi/MacroExport.h>
#include <velkapi/MacroVdm.h>

#include <string>

#include "HostFixture.h"
#include "ScriptedSession.h"
#include "host/HostExports.h"

namespace capturetest {
namespace {

using VelkApi::Capture;
using VelkApi::MacroExport;

std::string everyByte() {
    std::string bytes;
    for (int byte = 1; byte <= 255; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

// What the session reads: the store's one line, the text global, the figure's number and name.
std::string readEverything(const std::string& bytes) {
    VelkApi::MacroVdm store(7);
    std::string line;
    store.Create();
    store.SingleGet(line);
    store.Close();
    std::string global;
    MacroExport::GetGlobalStrVar("s_" + bytes, global);
    const int figure = VelkApi::host::GetFigure(("F" + bytes).c_str());
    return line + "|" + global + "|" + std::to_string(figure) + "|" +
           VelkApi::host::FigureFindName(figure);
}

class CaptureBytesTest : public testsupport::HostTest {};

TEST_F(CaptureBytesTest, EveryByteComesBackFromTheCapturedFile) {
    const std::string bytes = everyByte();
    host().setStore(7, {{"L" + bytes}});
    host().setGlobal("s_" + bytes, bytes);
    host().setFigure({4, "F" + bytes});
    const std::string path = scratchFolder() + "/bytes.json";
    Capture::start(path);
    const std::string live = readEverything(bytes);
    ASSERT_TRUE(Capture::stop());
    ASSERT_EQ(live, "L" + bytes + "|" + bytes + "|4|F" + bytes);

    host().reset();
    host().loadProject(path);
    EXPECT_EQ(host().lines(7, 0), velkhost::Record{"L" + bytes});
    EXPECT_EQ(host().globalAs<std::string>("s_" + bytes), bytes);
    ASSERT_EQ(host().figures().size(), 1u);
    EXPECT_EQ(host().figures()[0].name, "F" + bytes);
    EXPECT_EQ(readEverything(bytes), live);
}

}  // namespace
}  // namespace capturetest
