// Reading and writing whole files, byte for byte, for the tests of loading and saving.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace offlinehost {

inline void writeFileContent(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string fileContent(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace offlinehost
