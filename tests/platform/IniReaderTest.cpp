#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "TestEnvironment.h"
#include "platform/Platform.h"

namespace fs = std::filesystem;
using VelkApi::platform::iniValue;

class IniValueTest : public ::testing::Test {
  protected:
    std::string write(const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    void TearDown() override { fs::remove(path); }

    std::string path = (fs::path(testsupport::appDataFolder()) / "machine.ini").string();
};

TEST_F(IniValueTest, SectionAndKeyMatchWithoutCase) {
    write("[Common]\nMachine_Name=Lathe 1\n");
    EXPECT_EQ(iniValue(path, "COMMON", "MACHINE_NAME", "-1"), "Lathe 1");
    EXPECT_EQ(iniValue(path, "common", "machine_name", "-1"), "Lathe 1");
}

TEST_F(IniValueTest, ValueAndNamesAreTrimmedOfBlanks) {
    write("  [ COMMON ]  \r\n\tNR_OF_CHANNEL \t=  2 \t\r\n");
    EXPECT_EQ(iniValue(path, "COMMON", "NR_OF_CHANNEL", "-1"), "2");
}

TEST_F(IniValueTest, CommentLinesAreSkipped) {
    write("[COMMON]\n;NR_OF_CHANNEL=4\n  ; NR_OF_CHANNEL=5\nNR_OF_CHANNEL=3 ; three\n");
    EXPECT_EQ(iniValue(path, "COMMON", "NR_OF_CHANNEL", "-1"), "3 ; three");
}

TEST_F(IniValueTest, FirstOfDuplicateKeysWins) {
    write("[COMMON]\nTornelle=1\nTORNELLE=0\n");
    EXPECT_EQ(iniValue(path, "COMMON", "Tornelle", "-1"), "1");
}

TEST_F(IniValueTest, OnlyTheFirstSectionOfANameIsSearched) {
    write("[Y1]\nOther=1\n[CHANNEL_1]\nYAXIS_EXIST=1\n[y1]\nRapid=5\n");
    EXPECT_EQ(iniValue(path, "Y1", "Rapid", ""), "");
    EXPECT_EQ(iniValue(path, "Y1", "Other", ""), "1");
}

TEST_F(IniValueTest, MissingSectionKeyOrFileGiveTheFallback) {
    write("[COMMON]\nA=1\n");
    EXPECT_EQ(iniValue(path, "B1", "Rapid", "0"), "0");
    EXPECT_EQ(iniValue(path, "COMMON", "B", "-1"), "-1");
    EXPECT_EQ(iniValue(path + ".missing", "COMMON", "A", "-1"), "-1");
}

TEST_F(IniValueTest, KeysBeforeAnySectionBelongToNone) {
    write("A=0\n[COMMON]\nB=2\n");
    EXPECT_EQ(iniValue(path, "COMMON", "A", "-1"), "-1");
    EXPECT_EQ(iniValue(path, "COMMON", "B", "-1"), "2");
}

TEST_F(IniValueTest, CommasInNumbersAreKeptForTheCaller) {
    write("[COMMON]\nLUN_MAX_DIAM=12,5\n");
    EXPECT_EQ(iniValue(path, "COMMON", "LUN_MAX_DIAM", "0"), "12,5");
}

TEST_F(IniValueTest, EmptyValueIsEmptyNotTheFallback) {
    write("[Y1]\nRapid=\n");
    EXPECT_EQ(iniValue(path, "Y1", "Rapid", "x"), "");
}

TEST_F(IniValueTest, SurroundingQuotesAreRemoved) {
    write("[COMMON]\nMACHINE_NAME=\"Mill 5\"\nOTHER='a'\nHALF=\"b\n");
    EXPECT_EQ(iniValue(path, "COMMON", "MACHINE_NAME", ""), "Mill 5");
    EXPECT_EQ(iniValue(path, "COMMON", "OTHER", ""), "a");
    EXPECT_EQ(iniValue(path, "COMMON", "HALF", ""), "\"b");
}

TEST_F(IniValueTest, LinesWithoutEqualsAreIgnored) {
    write("[COMMON]\njunk line\nA=1\n");
    EXPECT_EQ(iniValue(path, "COMMON", "junk line", "-1"), "-1");
    EXPECT_EQ(iniValue(path, "COMMON", "A", "-1"), "1");
}
