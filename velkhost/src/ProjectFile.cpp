// The project file: reading checks every value against the project's shape and reports the
// first mismatch by its JSON path; writing produces the same bytes for the same project.
//
// The drawing, "cad", holds figures and drawing objects, each list written in number order:
//   "cad": {
//     "figures": [{"number": 1, "name": "OUTER"}],
//     "objects": [
//       {"number": 10, "type": 20, "name": 1, "attribute": 0, "start": [0.0, 0.0, 0.0],
//        "flags": 1, "deleted": false},
//       {"number": 20, "type": 1, "start": [15.0, 15.0, 0.0]},
//       {"number": 30, "type": 29, "name": 7}
//     ]
//   }
// A figure has a number (1 or more) and a name of its own. An object has a number (1 or more)
// and a type: 1 a point, 20 a figure object, 29 a non-CAD object, any other number a drawing
// object the library does not convert. "name" is a figure object's figure number, or a non-CAD
// object's own non-CAD number; "attribute" is a figure object's instance (0, the default, is the
// whole figure); "start" its start point (default the origin); "flags" bit 0 set (the default,
// 1) makes it take part in a walk of the drawing; "deleted" (default false) marks a deleted
// object. Each figure instance and each non-CAD number has one object.
//
// Texts (store lines, text globals, environment values, figure names, and the names of globals
// and environment values) are bytes in the host's Windows code page. In the file each byte is
// the Unicode character it stands for in Windows-1252, written as UTF-8; the five bytes that
// code page leaves unassigned (0x81, 0x8D, 0x8F, 0x90, 0x9D) are the control characters U+0081,
// U+008D, U+008F, U+0090 and U+009D. So "\u00b0" or a UTF-8 degree sign is the byte 0xB0, "\u20ac"
// the byte 0x80, and every byte 1..255 is read and written back unchanged. A character that no
// byte stands for is an error. Plain ASCII is the same in both.
//
// A capture of a session in the host application adds what it was taken from:
//   "capture": {"taken": "2026-11-23T14:05:00Z", "library": "0.1.0",
//               "missingExports": ["VelkGetNonCadObject"]}
// "missingExports" lists the host exports the library did not find in that session; the offline
// host leaves them missing: a call to one goes to "VelkMissingAPI" in its place.
#include <array>
#include <charconv>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Project.h"
#include "host/WindowsCodePage.h"

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
        } catch (const Json::exception& error) {  // bad syntax, or a number beyond a double
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
            project.cad = readDrawing(value, at);
        } else if (key == "capture") {
            project.capture = readCapture(value, at);
        } else {
            fail(at, "one of environment, globals, stores, cad, capture");
        }
    }

    Environment readEnvironment(const Json& section, const Pointer& at) const {
        requireObject(section, at);
        Environment environment;
        for (const auto& [name, text] : section.items()) {
            environment.emplace(hostText(name, at / name, "a name"),
                                readText(text, at / name, "a text"));
        }
        return environment;
    }

    Globals readGlobals(const Json& section, const Pointer& at) const {
        requireObject(section, at);
        Globals globals;
        for (const auto& [name, value] : section.items()) {
            globals.emplace(hostText(name, at / name, "a name"), readGlobal(value, at / name));
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
            return readText(value, at, "a text");
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

    // "figures" are read before "objects", which refer to them.
    Drawing readDrawing(const Json& section, const Pointer& at) const {
        requireObject(section, at);
        for (const auto& item : section.items()) {
            if (item.key() != "figures" && item.key() != "objects") {
                fail(at / item.key(), "one of figures, objects");
            }
        }
        Drawing drawing;
        if (section.contains("figures")) {
            readFigures(section["figures"], at / "figures", drawing);
        }
        if (section.contains("objects")) {
            readObjects(section["objects"], at / "objects", drawing);
        }
        return drawing;
    }

    void readFigures(const Json& list, const Pointer& at, Drawing& drawing) const {
        requireList(list, at, "a list of figures");
        for (std::size_t i = 0; i < list.size(); ++i) {
            const Json& item = list[i];
            requireKeys(item, at / i, {"number", "name"}, "a figure with a number and a name");
            for (const auto& field : item.items()) {
                if (field.key() != "number" && field.key() != "name") {
                    fail(at / i / field.key(), "one of number, name");
                }
            }
            CadFigure figure;
            figure.number = readObjectNumber(item["number"], at / i / "number");
            figure.name = readText(item["name"], at / i / "name", "a figure name");
            if (drawing.figures.count(figure.number) != 0) {
                fail(at / i / "number", "a figure number not used before");
            }
            if (figure.name.empty() || drawing.figureNumber(figure.name.c_str()) >= 0) {
                fail(at / i / "name", "a figure name, not empty and not used before");
            }
            drawing.figures.emplace(figure.number, figure);
        }
    }

    void readObjects(const Json& list, const Pointer& at, Drawing& drawing) const {
        requireList(list, at, "a list of drawing objects");
        for (std::size_t i = 0; i < list.size(); ++i) {
            CadObject object = readObject(list[i], at / i);
            if (drawing.objects.count(object.number) != 0) {
                fail(at / i / "number", "an object number not used before");
            }
            if (object.type == kFigureObject) {
                if (drawing.figures.count(object.name) == 0) {
                    fail(at / i / "name", "the number of a figure");
                }
                if (drawing.figureObject(object.name, object.attribute) != 0) {
                    fail(at / i / "attribute", "an instance of the figure not listed before");
                }
            }
            if (object.type == kNonCadObject && drawing.nonCadObject(object.name) != 0) {
                fail(at / i / "name", "a non-CAD number not used before");
            }
            drawing.objects.emplace(object.number, object);
        }
    }

    CadObject readObject(const Json& item, const Pointer& at) const {
        requireKeys(item, at, {"number", "type"}, "a drawing object with a number and a type");
        CadObject object;
        for (const auto& [key, value] : item.items()) {
            if (key == "number") {
                object.number = readObjectNumber(value, at / key);
            } else if (key == "type") {
                object.type = readInt(requireInteger(value, at / key), at / key);
            } else if (key == "name") {
                object.name = readInt(requireInteger(value, at / key), at / key);
            } else if (key == "attribute") {
                object.attribute = readInt(requireInteger(value, at / key), at / key);
            } else if (key == "start") {
                object.start = readPoint(value, at / key);
            } else if (key == "flags") {
                object.flags = readInt(requireInteger(value, at / key), at / key);
            } else if (key == "deleted") {
                if (!value.is_boolean()) {
                    fail(at / key, "true or false");
                }
                object.deleted = value.get<bool>();
            } else {
                fail(at / key, "one of number, type, name, attribute, start, flags, deleted");
            }
        }
        return object;
    }

    int readObjectNumber(const Json& value, const Pointer& at) const {
        const int number = readInt(requireInteger(value, at), at);
        if (number < 1) {
            fail(at, "a number of 1 or more");
        }
        return number;
    }

    std::array<double, 3> readPoint(const Json& value, const Pointer& at) const {
        if (!value.is_array() || value.size() != 3) {
            fail(at, "a point [x, y, z]");
        }
        std::array<double, 3> point{};
        for (std::size_t i = 0; i < 3; ++i) {
            if (!value[i].is_number()) {
                fail(at / i, "a number");
            }
            point[i] = value[i].get<double>();
        }
        return point;
    }

    const Json& requireInteger(const Json& value, const Pointer& at) const {
        if (!value.is_number_integer()) {
            fail(at, "an integer");
        }
        return value;
    }

    void requireList(const Json& value, const Pointer& at, const char* expected) const {
        if (!value.is_array()) {
            fail(at, expected);
        }
    }

    void requireKeys(const Json& value, const Pointer& at, std::initializer_list<const char*> keys,
                     const char* expected) const {
        bool complete = value.is_object();
        for (const char* key : keys) {
            complete = complete && value.contains(key);
        }
        if (!complete) {
            fail(at, expected);
        }
    }

    std::string readText(const Json& value, const Pointer& at, const char* expected) const {
        if (!value.is_string()) {
            fail(at, expected);
        }
        return hostText(value.get_ref<const std::string&>(), at, expected);
    }

    // The host's bytes of a text of the file.
    std::string hostText(const std::string& text, const Pointer& at, const char* what) const {
        std::optional<std::string> bytes = VelkApi::host::codepage::fromUtf8(text);
        if (!bytes) {
            fail(at, std::string(what) + " of Windows-1252 characters");
        }
        return *std::move(bytes);
    }

    CaptureInfo readCapture(const Json& section, const Pointer& at) const {
        requireObject(section, at);
        CaptureInfo capture;
        for (const auto& [key, value] : section.items()) {
            if (key == "taken") {
                capture.taken = readText(value, at / key, "a time");
            } else if (key == "library") {
                capture.library = readText(value, at / key, "a version");
            } else if (key == "missingExports") {
                requireList(value, at / key, "a list of export names");
                for (std::size_t i = 0; i < value.size(); ++i) {
                    capture.missingExports.push_back(
                        readText(value[i], at / key / i, "an export name"));
                }
            } else {
                fail(at / key, "one of taken, library, missingExports");
            }
        }
        return capture;
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

using VelkApi::host::codepage::toUtf8;

Json globalJson(const GlobalValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return toUtf8(*text);
    }
    return std::visit([](const auto& held) { return Json(held); }, value);
}

Json storesJson(const Stores& stores) {
    Json json = Json::object();
    for (const auto& [number, records] : stores) {
        Json& list = json[std::to_string(number)] = Json::array();
        for (const Record& record : records) {
            Json& lines = list.emplace_back(Json::array());
            for (const std::string& line : record) {
                lines.push_back(toUtf8(line));
            }
        }
    }
    return json;
}

Json captureJson(const CaptureInfo& capture) {
    Json json = Json::object();
    json["taken"] = toUtf8(capture.taken);
    json["library"] = toUtf8(capture.library);
    Json& missing = json["missingExports"] = Json::array();
    for (const std::string& name : capture.missingExports) {
        missing.push_back(toUtf8(name));
    }
    return json;
}

Json drawingJson(const Drawing& drawing) {
    Json figures = Json::array();
    for (const auto& [number, figure] : drawing.figures) {
        Json item = Json::object();
        item["number"] = number;
        item["name"] = toUtf8(figure.name);
        figures.push_back(item);
    }
    Json objects = Json::array();
    for (const auto& [number, object] : drawing.objects) {
        Json item = Json::object();
        item["number"] = number;
        item["type"] = object.type;
        item["name"] = object.name;
        item["attribute"] = object.attribute;
        item["start"] = object.start;
        item["flags"] = object.flags;
        item["deleted"] = object.deleted;
        objects.push_back(item);
    }
    Json json = Json::object();
    json["figures"] = figures;
    json["objects"] = objects;
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
        root["environment"][toUtf8(name)] = toUtf8(text);
    }
    root["globals"] = Json::object();
    for (const auto& [name, value] : project.globals) {
        root["globals"][toUtf8(name)] = globalJson(value);
    }
    root["stores"] = storesJson(project.stores);
    if (!project.cad.empty()) {
        root["cad"] = drawingJson(project.cad);
    }
    if (project.capture) {
        root["capture"] = captureJson(*project.capture);
    }
    return root.dump(2) + "\n";
}

}  // namespace velkhost::detail
