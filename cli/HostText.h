// The host's texts are bytes of its code page, Windows-1252, mapped to Unicode as the project
// file maps them; velk's arguments and output are UTF-8. On Windows, where a program's
// arguments and console already use the code page, the texts pass unchanged.
#pragma once

#include <nlohmann/json.hpp>

#include <memory>
#include <streambuf>
#include <string>

namespace velk {

// The host's bytes of a text typed as an argument; throws CommandError naming `name` and the
// first character that the code page has no byte for.
std::string hostBytesOf(const std::string& typed, const std::string& name);

// A text of the host as UTF-8.
std::string utf8Of(const std::string& hostText);

// Every text and key of `value`, a JSON made of the host's texts, as UTF-8.
nlohmann::ordered_json utf8Json(const nlohmann::ordered_json& value);

// While one exists, what is printed to standard output is taken as the host's texts and
// written as UTF-8.
class Utf8Output {
  public:
    Utf8Output();
    ~Utf8Output();
    Utf8Output(const Utf8Output&) = delete;
    Utf8Output& operator=(const Utf8Output&) = delete;

  private:
    std::unique_ptr<std::streambuf> converter;
    std::streambuf* original;
};

}  // namespace velk
