#include <velkapi/LogFile.h>
#include <velkapi/MacroExport.h>
#include <velkapi/ToolSection.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <variant>

#include "tools/HostVariables.h"
#include "tools/ToolRecordStore.h"
#include "tools/ToolTable.h"
#include "util/ErrorBoundary.h"
#include "util/FieldReaders.h"
#include "util/TextHelpers.h"

namespace VelkApi {

using detail::guarded;

int MillToolSection::bin[BIN_SIZE];
double MillToolSection::val[VAL_SIZE];
double MillToolSection::tur_val[TUR_VAL_SIZE];

namespace {

tools::ScratchArrays scratch() {
    return {MillToolSection::bin, MillToolSection::val, MillToolSection::tur_val};
}

void setEntry(SectionDictionary& section, const std::string& key, int value) {
    section.setInt(key, value);
}
void setEntry(SectionDictionary& section, const std::string& key, double value) {
    section.setDouble(key, value);
}
void setEntry(SectionDictionary& section, const std::string& key, const std::string& value) {
    section.setString(key, value);
}

void getEntry(const SectionDictionary& section, const std::string& key, int& value) {
    value = section.getInt(key);
}
void getEntry(const SectionDictionary& section, const std::string& key, double& value) {
    value = section.getDouble(key);
}

// What writeToVars does with a filled scratch array: the int array goes to the host; the double
// arrays are read back from the host instead, so that the host keeps "w_t_val" and
// "w_t_tur_val" as they are.
void handOver(const char* array, int* values, std::size_t count) {
    tools::writeHostArray(array, values, count);
}
void handOver(const char* array, double* values, std::size_t count) {
    tools::readHostArray(array, values, count);
}

// The entry's value as the host variable of its name holds it.
tools::HostValue hostValueOf(const SectionDictionary& section, const std::string& name) {
    switch (tools::kindOf(name)) {
        case 'i':
            return section.getInt(name);
        case 'w':
            return section.getDouble(name);
        default:
            return section.getString(name);
    }
}

// Appends one value of a stored line, by the entry's data type, followed by the blank that
// separates it from the next.
void appendField(std::string& line, const detail::EntryRef& entry, bool last) {
    switch (entry.getValueDataType()) {
        case ValueDataType::None:
        case ValueDataType::Double: {
            double value = 0.0;
            entry.getValue(&value);
            text::appendGeneral6(line, value);
            break;
        }
        case ValueDataType::Int: {
            int value = 0;
            entry.getValue(&value);
            text::appendInt(line, value);
            break;
        }
        case ValueDataType::String: {
            std::string value;
            entry.getValue(&value);
            line += value;
            break;
        }
        default:  // an option bit has no place in the tool record
            return;
    }
    if (!last) {
        line += ' ';
    }
}

// Room for a field of a composed line: "2.14748e+09" and its blank.
constexpr std::size_t kFieldRoom = 12;

// The number of entries a tool section declares: a name the table holds twice is declared once.
std::size_t distinctNames() {
    static const std::size_t count = [] {
        const auto& declarations = tools::declarationsByName();
        std::size_t distinct = 0;
        for (std::size_t i = 0; i < declarations.size(); ++i) {
            if (i == 0 || *declarations[i].name != *declarations[i - 1].name) {
                ++distinct;
            }
        }
        return distinct;
    }();
    return count;
}

// The table place of the first slot of each line: the slots of the lines before it.
const std::vector<std::size_t>& firstPlaceOfLine() {
    static const std::vector<std::size_t> first = [] {
        std::vector<std::size_t> places(ToolSection::LINESCOUNT + 1, 0);
        for (int line = 0; line < ToolSection::LINESCOUNT; ++line) {
            places[line + 1] = places[line] + static_cast<std::size_t>(ToolSection::lineslen[line]);
        }
        return places;
    }();
    return first;
}

// Takes one stored line of the tool record into the entries of its names. A line beyond the
// table carries no names.
void readToolLine(detail::EntryStore& entries, const std::vector<std::uint32_t>& byPlace, int line,
                  const std::string& text) {
    if (line >= ToolSection::LINESCOUNT) {
        return;
    }
    std::size_t place = firstPlaceOfLine()[line];
    text::FieldCursor fieldsOfLine(text);
    for (int slot = 0; slot < ToolSection::lineslen[line]; ++slot) {
        const std::string& name = ToolSection::lines[line][slot];
        const std::uint32_t at = byPlace[place++];
        if (at == tools::kNoEntry) {
            continue;
        }
        const detail::EntryRef entry(&entries, at);
        switch (tools::kindOf(name)) {
            case '$':
                entry->setValue(&text);
                break;
            case 'i': {
                const int value = fields::intField(text, fieldsOfLine.position(slot), 0);
                entry->setValue(&value);
                break;
            }
            case 'w': {
                const double value = fields::doubleField(text, fieldsOfLine.position(slot), 0.0);
                entry->setValue(&value);
                break;
            }
            default:
                break;
        }
    }
}

}  // namespace

MillToolSection::MillToolSection(int sectionnr) : ToolSection(sectionnr) {
    guarded("Error in ToolSection::ToolSection(int sectionnr)", [&] {
        // Every tool section declares the same entries. The first that declares them all keeps
        // a copy of them, which every later one copies instead of declaring them again.
        static std::unique_ptr<detail::EntryStore> declared;
        detail::EntryStore& entries = detail::SectionEntries::of(*this);
        if (declared) {
            entries.copyEntriesOf(*declared);
            return;
        }
        declareEntries();
        if (entries.size() == distinctNames()) {  // none failed
            auto copy = std::make_unique<detail::EntryStore>();
            copy->copyEntriesOf(entries);
            declared = std::move(copy);
        }
    });
}

void MillToolSection::declareEntries() {
    for (const auto& [name, number] : tools::declarationsByName()) {
        switch (tools::kindOf(*name)) {
            case '$':
                addStringParameter(number, *name, "", "");
                break;
            case 'i':
                addIntParameter(number, *name, kUnsetInt);
                break;
            default:
                addDoubleParameter(number, *name, kUnsetDouble);
                break;
        }
    }
}

MillToolSection::~MillToolSection() = default;

// ---- the record in the store

void MillToolSection::writeToVDM(OperationBase* op) {
    tools::onOpenStore("Error in ToolSection::writeToVDM()", op, [&] { write(op); });
}

void MillToolSection::readFromVDM(OperationBase* op) {
    tools::onOpenStore("Error in ToolSection::readFromVDM()", op, [&] { read(op); });
}

void MillToolSection::write(OperationBase* op) {
    guarded("Error in ToolSection::write(VelkApi::MillTurnVdm * vdm)", [&] {
        tools::writeToolLines(*op->getVDM(), op->getNumber(), sectionNr, composeLines());
    });
}

std::vector<std::string> MillToolSection::composeLines() const {
    std::vector<std::string> record(LINESCOUNT);
    for (int line = 0; line < LINESCOUNT; ++line) {
        record[line].reserve(kFieldRoom * static_cast<std::size_t>(lineslen[line]));
    }
    detail::EntryStore& entries = detail::SectionEntries::of(*this);
    const std::vector<std::uint32_t>& byPlace = tools::entriesByPlace(*this);
    std::size_t place = 0;
    tools::forEachName([&](int line, int slot, const std::string&) {
        if (const std::uint32_t entry = byPlace[place++]; entry != tools::kNoEntry) {
            appendField(record[line], {&entries, entry}, slot == lineslen[line] - 1);
        }
    });
    return record;
}

void MillToolSection::read(OperationBase* op) {
    guarded("Error in ToolSection::read(VelkApi::MillTurnVdm * vdm)", [&] {
        LogFile::instance().trace("read ToolSection", true);
        // Each line is taken into the entries as it comes, in one text for them all.
        detail::EntryStore& entries = detail::SectionEntries::of(*this);
        const std::vector<std::uint32_t>& byPlace = tools::entriesByPlace(*this);
        tools::forEachToolLine(
            *op->getVDM(), op->getNumber(), sectionNr,
            [&](int line, const std::string& text) { readToolLine(entries, byPlace, line, text); });
    });
}

void MillToolSection::readFromLines(const std::vector<std::string>& record) {
    detail::EntryStore& entries = detail::SectionEntries::of(*this);
    const std::vector<std::uint32_t>& byPlace = tools::entriesByPlace(*this);
    for (std::size_t line = 0; line < record.size(); ++line) {
        readToolLine(entries, byPlace, static_cast<int>(line), record[line]);
    }
}

// ---- the host's variables

void MillToolSection::readFromVars() {
    guarded("Error in void ToolSection::readFromVars()", [&] {
        tools::forEachVariable(
            this, scratch(),
            [&](const std::string& name) {
                if (const auto value = tools::readHostVariable(name)) {
                    std::visit([&](const auto& held) { setEntry(*this, name, held); }, *value);
                }
            },
            [&](const char* array, auto& elements) {
                tools::readHostArray(array, elements, std::size(elements));
                for (std::size_t i = 0; i < std::size(elements); ++i) {
                    setEntry(*this, tools::elementKey(array, i + 1), elements[i]);
                }
            });
    });
}

void MillToolSection::writeToVars() {
    guarded("Error in ToolSection::writeToVars()", [&] {
        tools::forEachVariable(
            this, scratch(),
            [&](const std::string& name) {
                tools::writeHostVariable(name, hostValueOf(*this, name));
            },
            [&](const char* array, auto& elements) {
                for (std::size_t i = 0; i < std::size(elements); ++i) {
                    getEntry(*this, tools::elementKey(array, i + 1), elements[i]);
                }
                handOver(array, elements, std::size(elements));
            });
    });
}

void MillToolSection::setDefault() {
    guarded("Error in ToolSection::setDefault()", [&] {
        std::fill(std::begin(bin), std::end(bin), kUnsetInt);
        std::fill(std::begin(val), std::end(val), kUnsetDouble);
        std::fill(std::begin(tur_val), std::end(tur_val), kUnsetDouble);
        tools::forEachVariable(
            nullptr, scratch(),
            [&](const std::string& name) {
                switch (tools::kindOf(name)) {
                    case 'i':
                        MacroExport::SetGlobalIntVar(name);
                        break;
                    case 'w':
                        MacroExport::SetGlobalDoubleVar(name, kUnsetDouble);
                        break;
                    default:
                        tools::writeHostVariable(name, std::string(" "));
                        break;
                }
            },
            [&](const char* array, auto& elements) {
                tools::writeHostArray(array, elements, std::size(elements));
            });
    });
}

}  // namespace VelkApi
