#include "model/pictures/page_parts.h"

#include <utility>

namespace varo {

namespace {

constexpr float kTitlePoints = 14;
constexpr float kHeadingPoints = 10;
constexpr float kFooterRuleY = 13700;
constexpr float kFooterY = 13800;

}  // namespace

void TextColumn::Heading(const std::string& text) {
    page_.SetFont(kPageFont, kHeadingPoints, true);
    page_.Text(x_, y_, text);
    y_ += kPageLineStep + 40;
    page_.SetFont(kPageFont, kPageBodyPoints);
}

void TextColumn::Line(const std::string& text) {
    page_.Text(x_, y_, text);
    y_ += kPageLineStep;
}

void TextColumn::Row(const std::string& label, const std::string& value, float valueX) {
    page_.Text(x_, y_, label);
    page_.Text(valueX, y_, value);
    y_ += kPageLineStep;
}

void DrawPageTitle(Surface& page, const std::string& title) {
    page.SetFont(kPageFont, kTitlePoints, true);
    page.Text(0, 0, title);
    page.Line(0, 440, kPrintPageWidth, 440, kBlack);
}

void DrawPageFooter(Surface& page, int number, int count, const std::string& date) {
    page.Line(0, kFooterRuleY, kPrintPageWidth, kFooterRuleY, kBlack);
    page.SetFont(kPageFont, 8);
    page.Text(0, kFooterY, kPrintFooter);
    page.Text(kPrintPageWidth / 2, kFooterY,
              "Page " + std::to_string(number) + " of " + std::to_string(count),
              TextAlign{HorizontalAlign::Centre, VerticalAlign::Top});
    page.Text(kPrintPageWidth, kFooterY, date,
              TextAlign{HorizontalAlign::Right, VerticalAlign::Top});
}

PagePlacement WholePage(Surface page) {
    const LogicalRect all{0, 0, kPrintPageWidth, kPrintPageHeight};
    return {std::move(page), all, all};
}

bool PrintReported(const PrintDocument& document, Dialogs& dialogs, std::string_view failureText) {
    const PrintOutcome outcome = dialogs.Print(document);
    if (outcome.status == PrintOutcome::Status::Failed)
        dialogs.ShowFailure(failureText, outcome.detail, kPrinterErrorTitle,
                            MessageIcon::Exclamation);
    return outcome.status == PrintOutcome::Status::Printed;
}

}  // namespace varo
