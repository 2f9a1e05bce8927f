#include "platform/device/vexdeviceobjects.h"

#include <algorithm>
#include <numeric>

namespace {

std::uint64_t nextStamp()
{
    // Drawing happens on one thread, so a plain counter will do.
    static std::uint64_t last = 0;
    return ++last;
}

} // namespace

CVexDeviceObject::CVexDeviceObject() : m_stamp(nextStamp())
{
}

CPen::CPen(int style, int width, const CBrush& brush, std::span<const int> dashes)
    : m_style(style), m_width(width), m_color(brush.color())
{
    const auto kept = dashes.first(std::min(dashes.size(), kMostDashes));
    m_dashes.assign(kept.begin(), kept.end());
    for (int& dash : m_dashes) {
        dash = std::max(dash, 0);
    }
    if (std::accumulate(m_dashes.begin(), m_dashes.end(), std::int64_t{0}) == 0) {
        m_dashes.clear();
    }
}
