#include "screens/plot/qt/plot_exports.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <string_view>

#include "export/reported_write.h"
#include "model/pictures/response_plot.h"
#include "platform/qt/replay.h"
#include "platform/save_file.h"

namespace varo {

namespace {

constexpr std::string_view kWrongExtension = "A picture file name ends in .png or .svg";
constexpr std::string_view kPictureFailed = "We could not export the plot";

bool EndsWithNoCase(const std::string& path, const char* ending) {
    return QString::fromStdString(path).endsWith(QLatin1String(ending), Qt::CaseInsensitive);
}

QRectF Whole(QSize size) {
    return QRectF(QPointF(0, 0), QSizeF(size));
}

}  // namespace

Surface PictureForExport(const Surface& screen, const std::string& summary) {
    Surface picture = screen;
    picture.SetFont(kDefaultSurfaceFont, kDefaultSurfacePointSize);
    picture.Text(150, 450, summary);
    picture.Text(2000, 750, "Transmission", kTransmissionCurve);
    picture.Text(3400, 750, "Return", kReturnCurve);
    return picture;
}

QByteArray PngBytes(const Surface& picture, QSize size) {
    const QImage image = RenderSurface(picture, size, 1, SurfaceFit::KeepAspect);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray SvgBytes(const Surface& picture, QSize size) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size);
    generator.setViewBox(Whole(size));
    generator.setTitle("VARO large plot");
    QPainter painter(&generator);
    painter.fillRect(Whole(size), Qt::white);
    ReplaySurface(picture, painter, Whole(size), SurfaceFit::KeepAspect);
    painter.end();
    return bytes;
}

SaveDialogRequest PictureSaveRequest() {
    return SaveDialogRequest{.title = "VARO - export the plot",
                             .filter = "PNG image (*.png)|*.png|SVG drawing (*.svg)|*.svg",
                             .filterIndex = 1,
                             .proposedName = "Plot.png",
                             .overwritePrompt = true};
}

bool WritePictureFile(const Surface& picture, const std::string& path, Dialogs& dialogs) {
    const QSize size(1600, 1200);
    QByteArray bytes;
    if (EndsWithNoCase(path, ".png")) {
        bytes = PngBytes(picture, size);
    } else if (EndsWithNoCase(path, ".svg")) {
        bytes = SvgBytes(picture, size);
    } else {
        dialogs.ShowMessage(kWrongExtension);
        return false;
    }
    const auto failure = SaveFailure(path, [&] {
        SaveFile(path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    });
    if (!failure) return true;
    dialogs.ShowFailure(kPictureFailed, *failure);
    return false;
}

}  // namespace varo
