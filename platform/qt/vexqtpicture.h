#pragma once

#include "platform/base/vexexport.h"
#include "platform/device/vexdevicetypes.h"

#include <QByteArray>
#include <QSizeF>
#include <QString>

#include <memory>

class CDC;

enum class VexQtPictureFormat { kPng, kPdf, kSvg };

struct VexQtPictureOptions {
    VexQtPictureFormat format = VexQtPictureFormat::kPng;
    QSizeF size{}; // PNG: pixels; PDF and SVG: millimetres
    COLORREF background = 0xffffff;
    QString title{}; // PDF and SVG
};

/// A picture that is drawn through a device context and comes out as the bytes of a file, the same
/// bytes for the same strokes. On the pages of PDF and SVG a device unit is 1/100 millimetre.
class VEXQT_EXPORT CVexQtPicture {
public:
    /// The empty picture, filled with the background; null for a size that cannot be made (below
    /// one pixel, above 32767 pixels or 20 metres a side).
    [[nodiscard]] static std::unique_ptr<CVexQtPicture> create(const VexQtPictureOptions& options);
    virtual ~CVexQtPicture();

    /// What to draw on; null once the picture is finished. Its background colour is the picture's.
    [[nodiscard]] virtual CDC* dc() = 0;
    /// Ends the picture and gives its bytes; false, with `out` empty, when that fails or was done.
    virtual bool finish(QByteArray& out) = 0;
};
