#include "ToolExchangeTable.h"

#include <algorithm>
#include <cctype>

namespace velk {

namespace {

bool sameText(const std::string& a, const std::string& b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](unsigned char x, unsigned char y) {
               return std::tolower(x) == std::tolower(y);
           });
}

}  // namespace

const std::vector<ExchangeField>& exchangeFields() {
    using Q = Quantity;
    static const std::vector<ExchangeField> fields = {
        {kToolNumber, Q::Count, nullptr, 'T', true},
        {kPocket, Q::Count, nullptr, 'P', true},
        {"w_t_diam", Q::Length, "Diameter", 'D', true},
        {"w_t_tool_len", Q::Length, "Length", 'Z', true},
        {"w_t_useable_len", Q::Length, "CuttingEdgeHeight", 0, true},
        {"w_t_useable_len", Q::Length, "CuttingEdgeLength", 0, false},
        {"w_t_shaftdiam", Q::Length, "ShankDiameter", 0, true},
        {"w_t_cornerrad", Q::Length, "CornerRadius", 0, true},
        {"w_t_topangle", Q::Angle, "TipAngle", 0, true},
        {"w_t_topangle", Q::Angle, "CuttingEdgeAngle", 0, false},
        {"w_t_2_diam", Q::Length, "TipDiameter", 0, true},
        {"i_t_nr_theeth", Q::Count, "Flutes", 0, true},
        {"w_t_pitch", Q::Length, "Pitch", 0, true},
        {"$_t_tool_mat", Q::Text, "Material", 0, true},
    };
    return fields;
}

const ExchangeField* freeCadField(const std::string& parameter) {
    for (const ExchangeField& field : exchangeFields()) {
        if (field.freeCad != nullptr && parameter == field.freeCad) {
            return &field;
        }
    }
    return nullptr;
}

const ExchangeField* linuxCncField(char letter) {
    for (const ExchangeField& field : exchangeFields()) {
        if (field.linuxCnc != 0 && field.linuxCnc == letter) {
            return &field;
        }
    }
    return nullptr;
}

const std::vector<ToolShape>& toolShapes() {
    static const std::vector<ToolShape> shapes = {
        {"End mill", "endmill.fcstd", "TipAngle", true},
        {"Ball nose", "ballend.fcstd", "TipAngle", true},
        {"Bull nose", "bullnose.fcstd", "TipAngle", true},
        {"Drill", "drill.fcstd", "TipAngle", true},
        {"Chamfer mill", "chamfer.fcstd", "CuttingEdgeAngle", true},
        {"V-bit", "v-bit.fcstd", "CuttingEdgeAngle", true},
        {"Tap", "tap.fcstd", "TipAngle", true},
        {"Thread mill", "threadmill.fcstd", "CuttingEdgeAngle", true},
        {"Dovetail", "dovetail.fcstd", "CuttingEdgeAngle", true},
        {"Slitting saw", "slittingsaw.fcstd", "TipAngle", true},
        {"Probe", "probe.fcstd", "TipAngle", true},
        // FreeCAD draws a face mill as an end mill of its diameter.
        {"Face mill", "endmill.fcstd", "TipAngle", false},
    };
    return shapes;
}

const ToolShape* shapeOfToolType(const std::string& toolType) {
    for (const ToolShape& shape : toolShapes()) {
        if (sameText(toolType, shape.toolType)) {
            return &shape;
        }
    }
    return nullptr;
}

const ToolShape* toolTypeOfShape(const std::string& shape) {
    for (const ToolShape& row : toolShapes()) {
        if (row.readBack && sameText(shape, row.shape)) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace velk
