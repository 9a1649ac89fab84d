// The offline host: stands in for the CAM host application, so that programs and tests can run
// the library without it. It keeps a project (environment, globals, record stores and CAD data)
// read from a JSON file, serves the host's exported C functions over it, records what the
// library shows and calls, and injects faults on request.
//
// The state is process-wide, because the exported functions are plain C functions. Like the host
// it stands in for, it is meant to be used from one thread.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace velkhost {

// A project file that cannot be read or is not a valid project. The message names the file, the
// JSON path and what was expected there, e.g. "demo.json: /stores/100/0/2: expected a text line".
class ProjectError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// How far loading a project file has come: the bytes of the file read so far, of all of them.
using LoadProgress = std::function<void(std::size_t bytesRead, std::size_t bytesTotal)>;

// One record of a store (an operation): its header line first, then its other lines.
using Record = std::vector<std::string>;
using Records = std::vector<Record>;

// A global keeps its kind: writes through the exported functions convert to it.
using GlobalValue = std::variant<int, double, std::string, std::vector<int>, std::vector<double>>;

// A message box the library asked the host to show. Null text or caption is kept as "".
// Named apart from MessageBox, which <windows.h> defines as a macro; the alias serves elsewhere.
struct MessageBoxRecord {
    void* owner;
    std::string text;
    std::string caption;
    unsigned style;
};
using MessageBox = MessageBoxRecord;

// One call of an exported function, as the call record keeps it: the export's exact name, its
// int arguments in order (store numbers, handles as the host gave them out, positions, counts)
// and its text argument ("" when it has none). Pointer and double arguments are not kept.
struct HostCall {
    std::string exportName;
    std::vector<int> numbers;
    std::string text;
};

// The drawing (CAD data) of a project. Figures are named contours; drawing objects are what
// the host's geometry functions answer about: points, figures and figure instances, non-CAD
// objects and any other kind of object the host draws.
//
// Object types the library converts (others are carried as they are).
constexpr int kPointObject = 1;
constexpr int kFigureObject = 20;
constexpr int kNonCadObject = 29;

struct CadFigure {
    int number = 0;  // 1 or more
    std::string name;
};

struct CadObject {
    int number = 0;  // the host's object number, 1 or more
    int type = 0;
    // What VelkGetObjectName answers: for a figure object the number of its figure, for a
    // non-CAD object its own non-CAD number.
    int name = 0;
    // A figure object's instance (attribute) number; 0 is the whole figure.
    int attribute = 0;
    std::array<double, 3> start{};  // x, y, z
    int flags = 1;                  // bit 0: the object takes part in a walk of the drawing
    bool deleted = false;
};

class OfflineHost {
  public:
    static OfflineHost& instance();

    OfflineHost(const OfflineHost&) = delete;
    OfflineHost& operator=(const OfflineHost&) = delete;

    // Loading is all-or-nothing: after a ProjectError the previous project is still there. A
    // successful load closes every handle and clears the logs, the call counts and the faults.
    void loadProject(const std::string& path);
    // The same, telling `progress` every megabyte and at the end how far reading has come.
    void loadProject(const std::string& path, const LoadProgress& progress);
    void loadProjectText(const std::string& json, const std::string& sourceName);

    // The project as JSON in a stable order (environment and globals by name, stores by number),
    // two-space indented, ending with a newline; saving what was loaded gives the same bytes.
    // Texts are the host's bytes, each written as its Windows-1252 character, so that every
    // byte 1..255 comes back unchanged when the file is loaded.
    // The file is written beside `path` and then renamed over it, so that it is always either
    // the old project or the new one. A save that fails throws ProjectError naming the file and
    // what failed, and leaves the old file as it was; a read-only file is not replaced.
    void saveProject(const std::string& path) const;
    std::string projectText() const;

    // An empty project: no handles, logs, call counts or faults.
    void reset();

