// time-project-file: how long the offline host takes to load a project file and to save it
// again, the part of every velk command that is not the command's own work.
//
// Usage: time-project-file PROJECT.json SAVED.json
// Prints "load S.SS s" and "save S.SS s" (wall-clock seconds).
#include <velkhost/OfflineHost.h>

#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <iostream>

namespace {

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "Usage: time-project-file PROJECT.json SAVED.json\n";
        return 2;
    }
    try {
        velkhost::OfflineHost& host = velkhost::OfflineHost::instance();
        const double load = secondsOf([&] { host.loadProject(argv[1]); });
        const double save = secondsOf([&] { host.saveProject(argv[2]); });
        std::printf("load %.2f s\nsave %.2f s\n", load, save);
    } catch (const std::exception& e) {
        std::cerr << "time-project-file: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
