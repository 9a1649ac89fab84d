// A text in the room of one pointer: a text of up to seven bytes in place, a longer one as one
// allocation of its length and bytes. Sections hold many texts, most of them empty or a few
// characters long, and a std::string takes 32 bytes for each of them.
//
// The first byte tells the two apart: a text kept in place has its lowest bit set (and its length
// in the bits above), while an allocation's address, aligned for a std::size_t, has it clear. The
// empty text is the null address.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>

namespace VelkApi::detail {

class PackedText {
  public:
    PackedText() = default;
    explicit PackedText(const std::string& text) { assign(text.data(), text.size()); }
    PackedText(const PackedText& other) { assign(other.data(), other.size()); }
    PackedText(PackedText&& other) noexcept { take(other); }
    PackedText& operator=(const PackedText& other) {
        if (this != &other) {
            assign(other.data(), other.size());
        }
        return *this;
    }
    PackedText& operator=(PackedText&& other) noexcept {
        if (this != &other) {
            release();
            take(other);
        }
        return *this;
    }
    PackedText& operator=(const std::string& text) {
        assign(text.data(), text.size());
        return *this;
    }
    ~PackedText() { release(); }

    std::size_t size() const {
        if (inPlace()) {
            return static_cast<unsigned char>(raw[0]) >> 1;
        }
        const char* held = allocation();
        std::size_t length = 0;
        if (held != nullptr) {
            std::memcpy(&length, held, sizeof length);
        }
        return length;
    }
    const char* data() const {
        if (inPlace()) {
            return raw + 1;
        }
        const char* held = allocation();
        return held != nullptr ? held + sizeof(std::size_t) : "";
    }
    std::string str() const { return std::string(data(), size()); }

    bool operator==(const std::string& text) const {
        return size() == text.size() && std::memcmp(data(), text.data(), text.size()) == 0;
    }
    bool operator!=(const std::string& text) const { return !(*this == text); }

  private:
    static constexpr std::size_t kInPlace = sizeof(char*) - 1;

    bool inPlace() const { return (raw[0] & 1) != 0; }
    char* allocation() const {
        char* held = nullptr;
        std::memcpy(&held, raw, sizeof held);
        return held;
    }

    void assign(const char* text, std::size_t length) {
        if (length == 0) {
            release();
            return;
        }
        if (length <= kInPlace) {
            char made[sizeof raw] = {};
            made[0] = static_cast<char>((length << 1) | 1);
            std::memcpy(made + 1, text, length);
            release();
            std::memcpy(raw, made, sizeof raw);
            return;
        }
        // A text of the same length is written over in place.
        if (inPlace() || size() != length) {
            char* made = new char[sizeof length + length];
            std::memcpy(made, &length, sizeof length);
            std::memcpy(made + sizeof length, text, length);
            release();
            std::memcpy(raw, &made, sizeof made);
            return;
        }
        std::memmove(allocation() + sizeof length, text, length);
    }

    void release() {
        if (!inPlace()) {
            delete[] allocation();
        }
        std::memset(raw, 0, sizeof raw);
    }

    void take(PackedText& other) {
        std::memcpy(raw, other.raw, sizeof raw);
        std::memset(other.raw, 0, sizeof other.raw);
    }

    char raw[sizeof(char*)] = {};
};

}  // namespace VelkApi::detail
