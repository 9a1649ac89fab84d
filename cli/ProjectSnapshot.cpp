#include "ProjectSnapshot.h"

#include <velkapi/MillDrillOperation.h>
#include <velkapi/SectionNames.h>
#include <velkapi/ToolList.h>
#include <velkhost/OfflineHost.h>

#include <optional>

#include "EntryText.h"
#include "NewRecords.h"
#include "Project.h"

namespace velk {

namespace {

using VelkApi::kSectionNames;
using VelkApi::MillDrillOperationType;
using VelkApi::SectionDictionary;
using VelkApi::sectionName;
using VelkApi::SectionType;

// The sections of a tool record: message, tool data.
constexpr int kToolSectionCount = 2;
constexpr int kToolDataSection = 1;

// The header's line and section counts follow from the other sections: a change shows there.
bool isLayoutKey(const std::string& section, const std::string& key) {
    return section == sectionName(SectionType::Header) && key.find("count") != std::string::npos;
}

void addValues(RecordSnapshot& record, const VelkApi::OperationBase& op) {
    for (const std::string& name : presentSections(op)) {
        const SectionDictionary& section = *findSection(op, name);
        std::vector<std::string> keys;
        for (const std::string& key : section.readKeys(keys)) {
            if (!isLayoutKey(name, key)) {
                record.values[name + "." + key] = {shownValue(section, key),
                                                   jsonValue(section, key)};
            }
        }
    }
}

// An operation's section by its name, others by their number in the store.
std::string sectionLabel(const RecordSnapshot& record, int section) {
    for (const auto& named : kSectionNames) {
        // The header is no section of the store (its number is -1).
        if (!record.kind.empty() && section >= 0 && named.stored == section) {
            return named.name;
        }
    }
    return "section " + std::to_string(section);
}

// The record's lines, section by section, as the store layout gives them; a record whose header
// cannot be read is one run of lines.
void readLines(VelkApi::MillTurnVdm& vdm, int nr, RecordSnapshot& record) {
    if (!vdm.LoadOperation(nr)) {
        record.sections = {{"record", record.lines}};
        return;
    }
    record.sections = {{"header", {record.lines.front()}}};
    for (int section = 0; section < vdm.getSectionCount(); ++section) {
        std::vector<std::string> lines;
        vdm.ReadSection(section, lines);
        record.sections.emplace_back(sectionLabel(record, section), lines);
    }
}

bool isToolRecord(int store, int nr) {
    if (nr == 0) {
        return false;
    }
    VelkApi::MillTurnVdm vdm(store);
    if (!vdm.Create()) {
        return false;
    }
    const bool tool = vdm.LoadOperation(nr) && vdm.getOperationType() == kToolRecordType &&
                      vdm.getSectionCount() == kToolSectionCount &&
                      vdm.getSectionLineCount(kToolDataSection) == VelkApi::ToolSection::LINESCOUNT;
    vdm.Close();
    return tool;
}

}  // namespace

// A tool record is told apart first: reading it as an operation would look for sections it does
// not have.
std::string recordKind(int store, int nr) {
    if (isToolRecord(store, nr)) {
        return "tool";
    }
    const auto kind = VelkApi::MillDrillOperation::GetOperationType(store, nr);
    return kind != MillDrillOperationType::REDRAW ? kindName(kind) : "";
}

namespace {

void readValues(int store, int nr, RecordSnapshot& record) {
    if (record.kind == "tool") {
        VelkApi::ToolOperation tool(store, nr);
        tool.readFromVDM();
        tool.getMessageSection()->readFromVDM(&tool);
        tool.getHeaderSection()->setDefault();
        addValues(record, tool);
    } else if (!record.kind.empty()) {
        VelkApi::MillDrillOperation op(store, nr);
        op.readFromVDM();
        op.getHeaderSection()->setDefault();
        addValues(record, op);
    }
}

RecordSnapshot readInFull(int store, std::size_t nr, const velkhost::Record& lines) {
    RecordSnapshot record;
    record.kind = recordKind(store, static_cast<int>(nr));
    record.lines = lines;
    VelkApi::MillTurnVdm vdm(store);
    vdm.Create();
    readLines(vdm, static_cast<int>(nr), record);
    vdm.Close();
    readValues(store, static_cast<int>(nr), record);
    return record;
}

// The store as the host holds it for the reading: the records to read in their places, the
// others empty.
velkhost::Records lentStore(const velkhost::Records& records,
                            const std::set<std::size_t>& numbers) {
    velkhost::Records lent(records.size());
    for (const std::size_t nr : numbers) {
        lent[nr] = records[nr];
    }
    return lent;
}

void readStoreInFull(int store, StoreSnapshot& snapshot, const std::set<std::size_t>& numbers) {
    auto& host = velkhost::OfflineHost::instance();
    if (snapshot.records.empty()) {
        for (const std::size_t nr : numbers) {
            snapshot.read[nr] = readInFull(store, nr, host.records(store).at(nr));
        }
        return;
    }
    std::optional<velkhost::Records> held;
    if (host.hasStore(store)) {
        held = host.takeStore(store);
    }
    host.setStore(store, lentStore(snapshot.records, numbers));
    for (const std::size_t nr : numbers) {
        snapshot.read[nr] = readInFull(store, nr, snapshot.records[nr]);
    }
    if (held) {
        host.setStore(store, std::move(*held));
    } else {
        host.removeStore(store);
    }
}

nlohmann::ordered_json part(const nlohmann::ordered_json& project, const char* name) {
    return project.contains(name) ? project[name] : nlohmann::ordered_json::object();
}

// The environment, globals and drawing of the loaded project.
void readParts(ProjectSnapshot& snapshot) {
    const auto project =
        nlohmann::ordered_json::parse(velkhost::OfflineHost::instance().projectText());
    snapshot.environment = part(project, "environment");
    snapshot.globals = part(project, "globals");
    snapshot.drawing = part(project, "cad");
}

// A digest of each record's lines; records with equal digests are taken to be equal.
std::vector<std::uint64_t> digestsOf(const velkhost::Records& records) {
    std::vector<std::uint64_t> digests;
    digests.reserve(records.size());
    for (const velkhost::Record& record : records) {
        std::uint64_t digest = 1469598103934665603ULL;  // FNV-1a over the lines, each ended by \n
        for (const std::string& line : record) {
            for (const char c : line) {
                digest = (digest ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
            }
            digest = (digest ^ '\n') * 1099511628211ULL;
        }
        digests.push_back(digest);
    }
    return digests;
}

StoreSnapshot storeSnapshot(velkhost::Records records, KeptLines kept) {
    StoreSnapshot snapshot;
    snapshot.digests = digestsOf(records);
    if (kept == KeptLines::All) {
        snapshot.records = std::move(records);
    }
    return snapshot;
}

}  // namespace

ProjectSnapshot readProjectSnapshot(const std::string& path, KeptLines kept) {
    loadProject(path);
    auto& host = velkhost::OfflineHost::instance();
    ProjectSnapshot snapshot;
    for (const int store : host.storeNumbers()) {
        snapshot.stores[store] = storeSnapshot(host.takeStore(store), kept);
    }
    readParts(snapshot);
    reportHostMessages();
    return snapshot;
}

ProjectSnapshot snapshotOfLoadedProject() {
    auto& host = velkhost::OfflineHost::instance();
    ProjectSnapshot snapshot;
    for (const int store : host.storeNumbers()) {
        snapshot.stores[store] = storeSnapshot(host.records(store), KeptLines::All);
    }
    // The stores aside for a moment, the project text holds only the other parts.
    std::map<int, velkhost::Records> stores;
    for (const int store : host.storeNumbers()) {
        stores[store] = host.takeStore(store);
    }
    readParts(snapshot);
    for (auto& [store, records] : stores) {
        host.setStore(store, std::move(records));
    }
    return snapshot;
}

void readRecordsInFull(ProjectSnapshot& snapshot, const RecordNumbers& numbers) {
    for (const auto& [store, records] : numbers) {
        readStoreInFull(store, snapshot.stores.at(store), records);
    }
    reportHostMessages();
}

}  // namespace velk
