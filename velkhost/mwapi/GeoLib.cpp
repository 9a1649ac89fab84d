#include "GeoLib.h"

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace mwapi {

namespace {

constexpr const char* kFirstLine = "MwApi settings 1";

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// The shortest text that reads back as the same number.
std::string numberText(double value, bool whole) {
    if (whole) {
        return std::to_string(static_cast<int>(value));
    }
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

// True when the whole text is a number of that kind.
template <typename Number>
bool parse(const std::string& text, Number& value) {
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return !text.empty() && result.ec == std::errc() && result.ptr == end;
}

}  // namespace

std::size_t settingIndex(const std::string& name) {
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        if (name == kSettings[i].name) {
            return i;
        }
    }
    throw std::out_of_range("no setting " + name);
}

GeoLib::GeoLib() {
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        values[i] = kSettings[i].initial;
    }
}

void GeoLib::read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw SettingsFileError("cannot open '" + path + "' for reading");
    }
    const auto fail = [&path](int line, const std::string& what) {
        throw SettingsFileError("cannot read settings from '" + path + "': line " +
                                std::to_string(line) + " " + what);
    };
    std::array<double, kSettingCount> read = values;
    std::array<bool, kSettingCount> named{};
    bool started = false;
    int lineNumber = 0;
    for (std::string raw; std::getline(in, raw);) {
        ++lineNumber;
        const std::string line = trimmed(raw);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        if (!started) {
            if (line != kFirstLine) {
                fail(lineNumber, "is not \"" + std::string(kFirstLine) + "\"");
            }
            started = true;
            continue;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos) {
            fail(lineNumber, "is not \"<Name> = <value>\"");
        }
        const std::string name = trimmed(line.substr(0, equals));
        const std::string text = trimmed(line.substr(equals + 1));
        std::size_t index = 0;
        try {
            index = settingIndex(name);
        } catch (const std::out_of_range&) {
            fail(lineNumber, "names no setting: '" + name + "'");
        }
        if (named[index]) {
            fail(lineNumber, "names " + name + " a second time");
        }
        named[index] = true;
        int whole = 0;
        if (kSettings[index].whole ? !parse(text, whole) : !parse(text, read[index])) {
            fail(lineNumber, "gives " + name + " the value '" + text + "', which is not " +
                                 (kSettings[index].whole ? "a whole number" : "a number"));
        }
        if (kSettings[index].whole) {
            read[index] = whole;
        }
    }
    if (!started) {
        throw SettingsFileError("cannot read settings from '" + path + "': it is not a file of " +
                                "settings (no line \"" + kFirstLine + "\")");
    }
    values = read;
}

void GeoLib::write(const std::string& path) const {
    std::string text = std::string(kFirstLine) + "\n";
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        text += std::string(kSettings[i].name) + " = " + numberText(values[i], kSettings[i].whole) +
                "\n";
    }
    // Written beside the file first, so that a write that fails leaves the file as it was.
    const std::string written = path + ".new";
    std::ofstream out(written, std::ios::binary | std::ios::trunc);
    const bool opened = out.is_open();
    out << text;
    out.close();
    std::error_code error;
    if (opened && out) {
        std::filesystem::rename(written, path, error);
    }
    if (!opened || !out || error) {
        if (opened) {
            std::remove(written.c_str());
        }
        throw SettingsFileError("cannot write settings to '" + path + "'");
    }
}

}  // namespace mwapi
