#include <velkapi/ExpertToolSection.h>

#include <iterator>
#include <variant>

#include "tools/HostVariables.h"
#include "tools/ToolTable.h"
#include "util/ErrorBoundary.h"
#include "util/TextHelpers.h"

namespace VelkApi {

using detail::guarded;

int ExpertToolSection::bin[BIN_SIZE];
double ExpertToolSection::val[VAL_SIZE];
double ExpertToolSection::tur_val[TUR_VAL_SIZE];

namespace {

// What a number without a value is written and read as.
constexpr const char* kUnsetText = "2147483647";

std::string textOf(int value) {
    return std::to_string(value);
}
std::string textOf(double value) {
    return text::fixed6(value);
}
std::string textOf(const std::string& value) {
    return value;
}

}  // namespace

ExpertToolSection::ExpertToolSection(int sectionnr) : ToolSection(sectionnr) {
    guarded("Error in ToolSection::ToolSection(int sectionnr)   ", [&] {
        for (const auto& [name, number] : tools::declarationsByName()) {
            addStringParameter(number, *name, "", "");
        }
    });
}

ExpertToolSection::~ExpertToolSection() = default;

void ExpertToolSection::setDefault() {}

void ExpertToolSection::writeToVDM(OperationBase*) {}

void ExpertToolSection::readFromVDM(OperationBase*) {}

void ExpertToolSection::writeToVars() {}

void ExpertToolSection::readFromVars() {
    guarded("Error in void ToolSection::readFromVars()  ", [&] {
        tools::forEachVariable(
            this, {bin, val, tur_val},
            [&](const std::string& name) {
                if (const auto value = tools::readHostVariable(name)) {
                    setString(name,
                              std::visit([](const auto& held) { return textOf(held); }, *value));
                }
            },
            [&](const char* array, auto& elements) {
                tools::readHostArray(array, elements, std::size(elements));
                for (std::size_t i = 0; i < std::size(elements); ++i) {
                    setString(tools::elementKey(array, i + 1), textOf(elements[i]));
                }
            });
    });
}

void ExpertToolSection::readFromStrings(const std::vector<std::string>& textLines) {
    guarded("Error in ToolSection::read(VelkApi::MillTurnVdm * vdm)   ", [&] {
        tools::forEachName([&](int line, int slot, const std::string& name) {
            if (!existsKey(name)) {
                return;
            }
            const bool given = static_cast<std::size_t>(line) < textLines.size();
            if (tools::kindOf(name) == '$') {
                setString(name, given ? textLines[line] : "");
            } else {
                setString(name, given ? getStringFromLine(textLines[line], slot, "") : kUnsetText);
            }
        });
    });
}

void ExpertToolSection::writeToStrings(std::vector<std::string>& textLines) {
    guarded("Error in ToolSection::writeToStrings(VelkApi::MillTurnVdm * vdm)", [&] {
        std::vector<std::string> record(LINESCOUNT);
        tools::forEachName([&](int line, int, const std::string& name) {
            if (!existsKey(name)) {
                return;
            }
            const std::string value = getString(name);
            if (tools::kindOf(name) == '$') {
                record[line] += value;
            } else {
                record[line] += (value.empty() ? kUnsetText : value) + " ";
            }
        });
        textLines.insert(textLines.end(), record.begin(), record.end());
    });
}

}  // namespace VelkApi
