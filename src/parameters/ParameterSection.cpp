#include <velkapi/LogFile.h>
#include <velkapi/MacroExport.h>
#include <velkapi/OperationBase.h>
#include <velkapi/ParameterSection.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>
#include <vector>

#include "host/StoreSession.h"
#include "model/SectionEntries.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/ParameterLines.h"
#include "parameters/PpDefIni.h"
#include "parameters/SetupValues.h"
#include "util/ErrorBoundary.h"
#include "util/FieldReaders.h"
#include "util/TextHelpers.h"

namespace VelkApi {

using detail::guarded;

namespace {

// The record's layout: numbers from 300 on take the line before theirs.
constexpr parameters::LineLayout kRecordLayout{2, true};

// Until the host's setup values are read.
constexpr double kSetupClearance = 0.42;
constexpr double kSetupRetract = 4.2;

// What a kind's entries are declared from: the machine and the setup values.
struct Declared {
    catalogue::Machine machine;
    double clearance;
    double retract;

    bool operator==(const Declared& other) const {
        return machine.aware == other.machine.aware && machine.yAxis == other.machine.yAxis &&
               machine.subspindle == other.machine.subspindle &&
               std::memcmp(&clearance, &other.clearance, sizeof clearance) == 0 &&
               std::memcmp(&retract, &other.retract, sizeof retract) == 0;
    }
};

// The entries the last section of each kind declared into an empty section, with what they were
// declared from: a later section declared alike copies them instead of declaring each again.
struct KeptEntries {
    Declared from;
    std::unique_ptr<detail::EntryStore> entries;
};

std::map<MillDrillOperationType, KeptEntries>& keptEntries() {
    static std::map<MillDrillOperationType, KeptEntries> kept;
    return kept;
}

}  // namespace

ParameterSection::ParameterSection(MillDrillOperationType type, int sectionnr)
    : SectionDictionary(sectionnr),
      operationType(type),
      operationTypeName(millDrillOperationTypeToString(type)) {}

ParameterSection::~ParameterSection() = default;

// ---- the catalogue

void ParameterSection::addGohParams(int number) {
    for (int i = 0; i <= 5; ++i) {
        addBoolParameter(number, i + 15, "GOH_" + std::to_string(i), false, false);
    }
}

void ParameterSection::Init(bool machineAware) {
    guarded("Error in ParameterSection()", [&] {
        double setupClearance = kSetupClearance;
        double setupRetract = kSetupRetract;

        // Only an operation inside a running host asks the host and its machine.
        const OperationBase* owner = getOperation();
        if (owner != nullptr && owner->isVelkActive()) {
            if (machineAware) {
                PpDefIni ini;
                ini.read();
                subspindleAvailable = ini.isSubspindleAvailable();
                MacroExport::GetGlobalIntVar("i_current_channel", channel);
                yAxisAvailable = yAxisAvailable || ini.isYaxAvailable(channel);
            }
            if (!parameters::readSetupValues(setupClearance, setupRetract)) {
                LogFile::instance().trace("Error in ParameterSection - GetGlobalDoubleVar", false);
            }
        }

        // Two lines (the name and one value line) unless the kind needs more.
        const catalogue::Catalogue& rows = catalogue::catalogueOf(operationType);
        lineCount = machineAware ? rows.awareLineCount : rows.plainLineCount;

        const catalogue::Machine machine{machineAware, yAxisAvailable, subspindleAvailable};
        const Declared from{machine, setupClearance, setupRetract};
        detail::EntryStore& entries = detail::SectionEntries::of(*this);
        const bool empty = entries.size() == 0;
        KeptEntries& kept = keptEntries()[operationType];
        if (empty && kept.entries && kept.from == from) {
            entries.copyEntriesOf(*kept.entries);
            return;
        }
        std::size_t declarations = 0;
        const auto defaultOf = [&](const catalogue::Default& value) {
            switch (value.source) {
                case catalogue::Default::Source::SetupClearance:
                    return setupClearance;
                case catalogue::Default::Source::SetupRetract:
                    return setupRetract;
                default:
                    return value.number;
            }
        };
        for (const catalogue::Declaration& declaration : catalogue::declarationsOf(operationType)) {
            if (!catalogue::isDeclared(declaration, operationType, machine)) {
                continue;
            }
            ++declarations;
            const std::string& key = declaration.key;
            const catalogue::Row& row = declaration.row;
            switch (row.kind) {
                case catalogue::Kind::Int:
                    addIntParameter(row.number, key, static_cast<int>(defaultOf(row.value)));
                    break;
                case catalogue::Kind::Double:
                    addDoubleParameter(row.number, key, defaultOf(row.value));
                    break;
                case catalogue::Kind::Axis:
                    addAxisParameter(row.number, key, defaultOf(row.value));
                    break;
                case catalogue::Kind::String:
                    if (row.text != nullptr) {
                        addStringParameter(row.number, key, row.text);
                    } else {
                        addStringParameter(row.number, key);
                    }
                    break;
                default:  // an option bit, a machine block's bits included
                    addBoolParameter(row.number, row.bit, key, row.value.number != 0.0, false);
                    break;
            }
        }
        // Kept only when every declaration made its entry.
        if (empty && entries.size() == declarations && !entries.holdsBoxed()) {
            auto copy = std::make_unique<detail::EntryStore>();
            copy->copyEntriesOf(entries);
            kept = {from, std::move(copy)};
        }
    });
}

ValueDataType ParameterSection::getValueDataType(const std::string& key) {
    return guarded(ValueDataType::None, "Error in ParameterSection::getValueDataType()", [&] {
        const detail::EntryRef entry = detail::SectionEntries::find(*this, key);
        return entry ? entry.getValueDataType() : ValueDataType::None;
    });
}

// ---- the record

void ParameterSection::writeToVDM(OperationBase* op) {
    if (op == nullptr) {
        return;
    }
    guarded("Error in ParameterSection::writeToVDM()", [&] {
        const std::vector<std::string> lines = composeLines();
        MillTurnVdm& vdm = *op->getVDM();
        host::StoreSession session(vdm);
        if (!session || !vdm.LoadOperation(op->getNumber())) {
            return;
        }
        vdm.WriteSection(sectionNr, lines);
    });
}

std::vector<std::string> ParameterSection::composeLines() const {
    if (lineCount < 1) {  // never initialised: there is no line layout to write
        throw std::length_error("the parameter section has no lines");
    }
    std::vector<std::string> lines = {operationTypeName};
    for (std::string& value :
         parameters::composeValueLines(detail::SectionEntries::byNumber(*this),
                                       static_cast<std::size_t>(lineCount - 1), kRecordLayout)) {
        lines.push_back(std::move(value));
    }
    return lines;
}

void ParameterSection::readFromVDM(OperationBase* op) {
    if (op == nullptr) {
        return;
    }
    guarded("Error in ParameterSection::readFromVDM()", [&] {
        MillTurnVdm& vdm = *op->getVDM();
        host::StoreSession session(vdm);
        if (session) {
            readRecord(vdm, op->getNumber());
        }
        // Drilling, pocket cycles and threading keep a second value line for the project.
        const bool projectKind = operationType == MillDrillOperationType::DRILLING ||
                                 operationType == MillDrillOperationType::POCCYCLE ||
                                 operationType == MillDrillOperationType::THREADING;
        if (projectKind && lineCount == 2) {
            lineCount = 3;
        }
    });
}

// The section's lines of operation `number`, read into the entries; entries beyond the lines keep
// their values.
void ParameterSection::readRecord(MillTurnVdm& vdm, int number) {
    std::vector<std::string> lines;
    const bool loaded = vdm.LoadOperation(number);
    const bool stored = loaded && sectionNr < vdm.getSectionCount();
    const int count = stored ? vdm.getSectionLineCount(sectionNr) : 0;
    if (count < 1) {  // not even the kind's name: nothing this section could have written
        throw std::length_error("the parameter section has no lines in the record");
    }
    if (vdm.ReadSection(sectionNr, lines)) {
        readFromLines(lines);
    }
}

void ParameterSection::readFromLines(const std::vector<std::string>& lines) {
    if (lines.empty()) {
        return;
    }
    operationTypeName = lines.front();
    // Boring is drilling to this section.
    if (operationTypeName == "BORING") {
        operationTypeName = "DRILLING";
    }

    const std::size_t valueLines = lines.size() - 1;
    // The entries come in the order of their numbers, so each line's fields are found in one pass.
    std::vector<text::FieldCursor> cursors(lines.begin() + 1, lines.end());
    const std::vector<detail::EntryRef> sorted = detail::SectionEntries::byNumber(*this);
    for (const parameters::Field& field : parameters::fieldsOf(sorted, kRecordLayout)) {
        const detail::EntryRef& entry = sorted[field.first];
        // Reading goes by the number alone: an entry numbered 350 is read from line 3.
        const int nr = entry.getNr();
        const auto lineIndex = static_cast<long long>(nr / 100.0);
        const auto position = static_cast<std::size_t>(nr % 100);
        if (lineIndex < 0 || static_cast<std::size_t>(lineIndex) >= valueLines) {
            continue;
        }
        const std::string& line = lines[static_cast<std::size_t>(lineIndex) + 1];
        const std::size_t start = cursors[static_cast<std::size_t>(lineIndex)].position(position);
        switch (entry.getValueDataType()) {
            case ValueDataType::Double: {
                double fallback = 0.0;
                entry.getDefault(&fallback);
                const double value = fields::doubleField(line, start, fallback);
                entry.setValue(&value);
                break;
            }
            case ValueDataType::Int: {
                int fallback = 0;
                entry.getDefault(&fallback);
                const int value = fields::intField(line, start, fallback);
                entry.setValue(&value);
                break;
            }
            case ValueDataType::Bool: {
                const auto word = static_cast<std::uint32_t>(fields::intField(line, start, 0));
                parameters::setOptionWord(sorted, field, word);
                break;
            }
            case ValueDataType::String: {
                std::string fallback;
                entry.getDefault(&fallback);
                const std::string value = fields::stringField(line, start, fallback);
                entry.setValue(&value);
                break;
            }
            default:
                break;
        }
    }
}

}  // namespace VelkApi
