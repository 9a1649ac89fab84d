// The data every benchmark works on: the demo project (a milling job with one operation of every
// kind and a tool store), and stores grown from it to any number of operations or tools.
#pragma once

#include <velkapi/MillDrillOperationType.h>

#include <string>
#include <vector>

namespace bench {

// The demo project's operation store and tool store.
constexpr int kDemoStore = 1;
constexpr int kDemoToolStore = 2;

struct KindSample {
    std::string name;  // as velk ops prints it
    VelkApi::MillDrillOperationType kind;
    int operation;  // its number in the demo store
};

// Loads the demo project into the offline host (once per process; later calls reload it).
void loadDemoProject();

// One operation of every machining kind of the demo store, in store order.
const std::vector<KindSample>& kindSamples();

// The number of a store of `operations` records: the demo store's three leading host records,
// then its operations of every kind over and over. Made on first use, kept for the process.
int operationStore(int operations);

// The number of a tool store of `tools` tools: the demo tool store's leading record, then its
// tools over and over. Made on first use, kept for the process.
int toolStore(int tools);

}  // namespace bench
