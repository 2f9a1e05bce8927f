#pragma once

#include "platform/base/vexexport.h"
#include "platform/device/vexdevicetypes.h"

#include <QLineF>
#include <QList>
#include <QPolygonF>

/// The lines of `style` inside a closed area, `step` device units apart and counted from the
/// device's origin, so that neighbouring areas hatch as one. `mode` says what of an area that
/// crosses itself is inside. The area should be clipped to the device: its size bounds the answer.
VEXQT_EXPORT QList<QLineF> hatchLines(const QPolygonF& area, HatchStyle style, PolygonFillMode mode,
                                      double step);
