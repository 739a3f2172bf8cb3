#include <gtest/gtest.h>

#include <string>

#include "model/pictures/page_parts.h"
#include "platform/field_form.h"
#include "support/pdf_reading.h"
#include "support/temp_folder.h"
#include "tools/inductor/winding_page.h"

namespace varo {
namespace {

using test::PagesAndText;
using test::PdfDialogs;
using testing::TempFolder;

TEST(WindingPrintTest, WorkedExampleOnOnePage) {
    CoilState coil;
    coil.inductorChoice = 1;
    coil.targetInductance = 10e-6f;
    coil.coilDiameter = 2;
    coil.coilLength = 4;
    coil.actualGauge = 14;
    TextFields<CoilForm> form;
    form.SetText(CoilField::Gauge, "14");
    ScriptedDialogs quiet;
    ASSERT_TRUE(ComputeCoil(coil, form, quiet));

    TempFolder folder;
    PdfDialogs dialogs;
    dialogs.pdfPath = folder.File("winding.pdf");
    ASSERT_TRUE(PrintWindingData({coil, std::nullopt}, dialogs));
    const auto [pages, text] = PagesAndText(*dialogs.pdfPath);
    EXPECT_EQ(pages, "1\n");
    for (const char* part : {"Winding data for L1 inductor:", "22.136", "35.609 %", kPrintFooter})
        EXPECT_NE(text.find(part), std::string::npos) << part << " not in " << text;
    EXPECT_EQ(text.find("L2 inductor"), std::string::npos);

    dialogs.pdfPath = folder.str();
    EXPECT_FALSE(PrintWindingData({coil, coil}, dialogs));
    EXPECT_EQ(dialogs.messages().back(), "We had a problem printing the inductor design data");
}

}  // namespace
}  // namespace varo
