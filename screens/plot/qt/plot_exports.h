#pragma once

#include <QByteArray>
#include <QSize>
#include <string>

#include "platform/dialogs.h"
#include "platform/surface.h"

namespace varo {

// The picture as saved: the screen's drawing with the summary line and the curves' legend
// written in, since on the screen those are controls over it.
Surface PictureForExport(const Surface& screen, const std::string& summary);

// The display list replayed, shape kept: as a PNG image of `size` pixels, or as SVG drawn at
// that size (and sharp at any other).
QByteArray PngBytes(const Surface& picture, QSize size);
QByteArray SvgBytes(const Surface& picture, QSize size);

// The save dialog of the picture export, asking before it replaces a file.
SaveDialogRequest PictureSaveRequest();

// Writes the picture as PNG or SVG, as the name's extension says, whole or not at all. Reports
// a wrong extension or a failure; returns whether the file was written.
bool WritePictureFile(const Surface& picture, const std::string& path, Dialogs& dialogs);

}  // namespace varo
