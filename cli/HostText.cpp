#include "HostText.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

#include "Project.h"
#include "WindowsCodePage.h"

namespace velk {

namespace codepage = VelkApi::host::codepage;

namespace {

#if defined(_WIN32)
constexpr bool kConverts = false;
#else
constexpr bool kConverts = true;
#endif

std::string hexCode(char32_t character) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "U+%04X", static_cast<unsigned>(character));
    return buffer;
}

// Passes each byte on as the UTF-8 form of its Windows-1252 character.
bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

class Utf8Converter : public std::streambuf {
  public:
    explicit Utf8Converter(std::streambuf* destination) : target(destination) {}

  protected:
    int_type overflow(int_type c) override {
        if (traits_type::eq_int_type(c, traits_type::eof())) {
            return traits_type::not_eof(c);
        }
        if (isAscii(traits_type::to_char_type(c))) {  // the same in both
            return target->sputc(traits_type::to_char_type(c));
        }
        const std::string text = codepage::toUtf8(std::string(1, traits_type::to_char_type(c)));
        const auto size = static_cast<std::streamsize>(text.size());
        return target->sputn(text.data(), size) == size ? c : traits_type::eof();
    }
    std::streamsize xsputn(const char* data, std::streamsize count) override {
        if (std::all_of(data, data + count, isAscii)) {
            return target->sputn(data, count);
        }
        const std::string text =
            codepage::toUtf8(std::string_view(data, static_cast<std::size_t>(count)));
        const auto size = static_cast<std::streamsize>(text.size());
        return target->sputn(text.data(), size) == size ? count : 0;
    }
    int sync() override { return target->pubsync(); }

  private:
    std::streambuf* target;
};

}  // namespace

std::string hostBytesOf(const std::string& typed, const std::string& name) {
    if (!kConverts) {
        return typed;
    }
    std::string bytes;
    for (std::size_t at = 0; at < typed.size();) {
        const std::size_t start = at;
        const std::optional<char32_t> character = codepage::nextUtf8(typed, at);
        if (!character) {
            throw CommandError(name + ": the text is not UTF-8 (byte " +
                               std::to_string(static_cast<unsigned char>(typed[start])) + " at " +
                               std::to_string(start) + ")");
        }
        const int byte = codepage::byteOf(*character);
        if (byte < 0) {
            throw CommandError(name + ": the host's code page (Windows-1252) has no character '" +
                               typed.substr(start, at - start) + "' (" + hexCode(*character) +
                               "): leave it out or write it otherwise");
        }
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

std::string utf8Of(const std::string& hostText) {
    return kConverts ? codepage::toUtf8(hostText) : hostText;
}

nlohmann::ordered_json utf8Json(const nlohmann::ordered_json& value) {
    if (value.is_string()) {
        return utf8Of(value.get_ref<const std::string&>());
    }
    if (value.is_array()) {
        nlohmann::ordered_json list = nlohmann::ordered_json::array();
        for (const auto& item : value) {
            list.push_back(utf8Json(item));
        }
        return list;
    }
    if (value.is_object()) {
        nlohmann::ordered_json object = nlohmann::ordered_json::object();
        for (const auto& [key, item] : value.items()) {
            object[utf8Of(key)] = utf8Json(item);
        }
        return object;
    }
    return value;
}

Utf8Output::Utf8Output() : original(std::cout.rdbuf()) {
    if (kConverts) {
        converter = std::make_unique<Utf8Converter>(original);
        std::cout.rdbuf(converter.get());
    }
}

Utf8Output::~Utf8Output() {
    std::cout.flush();
    std::cout.rdbuf(original);
}

}  // namespace velk
