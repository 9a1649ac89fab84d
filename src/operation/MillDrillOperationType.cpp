#include <velkapi/MillDrillOperationType.h>

#include <velkapi/MillTurnVdm.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace VelkApi {

namespace {

using Type = MillDrillOperationType;

// Names accepted on reading, in the order they are compared.
constexpr std::array<std::pair<const char*, Type>, 21> kNamesRead = {{
    {"PROFILE", Type::PROFILE},
    {"SLOT", Type::SLOT},
    {"CORNER", Type::CORNER},
    {"CHAMFER", Type::CHAMFER},
    {"POCKET", Type::POCKET},
    {"FACEMILL", Type::FACEMILL},
    {"RESTMATL", Type::RESTMATL},
    {"DRILLING", Type::DRILLING},
    {"BORING", Type::DRILLING},
    {"POCCYCLE", Type::POCCYCLE},
    {"THREADMILLING", Type::THREADING},
    {"THREADING", Type::THREADING},
    {"ENGRAVE", Type::ENGRAVE},
    {"REDRAW", Type::REDRAW},
    {"TOOLS", Type::TOOLS},
    {"MEDITOR", Type::MEDITOR},
    {"MOVING", Type::MOVING},
    {"STD3DGEO", Type::STD3DGEO},
    {"RSURFING", Type::RSURFING},
    {"MILL_5AX", Type::MILL_5AX},
    {"UEDITOR_MAX", Type::UEDITOR_MAX},
}};

struct KindRow {
    const char* name;  // written name, "" for none
    int hostNumber;
};

// Indexed by the kind's value, 0 to 42.
const std::array<KindRow, 43>& kindTable() {
    static const std::array<KindRow, 43> table = [] {
        std::array<KindRow, 43> rows{};
        rows.fill({"", 4});
        rows[1] = {"PROFILE", 3};
        rows[2] = {"CORNER", 3};
        rows[3] = {"CHAMFER", 3};
        rows[4] = {"POCKET", 4};
        rows[5] = {"FACEMILL", 10};
        rows[6] = {"RESTMATL", 4};
        rows[7] = {"DRILLING", 5};
        rows[8] = {"POCCYCLE", 15};
        rows[9] = {"ENGRAVE", 4};
        rows[10] = {"REDRAW", -1};
        rows[11] = {"THREADING", 15};
        rows[12] = {"TOOLS", 4};
        rows[13] = {"MEDITOR", 9};
        rows[14] = {"MOVING", 6};
        rows[16] = {"STD3DGEO", 4};
        rows[17] = {"RSURFING", 3};
        rows[18] = {"MILL_5AX", 64};
        rows[19] = {"SLOT", 3};
        rows[20] = {"UEDITOR_MAX", 9};
        rows[42] = {"", -1};
        return rows;
    }();
    return table;
}

const KindRow* rowOf(Type type) {
    const int value = static_cast<int>(type);
    return value >= 0 && value <= 42 ? &kindTable()[value] : nullptr;
}

constexpr int kHostDrilling = 5;
constexpr int kHostPocketCycle = 15;
constexpr int kParameterSection = 2;

}  // namespace

MillDrillOperationType StringToMillDrillOperationType(const std::string& text) {
    try {
        std::string upper = text;
        std::transform(upper.begin(), upper.end(), upper.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        for (const auto& [name, type] : kNamesRead) {
            if (upper == name) {
                return type;
            }
        }
    } catch (...) {
    }
    return Type::Unknown;
}

std::string millDrillOperationTypeToString(MillDrillOperationType type) {
    const KindRow* row = rowOf(type);
    return row ? row->name : "";
}

int millDrillOperationTypeToVelk(MillDrillOperationType type) {
    const KindRow* row = rowOf(type);
    return row ? row->hostNumber : 4;
}

MillDrillOperationType GetMillDrillOperationType(MillTurnVdm* vdm, int nr) {
    if (!vdm || nr < 3) {
        return Type::REDRAW;
    }
    try {
        if (!vdm->isOpen()) {
            vdm->Create();
        }
        // The header loaded last into this store object decides first.
        if (vdm->getOperationType() == kHostDrilling) {
            return Type::DRILLING;
        }
        if (vdm->getOperationType() == kHostPocketCycle) {
            return Type::POCCYCLE;
        }
        if (!vdm->LoadOperation(nr) || !vdm->SectionHasItems(kParameterSection)) {
            return Type::REDRAW;
        }
        std::string line;
        if (!vdm->SeekSection(kParameterSection) || !vdm->SingleGet(line)) {
            return Type::REDRAW;
        }
        return StringToMillDrillOperationType(line);
    } catch (...) {
        return Type::REDRAW;
    }
}

// ---- MillDrillOperationDecl

MillDrillOperationDecl::MillDrillOperationDecl(int name, int number, int declMode)
    : vdm(std::make_shared<MillTurnVdm>(name)), nr(number), vdmName(name), mode(declMode) {
    if (!vdm->Create()) {
        return;
    }
    if (vdm->LoadOperation(nr) && vdm->SectionHasItems(0)) {
        vdm->SeekFromStart(nr);
        vdm->SingleSeek(1);
    }
    vdm->SingleGet(description);
    type = GetMillDrillOperationType(vdm.get(), nr);
    vdm->Close();
}

MillDrillOperationDecl::~MillDrillOperationDecl() = default;

}  // namespace VelkApi
