// A tool on its way into or out of a tool store, in the tool record's own names and units
// (lengths in mm, angles in degrees, texts as the host's Windows-1252 bytes), and what the tool
// exchange formats share: their units, their failures and how their files are read and written.
#pragma once

#include <velkapi/ToolSection.h>
#include <velkhost/OfflineHost.h>

#include <map>
#include <string>
#include <vector>

#include "ToolExchangeTable.h"

namespace velk {

// A file to import that cannot be read or holds what the format does not allow. The message
// names the file, the line or JSON path, and what was expected there. velk exits with status 2,
// as for a project file that cannot be read.
class ExchangeFileError : public velkhost::ProjectError {
  public:
    using velkhost::ProjectError::ProjectError;
};

enum class Units { Millimetre, Inch };

constexpr double kMillimetresPerInch = 25.4;

struct ExchangedTool {
    std::string origin;                     // where it came from: "tools.tbl: line 3"
    std::map<std::string, double> numbers;  // ints and doubles of the record by name
    std::map<std::string, std::string> texts;
    std::vector<std::string> kept;  // fields without a name in the record, as text

    bool has(const std::string& name) const;
    std::string text(const std::string& name) const;  // "" when the tool has none
};

// The tool's values into a fresh tool record: the kept fields go to its comment.
void fillToolRecord(const ExchangedTool& tool, VelkApi::ToolSection& record);
// The set values of a record (ints and doubles not at the "not set" marker, texts not blank).
ExchangedTool fromToolRecord(const VelkApi::ToolSection& record);
// The set values of a record that no field of an export carries: the record's names.
std::vector<std::string> notCarried(const VelkApi::ToolSection& record,
                                    const std::vector<std::string>& carried);

// The file's bytes as UTF-8: a file that is not UTF-8 is taken as Windows-1252 and converted.
// A UTF-8 byte order mark is left out. Throws ExchangeFileError when it cannot be read.
std::string readTextFile(const std::string& path);
// The host's text of a UTF-8 text; throws ExchangeFileError naming `where` when a character is
// not one of Windows-1252.
std::string hostText(const std::string& utf8, const std::string& where);
// A host's text as UTF-8.
std::string utf8Text(const std::string& hostBytes);

// Writes the text to the file as it stands (no line-end translation); throws CommandError.
void writeTextFile(const std::string& path, const std::string& text);

// A number with six significant digits, as the tool record keeps it: 9.525, 72, 0.375.
std::string sixDigits(double value);

// A length of the record (mm) in the given units, and back.
double lengthIn(Units units, double millimetres);
double millimetresOf(Units units, double length);

}  // namespace velk
