#pragma once

#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/print_document.h"
#include "platform/surface.h"

namespace varo {

// Every printed page is this many twips across and down: it fits inside 15 mm margins on A4
// and on Letter alike, so neither paper shrinks it by more than a few percent.
inline constexpr float kPrintPageWidth = 10200;
inline constexpr float kPrintPageHeight = 14100;

inline constexpr const char* kPrintFooter = "VARO from Merrow Software";
inline constexpr std::string_view kPrinterErrorTitle = "Printer Error";

inline constexpr const char* kPageFont = "Arial";
inline constexpr float kPageBodyPoints = 9;
inline constexpr float kPageLineStep = 230;

// Text lines down the page from a starting point.
class TextColumn {
  public:
    TextColumn(Surface& page, float x, float y) : page_(page), x_(x), y_(y) {}
    void Heading(const std::string& text);
    void Line(const std::string& text);
    void Row(const std::string& label, const std::string& value, float valueX);
    void Skip() { y_ += kPageLineStep / 2; }
    float y() const { return y_; }

  private:
    Surface& page_;
    float x_;
    float y_;
};

// The title across the top with a rule under it.
void DrawPageTitle(Surface& page, const std::string& title);
// The rule, the program's name, "Page n of m" and the date along the bottom.
void DrawPageFooter(Surface& page, int number, int count, const std::string& date);
// A page-sized drawing placed over the whole page.
PagePlacement WholePage(Surface page);

// Prints the document through the dialogs; a failure is shown with `failureText` and the
// printer error title, a cancelled dialog prints nothing and says nothing. True when printed.
bool PrintReported(const PrintDocument& document, Dialogs& dialogs, std::string_view failureText);

}  // namespace varo
