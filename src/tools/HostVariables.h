// The host's global variables as the tool sections move them: scalars by the kind of their
// name, arrays as slices from element 1. Array calls ignore the host's status.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>

namespace VelkApi::tools {

using HostValue = std::variant<int, double, std::string>;

// The host's variable `name`, read by the name's kind ("i", "w", "$"); none when the host
// cannot give it (the failed read shows its message box).
std::optional<HostValue> readHostVariable(const std::string& name);
// Writes `value` to the host's variable `name`, with the host's writer of the value's kind.
void writeHostVariable(const std::string& name, const HostValue& value);

void readHostArray(const char* name, int* values, std::size_t count);
void readHostArray(const char* name, double* values, std::size_t count);
void writeHostArray(const char* name, const int* values, std::size_t count);
void writeHostArray(const char* name, const double* values, std::size_t count);

}  // namespace VelkApi::tools
