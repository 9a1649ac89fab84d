#include <gtest/gtest.h>

#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

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

TEST(AppendShortFixed6, AppendsTheTrimmedFixedForm) {
    for (const double value : {2.5, 10.0, -0.0, 0.0, -0.25, -0.0000001, 1e10, 120.000001, -7.0}) {
        std::string line = "X";
        appendShortFixed6(line, value);
        EXPECT_EQ(line, "X" + trimNumber(fixed6(value))) << value;
    }
    std::string line;
    appendShortFixed6(line, -0.0000001);
    EXPECT_EQ(line, "0");
}

TEST(LowerCased, TurnsOnlyAToZ) {
    EXPECT_EQ(lowerCased("I_Type(3) AZ az"), "i_type(3) az az");
    EXPECT_EQ(lowerCased("\xC4\xD6-@[`{"), "\xC4\xD6-@[`{");
    EXPECT_EQ(lowerCased(""), "");
}

namespace {

// What the C runtime makes of a text: its value (as bits, so that -0 and NaN compare) and the
// characters it took, or the name of the error the readers throw.
struct Reading {
    std::string outcome;
    std::size_t used = 0;
    bool operator==(const Reading& other) const {
        return outcome == other.outcome && used == other.used;
    }
};

std::ostream& operator<<(std::ostream& out, const Reading& reading) {
    return out << reading.outcome << " after " << reading.used;
}

std::string bitsOf(double value) {
    unsigned long long bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return std::to_string(bits);
}

Reading strtodReading(const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(text.c_str(), &end);
    if (end == text.c_str()) {
        return {"invalid", 0};
    }
    if (errno == ERANGE) {
        return {"out of range", 0};
    }
    return {bitsOf(value), static_cast<std::size_t>(end - text.c_str())};
}

Reading strtolReading(const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(text.c_str(), &end, 10);
    if (end == text.c_str()) {
        return {"invalid", 0};
    }
    if (errno == ERANGE || value < INT_MIN || value > INT_MAX) {
        return {"out of range", 0};
    }
    return {std::to_string(value), static_cast<std::size_t>(end - text.c_str())};
}

template <typename Read>
Reading libraryReading(Read read) {
    try {
        return read();
    } catch (const std::invalid_argument&) {
        return {"invalid", 0};
    } catch (const std::out_of_range&) {
        return {"out of range", 0};
    }
}

Reading doubleReading(const std::string& text) {
    return libraryReading([&] {
        double value = 0.0;
        const std::size_t used = toDouble(text, value);
        return Reading{bitsOf(value), used};
    });
}

Reading intReading(const std::string& text) {
    return libraryReading([&] {
        int value = 0;
        const std::size_t used = toInt(text, value);
        return Reading{std::to_string(value), used};
    });
}

// Texts at every edge of the conversions: signs and blanks first, hexadecimal, infinities and
// NaN, results too large, too small and subnormal, exponents without digits, commas.
const std::vector<std::string> kEdgeTexts = {
    "0",
    "-0",
    "+5",
    " 7",
    "\t-3",
    "-",
    ".",
    "-.",
    ".5",
    "-.5",
    "5.",
    "1e",
    "1e+",
    "1E-2x",
    "0x1A",
    "-0x1p3",
    "0X10",
    "00x5",
    "inf",
    "-inf",
    "infinity",
    "nan",
    "-nan",
    "nan(1)",
    "1e400",
    "-1e400",
    "1e-400",
    "4.9e-324",
    "2.2250738585072011e-308",
    "2.2250738585072014e-308",
    "0e999999999999",
    "0.000e-999",
    "1,5",
    "12abc",
    "2147483647",
    "2147483648",
    "-2147483648",
    "-2147483649",
    "99999999999999999999",
    "2.14748e+09",
    "1.7976931348623157e308",
    "1.7976931348623159e308",
    "2.14748e+091",
    "2.14748e+09x",
    "2.14748e+0",
    "0.1000000000000000055511151231257827021181583404541015625"};

}  // namespace

