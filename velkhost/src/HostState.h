// The one offline host of the process: its project, the store handles over it, and the record
// of what the library did. The exported functions and OfflineHost both work on it.
#pragma once

#include <initializer_list>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Project.h"
#include "StoreSessions.h"
#include "Variables.h"

namespace velkhost::detail {

struct Observations {
    std::vector<MessageBoxRecord> messageBoxes;
    int missingApiCalls = 0;
    std::unordered_map<std::string_view, int> callCounts;  // keys: export names, static storage
    bool recordingCalls = false;
    std::vector<HostCall> calls;
};

struct HostState {
    Project project;
    StoreSessions stores{project.stores};
    Variables variables{project.environment, project.globals};
    Observations observed;

    void replaceProject(Project&& loaded);
    // Counts the call and, while calls are recorded, records it with its arguments.
    void countCall(const char* exportName, std::initializer_list<int> numbers, const char* text);
    int showMessageBox(void* owner, const char* text, const char* caption, unsigned style);
    int missingApi();
    // True for an export the loaded capture lists as one the session's host did not have.
    bool lacksExport(std::string_view exportName) const;
};

// Never destroyed, so that the library may still call the host while the process exits.
HostState& hostState();

void* fakeWindow(int which);

}  // namespace velkhost::detail
