#include "platform/qt/qt_print.h"

#include <QAbstractButton>
#include <QAction>
#include <QBuffer>
#include <QDialog>
#include <QLocale>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QScopedValueRollback>
#include <QScreen>
#include <QToolBar>
#include <algorithm>

#include "platform/qt/guarded_dialog.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/replay.h"
#include "platform/save_file.h"
#include "platform/textfile.h"

namespace varo {

namespace {

using Status = PrintOutcome::Status;

QRectF ToQRect(const LogicalRect& rect) {
    return QRectF(rect.left, rect.top, rect.width, rect.height);
}

// Where the whole drawing lands when its source window is laid onto `box`.
QRectF WholeDrawingRect(const PagePlacement& placement, const QRectF& box) {
    const qreal scaleX = box.width() / placement.source.width;
    const qreal scaleY = box.height() / placement.source.height;
    return QRectF(box.x() - placement.source.left * scaleX, box.y() - placement.source.top * scaleY,
                  placement.drawing.width() * scaleX, placement.drawing.height() * scaleY);
}

void PaintPlacement(const PagePlacement& placement, QPainter& painter, const QRectF& page,
                    qreal scale) {
    if (placement.source.width <= 0 || placement.source.height <= 0) return;
    const QRectF target = ToQRect(placement.target);
    const QRectF box(page.x() + target.x() * scale, page.y() + target.y() * scale,
                     target.width() * scale, target.height() * scale);
    painter.save();
    painter.setClipRect(box, Qt::IntersectClip);
    ReplaySurface(placement.drawing, painter, WholeDrawingRect(placement, box));
    painter.restore();
}

PrintOutcome Failed(std::string detail) {
    return {Status::Failed, std::move(detail)};
}

}  // namespace

QPageLayout DefaultPageLayout() {
    const bool usUnits = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    return QPageLayout(QPageSize(usUnits ? QPageSize::Letter : QPageSize::A4),
                       QPageLayout::Portrait,
                       QMarginsF(kPrintMarginMm, kPrintMarginMm, kPrintMarginMm, kPrintMarginMm),
                       QPageLayout::Millimeter);
}

void PaintPage(const PrintPage& page, QPainter& painter, const QRectF& target) {
    if (page.width <= 0 || page.height <= 0) return;
    const QRectF fitted =
        FittedRect(QSizeF(page.width, page.height), target, SurfaceFit::KeepAspect);
    const qreal scale = fitted.width() / page.width;
    for (const PagePlacement& placement : page.placements)
        PaintPlacement(placement, painter, fitted, scale);
}

namespace {

PrintOutcome PaintPages(const PrintDocument& document, QPagedPaintDevice& device, int resolution) {
    QPainter painter;
    if (!painter.begin(&device)) return Failed("The printer did not accept the job.");
    const QRectF area(QPointF(0, 0), device.pageLayout().paintRectPixels(resolution).size());
    for (std::size_t i = 0; i < document.pages.size(); ++i) {
        if (i > 0 && !device.newPage()) return Failed("The printer did not take the next page.");
        PaintPage(document.pages[i], painter, area);
    }
    if (!painter.end()) return Failed("The printer could not finish the job.");
    return {Status::Printed, {}};
}

// The print dialog's "print to file" chose a PDF file for this printer.
bool PrintsToPdfFile(const QPrinter& printer) {
    return printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty();
}

}  // namespace

PrintOutcome PaintDocument(const PrintDocument& document, QPrinter& printer) {
    if (!printer.isValid()) return Failed("No printer is available.");
    // Qt's own PDF output truncates the file and writes it in place; ours is whole or nothing.
    if (PrintsToPdfFile(printer))
        return WritePdf(document, printer.outputFileName().toStdString(), printer.pageLayout());
    printer.setDocName(QString::fromStdString(document.name));
    return PaintPages(document, printer, printer.resolution());
}

PrintOutcome WritePdf(const PrintDocument& document, const std::string& path,
                      const QPageLayout& layout) {
    QByteArray bytes;
    {
        QBuffer memory(&bytes);
        memory.open(QIODevice::WriteOnly);
        QPdfWriter pdf(&memory);
        pdf.setTitle(QString::fromStdString(document.name));
        pdf.setPageLayout(layout);
        PrintOutcome painted = PaintPages(document, pdf, pdf.resolution());
        if (painted.status == Status::Failed) {
            painted.detail += " (" + path + ")";
            return painted;
        }
    }
    try {
        SaveFile(path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    } catch (const FileError& failure) {
        return Failed(failure.what());
    }
    return {Status::Printed, {}};
}

PrintOutcome WritePdf(const PrintDocument& document, const std::string& path) {
    return WritePdf(document, path, DefaultPageLayout());
}

QImage RenderPage(const PrintPage& page, QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintPage(page, painter, QRectF(QPointF(0, 0), QSizeF(size)));
    painter.end();
    return image;
}

namespace {

// One of the preview's own actions ("Print", "Fit width"), found by its caption.
QAction* PreviewAction(QPrintPreviewDialog& preview, const char* caption) {
    for (QAction* action : preview.findChildren<QAction*>())
        if (action->text() == QPrintPreviewDialog::tr(caption)) return action;
    return nullptr;
}

// Opened at a size that reads: most of the screen's height, a page's shape, and the page
// fitted to the width.
void SizeToRead(QPrintPreviewDialog& preview) {
    if (const QScreen* screen = preview.screen()) {
        const QRect room = screen->availableGeometry();
        const int height = room.height() * 85 / 100;
        preview.resize(std::min(room.width() * 85 / 100, height * 9 / 10), height);
    }
    // The preview's own "Fit width", so that its toolbar shows the zoom it has.
    if (QAction* fitWidth = PreviewAction(preview, "Fit width")) fitWidth->trigger();
}

}  // namespace

PrintOutcome QtDialogs::Print(const PrintDocument& document) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(DefaultPageLayout());
    printer.setDocName(QString::fromStdString(document.name));
    GuardedDialog<QPrintPreviewDialog> preview(&printer, parent_.data());
    preview->setWindowTitle(QString::fromStdString(document.name));
    // The preview paints through here; the print itself is ours below.
    PrintOutcome outcome;
    QObject::connect(preview.get(), &QPrintPreviewDialog::paintRequested,
                     [&](QPrinter* target) { PaintDocument(document, *target); });
    // One of the preview's own dialogs at a time: what assistive technology presses on the
    // preview while one is open (it reaches blocked windows) is dropped.
    bool choosing = false;
    const auto finish = [&](PrintOutcome done) {
        outcome = std::move(done);
        preview->accept();
    };
    // Qt's print action opens its print dialog with a "print to file" choice whose file dialog
    // (a file-system model with background updates) did not survive assistive technology's
    // presses: ours offers the printers only, and PDFs come from "Save as PDF".
    if (QAction* print = PreviewAction(*preview.get(), "Print")) {
        QObject::disconnect(print, &QAction::triggered, nullptr, nullptr);
        QObject::connect(print, &QAction::triggered, preview.get(), [&] {
            if (choosing) return;
            const QScopedValueRollback<bool> busy(choosing, true);
            GuardedDialog<QPrintDialog> chooser(&printer, preview.get());
            chooser->setOption(QAbstractPrintDialog::PrintToFile, false);
            // Hidden, its file browser is still pressed through the accessibility bus;
            // disabled, it opens nothing.
            if (auto* browse = chooser->findChild<QAbstractButton*>("fileBrowser"))
                browse->setEnabled(false);
            if (chooser.Exec() != QDialog::Accepted || !preview.get()) return;
            finish(PaintDocument(document, printer));
        });
    }
    QAction* saveAsPdf = new QAction(QObject::tr("Save as PDF"), preview.get());
    saveAsPdf->setObjectName("actSaveAsPdf");
    QObject::connect(saveAsPdf, &QAction::triggered, preview.get(), [&] {
        if (choosing) return;
        const QScopedValueRollback<bool> busy(choosing, true);
        const auto path = AskSaveFileName(
            {"Save as PDF", "PDF document (*.pdf)|*.pdf", 1, document.name + ".pdf", true});
        if (!path || !preview.get()) return;
        finish(WritePdf(document, *path));
    });
    if (QToolBar* toolbar = preview->findChild<QToolBar*>()) toolbar->addAction(saveAsPdf);
    SizeToRead(*preview.get());
    if (preview.Exec() != QDialog::Accepted) return {};
    return outcome;
}

}  // namespace varo
