// Tests that run the library against the offline host start from an empty project.
#pragma once

#include <gtest/gtest.h>
#include <velkhost/OfflineHost.h>

#include <string>
#include <vector>

namespace testsupport {

class HostTest : public ::testing::Test {
  protected:
    void SetUp() override { host().reset(); }
    void TearDown() override { host().reset(); }

    static velkhost::OfflineHost& host() { return velkhost::OfflineHost::instance(); }

    // The captions and texts of the boxes shown so far, as "caption|text".
    static std::vector<std::string> boxes();
};

}  // namespace testsupport
