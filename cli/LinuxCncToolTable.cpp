#include "LinuxCncToolTable.h"

#include <cctype>
#include <cmath>
#include <limits>
#include <optional>
#include <sstream>

#include "Project.h"

namespace velk {

namespace {

constexpr const char* kTableWords = "T P D Z X Y A B C U V W I J Q";

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

struct TableLine {
    std::string where;  // "tools.tbl: line 3"
    Units units;
};

// A mapped word's value into the tool, converted to the record's units.
void takeMappedWord(const TableLine& line, const ExchangeField& field, const std::string& word,
                    double value, ExchangedTool& tool) {
    if (tool.has(field.record)) {
        throw ExchangeFileError(line.where + ": '" + word + "': a second " + word.substr(0, 1) +
                                " word on the line");
    }
    if (field.quantity == Quantity::Count) {
        if (value != std::floor(value) || value < 0 || value > 2147483646.0) {
            throw ExchangeFileError(line.where + ": '" + word + "': expected a whole number");
        }
        tool.numbers[field.record] = value;
    } else {
        tool.numbers[field.record] = millimetresOf(line.units, value);
    }
}

// A word without a number reads as this, which is not finite like an infinite number.
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// One word of a letter and a number; the unmapped ones are added to `unmapped` as written.
void takeWord(const TableLine& line, const std::string& word, ExchangedTool& tool,
              std::string& unmapped) {
    const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(word[0])));
    const double value = std::isalpha(static_cast<unsigned char>(word[0]))
                             ? parseNumber(word.substr(1)).value_or(kNoNumber)
                             : kNoNumber;
    if (!std::isfinite(value)) {
        throw ExchangeFileError(line.where + ": '" + word +
                                "': expected a word of a letter and a number, e.g. D0.25");
    }
    const std::string written = std::string(1, letter) + word.substr(1);
    if (const ExchangeField* field = linuxCncField(letter)) {
        takeMappedWord(line, *field, written, value, tool);
    } else if (std::string(kUnmappedLinuxCncWords).find(letter) != std::string::npos) {
        unmapped += (unmapped.empty() ? "" : " ") + written;
    } else {
        throw ExchangeFileError(line.where + ": '" + word + "': expected one of the words " +
                                kTableWords);
    }
}

// The tool of one line; none for a line with no words.
std::optional<ExchangedTool> readLine(const TableLine& line, const std::string& text) {
    const std::size_t semicolon = text.find(';');
    std::istringstream words(text.substr(0, semicolon));
    ExchangedTool tool;
    tool.origin = line.where;
    std::string unmapped;
    for (std::string word; words >> word;) {
        takeWord(line, word, tool, unmapped);
    }
    if (tool.numbers.empty() && unmapped.empty()) {
        return std::nullopt;
    }
    if (!unmapped.empty()) {
        tool.kept.push_back(unmapped + (line.units == Units::Inch ? " (inch)" : ""));
    }
    if (semicolon != std::string::npos) {
        const std::string comment = trimmed(text.substr(semicolon + 1));
        if (!comment.empty()) {
            tool.texts[kDescription] = hostText(comment, line.where);
        }
    }
    return tool;
}

// A word's number: the tool's value of the field, the pocket the tool number when the record
// holds none; none when the tool has no value for the field.
std::optional<double> wordValue(const ExchangedTool& tool, const ExchangeField& field,
                                Units units) {
    const auto value = tool.numbers.find(field.record);
    if (value == tool.numbers.end()) {
        return field.record == std::string(kPocket)
                   ? std::optional<double>(tool.numbers.at(kToolNumber))
                   : std::nullopt;
    }
    return field.quantity == Quantity::Length ? lengthIn(units, value->second) : value->second;
}

}  // namespace

std::vector<ExchangedTool> readToolTable(const std::string& path, Units units) {
    const std::string text = readTextFile(path);
    std::istringstream lines(text);
    std::vector<ExchangedTool> tools;
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        const TableLine where{path + ": line " + std::to_string(number), units};
        if (auto tool = readLine(where, line)) {
            tools.push_back(std::move(*tool));
        }
    }
    return tools;
}

std::string toolTableText(const std::vector<ExchangedTool>& tools, Units units) {
    std::string table;
    for (const ExchangedTool& tool : tools) {
        std::string line;
        for (const ExchangeField& field : exchangeFields()) {
            if (field.linuxCnc == 0 || !field.written) {
                continue;
            }
            if (const std::optional<double> value = wordValue(tool, field, units)) {
                line +=
                    (line.empty() ? "" : " ") + std::string(1, field.linuxCnc) + sixDigits(*value);
            }
        }
        const std::string description = tool.text(kDescription);
        if (!description.empty()) {
            line += " ;" + utf8Text(description);
        }
        table += line + "\n";
    }
    return table;
}

std::vector<std::string> toolTableNames() {
    std::vector<std::string> names = {kDescription};
    for (const ExchangeField& field : exchangeFields()) {
        if (field.linuxCnc != 0) {
            names.push_back(field.record);
        }
    }
    return names;
}

}  // namespace velk
