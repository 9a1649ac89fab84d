// The offline host's own store calls on stores of growing size: each should cost the same
// whatever the store's size. Calls go to the exported functions, as the library makes them.
//
// A run of calls stays on one record, then moves on by a large stride, so that the calls are
// spread over the whole store. What it takes to move on, and to undo the adds, is counted with
// the calls: one seek per run of get and replace (and a get for the replace's text), and a seek
// and one delete per run of adds.
#include <benchmark/benchmark.h>

#include "BenchProject.h"
#include "ExportedFunctions.h"

namespace bench {

namespace {

enum class Call { Seek, Get, Add, Replace };

constexpr int kStride = 7919;  // a prime: the records visited spread over the whole store
constexpr int kRun = 16;       // calls on one record before moving on

void HostCall(benchmark::State& state, Call call) {
    const auto records = static_cast<int>(state.range(0));
    const int handle = VelkMacroVdmOpen(operationStore(records), 1);
    static char line[VelkApi::host::kLineBufferSize];
    int record = 0;
    int run = 0;
    long long done = 0;

    // Moves to the next record's message line (line 1), the first of its lines after the
    // header; a replace takes that line's own text, so that the store stays as it was.
    const auto moveOn = [&] {
        record = (record + kStride) % records;
        VelkMacroVdmSeek(handle, record, 0);
        VelkMacroVdmSingleSeek(handle, 1);
        if (call == Call::Replace) {
            VelkMacroVdmSingleGet$(handle, line, 1);
            VelkMacroVdmSingleSeek(handle, -1);
        }
        run = 0;
    };
    moveOn();
    for (auto _ : state) {
        if (call != Call::Seek && run == kRun) {
            if (call == Call::Add) {  // the run's lines go again
                VelkMacroVdmSingleSeek(handle, -kRun);
                VelkMacroVdmSingleDelete(handle, kRun);
            }
            moveOn();
        }
        switch (call) {
            case Call::Seek:
                record = (record + kStride) % records;
                done += VelkMacroVdmSeek(handle, record, 0);
                break;
            case Call::Get:
                done += VelkMacroVdmSingleGet$(handle, line, 1);
                break;
            case Call::Add:
                done += VelkMacroVdmSingleAdd$(handle, "M8", 1);
                break;
            case Call::Replace:
                done += VelkMacroVdmSingleReplace$(handle, line, 1);
                break;
        }
        ++run;
    }
    if (call == Call::Add && run > 0) {  // the last run's lines go again
        VelkMacroVdmSingleSeek(handle, -run);
        VelkMacroVdmSingleDelete(handle, run);
    }
    VelkMacroVdmClose(handle);
    if (done < state.iterations() * 9 / 10) {
        state.SkipWithError("the host refused calls");
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK_CAPTURE(HostCall, seek, Call::Seek)->Arg(1000)->Arg(100000);
BENCHMARK_CAPTURE(HostCall, get, Call::Get)->Arg(1000)->Arg(100000);
BENCHMARK_CAPTURE(HostCall, add, Call::Add)->Arg(1000)->Arg(100000);
BENCHMARK_CAPTURE(HostCall, replace, Call::Replace)->Arg(1000)->Arg(100000);

}  // namespace

}  // namespace bench
