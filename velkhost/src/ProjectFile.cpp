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
// Lists and objects nest at most 100 deep; the first one deeper stops the reading with its path.
// A key used twice in one object is refused, and so is an integer beyond 64 bits (no value of
// a project is one), rather than read as a double.
//
// A capture of a session in the host application adds what it was taken from:
//   "capture": {"taken": "2026-11-23T14:05:00Z", "library": "0.2.0",
//               "missingExports": ["VelkGetNonCadObject"]}
// "missingExports" lists the host exports the library did not find in that session; the offline
// host leaves them missing: a call to one goes to "VelkMissingAPI" in its place.
#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "JsonPathTracker.h"
#include "Project.h"
#include "WindowsCodePage.h"

namespace velkhost::detail {

namespace {

using Pointer = Json::json_pointer;

// The parser takes a NUL byte for the end of the text: a file holding one would be read as if
// it ended there. No JSON text holds one, so it is refused, by where it is.
void requireNoNulByte(std::string_view text, std::size_t offset, const std::string& source) {
    const std::size_t at = text.find('\0');
    if (at != std::string_view::npos) {
        throw ProjectError(source + ": not valid JSON: a NUL byte at byte " +
                           std::to_string(offset + at));
    }
}

// A project file for the parser, read a megabyte at a time into one buffer, so that a large file
// is never held whole. `progress` hears how many bytes have been parsed each time the next
// megabyte is read.
class FileChunks {
  public:
    FileChunks(const std::string& path, const LoadProgress& progress)
        : filePath(path), reportProgress(progress), buffer(kChunkSize) {
        std::error_code ignored;
        if (!std::filesystem::is_directory(path, ignored)) {
            in.open(path, std::ios::binary);
        }
        if (!in.is_open()) {
            throw ProjectError(path + ": cannot be read");
        }
        size = static_cast<std::size_t>(std::filesystem::file_size(path, ignored));
        refill();
    }

    bool atEnd() const { return at == end; }
    char current() const { return *at; }
    void advance() {
        if (++at == end) {
            refill();
        }
    }
    void finish() const {
        if (reportProgress) {
            reportProgress(consumed, std::max(size, consumed));
        }
    }

  private:
    static constexpr std::size_t kChunkSize = std::size_t{1} << 20;

    void refill() {
        in.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        if (in.bad()) {
            throw ProjectError(filePath + ": cannot be read");
        }
        const auto count = static_cast<std::size_t>(in.gcount());
        requireNoNulByte(std::string_view(buffer.data(), count), consumed, filePath);
        if (count > 0 && consumed > 0 && reportProgress) {
            reportProgress(consumed, std::max(size, consumed + count));
        }
        consumed += count;
        at = buffer.data();
        end = at + count;
    }

    const std::string& filePath;
    const LoadProgress& reportProgress;
    std::ifstream in;
    std::size_t size = 0;
    std::size_t consumed = 0;  // the bytes read from the file so far
    std::vector<char> buffer;
    const char* at = nullptr;
    const char* end = nullptr;
};

// A position in a FileChunks for the parser; the default one is the end of the file.
class ChunkPosition {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = char;

    ChunkPosition() = default;
    explicit ChunkPosition(FileChunks& file) : chunks(&file) {}

    char operator*() const { return chunks->current(); }
    ChunkPosition& operator++() {
        chunks->advance();
        return *this;
    }
    ChunkPosition operator++(int) {
        ChunkPosition before = *this;
        ++*this;
        return before;
    }
    bool operator==(const ChunkPosition& other) const { return atEnd() == other.atEnd(); }
    bool operator!=(const ChunkPosition& other) const { return !(*this == other); }

  private:
    bool atEnd() const { return chunks == nullptr || chunks->atEnd(); }

    FileChunks* chunks = nullptr;
};

// Gathers one JSON value from the parser's events the way the parser's own document does (a
// repeated key never comes here: the reader refuses it first).
class ValueBuilder {
  public:
    bool empty() const { return openContainers.empty(); }
    void key(const std::string& name) { lastKey = name; }
    void add(Json value) { place(std::move(value)); }
    void open(Json container) { openContainers.push_back(&place(std::move(container))); }
    void close() { openContainers.pop_back(); }
    Json take() { return std::move(root); }

