#include "Variables.h"

#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

#include "CText.h"
#include "HostAbi.h"

namespace velkhost::detail {

namespace {

constexpr std::size_t kStringBufferSize = VelkApi::host::kStringBufferSize;

void report(int* status, bool done) {
    if (status) {
        *status = done ? 1 : 0;
    }
}

// Toward zero, as the host converts; out-of-range values saturate and NaN becomes 0.
int truncateToInt(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    if (value <= static_cast<double>(std::numeric_limits<int>::min())) {
        return std::numeric_limits<int>::min();
    }
    if (value >= static_cast<double>(std::numeric_limits<int>::max())) {
        return std::numeric_limits<int>::max();
    }
    return static_cast<int>(value);
}

template <class To, class From>
To convertNumber(From value) {
    if constexpr (std::is_same_v<To, int> && std::is_same_v<From, double>) {
        return truncateToInt(value);
    } else {
        return static_cast<To>(value);
    }
}

// Stores `value` into a numeric global, in the global's own kind.
template <class Number>
bool assignNumber(GlobalValue* global, Number value) {
    if (int* integer = std::get_if<int>(global)) {
        *integer = convertNumber<int>(value);
        return true;
    }
    if (double* real = std::get_if<double>(global)) {
        *real = convertNumber<double>(value);
        return true;
    }
    return false;
}

template <class Number>
std::optional<Number> numberOf(const GlobalValue* global) {
    if (const int* integer = std::get_if<int>(global)) {
        return convertNumber<Number>(*integer);
    }
    if (const double* real = std::get_if<double>(global)) {
        return convertNumber<Number>(*real);
    }
    return std::nullopt;
}

// The 1-based slice [first, first + count - 1] lies inside an array of `size` elements.
bool isInside(std::size_t size, int first, int count, const void* values) {
    if (first < 1 || count < 0 || (count > 0 && !values)) {
        return false;
    }
    return static_cast<long long>(first) + count - 1 <= static_cast<long long>(size);
}

template <class Element, class Out>
bool copySliceOut(const std::vector<Element>& array, int first, int count, Out* values) {
    if (!isInside(array.size(), first, count, values)) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        values[i] = convertNumber<Out>(array[static_cast<std::size_t>(first - 1 + i)]);
    }
    return true;
}

template <class Element, class In>
bool copySliceIn(std::vector<Element>& array, int first, int count, const In* values) {
    if (!isInside(array.size(), first, count, values)) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        array[static_cast<std::size_t>(first - 1 + i)] = convertNumber<Element>(values[i]);
    }
    return true;
}

template <class Out>
bool readSlice(const GlobalValue* global, int first, int count, Out* values) {
    if (const auto* integers = std::get_if<std::vector<int>>(global)) {
        return copySliceOut(*integers, first, count, values);
    }
    if (const auto* reals = std::get_if<std::vector<double>>(global)) {
        return copySliceOut(*reals, first, count, values);
    }
    return false;
}

template <class In>
bool writeSlice(GlobalValue* global, int first, int count, const In* values) {
    if (auto* integers = std::get_if<std::vector<int>>(global)) {
        return copySliceIn(*integers, first, count, values);
    }
    if (auto* reals = std::get_if<std::vector<double>>(global)) {
        return copySliceIn(*reals, first, count, values);
    }
    return false;
}

}  // namespace

const char* Variables::environment(const char* name) const {
    const auto entry = name ? environmentVariables.find(name) : environmentVariables.end();
    return entry == environmentVariables.end() ? "" : entry->second.c_str();
}

int Variables::readInt(const char* name, int* status) const {
    const std::optional<int> value = numberOf<int>(find(name));
    report(status, value.has_value());
    return value.value_or(0);
}

double Variables::readDouble(const char* name, int* status) const {
    const std::optional<double> value = numberOf<double>(find(name));
    report(status, value.has_value());
    return value.value_or(0.0);
}

void Variables::readText(const char* name, char* buffer, int* status) const {
    const auto* text = std::get_if<std::string>(find(name));
    if (buffer) {
        copyToBuffer(text ? *text : std::string(), buffer, kStringBufferSize);
    }
    report(status, text && buffer);
}

void Variables::writeInt(const char* name, int value, int* status) {
    report(status, assignNumber(find(name), value));
}

void Variables::writeDouble(const char* name, double value, int* status) {
    report(status, assignNumber(find(name), value));
}

void Variables::writeText(const char* name, const char* value, int* status) {
    auto* text = value ? std::get_if<std::string>(find(name)) : nullptr;
    if (text) {
        *text = cutText(value, kStringBufferSize - 1);
    }
    report(status, text != nullptr);
}

void Variables::readIntArray(const char* name, int first, int count, int* values,
                             int* status) const {
    report(status, readSlice(find(name), first, count, values));
}

void Variables::readDoubleArray(const char* name, int first, int count, double* values,
                                int* status) const {
    report(status, readSlice(find(name), first, count, values));
}

void Variables::writeIntArray(const char* name, int first, int count, const int* values,
                              int* status) {
    report(status, writeSlice(find(name), first, count, values));
}

void Variables::writeDoubleArray(const char* name, int first, int count, const double* values,
                                 int* status) {
    report(status, writeSlice(find(name), first, count, values));
}

GlobalValue* Variables::find(const char* name) const {
    const auto entry = name ? globals.find(name) : globals.end();
    return entry == globals.end() ? nullptr : &entry->second;
}

}  // namespace velkhost::detail
