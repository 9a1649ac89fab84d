// Every test here starts and ends with an empty offline host, and calls the host's exported
// functions by their C names, as the library does.
#pragma once

#include <gtest/gtest.h>
#include <velkhost/OfflineHost.h>

#include <string>

#include "ExportedFunctions.h"

namespace offlinehost {

class OfflineHostTest : public ::testing::Test {
  protected:
    void SetUp() override { host.reset(); }
    void TearDown() override { host.reset(); }

    // The text of one store line, or of a text global, repeated to the given length.
    static std::string textOfLength(std::size_t length) {
        std::string text;
        for (std::size_t i = 0; i < length; ++i) {
            text.push_back(static_cast<char>('a' + i % 26));
        }
        return text;
    }

    velkhost::OfflineHost& host = velkhost::OfflineHost::instance();
};

}  // namespace offlinehost
