#include <velkapi/LogFile.h>
#include <velkapi/MacroExport.h>
#include <velkapi/OperationBase.h>
#include <velkapi/ParameterSection.h>

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "host/ErrorBoundary.h"
#include "host/StoreSession.h"
#include "model/TextHelpers.h"
#include "parameters/ParameterCatalogue.h"
#include "parameters/PpDefIni.h"

namespace VelkApi {

using detail::guarded;

namespace {

// What the host reads as an empty text.
constexpr const char* kEmptyText = "2147483647";

// Until the host's setup values are read.
constexpr double kSetupClearance = 0.42;
constexpr double kSetupRetract = 4.2;

// The bit an option entry owns in its option word; none for a bit outside 1..32.
std::uint32_t bitMask(int bit) {
    return bit >= 1 && bit <= 32 ? std::uint32_t{1} << (bit - 1) : 0;
}

bool isOptionOf(const SectionValue* entry, int number) {
    return entry->getValueDataType() == ValueDataType::Bool && entry->getNr() == number;
}

// The value line an entry is written to: by hundreds up to 299; from 300 on the line of the
// entry before it.
int writeLineOf(int number, int previousLine) {
    if (number < 100) {
        return 0;
    }
    if (number < 200) {
        return 1;
    }
    if (number < 300) {
        return 2;
    }
    return previousLine;
}

// The text of one field, followed by its blank.
std::string fieldText(const SectionValue& entry) {
    switch (entry.getValueDataType()) {
        case ValueDataType::Double: {
            double value = 0.0;
            entry.getValue(&value);
            return text::general6(value) + " ";
        }
        case ValueDataType::Int: {
            int value = 0;
            entry.getValue(&value);
            return std::to_string(value) + " ";
        }
        case ValueDataType::String: {
            std::string value;
            entry.getValue(&value);
            return (value.empty() ? std::string(kEmptyText) : value) + " ";
        }
        default:
            return "";
    }
}

// One of the host's setup values into `target`; false, leaving `target`, when the host cannot
// give it.
bool readSetupValue(const char* name, double& target) {
    double value = 0.0;
    if (MacroExport::GetGlobalDoubleVar(name, value) == 0) {
        return false;
    }
    target = value;
    return true;
}

// The host's setup clearance and retract. The reads stop at the first value the host cannot
// give; the values that stand are kept.
void readSetupValues(double& setupClearance, double& setupRetract) {
    bool read = false;
    try {
        read = readSetupValue("w_setup_cle", setupClearance) &&
               readSetupValue("w_setup_ret", setupRetract);
    } catch (...) {
        read = false;
    }
    if (!read) {
        LogFile::instance().trace("Error in ParameterSection - GetGlobalDoubleVar", false);
    }
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
                PpDefIni machine;
                machine.read();
                subspindleAvailable = machine.isSubspindleAvailable();
                MacroExport::GetGlobalIntVar("i_current_channel", channel);
                yAxisAvailable = yAxisAvailable || machine.isYaxAvailable(channel);
            }
            readSetupValues(setupClearance, setupRetract);
        }

        // Two lines (the name and one value line) unless the kind needs more.
        const catalogue::Catalogue& rows = catalogue::catalogueOf(operationType);
        lineCount = machineAware ? rows.awareLineCount : rows.plainLineCount;

        // The machine-dependent bits of option word `block.number`.
        const auto addMachineBlock = [&](const catalogue::Row& block) {
            const int word = block.number;
            if (!machineAware) {
                for (std::size_t i = 0; i < block.plain.count; ++i) {
                    const catalogue::PlainBit& plain = block.plain.bits[i];
                    addBoolParameter(word, plain.bit, plain.name, false, false);
                }
                return;
            }
            if (yAxisAvailable) {
                addBoolParameter(word, 14, "o_yax_drilling", false, false);
                addBoolParameter(word, 21, "o_cax_index", false, false);
                addBoolParameter(word, 22, "o_cax_break", false, false);
            }
            if (subspindleAvailable) {
                addBoolParameter(word, 25, "o_subspindle", false, false);
            }
            addGohParams(word);
        };
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
        for (const catalogue::Row& row : rows) {
            if (row.when == catalogue::When::MachineAware && !machineAware) {
                continue;
            }
            if (row.onlyForKind != catalogue::kEveryKind &&
                row.onlyForKind != static_cast<int>(operationType)) {
                continue;
            }
            switch (row.kind) {
                case catalogue::Kind::Int:
                    addIntParameter(row.number, row.name, static_cast<int>(defaultOf(row.value)));
                    break;
                case catalogue::Kind::Double:
                    addDoubleParameter(row.number, row.name, defaultOf(row.value));
                    break;
                case catalogue::Kind::Axis:
                    addAxisParameter(row.number, row.name, defaultOf(row.value));
                    break;
                case catalogue::Kind::String:
                    if (row.text != nullptr) {
                        addStringParameter(row.number, row.name, row.text);
                    } else {
                        addStringParameter(row.number, row.name);
                    }
                    break;
                case catalogue::Kind::Option:
                    addBoolParameter(row.number, row.bit, row.name, row.value.number != 0.0, false);
                    break;
                case catalogue::Kind::MachineBlock:
                    addMachineBlock(row);
                    break;
            }
        }
    });
}

