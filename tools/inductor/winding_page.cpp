#include "tools/inductor/winding_page.h"

#include <utility>

#include "core/numtext.h"
#include "model/pictures/page_parts.h"
#include "platform/system.h"

namespace varo {

namespace {

void DrawWinding(TextColumn& column, const CoilState& coil) {
    constexpr float kValueX = 3300;
    const bool cm = IsCentimetreMode(coil);
    const float scale = cm ? 2.54f : 1.0f;
    const std::string unit = cm ? " (cm):" : " (in):";
    const bool gauge = coil.actualGauge != kNoGauge;
    column.Heading(std::string("Winding data for ") + (coil.inductorChoice == 2 ? "L2" : "L1") +
                   " inductor:");
    column.Row("Inductance:", FormatHenry(coil.targetInductance), kValueX);
    column.Row("Turns:", FormatNumber(coil.coilTurns), kValueX);
    column.Row("Length" + unit, FormatNumber(coil.coilLength * scale), kValueX);
    column.Row("Median diameter" + unit, FormatNumber(coil.coilDiameter * scale), kValueX);
    column.Row(cm ? "Turns per cm:" : "Turns per in:", FormatNumber(coil.turnsPerInch / scale),
               kValueX);
    column.Row("Wire gauge:", gauge ? PlainText(coil.actualGauge) : "none given", kValueX);
    column.Row("Critical gauge:", PlainText(coil.criticalGauge), kValueX);
    column.Row("Wire diameter" + unit, gauge ? FormatNumber(coil.wireDiameter * scale) : "-",
               kValueX);
    column.Row("Percent fill:", gauge ? FormatNumber(coil.percentFill) + "%" : "-", kValueX);
    column.Row("Wire length" + unit, FormatNumber(coil.wireLengthInches * scale), kValueX);
    column.Skip();
}

}  // namespace

PrintDocument WindingDataDocument(const std::array<std::optional<CoilState>, 2>& windings,
                                  const std::string& date) {
    Surface text(kPrintPageWidth, kPrintPageHeight);
    DrawPageTitle(text, "VARO - Inductor design");
    TextColumn column(text, 0, 700);
    for (const auto& winding : windings)
        if (winding) DrawWinding(column, *winding);
    DrawPageFooter(text, 1, 1, date);
    PrintPage page{kPrintPageWidth, kPrintPageHeight, {}};
    page.placements.push_back(WholePage(std::move(text)));
    return {"VARO winding data", {std::move(page)}};
}

bool PrintWindingData(const std::array<std::optional<CoilState>, 2>& windings, Dialogs& dialogs) {
    return PrintReported(WindingDataDocument(windings, TodayShortDate()), dialogs,
                         "We had a problem printing the inductor design data");
}

}  // namespace varo
