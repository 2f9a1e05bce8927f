#include "platform/qt/vexqthatch.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace {

/// A family of parallel lines. Both forms are free of units: a point lies on the line number
/// across(p) / step, and along(p) orders the points of one line.
struct Family {
    double acrossX, acrossY;
    double alongX, alongY;

    [[nodiscard]] double across(QPointF p) const { return acrossX * p.x() + acrossY * p.y(); }
    [[nodiscard]] double along(QPointF p) const { return alongX * p.x() + alongY * p.y(); }
};

constexpr Family kHorizontal{0.0, 1.0, 1.0, 0.0};
constexpr Family kVertical{1.0, 0.0, 0.0, 1.0};
constexpr Family kFalling{1.0, -1.0, 1.0, 1.0}; // y goes down
constexpr Family kRising{1.0, 1.0, 1.0, -1.0};

/// Where an edge of the area passes a line of a family.
struct Crossing {
    std::int64_t line;
    double along;
    QPointF at;
    int turn; // +1 or -1: which way the edge passes
};

/// The lines that an edge passes, each counted by the end that lies on its upper side, so that an
/// edge and the next never both count their common corner.
void appendCrossings(const Family& family, QPointF from, QPointF to, double step,
                     std::vector<Crossing>& crossings)
{
    const double first = family.across(from) / step;
    const double last = family.across(to) / step;
    const auto low = static_cast<std::int64_t>(std::ceil(std::min(first, last)));
    const auto high = static_cast<std::int64_t>(std::ceil(std::max(first, last)));
    for (std::int64_t line = low; line < high; ++line) {
        const double share = (static_cast<double>(line) - first) / (last - first);
        const QPointF at = from + (to - from) * share;
        crossings.push_back({line, family.along(at), at, first < last ? 1 : -1});
    }
}

void appendLines(const QPolygonF& area, const Family& family, PolygonFillMode mode, double step,
                 QList<QLineF>& lines)
{
    std::vector<Crossing> crossings;
    for (qsizetype i = 0; i < area.size(); ++i) {
        appendCrossings(family, area[i], area[(i + 1) % area.size()], step, crossings);
    }
    std::ranges::sort(crossings, [](const Crossing& a, const Crossing& b) {
        return a.line != b.line ? a.line < b.line : a.along < b.along;
    });
    int turns = 0; // a closed outline brings it back to 0 at the end of each line
    int passed = 0;
    const Crossing* entered = nullptr;
    for (const Crossing& crossing : crossings) {
        turns += crossing.turn;
        ++passed;
        const bool inside = mode == WINDING ? turns != 0 : passed % 2 != 0;
        if (inside && entered == nullptr) {
            entered = &crossing;
        } else if (!inside && entered != nullptr) {
            lines.append(QLineF(entered->at, crossing.at));
            entered = nullptr;
        }
    }
}

} // namespace

QList<QLineF> hatchLines(const QPolygonF& area, HatchStyle style, PolygonFillMode mode, double step)
{
    QList<QLineF> lines;
    if (style == HS_HORIZONTAL || style == HS_CROSS) {
        appendLines(area, kHorizontal, mode, step, lines);
    }
    if (style == HS_VERTICAL || style == HS_CROSS) {
        appendLines(area, kVertical, mode, step, lines);
    }
    if (style == HS_FDIAGONAL || style == HS_DIAGCROSS) {
        appendLines(area, kFalling, mode, step, lines);
    }
    if (style == HS_BDIAGONAL || style == HS_DIAGCROSS) {
        appendLines(area, kRising, mode, step, lines);
    }
    return lines;
}
