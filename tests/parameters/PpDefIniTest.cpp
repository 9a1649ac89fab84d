// The machine's post-processor definition: where it is, what its common block and steady rests
// say, and which channels have a Y or B axis.
#include <gtest/gtest.h>

#include "ParametersTest.h"
#include "parameters/PpDefIni.h"
#include "platform/Platform.h"

using namespace VelkApi;
using paramtest::Texts;

namespace {

class ParametersMachineDefinition : public paramtest::ParametersTest {
  protected:
    // Writes the definition and names it in the host's "ppdefini".
    std::string useMachine(const std::string& content) {
        const std::string path = writeFile("machine.ini", content);
        host().setEnvironment("ppdefini", path);
        return path;
    }

    static PpDefIni readMachine() {
        PpDefIni machine;
        EXPECT_EQ(machine.read(), 0);
        return machine;
    }
};

}  // namespace

TEST_F(ParametersMachineDefinition, LocatesTheFileTheHostNames) {
    const std::string path = useMachine("[COMMON]\n");
    PpDefIni machine;
    EXPECT_EQ(machine.locate(), 0);
    EXPECT_EQ(machine.getPath(), path);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ParametersMachineDefinition, AFileThatCannotBeReadIsShownWithoutOwner) {
    const std::string path = testsupport::appDataFolder() + "/missing.ini";
    host().setEnvironment("ppdefini", path);
    PpDefIni machine;
    EXPECT_EQ(machine.locate(), -1);
    const auto shown = host().messageBoxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].caption, "File can not open for read");
    EXPECT_EQ(shown[0].text, path);
    EXPECT_EQ(shown[0].owner, nullptr);
    EXPECT_EQ(shown[0].style, 0x30u);
}

TEST_F(ParametersMachineDefinition, AMissingFileIsShownOnceAndEverythingTakesItsDefault) {
    host().setEnvironment("ppdefini", testsupport::appDataFolder() + "/missing.ini");
    PpDefIni machine = readMachine();
    EXPECT_FALSE(machine.isYaxAvailable(0));
    EXPECT_FALSE(machine.hasBAxis(1));
    EXPECT_FALSE(machine.isSubspindleAvailable());
    EXPECT_EQ(boxes().size(), 1u);
    EXPECT_EQ(machine.getGeneratorVersion(), -1);
    EXPECT_EQ(machine.getMachineName(), "-1");
    EXPECT_EQ(machine.getChannelCount(), 1);
    EXPECT_EQ(machine.getSpindleTrackCount(), 1);
    EXPECT_FALSE(machine.isSwissTypeLathe());
    EXPECT_FALSE(machine.isTornelle());
    EXPECT_TRUE(machine.getSteadyRests().empty());
}

TEST_F(ParametersMachineDefinition, AMissingFileStillTakesTheChannelsFromTheHost) {
    host().setEnvironment("ppdefini", testsupport::appDataFolder() + "/missing.ini");
    host().setEnvironment("NrOfChannels", "3");
    EXPECT_EQ(readMachine().getChannelCount(), 3);
}

// Paths are the platform's: the tests of the other platform say why they do not apply.

TEST_F(ParametersMachineDefinition, ARelativeNameLiesInTheHostsDataFolderOnWindows) {
#ifndef _WIN32
    GTEST_SKIP() << "POSIX paths have no drive";
#else
    host().setEnvironment("ppdefini", "cfg\\pp.ini");
    host().setEnvironment("-d", "D:\\data");
    PpDefIni machine;
    EXPECT_EQ(machine.locate(), -1);
    EXPECT_EQ(machine.getPath(), "D:\\data\\cfg\\pp.ini");
    EXPECT_EQ(boxes(), Texts{"File can not open for read|D:\\data\\cfg\\pp.ini"});
#endif
}

TEST_F(ParametersMachineDefinition, ARelativeNameLiesInTheHostsDataFolderOnPosix) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows paths are complete with a drive";
#else
    host().setEnvironment("ppdefini", "cfg/pp.ini");
    host().setEnvironment("-d", "/data");
    PpDefIni machine;
    EXPECT_EQ(machine.locate(), -1);
    EXPECT_EQ(machine.getPath(), "/data/cfg/pp.ini");
    EXPECT_EQ(boxes(), Texts{"File can not open for read|/data/cfg/pp.ini"});
#endif
}

