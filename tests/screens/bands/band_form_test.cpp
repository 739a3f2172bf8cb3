#include "screens/bands/band_form.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

#include "core/design_fixture.h"

namespace varo {
namespace {

DesignState Design1500W() {
    DesignState design;
    test::SetDesign(design, test::kReferenceDesign);
    design.rfPower = 1500;
    return design;
}

// The entries as typed become the plan's inputs in farads and hertz; the class and limit
// choices stand for their figures.
TEST(BandForm, TextsBecomeThePlansInputs) {
    BandFormText form;
    form.bands = DefaultBandRows();
    form.bands[1].used = false;
    form.conduction = ConductionChoice::ClassC;
    form.limit = LimitChoice::PowerScaled;
    const auto read = ReadBandForm(form, Design1500W());
    ASSERT_TRUE(std::holds_alternative<BandPlanInputs>(read));
    const BandPlanInputs& inputs = std::get<BandPlanInputs>(read);
    EXPECT_DOUBLE_EQ(inputs.tubeCapacitance, 5e-12);
    EXPECT_DOUBLE_EQ(inputs.tune.max, 500e-12);
    EXPECT_DOUBLE_EQ(inputs.load.min, 30e-12);
    EXPECT_EQ(inputs.conductionDegrees, 150);
    EXPECT_EQ(inputs.limitDbc, -50);
    ASSERT_EQ(inputs.bands.size(), 8u);  // 80 m left out
    EXPECT_EQ(inputs.bands[1].name, "40 m");
    EXPECT_DOUBLE_EQ(inputs.bands[1].low, 7e6);
    EXPECT_DOUBLE_EQ(inputs.bands[4].high, 18.168e6);
}

// What cannot be planned with is named: a text that is no number, and what the plan refuses.
TEST(BandForm, WhatIsWrongIsNamed) {
    const auto problems = [](auto change) {
        BandFormText form;
        form.bands = {{true, "40 m", "7", "7.3", "0", "0"}};
        change(form);
        const auto read = ReadBandForm(form, Design1500W());
        return std::holds_alternative<BandPlanInputs>(read)
                   ? std::vector<std::string>{}
                   : std::get<std::vector<std::string>>(read);
    };
    using Texts = std::vector<std::string>;
    using namespace std::string_literals;  // GCC 12 at -O3 misreads assigning a short literal
                                           // (-Wrestrict)
    EXPECT_EQ(problems([](BandFormText&) {}), Texts{});
    EXPECT_EQ(problems([](BandFormText& f) { f.tuneMin = "ten"s; }),
              Texts{"The tuning capacitor's minimum \"ten\" is not a number."});
    EXPECT_EQ(problems([](BandFormText& f) { f.bands[0].high = ""s; }),
              Texts{"Band 40 m: the high edge \"\" is not a number."});
    EXPECT_EQ(problems([](BandFormText& f) { f.bands[0].low = "7.4"s; }),
              Texts{"Band 40 m: its low edge (7.4 MHz) is above its high edge (7.3 MHz)."});
    EXPECT_EQ(problems([](BandFormText& f) {
                  f.conduction = ConductionChoice::Other;
                  f.conductionDegrees = "0"s;
              }),
              Texts{"The conduction angle must be above 0 and at most 360 degrees."});
    EXPECT_EQ(problems([](BandFormText& f) {
                  f.limit = LimitChoice::Typed;
                  f.limitDb = "60"s;
              }),
              Texts{});
    EXPECT_EQ(problems([](BandFormText& f) { f.bands[0].used = false; }),
              Texts{"Choose at least one band."});
}

}  // namespace
}  // namespace varo
