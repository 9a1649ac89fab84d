// velk expert PROJECT --store N [--op K] [--lines | --json]: the machining parameters of one
// operation, or of every machining operation of the store, in their expert form: every value as
// text, "not set" as velk show prints it. --lines prints the expert form's text lines instead of
// one line per key, --json the values as JSON.
#include <velkapi/ExpertParameterSection.h>
#include <velkapi/MillDrillOperation.h>
#include <velkhost/OfflineHost.h>

#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>
#include <optional>

#include "Commands.h"
#include "EntryText.h"
#include "HostText.h"
#include "Progress.h"
#include "Project.h"
#include "StoreKind.h"

namespace velk {

namespace {

struct ExpertOptions {
    std::string project;
    int store = 0;
    std::optional<int> op;
    bool lines = false;
    bool json = false;
};

// How the "not set" marker of the plain parameters reads in the expert form, besides the
// markers velk show knows: an empty text, and the double marker as a record stores it, to six
// digits.
bool holdsExpertUnset(const VelkApi::SectionDictionary& section, const std::string& key) {
    if (holdsUnset(section, key)) {
        return true;
    }
    if (section.dataTypeOf(key) != VelkApi::ValueDataType::String) {
        return false;
    }
    const std::string text = section.getString(key);
    return text.empty() || text == "2.14748e+09";
}

// An entry's value as velk show prints it: "unset", or the text the expert form holds. The ints,
// texts and options an expert form holds are looked up once or twice; anything else as velk
// show looks it up.
std::string expertValue(const VelkApi::SectionDictionary& section, const std::string& key) {
    switch (section.dataTypeOf(key)) {
        case VelkApi::ValueDataType::Int: {
            const int value = section.getInt(key);
            if (value != VelkApi::kUnsetInt && value != VelkApi::kClearedAxis) {
                return std::to_string(value);
            }
            // The entry's own marker is "unset"; the other renders as an empty text.
            const int marker = section.isAxis(key) ? VelkApi::kClearedAxis : VelkApi::kUnsetInt;
            return value == marker ? kUnsetWord : "";
        }
        case VelkApi::ValueDataType::String: {
            std::string text = section.getString(key);
            const int marker = section.isAxis(key) ? VelkApi::kClearedAxis : VelkApi::kUnsetInt;
            const bool unset =
                text.empty() || text == "2.14748e+09" || text == std::to_string(marker);
            return unset ? kUnsetWord : text;
        }
        case VelkApi::ValueDataType::Bool:
            return section.getBool(key) ? "true" : "false";
        default:
            return holdsExpertUnset(section, key) ? kUnsetWord : entryText(section, key);
    }
}

nlohmann::ordered_json expertJson(const VelkApi::SectionDictionary& section,
                                  const std::string& key) {
    return holdsExpertUnset(section, key) ? nullptr : jsonValue(section, key);
}

// The operation asked for, or every machining operation of the store.
std::vector<int> chosenOperations(const ExpertOptions& options) {
    if (options.op) {
        return {*options.op};
    }
    requireStore(options.store);
    std::vector<int> chosen;
    const auto count = velkhost::OfflineHost::instance().records(options.store).size();
    for (int nr = 0; static_cast<std::size_t>(nr) < count; ++nr) {
        const auto kind = VelkApi::MillDrillOperation::GetOperationType(options.store, nr);
        if (kind != VelkApi::MillDrillOperationType::REDRAW) {
            chosen.push_back(nr);
        }
    }
    return chosen;
}

VelkApi::ExpertParameterSection expertFormOf(const VelkApi::MillDrillOperation& op) {
    VelkApi::ExpertParameterSection expert(op.getOperationType());
    expert.Init();
    if (const VelkApi::ParameterSection* parameters = op.getParameterSection()) {
        expert.readFromParameters(*parameters);
    }
    return expert;
}

void printExpertForm(const ExpertOptions& options, int nr) {
    const auto op = readParametersOf(options.store, nr);
    VelkApi::ExpertParameterSection expert = expertFormOf(*op);
    std::cout << "store " << options.store << ", operation " << nr << ": "
              << kindName(op->getOperationType()) << "\n";
    if (options.lines) {
        // A list of n lines receives the value lines 0 .. n - 2: the last one stays empty.
        std::vector<std::string> lines(static_cast<std::size_t>(expert.getLineCount()));
        expert.writeToStrings(lines);
        lines.pop_back();
        for (const std::string& line : lines) {
            std::cout << line << "\n";
        }
    } else {
        printEntries(expert, expertValue);
    }
}

nlohmann::ordered_json expertFormJson(const ExpertOptions& options, int nr) {
    const auto op = readParametersOf(options.store, nr);
    const VelkApi::ExpertParameterSection expert = expertFormOf(*op);
    nlohmann::ordered_json parameters = nlohmann::ordered_json::object();
    std::vector<std::string> keys;
    for (const std::string& key : expert.readKeys(keys)) {
        parameters[key] = {{"type", dataTypeName(expert.dataTypeOf(key))},
                           {"value", expertJson(expert, key)}};
    }
    return {{"store", options.store},
            {"operation", nr},
            {"kind", kindName(op->getOperationType())},
            {"parameters", parameters}};
}

void printExpert(const ExpertOptions& options) {
    loadProject(options.project);
    requireStore(options.store);
    refuseToolStore(options.store, "list its tools with velk tools PROJECT --store {store}");
    const std::vector<int> chosen = chosenOperations(options);
    const Utf8Output utf8;
    Progress progress("operations", chosen.size());
    nlohmann::ordered_json forms = nlohmann::ordered_json::array();
    for (const int nr : chosen) {
        if (options.json) {
            forms.push_back(expertFormJson(options, nr));
        } else {
            printExpertForm(options, nr);
        }
        progress.advance();
    }
    if (options.json) {
        // One operation asked for is one object, as velk show prints it; a store is a list.
        std::cout << (options.op ? forms.front() : forms).dump(2) << "\n";
    }
    reportHostMessages();
}

}  // namespace

void addExpertCommand(CLI::App& app) {
    auto options = std::make_shared<ExpertOptions>();
    CLI::App* expert = app.add_subcommand(
        "expert",
        "Show the machining parameters of an operation in their expert form, every value as text");
    addProjectArgument(*expert, options->project);
    addStoreOption(*expert, options->store);
    expert
        ->add_option("--op", options->op,
                     "Operation number in the store (from 0); every machining operation of the "
                     "store when left out")
        ->transform(wholeDecimalNumber());
    CLI::Option* lines = expert->add_flag(
        "--lines", options->lines,
        "Print the expert form's text lines: line k holds the values numbered 100 k to "
        "100 k + 99, in number order, each followed by a blank");
    expert->add_flag("--json", options->json, "Print JSON instead of text (not set: null)")
        ->excludes(lines);
    expert->callback([options] { printExpert(*options); });
}

}  // namespace velk