ValueDataType ParameterSection::getValueDataType(const std::string& key) {
    return guarded(ValueDataType::None, "Error in ParameterSection::getValueDataType()", [&] {
        const SectionValue* entry = findEntry(key);
        return entry != nullptr ? entry->getValueDataType() : ValueDataType::None;
    });
}

// ---- the record

void ParameterSection::writeToVDM(OperationBase* op) {
    if (op == nullptr) {
        return;
    }
    guarded("Error in ParameterSection::writeToVDM()", [&] {
        if (lineCount < 1) {  // never initialised: there is no line layout to write
            throw std::length_error("the parameter section has no lines");
        }
        std::vector<std::string> lines(static_cast<std::size_t>(lineCount - 1));

        // Fields land in number order; the field position is not consulted, so the numbers of
        // a line run 0, 1, 2, ... for the reader to find them.
        const std::vector<SectionValue*> sorted = entriesByNumber();
        int line = 0;
        for (std::size_t i = 0; i < sorted.size();) {
            const SectionValue& entry = *sorted[i];
            line = writeLineOf(entry.getNr(), line);
            std::string field;
            std::size_t next = i + 1;
            if (entry.getValueDataType() == ValueDataType::Bool) {
                // The options of one word make one field; its bits wrap into the int's sign.
                std::uint32_t word = 0;
                for (next = i; next < sorted.size() && isOptionOf(sorted[next], entry.getNr());
                     ++next) {
                    bool set = false;
                    sorted[next]->getValue(&set);
                    if (set) {
                        word += bitMask(sorted[next]->getBit());
                    }
                }
                field = std::to_string(static_cast<std::int32_t>(word)) + " ";
            } else {
                field = fieldText(entry);
            }
            if (line < lineCount - 1) {
                lines[static_cast<std::size_t>(line)] += field;
            }
            i = next;
        }

        MillTurnVdm& vdm = *op->getVDM();
        host::StoreSession session(vdm);
        if (!session || !vdm.LoadOperation(op->getNumber()) || !vdm.BeginSection(sectionNr)) {
            return;
        }
        vdm.AddLine(operationTypeName);
        for (const std::string& value : lines) {
            vdm.AddLine(value);
        }
        vdm.EndSection();
    });
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
    if (!vdm.ReadSection(sectionNr, lines)) {
        return;
    }
    operationTypeName = lines.front();
    // Boring is drilling to this section.
    if (operationTypeName == "BORING") {
        operationTypeName = "DRILLING";
    }

    const std::size_t valueLines = lines.size() - 1;
    const std::vector<SectionValue*> sorted = entriesByNumber();
    for (std::size_t i = 0; i < sorted.size();) {
        SectionValue& entry = *sorted[i];
        const int nr = entry.getNr();
        const auto lineIndex = static_cast<long long>(nr / 100.0);
        const auto field = static_cast<std::size_t>(nr % 100);
        std::size_t next = i + 1;
        if (entry.getValueDataType() == ValueDataType::Bool) {
            next = i;
            while (next < sorted.size() && isOptionOf(sorted[next], nr)) {
                ++next;
            }
        }
        if (lineIndex < 0 || static_cast<std::size_t>(lineIndex) >= valueLines) {
            i = next;
            continue;
        }
        const std::string& line = lines[static_cast<std::size_t>(lineIndex) + 1];
        switch (entry.getValueDataType()) {
            case ValueDataType::Double: {
                double fallback = 0.0;
                entry.getDefault(&fallback);
                const double value = getDoubleFromLine(line, field, fallback);
                entry.setValue(&value);
                break;
            }
            case ValueDataType::Int: {
                int fallback = 0;
                entry.getDefault(&fallback);
                const int value = getIntFromLine(line, field, fallback);
                entry.setValue(&value);
                break;
            }
            case ValueDataType::Bool: {
                const auto word = static_cast<std::uint32_t>(getIntFromLine(line, field, 0));
                for (std::size_t k = i; k < next; ++k) {
                    const std::uint32_t mask = bitMask(sorted[k]->getBit());
                    const bool set = mask != 0 && (word & mask) == mask;
                    sorted[k]->setValue(&set);
                }
                break;
            }
            case ValueDataType::String: {
                std::string fallback;
                entry.getDefault(&fallback);
                const std::string value = getStringFromLine(line, field, fallback);
                entry.setValue(&value);
                break;
            }
            default:
                break;
        }
        i = next;
    }
}

}  // namespace VelkApi
