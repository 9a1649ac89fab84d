#include "FreeCadToolBits.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <regex>
#include <set>

#include "Project.h"

namespace velk {

namespace {

using Json = nlohmann::ordered_json;
namespace fs = std::filesystem;

constexpr const char* kDegree = "\xC2\xB0";  // in UTF-8
constexpr int kBitVersion = 2;
constexpr int kLibraryVersion = 1;

// Where in a file a value is: "bits/5mm.fctb: /parameter/Diameter".
struct JsonPlace {
    std::string file;
    std::string pointer;

    JsonPlace operator/(const std::string& key) const {
        std::string escaped;
        for (const char c : key) {
            escaped += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
        }
        return {file, pointer + "/" + escaped};
    }
    JsonPlace operator/(std::size_t index) const { return *this / std::to_string(index); }
    std::string text() const { return file + ": " + (pointer.empty() ? "/" : pointer); }
    [[noreturn]] void expected(const std::string& what) const {
        throw ExchangeFileError(text() + ": expected " + what);
    }
};

// The file's JSON; a syntax error is named by its line and column.
Json parseJsonFile(const std::string& path) {
    const std::string text = readTextFile(path);
    try {
        return Json::parse(text);
    } catch (const Json::parse_error& e) {
        // "[json.exception.parse_error.101] parse error at line 2, column 5: syntax error ..."
        const std::string what = e.what();
        const std::size_t at = what.find(" at line ");
        throw ExchangeFileError(
            path + ": not JSON: " + (at == std::string::npos ? what : what.substr(at + 4)));
    }
}

const Json& requireMember(const Json& object, const JsonPlace& place, const std::string& key,
                          Json::value_t type, const std::string& what) {
    const auto found = object.find(key);
    const bool integer = type == Json::value_t::number_integer;
    if (found == object.end() || (integer ? !found->is_number_integer() : found->type() != type)) {
        (place / key).expected(what);
    }
    return *found;
}

std::string textOf(const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

// "5.0000 mm", "0.375 \"", "119 °", "4": the number and the unit after it.
struct QuantityText {
    double number;
    std::string unit;
};

std::optional<QuantityText> splitQuantity(const std::string& text) {
    static const std::regex quantity(
        R"(\s*([-+]?(?:[0-9]+(?:[.,][0-9]*)?|[.,][0-9]+)(?:[eE][-+]?[0-9]+)?)\s*(.*?)\s*)");
    std::smatch match;
    if (!std::regex_match(text, match, quantity)) {
        return std::nullopt;
    }
    const std::optional<double> number = parseNumber(match[1].str());
    if (!number) {
        return std::nullopt;
    }
    return QuantityText{*number, match[2].str()};
}

double lengthOf(const QuantityText& quantity, const std::string& text, const JsonPlace& place) {
    if (quantity.unit.empty() || quantity.unit == "mm") {
        return quantity.number;
    }
    if (quantity.unit == "in" || quantity.unit == "\"") {
        return quantity.number * kMillimetresPerInch;
    }
    if (quantity.unit == kDegree) {
        place.expected("a length in mm, in or \", got '" + text + "'");
    }
    throw ExchangeFileError(place.text() + ": unknown unit '" + quantity.unit +
                            "': expected mm, in or \"");
}

double angleOf(const QuantityText& quantity, const std::string& text, const JsonPlace& place) {
    if (quantity.unit.empty() || quantity.unit == kDegree || quantity.unit == "deg") {
        return quantity.number;
    }
    if (quantity.unit == "mm" || quantity.unit == "in" || quantity.unit == "\"") {
        place.expected(std::string("an angle in ") + kDegree + ", got '" + text + "'");
    }
    throw ExchangeFileError(place.text() + ": unknown unit '" + quantity.unit + "': expected " +
                            kDegree);
}

// A parameter's value in the record's units: a quantity written as text, or a plain number.
double numberOf(const ExchangeField& field, const Json& value, const JsonPlace& place) {
    const std::string text = textOf(value);
    std::optional<QuantityText> quantity;
    if (value.is_number()) {
        quantity = QuantityText{value.get<double>(), ""};
    } else if (value.is_string()) {
        quantity = splitQuantity(text);
    }
    if (field.quantity == Quantity::Count) {
        if (!quantity || !quantity->unit.empty() ||
            quantity->number != std::floor(quantity->number) || quantity->number < 0 ||
            quantity->number > 2147483646.0) {
            place.expected("a whole number, got '" + text + "'");
        }
        return quantity->number;
    }
    if (!quantity) {
        place.expected("a number and its unit, e.g. \"5.0000 mm\", got '" + text + "'");
    }
    return field.quantity == Quantity::Length ? lengthOf(*quantity, text, place)
                                              : angleOf(*quantity, text, place);
}

void readParameters(const Json& parameters, const JsonPlace& place, ExchangedTool& tool) {
    for (const auto& [name, value] : parameters.items()) {
        const ExchangeField* field = freeCadField(name);
        if (field == nullptr) {
            tool.kept.push_back(name + "=" + hostText(textOf(value), (place / name).text()));
        } else if (field->quantity == Quantity::Text) {
            if (!value.is_string()) {
                (place / name).expected("a text");
            }
            tool.texts[field->record] = hostText(value.get<std::string>(), (place / name).text());
        } else {
            tool.numbers[field->record] = numberOf(*field, value, place / name);
        }
    }
}

// The tool type of a shape; a shape the table does not know is kept as it stands.
std::string toolTypeOf(const std::string& shape, const JsonPlace& place) {
    const ToolShape* row = toolTypeOfShape(shape);
    return row != nullptr ? row->toolType : hostText(shape, place.text());
}

// A bit's or a library's JSON object, of the version given; `kind` names what it is.
Json readFormatFile(const std::string& path, int version, const std::string& kind) {
    Json file = parseJsonFile(path);
    const JsonPlace place{path, ""};
    if (!file.is_object()) {
        place.expected("a JSON object, " + kind);
    }
    const std::string versionText = std::to_string(version) + ", the version of " + kind;
    if (requireMember(file, place, "version", Json::value_t::number_integer, versionText)
            .get<long long>() != version) {
        (place / "version").expected(versionText);
    }
    return file;
}

ExchangedTool readBit(const std::string& path, const std::string& origin) {
    const Json bit = readFormatFile(path, kBitVersion, "a FreeCAD tool bit");
    const JsonPlace place{path, ""};
    ExchangedTool tool;
    tool.origin = origin;
    const Json& name =
        requireMember(bit, place, "name", Json::value_t::string, "a text, the tool's name");
    tool.texts[kDescription] = hostText(name.get<std::string>(), (place / "name").text());
    const Json& shape = requireMember(bit, place, "shape", Json::value_t::string,
                                      "a text, the shape file (endmill.fcstd, ...)");
    tool.texts[kToolType] = toolTypeOf(shape.get<std::string>(), place / "shape");
    readParameters(
        requireMember(bit, place, "parameter", Json::value_t::object, "an object of parameters"),
        place / "parameter", tool);
    if (bit.contains("attribute")) {
        readParameters(requireMember(bit, place, "attribute", Json::value_t::object,
                                     "an object of attributes"),
                       place / "attribute", tool);
    }
    return tool;
}

// Where a library's bit is: beside the library, else in a Bit folder beside the library's.
fs::path findBit(const fs::path& library, const std::string& bit, const JsonPlace& place) {
    const fs::path folder = library.parent_path();
    const fs::path candidates[] = {folder / bit, folder.parent_path() / "Bit" / bit};
    for (const fs::path& candidate : candidates) {
        if (fs::is_regular_file(candidate)) {
            return candidate.lexically_normal();
        }
    }
    throw ExchangeFileError(place.text() + ": bit file '" + bit + "' not found in " +
                            candidates[0].parent_path().lexically_normal().generic_string() +
                            " or " +
                            candidates[1].parent_path().lexically_normal().generic_string());
}

// "5.0000 mm" as FreeCAD writes it, with more digits where the record keeps more.
std::string quantityText(double value, const std::string& unit) {
    char fixed[64];
    std::snprintf(fixed, sizeof fixed, "%.4f", value);
    const std::string exact = sixDigits(value);
    const std::string number = std::stod(fixed) == std::stod(exact) ? fixed : exact;
    return unit.empty() ? number : number + " " + unit;
}

std::string parameterText(const ExchangeField& field, double value, Units units) {
    switch (field.quantity) {
        case Quantity::Length:
            return quantityText(lengthIn(units, value), units == Units::Inch ? "in" : "mm");
        case Quantity::Angle:
            return quantityText(value, kDegree);
        default:
            return sixDigits(value);
    }
}

std::string toolLabel(const ExchangedTool& tool) {
    return "T" + sixDigits(tool.numbers.at(kToolNumber));
}

const ToolShape& shapeOf(const ExchangedTool& tool, std::vector<std::string>& notes) {
    const std::string type = tool.text(kToolType);
    if (const ToolShape* shape = shapeOfToolType(type)) {
        if (!shape->readBack) {
            notes.push_back(toolLabel(tool) + ": FreeCAD draws a " + shape->toolType + " as " +
                            shape->shape + ", which reads back as " +
                            toolTypeOfShape(shape->shape)->toolType);
        }
        return *shape;
    }
    notes.push_back(toolLabel(tool) +
                    (type.empty() ? ": no tool type"
                                  : ": tool type '" + utf8Text(type) + "' has no FreeCAD shape") +
                    ": written as " + toolShapes().front().shape);
    return toolShapes().front();
}

Json bitJson(const ExchangedTool& tool, Units units, std::vector<std::string>& notes) {
    const std::string type = tool.text(kToolType);
    const bool ownShape = type.size() > 6 && type.compare(type.size() - 6, 6, ".fcstd") == 0;
    const ToolShape& shape = ownShape ? toolShapes().front() : shapeOf(tool, notes);
    Json parameters = Json::object();
    for (const ExchangeField& field : exchangeFields()) {
        if (field.freeCad == nullptr || !field.written || !tool.has(field.record)) {
            continue;
        }
        const std::string name =
            field.quantity == Quantity::Angle ? shape.angleParameter : field.freeCad;
        parameters[name] = field.quantity == Quantity::Text
                               ? utf8Text(tool.text(field.record))
                               : parameterText(field, tool.numbers.at(field.record), units);
    }
    return {{"version", kBitVersion},
            {"name", utf8Text(tool.text(kDescription))},
            {"shape", ownShape ? utf8Text(type) : shape.shape},
            {"parameter", parameters},
            {"attribute", Json::object()}};
}

// "End mill 10 mm, 3 flutes" as "End_mill_10_mm_3_flutes.fctb"; unique among `taken`.
std::string bitFileName(const ExchangedTool& tool, std::set<std::string>& taken) {
    std::string stem;
    for (const char c : tool.text(kDescription)) {
        const bool plain = std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '.';
        if (plain) {
            stem += c;
        } else if (!stem.empty() && stem.back() != '_') {
            stem += '_';
        }
    }
    while (!stem.empty() && (stem.back() == '_' || stem.back() == '.')) {
        stem.pop_back();
    }
    stem = stem.empty() ? toolLabel(tool) : stem;
    std::string name = stem + ".fctb";
    if (!taken.insert(name).second) {
        name = stem + "_" + toolLabel(tool) + ".fctb";
        taken.insert(name);
    }
    return name;
}

}  // namespace

ExchangedTool readToolBit(const std::string& path) {
    return readBit(path, path);
}

std::vector<ExchangedTool> readToolLibrary(const std::string& path) {
    const Json library = readFormatFile(path, kLibraryVersion, "a FreeCAD tool library");
    const JsonPlace place{path, ""};
    const Json& entries = requireMember(library, place, "tools", Json::value_t::array,
                                        "a list of tools, each its nr and path");
    std::vector<ExchangedTool> tools;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const JsonPlace entry = place / "tools" / i;
        if (!entries[i].is_object()) {
            entry.expected("an object of the tool's nr and path");
        }
        const Json& bit = requireMember(entries[i], entry, "path", Json::value_t::string,
                                        "the path of a tool bit file (.fctb)");
        const fs::path found = findBit(path, bit.get<std::string>(), entry / "path");
        ExchangedTool tool = readBit(found.generic_string(), entry.text());
        if (entries[i].contains("nr")) {
            const Json& nr = requireMember(entries[i], entry, "nr", Json::value_t::number_integer,
                                           "a whole tool number");
            if (nr.get<long long>() < 0 || nr.get<long long>() > 2147483646) {
                (entry / "nr").expected("a whole tool number");
            }
            tool.numbers[kToolNumber] = static_cast<double>(nr.get<long long>());
        }
        tools.push_back(std::move(tool));
    }
    return tools;
}

std::vector<TextFile> toolLibraryFiles(const std::string& path,
                                       const std::vector<ExchangedTool>& tools, Units units,
                                       std::vector<std::string>& notes) {
    const fs::path folder = fs::path(path).parent_path();
    std::vector<TextFile> files;
    std::set<std::string> taken;
    Json entries = Json::array();
    for (const ExchangedTool& tool : tools) {
        const std::string name = bitFileName(tool, taken);
        entries.push_back(
            {{"nr", static_cast<long long>(tool.numbers.at(kToolNumber))}, {"path", name}});
        files.push_back({(folder / name).string(), bitJson(tool, units, notes).dump(2) + "\n"});
    }
    const Json library = {{"version", kLibraryVersion}, {"tools", entries}};
    files.insert(files.begin(), TextFile{path, library.dump(2) + "\n"});
    return files;
}

std::vector<std::string> toolBitNames() {
    std::vector<std::string> names = {kToolNumber, kDescription, kToolType};
    for (const ExchangeField& field : exchangeFields()) {
        if (field.freeCad != nullptr) {
            names.push_back(field.record);
        }
    }
    return names;
}

}  // namespace velk
