#include <benchmark/benchmark.h>

#include <string>

#include "core/numtext.h"

namespace {

// Values of the kind a redraw shows: component values, stresses, reactances.
constexpr float kNumbers[] = {1500.0f, 3.14159f, 0.000005f, 123456.7f, -60.0f, 2.5e6f};
constexpr float kCapacitances[] = {4.7e-9f, 1.5e-8f, 1e-10f, 2.2e-6f, 0.0f, 3.3e-11f};

void BM_FormatNumber(benchmark::State& state) {
    for (auto _ : state) {
        for (const float x : kNumbers)
            benchmark::DoNotOptimize(varo::FormatNumber(x));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(std::size(kNumbers)));
}
BENCHMARK(BM_FormatNumber);

void BM_FormatFarad(benchmark::State& state) {
    for (auto _ : state) {
        for (const float x : kCapacitances)
            benchmark::DoNotOptimize(varo::FormatFarad(x));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(std::size(kCapacitances)));
}
BENCHMARK(BM_FormatFarad);

void BM_ParseEngNumber(benchmark::State& state) {
    const std::string entry = " 3.6M ";
    for (auto _ : state) {
        std::string text = entry;
        benchmark::DoNotOptimize(varo::ParseEngNumber(text));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ParseEngNumber);

// The overlay writer turns 4002 computed singles into file form per save.
void BM_FileForm(benchmark::State& state) {
    constexpr float kSweepValues[] = {1750000.0f, -0.0123456789f, 14000000.0f, -23.456789f,
                                      2.2e-6f,    3500123.5f,     -0.5f,       0.0f};
    for (auto _ : state) {
        for (const float v : kSweepValues)
            benchmark::DoNotOptimize(varo::FileForm(v));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(std::size(kSweepValues)));
}
BENCHMARK(BM_FileForm);

}  // namespace
