// The text form of project files, written by the offline host when it saves a project and by the
// library when it writes a capture, so that a file of either reads back and saves again byte for
// byte:
//   - layout: an empty object or list is "{}" or "[]"; any other has each member or item on a
//     line of its own, indented two spaces a level, and its closing bracket on a line of its
//     own at its own level; a name is followed by ": ".
//   - texts: the host's bytes, each as its character of the host's code page (WindowsCodePage.h)
//     in UTF-8; '"' and '\' escaped, the controls \b \f \n \r \t as such and the other bytes
//     below 0x20 as \u00xx with lowercase hex digits.
//   - ints: as std::to_string writes them.
//   - doubles: the shortest digits that read back as the same double (std::to_chars), with a
//     decimal point or an exponent so that they read back as a double: fixed notation for
//     magnitudes from 1e-4 up to 1e15 ("0.001", "12.5", "100.0"), otherwise one digit before
//     the point and an exponent of at least two digits ("1e+20", "1.5e-07"). JSON has no form
//     for infinities and NaN: they are written as null.
//   - booleans: true, false.
// Standard C++ only.
#pragma once

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "WindowsCodePage.h"

namespace VelkApi::projectjson {

// Writes the text of one JSON value into `out`, member by member.
class Writer {
  public:
    explicit Writer(std::string& out) : document(out) {}

    // An object ('{') or a list ('['), closed with its closing bracket.
    void open(char bracket) {
        document += bracket;
        emptyContainers.push_back(true);
    }

    void close(char bracket) {
        const bool empty = emptyContainers.back();
        emptyContainers.pop_back();
        if (!empty) {
            document += '\n';
            document.append(2 * emptyContainers.size(), ' ');
        }
        document += bracket;
    }

    // The start of the next item of a list.
    void item() {
        document += emptyContainers.back() ? "\n" : ",\n";
        emptyContainers.back() = false;
        document.append(2 * emptyContainers.size(), ' ');
    }

    // The start of the next member of an object, named `name` (host bytes).
    void key(std::string_view name) {
        item();
        text(name);
        document += ": ";
    }

    // Runs of plain ASCII, most of a text, go in whole; other bytes one by one.
    void text(std::string_view bytes) {
        document += '"';
        std::size_t runStart = 0;
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            const auto code = static_cast<unsigned char>(bytes[at]);
            if (code >= 0x20 && code < 0x80 && code != '"' && code != '\\') {
                continue;
            }
            document.append(bytes, runStart, at - runStart);
            runStart = at + 1;
            if (code >= 0x80) {
                host::codepage::appendUtf8(host::codepage::characterOf(code), document);
            } else {
                escaped(bytes[at]);
            }
        }
        document.append(bytes, runStart, std::string_view::npos);
        document += '"';
    }

    void integer(int value) { document += std::to_string(value); }

    void number(double value) {
        if (!std::isfinite(value)) {
            document += "null";
            return;
        }
        char scientific[32];
        const auto written = std::to_chars(scientific, scientific + sizeof scientific, value,
                                           std::chars_format::scientific);
        std::string_view digits(scientific, static_cast<std::size_t>(written.ptr - scientific));
        if (digits[0] == '-') {
            document += '-';
            digits.remove_prefix(1);
        }
        // "d.ddde-XX": the digits without the point, and where the point goes.
        const std::size_t e = digits.find('e');
        const int exponent = std::atoi(std::string(digits.substr(e + 1)).c_str());
        std::string significant(digits.substr(0, 1));
        if (e > 1) {
            significant.append(digits.substr(2, e - 2));
        }
        const int length = static_cast<int>(significant.size());
        const int point = exponent + 1;  // digits before the decimal point
        if (point >= length && point <= 15) {
            document += significant;
            document.append(static_cast<std::size_t>(point - length), '0');
            document += ".0";
        } else if (point > 0 && point <= 15) {
            document.append(significant, 0, static_cast<std::size_t>(point));
            document += '.';
            document.append(significant, static_cast<std::size_t>(point), std::string::npos);
        } else if (point > -4 && point <= 0) {
            document += "0.";
            document.append(static_cast<std::size_t>(-point), '0');
            document += significant;
        } else {
            document += significant[0];
            if (length > 1) {
                document += '.';
                document.append(significant, 1, std::string::npos);
            }
            document += exponent < 0 ? "e-" : "e+";
            const int magnitude = std::abs(exponent);
            if (magnitude < 10) {
                document += '0';
            }
            document += std::to_string(magnitude);
        }
    }

    void boolean(bool value) { document += value ? "true" : "false"; }

  private:
    void escaped(char character) {
        switch (character) {
            case '"':
                document += "\\\"";
                return;
            case '\\':
                document += "\\\\";
                return;
            case '\b':
                document += "\\b";
                return;
            case '\f':
                document += "\\f";
                return;
            case '\n':
                document += "\\n";
                return;
            case '\r':
                document += "\\r";
                return;
            case '\t':
                document += "\\t";
                return;
            default:
                break;
        }
        static constexpr char kHexDigits[] = "0123456789abcdef";  // the other controls
        document += "\\u00";
        document += kHexDigits[character >> 4];
        document += kHexDigits[character & 0xF];
    }

    std::string& document;
    std::vector<bool> emptyContainers;  // one per open object or list, innermost last
};

}  // namespace VelkApi::projectjson
