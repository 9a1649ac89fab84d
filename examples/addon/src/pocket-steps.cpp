// pocket-steps PROJECT [STORE]: runs the add-on on a project file, with the offline host standing
// in for the CAM application, and saves the project. The pockets of store 1 when no store is
// given.
#include <pocketsteps/PocketSteps.h>
#include <velkhost/OfflineHost.h>

#include <charconv>
#include <cstring>
#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: pocket-steps PROJECT [STORE]\n";
        return 2;
    }
    int store = 1;
    if (argc == 3) {
        const char* end = argv[2] + std::strlen(argv[2]);
        const auto [stop, error] = std::from_chars(argv[2], end, store);
        if (error != std::errc() || stop != end) {
            std::cerr << "pocket-steps: the store must be a number, not '" << argv[2] << "'\n";
            return 2;
        }
    }
    try {
        velkhost::OfflineHost& host = velkhost::OfflineHost::instance();
        host.loadProject(argv[1]);
        const pocketsteps::Report report = pocketsteps::setPocketDepthSteps(store);
        for (const pocketsteps::Change& change : report.changed) {
            std::cout << "operation " << change.operation << ": " << pocketsteps::actionText(change)
                      << "\n";
        }
        for (const int operation : report.withoutToolDiameter) {
            std::cout << "operation " << operation
                      << ": its tool has no diameter, left as it was\n";
        }
        host.saveProject(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << "pocket-steps: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
