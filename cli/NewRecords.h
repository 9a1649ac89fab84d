// New records in a store, as velk add, velk tools --add-from and velk init make them: an
// operation of a kind with every parameter at its default, and a tool appended to a tool store.
#pragma once

#include <velkapi/MillDrillOperation.h>

#include <memory>
#include <string>
#include <vector>

namespace velk {

// The host's operation number of a tool record.
constexpr int kToolRecordType = 0;

// The kind a name gives (any case); throws CommandError unless it is a machining operation.
VelkApi::MillDrillOperationType parseKind(const std::string& name);

// What a new operation holds besides its defaults.
struct NewOperation {
    VelkApi::MillDrillOperationType kind = VelkApi::MillDrillOperationType::PROFILE;
    std::string description;           // the first line of its message section
    std::vector<std::string> figures;  // outline figures (or points, or objects) by their text
    std::vector<std::string> islands;  // island figures by their text
};

// True when the kind's parameters count the figures it machines.
bool machinesFigures(const VelkApi::MillDrillOperation& op);

// The operation, not yet written, that becomes operation `at` of the store: mode new, every
// parameter at its default, its description and the drawing objects it machines. Throws
// CommandError when the drawing lacks an object or the kind takes no figures or islands.
std::unique_ptr<VelkApi::MillDrillOperation> makeOperation(int store, int at,
                                                           const NewOperation& what);

// Appends the tool record `tool` to the tool store as a new tool, with `description` as its
// message; returns its number in the store. Throws CommandError when the store has no leading
// record or the host refuses the write.
int appendTool(int store, const VelkApi::ToolSection& tool, const std::string& description);

}  // namespace velk
