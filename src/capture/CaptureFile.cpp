// Writes a capture in the offline host's project format, laid out as the offline host saves a
// project (two-space indent, names in byte order, numbers in ascending order, numbers written in
// their shortest exact form), so that loading and saving a capture leaves it as it is.
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "WindowsCodePage.h"
#include "capture/CaptureSession.h"

namespace VelkApi::host::capture {

namespace {

using Members = std::vector<std::pair<std::string, std::string>>;

std::string indent(int depth) {
    return std::string(static_cast<std::size_t>(depth) * 2, ' ');
}

// A text of the host as a JSON string: its bytes as Windows-1252 characters in UTF-8.
std::string quoted(const std::string& hostText) {
    std::string json = "\"";
    for (const char c : codepage::toUtf8(hostText)) {
        switch (c) {
        case '"': json += "\\\""; break;
        case '\\': json += "\\\\"; break;
        case '\b': json += "\\b"; break;
        case '\f': json += "\\f"; break;
        case '\n': json += "\\n"; break;
        case '\r': json += "\\r"; break;
        case '\t': json += "\\t"; break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
                json += escaped;
            } else {
                json += c;
            }
        }
    }
    return json + "\"";
}

// The shortest digits that read back as `value`, laid out as a JSON number with a decimal
// point or an exponent (so that it reads back as a floating-point number): fixed notation for
// magnitudes from 1e-4 up to 1e15, "d.ddde+XX" beyond. JSON has no infinities or NaN: they are
// written as 0.0.
std::string number(double value) {
    if (!std::isfinite(value)) {
        value = 0.0;
    }
    char scientific[32];
    const auto written = std::to_chars(scientific, scientific + sizeof scientific, value,
                                       std::chars_format::scientific);
    std::string text(scientific, written.ptr);
    std::string sign;
    if (text[0] == '-') {
        sign = "-";
        text.erase(0, 1);
    }
    const std::size_t e = text.find('e');
    const int exponent = std::stoi(text.substr(e + 1));
    std::string digits = text.substr(0, e);
    if (digits.size() > 1) {
        digits.erase(1, 1);  // the decimal point
    }
    const int length = static_cast<int>(digits.size());
    const int point = exponent + 1;  // digits before the decimal point
    if (point >= length && point <= 15) {
        return sign + digits + std::string(static_cast<std::size_t>(point - length), '0') + ".0";
    }
    if (point > 0 && point <= 15) {
        return sign + digits.substr(0, static_cast<std::size_t>(point)) + "." +
               digits.substr(static_cast<std::size_t>(point));
    }
    if (point > -4 && point <= 0) {
        return sign + "0." + std::string(static_cast<std::size_t>(-point), '0') + digits;
    }
    char exponentText[16];
    std::snprintf(exponentText, sizeof exponentText, "e%c%02d", exponent < 0 ? '-' : '+',
                  std::abs(exponent));
    const std::string mantissa = length > 1 ? digits.substr(0, 1) + "." + digits.substr(1) : digits;
    return sign + mantissa + exponentText;
}

std::string number(int value) {
    return std::to_string(value);
}

std::string boolean(bool value) {
    return value ? "true" : "false";
}

// A list of values already written for `depth` + 1.
std::string list(const std::vector<std::string>& items, int depth) {
    if (items.empty()) {
        return "[]";
    }
    std::string json = "[";
    for (std::size_t i = 0; i < items.size(); ++i) {
        json += (i == 0 ? "\n" : ",\n") + indent(depth + 1) + items[i];
    }
    return json + "\n" + indent(depth) + "]";
}

std::string object(const Members& members, int depth) {
    if (members.empty()) {
        return "{}";
    }
    std::string json = "{";
    for (std::size_t i = 0; i < members.size(); ++i) {
        json += (i == 0 ? "\n" : ",\n") + indent(depth + 1) + quoted(members[i].first) + ": " +
                members[i].second;
    }
    return json + "\n" + indent(depth) + "}";
}

template <typename Number>
std::string arrayJson(const std::map<int, Number>& elements, int depth) {
    std::vector<std::string> items;
    for (const auto& [index, value] : elements) {
        items.resize(static_cast<std::size_t>(index - 1), number(Number()));
        items.push_back(number(value));
    }
    return list(items, depth);
}

std::string globalJson(const CapturedGlobal& global, int depth) {
    switch (global.index()) {
    case 0: return number(std::get<int>(global));
    case 1: return number(std::get<double>(global));
    case 2: return quoted(std::get<std::string>(global));
    case 3: return arrayJson(std::get<std::map<int, int>>(global), depth);
    default: return arrayJson(std::get<std::map<int, double>>(global), depth);
    }
}

std::string environmentJson(const CaptureSession& session) {
    Members members;
    for (const auto& [name, text] : session.environment) {
        members.emplace_back(name, quoted(text));
    }
    return object(members, 1);
}

std::string globalsJson(const CaptureSession& session) {
    Members members;
    for (const auto& [name, global] : session.globals) {
        members.emplace_back(name, globalJson(global, 2));
    }
    return object(members, 1);
}

std::string storesJson(const CaptureSession& session) {
    Members members;
    for (const auto& [number, store] : session.stores) {
        std::vector<std::string> records;
        for (const Record& record : store.records) {
            std::vector<std::string> lines;
            for (const std::string& line : record) {
                lines.push_back(quoted(line));
            }
            records.push_back(list(lines, 3));
        }
        members.emplace_back(std::to_string(number), list(records, 2));
    }
    return object(members, 1);
}

std::string objectJson(int number, const CapturedObject& found) {
    std::vector<std::string> start;
    for (const double coordinate : found.start.value_or(std::array<double, 3>{})) {
        start.push_back(capture::number(coordinate));
    }
    return object({{"number", capture::number(number)},
                   {"type", capture::number(found.type.value_or(0))},
                   {"name", capture::number(found.name.value_or(0))},
                   {"attribute", capture::number(found.attribute.value_or(0))},
                   {"start", list(start, 4)},
                   {"flags", capture::number(found.flags.value_or(1))},
                   {"deleted", boolean(found.deleted.value_or(false))}},
                  3);
}

// The figures the session asked about, and a stand-in name ("#<number>") for a figure the session
// reached only through its objects, since a figure object needs a figure of its own.
std::map<int, std::string> figuresOf(const CaptureSession& session) {
    std::map<int, std::string> figures = session.figures;
    for (const auto& [number, found] : session.objects) {
        if (found.type == kFigureObject && found.name) {
            figures.try_emplace(*found.name, "#" + std::to_string(*found.name));
        }
    }
    return figures;
}

std::string drawingJson(const CaptureSession& session) {
    std::vector<std::string> figures;
    for (const auto& [number, name] : figuresOf(session)) {
        figures.push_back(object({{"number", capture::number(number)}, {"name", quoted(name)}}, 3));
    }
    std::vector<std::string> objects;
    for (const auto& [number, found] : session.objects) {
        objects.push_back(objectJson(number, found));
    }
    return object({{"figures", list(figures, 2)}, {"objects", list(objects, 2)}}, 1);
}

std::string captureJson(const CaptureSession& session, const std::string& taken) {
    std::vector<std::string> missing;
    for (const std::string& name : session.missingExports) {
        missing.push_back(quoted(name));
    }
    return object({{"taken", quoted(taken)},
                   {"library", quoted(VELKAPI_VERSION)},
                   {"missingExports", list(missing, 2)}},
                  1);
}

}  // namespace

std::string captureProjectJson(const CaptureSession& session, const std::string& taken) {
    Members parts = {{"environment", environmentJson(session)},
                     {"globals", globalsJson(session)},
                     {"stores", storesJson(session)}};
    if (!session.figures.empty() || !session.objects.empty()) {
        parts.emplace_back("cad", drawingJson(session));
    }
    parts.emplace_back("capture", captureJson(session, taken));
    return object(parts, 0) + "\n";
}

}  // namespace VelkApi::host::capture
