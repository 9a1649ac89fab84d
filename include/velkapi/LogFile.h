/// \file
/// The process-wide error and trace logs, "<app data>/Velk/Dorvane_error.log" and
/// "<app data>/Velk/Dorvane_trace.log". Records are appended; the folder is never created, and a
/// log that cannot be written loses its text silently.
#pragma once

#include <fstream>
#include <string>

#include <velkapi/Export.h>

namespace VelkApi {

/// The library's error log and trace log.
class VELKAPI_EXPORT LogFile {
  public:
    /// The one log object, created (and both files opened) on first use; never destroyed.
    static LogFile& instance();

    /// The path of the error log.
    static std::string errorLogPath();
    /// The path of the trace log.
    static std::string traceLogPath();

    /// Written only at level 1.
    void trace(const std::string& text, bool framed);
    /// Written at levels 1 and 2.
    void error(const std::string& text);

    /// The level starts at 2 (errors only); 1 adds the trace log.
    int getLevel() const { return level; }
    /// Sets the level: 2 records errors only, 1 adds the trace log.
    void setLevel(int newLevel) { level = newLevel; }

    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

  private:
    LogFile();
    ~LogFile();

    std::ofstream errorStream;
    std::ofstream traceStream;
    bool traceEnabled = true;
    bool errorEnabled = true;
    int level = 2;
};

}  // namespace VelkApi
