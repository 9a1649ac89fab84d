// One operation of each kind read, edited and written back by the library, beside exactly the
// host calls that took, replayed without the library.
#include "RoundTripBench.h"

#include <benchmark/benchmark.h>
#include <velkapi/Capture.h>
#include <velkapi/MillDrillOperation.h>
#include <velkhost/OfflineHost.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "AllocationCounter.h"
#include "BenchProject.h"
#include "HostReplay.h"

namespace bench {

namespace {

using VelkApi::MillDrillOperation;

velkhost::OfflineHost& host() {
    return velkhost::OfflineHost::instance();
}

// The parameter a round trip sets: the kind's first double parameter in key order.
std::string parameterToSet(const KindSample& sample) {
    MillDrillOperation operation(kDemoStore, sample.operation);
    operation.readFromVDM();
    std::vector<std::string> keys;
    operation.getParameterSection()->readKeys(keys);
    for (const std::string& key : keys) {
        if (key.rfind("w_", 0) == 0) {
            return key;
        }
    }
    return keys.front();
}

void roundTrip(const KindSample& sample, const std::string& parameter) {
    MillDrillOperation operation(kDemoStore, sample.operation);
    operation.readFromVDM();
    operation.getParameterSection()->setDouble(parameter, 1.5);
    operation.writeToVDM();
}

// Sets the parameter once, so that every later round trip writes the same lines again.
std::string settledParameter(benchmark::State& state, const KindSample& sample) {
    loadDemoProject();
    const std::string parameter = parameterToSet(sample);
    host().clearMessageBoxes();
    roundTrip(sample, parameter);
    if (!host().messageBoxes().empty()) {
        state.SkipWithError(("the host showed: " + host().messageBoxes().front().text).c_str());
    }
    return parameter;
}

void RoundTrip(benchmark::State& state, const KindSample& sample) {
    const std::string parameter = settledParameter(state, sample);

    const Allocations before = allocationsSoFar();
    const std::size_t liveBefore = liveBytes();
    std::size_t liveWhileRead = 0;
    {
        MillDrillOperation operation(kDemoStore, sample.operation);
        operation.readFromVDM();
        liveWhileRead = liveBytes() - liveBefore;
    }
    const Allocations after = allocationsSoFar();

    for (auto _ : state) {
        roundTrip(sample, parameter);
    }
    state.counters["allocs_per_op"] = static_cast<double>(after.count - before.count);
    state.counters["bytes_per_op"] = static_cast<double>(after.bytes - before.bytes);
    state.counters["live_bytes_per_op"] = static_cast<double>(liveWhileRead);
}

// The same round trip while a capture runs, written to a temporary file at the end.
void RoundTripCaptured(benchmark::State& state, const KindSample& sample) {
    const std::string parameter = settledParameter(state, sample);
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / "velkapi-bench-capture.json";
    VelkApi::Capture::start(file.string());
    for (auto _ : state) {
        roundTrip(sample, parameter);
    }
    VelkApi::Capture::stop();
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
}

void HostFloor(benchmark::State& state, const KindSample& sample) {
    const std::string parameter = settledParameter(state, sample);
    host().startRecordingCalls();
    roundTrip(sample, parameter);
    host().stopRecordingCalls();
    HostReplay replay(host().recordedCalls());

    for (auto _ : state) {
        benchmark::DoNotOptimize(replay.run());
    }
    state.counters["host_calls"] = static_cast<double>(replay.size());
}

}  // namespace

void registerRoundTrips() {
    for (const KindSample& sample : kindSamples()) {
        benchmark::RegisterBenchmark(("RoundTrip/" + sample.name).c_str(), RoundTrip, sample)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("HostFloor/" + sample.name).c_str(), HostFloor, sample)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("RoundTripCaptured/" + sample.name).c_str(),
                                     RoundTripCaptured, sample)
            ->Unit(benchmark::kMicrosecond);
    }
}

}  // namespace bench
