#include "platform/qt/vexqtpixelrow.h"

namespace {

/// Moves `p` along the line to `q` up to the limit, if it lies beyond; false when all lies there.
bool pullIn(double& p, double& pAcross, double q, double qAcross, double low, double high)
{
    const double limit = p < low ? low : high;
    if (p >= low && p <= high) {
        return true;
    }
    if (limit == low ? q <= low : q >= high) {
        return false;
    }
    pAcross += (qAcross - pAcross) / (q - p) * (limit - p);
    p = limit;
    return true;
}

} // namespace

bool cutToDevice(QPointF& from, QPointF& to, const QRect& device)
{
    const double left = device.left() - 1, right = device.right() + 2;
    const double top = device.top() - 1, bottom = device.bottom() + 2;
    return pullIn(from.rx(), from.ry(), to.x(), to.y(), left, right) &&
           pullIn(to.rx(), to.ry(), from.x(), from.y(), left, right) &&
           pullIn(from.ry(), from.rx(), to.y(), to.x(), top, bottom) &&
           pullIn(to.ry(), to.rx(), from.y(), from.x(), top, bottom);
}
