#include "velkhost/OfflineHost.h"

#include <ostream>
#include <string_view>
#include <utility>

#include "FileReplacement.h"
#include "HostState.h"

namespace velkhost {

namespace {

detail::HostState& state() {
    return detail::hostState();
}

}  // namespace

OfflineHost& OfflineHost::instance() {
    static OfflineHost host;
    return host;
}

void OfflineHost::loadProject(const std::string& path) {
    loadProject(path, LoadProgress());
}

void OfflineHost::loadProject(const std::string& path, const LoadProgress& progress) {
    state().replaceProject(detail::readProjectFile(path, progress));
}

void OfflineHost::loadProjectText(const std::string& json, const std::string& sourceName) {
    state().replaceProject(detail::parseProject(json, sourceName));
}

void OfflineHost::saveProject(const std::string& path) const {
    detail::replaceFileContent(path, [](std::ostream& out) {
        detail::writeProject(state().project, [&out](std::string_view block) {
            out.write(block.data(), static_cast<std::streamsize>(block.size()));
        });
    });
}

std::string OfflineHost::projectText() const {
    return detail::projectJson(state().project);
}

void OfflineHost::reset() {
    state().replaceProject(detail::Project{});
}

bool OfflineHost::hasStore(int vdm) const {
    return state().project.stores.count(vdm) != 0;
}

std::vector<int> OfflineHost::storeNumbers() const {
    std::vector<int> numbers;
    for (const auto& store : state().project.stores) {
        numbers.push_back(store.first);
    }
    return numbers;
}

void OfflineHost::setStore(int vdm, Records records) {
    state().project.stores[vdm] = std::move(records);
}

void OfflineHost::removeStore(int vdm) {
    state().stores.closeHandlesOf(vdm);
    state().project.stores.erase(vdm);
}

Records OfflineHost::takeStore(int vdm) {
    const auto store = state().project.stores.find(vdm);
    if (store == state().project.stores.end()) {
        throw std::out_of_range("no store " + std::to_string(vdm));
    }
    Records taken = std::move(store->second);
    removeStore(vdm);
    return taken;
}

const Records& OfflineHost::records(int vdm) const {
    const auto store = state().project.stores.find(vdm);
    if (store == state().project.stores.end()) {
        throw std::out_of_range("no store " + std::to_string(vdm));
    }
    return store->second;
}

Record OfflineHost::lines(int vdm, int record) const {
    const Records& store = records(vdm);
    if (record < 0 || static_cast<std::size_t>(record) >= store.size()) {
        throw std::out_of_range("store " + std::to_string(vdm) + " has no record " +
                                std::to_string(record));
    }
    return store[static_cast<std::size_t>(record)];
}

void OfflineHost::setEnvironment(const std::string& name, const std::string& text) {
    state().project.environment[name] = text;
}

std::string OfflineHost::environment(const std::string& name) const {
    return state().variables.environment(name.c_str());
}

void OfflineHost::setGlobal(const std::string& name, int value) {
    state().project.globals[name] = value;
}

void OfflineHost::setGlobal(const std::string& name, double value) {
    state().project.globals[name] = value;
}

void OfflineHost::setGlobal(const std::string& name, std::string value) {
    state().project.globals[name] = std::move(value);
}

void OfflineHost::setGlobal(const std::string& name, std::vector<int> values) {
    state().project.globals[name] = std::move(values);
}

void OfflineHost::setGlobal(const std::string& name, std::vector<double> values) {
    state().project.globals[name] = std::move(values);
}

void OfflineHost::removeGlobal(const std::string& name) {
    state().project.globals.erase(name);
}

std::optional<GlobalValue> OfflineHost::global(const std::string& name) const {
    const auto entry = state().project.globals.find(name);
    if (entry == state().project.globals.end()) {
        return std::nullopt;
    }
    return entry->second;
}

void OfflineHost::setFigure(const CadFigure& figure) {
    state().project.cad.figures[figure.number] = figure;
}

void OfflineHost::setCadObject(const CadObject& object) {
    state().project.cad.objects[object.number] = object;
}

std::vector<CadFigure> OfflineHost::figures() const {
    std::vector<CadFigure> list;
    for (const auto& entry : state().project.cad.figures) {
        list.push_back(entry.second);
    }
    return list;
}

std::vector<CadObject> OfflineHost::cadObjects() const {
    std::vector<CadObject> list;
    for (const auto& entry : state().project.cad.objects) {
        list.push_back(entry.second);
    }
    return list;
}

void OfflineHost::clearDrawing() {
    state().project.cad = detail::Drawing{};
}

void* OfflineHost::window(int which) const {
    return detail::fakeWindow(which);
}

std::vector<MessageBoxRecord> OfflineHost::messageBoxes() const {
    return state().observed.messageBoxes;
}

void OfflineHost::clearMessageBoxes() {
    state().observed.messageBoxes.clear();
}

int OfflineHost::missingApiCalls() const {
    return state().observed.missingApiCalls;
}

int OfflineHost::callCount(const std::string& exportName) const {
    const std::size_t slot = detail::exportSlot(exportName);
    return slot < detail::kExportCount ? state().observed.callCounts[slot] : 0;
}

void OfflineHost::resetCallCounts() {
    state().observed.callCounts.fill(0);
}

void OfflineHost::startRecordingCalls() {
    state().observed.calls.clear();
    state().observed.recordingCalls = true;
}

void OfflineHost::stopRecordingCalls() {
    state().observed.recordingCalls = false;
}

std::vector<HostCall> OfflineHost::recordedCalls() const {
    return state().observed.calls;
}

void OfflineHost::holdOpenElsewhere(int vdm, bool held) {
    state().stores.holdOpenElsewhere(vdm, held);
}

void OfflineHost::failOpen(int vdm, bool fail) {
    state().stores.failOpen(vdm, fail);
}

void OfflineHost::failAddsAfter(int vdm, int successfulAdds) {
    state().stores.failAddsAfter(vdm, successfulAdds);
}

void OfflineHost::closeBehindLibrary(int vdm) {
    state().stores.closeHandlesOf(vdm);
}

void OfflineHost::closeBehindLibraryOnOpen(int vdm, bool close) {
    state().stores.closeOnOpen(vdm, close);
}

void OfflineHost::clearFaults() {
    state().stores.clearFaults();
}

}  // namespace velkhost
