#include "Project.h"

#include <velkapi/SectionNames.h>
#include <velkhost/OfflineHost.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <iostream>
#include <optional>

#include "EntryText.h"
#include "Progress.h"
#include "StoreKind.h"

namespace velk {

using VelkApi::kSectionNames;
using VelkApi::MillDrillOperationType;

// A large project shows how many of its megabytes have been read while it loads.
void loadProject(const std::string& path) {
    constexpr std::size_t kMegabyte = std::size_t{1} << 20;
    std::optional<Progress> progress;
    velkhost::OfflineHost::instance().loadProject(
        path, [&progress](std::size_t read, std::size_t total) {
            if (!progress) {
                progress.emplace("project MB read", total / kMegabyte);
            }
            progress->reach(read / kMegabyte);
        });
}

void saveProject(const std::string& path) {
    velkhost::OfflineHost::instance().saveProject(path);
}

void requireStore(int store) {
    if (!velkhost::OfflineHost::instance().hasStore(store)) {
        throw CommandError("store " + std::to_string(store) +
                           " does not exist in the project (velk walk PROJECT lists its stores)");
    }
}

void requireOperation(int store, int op) {
    requireStore(store);
    const auto count = velkhost::OfflineHost::instance().records(store).size();
    if (op < 0 || static_cast<std::size_t>(op) >= count) {
        throw CommandError(
            "store " + std::to_string(store) + " has no operation " + std::to_string(op) +
            " (it has " + std::to_string(count) +
            (count == 1 ? " operation, numbered from 0)" : " operations, numbered from 0)"));
    }
}

namespace {

// The operation, not yet read; a record that is no machining operation is refused.
std::unique_ptr<VelkApi::MillDrillOperation> machiningOperation(int store, int op) {
    requireOperation(store, op);
    refuseToolStore(store, "see its tools with velk tools PROJECT --store {store} --json");
    auto operation = std::make_unique<VelkApi::MillDrillOperation>(store, op);
    if (operation->getOperationType() == MillDrillOperationType::REDRAW) {
        throw CommandError("operation " + std::to_string(op) + " of store " +
                           std::to_string(store) + " is not a machining operation (velk ops " +
                           "PROJECT --store " + std::to_string(store) + " lists them)");
    }
    return operation;
}

}  // namespace

std::unique_ptr<VelkApi::MillDrillOperation> readOperation(int store, int op) {
    auto operation = machiningOperation(store, op);
    operation->readFromVDM();
    return operation;
}

std::unique_ptr<VelkApi::MillDrillOperation> readParametersOf(int store, int op) {
    auto operation = machiningOperation(store, op);
    VelkApi::ParameterSection* parameters = operation->getParameterSection();
    // As the whole operation's read: an operation of unknown kind has no stored sections.
    if (parameters != nullptr && operation->getOperationType() != MillDrillOperationType::Unknown) {
        parameters->readFromVDM(operation.get());
    }
    return operation;
}

std::string kindName(MillDrillOperationType kind) {
    if (kind == MillDrillOperationType::Unknown) {
        return "unknown";
    }
    const std::string name = VelkApi::millDrillOperationTypeToString(kind);
    return name.empty() ? "kind " + std::to_string(static_cast<int>(kind)) : name;
}

std::string dataTypeName(VelkApi::ValueDataType type) {
    switch (type) {
        case VelkApi::ValueDataType::Double:
            return "double";
        case VelkApi::ValueDataType::Int:
            return "int";
        case VelkApi::ValueDataType::Bool:
            return "bool";
        case VelkApi::ValueDataType::String:
            return "text";
        case VelkApi::ValueDataType::VelkObject:
            return "object";
        case VelkApi::ValueDataType::Action:
            return "action";
        case VelkApi::ValueDataType::None:
            break;
    }
    return "none";
}

const std::vector<std::string>& sectionNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> list;
        for (const auto& section : kSectionNames) {
            list.emplace_back(section.name);
        }
        return list;
    }();
    return names;
}

