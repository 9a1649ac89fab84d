#include "NewRecords.h"

#include <velkapi/SectionNames.h>
#include <velkapi/ToolList.h>
#include <velkhost/OfflineHost.h>

#include "EntryText.h"
#include "Project.h"
#include "ProjectEdit.h"

namespace velk {

namespace {

// The sections of a tool record in the store.
constexpr int kMessageSection = 0;
constexpr int kToolDataSection = 1;

using VelkApi::MillDrillOperationType;
using VelkApi::sectionName;
using VelkApi::SectionType;
using VelkApi::ToolSection;

// Kinds that list drawing objects of their own rather than count figures.
bool listsObjects(MillDrillOperationType kind) {
    return kind == MillDrillOperationType::STD3DGEO || kind == MillDrillOperationType::RSURFING;
}

// The operation's outline figures, then its islands, each of the drawing; the kind must keep
// them (its parameters count them, or it lists objects).
void addGeometry(VelkApi::MillDrillOperation& op, const NewOperation& what) {
    if (what.figures.empty() && what.islands.empty()) {
        return;
    }
    const MillDrillOperationType kind = op.getOperationType();
    const bool plainList = listsObjects(kind);
    if (!plainList && !machinesFigures(op)) {
        throw CommandError(kindName(kind) + " operations machine no figures");
    }
    if (!what.islands.empty() &&
        (plainList || !op.getParameterSection()->existsKey("i_nr_of_isle"))) {
        throw CommandError(kindName(kind) + " operations have no islands");
    }
    const VelkApi::GeometrySectionType islandRole =
        kind == MillDrillOperationType::FACEMILL
            ? VelkApi::GeometrySectionType::FacemillIslandFigure
            : VelkApi::GeometrySectionType::IslandFigure;
    int nr = 0;
    for (const std::string& text : what.figures) {
        op.getGeometrySection()->addVelkObjectParameter(
            nr++, drawingObject(text, VelkApi::GeometrySectionType::OutlineFigure, "--figure"));
    }
    for (const std::string& text : what.islands) {
        op.getGeometrySection()->addVelkObjectParameter(
            nr++, drawingObject(text, islandRole, "--island"));
    }
}

// The value of every key of `from` into `to`, by the key's data type.
void copyValues(const ToolSection& from, ToolSection& to) {
    std::vector<std::string> keys;
    for (const std::string& key : from.readKeys(keys)) {
        switch (from.dataTypeOf(key)) {
            case VelkApi::ValueDataType::Int:
                to.setInt(key, from.getInt(key));
                break;
            case VelkApi::ValueDataType::Double:
                to.setDouble(key, from.getDouble(key));
                break;
            default:
                to.setString(key, from.getString(key));
                break;
        }
    }
}

}  // namespace

// "PROFILE, CORNER, ...": every kind of machining operation by its name, in number order.
std::string machiningKindNames() {
    std::string names;
    for (int number = 1; number < static_cast<int>(MillDrillOperationType::UEDITOR_MAX); ++number) {
        const auto kind = static_cast<MillDrillOperationType>(number);
        const std::string name = VelkApi::millDrillOperationTypeToString(kind);
        if (!name.empty() && kind != MillDrillOperationType::REDRAW) {
            names += (names.empty() ? "" : ", ") + name;
        }
    }
    return names;
}

MillDrillOperationType parseKind(const std::string& name) {
    const MillDrillOperationType kind = VelkApi::StringToMillDrillOperationType(name);
    if (kind == MillDrillOperationType::Unknown || kind == MillDrillOperationType::REDRAW) {
        throw CommandError("'" + name + "' is not a kind of machining operation (the kinds: " +
                           machiningKindNames() + ")");
    }
    return kind;
}

bool machinesFigures(const VelkApi::MillDrillOperation& op) {
    return op.getParameterSection() != nullptr &&
           op.getParameterSection()->existsKey("i_nr_of_figs");
}

std::unique_ptr<VelkApi::MillDrillOperation> makeOperation(int store, int at,
                                                           const NewOperation& what) {
    auto op = std::make_unique<VelkApi::MillDrillOperation>(what.kind, store, at);
    op->setMode(1);
    op->getParameterSection()->setDefault();
    op->getMessageSection()->createandsetLine(0, what.description);
    addGeometry(*op, what);
    return op;
}

int appendTool(int store, const ToolSection& tool, const std::string& description) {
    const int position = static_cast<int>(velkhost::OfflineHost::instance().records(store).size());
    if (position == 0) {
        throw CommandError("store " + std::to_string(store) +
                           " has no leading record: a tool store starts with one record that "
                           "is not a tool");
    }
    VelkApi::ToolOperation record(store, position);
    copyValues(tool, *record.getToolSection());
    record.getMessageSection()->createandsetLine(0, description);
    writeToHost([&] {
        VelkApi::MillTurnVdm& vdm = *record.getVDM();
        if (vdm.Create()) {
            vdm.InsertOperation(position, kToolRecordType);
            vdm.Close();
        }
        record.getMessageSection()->writeToVDM(&record);
        record.getToolSection()->writeToVDM(&record);
    });
    ProjectEdit::requireWritten(record, sectionName(SectionType::Message), kMessageSection, 1);
    ProjectEdit::requireWritten(record, sectionName(SectionType::ToolData), kToolDataSection,
                                VelkApi::ToolSection::LINESCOUNT);
    return position;
}

}  // namespace velk
