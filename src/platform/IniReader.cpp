#include "platform/IniReader.h"

#include <cctype>
#include <fstream>

namespace VelkApi::platform {

namespace {

std::string trimmed(const std::string& text) {
    const char* blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool sameName(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i]))) {
            return false;
        }
    }
    return true;
}

std::string unquoted(const std::string& value) {
    const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                        value.back() == value.front();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

// "[ name ]" gives "name"; a missing "]" takes the rest of the line.
std::string sectionName(const std::string& content) {
    const std::size_t close = content.find(']');
    return trimmed(content.substr(1, close == std::string::npos ? std::string::npos : close - 1));
}

}  // namespace

std::string IniReader::lookup(const std::string& path, const std::string& section,
                              const std::string& key, const std::string& fallback) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return fallback;
    }
    return lookup(in, section, key, fallback);
}

std::string IniReader::lookup(std::istream& in, const std::string& section, const std::string& key,
                              const std::string& fallback) {
    bool inSection = false;
    std::string line;
    while (std::getline(in, line)) {
        const std::string content = trimmed(line);
        if (content.empty() || content.front() == ';') {
            continue;
        }
        if (content.front() == '[') {
            if (inSection) {
                return fallback;  // only the first section of a name is searched
            }
            inSection = sameName(sectionName(content), section);
            continue;
        }
        const std::size_t equals = content.find('=');
        if (inSection && equals != std::string::npos &&
            sameName(trimmed(content.substr(0, equals)), key)) {
            return unquoted(trimmed(content.substr(equals + 1)));
        }
    }
    return fallback;
}

}  // namespace VelkApi::platform
