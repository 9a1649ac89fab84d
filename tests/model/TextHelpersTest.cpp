#include <gtest/gtest.h>

#include <stdexcept>

#include "util/TextHelpers.h"

using namespace VelkApi::text;

TEST(FieldPosition, FindsFieldStarts) {
    EXPECT_EQ(fieldPosition("1 2 3", 2), 4u);
    EXPECT_EQ(fieldPosition("1 2 3", 3), kNotFound);
    EXPECT_EQ(fieldPosition("1 2 3 ", 3), 6u);
    EXPECT_EQ(fieldPosition("1 2 3", 0), 0u);
    EXPECT_EQ(fieldPosition("  1\t\t2", 1), 5u);
}

TEST(FieldCursor, FindsEveryFieldAsFieldPositionDoes) {
    const std::string line = "  1\t\t2 abc  -4,5 ";
    FieldCursor cursor(line);
    for (std::size_t n = 0; n <= 5; ++n) {
        EXPECT_EQ(cursor.position(n), fieldPosition(line, n)) << "field " << n;
    }
}

TEST(FieldCursor, ContinuesAfterSkippedFieldsAndStartsOverForALowerOne) {
    const std::string line = "10 20 30 40";
    FieldCursor cursor(line);
    EXPECT_EQ(cursor.position(2), 6u);
    EXPECT_EQ(cursor.position(2), 6u);
    EXPECT_EQ(cursor.position(3), 9u);
    EXPECT_EQ(cursor.position(1), 3u);
    EXPECT_EQ(cursor.position(0), 0u);
}

TEST(FieldCursor, AFieldBeyondTheLineIsNotFoundAndLeavesTheFieldsBefore) {
    const std::string line = "1 2";
    FieldCursor cursor(line);
    EXPECT_EQ(cursor.position(1), 2u);
    EXPECT_EQ(cursor.position(4), kNotFound);
    EXPECT_EQ(cursor.position(1), 2u);
    EXPECT_EQ(cursor.position(2), kNotFound);
}

TEST(ReadInt, BlankLineStoresDefault) {
    std::size_t pos = 0;
    int target = 0;
    EXPECT_EQ(readInt("   ", pos, target, 17), 0u);
    EXPECT_EQ(target, 17);
}

TEST(ReadInt, StopsAtFirstNonDigit) {
    std::size_t pos = 0;
    int target = 0;
    EXPECT_EQ(readInt("12abc", pos, target, 0), 2u);
    EXPECT_EQ(target, 12);
    EXPECT_EQ(pos, 2u);
}

TEST(ReadInt, SkipsBlanksAndTakesSign) {
    std::size_t pos = 1;
    int target = 0;
    EXPECT_EQ(readInt("x  -45 6", pos, target, 0), 3u);
    EXPECT_EQ(target, -45);
    EXPECT_EQ(pos, 6u);
}

TEST(ReadInt, NothingToConvertThrows) {
    std::size_t pos = 0;
    int target = 0;
    try {
        readInt("abc", pos, target, 0);
        FAIL();
    } catch (const std::invalid_argument& e) {
        EXPECT_STREQ(e.what(), "invalid stoi argument");
    }
}

TEST(ReadInt, OutOfRangeThrows) {
    std::size_t pos = 0;
    int target = 0;
    try {
        readInt("99999999999", pos, target, 0);
        FAIL();
    } catch (const std::out_of_range& e) {
        EXPECT_STREQ(e.what(), "stoi argument out of range");
    }
}

TEST(ToDouble, ConvertsAndReportsErrors) {
    double target = 0;
    EXPECT_EQ(toDouble("2.5x", target), 3u);
    EXPECT_EQ(target, 2.5);
    EXPECT_EQ(toDouble("", target), 0u);
    try {
        toDouble("x", target);
        FAIL();
    } catch (const std::invalid_argument& e) {
        EXPECT_STREQ(e.what(), "invalid stod argument");
    }
    try {
        toDouble("1e999", target);
        FAIL();
    } catch (const std::out_of_range& e) {
        EXPECT_STREQ(e.what(), "stod argument out of range");
    }
}

TEST(ReadByte, StoresOneDigitFlag) {
    std::size_t pos = 0;
    char flag = 9;
    EXPECT_EQ(readByte(" 1 3", pos, flag), 1u);
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(pos, 2u);
    pos = 4;
    EXPECT_EQ(readByte(" 1 3", pos, flag), 0u);
    EXPECT_EQ(flag, 0);
}

TEST(ReadDouble, ReadsAtPosition) {
    std::size_t pos = 2;
    double target = 0;
    EXPECT_EQ(readDouble("1 -2.5e1 x", pos, target, 0), 6u);
    EXPECT_EQ(pos, 8u);
    EXPECT_EQ(target, -25.0);
}

