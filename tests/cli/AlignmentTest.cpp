#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "Alignment.h"

namespace {

using velk::align;
using velk::AlignedPair;

// The steps as text: "=" for an item of both sides, "-" for one of before only, "+" for one of
// after only, each with its number(s).
std::string stepsText(const std::vector<AlignedPair>& steps) {
    std::string text;
    for (const AlignedPair& step : steps) {
        if (step.before && step.after) {
            text += "=" + std::to_string(*step.before) + "/" + std::to_string(*step.after) + " ";
        } else if (step.before) {
            text += "-" + std::to_string(*step.before) + " ";
        } else {
            text += "+" + std::to_string(*step.after) + " ";
        }
    }
    return text;
}

std::string aligned(const std::vector<char>& before, const std::vector<char>& after,
                    std::size_t largestMiddle = velk::kLargestAlignedMiddle) {
    return stepsText(align(before, after, std::equal_to<>(), largestMiddle));
}

TEST(Alignment, EqualSequencesArePairedItemByItem) {
    EXPECT_EQ(aligned({'a', 'b', 'c'}, {'a', 'b', 'c'}), "=0/0 =1/1 =2/2 ");
}

TEST(Alignment, AnItemInsertedBetweenSharedOnesStandsAlone) {
    EXPECT_EQ(aligned({'a', 'b', 'c', 'd'}, {'a', 'b', 'x', 'c', 'd'}), "=0/0 =1/1 +2 =2/3 =3/4 ");
}

TEST(Alignment, AChangedItemIsRemovedAndAdded) {
    EXPECT_EQ(aligned({'a', 'b', 'c'}, {'a', 'x', 'c'}), "=0/0 -1 +1 =2/2 ");
}

TEST(Alignment, TheMiddleKeepsItsLongestCommonRun) {
    EXPECT_EQ(aligned({'s', 'a', 'b', 'c', 'e'}, {'s', 'b', 'c', 'd', 'e'}),
              "=0/0 -1 =2/1 =3/2 +3 =4/4 ");
}

TEST(Alignment, OneSideEmptyIsAllRemovedOrAllAdded) {
    EXPECT_EQ(aligned({'a', 'b'}, {}), "-0 -1 ");
    EXPECT_EQ(aligned({}, {'a', 'b'}), "+0 +1 ");
}

// Beyond the largest middle the common run is not searched: the shared start and end stay
// pairs, and the middle of each side stands alone, none of it taken for equal.
TEST(Alignment, AMiddleTooLargeIsRemovedAndAddedWhole) {
    EXPECT_EQ(aligned({'s', 'a', 'b', 'c', 'e'}, {'s', 'b', 'c', 'd', 'e'}, 8),
              "=0/0 -1 -2 -3 +1 +2 +3 =4/4 ");
    EXPECT_EQ(aligned({'s', 'a', 'b', 'c', 'e'}, {'s', 'b', 'c', 'd', 'e'}, 9),
              "=0/0 -1 =2/1 =3/2 +3 =4/4 ");
}

}  // namespace
