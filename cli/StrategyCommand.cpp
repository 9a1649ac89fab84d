// velk strategy FILE [--set NAME=VALUE ...]: the machining-strategy settings of a settings file,
// read through the machining-parameter library: every value, the infeed and the machine type
// with their meaning in words. --set changes values and saves the file; every assignment is
// checked before the file is read, and nothing is saved when one is wrong.
#include <velkapi/GeolibWrapper.h>
#include <velkhost/OfflineHost.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <functional>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>

#include "Commands.h"
#include "Project.h"
#include "ProjectLock.h"

namespace velk {

namespace {

using VelkApi::GeolibWrapper;
using VelkApi::MachType;

#if defined(_WIN32)
constexpr const char* kLibraryName = "MwApi.dll";
#else
constexpr const char* kLibraryName = "libMwApi.so";
#endif

struct StrategyOptions {
    std::string file;
    std::vector<std::string> assignments;
};

enum class ValueKind { Number, WholeNumber, MachineType };

struct Setting {
    const char* name;
    ValueKind kind;
    std::function<double(const GeolibWrapper&)> get;
    std::function<void(GeolibWrapper&, double)> set;
    std::string (*meaning)(double) = nullptr;  // the value in words, where it needs them
};

struct MachineTypeName {
    MachType type;
    const char* name;
    const char* meaning;
};

const MachineTypeName kMachineTypes[] = {
    {MachType::Undefined, "Undefined", "no machine type"},
    {MachType::Mill3Axis, "Mill3Axis", "three-axis milling"},
    {MachType::Mill4Axis, "Mill4Axis", "four-axis milling"},
    {MachType::Mill5Axis, "Mill5Axis", "five-axis milling"},
    {MachType::MillTurn, "MillTurn", "turning with driven tools"},
};

// The shortest text that reads back as the same number.
std::string numberText(double value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::string infeedMeaning(double infeed) {
    if (infeed == 2147483647.0) {
        return "not set: the library's depth-step mode is neither a depth step nor slices";
    }
    if (std::signbit(infeed)) {
        return "a fixed depth step of " + numberText(-infeed);
    }
    return numberText(infeed) + (infeed == 1.0 ? " slice" : " slices") + " of equal depth";
}

std::string machineTypeMeaning(double type) {
    for (const MachineTypeName& known : kMachineTypes) {
        if (static_cast<int>(known.type) == type) {
            return std::string(known.name) + ": " + known.meaning;
        }
    }
    return "a machine type this tool has no name for";
}

// Every setting, in the order they are printed.
const std::vector<Setting>& settings() {
    using W = GeolibWrapper;
    static const std::vector<Setting> all = {
        {"StartHeight", ValueKind::Number, [](const W& w) { return w.getStartHeight(); },
         [](W& w, double v) { w.setStartHeight(v); }},
        {"EndHeight", ValueKind::Number, [](const W& w) { return w.getEndHeight(); },
         [](W& w, double v) { w.setEndHeight(v); }},
        {"Infeed", ValueKind::Number, [](const W& w) { return w.getInfeed(); },
         [](W& w, double v) { w.setInfeed(v); }, infeedMeaning},
        {"DepthStep", ValueKind::Number, [](const W& w) { return w.getDepthStep(); },
         [](W& w, double v) { w.setDepthStep(v); }},
        {"NumberOfSlices4DepthStep", ValueKind::WholeNumber,
         [](const W& w) { return w.getNumberOfSlices4DepthStep(); },
         [](W& w, double v) { w.setNumberOfSlices4DepthStep(static_cast<int>(v)); }},
        {"MaxStepoverDistance", ValueKind::Number,
         [](const W& w) { return w.getMaxStepoverDistance(); },
         [](W& w, double v) { w.setMaxStepoverDistance(v); }},
        {"StockRemain", ValueKind::Number, [](const W& w) { return w.getStockRemain(); },
         [](W& w, double v) { w.setStockRemain(v); }},
        {"RampAngle", ValueKind::Number, [](const W& w) { return w.getRampAngle(); },
         [](W& w, double v) { w.setRampAngle(v); }},
        {"RampLengthPercent", ValueKind::Number,
         [](const W& w) { return w.getRampLengthPercent(); },
         [](W& w, double v) { w.setRampLengthPercent(v); }},
        {"AdaptiveRoughingLinkClearanceHeight", ValueKind::Number,
         [](const W& w) { return w.getAdaptiveRoughingLinkClearanceHeight(); },
         [](W& w, double v) { w.setAdaptiveRoughingLinkClearanceHeight(v); }},
        {"AdaptiveRoughingLinkLengthThresholdFactor", ValueKind::Number,
         [](const W& w) { return w.getAdaptiveRoughingLinkLengthThresholdFactor(); },
         [](W& w, double v) { w.setAdaptiveRoughingLinkLengthThresholdFactor(v); }},
        {"CurMachType", ValueKind::MachineType,
         [](const W& w) { return static_cast<int>(w.getCurMachType()); },
         [](W& w, double v) { w.setCurMachType(static_cast<MachType>(static_cast<int>(v))); },
         machineTypeMeaning},
    };
    return all;
}

bool sameName(const std::string& a, const std::string& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

std::string joinedNames(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names) {
        joined += (joined.empty() ? "" : ", ") + name;
    }
    return joined;
}

const Setting& settingNamed(const std::string& name) {
    std::vector<std::string> names;
    for (const Setting& setting : settings()) {
        if (sameName(setting.name, name)) {
            return setting;
        }
        names.push_back(setting.name);
    }
    throw CommandError("there is no setting '" + name + "' (the settings: " + joinedNames(names) +
                       ")");
}

std::optional<double> machineType(const std::string& text) {
    for (const MachineTypeName& type : kMachineTypes) {
        if (sameName(type.name, text)) {
            return static_cast<int>(type.type);
        }
    }
    return parseWholeNumber(text);
}

// One --set, checked: the setting and its value.
struct Assignment {
    const Setting* setting;
    double value;
};

Assignment parseAssignment(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw CommandError("'" + text + "' is not NAME=VALUE, e.g. Infeed=-2");
    }
    const Setting& setting = settingNamed(text.substr(0, equals));
    const std::string value = text.substr(equals + 1);
    std::optional<double> parsed;
    std::string expected;
    switch (setting.kind) {
        case ValueKind::Number:
            parsed = parseNumber(value);
            expected = "a number";
            break;
        case ValueKind::WholeNumber:
            parsed = parseWholeNumber(value);
            expected = "a whole number";
            break;
        case ValueKind::MachineType: {
            parsed = machineType(value);
            std::vector<std::string> names;
            for (const MachineTypeName& type : kMachineTypes) {
                names.push_back(type.name);
            }
            expected = "a machine type (a whole number, or " + joinedNames(names) + ")";
            break;
        }
    }
    if (!parsed) {
        throw CommandError(std::string(setting.name) + " is " + expected + ", and '" + value +
                           "' is not");
    }
    return {&setting, *parsed};
}

void printSettings(const GeolibWrapper& wrapper) {
    for (const Setting& setting : settings()) {
        const double value = setting.get(wrapper);
        std::cout << std::left << std::setw(44) << setting.name << numberText(value);
        if (setting.meaning != nullptr) {
            std::cout << "  (" << setting.meaning(value) << ")";
        }
        std::cout << "\n";
    }
}

void strategy(const StrategyOptions& options) {
    std::vector<Assignment> assignments;
    for (const std::string& text : options.assignments) {
        assignments.push_back(parseAssignment(text));
    }
    std::optional<ProjectLock> lock;
    if (!assignments.empty()) {
        lock.emplace(options.file);
    }
    auto& host = velkhost::OfflineHost::instance();
    const int missingBefore = host.missingApiCalls();
    GeolibWrapper wrapper;
    if (host.missingApiCalls() != missingBefore) {
        throw CommandError(std::string("the machining-parameter library ") + kLibraryName +
                           " cannot be loaded");
    }
    if (!wrapper.OpenBin(options.file)) {
        throw CommandError(options.file +
                           ": the machining-parameter library cannot read it (the file is "
                           "unchanged)");
    }
    for (const Assignment& assignment : assignments) {
        assignment.setting->set(wrapper, assignment.value);
    }
    if (!assignments.empty() && !wrapper.SaveBin(options.file)) {
        throw CommandError(options.file + ": the machining-parameter library cannot save it");
    }
    printSettings(wrapper);
}

}  // namespace

void addStrategyCommand(CLI::App& app) {
    auto options = std::make_shared<StrategyOptions>();
    CLI::App* command = app.add_subcommand(
        "strategy",
        "Show the machining-strategy settings of a settings file, change them and save the file");
    command->add_option("FILE", options->file, "Settings file of the machining-parameter library")
        ->required()
        ->check(CLI::ExistingFile);
    command
        ->add_option("--set", options->assignments,
                     "NAME=VALUE: change a setting (names as printed, any case); the file is "
                     "saved when there is one. Infeed: a negative value is a fixed depth step, "
                     "zero or more a number of slices. CurMachType: a number or a name")
        ->allow_extra_args(false);
    command->callback([options] { velk::strategy(*options); });
}

}  // namespace velk
