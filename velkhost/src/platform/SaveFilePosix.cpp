// The safe-save calls on POSIX systems: open(2) with O_EXCL, flock(2) to mark a new file as being
// written, fsync(2) of the file and of its folder, sigaction(2) for the interruptions.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "SaveFile.h"

namespace velkhost::detail::platform {

namespace {

int descriptor(std::intptr_t handle) {
    return static_cast<int>(handle);
}

}  // namespace

NewFileHandle::NewFileHandle(const std::string& path)
    : handle(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {
    if (handle >= 0) {
        // Held until closed; removeIfAbandoned() leaves a file alone while it is held.
        ::flock(descriptor(handle), LOCK_EX);
    }
}

NewFileHandle::~NewFileHandle() {
    if (handle >= 0) {
        ::close(descriptor(handle));
    }
}

bool NewFileHandle::isOpen() const {
    return handle >= 0;
}

bool NewFileHandle::write(const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(descriptor(handle), data, size);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool NewFileHandle::syncAndClose() {
    const bool synced = ::fsync(descriptor(handle)) == 0;
    const bool closed = ::close(descriptor(handle)) == 0;
    handle = -1;
    return synced && closed;
}

void syncFolder(const std::string& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

void removeIfAbandoned(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) {
        return;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) == 0) {
        ::unlink(path.c_str());
    }
    ::close(fd);
}

namespace {

constexpr std::array<int, 4> kInterruptions = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

// What the handler needs, set before the handlers are installed: a handler may only call
// async-signal-safe functions, so the path is kept as plain characters.
char removedPath[4096];
struct sigaction previousActions[kInterruptions.size()];
struct sigaction previousFileSizeAction;

void removeAndEnd(int signal) {
    ::unlink(removedPath);
    for (std::size_t i = 0; i < kInterruptions.size(); ++i) {
        if (kInterruptions[i] == signal) {
            ::sigaction(signal, &previousActions[i], nullptr);
        }
    }
    ::raise(signal);  // delivered once this handler returns, as it would have been
}

}  // namespace

RemoveOnInterrupt::RemoveOnInterrupt(const std::string& path) {
    const std::size_t length = std::min(path.size(), sizeof removedPath - 1);
    std::memcpy(removedPath, path.data(), length);
    removedPath[length] = '\0';
    struct sigaction action {};
    action.sa_handler = removeAndEnd;
    sigemptyset(&action.sa_mask);
    for (const int signal : kInterruptions) {
        sigaddset(&action.sa_mask, signal);
    }
    for (std::size_t i = 0; i < kInterruptions.size(); ++i) {
        ::sigaction(kInterruptions[i], nullptr, &previousActions[i]);
        // A program that ignores an interruption keeps ignoring it.
        if (previousActions[i].sa_handler != SIG_IGN) {
            ::sigaction(kInterruptions[i], &action, nullptr);
        }
    }
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigemptyset(&ignore.sa_mask);
    ::sigaction(SIGXFSZ, &ignore, &previousFileSizeAction);
}

RemoveOnInterrupt::~RemoveOnInterrupt() {
    for (std::size_t i = 0; i < kInterruptions.size(); ++i) {
        ::sigaction(kInterruptions[i], &previousActions[i], nullptr);
    }
    ::sigaction(SIGXFSZ, &previousFileSizeAction, nullptr);
}

}  // namespace velkhost::detail::platform
