#include "BenchProject.h"

#include <velkapi/MillDrillOperation.h>
#include <velkhost/OfflineHost.h>

#include <set>

#include "GrownRecords.h"

namespace bench {

namespace {

velkhost::OfflineHost& host() {
    return velkhost::OfflineHost::instance();
}

// Grown stores are numbered apart from the demo's, by their size and their role.
constexpr int kOperationStoreBase = 10'000'000;
constexpr int kToolStoreBase = 20'000'000;
constexpr std::size_t kLeadingHostRecords = 3;
constexpr std::size_t kLeadingToolRecords = 1;

// Store `number`, made of `records` records grown from `sourceStore` when it is not there yet.
int grownStore(int number, int sourceStore, std::size_t leading, std::size_t records) {
    if (!host().hasStore(number)) {
        loadDemoProject();
        host().setStore(number, grown(host().records(sourceStore), leading, records));
    }
    return number;
}

}  // namespace

void loadDemoProject() {
    static bool loaded = false;
    if (!loaded || !host().hasStore(kDemoStore)) {
        host().loadProject(VELKAPI_DEMO_PROJECT);
        loaded = true;
    }
}

const std::vector<KindSample>& kindSamples() {
    static const std::vector<KindSample> samples = [] {
        loadDemoProject();
        std::vector<KindSample> found;
        std::set<VelkApi::MillDrillOperationType> seen;
        const int count = static_cast<int>(host().records(kDemoStore).size());
        for (int nr = 0; nr < count; ++nr) {
            const auto kind = VelkApi::MillDrillOperation::GetOperationType(kDemoStore, nr);
            const std::string name = VelkApi::millDrillOperationTypeToString(kind);
            if (kind == VelkApi::MillDrillOperationType::REDRAW || name.empty() ||
                !seen.insert(kind).second) {
                continue;
            }
            found.push_back({name, kind, nr});
        }
        return found;
    }();
    return samples;
}

int operationStore(int operations) {
    return grownStore(kOperationStoreBase + operations, kDemoStore, kLeadingHostRecords,
                      static_cast<std::size_t>(operations));
}

int toolStore(int tools) {
    return grownStore(kToolStoreBase + tools, kDemoToolStore, kLeadingToolRecords,
                      static_cast<std::size_t>(tools) + kLeadingToolRecords);
}

}  // namespace bench
