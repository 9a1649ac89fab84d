// Which tool record name each field of the tool exchange formats goes to, and the tool types
// that go with FreeCAD's tool bit shapes. docs/tool-exchange.md shows the same table to users.
#pragma once

#include <string>
#include <vector>

namespace velk {

// What a field holds, and so how its value converts: lengths in mm in the record, angles in
// degrees, counts as whole numbers, texts as they stand.
enum class Quantity { Length, Angle, Count, Text };

struct ExchangeField {
    const char* record;  // the tool record's name
    Quantity quantity;
    const char* freeCad;  // the FreeCAD tool bit's parameter; null when a bit has none
    char linuxCnc;        // the LinuxCNC tool table's word letter; 0 when a table has none
    bool written;         // false: read only, another row of the same name writes the value
};

// Every mapped field, in the order exports write them.
const std::vector<ExchangeField>& exchangeFields();

// The row of a FreeCAD parameter (exact name), or of a LinuxCNC word letter; null when none.
const ExchangeField* freeCadField(const std::string& parameter);
const ExchangeField* linuxCncField(char letter);

// The names the tool record carries besides the rows above.
constexpr const char* kToolNumber = "i_t_tool_nr";
constexpr const char* kPocket = "i_t_bin(1)";
constexpr const char* kDescription = "$_t_tooldesc";
constexpr const char* kToolType = "$_t_tool_type";
constexpr const char* kComment = "$_t_comment";

// A tool type of the record and the FreeCAD shape that draws it.
struct ToolShape {
    const char* toolType;        // "$_t_tool_type", e.g. "End mill"
    const char* shape;           // the bit's "shape", e.g. "endmill.fcstd"
    const char* angleParameter;  // the bit's name for the tool's angle (w_t_topangle)
    bool readBack;               // false: a bit of this shape reads as an earlier row's type
};

const std::vector<ToolShape>& toolShapes();

// The shape of a tool type (any case); null when FreeCAD has none for it.
const ToolShape* shapeOfToolType(const std::string& toolType);
// The row of a bit's shape (any case); null for a shape not in the table.
const ToolShape* toolTypeOfShape(const std::string& shape);

// The LinuxCNC words that the tool record has no place for: kept in the tool's comment.
constexpr const char* kUnmappedLinuxCncWords = "XYABCUVWIJQ";

}  // namespace velk