TEST_F(ParametersMachineDefinition, OnlyPathsWithoutADriveAreResolvedOnWindows) {
#ifndef _WIN32
    GTEST_SKIP() << "POSIX paths have no drive";
#else
    EXPECT_EQ(platform::resolveInFolder("cfg\\pp.ini", "D:\\data"), "D:\\data\\cfg\\pp.ini");
    EXPECT_EQ(platform::resolveInFolder("pp.ini", "D:\\data"), "D:\\data\\pp.ini");
    EXPECT_EQ(platform::resolveInFolder("cfg\\pp.ini", "D:"), "D:\\cfg\\pp.ini");
    EXPECT_EQ(platform::resolveInFolder("C:\\cfg\\pp.ini", "D:\\data"), "C:\\cfg\\pp.ini");
#endif
}

TEST_F(ParametersMachineDefinition, OnlyRelativePathsAreResolvedOnPosix) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows paths are complete with a drive";
#else
    EXPECT_EQ(platform::resolveInFolder("cfg/pp.ini", "/data"), "/data/cfg/pp.ini");
    EXPECT_EQ(platform::resolveInFolder("pp.ini", "/data"), "/data/pp.ini");
    EXPECT_EQ(platform::resolveInFolder("/etc/pp.ini", "/data"), "/etc/pp.ini");
#endif
}

TEST_F(ParametersMachineDefinition, ChannelCountIsClampedToOneToTen) {
    useMachine("[COMMON]\nNR_OF_CHANNEL=0\n");
    EXPECT_EQ(readMachine().getChannelCount(), 1);
    useMachine("[COMMON]\nNR_OF_CHANNEL=12\n");
    EXPECT_EQ(readMachine().getChannelCount(), 10);
    useMachine("[COMMON]\nNR_OF_CHANNEL=4\n");
    EXPECT_EQ(readMachine().getChannelCount(), 4);
}

TEST_F(ParametersMachineDefinition, WithoutAChannelCountTheHostsIsClamped) {
    useMachine("[COMMON]\nMACHINE_NAME=Lathe\n");
    host().setEnvironment("NrOfChannels", "15");
    EXPECT_EQ(readMachine().getChannelCount(), 10);
    host().setEnvironment("NrOfChannels", "2");
    EXPECT_EQ(readMachine().getChannelCount(), 2);
    host().setEnvironment("NrOfChannels", "");
    EXPECT_EQ(readMachine().getChannelCount(), 1);
    useMachine("[COMMON]\nNR_OF_CHANNEL=-1\n");
    host().setEnvironment("NrOfChannels", "3");
    EXPECT_EQ(readMachine().getChannelCount(), 3);
}

TEST_F(ParametersMachineDefinition, SpindleTracksOutsideOneToFiftyAreOne) {
    useMachine("[COMMON]\nNR_SPINDEL_SPUR=51\n");
    EXPECT_EQ(readMachine().getSpindleTrackCount(), 1);
    useMachine("[COMMON]\nNR_SPINDEL_SPUR=0\n");
    EXPECT_EQ(readMachine().getSpindleTrackCount(), 1);
    useMachine("[COMMON]\nNR_SPINDEL_SPUR=50\n");
    EXPECT_EQ(readMachine().getSpindleTrackCount(), 50);
}

TEST_F(ParametersMachineDefinition, TheYAxisRapidEntryWinsWheneverItIsThere) {
    useMachine(
        "[Y1]\nRapid=0\n[CHANNEL_1]\nYAXIS_EXIST=1\n[CHANNEL_2]\nYAXIS_EXIST=1\n"
        "[Y3]\nRapid=5000\n");
    PpDefIni machine;
    EXPECT_FALSE(machine.isYaxAvailable(0));
    EXPECT_TRUE(machine.isYaxAvailable(1));
    EXPECT_TRUE(machine.isYaxAvailable(2));
    EXPECT_FALSE(machine.isYaxAvailable(3));
    EXPECT_FALSE(machine.isYaxAvailable(2147483647));
}

TEST_F(ParametersMachineDefinition, TheBAxisScanStopsAtTheChannelCount) {
    useMachine("[COMMON]\nNR_OF_CHANNEL=2\n[B3]\nRapid=1\n");
    EXPECT_FALSE(readMachine().hasBAxisInSomeChannel());
    useMachine("[COMMON]\nNR_OF_CHANNEL=3\n[B3]\nRapid=1\n");
    EXPECT_TRUE(readMachine().hasBAxisInSomeChannel());
    PpDefIni machine;
    EXPECT_TRUE(machine.hasBAxis(3));
    EXPECT_FALSE(machine.hasBAxis(1));
}

