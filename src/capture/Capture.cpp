#include <velkapi/Capture.h>

#include <ctime>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

#include <velkapi/LogFile.h>

#include "capture/CaptureSession.h"
#include "host/HostExports.h"

namespace VelkApi {

namespace host::capture {

namespace {

// A record longer than this many lines is taken for a host that never says "no more lines".
constexpr int kMostLinesOfARecord = 1000000;

// Defined before the capture started at load (at the end of this file), so that it outlives it.
std::unique_ptr<CaptureSession> session;

// Runs `note` on the running session; a capture never lets a failure reach the host call.
template <typename Note>
void safely(Note&& note) noexcept {
    try {
        if (session) {
            note(*session);
        }
    } catch (...) {
        // A note that cannot be kept leaves the capture without it.
    }
}

std::string text(const char* value) {
    return value ? value : "";
}

bool done(const int* status) {
    return status && *status != 0;
}

// The first answer about a global is its starting state.
void noteGlobal(const char* name, CapturedGlobal value) {
    safely([&](CaptureSession& s) { s.globals.emplace(text(name), std::move(value)); });
}

template <typename Number>
void noteElements(const char* name, int first, int count, const Number* values) {
    if (!values || first < 1 || count <= 0) {
        return;
    }
    safely([&](CaptureSession& s) {
        auto& global = s.globals.try_emplace(text(name), std::map<int, Number>()).first->second;
        if (auto* elements = std::get_if<std::map<int, Number>>(&global)) {
            for (int i = 0; i < count; ++i) {
                elements->emplace(first + i, values[i]);
            }
        }
    });
}

CapturedObject* objectOf(CaptureSession& s, int number) {
    return number >= 1 ? &s.objects[number] : nullptr;
}

template <typename T>
void keepFirst(std::optional<T>& field, T value) {
    if (!field) {
        field = value;
    }
}

// The object that answers for a figure's instance or a non-CAD number.
void noteFinding(int object, int type, int name, std::optional<int> attribute) {
    safely([&](CaptureSession& s) {
        if (CapturedObject* found = objectOf(s, object)) {
            keepFirst(found->type, type);
            keepFirst(found->name, name);
            if (attribute) {
                keepFirst(found->attribute, *attribute);
            }
        }
    });
}

// The whole store behind a handle just opened, read through the host's own store functions;
// the handle is left at the first record, where opening put it.
void readWholeStore(int handle, CapturedStore& store) {
    const auto size = MacroVdmSize.resolve();
    const auto seek = MacroVdmSeek.resolve();
    const auto get = MacroVdmSingleGet.resolve();
    if (!MacroVdmSize.isCached() || !MacroVdmSeek.isCached() || !MacroVdmSingleGet.isCached()) {
        return;  // without the host's own store functions there is nothing to read it with
    }
    std::unique_ptr<char[]> buffer(new char[kLineBufferSize]);
    const int records = size(handle);
    for (int r = 0; r < records && seek(handle, r, 0) != 0; ++r) {
        Record& record = store.records.emplace_back();
        buffer[0] = '\0';
        for (int n = 0; n < kMostLinesOfARecord && get(handle, buffer.get(), 1) != 0; ++n) {
            buffer[kLineBufferSize - 1] = '\0';
            record.emplace_back(buffer.get());
            buffer[0] = '\0';
        }
    }
    seek(handle, 0, 0);
    store.read = true;
}

std::string utcNow() {
    const std::time_t now = std::time(nullptr);
    char stamp[32] = "";
    if (const std::tm* utc = std::gmtime(&now)) {
        std::strftime(stamp, sizeof stamp, "%Y-%m-%dT%H:%M:%SZ", utc);
    }
    return stamp;
}

bool write(const CaptureSession& finished) {
    try {
        std::ofstream file(finished.path, std::ios::binary | std::ios::trunc);
        file << captureProjectJson(finished, utcNow());
        file.close();
        if (file) {
            return true;
        }
    } catch (...) {
        // Reported below like any other failure to write.
    }
    try {
        LogFile::instance().error("Capture: cannot write " + finished.path);
    } catch (...) {
        // Logging never raises.
    }
    return false;
}

}  // namespace

void noteMissingExport(const char* exportName) {
    safely([&](CaptureSession& s) { s.missingExports.insert(text(exportName)); });
}

void note(HostExport<VelkEnvironmentFn>& /*from*/, const char* answer, const char* name) {
    safely([&](CaptureSession& s) { s.environment.emplace(text(name), text(answer)); });
}

void note(HostExport<VelkReadGlobalIFn>& /*from*/, int answer, const char* name, int* status) {
    if (done(status)) {
        noteGlobal(name, answer);
    }
}

void note(HostExport<VelkReadGlobalWFn>& /*from*/, double answer, const char* name, int* status) {
    if (done(status)) {
        noteGlobal(name, answer);
    }
}

void note(HostExport<VelkReadGlobalStrFn>& /*from*/, const char* name, char* buffer, int* status) {
    if (done(status) && buffer) {
        noteGlobal(name, std::string(buffer));
    }
}

// A global the session writes before it reads it exists with the kind it is written with; its
// starting value is what the session wrote, which is all the session ever sees of it.
void note(HostExport<VelkWriteGlobalIFn>& /*from*/, const char* name, int value, int* status) {
    if (done(status)) {
        noteGlobal(name, value);
    }
}

void note(HostExport<VelkWriteGlobalWFn>& /*from*/, const char* name, double value, int* status) {
    if (done(status)) {
        noteGlobal(name, value);
    }
}

void note(HostExport<VelkWriteGlobalStrFn>& /*from*/, const char* name, const char* value,
          int* status) {
    if (done(status)) {
        noteGlobal(name, text(value));
    }
}

void note(HostExport<VelkReadGlobalArrayIFn>& /*from*/, const char* name, int first, int count,
          int* values, int* status) {
    if (done(status)) {
        noteElements<int>(name, first, count, values);
    }
}

void note(HostExport<VelkReadGlobalArrayWFn>& /*from*/, const char* name, int first, int count,
          double* values, int* status) {
    if (done(status)) {
        noteElements<double>(name, first, count, values);
    }
}

void note(HostExport<VelkWriteGlobalArrayIFn>& /*from*/, const char* name, int first, int count,
          const int* values, int* status) {
    if (done(status)) {
        noteElements<int>(name, first, count, values);
    }
}

void note(HostExport<VelkWriteGlobalArrayWFn>& /*from*/, const char* name, int first, int count,
          const double* values, int* status) {
    if (done(status)) {
        noteElements<double>(name, first, count, values);
    }
}

void note(HostExport<VelkMacroVdmExistsFn>& from, int answer, int number) {
    if (&from == &MacroVdmExists && answer != 0) {
        safely([&](CaptureSession& s) { s.stores.try_emplace(number); });
    } else if (&from == &GetFigureObject) {
        noteFinding(answer, kFigureObject, number, 0);
    } else if (&from == &GetObjectDelete || &from == &GetObjectType || &from == &GetObjectName ||
               &from == &GetObjectAttribute) {
        safely([&](CaptureSession& s) {
            CapturedObject* found = objectOf(s, number);
            if (!found) {
                return;
            }
            if (&from == &GetObjectDelete) {
                keepFirst(found->deleted, answer != 0);
            } else if (&from == &GetObjectType) {
                keepFirst(found->type, answer);
            } else if (&from == &GetObjectName) {
                keepFirst(found->name, answer);
            } else if (&from == &GetObjectAttribute) {
                keepFirst(found->attribute, answer);
            }
        });
    }
}

void note(HostExport<VelkMacroVdmOpenFn>& from, int answer, int first, int second) {
    if (&from == &GetFigureInstance) {
        noteFinding(answer, kFigureObject, first, second);
    } else if (&from == &GetNonCadObject) {
        noteFinding(answer, kNonCadObject, first, std::nullopt);
    } else if (&from == &MacroVdmOpen && answer != -1) {
        safely([&](CaptureSession& s) {
            CapturedStore& store = s.stores[first];
            if (!store.read) {
                readWholeStore(answer, store);
            }
        });
    }
}

void note(HostExport<VelkGetFigureFn>& /*from*/, int answer, const char* name) {
    if (answer >= 1 && name && *name) {
        safely([&](CaptureSession& s) { s.figures.emplace(answer, name); });
    }
}

void note(HostExport<VelkFigureFindNameFn>& /*from*/, const char* answer, int figure) {
    if (figure >= 1 && answer && *answer) {
        safely([&](CaptureSession& s) { s.figures.emplace(figure, answer); });
    }
}

void note(HostExport<VelkObjectStartFn>& /*from*/, int object, double* x, double* y, double* z) {
    if (x && y && z) {
        safely([&](CaptureSession& s) {
            if (CapturedObject* found = objectOf(s, object)) {
                keepFirst(found->start, std::array<double, 3>{*x, *y, *z});
            }
        });
    }
}

namespace {

// The caller's callback and context, carried through the host's walk.
struct Walk {
    VelkCadCallback callback;
    void* context;
};

int noteWalkedObject(const int* object, void* arg, const double* xyz, void* context) {
    const Walk& walk = *static_cast<const Walk*>(context);
    if (object && xyz) {
        safely([&](CaptureSession& s) {
            if (CapturedObject* found = objectOf(s, object[1])) {
                keepFirst(found->flags, object[0]);
                keepFirst(found->start, std::array<double, 3>{xyz[0], xyz[1], xyz[2]});
                keepFirst(found->deleted, false);
            }
        });
    }
    return walk.callback(object, arg, xyz, walk.context);
}

}  // namespace

void walkDrawing(VelkProcessCadFn walk, VelkCadCallback callback, int mode, void* a, void* b,
                 void* c, int d, void* context) {
    if (!callback) {
        walk(callback, mode, a, b, c, d, context);
        return;
    }
    Walk carried{callback, context};
    walk(&noteWalkedObject, mode, a, b, c, d, &carried);
}

namespace {

// Captures from the library's loading when VELKAPI_CAPTURE names a file, and writes what is
// running when the library is unloaded.
struct CaptureAtLoad {
    CaptureAtLoad() {
        const std::string path = platform::environmentVariable("VELKAPI_CAPTURE");
        if (!path.empty()) {
            Capture::start(path);
        }
    }
    ~CaptureAtLoad() { Capture::stop(); }
    CaptureAtLoad(const CaptureAtLoad&) = delete;
    CaptureAtLoad& operator=(const CaptureAtLoad&) = delete;
};

}  // namespace

}  // namespace host::capture

void Capture::start(const std::string& path) {
    stop();
    host::capture::session = std::make_unique<host::capture::CaptureSession>();
    host::capture::session->path = path;
    host::capture::active = true;
}

bool Capture::stop() {
    std::unique_ptr<host::capture::CaptureSession> finished = std::move(host::capture::session);
    host::capture::active = false;
    return finished && host::capture::write(*finished);
}

bool Capture::running() {
    return host::capture::active;
}

namespace host::capture {
namespace {
const CaptureAtLoad captureAtLoad;
}  // namespace
}  // namespace host::capture

}  // namespace VelkApi
