#include "screens/plot/large_plot_screen.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "model/design.h"
#include "model/pictures/large_plot.h"
#include "core/design_fixture.h"
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

}  // namespace
}  // namespace varo