    // Record stores. Open handles keep their positions when a store is replaced; calls on a
    // position that no longer exists fail. Removing a store closes its handles. The reference
    // records() returns lasts until the store is replaced or removed, or a project is loaded.
    bool hasStore(int vdm) const;
    // The numbers of the project's stores, ascending.
    std::vector<int> storeNumbers() const;
    void setStore(int vdm, Records records);
    void removeStore(int vdm);
    // The store's records, moved out of the project, and the store removed (throws
    // std::out_of_range for an unknown store): for a program that keeps a store once loaded
    // without holding a copy beside the project.
    Records takeStore(int vdm);
    const Records& records(int vdm) const;    // throws std::out_of_range for an unknown store
    Record lines(int vdm, int record) const;  // throws std::out_of_range for an unknown record

    // Environment: "" for an unknown name, as the host answers.
    void setEnvironment(const std::string& name, const std::string& text);
    std::string environment(const std::string& name) const;

    // Globals. The exported writers change only globals that exist, so a test declares a global
    // here before the library writes it.
    void setGlobal(const std::string& name, int value);
    void setGlobal(const std::string& name, double value);
    void setGlobal(const std::string& name, std::string value);
    void setGlobal(const std::string& name, std::vector<int> values);
    void setGlobal(const std::string& name, std::vector<double> values);
    void removeGlobal(const std::string& name);
    std::optional<GlobalValue> global(const std::string& name) const;

    // The global's value when it exists and is of kind T, e.g. globalAs<std::vector<int>>("n").
    template <class T>
    std::optional<T> globalAs(const std::string& name) const {
        std::optional<GlobalValue> value = global(name);
        if (value && std::holds_alternative<T>(*value)) {
            return std::get<T>(*value);
        }
        return std::nullopt;
    }

    // The drawing. A figure or object replaces the one of the same number; lists come ordered
    // by number, the order in which VelkProcessCad walks the objects.
    void setFigure(const CadFigure& figure);
    void setCadObject(const CadObject& object);
    std::vector<CadFigure> figures() const;
    std::vector<CadObject> cadObjects() const;
    void clearDrawing();

    // What the library did: the fake window handle VelkGetWnd(which) returns, the message boxes
    // it showed, how often it called VelkMissingAPI, and how often it called each export (by
    // the export's exact name, e.g. "VelkMacroVdmSingleGet$").
    void* window(int which) const;
    std::vector<MessageBoxRecord> messageBoxes() const;
    void clearMessageBoxes();
    int missingApiCalls() const;
    int callCount(const std::string& exportName) const;
    void resetCallCounts();
    // The call record: every call of an exported function from startRecordingCalls() (which
    // empties the record) until stopRecordingCalls(), in order. A successful load clears it and
    // stops recording.
    void startRecordingCalls();
    void stopRecordingCalls();
    std::vector<HostCall> recordedCalls() const;

    // Faults, for testing how the library copes with a host that refuses.
    // The store is held open by someone else: VelkMacroVdmCheckOpen counts one more holder.
    // VelkMacroVdmOpen still succeeds, as the host lets several holders open a store.
    void holdOpenElsewhere(int vdm, bool held);
    // VelkMacroVdmOpen of the store returns -1.
    void failOpen(int vdm, bool fail);
    // After this many more successful VelkMacroVdmSingleAdd$ on the store, further adds return
    // 0 and change nothing; -1 lifts the limit.
    void failAddsAfter(int vdm, int successfulAdds);
    // Every handle open on the store becomes invalid at once, as if the host closed them.
    void closeBehindLibrary(int vdm);
    // The store is closed behind the library's back each time it is opened: VelkMacroVdmOpen
    // gives out a handle that no longer counts as open, so every later call on it fails.
    void closeBehindLibraryOnOpen(int vdm, bool close);
    void clearFaults();

  private:
    OfflineHost() = default;
};

}  // namespace velkhost
