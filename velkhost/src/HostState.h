// The one offline host of the process: its project, the store handles over it, and the record
// of what the library did. The exported functions and OfflineHost both work on it.
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "HostExportTable.h"

#include "Project.h"
#include "StoreSessions.h"
#include "Variables.h"

namespace velkhost::detail {

// The exports in the order of the export table; a call is counted in its export's slot.
#define VELKHOST_EXPORT_NAME(exported, name, result, parameters) #exported,
inline constexpr std::string_view kExportNames[] = {VELKAPI_HOST_EXPORTS(VELKHOST_EXPORT_NAME)};
#undef VELKHOST_EXPORT_NAME
inline constexpr std::size_t kExportCount = std::size(kExportNames);

// The slot of `exportName` in the export table; kExportCount for a name the table lacks.
std::size_t exportSlot(std::string_view exportName);

struct Observations {
    std::vector<MessageBoxRecord> messageBoxes;
    int missingApiCalls = 0;
    std::array<int, kExportCount> callCounts{};  // by export slot
    bool recordingCalls = false;
    std::vector<HostCall> calls;
};

struct HostState {
    Project project;
    StoreSessions stores{project.stores};
    Variables variables{project.environment, project.globals};
    Observations observed;

    void replaceProject(Project&& loaded);
    // Counts the call of the export in `slot` and, while calls are recorded, records it with its
    // arguments.
    void countCall(std::size_t slot, std::initializer_list<int> numbers, const char* text);
    int showMessageBox(void* owner, const char* text, const char* caption, unsigned style);
    int missingApi();
    // True for an export the loaded capture lists as one the session's host did not have.
    bool lacksExport(std::string_view exportName) const;
};

// Never destroyed, so that the library may still call the host while the process exits.
HostState& hostState();

void* fakeWindow(int which);

}  // namespace velkhost::detail
