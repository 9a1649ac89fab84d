#include "util/TextHelpers.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace VelkApi::text {

void skipBlanks(const std::string& line, std::size_t& pos) {
    while (pos < line.size() && isBlank(line[pos])) {
        ++pos;
    }
}

namespace {

// The "not set" marker of a double (2147483647) as records hold it after one write: the number
// section lines hold most often, printed and read without a conversion.
constexpr char kUnsetMarkerText[] = "2.14748e+09";
constexpr std::size_t kUnsetMarkerLength = sizeof kUnsetMarkerText - 1;
constexpr double kUnsetMarkerRead = 2147480000.0;
constexpr double kUnsetMarker = 2147483647.0;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// std::from_chars reads a number as the C runtime does in the "C" locale, several times faster,
// but takes no blanks or '+' first and no hexadecimal.
bool startsPlainly(const char* begin, const char* end) {
    return begin < end && (isDigit(*begin) || *begin == '-' || *begin == '.');
}

// A zero from digits that are all zero; any other digit before the exponent means the number
// was too small for a double, which strtod reports as out of range.
bool zeroDigitsOnly(const char* begin, const char* stop) {
    for (const char* at = begin; at < stop && *at != 'e' && *at != 'E'; ++at) {
        if (*at >= '1' && *at <= '9') {
            return false;
        }
    }
    return true;
}

}  // namespace

bool plainInt(const char* begin, const char* end, int& target, std::size_t& used) {
    if (!startsPlainly(begin, end)) {
        return false;
    }
    long long value = 0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (error != std::errc{} || value < INT_MIN || value > INT_MAX) {
        return false;
    }
    target = static_cast<int>(value);
    used = static_cast<std::size_t>(stop - begin);
    return true;
}

bool plainDouble(const char* begin, const char* end, double& target, std::size_t& used) {
    if (!startsPlainly(begin, end)) {
        return false;
    }
    if (static_cast<std::size_t>(end - begin) >= kUnsetMarkerLength &&
        std::memcmp(begin, kUnsetMarkerText, kUnsetMarkerLength) == 0 &&
        (end - begin == kUnsetMarkerLength || !isDigit(begin[kUnsetMarkerLength]))) {
        target = kUnsetMarkerRead;
        used = kUnsetMarkerLength;
        return true;
    }
    double value = 0.0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    const bool hexadecimal = stop < end && (*stop == 'x' || *stop == 'X');
    if (error != std::errc{} || hexadecimal ||
        !(std::isnormal(value) || (value == 0.0 && zeroDigitsOnly(begin, stop)))) {
        return false;
    }
    target = value;
    used = static_cast<std::size_t>(stop - begin);
    return true;
}

namespace {

// The conversions read the text from `begin` up to `end`, where a zero byte follows, as strtol
// and strtod do, so that a reader converts in place in its line without copying the rest of it.
// A plain number converts first (see plainInt and plainDouble); strtol and strtod take the rest.
long convertLong(const char* begin, const char* end, std::size_t& used) {
    int plain = 0;
    if (plainInt(begin, end, plain, used)) {
        return plain;
    }
    char* stop = nullptr;
    errno = 0;
    const long value = std::strtol(begin, &stop, 10);
    if (stop == begin) {
        throw std::invalid_argument("invalid stoi argument");
    }
    if (errno == ERANGE || value < INT_MIN || value > INT_MAX) {
        throw std::out_of_range("stoi argument out of range");
    }
    used = static_cast<std::size_t>(stop - begin);
    return value;
}

std::size_t intFrom(const char* begin, const char* end, int& target) {
    std::size_t used = 0;
    target = static_cast<int>(convertLong(begin, end, used));
    return used;
}

std::size_t byteFrom(const char* begin, const char* end, char& target) {
    std::size_t used = 0;
    target = static_cast<char>(convertLong(begin, end, used));
    return used;
}

std::size_t doubleFrom(const char* begin, const char* end, double& target) {
    std::size_t used = 0;
    if (plainDouble(begin, end, target, used)) {
        return used;
    }
    char* stop = nullptr;
    errno = 0;
    const double value = std::strtod(begin, &stop);
    if (stop == begin) {
        throw std::invalid_argument("invalid stod argument");
    }
    if (errno == ERANGE) {
        throw std::out_of_range("stod argument out of range");
    }
    target = value;
    return static_cast<std::size_t>(stop - begin);
}

}  // namespace

std::size_t toInt(const std::string& text, int& target) {
    return text.empty() ? 0 : intFrom(text.c_str(), text.c_str() + text.size(), target);
}

