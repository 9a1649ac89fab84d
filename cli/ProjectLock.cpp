#include "ProjectLock.h"

#include <chrono>
#include <iostream>
#include <thread>

#include "Project.h"

namespace velk {

ProjectLock::ProjectLock(const std::string& path) : lock(path) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(kPatienceSeconds);
    bool told = false;
    for (;;) {
        // A file that cannot be opened is left to the read, which names what is wrong.
        if (lock.tryLock() != FileLock::Attempt::Busy) {
            break;
        }
        if (Clock::now() >= deadline) {
            if (told) {
                std::cerr << "\n";
            }
            throw CommandError(path +
                               " is being changed by another program: try again when it "
                               "has finished");
        }
        if (!told && errorsGoToTerminal()) {
            std::cerr << "velk: " << path << " is being changed by another program; waiting up to "
                      << kPatienceSeconds << " seconds..." << std::flush;
            told = true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    if (told) {
        std::cerr << " done\n";
    }
}

}  // namespace velk
