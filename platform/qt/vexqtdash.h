#pragma once

#include "platform/base/vexexport.h"

#include <QList>
#include <QPoint>
#include <QPointF>
#include <QRect>

#include <span>

/// Whether the pixel under the last corner of a chain belongs to it: to an open one it does, of a
/// closed one it is the first pixel again.
enum class VexQtChainEnd { kDrawn, kLeftOut };

/// Appends to `pixels` those that the dashes of a line one pixel wide light on `device`: the pixels
/// that a raster painter gives the solid line, without the gaps, none twice within a segment nor at
/// a corner. `pattern` holds an even number of lengths in pixels, drawn and skipped by turns, with
/// a sum of at least 1; `start` is the length of what came before the first corner. A dash that
/// falls between two pixels lights the second of them.
VEXQT_EXPORT void appendDashPixels(std::span<const QPointF> chain, double start, VexQtChainEnd end,
                                   const QList<qreal>& pattern, const QRect& device,
                                   QList<QPoint>& pixels);
