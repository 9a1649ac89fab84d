// The file lock on Windows: LockFileEx on a file of its own beside the project,
// "<project>.lock", which stays there. Windows does not rename a new file over one that a
// program holds open, so the project itself is never held open while a run waits or saves.
#include <windows.h>

#include <io.h>
#include <stdio.h>

#include <utility>

#include "FileLock.h"

namespace velk {

namespace {

HANDLE fileHandle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

const std::intptr_t kNoHandle = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);

}  // namespace

FileLock::FileLock(std::string path) : filePath(std::move(path)), handle(kNoHandle) {}

FileLock::~FileLock() {
    release();
}

void FileLock::release() {
    if (handle != kNoHandle) {
        CloseHandle(fileHandle(handle));  // closing releases the lock
        handle = kNoHandle;
    }
}

FileLock::Attempt FileLock::tryLock() {
    release();
    const HANDLE file = CreateFileA((filePath + ".lock").c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return Attempt::Failed;
    }
    handle = reinterpret_cast<std::intptr_t>(file);
    OVERLAPPED at{};
    if (!LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &at)) {
        release();
        return Attempt::Busy;
    }
    return Attempt::Locked;
}

bool errorsGoToTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

}  // namespace velk
