// A machining-parameter library that lacks functions: each missing function is replaced for
// good by the host's "VelkMissingAPI"; the functions it has work.
#include <gtest/gtest.h>
#include <velkapi/GeolibWrapper.h>

#include "HostFixture.h"
#include "strategy/MachiningLibrary.h"

using namespace VelkApi;

namespace {

class PartialLibraryTest : public testsupport::HostTest {};

}  // namespace

TEST_F(PartialLibraryTest, TheFunctionsItHasWork) {
    GeolibWrapper wrapper;
    wrapper.setDepthStep(2.5);
    EXPECT_EQ(wrapper.getDepthStep(), 2.5);
    EXPECT_EQ(host().missingApiCalls(), 0);
}

TEST_F(PartialLibraryTest, AMissingFunctionIsReplacedByTheHostsStandInForGood) {
    GeolibWrapper wrapper;
    EXPECT_FALSE(strategy::RampAngle.set.isCached());
    wrapper.setRampAngle(3.0);
    EXPECT_TRUE(strategy::RampAngle.set.isCached());
    EXPECT_EQ(host().missingApiCalls(), 1);
    wrapper.setRampAngle(4.0);
    EXPECT_EQ(host().missingApiCalls(), 2);
    EXPECT_TRUE(strategy::RampAngle.set.isCached());
    EXPECT_EQ(wrapper.getNumberOfSlices4DepthStep(), 0);  // the stand-in's result
    EXPECT_EQ(host().missingApiCalls(), 3);
}

TEST_F(PartialLibraryTest, LoadingAndSavingWithoutTheirFunctionsReportNothingDone) {
    GeolibWrapper wrapper;
    EXPECT_FALSE(wrapper.OpenBin("settings.bin"));
    EXPECT_FALSE(wrapper.SaveBin("settings.bin"));
    EXPECT_EQ(host().missingApiCalls(), 2);
}
