#include "ProjectSnapshot.h"

#include <velkapi/MillDrillOperation.h>
#include <velkapi/SectionNames.h>
#include <velkapi/ToolList.h>
#include <velkhost/OfflineHost.h>

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

std::vector<RecordSnapshot> readStore(int store) {
    const velkhost::Records& stored = velkhost::OfflineHost::instance().records(store);
    std::vector<RecordSnapshot> records(stored.size());
    for (std::size_t nr = 0; nr < stored.size(); ++nr) {
        records[nr].kind = recordKind(store, static_cast<int>(nr));
        records[nr].lines = stored[nr];
    }
    VelkApi::MillTurnVdm vdm(store);
    vdm.Create();
    for (std::size_t nr = 0; nr < stored.size(); ++nr) {
        readLines(vdm, static_cast<int>(nr), records[nr]);
    }
    vdm.Close();
    for (std::size_t nr = 0; nr < stored.size(); ++nr) {
        readValues(store, static_cast<int>(nr), records[nr]);
    }
    return records;
}

nlohmann::ordered_json part(const nlohmann::ordered_json& project, const char* name) {
    return project.contains(name) ? project[name] : nlohmann::ordered_json::object();
}

}  // namespace

ProjectSnapshot readProjectSnapshot(const std::string& path) {
    loadProject(path);
    return snapshotOfLoadedProject();
}

ProjectSnapshot snapshotOfLoadedProject() {
    auto& host = velkhost::OfflineHost::instance();
    ProjectSnapshot snapshot;
    for (const int store : host.storeNumbers()) {
        snapshot.stores[store] = readStore(store);
    }
    const auto project = nlohmann::ordered_json::parse(host.projectText());
    snapshot.environment = part(project, "environment");
    snapshot.globals = part(project, "globals");
    snapshot.drawing = part(project, "cad");
    reportHostMessages();
    return snapshot;
}

}  // namespace velk
