#pragma once

#include "platform/base/vexexport.h"

#include <QPointF>
#include <QPolygonF>
#include <QRectF>

#include <vector>

/// A piece of a chain of segments that lies inside a box. `start` is the length of the chain up to
/// the piece's first point, so that dashes go on where they would be.
struct VexQtRun {
    QPolygonF points;
    double start = 0.0;
};

/// The pieces of an open chain that touch `box`, in order. Exact to less than 10^-5 pixel for
/// coordinates up to 10^9.
VEXQT_EXPORT std::vector<VexQtRun> clipChain(const QPolygonF& chain, const QRectF& box);

/// The part of a closed area inside `box`; empty when there is none. The outline may run along the
/// sides of the box, so these should lie out of sight.
VEXQT_EXPORT QPolygonF clipArea(const QPolygonF& area, const QRectF& box);

/// Corners of a closed polygon that stands for the ellipse in `bounds`: within a quarter of a pixel
/// of it inside `box`, coarse outside, and therefore short however large the ellipse is.
VEXQT_EXPORT QPolygonF ellipseOutline(const QRectF& bounds, const QRectF& box);
