// Reading a whole store of operations, and listing and reading a whole tool store, at growing
// sizes: the time per operation or tool should not grow with the store.
#include <benchmark/benchmark.h>
#include <velkapi/MillDrillOperation.h>
#include <velkapi/ToolList.h>

#include <cstddef>

#include "AllocationCounter.h"
#include "BenchProject.h"

namespace bench {

namespace {

void ReadAll(benchmark::State& state) {
    const auto operations = static_cast<int>(state.range(0));
    const int store = operationStore(operations);
    for (auto _ : state) {
        for (int nr = 0; nr < operations; ++nr) {
            VelkApi::MillDrillOperation operation(store, nr);
            operation.readFromVDM();
            benchmark::DoNotOptimize(operation.getOperationType());
        }
    }
    state.SetItemsProcessed(state.iterations() * operations);
}
BENCHMARK(ReadAll)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void ToolList(benchmark::State& state) {
    const auto tools = static_cast<int>(state.range(0));
    const int store = toolStore(tools);
    const auto listAndRead = [store] {
        VelkApi::ToolList list(store);
        list.readFromVDM();
        benchmark::DoNotOptimize(list.getToolCount());
    };
    // Once untimed first, as for every size: the first list of a size is made in memory the
    // process takes fresh from the system, later ones in memory the last one gave back. It also
    // gives the heap bytes a listed tool holds while its list exists.
    const std::size_t liveBefore = liveBytes();
    std::size_t liveWhileListed = 0;
    {
        VelkApi::ToolList list(store);
        list.readFromVDM();
        liveWhileListed = liveBytes() - liveBefore;
    }
    for (auto _ : state) {
        listAndRead();
    }
    state.SetItemsProcessed(state.iterations() * tools);
    state.counters["live_bytes_per_tool"] =
        static_cast<double>(liveWhileListed) / static_cast<double>(tools);
}
BENCHMARK(ToolList)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace bench