TEST_F(ParametersMachineDefinition, SteadyRestsShareTheirLengths) {
    useMachine(
        "[COMMON]\nNR_OF_LUN=3\nLUN1_ROTAXIS_NAME_1=U1\nLUN2_ROTAXIS_NAME_1=U2\n"
        "LUN3_ROTAXIS_NAME_1=U3\nLUN2_ROTAXIS_NAME_2=V2\nLUN_MAX_DIAM=12,5\nLUN_ROLL_DIAM=3.25\n"
        "LUN_ROLL_DIST=40\nLUN_X0_DIST=-7,75\n");
    const PpDefIni machine = readMachine();
    const std::vector<SteadyRest>& rests = machine.getSteadyRests();
    ASSERT_EQ(rests.size(), 3u);
    const char* names[] = {"U1", "U2", "U3"};
    for (std::size_t i = 0; i < rests.size(); ++i) {
        EXPECT_EQ(rests[i].rotaryAxisName1, names[i]);
        EXPECT_DOUBLE_EQ(rests[i].maxDiameter, 12.5);
        EXPECT_DOUBLE_EQ(rests[i].rollDiameter, 3.25);
        EXPECT_DOUBLE_EQ(rests[i].rollDistance, 40.0);
        EXPECT_DOUBLE_EQ(rests[i].x0Distance, -7.75);
    }
    EXPECT_EQ(rests[0].rotaryAxisName2, "");
    EXPECT_EQ(rests[1].rotaryAxisName2, "V2");
}

TEST_F(ParametersMachineDefinition, NoSteadyRestsWithoutACount) {
    useMachine("[COMMON]\nLUN1_ROTAXIS_NAME_1=U1\nLUN_MAX_DIAM=12\n");
    EXPECT_TRUE(readMachine().getSteadyRests().empty());
    useMachine("[COMMON]\nNR_OF_LUN=-2\n");
    EXPECT_TRUE(readMachine().getSteadyRests().empty());
}

TEST_F(ParametersMachineDefinition, ReadsTheCommonBlock) {
    useMachine(
        "; a lathe with two channels\n[common]\nmachine_name=Twin Lathe\nSWISS_TYPE_LATHE=1\n"
        "PP_GEN_Version=7\nTornelle=1\nSUBSPINDLE_ON_TURRET=1\nNR_OF_CHANNEL=2\n"
        "NR_SPINDEL_SPUR=3\n");
    host().setEnvironment("mainSpindleMoveable", "1");
    host().setEnvironment("TailStockAvailable", "1");
    host().setEnvironment("LunAvailable", "1");
    host().setEnvironment("TrailOnAvailable", "1");
    host().setEnvironment("MillingAvailable", "1");
    host().setEnvironment("SubSpindleAvailable", "1");
    PpDefIni machine = readMachine();
    EXPECT_EQ(machine.getMachineName(), "Twin Lathe");
    EXPECT_TRUE(machine.isSwissTypeLathe());
    EXPECT_EQ(machine.getGeneratorVersion(), 7);
    EXPECT_TRUE(machine.isTornelle());
    EXPECT_TRUE(machine.isSubspindleOnTurret());
    EXPECT_EQ(machine.getChannelCount(), 2);
    EXPECT_EQ(machine.getSpindleTrackCount(), 3);
    EXPECT_TRUE(machine.isMainSpindleMoveable());
    EXPECT_TRUE(machine.isTailStockAvailable());
    EXPECT_TRUE(machine.isSteadyRestAvailable());
    EXPECT_TRUE(machine.isTrailOnAvailable());
    EXPECT_TRUE(machine.isMillingAvailable());
    EXPECT_TRUE(machine.isSubspindleAvailable());
    EXPECT_TRUE(machine.isCommonBlockRead());
    EXPECT_FALSE(machine.hasBAxisInSomeChannel());
}

