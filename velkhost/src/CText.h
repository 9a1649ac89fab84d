// Moving text between the host's strings and the zero-terminated buffers of the C functions.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

namespace velkhost::detail {

// The text up to its zero byte, at most `maxBytes` of it; reads no byte past either limit.
inline std::string cutText(const char* text, std::size_t maxBytes) {
    std::size_t length = 0;
    while (length < maxBytes && text[length] != '\0') {
        ++length;
    }
    return std::string(text, length);
}

// Copies as much of `text` as fits into `buffer`, followed by a zero byte.
inline void copyToBuffer(const std::string& text, char* buffer, std::size_t bufferSize) {
    const std::size_t length = std::min(text.size(), bufferSize - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

}  // namespace velkhost::detail
