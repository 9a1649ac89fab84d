// make-large-project: writes a project with a store of many operations, for timing velk on a
// large job. The store is the source project's operation store grown to the number asked for:
// its three leading host records, then its operations over and over. Everything else of the
// source project is kept as it is.
//
// Usage: make-large-project SOURCE.json OPERATIONS OUT.json [STORE]   (STORE: 1 by default)
#include <velkhost/OfflineHost.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

#include "GrownRecords.h"

namespace {

constexpr std::size_t kLeadingHostRecords = 3;

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4 || argc > 5) {
        std::cerr << "Usage: make-large-project SOURCE.json OPERATIONS OUT.json [STORE]\n";
        return 2;
    }
    try {
        const long operations = std::stol(argv[2]);
        const int store = argc == 5 ? std::stoi(argv[4]) : 1;
        if (operations < 1) {
            throw std::invalid_argument("OPERATIONS must be 1 or more");
        }
        velkhost::OfflineHost& host = velkhost::OfflineHost::instance();
        host.loadProject(argv[1]);
        if (!host.hasStore(store) || host.records(store).size() < 2) {
            throw std::invalid_argument(std::string(argv[1]) + " has no store " +
                                        std::to_string(store) + " of two records or more");
        }
        const velkhost::Records& sample = host.records(store);
        const std::size_t leading = std::min(kLeadingHostRecords, sample.size() - 1);
        host.setStore(store, bench::grown(sample, leading, static_cast<std::size_t>(operations)));
        host.saveProject(argv[3]);
    } catch (const std::exception& e) {
        std::cerr << "make-large-project: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
