// The file lock on Windows: LockFileEx on one byte far past the end of the file, so that the
// lock keeps no one from reading the file. A save renames a new file over the old one, so a
// run that got the lock of the file it opened checks that the path still names that file, and
// otherwise locks the new one.
#include <windows.h>

#include <io.h>
#include <stdio.h>

#include <utility>

#include "FileLock.h"

namespace velk {

namespace {

HANDLE fileHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

const std::intptr_t kNoHandle = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);

// The locked byte: beyond any project file, and the same for every run.
constexpr DWORD kLockedOffsetHigh = 0x7FFFFFFF;

bool sameFile(HANDLE opened, const std::string& path) {
    const HANDLE named =
        CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (named == INVALID_HANDLE_VALUE) {
        return false;
    }
    BY_HANDLE_FILE_INFORMATION a{};
    BY_HANDLE_FILE_INFORMATION b{};
    const bool same = GetFileInformationByHandle(opened, &a) &&
                      GetFileInformationByHandle(named, &b) &&
                      a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
                      a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
    CloseHandle(named);
    return same;
}

}  // namespace

FileLock::FileLock(std::string path) : path_(std::move(path)), handle_(kNoHandle) {}

FileLock::~FileLock() { release(); }

void FileLock::release() {
    if (handle_ != kNoHandle) {
        CloseHandle(fileHandle(handle_));  // closing releases the lock
        handle_ = kNoHandle;
    }
}

FileLock::Attempt FileLock::tryLock() {
    for (;;) {
        release();
        const HANDLE file =
            CreateFileA(path_.c_str(), GENERIC_READ,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            return Attempt::Failed;
        }
        handle_ = reinterpret_cast<std::intptr_t>(file);
        OVERLAPPED at{};
        at.OffsetHigh = kLockedOffsetHigh;
        if (!LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                        &at)) {
            release();
            return Attempt::Busy;
        }
        if (sameFile(file, path_)) {
            return Attempt::Locked;
        }
    }
}

bool errorsGoToTerminal() { return _isatty(_fileno(stderr)) != 0; }

}  // namespace velk
