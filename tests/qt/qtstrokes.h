#pragma once

#include "platform/device/cdc.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

/// Pens and brushes of every kind, and random strokes with them.
class RandomStrokes {
public:
    explicit RandomStrokes(unsigned seed) : m_seed(seed) {}

    /// Draws the same strokes each time it is called.
    void draw(CDC& dc) const
    {
        std::mt19937 random(m_seed);
        for (int i = 0; i < 60; ++i) {
            dc.SelectObject(&m_pens[random() % m_pens.size()]);
            dc.SelectObject(&m_brushes[random() % m_brushes.size()]);
            stroke(dc, static_cast<int>(random() % 6), random);
        }
        dc.SelectObject(static_cast<const CPen*>(nullptr));
        dc.SelectObject(static_cast<const CBrush*>(nullptr));
    }

private:
    static CPoint point(std::mt19937& random)
    {
        const auto coordinate = [&] { return static_cast<int>(random() % 300) - 50; };
        const int x = coordinate();
        return {x, coordinate()};
    }

    static void stroke(CDC& dc, int kind, std::mt19937& random)
    {
        std::vector<CPoint> points;
        std::generate_n(std::back_inserter(points), 5, [&] { return point(random); });
        switch (kind) {
        case 0: dc.MoveTo(points[0]); return dc.LineTo(points[1]);
        case 1: return dc.Polyline(points);
        case 2: return dc.Polygon(points);
        case 3: return dc.Rectangle(CRect(points[0], points[1]));
        case 4: return dc.Ellipse(CRect(points[0], points[1]));
        default: dc.SetPixel(points[0], RGB(200, 100, 50));
        }
    }

    unsigned m_seed;
    std::array<int, 4> m_dashes{12, 5, 0, 5};
    std::vector<CPen> m_pens{CPen(PS_SOLID, 0, RGB(255, 0, 0)),
                             CPen(PS_GEOMETRIC, 7, RGB(0, 200, 10)),
                             CPen(PS_DOT, 1, RGB(12, 34, 56)),
                             CPen(PS_DASH, 0, RGB(255, 255, 255)),
                             CPen(PS_NULL, 0, RGB(1, 2, 3)),
                             CPen(PS_GEOMETRIC_USERSTYLE, 0, CBrush(0), m_dashes),
                             CPen(PS_GEOMETRIC_USERSTYLE, 9, CBrush(RGB(90, 80, 255)), m_dashes)};
    std::vector<CBrush> m_brushes{CBrush(RGB(255, 255, 0)), CBrush(BS_HOLLOW, 0),
                                  CBrush(RGB(0, 0, 0))};
};

/// An image in which no two neighbours are alike, so that a pixel that changed is seen.
inline QImage motley(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    std::mt19937 random(7);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.setPixel(x, y, 0xff000000 | (random() & 0xffffff));
        }
    }
    return image;
}
