// The safe-save calls on Windows: CreateFileA with a sharing mode that lets the file be removed
// on an interruption but not opened for writing by others, FlushFileBuffers before the rename,
// and SetConsoleCtrlHandler for Ctrl-C, Ctrl-Break and the console closing.
#include <windows.h>

#include <cstring>

#include "SaveFile.h"

namespace velkhost::detail::platform {

namespace {

HANDLE fileHandle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

const std::intptr_t kNoHandle = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);

}  // namespace

NewFileHandle::NewFileHandle(const std::string& path)
    : handle(reinterpret_cast<std::intptr_t>(
          CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr))) {}

NewFileHandle::~NewFileHandle() {
    if (isOpen()) {
        CloseHandle(fileHandle(handle));
    }
}

bool NewFileHandle::isOpen() const {
    return handle != kNoHandle;
}

bool NewFileHandle::write(const char* data, std::size_t size) {
    while (size > 0) {
        const DWORD chunk = size > 0x10000000 ? 0x10000000 : static_cast<DWORD>(size);
        DWORD written = 0;
        if (!WriteFile(fileHandle(handle), data, chunk, &written, nullptr) || written == 0) {
            return false;
        }
        data += written;
        size -= written;
    }
    return true;
}

bool NewFileHandle::syncAndClose() {
    const bool flushed = FlushFileBuffers(fileHandle(handle)) != 0;
    const bool closed = CloseHandle(fileHandle(handle)) != 0;
    handle = kNoHandle;
    return flushed && closed;
}

// Windows flushes a folder's names with the rename itself.
void syncFolder(const std::string&) {}

// A file still being written is open without sharing its writing: opening it alone fails.
void removeIfAbandoned(const std::string& path) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return;
    }
    CloseHandle(file);
    DeleteFileA(path.c_str());
}

namespace {

char removedPath[MAX_PATH + 1];

// Runs on a thread of its own; the file is removed once the program's handle closes as it ends.
BOOL WINAPI removeAndEnd(DWORD) {
    DeleteFileA(removedPath);
    return FALSE;  // the next handler, the system's, ends the program
}

}  // namespace

RemoveOnInterrupt::RemoveOnInterrupt(const std::string& path) {
    const std::size_t length = path.size() < MAX_PATH ? path.size() : MAX_PATH;
    std::memcpy(removedPath, path.data(), length);
    removedPath[length] = '\0';
    SetConsoleCtrlHandler(removeAndEnd, TRUE);
}

RemoveOnInterrupt::~RemoveOnInterrupt() {
    SetConsoleCtrlHandler(removeAndEnd, FALSE);
}

}  // namespace velkhost::detail::platform
