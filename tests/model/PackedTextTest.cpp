// The compact text a section keeps each text value and default in.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "model/PackedText.h"

using VelkApi::detail::PackedText;

TEST(PackedText, AnEmptyTextHoldsNothingAndReadsEmpty) {
    const PackedText empty;
    EXPECT_EQ(empty.size(), 0u);
    EXPECT_EQ(empty.str(), "");
    EXPECT_STREQ(empty.data(), "");
    EXPECT_TRUE(empty == std::string());
}

TEST(PackedText, KeepsEveryByteOfAText) {
    const std::string bytes("a\0b\xff c", 6);
    const PackedText text(bytes);
    EXPECT_EQ(text.size(), 6u);
    EXPECT_EQ(text.str(), bytes);
    EXPECT_TRUE(text == bytes);
    EXPECT_TRUE(text != std::string("a"));
}

TEST(PackedText, ATextOfSevenBytesIsKeptInPlaceAndOneOfEightAllocated) {
    const PackedText seven(std::string("1234567"));
    const PackedText eight(std::string("12345678"));
    EXPECT_EQ(seven.str(), "1234567");
    EXPECT_EQ(eight.str(), "12345678");
    EXPECT_EQ(sizeof(PackedText), sizeof(char*));
}

TEST(PackedText, ATextOfAnotherLengthOrTheSameReplacesTheOld) {
    PackedText text(std::string("Drill 8.5 mm"));
    text = std::string("DR8.5");
    EXPECT_EQ(text.str(), "DR8.5");
    text = std::string("MILL1");
    EXPECT_EQ(text.str(), "MILL1");
    text = std::string("Finish contour");
    text = std::string("Rough contour!");
    EXPECT_EQ(text.str(), "Rough contour!");
    text = std::string("X");
    EXPECT_EQ(text.str(), "X");
    text = std::string();
    EXPECT_EQ(text.size(), 0u);
}

TEST(PackedText, CopiesAreTheirOwnAndMovesLeaveTheSourceEmpty) {
    PackedText original(std::string("Finish the outer contour"));
    PackedText copy(original);
    copy = std::string("Rough the pocket in five steps");
    EXPECT_EQ(original.str(), "Finish the outer contour");
    PackedText assigned;
    assigned = original;
    EXPECT_EQ(assigned.str(), "Finish the outer contour");
    PackedText moved(std::move(original));
    EXPECT_EQ(moved.str(), "Finish the outer contour");
    EXPECT_EQ(original.size(), 0u);  // a moved-from text is empty
    PackedText shortOne(std::string("DR8.5"));
    moved = std::move(shortOne);
    EXPECT_EQ(moved.str(), "DR8.5");
    EXPECT_EQ(shortOne.size(), 0u);
}
