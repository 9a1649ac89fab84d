// Readers and printers shared by every parser of record text.
//
// Rules:
//  - A line is read from a position that the reader advances. White space is the C runtime's
//    isspace set below 0x80; a byte with the high bit set, or a zero byte, is never white space.
//  - Integers convert like strtol (base 10), doubles like strtod; a plain number through
//    std::from_chars, which reads it alike, anything else through them. A conversion that takes no
//    character throws std::invalid_argument ("invalid stoi argument" / "invalid stod argument");
//    a value out of range throws std::out_of_range ("stoi argument out of range" /
//    "stod argument out of range"). The readers let these pass; nothing else throws.
//  - Numbers are printed with std::to_chars so that every platform prints the same bytes:
//    general6 is "%g" (six significant digits), fixed6 is "%f".
#pragma once

#include <cstddef>
#include <string>

namespace VelkApi::text {

constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

// The C runtime's isspace set of the "C" locale, which every locale shares below 0x80: blank,
// tab, line feed, vertical tab, form feed, carriage return. Inline, for the field scans.
inline bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
void skipBlanks(const std::string& line, std::size_t& pos);

// A number from `begin` that std::from_chars reads as strtol or strtod would (in range, no
// blanks or '+' first, not hexadecimal, no infinity or NaN, a double neither too small nor
// subnormal): true, with the value and the characters taken. False for anything else, which
// the readers below take to the C runtime.
bool plainInt(const char* begin, const char* end, int& target, std::size_t& used);
bool plainDouble(const char* begin, const char* end, double& target, std::size_t& used);

// Characters converted; an empty text converts nothing and leaves the target alone.
std::size_t toInt(const std::string& text, int& target);
std::size_t toDouble(const std::string& text, double& target);

// Start of field n (0-based, fields separated by white space), or kNotFound.
std::size_t fieldPosition(const std::string& line, std::size_t n);

// The fields of one line, found in a single pass by readers that take them in ascending order:
// each position continues from the field asked for before; a lower field starts over.
class FieldCursor {
  public:
    explicit FieldCursor(const std::string& text) : line(&text) {}
    // As fieldPosition(line, n).
    std::size_t position(std::size_t n);

  private:
    const std::string* line;
    std::size_t field = 0;
    std::size_t start = 0;  // of `field`
};

std::size_t readInt(const std::string& line, std::size_t& pos, int& target, int fallback);
// An integer at pos: true when one converts there; otherwise false, and pos and target stay.
// A number out of range still throws.
bool readIntIfAny(const std::string& line, std::size_t& pos, int& target);
std::size_t readByte(const std::string& line, std::size_t& pos, char& target);
std::size_t readDouble(const std::string& line, std::size_t& pos, double& target, double fallback);
// A bare run of non-blank characters, or a text in single quotes that may hold blanks.
std::size_t readToken(const std::string& line, std::size_t& pos, std::string& target,
                      const std::string& fallback);
// The longest run of "0123456789+-.e,", its first comma read as a decimal point.
std::size_t readNumberToken(const std::string& line, std::size_t& pos, double& target,
                            double fallback);
// Coordinates such as "X10 Y-2,5 Z0"; true when at least one number was read.
bool readAxisValues(const std::string& line, std::size_t& pos, double& x, double& y, double& z);

// Entry keys are matched without regard to case: A to Z read as a to z (as tolower does in the
// "C" locale), whatever locale the host process has set.
std::string lowerCased(std::string text);

// Shortens "%f" output: "2.500000" -> "2.5", "10.000000" -> "10", "-0.000000" -> "0".
std::string trimNumber(std::string number);

std::string general6(double value);  // "%g"
// "%g" into a buffer, for writers that build a line in place: its length.
constexpr std::size_t kGeneral6Size = 16;  // "-1.23457e-308" and a spare
std::size_t printGeneral6(double value, char (&buffer)[kGeneral6Size]);
void appendGeneral6(std::string& line, double value);
void appendInt(std::string& line, int value);
std::string fixed6(double value);  // "%f"
// trimNumber(fixed6(value)) appended to `line`, without the texts in between.
void appendShortFixed6(std::string& line, double value);
std::string fixed1(double value);  // "%.1f"

}  // namespace VelkApi::text
