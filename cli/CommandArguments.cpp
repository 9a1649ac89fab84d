// The arguments several velk commands share.
#include "Commands.h"

#include <optional>

#include "Project.h"

namespace velk {

const CLI::Validator& wholeDecimalNumber() {
    static const CLI::Validator validator(
        [](std::string& text) -> std::string {
            const std::optional<int> value = parseWholeNumber(text);
            if (!value) {
                return "'" + text + "' is not a whole number in decimal digits";
            }
            text = std::to_string(*value);  // what CLI11 reads back: no octal for "010"
            return {};
        },
        "INT");
    return validator;
}

void addProjectArgument(CLI::App& command, std::string& project) {
    command.add_option("PROJECT", project, "Project file (JSON)")
        ->required()
        ->check(CLI::ExistingFile);
}

void addStoreOption(CLI::App& command, int& store) {
    command.add_option("--store", store, "Store number")
        ->required()
        ->transform(wholeDecimalNumber());
}

void addOperationOption(CLI::App& command, int& op) {
    command.add_option("--op", op, "Operation number in the store (from 0)")
        ->required()
        ->transform(wholeDecimalNumber());
}

}  // namespace velk
