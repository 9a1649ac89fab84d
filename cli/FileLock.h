// The advisory lock that lets one velk run at a time change a file, one implementation file per
// OS (FileLockPosix.cpp: flock on the file; FileLockWindows.cpp: LockFileEx on "<file>.lock"
// beside it). Other programs that do not ask for the lock are not held back by it.
#pragma once

#include <cstdint>
#include <string>

namespace velk {

class FileLock {
  public:
    enum class Attempt { Locked, Busy, Failed };

    explicit FileLock(std::string path);
    ~FileLock();  // releases the lock
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Takes the lock without waiting. Locked: this run holds it on the file now at the path
    // (a save that replaced the file meanwhile is followed to the new one); Busy: another run
    // holds it; Failed: the file cannot be opened.
    Attempt tryLock();

  private:
    void release();

    std::string filePath;
    std::intptr_t handle;
};

// True when standard error is a terminal, where a person waits for the run.
bool errorsGoToTerminal();

}  // namespace velk