VelkApi::SectionDictionary* findSection(const VelkApi::OperationBase& op, const std::string& name) {
    for (const auto& section : kSectionNames) {
        if (section.name == name) {
            return op.getSection(section.type, section.number);
        }
    }
    return nullptr;
}

std::vector<std::string> presentSections(const VelkApi::OperationBase& op) {
    std::vector<std::string> present;
    for (const std::string& name : sectionNames()) {
        if (findSection(op, name)) {
            present.push_back(name);
        }
    }
    return present;
}

VelkApi::SectionDictionary& requireSection(const VelkApi::OperationBase& op,
                                           const std::string& name) {
    if (VelkApi::SectionDictionary* section = findSection(op, name)) {
        return *section;
    }
    std::string present;
    for (const std::string& presentName : presentSections(op)) {
        present += (present.empty() ? "" : ", ") + presentName;
    }
    throw CommandError("the operation has no section '" + name + "' (it has " + present + ")");
}

namespace {

// `text` and blanks after it up to `width` characters.
void appendPadded(std::string& line, const std::string& text, std::size_t width) {
    line += text;
    if (text.size() < width) {
        line.append(width - text.size(), ' ');
    }
}

}  // namespace

void printEntries(const VelkApi::SectionDictionary& section, ValuePrinter printValue) {
    std::vector<std::string> keys;
    std::string lines;
    for (const std::string& key : section.readKeys(keys)) {
        // A key too long for its column keeps a blank before the type.
        lines += "  ";
        appendPadded(lines, key, 31);
        lines += ' ';
        appendPadded(lines, dataTypeName(section.dataTypeOf(key)), 8);
        lines += printValue(section, key);
        lines += '\n';
    }
    std::cout << lines;
}

std::optional<int> parseWholeNumber(const std::string& text) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (text.empty() || result.ec != std::errc() || result.ptr != end) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> parseNumber(const std::string& text) {
    // Decimal only: no blanks, no hexadecimal ("0x1p3"), no "inf" or "nan".
    if (text.find_first_not_of("0123456789+-.,eE") != std::string::npos) {
        return std::nullopt;
    }
    std::string number = text;
    for (char& c : number) {
        c = c == ',' ? '.' : c;
    }
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(number.c_str(), &end);
    if (number.empty() || *end != '\0' || errno == ERANGE) {
        return std::nullopt;
    }
    return value;
}

std::vector<std::string> takeMessageBoxes() {
    auto& host = velkhost::OfflineHost::instance();
    std::vector<std::pair<std::string, int>> counted;
    for (const auto& box : host.messageBoxes()) {
        const std::string line = box.caption + ": " + box.text;
        const auto same = std::find_if(counted.begin(), counted.end(),
                                       [&line](const auto& seen) { return seen.first == line; });
        if (same == counted.end()) {
            counted.emplace_back(line, 1);
        } else {
            ++same->second;
        }
    }
    host.clearMessageBoxes();
    std::vector<std::string> lines;
    for (const auto& [line, count] : counted) {
        lines.push_back(count == 1 ? line : line + " (" + std::to_string(count) + " times)");
    }
    return lines;
}

}  // namespace velk

namespace velk {

namespace {

bool hostMessagesShown = false;

}  // namespace

void reportHostMessages() {
    for (const std::string& box : takeMessageBoxes()) {
        std::cerr << "velk: host message: " << box << "\n";
        hostMessagesShown = true;
    }
}

bool hostReportedErrors() {
    reportHostMessages();
    return hostMessagesShown;
}

void writeOperation(VelkApi::MillDrillOperation& op) {
    writeToHost([&op] { op.writeToVDM(); });
}

void writeToHost(const std::function<void()>& write) {
    if (const auto boxes = takeMessageBoxes(); !boxes.empty()) {
        throw CommandError("the host reported an error reading the operation (" + boxes.front() +
                           "): nothing is written, the project file is unchanged");
    }
    write();
    if (const auto boxes = takeMessageBoxes(); !boxes.empty()) {
        throw CommandError("the host refused the write (" + boxes.front() +
                           "): the project file is unchanged");
    }
}

}  // namespace velk
