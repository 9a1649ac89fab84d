#include <velkapi/WritePreview.h>

#include <velkapi/ActionSection.h>
#include <velkapi/GeometrySection.h>
#include <velkapi/MessageSection.h>
#include <velkapi/MillDrillOperation.h>
#include <velkapi/ParameterSection.h>
#include <velkapi/SectionNames.h>
#include <velkapi/ToolList.h>
#include <velkapi/TurnToolSection.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <memory>

#include "host/StoreSession.h"
#include "model/SectionEntries.h"
#include "util/ErrorBoundary.h"
#include "util/TextHelpers.h"

namespace VelkApi {

namespace {

using Kind = MillDrillOperationType;
using detail::SectionEntries;

// Actions are numbered from 2; the ninth is "10", which sorts before "2".
constexpr std::size_t kActionsOutOfOrder = 9;

const char* const kNoLine = "none";

// The lines the section's writeToVDM writes, composed by the section itself.
std::vector<std::string> composedLines(const SectionDictionary& section, Kind kind) {
    if (const auto* parameters = dynamic_cast<const ParameterSection*>(&section)) {
        return parameters->composeLines();
    }
    if (const auto* geometry = dynamic_cast<const GeometrySection*>(&section)) {
        return geometry->composeLines(kind);
    }
    if (const auto* actions = dynamic_cast<const ActionSection*>(&section)) {
        return actions->composeLines();
    }
    if (const auto* message = dynamic_cast<const MessageSection*>(&section)) {
        return message->composeLines();
    }
    if (const auto* tool = dynamic_cast<const MillToolSection*>(&section)) {
        return tool->composeLines();
    }
    if (const auto* turnTool = dynamic_cast<const TurnToolSection*>(&section)) {
        return turnTool->composeLines();
    }
    return {};
}

// The section's lines as the store holds them; none when the store has no such section.
std::vector<std::string> storedLines(OperationBase& op, int number) {
    std::vector<std::string> lines;
    MillTurnVdm* vdm = op.getVDM();
    if (vdm == nullptr) {
        return lines;
    }
    host::StoreSession session(*vdm);
    if (session && vdm->LoadOperation(op.getNumber()) && number < vdm->getSectionCount() &&
        vdm->getSectionLineCount(number) > 0) {
        vdm->ReadSection(number, lines);
    }
    return lines;
}

std::string shortestNumber(double value) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return std::string(buffer.data(), result.ptr);
}

// The value as velk shows it: "unset" for the not-set marker, numbers in their shortest exact
// form, true or false, texts as they are.
std::string valueText(const detail::EntryRef& entry) {
    switch (entry.getValueDataType()) {
        case ValueDataType::Int: {
            int value = 0;
            entry.getValue(&value);
            return value == kUnsetInt ? "unset" : std::to_string(value);
        }
        case ValueDataType::Double: {
            double value = 0.0;
            entry.getValue(&value);
            const bool unset = value == kUnsetDouble || (entry.isAxis() && value == kClearedAxis);
            return unset ? "unset" : shortestNumber(value);
        }
        case ValueDataType::Bool: {
            bool value = false;
            entry.getValue(&value);
            return value ? "true" : "false";
        }
        case ValueDataType::Action: {
            Action action;
            entry.getValue(&action);
            return std::to_string(static_cast<int>(action.getType())) + ": " + action.getCommand();
        }
        case ValueDataType::String: {
            std::string value;
            entry.getValue(&value);
            // The record keeps an empty text as the int marker, which the host reads as no text.
            return value.empty() || value == std::to_string(kUnsetInt) ? "unset" : value;
        }
        default:
            return entry.getValueAsString();
    }
}

// True when the two dictionaries hold different keys or a key with different values.
bool holdDifferentValues(const SectionDictionary& one, const SectionDictionary& other) {
    if (SectionEntries::count(one) != SectionEntries::count(other)) {
        return true;
    }
    for (const detail::EntryRef& entry : SectionEntries::byNumber(one)) {
        const detail::EntryRef counterpart = SectionEntries::find(other, entry->getName());
        if (!counterpart || valueText(*entry) != valueText(*counterpart)) {
            return true;
        }
    }
    return false;
}

bool holdsWhiteSpace(const std::string& text) {
    return text.find_first_of(" \t\n\v\f\r") != std::string::npos;
}

std::string valueCause(const detail::EntryRef& entry, Kind kind, bool parameters) {
    if (parameters && kind == Kind::MILL_5AX && entry.getNr() < 100) {
        return "MILL_5AX moves its first value line by one field";
    }
    if (entry.getValueDataType() == ValueDataType::Double) {
        double value = 0.0;
        entry.getValue(&value);
        return value == kUnsetDouble
                   ? "the not-set marker of a double is written as 2.14748e+09 and reads back "
                     "as 2147480000, a set value"
                   : "a number keeps six significant digits";
    }
    if (entry.getValueDataType() == ValueDataType::String && holdsWhiteSpace(valueText(entry))) {
        return "a text holding a blank reads back cut at the blank";
    }
    return "the value does not read back where it is written";
}

// The values the caller holds that a read of the written lines gives back otherwise.
std::vector<WriteChange> valueChanges(const SectionDictionary& held,
                                      const SectionDictionary& readBack, Kind kind,
                                      bool parameters) {
    std::vector<WriteChange> changes;
    for (const detail::EntryRef& entry : SectionEntries::byNumber(held)) {
        const detail::EntryRef back = SectionEntries::find(readBack, entry->getName());
        const std::string before = valueText(*entry);
        const std::string after = back ? valueText(*back) : kNoLine;
        if (before != after) {
            const int line = parameters ? entry->getNr() / 100 + 1 : -1;
            changes.push_back(
                {entry->getName(), line, before, after, valueCause(*entry, kind, parameters)});
        }
    }
    return changes;
}

std::size_t fieldCount(const std::string& line) {
    std::size_t count = 0;
    std::size_t pos = line.find_first_not_of(" \t\n\v\f\r");
    while (pos != std::string::npos) {
        ++count;
        pos = line.find_first_of(" \t\n\v\f\r", pos);
        pos = pos == std::string::npos ? pos : line.find_first_not_of(" \t\n\v\f\r", pos);
    }
    return count;
}

// Stored text of a value section that no entry reads: lines beyond the written ones, fields
// beyond those of the written line (on lines whose values all read back).
void addUnreadText(const std::vector<std::string>& stored, const std::vector<std::string>& written,
                   std::vector<WriteChange>& changes) {
    for (std::size_t i = 0; i < stored.size(); ++i) {
        const int line = static_cast<int>(i);
        if (i >= written.size()) {
            changes.push_back(
                {"", line, stored[i], kNoLine, "the line lies beyond the lines this kind writes"});
            continue;
        }
        const bool valueLost = std::any_of(changes.begin(), changes.end(),
                                           [&](const WriteChange& c) { return c.line == line; });
        if (!valueLost && fieldCount(stored[i]) > fieldCount(written[i])) {
            changes.push_back({"", line, stored[i], written[i],
                               "the line holds fields beyond those this kind writes"});
        }
    }
}

// Why stored line `line` of a section that keeps its lines as texts does not come back.
std::string lineCause(const std::string& section, std::size_t line, const OperationBase& fresh,
                      const SectionDictionary& freshSection) {
    const std::size_t read = SectionEntries::count(freshSection);
    if (section == sectionName(SectionType::Geometry) && line < read) {
        return "the drawing object the line names is written back under another text";
    }
    if (section == sectionName(SectionType::Geometry)) {
        const SectionDictionary* parameters = fresh.getSection(SectionType::Parameter, 0);
        if (parameters != nullptr && !parameters->existsKey("i_nr_of_figs")) {
            return "this kind does not read its geometry back";
        }
        if (parameters != nullptr && !parameters->existsKey("i_nr_of_isle")) {
            return "this kind reads back only its outline figures";
        }
        return "the figure counters of the parameters do not count this line";
    }
    if (section.rfind(kActionSectionPrefix, 0) == 0 && read >= kActionsOutOfOrder) {
        return "nine or more actions come back in another order";
    }
    return "the line does not read back as it stands";
}

// Stored lines that a read and a write of the untouched section give back otherwise.
std::vector<WriteChange> lineChanges(const std::vector<std::string>& stored,
                                     const std::vector<std::string>& roundTrip,
                                     const std::vector<std::string>& written,
                                     const std::function<std::string(std::size_t)>& causeOf) {
    std::vector<WriteChange> changes;
    for (std::size_t i = 0; i < stored.size(); ++i) {
        if (i < roundTrip.size() && stored[i] == roundTrip[i]) {
            continue;
        }
        changes.push_back({"", static_cast<int>(i), stored[i],
                           i < written.size() ? written[i] : kNoLine, causeOf(i)});
    }
    return changes;
}

// The operation again, read from the store: what the store's lines give.
std::unique_ptr<OperationBase> readAgain(const OperationBase& op) {
    std::unique_ptr<OperationBase> fresh;
    if (dynamic_cast<const ToolOperation*>(&op) != nullptr) {
        fresh = std::make_unique<ToolOperation>(op.getVdmname(), op.getNumber());
    } else {
        fresh = std::make_unique<MillDrillOperation>(op.getOperationType(), op.getVdmname(),
                                                     op.getNumber());
    }
    fresh->readFromVDM();
    return fresh;
}

bool previewable(const OperationBase& op) {
    const Kind kind = op.getOperationType();
    const bool tool = dynamic_cast<const ToolOperation*>(&op) != nullptr;
    return op.getVDM() != nullptr &&
           (tool || (kind != Kind::REDRAW && kind != Kind::Unknown &&
                     dynamic_cast<const MillDrillOperation*>(&op) != nullptr));
}

SectionWrite previewSection(OperationBase& op, OperationBase* fresh, const SectionName& slot,
                            const SectionDictionary& section) {
    const Kind kind = op.getOperationType();
    SectionWrite preview;
    preview.section = slot.name;
    preview.number = section.getSectionNr();
    preview.writtenLines = composedLines(section, kind);
    if (fresh == nullptr) {  // a new operation: the store holds none of it yet
        preview.edited = true;
        preview.outcome =
            preview.writtenLines.empty() ? WriteOutcome::Unchanged : WriteOutcome::AsSet;
        return preview;
    }
    preview.storedLines = storedLines(op, preview.number);
    SectionDictionary* freshSection = fresh->getSection(slot.type, slot.number);
    if (freshSection == nullptr) {
        return preview;
    }
    preview.edited = holdDifferentValues(section, *freshSection);
    if (preview.writtenLines == preview.storedLines) {
        return preview;
    }
    auto* freshParameters = dynamic_cast<ParameterSection*>(freshSection);
    auto* freshTool = dynamic_cast<MillToolSection*>(freshSection);
    if (freshParameters != nullptr || freshTool != nullptr) {
        // The written lines, read back into the copy that the store's lines filled.
        if (freshParameters != nullptr) {
            freshParameters->readFromLines(preview.writtenLines);
        } else {
            freshTool->readFromLines(preview.writtenLines);
        }
        preview.changes = valueChanges(section, *freshSection, kind, freshParameters != nullptr);
        addUnreadText(preview.storedLines, preview.writtenLines, preview.changes);
    } else {
        const auto causeOf = [&](std::size_t line) {
            return lineCause(slot.name, line, *fresh, *freshSection);
        };
        preview.changes = lineChanges(preview.storedLines, composedLines(*freshSection, kind),
                                      preview.writtenLines, causeOf);
    }
    preview.outcome = preview.changes.empty() ? WriteOutcome::AsSet : WriteOutcome::BeyondSet;
    return preview;
}

}  // namespace

std::vector<SectionWrite> WritePreview::sections(OperationBase& op) {
    return detail::guarded<std::vector<SectionWrite>>({}, "Error in WritePreview::sections()", [&] {
        std::vector<SectionWrite> previews;
        if (!previewable(op)) {
            return previews;
        }
        const bool tool = dynamic_cast<const ToolOperation*>(&op) != nullptr;
        const std::unique_ptr<OperationBase> fresh = op.isNew() ? nullptr : readAgain(op);
        // In the order MillDrillOperation::writeToVDM writes them; the header has no lines of
        // its own.
        for (const SectionName& slot : kSectionNames) {
            if (slot.type == SectionType::Header) {
                continue;
            }
            const SectionDictionary* section = op.getSection(slot.type, slot.number);
            if (section == nullptr || (tool && slot.type != SectionType::ToolData)) {
                continue;
            }
            previews.push_back(previewSection(op, fresh.get(), slot, *section));
        }
        return previews;
    });
}

bool WritePreview::keepsEverything(const std::vector<SectionWrite>& sections) {
    return std::none_of(sections.begin(), sections.end(),
                        [](const SectionWrite& s) { return s.outcome == WriteOutcome::BeyondSet; });
}

}  // namespace VelkApi