  private:
    Json& place(Json value) {
        if (openContainers.empty()) {
            return root = std::move(value);
        }
        Json& parent = *openContainers.back();
        if (parent.is_array()) {
            parent.push_back(std::move(value));
            return parent.back();
        }
        return parent[lastKey] = std::move(value);
    }

    Json root;
    std::vector<Json*> openContainers;  // the containers still being filled, innermost last
    std::string lastKey;
};

// Reads a project file from the parser's events. The stores, nearly all of a large file, go
// straight into records line by line; the other sections are small and are gathered as JSON
// values and checked whole when each ends. The first mismatch is kept and reported once the
// parser has seen the whole text, so that bad syntax anywhere is reported before it.
class ProjectReader {
  public:
    explicit ProjectReader(std::string sourceName) : source(std::move(sourceName)) {}

    template <typename Position>
    Project read(Position begin, Position end) {
        Json::sax_parse(begin, end, this);
        if (mismatch) {
            throw *mismatch;
        }
        return std::move(result);
    }

    // Lists and objects nested deeper than this are refused: nothing in a project needs more
    // than five levels, and a deeper document only costs memory and stack.
    static constexpr std::size_t kMaxNesting = 100;

    // The parser's events.
    bool null() { return scalar(Json(nullptr)); }
    bool boolean(bool value) { return scalar(Json(value)); }
    bool number_integer(Json::number_integer_t value) { return scalar(Json(value)); }
    bool number_unsigned(Json::number_unsigned_t value) { return scalar(Json(value)); }
    // An integer too large for 64 bits comes as a double; no global is an integer that large.
    // A document that is nothing but a number is no project, whatever the number.
    bool number_float(Json::number_float_t value, const std::string& text) {
        if (jsonPath.depth() > 0 && text.find_first_of(".eE") == std::string::npos) {
            checked([&] {
                fail(jsonPath.valuePath(), "an integer between -2147483648 and 2147483647");
            });
        }
        return scalar(Json(value));
    }
    bool binary(Json::binary_t& value) { return scalar(Json(value)); }
    bool string(std::string& text) {
        jsonPath.scalar();
        return checked([&] {
            if (level == Level::Lines && gatheredSection.empty()) {
                addLine(text);
            } else {
                addValue(Json(text));
            }
        });
    }
    bool start_object(std::size_t) {
        if (!opened(false)) {
            return false;
        }
        return checked([&] {
            if (level == Level::Root && gatheredSection.empty()) {
                level = Level::Sections;
            } else if (level == Level::Sections && gatheredSection == "stores") {
                gatheredSection.clear();
                level = Level::Stores;
            } else {
                openContainer(Json::object());
            }
        });
    }
    bool start_array(std::size_t) {
        if (!opened(true)) {
            return false;
        }
        return checked([&] {
            if (level == Level::Stores && gatheredSection.empty()) {
                level = Level::Records;
            } else if (level == Level::Records && gatheredSection.empty()) {
                records->emplace_back();
                level = Level::Lines;
            } else {
                openContainer(Json::array());
            }
        });
    }
    bool key(std::string& name) {
        if (!jsonPath.key(name)) {
            checked([&] { fail(jsonPath.path() / name, "a key not used before in its object"); });
        }
        return checked([&] {
            if (!gatheredSection.empty()) {
                builder.key(name);
            } else if (level == Level::Stores) {
                storeKey = name;
                records = &result.stores[readStoreNumber(name, Pointer() / "stores" / name)];
                records->clear();
            } else {
                beginSection(name);
            }
        });
    }
    bool end_object() {
        jsonPath.close();
        return checked([&] {
            if (!gatheredSection.empty()) {
                closeContainer();
            } else if (level == Level::Stores) {
                level = Level::Sections;
            }
        });
    }
    bool end_array() {
        jsonPath.close();
        return checked([&] {
            if (!gatheredSection.empty()) {
                closeContainer();
            } else {
                level = level == Level::Lines ? Level::Records : Level::Stores;
            }
        });
    }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& error) {
        // bad syntax, or a number beyond a double
        throw ProjectError(source + ": not valid JSON: " + withoutExceptionTag(error.what()));
    }

  private:
    // Where the events are: outside the project's object, among its sections, in the stores,
    // in a store's list of records, or in a record's lines. While a section other than the
    // stores is being gathered, `gatheredSection` names it and the builder takes the events.
    enum class Level { Root, Sections, Stores, Records, Lines };

