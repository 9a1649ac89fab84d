// A text kept as one allocation of its length and bytes, and no allocation at all when empty.
// Sections hold many texts, most of them empty or a few characters long, and a std::string takes
// 32 bytes for each of them; this takes 8, and the bytes of a text that is not empty.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>

namespace VelkApi::detail {

class PackedText {
  public:
    PackedText() = default;
    explicit PackedText(const std::string& text) { assign(text.data(), text.size()); }
    PackedText(const PackedText& other) { assign(other.data(), other.size()); }
    PackedText(PackedText&&) noexcept = default;
    PackedText& operator=(PackedText&&) noexcept = default;
    PackedText& operator=(const PackedText& other) {
        if (this != &other) {
            assign(other.data(), other.size());
        }
        return *this;
    }
    PackedText& operator=(const std::string& text) {
        assign(text.data(), text.size());
        return *this;
    }
    ~PackedText() = default;

    std::size_t size() const {
        std::size_t length = 0;
        if (bytes) {
            std::memcpy(&length, bytes.get(), sizeof length);
        }
        return length;
    }
    const char* data() const { return bytes ? bytes.get() + sizeof(std::size_t) : ""; }
    std::string str() const { return std::string(data(), size()); }

    bool operator==(const std::string& text) const {
        return size() == text.size() && std::memcmp(data(), text.data(), text.size()) == 0;
    }
    bool operator!=(const std::string& text) const { return !(*this == text); }

  private:
    // A text of the same length is written over in place.
    void assign(const char* text, std::size_t length) {
        if (length == 0) {
            bytes.reset();
            return;
        }
        if (size() != length) {
            std::unique_ptr<char[]> made(new char[sizeof length + length]);
            std::memcpy(made.get(), &length, sizeof length);
            bytes = std::move(made);
        }
        std::memmove(bytes.get() + sizeof length, text, length);
    }

    std::unique_ptr<char[]> bytes;
};

}  // namespace VelkApi::detail
