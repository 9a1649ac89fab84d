#include "util/FieldReaders.h"

#include <algorithm>
#include <string>

#include "util/ErrorBoundary.h"
#include "util/TextHelpers.h"

namespace VelkApi {

using detail::guarded;

namespace fields {

// A field holding a plain number converts without the error boundary (see text::plainInt).
int intField(const std::string& line, std::size_t pos, int defaultval) {
    int plain = 0;
    std::size_t used = 0;
    if (pos < line.size() &&
        text::plainInt(line.data() + pos, line.data() + line.size(), plain, used)) {
        return plain;
    }
    return guarded(0,
                   "Error in SectionDictionary::getIntFromLine(const string & line, int "
                   "defaultval)",
                   [&] {
                       if (pos == text::kNotFound) {
                           return defaultval;
                       }
                       int result = defaultval;
                       text::readInt(line, pos, result, defaultval);
                       return result;
                   });
}

double doubleField(const std::string& line, std::size_t pos, double defaultval) {
    // A ',' ends a plain number early; the field is then read with the ',' as a decimal point.
    double plain = 0.0;
    std::size_t used = 0;
    if (pos < line.size() &&
        text::plainDouble(line.data() + pos, line.data() + line.size(), plain, used) &&
        line[pos + used] != ',') {
        return plain;
    }
    const auto describe = [](const char* reason) {
        return std::string(
                   "Error in SectionDictionary::getDoubleFromLine((const string & line, double "
                   "defaultval) => ") +
               reason + " ";
    };
    return guarded(defaultval, describe, [&] {
        if (pos == text::kNotFound) {
            return defaultval;
        }
        // A ',' reads as a decimal point. A number never reaches past its field, so a field
        // without one converts in place and only one with a ',' is copied to be read.
        text::skipBlanks(line, pos);
        std::size_t end = pos;
        bool comma = false;
        while (end < line.size() && !text::isBlank(line[end])) {
            comma = comma || line[end] == ',';
            ++end;
        }
        double result = defaultval;
        if (!comma) {
            text::readDouble(line, pos, result, defaultval);
            return result;
        }
        std::string field = line.substr(pos, end - pos);
        std::replace(field.begin(), field.end(), ',', '.');
        std::size_t at = 0;
        text::readDouble(field, at, result, defaultval);
        return result;
    });
}

std::string stringField(const std::string& line, std::size_t pos, const std::string& defaultval) {
    return guarded(defaultval,
                   "Error in SectionDictionary::getStringFromLine((const string & line, double "
                   "defaultval)",
                   [&]() -> std::string {
                       if (pos == text::kNotFound) {
                           return defaultval;
                       }
                       std::string result;  // an unclosed quote leaves it empty
                       text::readToken(line, pos, result, defaultval);
                       return result;
                   });
}

}  // namespace fields

}  // namespace VelkApi
