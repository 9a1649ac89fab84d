#include "ErrorLog.h"

#include <velkapi/LogFile.h>

#include <fstream>
#include <regex>
#include <sstream>

namespace testsupport {

// Read as text: the log's lines end in "\r\n" on Windows and in "\n" elsewhere, and come back
// ending in "\n" on both.
std::string fileContent(const std::string& path) {
    std::ifstream in(path);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

ErrorLogWatch::ErrorLogWatch()
    : path(VelkApi::LogFile::errorLogPath()), startSize(fileContent(path).size()) {}

std::string ErrorLogWatch::appended() const {
    return fileContent(path).substr(startSize);
}

std::vector<std::string> ErrorLogWatch::texts() const {
    // Each record is five lines; its text is the fourth.
    std::vector<std::string> lines;
    std::istringstream in(appended());
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    std::vector<std::string> result;
    for (std::size_t i = 3; i < lines.size(); i += 5) {
        result.push_back(lines[i]);
    }
    return result;
}

std::string withoutTimeStamps(const std::string& log) {
    static const std::regex stamp(R"(\d{4}:\d{2}:\d{2} \d{2}:\d{2}:\d{2}:)");
    return std::regex_replace(log, stamp, "<time>:");
}

}  // namespace testsupport
