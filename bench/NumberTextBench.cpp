// Numbers as the library writes them into section lines ("%g" and "%f" through std::to_chars)
// and reads them back field by field, beside the C runtime's snprintf and strtod doing the same.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "util/TextHelpers.h"

namespace bench {

namespace {

// Values of the kinds section lines hold: feeds, depths, angles, "not set" markers.
constexpr std::array<double, 8> kValues = {0.05,   2147483647.0, -999999.0, 12.5,
                                           1.0e-7, 3.14159265,   -30.0,     1500.0};

// A value line of 40 fields as the library writes them.
std::string valueLine() {
    std::string line;
    for (std::size_t i = 0; i < 40; ++i) {
        line += VelkApi::text::general6(kValues[i % kValues.size()]) + " ";
    }
    return line;
}

// Writes each value with `write`, which gives its text as a string: the library's own writers,
// and the C runtime's snprintf as a library would use it, printed and then made a string.
template <typename Write>
void writeEach(benchmark::State& state, Write write) {
    for (auto _ : state) {
        for (const double value : kValues) {
            benchmark::DoNotOptimize(write(value));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(kValues.size()));
}

std::string printedGeneral(double value) {
    char buffer[400];
    const int length = std::snprintf(buffer, sizeof buffer, "%g", value);
    return std::string(buffer, static_cast<std::size_t>(length));
}

std::string printedFixed(double value) {
    char buffer[400];
    const int length = std::snprintf(buffer, sizeof buffer, "%f", value);
    return std::string(buffer, static_cast<std::size_t>(length));
}

void WriteGeneralLibrary(benchmark::State& state) {
    writeEach(state, VelkApi::text::general6);
}
BENCHMARK(WriteGeneralLibrary)->Name("NumberText/general/to_chars");

void WriteGeneralSnprintf(benchmark::State& state) {
    writeEach(state, printedGeneral);
}
BENCHMARK(WriteGeneralSnprintf)->Name("NumberText/general/snprintf");

void WriteFixedLibrary(benchmark::State& state) {
    writeEach(state, VelkApi::text::fixed6);
}
BENCHMARK(WriteFixedLibrary)->Name("NumberText/fixed/to_chars");

void WriteFixedSnprintf(benchmark::State& state) {
    writeEach(state, printedFixed);
}
BENCHMARK(WriteFixedSnprintf)->Name("NumberText/fixed/snprintf");

void ReadFieldsLibrary(benchmark::State& state) {
    const std::string line = valueLine();
    long long fields = 0;
    for (auto _ : state) {
        std::size_t pos = 0;
        double value = 0.0;
        while (VelkApi::text::readDouble(line, pos, value, 0.0) > 0) {
            benchmark::DoNotOptimize(value);
            ++fields;
        }
    }
    state.SetItemsProcessed(fields);
}
BENCHMARK(ReadFieldsLibrary)->Name("NumberText/read/library");

void ReadFieldsStrtod(benchmark::State& state) {
    const std::string line = valueLine();
    long long fields = 0;
    for (auto _ : state) {
        const char* at = line.c_str();
        char* end = nullptr;
        for (double value = std::strtod(at, &end); end != at; value = std::strtod(at, &end)) {
            benchmark::DoNotOptimize(value);
            at = end;
            ++fields;
        }
    }
    state.SetItemsProcessed(fields);
}
BENCHMARK(ReadFieldsStrtod)->Name("NumberText/read/strtod");

}  // namespace

}  // namespace bench
