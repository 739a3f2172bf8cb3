#pragma once

#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QRectF>
#include <QSize>
#include <string>

#include "platform/print_document.h"

class QPrinter;

namespace varo {

// Margins on every side of the sheet, in millimetres.
inline constexpr double kPrintMarginMm = 15;

// The paper of the locale (Letter where US units are the custom, A4 elsewhere) with the margins.
QPageLayout DefaultPageLayout();

// The page as large as fits in `target`, keeping its shape; each drawing's window replayed into
// its box and clipped to it.
void PaintPage(const PrintPage& page, QPainter& painter, const QRectF& target);

// Every page onto the printer, one sheet each, inside the printer's margins. A printer the print
// dialog set to print into a PDF file writes that file as WritePdf does.
PrintOutcome PaintDocument(const PrintDocument& document, QPrinter& printer);

// The document as a PDF file, rendered in memory and saved whole with SaveFile: a failure leaves
// the previous file as it was and its detail names the path and the system's reason.
PrintOutcome WritePdf(const PrintDocument& document, const std::string& path,
                      const QPageLayout& layout);
// The same on the locale's paper.
PrintOutcome WritePdf(const PrintDocument& document, const std::string& path);

// One page on a white image of `size` pixels.
QImage RenderPage(const PrintPage& page, QSize size);

}  // namespace varo
