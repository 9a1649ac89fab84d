#include "util/TextHelpers.h"

#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdlib>
#include <stdexcept>

namespace VelkApi::text {

void skipBlanks(const std::string& line, std::size_t& pos) {
    while (pos < line.size() && isBlank(line[pos])) {
        ++pos;
    }
}

namespace {

// The conversions work on the zero-terminated text from `begin`, as strtol and strtod do, so
// that a reader converts in place in its line without copying the rest of it.
long convertLong(const char* begin, std::size_t& used) {
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(begin, &end, 10);
    if (end == begin) {
        throw std::invalid_argument("invalid stoi argument");
    }
    if (errno == ERANGE || value < INT_MIN || value > INT_MAX) {
        throw std::out_of_range("stoi argument out of range");
    }
    used = static_cast<std::size_t>(end - begin);
    return value;
}

std::size_t intFrom(const char* begin, int& target) {
    std::size_t used = 0;
    target = static_cast<int>(convertLong(begin, used));
    return used;
}

std::size_t byteFrom(const char* begin, char& target) {
    std::size_t used = 0;
    target = static_cast<char>(convertLong(begin, used));
    return used;
}

std::size_t doubleFrom(const char* begin, double& target) {
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(begin, &end);
    if (end == begin) {
        throw std::invalid_argument("invalid stod argument");
    }
    if (errno == ERANGE) {
        throw std::out_of_range("stod argument out of range");
    }
    target = value;
    return static_cast<std::size_t>(end - begin);
}

}  // namespace

std::size_t toInt(const std::string& text, int& target) {
    return text.empty() ? 0 : intFrom(text.c_str(), target);
}

std::size_t toDouble(const std::string& text, double& target) {
    return text.empty() ? 0 : doubleFrom(text.c_str(), target);
}

std::size_t fieldPosition(const std::string& line, std::size_t n) {
    return FieldCursor(line).position(n);
}

std::size_t FieldCursor::position(std::size_t n) {
    if (n < field) {
        field = 0;
        start = 0;
    }
    std::size_t pos = start;
    for (std::size_t next = field; next < n; ++next) {
        skipBlanks(*line, pos);
        while (pos < line->size() && !isBlank((*line)[pos])) {
            ++pos;
        }
        if (pos >= line->size()) {
            return kNotFound;
        }
        skipBlanks(*line, pos);
    }
    field = n;
    start = pos;
    return pos;
}

namespace {

// Skips blanks, converts the rest of the line with `convert` and advances pos past it.
template <typename Target, typename Convert>
std::size_t readWith(const std::string& line, std::size_t& pos, Target& target, Target fallback,
                     Convert convert) {
    skipBlanks(line, pos);
    if (pos >= line.size()) {
        target = fallback;
        return 0;
    }
    const std::size_t used = convert(line.c_str() + pos, target);
    if (used == 0) {
        target = fallback;
        return 0;
    }
    pos += used;
    return used;
}

}  // namespace

std::size_t readInt(const std::string& line, std::size_t& pos, int& target, int fallback) {
    return readWith(line, pos, target, fallback, intFrom);
}

bool readIntIfAny(const std::string& line, std::size_t& pos, int& target) {
    std::size_t at = pos;
    int value = 0;
    try {
        if (readInt(line, at, value, 0) == 0) {
            return false;
        }
    } catch (const std::invalid_argument&) {
        return false;
    }
    pos = at;
    target = value;
    return true;
}

std::size_t readByte(const std::string& line, std::size_t& pos, char& target) {
    return readWith(line, pos, target, char{0}, byteFrom);
}

std::size_t readDouble(const std::string& line, std::size_t& pos, double& target, double fallback) {
    return readWith(line, pos, target, fallback, doubleFrom);
}

std::size_t readToken(const std::string& line, std::size_t& pos, std::string& target,
                      const std::string& fallback) {
    skipBlanks(line, pos);
    std::size_t begin = pos;
    std::size_t end = pos;
    std::size_t next = pos;
    if (pos < line.size() && line[pos] == '\'') {
        begin = pos + 1;
        end = line.find('\'', begin);
        if (end == std::string::npos) {
            return 0;
        }
        next = end + 1;
    } else {
        while (end < line.size() && !isBlank(line[end])) {
            ++end;
        }
        next = end;
    }
    if (end == begin) {
        target = fallback;
        return 0;
    }
    target = line.substr(begin, end - begin);
    pos = next;
    return end - begin;
}

std::size_t readNumberToken(const std::string& line, std::size_t& pos, double& target,
                            double fallback) {
    const std::size_t given = pos;
    std::size_t at = pos;
    skipBlanks(line, at);
    const std::size_t runEnd = line.find_first_not_of("0123456789+-.e,", at);
    std::string run = line.substr(at, (runEnd == std::string::npos ? line.size() : runEnd) - at);
    if (run.empty()) {
        target = fallback;
        return 0;
    }
    if (const std::size_t comma = run.find(','); comma != std::string::npos) {
        run[comma] = '.';
    }
    const std::size_t used = toDouble(run, target);
    pos = at + used;
    return pos - given;
}

bool readAxisValues(const std::string& line, std::size_t& pos, double& x, double& y, double& z) {
    skipBlanks(line, pos);
    bool anyRead = false;
    while (pos < line.size()) {
        const char axis = line[pos];
        double* target = nullptr;
        switch (axis) {
            case 'X':
            case 'x':
                target = &x;
                break;
            case 'Y':
            case 'y':
                target = &y;
                break;
            case 'Z':
            case 'z':
                target = &z;
                break;
            default:
                return anyRead;
        }
        ++pos;
        if (readNumberToken(line, pos, *target, 0.0) > 0) {
            anyRead = true;
        }
        skipBlanks(line, pos);
    }
    return anyRead;
}

std::string lowerCased(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return text;
}

std::string trimNumber(std::string number) {
    while (!number.empty() && number.back() == '0') {
        number.pop_back();
    }
    if (!number.empty() && number.back() == '.') {
        while (!number.empty() && number.back() == '.') {
            number.pop_back();
        }
    }
    return number == "-0" ? "0" : number;
}

namespace {

std::string printNumber(double value, std::chars_format format, int precision = 6) {
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, format, precision);
    return std::string(buffer, result.ptr);
}

}  // namespace

std::string general6(double value) {
    return printNumber(value, std::chars_format::general);
}

std::string fixed6(double value) {
    return printNumber(value, std::chars_format::fixed);
}

std::string fixed1(double value) {
    return printNumber(value, std::chars_format::fixed, 1);
}

}  // namespace VelkApi::text
