// The expert form of one operation of each kind, made as velk expert makes it: the form of the
// operation's kind declared, then filled from its parameter section, read once beforehand.
#include "ExpertFormBench.h"

#include <benchmark/benchmark.h>
#include <velkapi/ExpertParameterSection.h>
#include <velkapi/MillDrillOperation.h>

#include <string>

#include "BenchProject.h"

namespace bench {

namespace {

void ExpertForm(benchmark::State& state, const KindSample& sample) {
    loadDemoProject();
    VelkApi::MillDrillOperation operation(kDemoStore, sample.operation);
    operation.readFromVDM();
    const VelkApi::ParameterSection* parameters = operation.getParameterSection();
    if (parameters == nullptr) {
        state.SkipWithError("the operation has no parameter section");
        return;
    }
    for (auto _ : state) {
        VelkApi::ExpertParameterSection expert(operation.getOperationType());
        expert.Init();
        expert.readFromParameters(*parameters);
        benchmark::DoNotOptimize(expert.getLineCount());
    }
}

}  // namespace

void registerExpertForms() {
    for (const KindSample& sample : kindSamples()) {
        benchmark::RegisterBenchmark(("ExpertForm/" + sample.name).c_str(), ExpertForm, sample)
            ->Unit(benchmark::kMicrosecond);
    }
}

}  // namespace bench
