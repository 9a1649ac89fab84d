// What every velk command shares: the project loaded into the offline host, the checks of a
// store and operation given on the command line, and the one way a command fails.
#pragma once

#include <velkapi/MillDrillOperation.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace velk {

// A failure a command reports as one line "velk: <message>" and a non-zero exit.
class CommandError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A failure with exit status 2: trouble for a command whose status 1 is a result (velk check),
// or a write refused because it would lose what the user did not ask to change.
class CommandTrouble : public CommandError {
  public:
    using CommandError::CommandError;
};

// Loads the project file into the offline host (throws velkhost::ProjectError).
void loadProject(const std::string& path);
// Saves the offline host's project to the file.
void saveProject(const std::string& path);

// Throws CommandError unless the store exists.
void requireStore(int store);
// Throws CommandError unless the store exists and holds operation `op`.
void requireOperation(int store, int op);
// The operation read from the store; throws CommandError when it is not a machining operation.
std::unique_ptr<VelkApi::MillDrillOperation> readOperation(int store, int op);
// The same with only the parameter section read from the store, for what is made of it alone.
std::unique_ptr<VelkApi::MillDrillOperation> readParametersOf(int store, int op);

// "DRILLING", or "kind 15" for a kind without a name, "unknown" for an unrecognised kind.
std::string kindName(VelkApi::MillDrillOperationType kind);
// "int", "double", "bool", "text", ...
std::string dataTypeName(VelkApi::ValueDataType type);

// The section names an operation may hold, in the order the library writes them.
const std::vector<std::string>& sectionNames();
// The section of that name; null when the operation has none.
VelkApi::SectionDictionary* findSection(const VelkApi::OperationBase& op, const std::string& name);

// The names of the sections the operation holds, in sectionNames() order.
std::vector<std::string> presentSections(const VelkApi::OperationBase& op);
// The section of that name; throws CommandError naming the sections the operation has.
VelkApi::SectionDictionary& requireSection(const VelkApi::OperationBase& op,
                                           const std::string& name);

// How a value is printed: the section and the key give its text.
using ValuePrinter = std::string (*)(const VelkApi::SectionDictionary&, const std::string&);

// Every key of a section, one a line: the key, its data type and its value as `printValue`
// gives it.
void printEntries(const VelkApi::SectionDictionary& section, ValuePrinter printValue);

// The whole text as a whole number (decimal), or none.
std::optional<int> parseWholeNumber(const std::string& text);
// The whole text as a decimal number, "," accepted as the decimal point, or none (also for
// "inf", "nan" and hexadecimal forms).
std::optional<double> parseNumber(const std::string& text);

// Message boxes the library showed since the last call, as "caption: text" lines; a text that
// came more than once is one line, "caption: text (8 times)".
std::vector<std::string> takeMessageBoxes();
// Prints the message boxes shown since the last call to stderr, as host messages, each text
// once with how many times it came.
void reportHostMessages();
// Reports what is still unreported; true when any host message was shown during the run.
bool hostReportedErrors();
// Runs `write`; a message box shown before (while reading) or meanwhile means the host could not
// read or refused part of the operation, which throws CommandError before anything is saved.
void writeToHost(const std::function<void()>& write);
// Writes the operation back, as writeToHost.
void writeOperation(VelkApi::MillDrillOperation& op);

}  // namespace velk
