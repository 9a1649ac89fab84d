#include "parameters/ExpertCatalogue.h"

#include <velkapi/Value.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <utility>

#include "parameters/ParameterCatalogue.h"
#include "util/TextHelpers.h"

namespace VelkApi::catalogue {

namespace {

using Type = MillDrillOperationType;

constexpr int kind(Type type) {
    return static_cast<int>(type);
}

// ---- the exceptions, each a row per kind (or kEveryKind) and name

struct KindName {
    int kind;
    const char* name;
};

struct KindNameText {
    int kind;
    const char* name;
    const char* text;
};

struct KindNameNumber {
    int kind;
    const char* name;
    int number;
};

// Plain entries the expert form does not have.
constexpr KindName kLeftOut[] = {
    {kind(Type::PROFILE), "i_parent_op"},
    {kind(Type::CORNER), "i_parent_op"},
    {kind(Type::RESTMATL), "i_parent_op"},
    {kind(Type::SLOT), "i_parent_op"},
};

// Entries the expert form names otherwise: the plain name, then the expert name.
constexpr KindNameText kRenamed[] = {
    {kind(Type::POCCYCLE), "i_nr_of_figs", "i_nr_grxy"},
    {kind(Type::POCCYCLE), "w_overlap", "w_w_overlap"},
    {kind(Type::POCCYCLE), "i_milling_type", "w_milling_type"},
    {kind(Type::THREADING), "i_milling_type", "w_milling_type"},
};

// Entries the expert form numbers otherwise. SLOT's dive entries take the numbers 17 to 20 of
// its exit entries, which they then share.
constexpr KindNameNumber kRenumbered[] = {
    {kind(Type::SLOT), "i_dive_mode", 17},
    {kind(Type::SLOT), "w_dive_angle", 18},
    {kind(Type::SLOT), "w_dive_rad", 19},
    {kind(Type::SLOT), "w_dive_dir", 20},
};

// Integers the expert form holds as text (by expert name). The default is the plain default in
// decimal, none for "not set".
constexpr KindName kTextIntegers[] = {
    {kind(Type::DRILLING), "i_no_of_pecks"},
    {kind(Type::DRILLING), "i_spin_dir1"},
    {kind(Type::DRILLING), "i_spin_dir2"},
    {kind(Type::DRILLING), "i_back_dir"},
    {kind(Type::POCCYCLE), "w_milling_type"},
    {kind(Type::THREADING), "w_milling_type"},
    {kind(Type::MEDITOR), "i_mct"},
    {kind(Type::MEDITOR), "i_origin"},
    {kind(Type::MOVING), "i_mct"},
    {kind(Type::MOVING), "i_origin"},
    {15, "blubb1"},
    {15, "blubb2"},
    {15, "blubb3"},
    {15, "blubb4"},
    {kind(Type::MILL_5AX), "i_type"},
    {kind(Type::MILL_5AX), "i_size"},
    {kind(Type::MILL_5AX), "i_vdm"},
    {kind(Type::MILL_5AX), "i_op_version"},
};

// Defaults the expert form sets otherwise (by expert name): a text, "" for a text without
// default, or an integer in decimal.
constexpr KindNameText kDefaults[] = {
    {kind(Type::PROFILE), "w_peck", "1.0"},
    {kind(Type::SLOT), "w_peck", "1.0"},
    {kEveryKind, "w_cham_width", "1.0"},
    {kind(Type::FACEMILL), "w_overlap", "70.0"},
    {kind(Type::FACEMILL), "w__infeed", "100.0"},
    {kind(Type::DRILLING), "i_coolant", "2147483647"},
    {kind(Type::POCCYCLE), "i_type", "2147483647"},
    {kind(Type::POCCYCLE), "i_finishing", "2147483647"},
    {kind(Type::POCCYCLE), "i_coolant", "2147483647"},
    {kind(Type::THREADING), "i_type", "2147483647"},
    {kind(Type::THREADING), "i_finishing", "2147483647"},
    {kind(Type::THREADING), "i_coolant", "2147483647"},
    {kind(Type::MOVING), "i_mct", ""},
    {kind(Type::MILL_5AX), "i_type", "1"},
    {kind(Type::MILL_5AX), "i_coolant", "0"},
    {kind(Type::MILL_5AX), "i_op_version", "202012"},
    {kind(Type::MILL_5AX), "i_mill_mode", "3"},
    {kind(Type::MILL_5AX), "w_op_toler", "0.05"},
    {kind(Type::MILL_5AX), "i_axis_mode", "5"},
    {kind(Type::MILL_5AX), "i_with_subprogram", "0"},
    {kind(Type::MILL_5AX), "i_current_origin", "0"},
    {kind(Type::MILL_5AX), "w_needed_axis", "3.0"},
    {kind(Type::MILL_5AX), "i_go_home", "0"},
    {kind(Type::MILL_5AX), "w_area_toler", "0.001"},
    {kind(Type::MILL_5AX), "w_needed_axis2", "3.0"},
};

// The contour kinds count their figures and islands from 0, not from "not set".
constexpr Type kContourKinds[] = {Type::PROFILE, Type::SLOT,     Type::CORNER,   Type::CHAMFER,
                                  Type::POCKET,  Type::FACEMILL, Type::RESTMATL, Type::RSURFING};
constexpr const char* kContourCounters[] = {"i_nr_of_figs", "i_nr_of_isle", "i_xz_fig",
                                            "i_xz_isle"};

// Zeros the expert form writes with a decimal point.
constexpr const char* kPointedZeros[] = {"w_offset", "w_zdepth", "w_zstart", "w_zoffset"};

// MILL_5AX ends in the machining-strategy settings (GeolibWrapper); texts without a default
// unless one is given.
struct BlockRow {
    int number;
    const char* name;
    ExpertKind kind;
    const char* text;
};

constexpr BlockRow kStrategyBlock[] = {
    {200, "w_start_height", ExpertKind::Text, nullptr},
    {201, "w_depth", ExpertKind::Text, nullptr},
    {202, "w_infeed", ExpertKind::Text, nullptr},
    {203, "w_allowance", ExpertKind::Text, nullptr},
    {204, "i_cur_mach_type", ExpertKind::Int, "2147483647"},
    {205, "w_max_stepover_distance", ExpertKind::Text, nullptr},
    {206, "w_ramp_length_percent", ExpertKind::Text, nullptr},
    {207, "w_ramp_angle", ExpertKind::Text, nullptr},
    {208, "w_adaptive_roughing_link_clearance_height", ExpertKind::Text, nullptr},
    {209, "w_adaptive_roughing_link_threshold_factor", ExpertKind::Text, nullptr},
    {300, "$_binfilename", ExpertKind::Text, "dummy.bin"},
};

// ---- the rules

template <typename Row, std::size_t N>
const Row* findFor(const Row (&table)[N], Type type, const std::string& name) {
    const auto found = std::find_if(std::begin(table), std::end(table), [&](const Row& row) {
        return (row.kind == kEveryKind || row.kind == kind(type)) && name == row.name;
    });
    return found == std::end(table) ? nullptr : found;
}

template <std::size_t N>
bool isOneOf(const std::string& name, const char* const (&names)[N]) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

// Kinds 1 to 19 have an expert form of their own.
bool hasExpertForm(Type type) {
    return kind(type) >= 1 && kind(type) <= 19;
}

bool isDeclared(Type type, const Row& row) {
    const bool forThisKind = row.onlyForKind == kEveryKind || row.onlyForKind == kind(type);
    return row.when == When::Always && forThisKind && findFor(kLeftOut, type, row.name) == nullptr;
}

int numberOf(Type type, const std::string& plainName, int number) {
    if (const KindNameNumber* renumbered = findFor(kRenumbered, type, plainName)) {
        return renumbered->number;
    }
    // The five-axis form numbers its first line from 0 where the plain one starts at 1.
    if (type == Type::MILL_5AX && number < 100) {
        return number - 1;
    }
    return number;
}

// A plain number default as text: "%g", with a decimal point on 45, 2 and some zeros.
std::string numberText(const std::string& name, double value) {
    if (value == 45.0 || value == 2.0 || (value == 0.0 && isOneOf(name, kPointedZeros))) {
        return text::fixed1(value);
    }
    return text::general6(value);
}

std::optional<std::string> doubleDefault(const Row& row, const std::string& name,
                                         const ExpertHostTexts& host) {
    switch (row.value.source) {
        case Default::Source::SetupClearance:
            // Unlike the plain catalogue, the expert form starts "w_clearance" at the retract.
            return name == "w_clearance" ? host.retract : host.clearance;
        case Default::Source::SetupRetract:
            return host.retract;
        case Default::Source::Number:
            break;
    }
    if (row.value.number == kUnsetDouble) {
        return std::nullopt;
    }
    return numberText(name, row.value.number);
}

void setKindAndDefault(Type type, const Row& row, const ExpertHostTexts& host, ExpertEntry& entry) {
    switch (row.kind) {
        case Kind::Option:
            entry.kind = ExpertKind::Option;
            entry.option = row.value.number != 0.0;
            break;
        case Kind::Int: {
            const int value = static_cast<int>(row.value.number);
            if (findFor(kTextIntegers, type, entry.name) != nullptr) {
                entry.kind = ExpertKind::Text;
                if (value != kUnsetInt) {
                    entry.text = std::to_string(value);
                }
            } else {
                entry.integer = value;
            }
            break;
        }
        case Kind::Double:
            entry.kind = ExpertKind::Text;
            entry.text = doubleDefault(row, entry.name, host);
            break;
        case Kind::Axis:
            entry.kind = ExpertKind::AxisText;
            entry.text = text::general6(row.value.number);
            break;
        case Kind::String:
            entry.kind = ExpertKind::Text;
            if (entry.name == "$_project") {
                entry.text = host.project;
            } else if (row.text != nullptr) {
                entry.text = row.text;
            }
            break;
        case Kind::MachineBlock:
            break;
    }
}

void applyDefaultExceptions(Type type, ExpertEntry& entry) {
    const bool contourKind = std::find(std::begin(kContourKinds), std::end(kContourKinds), type) !=
                             std::end(kContourKinds);
    if (contourKind && isOneOf(entry.name, kContourCounters)) {
        entry.integer = 0;
    }
    if (const KindNameText* changed = findFor(kDefaults, type, entry.name)) {
        if (entry.kind == ExpertKind::Int) {
            entry.integer = std::stoi(changed->text);
        } else if (*changed->text == '\0') {
            entry.text.reset();
        } else {
            entry.text = changed->text;
        }
    }
}

ExpertEntry derived(Type type, const Row& row, const ExpertHostTexts& host) {
    ExpertEntry entry;
    const KindNameText* renamed = findFor(kRenamed, type, row.name);
    entry.name = renamed != nullptr ? renamed->text : row.name;
    entry.number = numberOf(type, row.name, row.number);
    entry.bit = row.bit;
    setKindAndDefault(type, row, host, entry);
    applyDefaultExceptions(type, entry);
    return entry;
}

// The machine block's plain bits, which the expert form always has.
void appendPlainBits(const Row& block, std::vector<ExpertEntry>& entries) {
    for (std::size_t i = 0; i < block.plain.count; ++i) {
        ExpertEntry entry;
        entry.number = block.number;
        entry.bit = block.plain.bits[i].bit;
        entry.name = block.plain.bits[i].name;
        entry.kind = ExpertKind::Option;
        entries.push_back(entry);
    }
}

void appendStrategyBlock(std::vector<ExpertEntry>& entries) {
    for (const BlockRow& row : kStrategyBlock) {
        ExpertEntry entry;
        entry.number = row.number;
        entry.name = row.name;
        entry.kind = row.kind;
        if (row.kind == ExpertKind::Int) {
            entry.integer = std::stoi(row.text);
        } else if (row.text != nullptr) {
            entry.text = row.text;
        }
        entries.push_back(entry);
    }
}

}  // namespace

namespace {

std::vector<ExpertEntry> derivedCatalogueOf(MillDrillOperationType type,
                                            const ExpertHostTexts& host) {
    std::vector<ExpertEntry> entries;
    // Kinds without an expert form of their own get the catalogue of an unknown kind: "Dummy".
    for (const Row& row : catalogueOf(hasExpertForm(type) ? type : Type::Unknown)) {
        if (!isDeclared(type, row)) {
            continue;
        }
        if (row.kind == Kind::MachineBlock) {
            appendPlainBits(row, entries);
        } else {
            entries.push_back(derived(type, row, host));
        }
    }
    if (type == Type::MILL_5AX) {
        appendStrategyBlock(entries);
    }
    return entries;
}

bool sameTexts(const ExpertHostTexts& a, const ExpertHostTexts& b) {
    return a.clearance == b.clearance && a.retract == b.retract && a.project == b.project;
}

}  // namespace

// Derived once for each kind, and again only when the host's texts have changed since.
const ExpertCatalogue& expertCatalogueOf(MillDrillOperationType type, const ExpertHostTexts& host) {
    struct Derived {
        ExpertHostTexts host;
        ExpertCatalogue catalogue;
    };
    static std::map<MillDrillOperationType, Derived> derivedOnce;
    static std::size_t derivations = 0;
    const auto found = derivedOnce.find(type);
    if (found != derivedOnce.end() && sameTexts(found->second.host, host)) {
        return found->second.catalogue;
    }
    Derived derived{host, {derivedCatalogueOf(type, host), 0, ++derivations}};
    std::vector<std::string> names;
    for (const ExpertEntry& entry : derived.catalogue.entries) {
        names.push_back(entry.name);
    }
    std::sort(names.begin(), names.end());
    derived.catalogue.names = static_cast<std::size_t>(
        std::distance(names.begin(), std::unique(names.begin(), names.end())));
    return derivedOnce.insert_or_assign(type, std::move(derived)).first->second.catalogue;
}

const std::string& plainNameOf(MillDrillOperationType type, const std::string& expertName) {
    // The renamed names, as texts, built once.
    static const std::vector<std::pair<int, std::pair<std::string, std::string>>> renamed = [] {
        std::vector<std::pair<int, std::pair<std::string, std::string>>> rows;
        for (const KindNameText& row : kRenamed) {
            rows.push_back({row.kind, {row.text, row.name}});
        }
        return rows;
    }();
    const int of = kind(type);
    for (const auto& [rowKind, names] : renamed) {
        if (rowKind == of && names.first == expertName) {
            return names.second;
        }
    }
    return expertName;
}

}  // namespace VelkApi::catalogue
