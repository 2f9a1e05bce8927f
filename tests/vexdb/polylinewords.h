#pragma once

#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/vexdbidset.h"

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

// How tests write a polyline down.

/// A vertex as the tests write it down.
struct Corner {
    double x = 0.0;
    double y = 0.0;
    double bulge = 0.0;
    double startWidth = -1.0;
    double endWidth = -1.0;
};

/// Puts the vertices into `polyline` with exactly these bulges, also where it closes.
inline void setCorners(CVexDbPolyline& polyline, const std::vector<Corner>& corners,
                       bool closed = false)
{
    CVexGePolyline2d chain;
    double lastBulge = 0.0;
    for (const Corner& corner : corners) {
        chain.appendVertex({corner.x, corner.y}, corner.bulge, corner.startWidth, corner.endWidth);
        lastBulge = corner.bulge;
    }
    chain.setClosed(closed);
    chain.setBulgeAt(chain.numVerts() - 1, lastBulge); // closing computes one of its own
    polyline.SetGeometry(chain);
}

/// A number of the tests' words: six digits, without a minus before a zero.
inline std::string wordOf(double number)
{
    constexpr double kMillion = 1e6;
    std::ostringstream text;
    text.precision(15);
    text << std::round(number * kMillion) / kMillion + 0.0;
    return text.str();
}

inline std::string wordOf(const CVexGePoint2d& point)
{
    return wordOf(point.x).append(1, ',').append(wordOf(point.y));
}

/// The vertices in words, a bulge that is not 0 after its vertex: "0,0 b1 10,0 closed".
inline std::string wordsOf(const CVexDbPolyline& polyline)
{
    std::ostringstream words;
    for (unsigned i = 0; i < polyline.NumVerts(); ++i) {
        words << (i > 0 ? " " : "") << wordOf(polyline.gePolyline().vertices()[i]);
        if (polyline.GetBulgeAt(i) != 0.0) {
            words << " b" << wordOf(polyline.GetBulgeAt(i));
        }
    }
    words << (polyline.IsClosed() ? " closed" : "");
    return words.str();
}

/// The polylines among `shown` that can be seen, the oldest first.
inline std::vector<std::string> visiblePolylines(const CVexDbIdSet& shown)
{
    std::vector<std::string> words;
    for (const CVexDbObjectId& id : shown) {
        const CVexDbObject* const object = id.getPObject();
        if (object->isVisiable() && object->classType() == VexDb::kPolyline) {
            words.push_back(wordsOf(static_cast<const CVexDbPolyline&>(*object)));
        }
    }
    return words;
}
