// Every section of every kind of operation, read and written while the host fails in each way it
// can: the store missing, held open by someone else, refusing to open, closed behind the
// library's back, and taking only the first n lines of a write. For every cell: nothing is
// thrown, no handle stays open, the user sees exactly the expected message boxes and log
// records, and the store holds what the table says.
#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>

#include <map>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "ErrorLog.h"
#include "ExportedFunctions.h"
#include "HostFixture.h"

using namespace VelkApi;
using Kind = MillDrillOperationType;
using Texts = std::vector<std::string>;

namespace {

constexpr int kStore = 7;
constexpr int kOperation = 3;

enum class Fault { MissingStore, HeldElsewhere, FailingOpen, ClosedBehind, AddsFailAfter };
enum class Access { Read, Write };

// What the store holds after the cell.
enum class Afterwards {
    NoStore,          // the store is gone: there is nothing to lose or keep
    Unchanged,        // every line as before
    SectionCutToAdds  // the section holds the lines the host took, the header counts them
};

// What the user sees and keeps when a section meets a fault: the message boxes ("caption|text"),
// the error log records, and what the store holds afterwards.
struct Outcome {
    Fault fault;
    Access access;
    std::string section;  // "" for every section without a row of its own
    Texts boxes;
    Texts log;
    Afterwards store;
};

const Texts kHeldElsewhere = {"VelkApi::MacroVdm|7: Open: already open by another process"};
const Texts kCannotOpen = {"VelkApi::MacroVdm|7: Open: VELK can not open"};
const Texts kClosedBehind = {
    "VelkApi::MillTurnVdm|7: Operation 3 (0 based) out of range (0 oprations)",
    "VelkApi::MacroVdm|7: Close: already closed by another process"};
const Texts kClosedBehindWithoutLoading = {
    "VelkApi::MacroVdm|7: Close: already closed by another process"};

const std::vector<Outcome> kOutcomes = {
    // A store the project does not have is never created: nothing is shown or written.
    {Fault::MissingStore, Access::Read, "", {}, {}, Afterwards::NoStore},
    {Fault::MissingStore, Access::Write, "", {}, {}, Afterwards::NoStore},
    {Fault::HeldElsewhere, Access::Read, "", kHeldElsewhere, {}, Afterwards::Unchanged},
    {Fault::HeldElsewhere, Access::Write, "", kHeldElsewhere, {}, Afterwards::Unchanged},
    {Fault::FailingOpen, Access::Read, "", kCannotOpen, {}, Afterwards::Unchanged},
    {Fault::FailingOpen, Access::Write, "", kCannotOpen, {}, Afterwards::Unchanged},
    {Fault::ClosedBehind, Access::Read, "", kClosedBehind, {}, Afterwards::Unchanged},
    // The parameters count a record without their lines as a failed read.
    {Fault::ClosedBehind,
     Access::Read,
     "Parameter",
     kClosedBehind,
     {"Error in ParameterSection::readFromVDM()"},
     Afterwards::Unchanged},
    {Fault::ClosedBehind, Access::Write, "", kClosedBehind, {}, Afterwards::Unchanged},
    // The message is written into the operation its read loaded, without loading it again.
    {Fault::ClosedBehind,
     Access::Write,
     "Message",
     kClosedBehindWithoutLoading,
     {},
     Afterwards::Unchanged},
    // Adds the host refuses are not counted: nothing is shown, the header counts what is there.
    {Fault::AddsFailAfter, Access::Write, "", {}, {}, Afterwards::SectionCutToAdds},
};

const Outcome& outcomeOf(Fault fault, Access access, const std::string& section) {
    const Outcome* general = nullptr;
    for (const Outcome& outcome : kOutcomes) {
        if (outcome.fault == fault && outcome.access == access) {
            if (outcome.section == section) {
                return outcome;
            }
            if (outcome.section.empty()) {
                general = &outcome;
            }
        }
    }
    if (general == nullptr) {
        throw std::logic_error("no outcome for the cell");
    }
    return *general;
}

struct SectionSlot {
    const char* name;
    int storeSection;
    bool turning = false;  // the machine has turning-driven tools ("TURNDRIVENTOOLS" 2)
};

// The header has no lines of its own (its values are the header line's) and is never written.
const SectionSlot kHeader = {"Header", -1};
const std::vector<SectionSlot> kSections = {
    {"Message", 0},  {"ToolData", 1},     {"TurnToolData", 1, true}, {"Parameter", 2},
    {"Geometry", 3}, {"Additional_1", 4}, {"Additional_2", 5}};

const std::vector<Kind> kKinds = {Kind::PROFILE,  Kind::CORNER,     Kind::CHAMFER,  Kind::POCKET,
                                  Kind::FACEMILL, Kind::RESTMATL,   Kind::DRILLING, Kind::POCCYCLE,
                                  Kind::ENGRAVE,  Kind::THREADING,  Kind::TOOLS,    Kind::MEDITOR,
                                  Kind::MOVING,   Kind::STD3DGEO,   Kind::RSURFING, Kind::MILL_5AX,
                                  Kind::SLOT,     Kind::UEDITOR_MAX};

struct Cell {
    Kind kind;
    SectionSlot section;
    Fault fault;
    Access access;
    int adds;  // AddsFailAfter: the number of lines the host takes
};

const char* faultName(Fault fault) {
    switch (fault) {
        case Fault::MissingStore:
            return "MissingStore";
        case Fault::HeldElsewhere:
            return "HeldElsewhere";
        case Fault::FailingOpen:
            return "FailingOpen";
        case Fault::ClosedBehind:
            return "ClosedBehind";
        case Fault::AddsFailAfter:
            return "AddsFailAfter";
    }
    return "";
}

std::string cellName(const Cell& cell) {
    std::string name = millDrillOperationTypeToString(cell.kind) + "_" + cell.section.name + "_" +
                       (cell.access == Access::Read ? "Read_" : "Write_") + faultName(cell.fault);
    if (cell.fault == Fault::AddsFailAfter) {
        name += std::to_string(cell.adds);
    }
    return name;
}

void PrintTo(const Cell& cell, std::ostream* out) {
    *out << cellName(cell);
}

velkhost::OfflineHost& host() {
    return velkhost::OfflineHost::instance();
}

// The section of `op` that the slot names.
SectionDictionary* sectionOf(const MillDrillOperation& op, const SectionSlot& slot) {
    switch (slot.storeSection) {
        case -1:
            return op.getHeaderSection();
        case 0:
            return op.getMessageSection();
        case 1:
            return op.getToolSection();
        case 2:
            return op.getParameterSection();
        case 3:
            return op.getGeometrySection();
        default:
            return op.getActionSection(slot.storeSection - 3);
    }
}

// The environment and globals an operation reads when it is made.
void prepareHost(bool turning) {
    host().setEnvironment("TURNDRIVENTOOLS", turning ? "2" : "1");
    host().setGlobal("w_setup_cle", 2.0);
    host().setGlobal("w_setup_ret", 10.0);
}

// The store with three leading operations and, as record 3, an operation of the kind with every
// section filled, written by the library.
velkhost::Records writeSeededStore(Kind kind, bool turning) {
    host().reset();
    prepareHost(turning);
    host().setStore(kStore, {{"0 1 0"}, {"0 1 0"}, {"0 1 0"}});
    MillDrillOperation op(kind, kStore, kOperation);
    op.setMode(1);
    op.getMessageSection()->createandsetLine(
        0, "Every section of " + millDrillOperationTypeToString(kind));
    if (!turning) {
        op.getToolSection()->setDefault();
        op.getToolSection()->setDouble("w_t_diam", 10.0);
        op.getToolSection()->setString("$_t_comment", "end mill");
    }
    op.getParameterSection()->setDefault();
    op.getGeometrySection()->addVelkObjectParameter(1, "CONTOUR1",
                                                    GeometrySectionType::OutlineFigure);
    op.getGeometrySection()->addVelkObjectParameter(2, "X1 Y2 Z3",
                                                    GeometrySectionType::OutlineFigure);
    op.getActionSection(1)->addActionParameter(2, ActionType::Default, "M8");
    op.getActionSection(1)->addActionParameter(3, ActionType::Default, "call 'probe.mac' 3");
    op.getActionSection(2)->addActionParameter(2, ActionType::Default, "M9");
    op.writeToVDM();
    // Read and written once more, the record is what the library keeps of it: a kind without
    // figure counters, for one, keeps no figures.
    MillDrillOperation stored(kStore, kOperation);
    stored.readFromVDM();
    stored.writeToVDM();
    return host().records(kStore);
}

// The seeded store of the kind and tool setting, written once for each.
const velkhost::Records& seededStore(Kind kind, bool turning) {
    static std::map<std::pair<Kind, bool>, velkhost::Records> stores;
    auto found = stores.find({kind, turning});
    if (found == stores.end()) {
        found =
            stores.emplace(std::make_pair(kind, turning), writeSeededStore(kind, turning)).first;
    }
    return found->second;
}

// The line count of every section of the operation, from its header line.
std::vector<int> sectionCounts(const std::string& header) {
    std::vector<int> numbers;
    std::size_t pos = 0;
    while (pos < header.size()) {
        std::size_t end = header.find(' ', pos);
        if (end == std::string::npos) {
            end = header.size();
        }
        numbers.push_back(std::stoi(header.substr(pos, end - pos)));
        pos = end + 1;
    }
    return std::vector<int>(numbers.begin() + 3, numbers.end());
}

// The record with section `s` cut to its first `lines` lines, and the header counting them.
velkhost::Record cutSection(const velkhost::Record& record, int s, int lines) {
    std::vector<int> counts = sectionCounts(record[0]);
    std::size_t first = 1;
    for (int i = 0; i < s; ++i) {
        first += static_cast<std::size_t>(counts[static_cast<std::size_t>(i)]);
    }
    velkhost::Record cut(record.begin(),
                         record.begin() + static_cast<std::ptrdiff_t>(first + lines));
    const std::size_t rest = first + static_cast<std::size_t>(counts[static_cast<std::size_t>(s)]);
    cut.insert(cut.end(), record.begin() + static_cast<std::ptrdiff_t>(rest), record.end());
    counts[static_cast<std::size_t>(s)] = lines;
    std::string header = record[0].substr(0, record[0].find(' ', record[0].find(' ') + 1));
    header += " " + std::to_string(counts.size());
    for (const int count : counts) {
        header += " " + std::to_string(count);
    }
    cut[0] = header;
    return cut;
}

std::vector<Cell> allCells() {
    std::vector<Cell> cells;
    for (const Kind kind : kKinds) {
        for (const Fault fault :
             {Fault::MissingStore, Fault::HeldElsewhere, Fault::FailingOpen, Fault::ClosedBehind}) {
            cells.push_back({kind, kHeader, fault, Access::Read, 0});
        }
        for (const SectionSlot& section : kSections) {
            for (const Access access : {Access::Read, Access::Write}) {
                for (const Fault fault : {Fault::MissingStore, Fault::HeldElsewhere,
                                          Fault::FailingOpen, Fault::ClosedBehind}) {
                    cells.push_back({kind, section, fault, access, 0});
                }
            }
            const std::vector<int> counts =
                sectionCounts(seededStore(kind, section.turning)[kOperation][0]);
            const int count = counts.at(static_cast<std::size_t>(section.storeSection));
            for (int adds = 0; adds <= count; ++adds) {
                cells.push_back({kind, section, Fault::AddsFailAfter, Access::Write, adds});
            }
        }
    }
    host().reset();
    return cells;
}

void inject(const Cell& cell) {
    switch (cell.fault) {
        case Fault::MissingStore:
            host().removeStore(kStore);
            break;
        case Fault::HeldElsewhere:
            host().holdOpenElsewhere(kStore, true);
            break;
        case Fault::FailingOpen:
            host().failOpen(kStore, true);
            break;
        case Fault::ClosedBehind:
            host().closeBehindLibraryOnOpen(kStore, true);
            break;
        case Fault::AddsFailAfter:
            host().failAddsAfter(kStore, cell.adds);
            break;
    }
}

// Every entry of the section with its value as text, to tell whether a read changed it.
std::map<std::string, std::string> valuesOf(const SectionDictionary& section) {
    std::vector<std::string> keys;
    std::map<std::string, std::string> values;
    for (const std::string& key : section.readKeys(keys)) {
        values[key] = section.getValueAsString(key);
    }
    return values;
}

class FaultMatrixTest : public testsupport::HostTest, public ::testing::WithParamInterface<Cell> {};

}  // namespace

