// The benchmark program: the library and the offline host in one process, as in the host
// application. Benchmarks named after the demo project's operation kinds are registered once
// the project is loaded.
#include <benchmark/benchmark.h>

#include "BenchProject.h"
#include "ExpertFormBench.h"
#include "RoundTripBench.h"

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    bench::loadDemoProject();
    bench::registerRoundTrips();
    bench::registerExpertForms();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