std::size_t toDouble(const std::string& text, double& target) {
    return text.empty() ? 0 : doubleFrom(text.c_str(), text.c_str() + text.size(), target);
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
    const std::size_t used = convert(line.c_str() + pos, line.c_str() + line.size(), target);
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

namespace {

// The end of a "%f" text from begin to end without its fraction's trailing zeros and its point:
// "2.500000" ends after "2.5", "10.000000" after "10".
const char* trimmedEnd(const char* begin, const char* end) {
    while (end > begin && end[-1] == '0') {
        --end;
    }
    while (end > begin && end[-1] == '.') {
        --end;
    }
    return end;
}

bool isMinusZero(const char* begin, const char* end) {
    return end - begin == 2 && begin[0] == '-' && begin[1] == '0';
}

}  // namespace

std::string trimNumber(std::string number) {
    const char* begin = number.data();
    const char* end = trimmedEnd(begin, begin + number.size());
    if (isMinusZero(begin, end)) {
        return "0";
    }
    number.resize(static_cast<std::size_t>(end - begin));
    return number;
}

namespace {

std::string printNumber(double value, std::chars_format format, int precision = 6) {
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, format, precision);
    return std::string(buffer, result.ptr);
}

}  // namespace

namespace {

// "%g" of a value whose shortest digits that read back as it are at most six: those digits are
// what rounding to six significant digits gives, so the general conversion is not needed; they
// are laid out as "%g" lays them out. 0 for a value of more digits. For a normal value only: the
// shortest digits of a subnormal one can lie farther from it than the sixth digit.
std::size_t generalFromShortest(double value, char (&buffer)[kGeneral6Size]) {
    char scientific[32];  // "-d.dddddddddddddddde-308"
    const char* const end = std::to_chars(scientific, scientific + sizeof scientific, value,
                                          std::chars_format::scientific)
                                .ptr;
    const char* at = scientific;
    const bool negative = *at == '-';
    at += negative ? 1 : 0;
    char digits[17];
    std::size_t count = 0;
    for (; at < end && *at != 'e'; ++at) {
        if (*at == '.') {
            continue;
        }
        if (*at < '0' || *at > '9' || count == 6) {
            return 0;  // more than six digits, or not a number
        }
        digits[count++] = *at;
    }
    int exponent = 0;
    if (at == end || std::from_chars(at + 1 + (at[1] == '+'), end, exponent).ec != std::errc{}) {
        return 0;
    }
    if (exponent < -4 || exponent >= 6) {  // "%g" keeps the scientific form, two exponent digits
        std::copy(static_cast<const char*>(scientific), end, buffer);
        return static_cast<std::size_t>(end - scientific);
    }
    char* out = buffer;
    if (negative) {
        *out++ = '-';
    }
    if (exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        out = std::fill_n(out, -exponent - 1, '0');
        return static_cast<std::size_t>(std::copy(digits, digits + count, out) - buffer);
    }
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    for (std::size_t i = 0; i < whole; ++i) {
        *out++ = i < count ? digits[i] : '0';
    }
    if (count > whole) {
        *out++ = '.';
        out = std::copy(digits + whole, digits + count, out);
    }
    return static_cast<std::size_t>(out - buffer);
}

}  // namespace

std::size_t printGeneral6(double value, char (&buffer)[kGeneral6Size]) {
    if (value == kUnsetMarker || value == kUnsetMarkerRead) {
        std::copy(kUnsetMarkerText, kUnsetMarkerText + kUnsetMarkerLength, buffer);
        return kUnsetMarkerLength;
    }
    // A whole number of at most six digits is printed as it stands, which "%g" does too; an
    // integer conversion makes it several times faster than the general one.
    if (value > -1e6 && value < 1e6 && value == static_cast<double>(static_cast<int>(value)) &&
        !(value == 0.0 && std::signbit(value))) {
        return static_cast<std::size_t>(
            std::to_chars(buffer, buffer + kGeneral6Size, static_cast<int>(value)).ptr - buffer);
    }
    if (std::isnormal(value)) {  // a subnormal's shortest digits can be far from its value
        if (const std::size_t length = generalFromShortest(value, buffer)) {
            return length;
        }
    }
    return static_cast<std::size_t>(
        std::to_chars(buffer, buffer + kGeneral6Size, value, std::chars_format::general, 6).ptr -
        buffer);
}

void appendGeneral6(std::string& line, double value) {
    char buffer[kGeneral6Size];
    line.append(buffer, printGeneral6(value, buffer));
}

void appendInt(std::string& line, int value) {
    char buffer[16];
    line.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

std::string general6(double value) {
    char buffer[kGeneral6Size];
    return std::string(buffer, printGeneral6(value, buffer));
}

void appendShortFixed6(std::string& line, double value) {
    char buffer[400];
    const char* end = trimmedEnd(
        buffer,
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 6).ptr);
    if (isMinusZero(buffer, end)) {
        line += '0';
        return;
    }
    line.append(static_cast<const char*>(buffer), end);
}

std::string fixed6(double value) {
    return printNumber(value, std::chars_format::fixed);
}

std::string fixed1(double value) {
    return printNumber(value, std::chars_format::fixed, 1);
}

}  // namespace VelkApi::text
