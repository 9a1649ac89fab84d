// The file lock on POSIX systems: flock(2) on the file itself. A save renames a new file over the
// old one, so a run that got the lock of the file it opened checks that the path still names
// that file, and otherwise locks the new one.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "FileLock.h"

namespace velk {

namespace {

bool sameFile(int fd, const std::string& path) {
    struct stat opened {};
    struct stat named {};
    return ::fstat(fd, &opened) == 0 && ::stat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

}  // namespace

FileLock::FileLock(std::string path) : filePath(std::move(path)), handle(-1) {}

FileLock::~FileLock() {
    release();
}

void FileLock::release() {
    if (handle >= 0) {
        ::close(static_cast<int>(handle));  // closing releases the lock
        handle = -1;
    }
}

FileLock::Attempt FileLock::tryLock() {
    for (;;) {
        release();
        const int fd = ::open(filePath.c_str(), O_RDONLY | O_CLOEXEC);
        if (fd < 0) {
            return Attempt::Failed;
        }
        handle = fd;
        if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
            release();
            return Attempt::Busy;
        }
        if (sameFile(fd, filePath)) {
            return Attempt::Locked;
        }
    }
}

bool errorsGoToTerminal() {
    return ::isatty(STDERR_FILENO) != 0;
}

}  // namespace velk
