#include <gtest/gtest.h>

#include "ErrorLog.h"
#include "TestSection.h"
#include "util/TextHelpers.h"

using testsupport::ErrorLogWatch;
using Texts = std::vector<std::string>;

TEST(FieldReaders, IntFieldThatDoesNotConvertLogsAndGivesZero) {
    TestSection section;
    ErrorLogWatch log;
    EXPECT_EQ(section.getIntFromLine("12 abc 7", 1, 5), 0);
    EXPECT_EQ(log.texts(),
              Texts{"Error in SectionDictionary::getIntFromLine(const string & line, int "
                    "defaultval)"});
}

TEST(FieldReaders, IntFieldOutOfRangeLogsAndGivesZero) {
    TestSection section;
    ErrorLogWatch log;
    EXPECT_EQ(section.getIntFromLine("1 99999999999", 1, 5), 0);
    EXPECT_EQ(log.texts().size(), 1u);
}

TEST(FieldReaders, IntFieldBeyondTheLineGivesDefault) {
    TestSection section;
    EXPECT_EQ(section.getIntFromLine("12 34", 2, 5), 5);
    EXPECT_EQ(section.getIntFromLine("12 34 ", 2, 5), 5);
    EXPECT_EQ(section.getIntFromLine("12 34", 1, 5), 34);
    EXPECT_EQ(section.getIntFromLine("12 34", 0, 5), 12);
    EXPECT_EQ(section.getIntFromLine("", 0, 5), 5);
}

TEST(FieldReaders, DoubleFieldAcceptsCommaAsDecimalPoint) {
    TestSection section;
    EXPECT_EQ(section.getDoubleFromLine("1 2,5 3", 1, 9.0), 2.5);
    EXPECT_EQ(section.getDoubleFromLine("1 2,5 3", 3, 9.0), 9.0);
    EXPECT_EQ(section.getDoubleFromLine("\t1e+08\t", 0, 9.0), 1e8);
}

TEST(FieldReaders, DoubleFieldThatDoesNotConvertLogsAndGivesDefault) {
    TestSection section;
    ErrorLogWatch log;
    EXPECT_EQ(section.getDoubleFromLine("1 x 3", 1, 9.0), 9.0);
    EXPECT_EQ(log.texts(),
              Texts{"Error in SectionDictionary::getDoubleFromLine((const string & line, double "
                    "defaultval) => invalid stod argument "});
}

TEST(FieldReaders, StringFieldTakesQuotedText) {
    TestSection section;
    EXPECT_EQ(section.getStringFromLine("a 'b c' d", 1, "x"), "b c");
    EXPECT_EQ(section.getStringFromLine("a '' d", 1, "x"), "x");
    EXPECT_EQ(section.getStringFromLine("a 'b c", 1, "x"), "");
    EXPECT_EQ(section.getStringFromLine("a b", 2, "x"), "x");
    EXPECT_EQ(section.getStringFromLine("a b ", 2, "x"), "x");
}

TEST(FieldReaders, StringFieldKeepsCommas) {
    TestSection section;
    EXPECT_EQ(section.getStringFromLine("1 2,5", 1, "x"), "2,5");
}

TEST(FieldReaders, HighBitBytesAreNotWhiteSpace) {
    TestSection section;
    EXPECT_EQ(section.getStringFromLine("a \xA0\xE9z b", 1, "x"), "\xA0\xE9z");
    EXPECT_EQ(section.getStringFromLine("a\xA0z b", 1, "x"), "b");
}

TEST(LineFormat, UnsetDoubleIsWrittenShortAndNoLongerReadsAsUnset) {
    TestSection section;
    const std::string written = VelkApi::text::general6(2147483647.0);
    EXPECT_EQ(written, "2.14748e+09");
    const double back = section.getDoubleFromLine(written + " ", 0, 0.0);
    EXPECT_EQ(back, 2147480000.0);
    EXPECT_NE(back, VelkApi::kUnsetDouble);
}

TEST(LineFormat, ClearedAxisValueSurvivesTheRoundTrip) {
    TestSection section;
    const std::string written = VelkApi::text::general6(-999999.0);
    EXPECT_EQ(written, "-999999");
    EXPECT_EQ(section.getDoubleFromLine(written + " ", 0, 0.0), -999999.0);
}

TEST(LineFormat, DoublesUseTheShorterOfFixedAndExponentForms) {
    using VelkApi::text::general6;
    EXPECT_EQ(general6(0.42), "0.42");
    EXPECT_EQ(general6(1e8), "1e+08");
    EXPECT_EQ(general6(4.2), "4.2");
    EXPECT_EQ(general6(100000.0), "100000");
    EXPECT_EQ(general6(1234567.0), "1.23457e+06");
    EXPECT_EQ(general6(0.0001), "0.0001");
    EXPECT_EQ(general6(0.00001), "1e-05");
    EXPECT_EQ(general6(-0.5), "-0.5");
    EXPECT_EQ(general6(0.0), "0");
}
