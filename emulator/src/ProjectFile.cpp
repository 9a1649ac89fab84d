// The project file: reading checks every value against the project's shape and reports the
// first mismatch by its JSON path; writing produces the same bytes for the same project.
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Project.h"

namespace velkhost::detail {

namespace {

using Pointer = Json::json_pointer;

class ProjectReader {
  public:
    explicit ProjectReader(std::string sourceName) : source_(std::move(sourceName)) {}

    Project read(const std::string& text) const {
        const Json root = parse(text);
        if (!root.is_object()) {
            fail(Pointer(), "an object");
        }
        Project project;
        for (const auto& [key, value] : root.items()) {
            readSection(key, value, project);
        }
        return project;
    }

  private:
    Json parse(const std::string& text) const {
        try {
            return Json::parse(text);
        } catch (const Json::parse_error& error) {
            throw ProjectError(source_ + ": not valid JSON: " + withoutExceptionTag(error.what()));
        }
    }

    // The parser's messages start with a tag such as "[json.exception.parse_error.101] ".
    static std::string withoutExceptionTag(const std::string& message) {
        const std::size_t tagEnd = message.find("] ");
        return message.rfind('[', 0) == 0 && tagEnd != std::string::npos
                   ? message.substr(tagEnd + 2)
                   : message;
    }

    void readSection(const std::string& key, const Json& value, Project& project) const {
        const Pointer at = Pointer() / key;
        if (key == "environment") {
            project.environment = readEnvironment(value, at);
        } else if (key == "globals") {
            project.globals = readGlobals(value, at);
        } else if (key == "stores") {
            project.stores = readStores(value, at);
        } else if (key == "cad") {
            project.cad = value;
        } else {
            fail(at, "one of environment, globals, stores, cad");
        }
    }

    Environment readEnvironment(const Json& section, const Pointer& at) const {
        requireObject(section, at);
        Environment environment;
        for (const auto& [name, text] : section.items()) {
            environment.emplace(name, readText(text, at / name, "a text"));
        }
        return environment;
    }

    Globals readGlobals(const Json& section, const Pointer& at) const {
        requireObject(section, at);
        Globals globals;
        for (const auto& [name, value] : section.items()) {
            globals.emplace(name, readGlobal(value, at / name));
        }
        return globals;
    }

    GlobalValue readGlobal(const Json& value, const Pointer& at) const {
        if (value.is_number_integer()) {
            return readInt(value, at);
        }
        if (value.is_number_float()) {
            return value.get<double>();
        }
        if (value.is_string()) {
            return value.get<std::string>();
        }
        if (value.is_array()) {
            return readNumberArray(value, at);
        }
        fail(at, "a number, a text or a list of numbers");
    }

    // A list of JSON integers is an int array; any other list of numbers a double array.
    GlobalValue readNumberArray(const Json& array, const Pointer& at) const {
        bool allIntegers = true;
        for (std::size_t i = 0; i < array.size(); ++i) {
            if (!array[i].is_number()) {
                fail(at / i, "a number");
            }
            allIntegers = allIntegers && array[i].is_number_integer();
        }
        if (allIntegers) {
            std::vector<int> integers;
            for (std::size_t i = 0; i < array.size(); ++i) {
                integers.push_back(readInt(array[i], at / i));
            }
            return integers;
        }
        return array.get<std::vector<double>>();
    }

    int readInt(const Json& value, const Pointer& at) const {
        const bool fits = value.is_number_unsigned()
                              ? value.get<std::uint64_t>() <=
                                    static_cast<std::uint64_t>(std::numeric_limits<int>::max())
                              : value.get<std::int64_t>() >= std::numeric_limits<int>::min() &&
                                    value.get<std::int64_t>() <= std::numeric_limits<int>::max();
        if (!fits) {
            fail(at, "an integer between -2147483648 and 2147483647");
        }
        return value.get<int>();
    }

    Stores readStores(const Json& section, const Pointer& at) const {
        requireObject(section, at);
        Stores stores;
        for (const auto& [key, records] : section.items()) {
            stores.emplace(readStoreNumber(key, at / key), readRecords(records, at / key));
        }
        return stores;
    }

    // Only the plain decimal form, so that no two keys name the same store.
    int readStoreNumber(const std::string& key, const Pointer& at) const {
        int number = 0;
        const char* end = key.data() + key.size();
        const auto [stop, error] = std::from_chars(key.data(), end, number);
        if (error != std::errc() || stop != end || std::to_string(number) != key) {
            fail(at, "a store number");
        }
        return number;
    }

    Records readRecords(const Json& list, const Pointer& at) const {
        if (!list.is_array()) {
            fail(at, "a list of records");
        }
        Records records;
        for (std::size_t i = 0; i < list.size(); ++i) {
            records.push_back(readRecord(list[i], at / i));
        }
        return records;
    }

    Record readRecord(const Json& list, const Pointer& at) const {
        if (!list.is_array()) {
            fail(at, "a record (a list of text lines)");
        }
        Record record;
        for (std::size_t i = 0; i < list.size(); ++i) {
            record.push_back(readText(list[i], at / i, "a text line"));
        }
        return record;
    }

    std::string readText(const Json& value, const Pointer& at, const char* expected) const {
        if (!value.is_string()) {
            fail(at, expected);
        }
        return value.get<std::string>();
    }

    void requireObject(const Json& value, const Pointer& at) const {
        if (!value.is_object()) {
            fail(at, "an object");
        }
    }

    [[noreturn]] void fail(const Pointer& at, const std::string& expected) const {
        const std::string where = at.empty() ? "" : at.to_string() + ": ";
        throw ProjectError(source_ + ": " + where + "expected " + expected);
    }

    std::string source_;
};

Json globalJson(const GlobalValue& value) {
    return std::visit([](const auto& held) { return Json(held); }, value);
}

Json storesJson(const Stores& stores) {
    Json json = Json::object();
    for (const auto& [number, records] : stores) {
        json[std::to_string(number)] = records;
    }
    return json;
}

}  // namespace

Project parseProject(const std::string& text, const std::string& sourceName) {
    return ProjectReader(sourceName).read(text);
}

std::string projectJson(const Project& project) {
    Json root = Json::object();
    root["environment"] = Json::object();
    for (const auto& [name, text] : project.environment) {
        root["environment"][name] = text;
    }
    root["globals"] = Json::object();
    for (const auto& [name, value] : project.globals) {
        root["globals"][name] = globalJson(value);
    }
    root["stores"] = storesJson(project.stores);
    if (project.cad) {
        root["cad"] = *project.cad;
    }
    return root.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace velkhost::detail
