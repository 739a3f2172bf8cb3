#include "screens/loadrange/load_range_form.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

#include "core/design_fixture.h"

namespace varo {
namespace {

using Kind = LoadRangeRequest::Kind;
using Problems = std::vector<std::string>;

LoadRangeFormText Form(LoadKindChoice kind, std::string swr, std::string phases, std::string load) {
    return {kind, std::move(swr), std::move(phases), std::move(load)};
}

// Each kind reads only its own entries: a bad load text does not stop an SWR circle.
TEST(LoadRangeForm, TextsBecomeTheRequestOfTheChosenKind) {
    const auto design = test::CalculatedDesign(test::kReferenceDesign);
    const std::vector<LoadPoint> measured{{3.5e6, {30, -10}}, {4.0e6, {70, 25}}};
    struct Case {
        LoadRangeFormText form;
        Kind kind;
        double swr;
        int phases;
        Complex impedance;
    };
    const Case cases[] = {
        {Form(LoadKindChoice::SwrCircle, "1.5", " 72 ", "junk"), Kind::SwrCircle, 1.5, 72, {}},
        {Form(LoadKindChoice::SwrCircle, "3", "3600", ""), Kind::SwrCircle, 3, 3600, {}},
        {Form(LoadKindChoice::OneLoad, "x", "x", "37-j22"), Kind::Impedance, 2, 36, {37, -22}},
        {Form(LoadKindChoice::OneLoad, "2", "36", "1.2k+j300"),
         Kind::Impedance,
         2,
         36,
         {1200, 300}},
        {Form(LoadKindChoice::Measured, "x", "x", "x"), Kind::Measured, 2, 36, {}},
    };
    for (const Case& c : cases) {
        const auto read = ReadLoadRangeForm(c.form, measured, *design);
        ASSERT_TRUE(std::holds_alternative<LoadRangeRequest>(read)) << c.form.load;
        const auto& request = std::get<LoadRangeRequest>(read);
        EXPECT_EQ(request.kind, c.kind);
        EXPECT_EQ(request.swr, c.swr);
        EXPECT_EQ(request.phases, c.phases);
        EXPECT_EQ(request.impedance.re, c.impedance.re);
        EXPECT_EQ(request.impedance.im, c.impedance.im);
        EXPECT_EQ(request.measuredLoads.size(), c.kind == Kind::Measured ? 2u : 0u);
    }
    const auto file = std::get<LoadRangeRequest>(
        ReadLoadRangeForm(Form(LoadKindChoice::Measured, "", "", ""), measured, *design));
    EXPECT_EQ(file.measuredFrequencies, (std::vector<double>{3.5e6, 4.0e6}));
    EXPECT_EQ(file.measuredLoads[1].im, 25);
}

TEST(LoadRangeForm, ProblemsAreNamed) {
    const auto design = test::CalculatedDesign(test::kReferenceDesign);
    const std::pair<LoadRangeFormText, Problems> cases[] = {
        {Form(LoadKindChoice::OneLoad, "2", "36", "abc"),
         {"The load \"abc\" is not an impedance such as 37-j22."}},
        {Form(LoadKindChoice::OneLoad, "2", "36", "-5+j3"),
         {"The load \"-5+j3\" is not an impedance such as 37-j22."}},
        {Form(LoadKindChoice::SwrCircle, "0.5", "3601", ""),
         {"The SWR \"0.5\" is not a number of 1 or more.",
          "The number of phases \"3601\" must be a whole number from 1 to 3600."}},
        {Form(LoadKindChoice::SwrCircle, "2", "1.5", ""),
         {"The number of phases \"1.5\" must be a whole number from 1 to 3600."}},
        {Form(LoadKindChoice::SwrCircle, "2", "0", ""),
         {"The number of phases \"0\" must be a whole number from 1 to 3600."}},
        {Form(LoadKindChoice::Measured, "2", "36", ""),
         {"Open an antenna file to re-tune for its points."}},
    };
    for (const auto& [form, problems] : cases) {
        const auto read = ReadLoadRangeForm(form, {}, *design);
        ASSERT_TRUE(std::holds_alternative<Problems>(read)) << form.load << form.phases;
        EXPECT_EQ(std::get<Problems>(read), problems);
    }
    // A design whose components were never worked out cannot be re-tuned.
    const auto uncalculated = test::MakeDesign(test::kReferenceDesign);
    const auto read = ReadLoadRangeForm(LoadRangeFormText{}, {}, *uncalculated);
    EXPECT_EQ(std::get<Problems>(read),
              Problems{"The design needs its components worked out first."});
}

}  // namespace
}  // namespace varo
