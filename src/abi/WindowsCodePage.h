// The host's texts are bytes in its Windows code page. Where they have to be Unicode, as in the
// offline host's project files (UTF-8 JSON), each byte stands for its Windows-1252 character,
// and the five bytes that code page leaves unassigned (0x81, 0x8D, 0x8F, 0x90, 0x9D) for the C1
// control character of the same number. Every byte 1..255 thus has a character of its own, and
// a text comes back from its Unicode form byte for byte.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace VelkApi::host::codepage {

// The characters of the bytes 0x80..0x9F; every other byte is the character of its own number.
constexpr char32_t kCharactersOf80To9F[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80..87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88..8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90..97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98..9F
};

constexpr char32_t characterOf(unsigned char byte) {
    return byte >= 0x80 && byte <= 0x9F ? kCharactersOf80To9F[byte - 0x80] : byte;
}

// The byte that stands for `character`; -1 when none does.
constexpr int byteOf(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<int>(character);
    }
    for (int i = 0; i < 32; ++i) {
        if (kCharactersOf80To9F[i] == character) {
            return 0x80 + i;
        }
    }
    return -1;
}

inline void appendUtf8(char32_t character, std::string& out) {
    if (character < 0x80) {
        out += static_cast<char>(character);
    } else if (character < 0x800) {
        out += static_cast<char>(0xC0 | (character >> 6));
        out += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (character >> 12));
        out += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (character & 0x3F));
    }
}

// The UTF-8 form of a text of the host.
inline std::string toUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        appendUtf8(characterOf(static_cast<unsigned char>(byte)), text);
    }
    return text;
}

// The next character of a UTF-8 text from `at`, which moves past it; none when the bytes there
// are not a well-formed UTF-8 sequence (overlong forms and surrogates included).
inline std::optional<char32_t> nextUtf8(std::string_view text, std::size_t& at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at);
    if (lead < 0x80) {
        ++at;
        return lead;
    }
    int length = 0;
    char32_t smallest = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        smallest = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        smallest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        smallest = 0x10000;
    } else {
        return std::nullopt;
    }
    char32_t character = lead & (0x7Fu >> length);
    if (text.size() - at < static_cast<std::size_t>(length)) {
        return std::nullopt;
    }
    for (int i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) {
            return std::nullopt;
        }
        character = (character << 6) | (byte(at + i) & 0x3F);
    }
    if (character < smallest || character > 0x10FFFF ||
        (character >= 0xD800 && character <= 0xDFFF)) {
        return std::nullopt;
    }
    at += static_cast<std::size_t>(length);
    return character;
}

inline bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        if (!nextUtf8(text, at)) {
            return false;
        }
    }
    return true;
}

// The bytes a UTF-8 text of Windows-1252 characters stands for; none when the text is not
// UTF-8 or holds a character that no byte stands for.
inline std::optional<std::string> fromUtf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::optional<char32_t> character = nextUtf8(text, at);
        const int byte = character ? byteOf(*character) : -1;
        if (byte < 0) {
            return std::nullopt;
        }
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

}  // namespace VelkApi::host::codepage
