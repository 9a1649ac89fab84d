#include "HostState.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace velkhost::detail {

void HostState::replaceProject(Project&& loaded) {
    project = std::move(loaded);
    stores.closeAll();
    stores.clearFaults();
    observed = Observations{};
}

std::size_t exportSlot(std::string_view exportName) {
    return static_cast<std::size_t>(
        std::find(std::begin(kExportNames), std::end(kExportNames), exportName) -
        std::begin(kExportNames));
}

void HostState::countCall(std::size_t slot, std::initializer_list<int> numbers, const char* text) {
    ++observed.callCounts[slot];
    if (observed.recordingCalls) {
        observed.calls.push_back({std::string(kExportNames[slot]), numbers, text ? text : ""});
    }
}

int HostState::showMessageBox(void* owner, const char* text, const char* caption, unsigned style) {
    observed.messageBoxes.push_back({owner, text ? text : "", caption ? caption : "", style});
    return 1;  // IDOK
}

int HostState::missingApi() {
    ++observed.missingApiCalls;
    return 0;
}

bool HostState::lacksExport(std::string_view exportName) const {
    if (!project.capture) {
        return false;
    }
    const std::vector<std::string>& missing = project.capture->missingExports;
    return std::find(missing.begin(), missing.end(), exportName) != missing.end();
}

HostState& hostState() {
    static HostState* const state = new HostState;
    return *state;
}

void* fakeWindow(int which) {
    const std::uintptr_t firstWindow = 0x10000;
    return reinterpret_cast<void*>(firstWindow + static_cast<std::uint32_t>(which));
}

}  // namespace velkhost::detail
