// Reads what the library appended to its error log since the watch began.
#pragma once

#include <string>
#include <vector>

namespace testsupport {

class ErrorLogWatch {
  public:
    ErrorLogWatch();
    // Everything appended since construction, as text (every line ending in "\n").
    std::string appended() const;
    // The text of each appended error record, in order.
    std::vector<std::string> texts() const;

  private:
    std::string path;
    std::size_t startSize;
};

// A text file's content, its line ends read as "\n" whatever the platform wrote.
std::string fileContent(const std::string& path);

// The error record layout with its time stamp replaced by "<time>".
std::string withoutTimeStamps(const std::string& log);

}  // namespace testsupport
