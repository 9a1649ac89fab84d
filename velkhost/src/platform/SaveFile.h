// The operating-system calls behind a safe save, one implementation file per OS
// (SaveFilePosix.cpp, SaveFileWindows.cpp): the new file written beside the project, flushed
// to the disk before it takes the project's place, removed when the program is interrupted
// while writing it, and a new file of an earlier run that was killed removed later.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace velkhost::detail::platform {

// A new file open for writing; while open, no other program takes it for abandoned.
class NewFileHandle {
  public:
    // Creates `path`, which must not exist yet; isOpen() tells whether that worked.
    explicit NewFileHandle(const std::string& path);
    ~NewFileHandle();  // closes the file, if still open
    NewFileHandle(const NewFileHandle&) = delete;
    NewFileHandle& operator=(const NewFileHandle&) = delete;

    bool isOpen() const;
    // Writes every byte, or returns false (a full disk, a file-size limit).
    bool write(const char* data, std::size_t size);
    // Flushes the content to the disk and closes the file; false when either fails.
    bool syncAndClose();

  private:
    std::intptr_t handle;
};

// Flushes the folder's list of names to the disk, so that a rename in it survives a power
// failure; where the system has no such call, nothing to do.
void syncFolder(const std::string& folder);

// Removes the file unless a program still has it open for writing as a NewFileHandle.
void removeIfAbandoned(const std::string& path);

// While one exists, an interruption of the program (Ctrl-C, a termination request; on Windows
// also Ctrl-Break and the console closing) first removes the file at `path`, then ends the
// program as it would have ended. A write past a file-size limit fails the write instead of
// ending the program. One at a time.
class RemoveOnInterrupt {
  public:
    explicit RemoveOnInterrupt(const std::string& path);
    ~RemoveOnInterrupt();
    RemoveOnInterrupt(const RemoveOnInterrupt&) = delete;
    RemoveOnInterrupt& operator=(const RemoveOnInterrupt&) = delete;
};

}  // namespace velkhost::detail::platform