TEST(ReadToken, BareAndQuotedTokens) {
    std::size_t pos = 0;
    std::string target;
    EXPECT_EQ(readToken("  abc def", pos, target, "d"), 3u);
    EXPECT_EQ(target, "abc");
    EXPECT_EQ(pos, 5u);
    pos = 0;
    EXPECT_EQ(readToken("'b c' d", pos, target, "d"), 3u);
    EXPECT_EQ(target, "b c");
    EXPECT_EQ(pos, 5u);
}

TEST(ReadToken, EmptyAndUnclosedTokens) {
    std::size_t pos = 0;
    std::string target = "kept";
    EXPECT_EQ(readToken("'b c", pos, target, "d"), 0u);
    EXPECT_EQ(target, "kept");
    EXPECT_EQ(readToken("''", pos, target, "d"), 0u);
    EXPECT_EQ(target, "d");
    pos = 0;
    EXPECT_EQ(readToken("   ", pos, target, "e"), 0u);
    EXPECT_EQ(target, "e");
}

TEST(ReadNumberToken, SecondCommaStopsTheConversion) {
    std::size_t pos = 0;
    double target = 0;
    EXPECT_EQ(readNumberToken("1,5,2", pos, target, 9.0), 3u);
    EXPECT_EQ(target, 1.5);
    EXPECT_EQ(pos, 3u);
}

TEST(ReadNumberToken, CountsFromTheGivenPosition) {
    std::size_t pos = 1;
    double target = 0;
    EXPECT_EQ(readNumberToken("X  -2,5 Y", pos, target, 9.0), 6u);
    EXPECT_EQ(target, -2.5);
    EXPECT_EQ(pos, 7u);
}

TEST(ReadNumberToken, UpperCaseEEndsTheRun) {
    std::size_t pos = 0;
    double target = 0;
    EXPECT_EQ(readNumberToken("1E5", pos, target, 9.0), 1u);
    EXPECT_EQ(target, 1.0);
    pos = 0;
    EXPECT_EQ(readNumberToken("", pos, target, 9.0), 0u);
    EXPECT_EQ(target, 9.0);
    EXPECT_EQ(readNumberToken("abc", pos, target, 8.0), 0u);
    EXPECT_EQ(target, 8.0);
}

TEST(ReadAxisValues, ReadsLettersInAnyCase) {
    std::size_t pos = 0;
    double x = 7, y = 7, z = 7;
    EXPECT_TRUE(readAxisValues("x1 Z-3", pos, x, y, z));
    EXPECT_EQ(x, 1.0);
    EXPECT_EQ(y, 7.0);
    EXPECT_EQ(z, -3.0);
}

TEST(ReadAxisValues, OtherLetterGivesFalse) {
    std::size_t pos = 0;
    double x = 7, y = 7, z = 7;
    EXPECT_FALSE(readAxisValues("A1", pos, x, y, z));
    EXPECT_EQ(x, 7.0);
}

TEST(ReadAxisValues, CommaDecimalAndLastNumberWins) {
    std::size_t pos = 0;
    double x = 0, y = 0, z = 0;
    EXPECT_TRUE(readAxisValues("X10 Y-2,5 Z0 X4", pos, x, y, z));
    EXPECT_EQ(x, 4.0);
    EXPECT_EQ(y, -2.5);
    EXPECT_EQ(z, 0.0);
}

TEST(TrimNumber, ShortensFixedOutput) {
    EXPECT_EQ(trimNumber("2.500000"), "2.5");
    EXPECT_EQ(trimNumber("10.000000"), "10");
    EXPECT_EQ(trimNumber("-0.000000"), "0");
    EXPECT_EQ(trimNumber("0.000000"), "0");
    EXPECT_EQ(trimNumber("-0.250000"), "-0.25");
    EXPECT_EQ(trimNumber("100"), "1");
}

TEST(Fixed6, PrintsLikePercentF) {
    EXPECT_EQ(fixed6(0.1), "0.100000");
    EXPECT_EQ(fixed6(-999999.5), "-999999.500000");
    EXPECT_EQ(fixed6(1e10), "10000000000.000000");
    EXPECT_EQ(fixed6(-2.5), "-2.500000");
}

TEST(LowerCased, TurnsOnlyAToZ) {
    EXPECT_EQ(lowerCased("I_Type(3) AZ az"), "i_type(3) az az");
    EXPECT_EQ(lowerCased("\xC4\xD6-@[`{"), "\xC4\xD6-@[`{");
    EXPECT_EQ(lowerCased(""), "");
}