TEST(ToDouble, ReadsEveryTextAsStrtodDoes) {
    for (const std::string& text : kEdgeTexts) {
        EXPECT_EQ(doubleReading(text), strtodReading(text)) << text;
    }
    std::mt19937_64 random(20261125);
    std::uniform_int_distribution<int> exponent(-330, 330);
    std::uniform_int_distribution<int> digitCount(1, 20);
    std::uniform_int_distribution<int> digit(0, 9);
    for (int i = 0; i < 20000; ++i) {
        std::string text = i % 2 == 0 ? "" : "-";
        const int digits = digitCount(random);
        for (int d = 0; d < digits; ++d) {
            text += static_cast<char>('0' + digit(random));
            if (d == digits / 3) {
                text += '.';
            }
        }
        if (i % 3 != 0) {
            text += "e" + std::to_string(exponent(random));
        }
        EXPECT_EQ(doubleReading(text), strtodReading(text)) << text;
    }
}

TEST(ToInt, ReadsEveryTextAsStrtolDoes) {
    for (const std::string& text : kEdgeTexts) {
        EXPECT_EQ(intReading(text), strtolReading(text)) << text;
    }
}

TEST(ReadDouble, ACommaAfterTheDigitsEndsTheNumber) {
    std::size_t pos = 0;
    double target = 0;
    EXPECT_EQ(readDouble("1,5 2", pos, target, 0), 1u);
    EXPECT_EQ(target, 1.0);
}

namespace {

// "%g" as printf writes it in the "C" locale: std::to_chars with six digits of precision.
std::string percentG(double value) {
    char buffer[64];
    return std::string(
        buffer,
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 6).ptr);
}

}  // namespace

// Beside LineFormat.DoublesUseTheShorterOfFixedAndExponentForms: the values each way of printing
// takes, whole numbers, at most six digits, more, and those at its edges.
TEST(General6, PrintsLikePercentG) {
    EXPECT_EQ(general6(2147480000.0), "2.14748e+09");
    EXPECT_EQ(general6(2147483647.0), "2.14748e+09");
    EXPECT_EQ(general6(-0.0), "-0");
    EXPECT_EQ(general6(12.5), "12.5");
    EXPECT_EQ(general6(-0.15), "-0.15");
    EXPECT_EQ(general6(-999999.0), "-999999");
    EXPECT_EQ(general6(1e6), "1e+06");
    EXPECT_EQ(general6(999999.5), "1e+06");
    EXPECT_EQ(general6(123456.7), "123457");
    EXPECT_EQ(general6(1200.0), "1200");
    EXPECT_EQ(general6(120000.5), "120000");
    EXPECT_EQ(general6(0.00012), "0.00012");
    EXPECT_EQ(general6(1.5e-7), "1.5e-07");
    EXPECT_EQ(general6(3.14159265), "3.14159");
    EXPECT_EQ(general6(1e300), "1e+300");
    EXPECT_EQ(general6(-1.25e-300), "-1.25e-300");
    EXPECT_EQ(general6(5e-324), "4.94066e-324");
    EXPECT_EQ(general6(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(general6(-std::numeric_limits<double>::infinity()), "-inf");
}

TEST(General6, AgreesWithTheGeneralConversionOnRandomValues) {
    std::mt19937_64 random(20261125);
    std::uniform_int_distribution<long long> mantissa(0, 99999999);
    std::uniform_int_distribution<int> scale(-12, 12);
    for (int i = 0; i < 100000; ++i) {
        // A value of a few decimal digits, as section lines hold them, and any double at all.
        const double decimal =
            static_cast<double>(mantissa(random)) * std::pow(10.0, scale(random));
        EXPECT_EQ(general6(decimal), percentG(decimal)) << decimal;
        EXPECT_EQ(general6(-decimal), percentG(-decimal)) << decimal;
        unsigned long long bits = random();
        double any = 0.0;
        std::memcpy(&any, &bits, sizeof any);
        if (!std::isnan(any)) {
            EXPECT_EQ(general6(any), percentG(any)) << bits;
        }
    }
}
