#include <gtest/gtest.h>

#include "HostFixture.h"
#include "host/HostExports.h"

using namespace VelkApi;

class HostExportsTest : public testsupport::HostTest {};

TEST_F(HostExportsTest, ExportIsFoundOnceAndKept) {
    host::HostExport<VelkMacroVdmExistsFn> exists{"VelkMacroVdmExists"};
    EXPECT_FALSE(exists.isCached());
    host().setStore(4, {{"1 1 0"}});
    EXPECT_EQ(exists(4), 1);
    EXPECT_TRUE(exists.isCached());
    EXPECT_EQ(exists(5), 0);
    EXPECT_EQ(host().callCount("VelkMacroVdmExists"), 2);
    EXPECT_EQ(host().missingApiCalls(), 0);
}

TEST_F(HostExportsTest, UnknownExportCallsTheHostsStandInEveryTime) {
    host::HostExport<VelkMacroVdmExistsFn> missing{"VelkNoSuchExport"};
    EXPECT_EQ(missing(4), 0);
    EXPECT_FALSE(missing.isCached());
    EXPECT_EQ(missing(4), 0);
    EXPECT_EQ(host().missingApiCalls(), 2);
    EXPECT_EQ(host().callCount("VelkMissingAPI"), 2);
}

TEST_F(HostExportsTest, EnvironmentAsksTheHost) {
    host().setEnvironment("TURNDRIVENTOOLS", "2");
    EXPECT_EQ(host::environment("TURNDRIVENTOOLS"), "2");
    EXPECT_EQ(host::environment("unknown"), "");
}

TEST_F(HostExportsTest, ErrorBoxIsOwnedByTheHostWindow) {
    host::showError("Caption", "Text");
    const auto shown = host().messageBoxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].owner, host().window(2));
    EXPECT_EQ(shown[0].caption, "Caption");
    EXPECT_EQ(shown[0].text, "Text");
    EXPECT_EQ(shown[0].style, 0u);
    EXPECT_EQ(host().callCount("VelkGetWnd"), 1);
}
