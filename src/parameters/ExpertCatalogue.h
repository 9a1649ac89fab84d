// The expert form of the parameter catalogue: for each kind of operation, the entries of
// ExpertParameterSection. It is derived from the plain tables (ParameterCatalogue.h) by rules,
// with a few exceptions kept in small tables of their own:
//  - kinds 1 to 19 take their plain table; every other kind the single entry "Dummy";
//  - there is no machine block: its plain bits ("o_gohome", "o_rapid_peck", "o_subprogram", ...)
//    are always declared, and entries for machine-aware operations only are left out;
//  - integers and option bits stay as they are; every double becomes a text holding its
//    number, every axis value an axis text; a "not set" double is a text without default;
//  - the clearance and retract entries default to the host's setup values as "%.1f" texts,
//    "w_clearance" to the retract; "$_project" to the host's "$_project";
//  - MILL_5AX numbers its first line from 0 and ends in the machining-strategy block.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <velkapi/MillDrillOperationType.h>

namespace VelkApi::catalogue {

enum class ExpertKind {
    Int,
    Text,
    AxisText,  // a text holding an axis value
    Option,    // bit `bit` of option word `number`
};

struct ExpertEntry {
    int number = 0;
    int bit = 0;
    std::string name;
    ExpertKind kind = ExpertKind::Int;
    int integer = 0;                  // Int: the default
    bool option = false;              // Option: the default
    std::optional<std::string> text;  // Text, AxisText: the default; none: declared without one
};

// What the host gives the defaults: the setup clearance and retract as texts, and the project.
struct ExpertHostTexts {
    std::string clearance;
    std::string retract;
    std::string project;
};

// The entries of a kind in the order they are declared, the number of different names among
// them, and which derivation of the catalogue this is (each has its own number).
struct ExpertCatalogue {
    std::vector<ExpertEntry> entries;
    std::size_t names = 0;
    std::size_t derivation = 0;
};

// The catalogue of `type`. It stays valid until the next call for the same kind with other texts.
const ExpertCatalogue& expertCatalogueOf(MillDrillOperationType type, const ExpertHostTexts& host);

// The name of the plain entry that the expert entry `expertName` of `type` stands for.
// `expertName` itself when the two are named alike.
const std::string& plainNameOf(MillDrillOperationType type, const std::string& expertName);

}  // namespace VelkApi::catalogue
