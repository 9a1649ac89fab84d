#include <gtest/gtest.h>
#include <velkapi/LogFile.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "ErrorLog.h"
#include "TestEnvironment.h"

using testsupport::ErrorLogWatch;
using VelkApi::LogFile;

namespace {

std::string bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

const char kSeparator =
#ifdef _WIN32
    '\\';
#else
    '/';
#endif

}  // namespace

TEST(LogFile, FilesLieInTheVelkFolderOfTheAppDataFolder) {
    const std::string folder = testsupport::appDataFolder() + kSeparator + "Velk" + kSeparator;
    EXPECT_EQ(LogFile::errorLogPath(), folder + "Dorvane_error.log");
    EXPECT_EQ(LogFile::traceLogPath(), folder + "Dorvane_trace.log");
}

TEST(LogFile, ErrorRecordLayout) {
    ErrorLogWatch log;
    LogFile::instance().error("Error in Something => reason");
    const std::string record = log.appended();
    EXPECT_TRUE(std::regex_match(record, std::regex("\\*{18}\n"
                                                    "\\d{4}:\\d{2}:\\d{2} \\d{2}:\\d{2}:\\d{2}:\n"
                                                    "----\n"
                                                    "Error in Something => reason\n"
                                                    "x{19}\n")))
        << record;
}

TEST(LogFile, TimeStampIsTheLocalTime) {
    ErrorLogWatch log;
    const std::time_t before = std::time(nullptr);
    LogFile::instance().error("t");
    const std::time_t after = std::time(nullptr);
    std::smatch stamp;
    const std::string record = log.appended();
    ASSERT_TRUE(std::regex_search(record, stamp,
                                  std::regex("(\\d{4}):(\\d{2}):(\\d{2}) "
                                             "(\\d{2}):(\\d{2}):(\\d{2}):")));
    std::tm written{};
    written.tm_year = std::stoi(stamp[1]) - 1900;
    written.tm_mon = std::stoi(stamp[2]) - 1;
    written.tm_mday = std::stoi(stamp[3]);
    written.tm_hour = std::stoi(stamp[4]);
    written.tm_min = std::stoi(stamp[5]);
    written.tm_sec = std::stoi(stamp[6]);
    written.tm_isdst = -1;
    const std::time_t when = std::mktime(&written);
    EXPECT_GE(when, before - 1);
    EXPECT_LE(when, after + 1);
}

TEST(LogFile, TwoErrorsInOneSecondAreTwoCompleteRecords) {
    ErrorLogWatch log;
    LogFile::instance().error("first");
    LogFile::instance().error("second");
    const std::string records = testsupport::withoutTimeStamps(log.appended());
    const std::string expected =
        "******************\n<time>:\n----\nfirst\nxxxxxxxxxxxxxxxxxxx\n"
        "******************\n<time>:\n----\nsecond\nxxxxxxxxxxxxxxxxxxx\n";
    // The two stamps are equal unless a second boundary fell between the writes.
    EXPECT_EQ(records, expected);
}

// The logs are text files in the platform's own form, as an editor there expects them.
TEST(LogFile, LinesEndInCarriageReturnLineFeedOnWindows) {
#ifndef _WIN32
    GTEST_SKIP() << "Only Windows ends text lines in \\r\\n";
#else
    LogFile::instance().error("crlf");
    const std::string written = bytes(LogFile::errorLogPath());
    EXPECT_NE(written.find("\r\ncrlf\r\nxxxxxxxxxxxxxxxxxxx\r\n"), std::string::npos) << written;
#endif
}

TEST(LogFile, LinesEndInLineFeedOnPosix) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows ends text lines in \\r\\n";
#else
    LogFile::instance().error("lf");
    const std::string written = bytes(LogFile::errorLogPath());
    EXPECT_NE(written.find("\nlf\nxxxxxxxxxxxxxxxxxxx\n"), std::string::npos) << written;
    EXPECT_EQ(written.find('\r'), std::string::npos) << written;
#endif
}

TEST(LogFile, AppendsToEarlierContent) {
    LogFile::instance().error("one");
    const std::string first = testsupport::fileContent(LogFile::errorLogPath());
    LogFile::instance().error("two");
    const std::string both = testsupport::fileContent(LogFile::errorLogPath());
    EXPECT_EQ(both.substr(0, first.size()), first);
    EXPECT_GT(both.size(), first.size());
}

TEST(LogFile, TraceIsSilentAtTheInitialLevel) {
    LogFile& log = LogFile::instance();
    ASSERT_EQ(log.getLevel(), 2);
    log.trace("IslandsFigures X", true);
    log.trace("plain", false);
    EXPECT_EQ(testsupport::fileContent(LogFile::traceLogPath()), "");
}

TEST(LogFile, TraceRecordsAtLevelOne) {
    LogFile& log = LogFile::instance();
    const std::string before = testsupport::fileContent(LogFile::traceLogPath());
    log.setLevel(1);
    log.trace("framed text", true);
    log.trace("Error in ParameterSection - GetGlobalDoubleVar", false);
    log.setLevel(2);
    const std::string written =
        testsupport::fileContent(LogFile::traceLogPath()).substr(before.size());
    EXPECT_EQ(testsupport::withoutTimeStamps(written),
              "---------------\n<time>:\nframed text\n---------------\n"
              "Error in ParameterSection - GetGlobalDoubleVar\n");
}

TEST(LogFile, ErrorsAreWrittenAtLevelOneButNotThree) {
    LogFile& log = LogFile::instance();
    ErrorLogWatch watch;
    log.setLevel(3);
    log.error("hidden");
    log.setLevel(1);
    log.error("shown");
    log.setLevel(2);
    EXPECT_EQ(watch.texts(), std::vector<std::string>{"shown"});
}
