#include <velkapi/ExpertParameterSection.h>
#include <velkapi/LogFile.h>
#include <velkapi/MacroExport.h>
#include <velkapi/Value.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include "model/SectionEntries.h"
#include "parameters/ExpertCatalogue.h"
#include "parameters/ParameterLines.h"
#include "parameters/SetupValues.h"
#include "util/ErrorBoundary.h"
#include "util/TextHelpers.h"

namespace VelkApi {

using detail::guarded;

namespace {

// Numbers 300 to 399 have a line of their own; options are written unsigned.
constexpr parameters::LineLayout kExpertLayout{3, false};

// "Error in ExpertParameterSection::<operation>() => <reason>".
auto failureOf(const char* operation) {
    return [operation](const char* reason) {
        return std::string("Error in ExpertParameterSection::") + operation + "() => " + reason;
    };
}

// The next field of `line` from `pos`: a run of non-blank characters. False when the line has
// no further field.
bool nextField(const std::string& line, std::size_t& pos, std::string& field) {
    text::skipBlanks(line, pos);
    if (pos >= line.size()) {
        return false;
    }
    const std::size_t begin = pos;
    while (pos < line.size() && !text::isBlank(line[pos])) {
        ++pos;
    }
    field = line.substr(begin, pos - begin);
    return true;
}

// Objects and actions have no field.
bool isWritten(const detail::EntryRef& entry) {
    switch (entry.getValueDataType()) {
        case ValueDataType::Bool:
        case ValueDataType::Int:
        case ValueDataType::Double:
        case ValueDataType::String:
            return true;
        default:
            return false;
    }
}

[[noreturn]] void doesNotFit(const std::string& field, const detail::EntryRef& entry,
                             const char* what) {
    throw std::invalid_argument("'" + field + "' is not " + what + " for " + entry.getName());
}

int wholeNumber(const std::string& field, const detail::EntryRef& entry) {
    int value = 0;
    if (field.empty() || text::toInt(field, value) != field.size()) {
        doesNotFit(field, entry, "a whole number");
    }
    return value;
}

double number(std::string field, const detail::EntryRef& entry) {
    for (char& c : field) {
        c = c == ',' ? '.' : c;
    }
    double value = 0.0;
    if (field.empty() || text::toDouble(field, value) != field.size()) {
        doesNotFit(field, entry, "a number");
    }
    return value;
}

// An option word: 32 bits, written unsigned; the signed form of the record reads as well.
std::uint32_t parsedOptionWord(const std::string& field, const detail::EntryRef& entry) {
    long long value = 0;
    const char* end = field.data() + field.size();
    const auto result = std::from_chars(field.data(), end, value);
    const bool fits = value >= std::numeric_limits<std::int32_t>::min() &&
                      value <= std::numeric_limits<std::uint32_t>::max();
    if (result.ec != std::errc() || result.ptr != end || !fits) {
        doesNotFit(field, entry, "an option word");
    }
    return static_cast<std::uint32_t>(value);
}

// The text of a plain entry's value; empty for a value that is not set; none for an entry that
// holds no number or text.
std::optional<std::string> plainText(const detail::EntryRef& plain) {
    switch (plain.getValueDataType()) {
        case ValueDataType::Int: {
            int value = 0;
            plain.getValue(&value);
            return value == kUnsetInt ? "" : std::to_string(value);
        }
        case ValueDataType::Double: {
            double value = 0.0;
            plain.getValue(&value);
            return value == kUnsetDouble ? "" : text::general6(value);
        }
        case ValueDataType::String: {
            std::string value;
            plain.getValue(&value);
            return value == parameters::kEmptyText ? "" : value;
        }
        default:
            return std::nullopt;
    }
}

// Copies the value of `from` into `to`, both of the type `T`.
template <typename T>
void copyValue(const detail::EntryRef& from, const detail::EntryRef& to) {
    T value{};
    from.getValue(&value);
    to.setValue(&value);
}

// `entry` takes the value of the plain entry `name`, where the two hold the same kind of value
// or the entry holds text.
void takeValue(const detail::EntryRef& entry, const ParameterSection& plainSection,
               const std::string& name) {
    const detail::EntryRef plain = detail::SectionEntries::find(plainSection, name);
    if (!plain) {
        return;
    }
    const ValueDataType kind = entry.getValueDataType();
    if (kind == ValueDataType::String) {
        if (const std::optional<std::string> value = plainText(plain)) {
            entry.setValue(&*value);
        }
        return;
    }
    if (plain.getValueDataType() != kind) {
        return;
    }
    switch (kind) {
        case ValueDataType::Int:
            copyValue<int>(plain, entry);
            break;
        case ValueDataType::Double:
            copyValue<double>(plain, entry);
            break;
        case ValueDataType::Bool:
            copyValue<bool>(plain, entry);
            break;
        default:
            break;
    }
}

// The form last declared for a kind into an empty section, with the derivation of the catalogue
// it was declared from and its line count.
struct DeclaredForm {
    std::unique_ptr<detail::EntryStore> entries;
    std::size_t derivation = 0;
    int lineCount = 0;
};

std::map<MillDrillOperationType, DeclaredForm>& declaredForms() {
    static std::map<MillDrillOperationType, DeclaredForm> forms;
    return forms;
}

}  // namespace

ExpertParameterSection::ExpertParameterSection(MillDrillOperationType type)
    : ParameterSection(type, 2) {}

ExpertParameterSection::~ExpertParameterSection() = default;

void ExpertParameterSection::writeToVDM(OperationBase*) {}

void ExpertParameterSection::readFromVDM(OperationBase*) {}

void ExpertParameterSection::Init(bool) {
    Init();
}

void ExpertParameterSection::Init() {
    guarded("Error in ExpertParameterSection()", [&] {
        catalogue::ExpertHostTexts host{"2", "2", ""};
        MacroExport::GetGlobalStrVar("$_project", host.project);
        double clearance = 0.0;
        double retract = 0.0;
        if (parameters::readSetupValues(clearance, retract)) {
            host.clearance = text::fixed1(clearance);
            host.retract = text::fixed1(retract);
        } else {
            LogFile::instance().trace("Error in ExpertParameterSection - GetGlobalDoubleVar",
                                      false);
        }

        const catalogue::ExpertCatalogue& derived =
            catalogue::expertCatalogueOf(operationType, host);
        // A form declared from this catalogue into an empty section before is copied.
        detail::EntryStore& entries = detail::SectionEntries::of(*this);
        DeclaredForm& declared = declaredForms()[operationType];
        if (entries.size() == 0 && declared.entries && declared.derivation == derived.derivation) {
            entries.copyEntriesOf(*declared.entries);
            lineCount = declared.lineCount;
            return;
        }
        const bool empty = entries.size() == 0;
        for (const catalogue::ExpertEntry& entry : derived.entries) {
            const std::string fallback = entry.text.value_or("");
            switch (entry.kind) {
                case catalogue::ExpertKind::Int:
                    addIntParameter(entry.number, entry.name, entry.integer);
                    break;
                case catalogue::ExpertKind::Text:
                    addStringParameter(entry.number, entry.name, fallback);
                    break;
                case catalogue::ExpertKind::AxisText:
                    addStringAxisParameter(entry.number, entry.name, fallback);
                    break;
                case catalogue::ExpertKind::Option:
                    addBoolParameter(entry.number, entry.bit, entry.name, entry.option, false);
                    break;
            }
        }
        lineCount = parameters::linesHolding(
            parameters::fieldsOf(detail::SectionEntries::byNumber(*this), kExpertLayout));
        // Kept only when every entry was declared.
        if (empty && entries.size() == derived.names && !entries.holdsBoxed()) {
            auto copy = std::make_unique<detail::EntryStore>();
            copy->copyEntriesOf(entries);
            declared = {std::move(copy), derived.derivation, lineCount};
        }
    });
}

ValueDataType ExpertParameterSection::getValueDataType(const std::string& key) {
    return guarded(ValueDataType::None, "Error in ExpertParameterSection::getValueDataType()", [&] {
        const detail::EntryRef entry = detail::SectionEntries::find(*this, key);
        return entry ? entry.getValueDataType() : ValueDataType::None;
    });
}

void ExpertParameterSection::writeToStrings(std::vector<std::string>& lines) {
    guarded(failureOf("writeToStrings"), [&] {
        if (lines.empty()) {
            return;
        }
        std::vector<std::string> written = parameters::composeValueLines(
            detail::SectionEntries::byNumber(*this), lines.size() - 1, kExpertLayout);
        std::move(written.begin(), written.end(), lines.begin());
    });
}

void ExpertParameterSection::readFromStrings(const std::vector<std::string>& lines) {
    const bool profileOrSlot = operationType == MillDrillOperationType::PROFILE ||
                               operationType == MillDrillOperationType::SLOT;
    const char* failure =
        profileOrSlot ? "Error in ExpertParameterSection::readFromStrings()  Profile or Slot"
                      : "Error in ExpertParameterSection::readFromStrings()";
    guarded(failure, [&] {
        if (lines.empty()) {
            return;
        }
        const std::size_t valueLines = lines.size() - 1;
        // Every field is read before any entry changes.
        std::vector<std::function<void()>> assignments;
        std::vector<std::size_t> positions(lines.size(), 0);
        const std::vector<detail::EntryRef> sorted = detail::SectionEntries::byNumber(*this);
        for (const parameters::Field& field : parameters::fieldsOf(sorted, kExpertLayout)) {
            const detail::EntryRef entry = sorted[field.first];
            const auto lineIndex = static_cast<std::size_t>(field.line);
            std::string text;
            if (!isWritten(*entry) || field.line < 0 || lineIndex >= valueLines ||
                !nextField(lines[lineIndex], positions[lineIndex], text)) {
                continue;
            }
            switch (entry->getValueDataType()) {
                case ValueDataType::Bool:
                    assignments.push_back([&sorted, field, word = parsedOptionWord(text, *entry)] {
                        parameters::setOptionWord(sorted, field, word);
                    });
                    break;
                case ValueDataType::Int:
                    assignments.push_back(
                        [entry, value = wholeNumber(text, *entry)] { entry->setValue(&value); });
                    break;
                case ValueDataType::Double:
                    assignments.push_back(
                        [entry, value = number(text, *entry)] { entry->setValue(&value); });
                    break;
                case ValueDataType::String:
                    if (text == parameters::kEmptyText) {
                        text.clear();
                    }
                    assignments.push_back([entry, text] { entry->setValue(&text); });
                    break;
                default:
                    break;
            }
        }
        for (const auto& assign : assignments) {
            assign();
        }
    });
}

void ExpertParameterSection::readFromParameters(const ParameterSection& parameters) {
    guarded(failureOf("readFromParameters"), [&] {
        for (const detail::EntryRef& entry : detail::SectionEntries::byNumber(*this)) {
            takeValue(entry, parameters, catalogue::plainNameOf(operationType, entry.name()));
        }
    });
}

}  // namespace VelkApi
