#include <velkapi/LogFile.h>

#include <ctime>

#include "platform/Platform.h"

namespace VelkApi {

namespace {

std::string logPath(const char* suffix) {
    const char separator = platform::pathSeparator();
    return platform::appDataFolder() + separator + "Velk" + separator + "Dorvane" + suffix;
}

// "2024:03:07 14:05:09"
std::string timeStamp() {
    const std::tm now = platform::localTime();
    char text[32];
    const std::size_t length = std::strftime(text, sizeof text, "%Y:%m:%d %H:%M:%S", &now);
    return std::string(text, length);
}

}  // namespace

LogFile& LogFile::instance() {
    static LogFile* const log = new LogFile();
    return *log;
}

std::string LogFile::errorLogPath() {
    return logPath("_error.log");
}

std::string LogFile::traceLogPath() {
    return logPath("_trace.log");
}

LogFile::LogFile()
    : errorStream(errorLogPath(), std::ios::out | std::ios::app),
      traceStream(traceLogPath(), std::ios::out | std::ios::app) {}

LogFile::~LogFile() = default;

void LogFile::trace(const std::string& text, bool framed) {
    if (!traceEnabled || level != 1) {
        return;
    }
    if (framed) {
        traceStream << "---------------" << std::endl << timeStamp() << ":" << std::endl;
    }
    traceStream << text << std::endl;
    if (framed) {
        traceStream << "---------------" << std::endl;
    }
    traceStream.flush();
}

void LogFile::error(const std::string& text) {
    if (!errorEnabled || (level != 1 && level != 2)) {
        return;
    }
    errorStream << "******************" << std::endl
                << timeStamp() << ":" << std::endl
                << "----" << std::endl
                << text << std::endl
                << "xxxxxxxxxxxxxxxxxxx" << std::endl;
    errorStream.flush();
}

}  // namespace VelkApi
