#include <gtest/gtest.h>
#include <velkapi/MacroExport.h>

#include "HostFixture.h"

using namespace VelkApi;
using Texts = std::vector<std::string>;

class MacroExportTest : public testsupport::HostTest {};

TEST_F(MacroExportTest, ReadsIntGlobal) {
    host().setGlobal("i_current_channel", 3);
    int value = 0;
    EXPECT_NE(MacroExport::GetGlobalIntVar("i_current_channel", value), 0);
    EXPECT_EQ(value, 3);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(MacroExportTest, UnknownIntGlobalShowsBoxAndKeepsHostResult) {
    int value = 55;
    EXPECT_EQ(MacroExport::GetGlobalIntVar("i_unknown", value), 0);
    EXPECT_EQ(value, 0);  // what the host returned
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroExport::GetGlobalIntVar Failed|i_unknown"});
    EXPECT_EQ(host().messageBoxes()[0].owner, host().window(2));
}

TEST_F(MacroExportTest, DoubleGlobal) {
    host().setGlobal("w_setup_cle", 0.42);
    double value = 0;
    EXPECT_NE(MacroExport::GetGlobalDoubleVar("w_setup_cle", value), 0);
    EXPECT_EQ(value, 0.42);
    EXPECT_EQ(MacroExport::GetGlobalDoubleVar("w_unknown", value), 0);
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroExport::GetGlobalIntVar Failed|w_unknown"});
}

TEST_F(MacroExportTest, StringGlobalIntoBuffer) {
    host().setGlobal("$_project", std::string("demo"));
    char buffer[4096] = "x";
    EXPECT_NE(MacroExport::GetGlobalStrVar("$_project", buffer), 0);
    EXPECT_STREQ(buffer, "demo");
}

TEST_F(MacroExportTest, StringGlobalIntoText) {
    host().setGlobal("$_project", std::string("demo"));
    std::string value = "old";
    EXPECT_NE(MacroExport::GetGlobalStrVar("$_project", value), 0);
    EXPECT_EQ(value, "demo");
}

TEST_F(MacroExportTest, FailedStringReadLeavesTextAndShowsBox) {
    std::string value = "old";
    EXPECT_EQ(MacroExport::GetGlobalStrVar("$_missing", value), 0);
    EXPECT_EQ(value, "old");
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroExport::GetGlobalStrVar Failed|$_missing"});
}

TEST_F(MacroExportTest, LongStringIsReadUpToItsZeroByte) {
    host().setGlobal("$_long", std::string(6000, 'a'));
    std::string value;
    EXPECT_NE(MacroExport::GetGlobalStrVar("$_long", value), 0);
    EXPECT_EQ(value, std::string(4095, 'a'));
}

TEST_F(MacroExportTest, IntWriterAlwaysWritesTheUnsetMarker) {
    host().setGlobal("i_t_nr", 12);
    EXPECT_NE(MacroExport::SetGlobalIntVar("i_t_nr"), 0);
    EXPECT_EQ(host().globalAs<int>("i_t_nr"), 2147483647);
    EXPECT_EQ(MacroExport::SetGlobalIntVar("i_missing"), 0);
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroExport::SetGlobalIntVar Failed|i_missing"});
}

TEST_F(MacroExportTest, DoubleWriter) {
    host().setGlobal("w_t_diam", 1.0);
    EXPECT_NE(MacroExport::SetGlobalDoubleVar("w_t_diam", 12.5), 0);
    EXPECT_EQ(host().globalAs<double>("w_t_diam"), 12.5);
    EXPECT_EQ(MacroExport::SetGlobalDoubleVar("w_missing", 1.0), 0);
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroExport::SetGlobalDoubeleVar Failed|w_missing"});
}
