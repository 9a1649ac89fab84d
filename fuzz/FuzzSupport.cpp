#include "FuzzSupport.h"

#include <velkhost/OfflineHost.h>

#include <cstdlib>
#include <filesystem>

namespace fuzzsupport {

namespace {

void pointLogsNowhere() {
    static const bool done = [] {
        const std::filesystem::path nowhere =
            std::filesystem::temp_directory_path() / "velkapi-fuzz-no-such-folder";
        setenv("APPDATA", nowhere.string().c_str(), 1);
        return true;
    }();
    (void)done;
}

}  // namespace

std::string text(const std::uint8_t* data, std::size_t size) {
    return std::string(reinterpret_cast<const char*>(data), size);
}

Lines lines(const std::uint8_t* data, std::size_t size) {
    Lines result(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == '\n') {
            result.emplace_back();
        } else {
            result.back() += static_cast<char>(data[i]);
        }
    }
    return result;
}

unsigned char takeByte(const std::uint8_t*& data, std::size_t& size) {
    if (size == 0) {
        return 0;
    }
    const unsigned char byte = *data;
    ++data;
    --size;
    return byte;
}

void freshHost() {
    pointLogsNowhere();
    velkhost::OfflineHost& host = velkhost::OfflineHost::instance();
    host.reset();
    host.setEnvironment("TURNDRIVENTOOLS", "1");
}

void storeSection(int type, int section, const Lines& lines) {
    std::string header = std::to_string(type) + " 1 " + std::to_string(section + 1);
    for (int s = 0; s < section; ++s) {
        header += " 0";
    }
    header += " " + std::to_string(lines.size());
    velkhost::Record record{header};
    record.insert(record.end(), lines.begin(), lines.end());
    velkhost::OfflineHost::instance().setStore(kStore, {record});
}

}  // namespace fuzzsupport
