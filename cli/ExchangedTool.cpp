#include "ExchangedTool.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "EntryText.h"
#include "Project.h"
#include "WindowsCodePage.h"

namespace velk {

namespace codepage = VelkApi::host::codepage;

bool ExchangedTool::has(const std::string& name) const {
    return numbers.count(name) != 0 || texts.count(name) != 0;
}

std::string ExchangedTool::text(const std::string& name) const {
    const auto found = texts.find(name);
    return found == texts.end() ? "" : found->second;
}

namespace {

std::string joined(const std::vector<std::string>& parts, const std::string& separator) {
    std::string all;
    for (const std::string& part : parts) {
        all += (all.empty() ? "" : separator) + part;
    }
    return all;
}

bool isBlank(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

}  // namespace

void fillToolRecord(const ExchangedTool& tool, VelkApi::ToolSection& record) {
    for (const auto& [name, value] : tool.numbers) {
        if (record.dataTypeOf(name) == VelkApi::ValueDataType::Int) {
            record.setInt(name, static_cast<int>(value));
        } else {
            record.setDouble(name, value);
        }
    }
    for (const auto& [name, text] : tool.texts) {
        record.setString(name, text);
    }
    if (!tool.kept.empty()) {
        record.setString(kComment, joined(tool.kept, "; "));
    }
}

ExchangedTool fromToolRecord(const VelkApi::ToolSection& record) {
    ExchangedTool tool;
    std::vector<std::string> keys;
    for (const std::string& name : record.readKeys(keys)) {
        if (holdsUnset(record, name)) {
            continue;
        }
        switch (record.dataTypeOf(name)) {
            case VelkApi::ValueDataType::Int:
                tool.numbers[name] = record.getInt(name);
                break;
            case VelkApi::ValueDataType::Double:
                tool.numbers[name] = record.getDouble(name);
                break;
            default:
                if (!isBlank(record.getString(name))) {
                    tool.texts[name] = record.getString(name);
                }
                break;
        }
    }
    return tool;
}

std::vector<std::string> notCarried(const VelkApi::ToolSection& record,
                                    const std::vector<std::string>& carried) {
    const ExchangedTool tool = fromToolRecord(record);
    std::vector<std::string> left;
    for (int line = 0; line < VelkApi::ToolSection::LINESCOUNT; ++line) {
        for (int slot = 0; slot < VelkApi::ToolSection::lineslen[line]; ++slot) {
            const std::string& name = VelkApi::ToolSection::lines[line][slot];
            if (tool.has(name) &&
                std::find(carried.begin(), carried.end(), name) == carried.end() &&
                std::find(left.begin(), left.end(), name) == left.end()) {
                left.push_back(name);
            }
        }
    }
    return left;
}

std::string readTextFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw ExchangeFileError(path + ": cannot be read");
    }
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) {
        throw ExchangeFileError(path + ": cannot be read");
    }
    const std::string bom = "\xEF\xBB\xBF";
    if (bytes.compare(0, bom.size(), bom) == 0) {
        bytes.erase(0, bom.size());
    }
    return codepage::isUtf8(bytes) ? bytes : codepage::toUtf8(bytes);
}

std::string hostText(const std::string& utf8, const std::string& where) {
    if (const auto bytes = codepage::fromUtf8(utf8)) {
        return *bytes;
    }
    throw ExchangeFileError(where + ": expected a text of Windows-1252 characters");
}

std::string utf8Text(const std::string& hostBytes) {
    return codepage::toUtf8(hostBytes);
}

void writeTextFile(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary);
    out << text;
    if (!out.flush()) {
        throw CommandError(path + ": cannot be written");
    }
}

std::string sixDigits(double value) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << value;
    return text.str();
}

double lengthIn(Units units, double millimetres) {
    return units == Units::Inch ? millimetres / kMillimetresPerInch : millimetres;
}

double millimetresOf(Units units, double length) {
    return units == Units::Inch ? length * kMillimetresPerInch : length;
}

}  // namespace velk
