// One velk run at a time changes a file: every command that writes holds the file's lock from
// before it reads the file until its save is done.
#pragma once

#include <string>

#include "FileLock.h"

namespace velk {

class ProjectLock {
  public:
    static constexpr int kPatienceSeconds = 5;

    // Takes the lock of the file at `path`, waiting up to kPatienceSeconds while another run
    // holds it (saying so on a terminal); throws CommandError when it is still held then.
    explicit ProjectLock(const std::string& path);

  private:
    FileLock lock;
};

}  // namespace velk
