// The inductor designer's whole calculation for one coil: the formula's winding (turns from
// diameter and length, wire, gauge, fill) and the coil as built (exact sheet, round wire, AC
// resistance, Q, self-capacitance and self-resonance) with the texts the screen shows.
#include <benchmark/benchmark.h>

#include "platform/dialogs.h"
#include "platform/field_form.h"
#include "tools/inductor/coil_as_built.h"

namespace {

using varo::CoilField;

void WholeCoilCalculation(benchmark::State& run) {
    varo::ScriptedDialogs dialogs;
    for (auto _ : run) {
        varo::CoilState coil;
        coil.unitSystem = varo::kInches;
        coil.targetInductance = 10e-6f;
        varo::TextFields<varo::CoilForm> form;
        for (const auto& [field, text] : {std::pair{CoilField::Diameter, "2"},
                                          {CoilField::Length, "4"},
                                          {CoilField::Gauge, "14"}}) {
            form.SetText(field, text);
            varo::OnWindingEntryChanged(coil, field, text);
        }
        varo::ComputeCoil(coil, form, dialogs);
        benchmark::DoNotOptimize(varo::AsBuiltTextsOf(coil, 7.15e6));
    }
}
BENCHMARK(WholeCoilCalculation)->Unit(benchmark::kMicrosecond);

// The as-built figures alone, for a coil of many turns (the mutual correction's widest case).
void CoilAsBuiltOfAThousandTurns(benchmark::State& run) {
    const varo::Winding winding{0.05, 0.5, 1000, 0.0004};
    for (auto _ : run)
        benchmark::DoNotOptimize(varo::AnalyzeCoil(winding, 1.8e6));
}
BENCHMARK(CoilAsBuiltOfAThousandTurns)->Unit(benchmark::kMicrosecond);

}  // namespace