    // After the first mismatch only the syntax is still checked.
    template <typename Event>
    bool checked(Event event) {
        if (!mismatch) {
            try {
                event();
            } catch (const ProjectError& error) {
                mismatch = error;
            }
        }
        return true;
    }

    // Stops the reading at a list or object nested too deep.
    bool opened(bool isList) {
        jsonPath.open(isList);
        if (jsonPath.depth() <= kMaxNesting) {
            return true;
        }
        checked([&] {
            fail(jsonPath.path(), "at most " + std::to_string(kMaxNesting) +
                                      " lists and objects nested in each other");
        });
        return false;
    }

    void beginSection(const std::string& name) {
        static const std::array<const char*, 5> kSections = {"environment", "globals", "stores",
                                                             "cad", "capture"};
        if (std::find(kSections.begin(), kSections.end(), name) == kSections.end()) {
            fail(Pointer() / name, "one of environment, globals, stores, cad, capture");
        }
        gatheredSection = name;
    }

    bool scalar(Json value) {
        jsonPath.scalar();
        return checked([&] { addValue(std::move(value)); });
    }

    void addValue(Json value) {
        requireGathering();
        builder.add(std::move(value));
        endValue();
    }

    void openContainer(Json container) {
        requireGathering();
        builder.open(std::move(container));
    }

    void requireGathering() const {
        if (gatheredSection.empty() || gatheredSection == "stores") {
            failAtLevel();
        }
    }

    void addLine(const std::string& text) {
        Record& record = records->back();
        std::optional<std::string> bytes = hostBytes(text);
        if (!bytes) {
            fail(linePath(), "a text line of Windows-1252 characters");
        }
        if (bytes->find('\0') != std::string::npos) {
            fail(linePath(), "a text line without a NUL character (the host ends a line there)");
        }
        record.push_back(*std::move(bytes));
    }

    void closeContainer() {
        builder.close();
        endValue();
    }

    // A section's value is whole once no container of it is still open.
    void endValue() {
        if (builder.empty()) {
            const std::string name = std::move(gatheredSection);
            gatheredSection.clear();
            readSection(name, builder.take(), result);
        }
    }

    // What was expected where a value of the wrong kind came.
    [[noreturn]] void failAtLevel() const {
        switch (level) {
            case Level::Root:
                fail(Pointer(), "an object");
            case Level::Sections:
                fail(Pointer() / "stores", "an object");
            case Level::Stores:
                fail(Pointer() / "stores" / storeKey, "a list of records");
            case Level::Records:
                fail(Pointer() / "stores" / storeKey / records->size(),
                     "a record (a list of text lines)");
            case Level::Lines:
                break;
        }
        fail(linePath(), "a text line");
    }

    Pointer linePath() const {
        return Pointer() / "stores" / storeKey / (records->size() - 1) / records->back().size();
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
        } else if (key == "cad") {
            project.cad = readDrawing(value, at);
        } else if (key == "capture") {
            project.capture = readCapture(value, at);
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
        std::optional<std::string> bytes = hostBytes(text);
        if (!bytes) {
            fail(at, std::string(what) + " of Windows-1252 characters");
        }
        return *std::move(bytes);
    }

    // Plain ASCII, most of a file, is the same in both.
    static std::optional<std::string> hostBytes(const std::string& text) {
        const bool ascii = std::all_of(text.begin(), text.end(),
                                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
        return ascii ? std::optional<std::string>(text) : VelkApi::host::codepage::fromUtf8(text);
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
        throw ProjectError(source + ": " + where + "expected " + expected);
    }

    std::string source;
    Project result;
    Level level = Level::Root;
    std::string gatheredSection;
    ValueBuilder builder;
    std::string storeKey;
    Records* records = nullptr;  // the records of the store being read
    std::optional<ProjectError> mismatch;
    JsonPathTracker jsonPath;
};

}  // namespace

Project parseProject(const std::string& text, const std::string& sourceName) {
    requireNoNulByte(text, 0, sourceName);
    return ProjectReader(sourceName).read(text.data(), text.data() + text.size());
}

Project readProjectFile(const std::string& path, const LoadProgress& progress) {
    FileChunks chunks(path, progress);
    Project project = ProjectReader(path).read(ChunkPosition(chunks), ChunkPosition());
    chunks.finish();
    return project;
}

}  // namespace velkhost::detail
