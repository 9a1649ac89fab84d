#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>

#include "Progress.h"

namespace {

using velk::Progress;
using namespace std::chrono_literals;

void advance(Progress& progress, int items) {
    for (int i = 0; i < items; ++i) {
        progress.advance();
    }
}

TEST(Progress, ShowsNothingWhenNotOnATerminal) {
    std::ostringstream out;
    {
        Progress progress("operations", 1000, out, false, 0ms);
        advance(progress, 1000);
    }
    EXPECT_EQ(out.str(), "");
}

TEST(Progress, ShowsTheCountAndShareOnATerminalAndErasesItAtTheEnd) {
    const std::string shown = "velk: operations 256 of 1000 (25%)";
    std::ostringstream out;
    {
        Progress progress("operations", 1000, out, true, 0ms);
        advance(progress, 256);
        EXPECT_EQ(out.str(), "\r" + shown);
    }
    EXPECT_EQ(out.str(), "\r" + shown + "\r" + std::string(shown.size(), ' ') + "\r");
}

TEST(Progress, AShortRunShowsNothing) {
    std::ostringstream out;
    {
        Progress progress("operations", 100000, out, true, 1h);
        advance(progress, 100000);
    }
    EXPECT_EQ(out.str(), "");
}

TEST(Progress, TheLineIsRewrittenAtMostEveryTenthOfASecond) {
    std::ostringstream out;
    Progress progress("tools", 1000, out, true, 0ms);
    advance(progress, 768);
    EXPECT_EQ(out.str(), "\rvelk: tools 256 of 1000 (25%)");
}

TEST(Progress, OnlyEveryFewHundredItemsLookAtTheClock) {
    std::ostringstream out;
    Progress progress("operations", 1000, out, true, 0ms);
    advance(progress, 255);
    EXPECT_EQ(out.str(), "");
}

TEST(Progress, ACountReachedAtOnceShowsOnATerminal) {
    std::ostringstream out;
    {
        Progress progress("project MB read", 154, out, true, 0ms);
        progress.reach(41);
        EXPECT_EQ(out.str(), "\rvelk: project MB read 41 of 154 (26%)");
    }
}

TEST(Progress, ACountReachedAtOnceShowsNothingWhenNotOnATerminal) {
    std::ostringstream out;
    {
        Progress progress("project MB read", 154, out, false, 0ms);
        progress.reach(41);
        progress.reach(154);
    }
    EXPECT_EQ(out.str(), "");
}

TEST(Progress, ACountReachedEarlyShowsNothing) {
    std::ostringstream out;
    {
        Progress progress("project MB read", 154, out, true, 1h);
        progress.reach(153);
    }
    EXPECT_EQ(out.str(), "");
}

}  // namespace