TEST_P(FaultMatrixTest, NothingEscapesNoHandleStaysOpenAndTheUserIsToldExactly) {
    const Cell& cell = GetParam();
    const velkhost::Records& seeded = seededStore(cell.kind, cell.section.turning);
    prepareHost(cell.section.turning);
    host().setStore(kStore, seeded);
    // What a write without a fault gives: the reference for a write the host cut short.
    velkhost::Records written;
    {
        MillDrillOperation op(kStore, kOperation);
        op.readFromVDM();
        sectionOf(op, cell.section)->writeToVDM(&op);
        written = host().records(kStore);
        host().setStore(kStore, seeded);
    }

    MillDrillOperation op(kStore, kOperation);
    op.readFromVDM();
    SectionDictionary* section = sectionOf(op, cell.section);
    ASSERT_NE(section, nullptr);
    const auto before = valuesOf(*section);
    host().clearMessageBoxes();
    testsupport::ErrorLogWatch log;
    inject(cell);
    EXPECT_NO_THROW({
        if (cell.access == Access::Read) {
            section->readFromVDM(&op);
        } else {
            section->writeToVDM(&op);
        }
    });
    host().clearFaults();

    EXPECT_FALSE(op.getVDM()->isOpen());
    EXPECT_EQ(VelkMacroVdmCheckOpen(kStore), 0);
    const Outcome& expected = outcomeOf(cell.fault, cell.access, cell.section.name);
    EXPECT_EQ(boxes(), expected.boxes);
    EXPECT_EQ(log.texts(), expected.log);
    if (cell.access == Access::Read) {
        EXPECT_EQ(valuesOf(*section), before) << "a failed read keeps the section's values";
    }
    switch (expected.store) {
        case Afterwards::NoStore:
            EXPECT_FALSE(host().hasStore(kStore));
            break;
        case Afterwards::Unchanged:
            EXPECT_EQ(host().records(kStore), seeded);
            break;
        case Afterwards::SectionCutToAdds: {
            velkhost::Records cut = written;
            cut[kOperation] = cutSection(written[kOperation], cell.section.storeSection, cell.adds);
            EXPECT_EQ(host().records(kStore), cut);
            break;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EverySectionOfEveryKind, FaultMatrixTest, ::testing::ValuesIn(allCells()),
                         [](const ::testing::TestParamInfo<Cell>& cell) {
                             return cellName(cell.param);
                         });