// The host's profile buffer holds 1023 characters and its closing zero; a longer value is cut
// there.
TEST_F(ParametersMachineDefinition, AValueLongerThanTheHostsBufferIsClipped) {
    const std::string name = std::string(1020, 'M') + "ABCDEF";
    useMachine("[COMMON]\nMACHINE_NAME=" + name + "\nNR_OF_CHANNEL=2\n");
    const PpDefIni machine = readMachine();
    EXPECT_EQ(machine.getMachineName(), std::string(1020, 'M') + "ABC");
    EXPECT_EQ(machine.getChannelCount(), 2);
    EXPECT_TRUE(boxes().empty());
}

// The file's name is clipped the same way, so a longer name is not found under its own name.
TEST_F(ParametersMachineDefinition, AFileNameLongerThanTheHostsBufferIsClipped) {
    const std::string named = testsupport::appDataFolder() + "/" + std::string(1100, 'n');
    host().setEnvironment("ppdefini", named);
    PpDefIni machine;
    EXPECT_EQ(machine.locate(), -1);
    EXPECT_EQ(boxes(), Texts{"File can not open for read|" + named.substr(0, 1023)});
}

TEST_F(ParametersMachineDefinition, FlagsAreSetOnlyByTheValueOne) {
    useMachine("[COMMON]\nSWISS_TYPE_LATHE=2\nTornelle=yes\nSUBSPINDLE_ON_TURRET=0\n");
    host().setEnvironment("mainSpindleMoveable", "2");
    host().setEnvironment("MillingAvailable", "x");
    host().setEnvironment("SubSpindleAvailable", " 1");
    const PpDefIni machine = readMachine();
    EXPECT_FALSE(machine.isSwissTypeLathe());
    EXPECT_FALSE(machine.isTornelle());
    EXPECT_FALSE(machine.isSubspindleOnTurret());
    EXPECT_FALSE(machine.isMainSpindleMoveable());
    EXPECT_FALSE(machine.isMillingAvailable());
    EXPECT_TRUE(PpDefIni(machine).isSubspindleAvailable());
}

TEST_F(ParametersMachineDefinition, TheCommonBlockIsReadOnceButNameAndSwissFlagEveryTime) {
    const std::string path = useMachine("[COMMON]\nMACHINE_NAME=First\nNR_OF_CHANNEL=2\n");
    PpDefIni machine;
    machine.readCommon();
    useMachine("[COMMON]\nMACHINE_NAME=Second\nNR_OF_CHANNEL=5\nSWISS_TYPE_LATHE=1\n");
    machine.readCommon();
    EXPECT_EQ(machine.getMachineName(), "Second");
    EXPECT_TRUE(machine.isSwissTypeLathe());
    EXPECT_EQ(machine.getChannelCount(), 2);
    // Once set, the swiss flag stays.
    useMachine("[COMMON]\nSWISS_TYPE_LATHE=0\n");
    machine.readCommon();
    EXPECT_TRUE(machine.isSwissTypeLathe());
    EXPECT_EQ(machine.getMachineName(), "-1");
}

TEST_F(ParametersMachineDefinition, TornelleIsClearedOnEveryRead) {
    useMachine("[COMMON]\nTornelle=1\n");
    PpDefIni machine;
    machine.read();
    EXPECT_TRUE(machine.isTornelle());
    useMachine("[COMMON]\nTornelle=0\n");
    machine.read();
    EXPECT_FALSE(machine.isTornelle());
}

TEST_F(ParametersMachineDefinition, BeforeTheCommonBlockTheSubspindleComesFromTheHost) {
    useMachine("[COMMON]\n");
    PpDefIni machine;
    host().setEnvironment("SubSpindleAvailable", "1");
    EXPECT_TRUE(machine.isSubspindleAvailable());
    host().setEnvironment("SubSpindleAvailable", "0");
    EXPECT_FALSE(machine.isSubspindleAvailable());

    // After it, the flag read with the block stands.
    host().setEnvironment("SubSpindleAvailable", "1");
    machine.readCommon();
    host().setEnvironment("SubSpindleAvailable", "0");
    EXPECT_TRUE(machine.isSubspindleAvailable());
}

TEST_F(ParametersMachineDefinition, EveryQuestionLocatesTheFileFirst) {
    host().setEnvironment("ppdefini", testsupport::appDataFolder() + "/missing.ini");
    PpDefIni machine;
    EXPECT_FALSE(machine.hasBAxis(1));
    EXPECT_FALSE(machine.getPath().empty());
    EXPECT_EQ(boxes().size(), 1u);
    machine.read();
    machine.isYaxAvailable(0);
    EXPECT_EQ(boxes().size(), 1u);
}
