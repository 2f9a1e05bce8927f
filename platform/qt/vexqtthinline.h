#pragma once

#include "platform/base/cpoint.h"

#include <QRgb>
#include <QSize>
#include <QtGlobal>

/// The pixels of an image of the format RGB32, not owned.
struct VexQtPixels {
    QRgb* first = nullptr; // of the topmost row
    qsizetype rowLength = 0;
    QSize size;
};

/// Puts down a solid line one pixel wide: exactly the pixels that a raster painter gives it, at a
/// tenth of the time, for a drawing is millions of short lines and the painter has much to prepare
/// for each. `operation` is a raster operation.
void strokeThinLine(const VexQtPixels& pixels, CPoint from, CPoint to, QRgb color, int operation);
