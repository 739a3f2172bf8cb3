#include "model/input_view.h"

#include <cmath>
#include <numbers>

#include "core/fault.h"
#include "core/tank_network.h"

namespace varo {

namespace {

constexpr int kFirstHarmonicShown = 2;
constexpr int kLastHarmonicShown = 5;

class InputCalculator {
  public:
    InputCalculator(const DesignState& state, double referenceOhms)
        : network_(BuildTankNetwork(state)), referenceOhms_(referenceOhms) {}

    std::optional<InputPoint> At(double frequency, Complex zLoad) const {
        const double omega = 2 * std::numbers::pi * frequency;
        const Complex z = InputImpedance(TankChainMatrix(network_, omega, 0, 0), zLoad);
        const Complex gamma = Reflection(z, referenceOhms_);
        if (!IsFinite(z) || !IsFinite(gamma)) return std::nullopt;
        return InputPoint{frequency, z, gamma};
    }

  private:
    TankNetwork network_;
    double referenceOhms_;
};

std::optional<double> PlateSwing(const DesignState& state) {
    if (state.peakSwing > 0) return state.peakSwing;
    if (state.rfPower > 0) return std::sqrt(2.0 * state.rfPower * state.plateR);
    return std::nullopt;
}

void AddTube(InputView& view, const DesignState& state) {
    view.plateSwing = PlateSwing(state);
    if (!view.plateSwing) return;
    const double swing = *view.plateSwing;
    const Complex admittance = Complex{1, 0} / view.operating.z;
    view.plateCurrent = swing * std::sqrt(SquaredMagnitude(admittance));
    view.loadWatts = swing * swing * admittance.re / 2;
}

}  // namespace

double InputView::Vswr() const {
    const double magnitude = std::sqrt(SquaredMagnitude(operating.gamma));
    return magnitude < 1 ? (1 + magnitude) / (1 - magnitude) : INFINITY;
}

std::optional<InputView> InputViewOf(const DesignState& state,
                                     const std::vector<float>& sweepFrequencies,
                                     const LoadRangeResult* loadRange) {
    if (!(state.plateR > 0) || !(state.loadR > 0) || !(state.frequency > 0)) return std::nullopt;
    std::optional<InputCalculator> calculator;
    try {
        calculator.emplace(state, state.plateR);
    } catch (const ArithmeticFault&) {
        return std::nullopt;
    }
    const Complex load{state.loadR, 0};
    const auto operating = calculator->At(state.frequency, load);
    if (!operating) return std::nullopt;
    InputView view;
    view.referenceOhms = state.plateR;
    view.c3AcrossLoad = LSectionStepsUp(state);
    view.operating = *operating;
    view.sweepGamma.reserve(sweepFrequencies.size());
    for (const float frequency : sweepFrequencies) {
        const auto point = calculator->At(frequency, load);
        view.sweepGamma.push_back(point ? point->gamma : Complex{NAN, NAN});
    }
    for (int n = kFirstHarmonicShown; n <= kLastHarmonicShown; ++n)
        if (const auto point = calculator->At(n * static_cast<double>(state.frequency), load))
            view.harmonics.push_back(*point);
    if (loadRange != nullptr)
        for (const LoadCase& loadCase : loadRange->range.loads)
            if (const auto point = calculator->At(loadCase.frequency, loadCase.zLoad))
                view.loads.push_back(*point);
    AddTube(view, state);
    return view;
}

}  // namespace varo
