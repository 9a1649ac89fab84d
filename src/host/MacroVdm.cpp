#include <velkapi/MacroVdm.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "host/HostExports.h"

namespace VelkApi {

namespace {

constexpr const char* kCaption = "VelkApi::MacroVdm";
constexpr std::size_t kLineBufferSize = 5000;

}  // namespace

MacroVdm::MacroVdm(int name) : vdmName(name) {}

MacroVdm::MacroVdm(const MacroVdm& other) : MacroVdm(other.vdmName) {}

MacroVdm& MacroVdm::operator=(const MacroVdm& other) {
    if (this != &other) {
        if (handle != 0) {
            Close();
        }
        vdmName = other.vdmName;
    }
    return *this;
}

MacroVdm::~MacroVdm() {
    if (handle != 0) {
        Close();
    }
}

void MacroVdm::report(const char* caption, const std::string& message) const {
    host::showError(caption, std::to_string(vdmName) + ": " + message);
}

bool MacroVdm::requireOpen(const char* message) const {
    if (handle == 0) {
        report(kCaption, message);
        return false;
    }
    return true;
}

bool MacroVdm::Open() {
    if (handle != 0) {
        report(kCaption, "Open: class already open");
        return false;
    }
    if (host::MacroVdmExists(vdmName) == 0) {
        report(kCaption, "Open: vdm doesn't exist");
        return false;
    }
    if (host::MacroVdmCheckOpen(vdmName) >= 1) {
        report(kCaption, "Open: already open by another process");
        return false;
    }
    handle = host::MacroVdmOpen(vdmName, 1);
    if (handle == -1) {
        handle = 0;
        report(kCaption, "Open: VELK can not open");
        return false;
    }
    return true;
}

bool MacroVdm::Create() {
    if (handle != 0) {
        report(kCaption, "Create: class already open");
        return false;
    }
    return host::MacroVdmExists(vdmName) != 0 && Open();
}

bool MacroVdm::Close() {
    if (!requireOpen("Close: Vdm not open")) {
        return false;
    }
    if (host::MacroVdmCheckOpen(vdmName) == 0) {
        report(kCaption, "Close: already closed by another process");
        handle = 0;
        return false;
    }
    host::MacroVdmClose(handle);
    handle = 0;
    return true;
}

bool MacroVdm::DeleteItems(int n) {
    return requireOpen("DeleteItems: Vdm not open") && host::MacroVdmSingleDelete(handle, n) != 0;
}

bool MacroVdm::SingleGet(std::string& line) {
    if (!requireOpen("SingleGet::str: Vdm not open")) {
        return false;
    }
    // The host writes the line into a buffer of 5000 bytes. It is the call's own rather than the
    // store handle's, so that every operation and tool held does not carry it.
    std::array<char, kLineBufferSize> buffer;
    buffer[0] = '\0';
    const int done = host::MacroVdmSingleGet(handle, buffer.data(), 1);
    line.assign(buffer.data(), std::find(buffer.begin(), buffer.end(), '\0'));
    return done != 0;
}

bool MacroVdm::SingleAdd(const char* line) {
    return requireOpen("SingleAdd::str: Vdm not open") &&
           host::MacroVdmSingleAdd(handle, line, 1) != 0;
}

bool MacroVdm::SingleReplace(const std::string& line) {
    return requireOpen("SingleReplace::str: Vdm not open") &&
           host::MacroVdmSingleReplace(handle, line.c_str(), 1) != 0;
}

bool MacroVdm::SeekFromStart(int pos) {
    return requireOpen("SeekFromStart: Vdm not open") && host::MacroVdmSeek(handle, pos, 0) != 0;
}

bool MacroVdm::SingleSeek(int n) {
    return requireOpen("SingleSeek: Vdm not open") && host::MacroVdmSingleSeek(handle, n) != 0;
}

}  // namespace VelkApi
