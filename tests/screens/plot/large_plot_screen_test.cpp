#include "screens/plot/large_plot_screen.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/design_fixture.h"
#include "model/design.h"
#include "model/pictures/large_plot.h"
#include "support/recording_reporter.h"

namespace varo {
namespace {

// The logical X of the large plot at `frequency`, on the sweep's log scale.
float XAt(const SweepTable& sweep, double frequency) {
    const PlotArea& area = kLargePlotFrame.area;
    return static_cast<float>(area.left + area.width() * std::log(frequency / sweep.start) /
                                              std::log(sweep.stop / double(sweep.start)));
}

// The start-up design moved to 7.1 MHz, as the plot screen sweeps it.
const SweepTable& SweptAt71MHz(Design& design) {
    test::SetDesign(design.state(), test::kReferenceDesign);
    TextFields<DesignForm> form;
    for (const auto& [field, text] : {std::pair{DesignField::Frequency, "7.1M"},
                                      {DesignField::Plate, "1500"},
                                      {DesignField::Intermediate, "300"},
                                      {DesignField::NominalLoad, "50"},
                                      {DesignField::Q, "12"}})
        form.SetText(field, text);
    test::RecordingReporter reporter;
    ScriptedDialogs dialogs;
    design.Accept(form, dialogs, reporter);
    design.RecomputeNetwork(reporter);
    design.SweepAsLaidOut(reporter);
    return design.results().sweep;
}

// At 5 MHz the 7.1 MHz network's input is 185 ohms at +9.2 degrees, inductive (worked by hand
// from the part values: C1 || (j w L1 + C2 || C3 || (j w L2 + 50))), so the usual angle is
// positive. The return loss carries the plot's own negative sign.
TEST(CursorReadout, ShowsTheUsualImpedanceAngleAndTheReturnWithThePlotsSign) {
    Design design;
    const SweepTable& sweep = SweptAt71MHz(design);
    const std::string text = CursorReadoutText(sweep, {}, XAt(sweep, 5e6));
    EXPECT_NE(text.find("|Zin|: 185.1 \u03A9\nZ angle: 9.1\u00B0"), std::string::npos) << text;
    EXPECT_NE(text.find("Return loss re 1.5 k\u03A9: -"), std::string::npos) << text;
}

// A hand-made three-point table from 1 to 10 MHz: X = 2000 + 9000 log10(f / 1 MHz). The cursor
// shows its own frequency to 4 decimals of a MHz and the figures of the nearest point in log
// frequency, which at the right edge is the last one.
TEST(CursorReadout, ShowsTheCursorFrequencyAndTheNearestPointsFigures) {
    SweepTable sweep;
    sweep.start = 1e6f;
    sweep.stop = 1e7f;
    sweep.referenceOhms = 1500;
    sweep.frequency = {1e6f, 3.6e6f, 1e7f};
    sweep.transmissionDb = {-0.25f, -1.5f, -42.5f};
    sweep.returnDb = {-30, -12.5f, -0.75f};
    sweep.vswr = {1.0625f, 1.625f, 23.25f};
    sweep.zMagnitude = {1480, 2250, 12.5f};
    sweep.zAngleDeg = {-2, 4.5f, 80.5f};
    const std::pair<float, std::string> cases[] = {
        {11000,
         "10 MHz\nTransmission: -42.5 dB\nReturn loss re 1.5 k\u03A9: -0.75 dB\nVSWR: 23.25\n"
         "|Zin|: 12.5 \u03A9\nZ angle: 80.5\u00B0"},
        {7020.0542f,  // 3.6123 MHz, nearest 3.6 MHz
         "3.6123 MHz\nTransmission: -1.5 dB\nReturn loss re 1.5 k\u03A9: -12.5 dB\nVSWR: 1.625\n"
         "|Zin|: 2.25 k\u03A9\nZ angle: 4.5\u00B0"},
        {1999, ""},
    };
    for (const auto& [x, text] : cases)
        EXPECT_EQ(CursorReadoutText(sweep, {}, x), text) << x;
}

// 3 % is 14.8 steps of 0.2 %: 15; the knob stops at twice (or half) the design value.
TEST(Knobs, PositionsCountStepsOfAFifthOfAPercent) {
    const std::pair<double, int> cases[] = {{1, 0},     {1.03, 15},        {1 / 1.03, -15},
                                            {1.002, 1}, {100, kKnobSteps}, {0.001, -kKnobSteps},
                                            {0, 0},     {NAN, 0}};
    for (const auto& [factor, position] : cases)
        EXPECT_EQ(KnobPosition(factor), position) << factor;
    EXPECT_NEAR(KnobFactor(kKnobSteps), 2.0, 0.02);
}

// The value under each knob, with its change from the design value; the loading knob of a
// network whose C3 stands at the midpoint names the two capacitors together.
TEST(Knobs, ValueTextsNameThePartAndItsChange) {
    DesignState state;
    state.C1 = 227.626e-12f;
    state.C2 = 494.23e-12f;
    state.C3 = 304.172e-12f;
    state.L2 = 4.56258e-6f;
    state.intermediateR = 300;
    state.loadR = 50;
    EXPECT_EQ(KnobValueText(state, TankPart::C1, 1.03), "227.626pF, +3 %");
    EXPECT_EQ(KnobValueText(state, TankPart::L2, 1), "4.56258uH, 0 %");
    EXPECT_EQ(KnobValueText(state, TankPart::C2, 0.958), "C2 + C3 798.402pF, -4.2 %");
    state.intermediateR = 30;  // the L section steps up: C3 stands across the load
    EXPECT_EQ(KnobValueText(state, TankPart::C2, 1.0004), "494.23pF, 0 %");
}

// What the tube sees, from figures made by hand: 1162.1 - j72.2 ohms against 1500 ohms is
// gamma = (-337.9 - j72.2) / (2662.1 - j72.2) = 0.1298 at -166.4 degrees, VSWR 1.298.
TEST(TubeView, LinesGiveTheImpedanceTheReflectionAndThePlatesFigures) {
    InputView view;
    view.referenceOhms = 1500;
    view.operating.z = {1162.1, -72.2};
    view.operating.gamma = Reflection(view.operating.z, 1500);
    EXPECT_EQ(
        TubeViewLines(view),
        (std::vector<std::string>{"Input impedance: 1162.1 - j72.2 \u03A9",
                                  "Reflection re 1.5 k\u03A9: 0.13 at -166.4\u00B0", "VSWR: 1.3",
                                  "Plate current and power: the design has no plate "
                                  "swing or RF power"}));
    view.plateCurrent = 1.8216;
    view.loadWatts = 1928.84;
    const auto lines = TubeViewLines(view);
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[3], "Plate current, fundamental: 1.822 A peak");
    EXPECT_EQ(lines[4], "Power into the load: 1928.8 W");
}

}  // namespace
}  // namespace varo
