#include "TypedValueChecks.h"

#include <charconv>
#include <cstdlib>

#include "Project.h"
#include "RecordDamage.h"

namespace velk {

namespace {

// The double as the record writes it: six significant digits.
double asRecorded(double value, std::string& text) {
    char buffer[64];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 6);
    text.assign(buffer, result.ptr);
    return std::strtod(text.c_str(), nullptr);
}

}  // namespace

void checkTypedText(const std::string& name, const std::string& text) {
    if (text.find_first_of("\r\n") != std::string::npos) {
        throw CommandError(name + ": a text of the record is one line: remove the line break");
    }
    if (text.find('\0') != std::string::npos) {
        throw CommandError(name + ": a text of the record cannot hold a NUL character");
    }
    if (text.size() > kHostLineBytes) {
        throw CommandError(name + ": the text has " + std::to_string(text.size()) +
                           " bytes, more than the host's line of " +
                           std::to_string(kHostLineBytes) + ": shorten it");
    }
}

void checkTypedDouble(const std::string& name, const std::string& typed, double value,
                      bool allowLoss) {
    std::string recorded;
    if (!allowLoss && asRecorded(value, recorded) != value) {
        throw CommandError(name + ": '" + typed +
                           "' has more than six significant digits, and the record keeps " +
                           recorded + ": give that, or --allow-loss to store it rounded");
    }
}

void checkReadBack(const std::string& name, const std::string& typed, const std::string& set,
                   const std::string& readBack) {
    if (set == readBack) {
        return;
    }
    const bool cutAtBlank =
        typed.find(' ') != std::string::npos && typed.compare(0, readBack.size(), readBack) == 0;
    throw CommandError(name + ": '" + typed + "' would read back from the record as '" + readBack +
                       "'" + (cutAtBlank ? " (a blank ends a text in this section)" : "") +
                       ": nothing is written");
}

}  // namespace velk
