#pragma once

#include "platform/base/vexexport.h"
#include "vexge/geentity2d/vexgechaincurve2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cstdint>

/// A spiral from its centre outwards, as a chain of straight segments: of constant pitch, or of one
/// that changes by a ratio from turn to turn. Only set, getGePolyline and the rigid edits make the
/// chain anew; after a setter every other query still answers from the former one.
class VEXGE_EXPORT CVexGeSpiral : public CVexGeChainCurve2d {
public:
    CVexGeSpiral() : CVexGeChainCurve2d(VexGe::kGeSpiral) {}
    CVexGeSpiral(const CVexGeSpiral&) = default;
    CVexGeSpiral& operator=(const CVexGeSpiral& other);

    /// `divNum` segments a turn; `offsetDist` is the pitch, the growth of the radius in the first
    /// turn, `ratio` its factor from one turn to the next. The outer end lies at `startAng`
    /// radians.
    void set(int divNum, const CVexGePoint2d& center, double maxRadius, double minRadius,
             double startAng, double offsetDist, double ratio = 1.0);
    // False, with nothing stored, for a value that leaves no room between the radii.
    bool setMaxRadius(double radius);
    bool setMinRadius(double radius);
    bool setOffsetDist(double dist);
    void setCenter(const CVexGePoint2d& center) { m_center = center; }
    void setStartAngle(double angle) { m_startAng = angle; }
    void setDivNum(int divNum) { m_divNum = divNum; }
    [[nodiscard]] const CVexGePoint2d& center() const { return m_center; }
    [[nodiscard]] double maxRadius() const { return m_maxRadius; }
    [[nodiscard]] double minRadius() const { return m_minRadius; }
    [[nodiscard]] double startAng() const { return m_startAng; }
    [[nodiscard]] double divNum() const { return m_divNum; }
    [[nodiscard]] double offsetDist() const { return m_offsetDist; }
    [[nodiscard]] double ratio() const { return m_ratio; }
    /// Makes the chain anew and copies it; true when it has vertices.
    bool getGePolyline(CVexGePolyline2d& out);
    [[nodiscard]] const CVexGePolyline2d& chain() const override { return m_polyline; }
    /// Turns the chain alone: making it anew turns it back.
    void reverse() { m_polyline.reverse(); }

    /// The ratio takes no part.
    bool isEqualTo(const CVexGeEntity2d& other, const double& tol = kGeTol) const override;
    /// Centre == , all else but the chain exactly equal.
    bool operator==(const CVexGeSpiral& other) const;
    bool operator!=(const CVexGeSpiral& other) const { return !(*this == other); }

    CVexGeSpiral& scaleBy(double fx, double fy, const CVexGePoint2d& centre) override;
    CVexGeSpiral& scaleBy(double factor, const CVexGePoint2d& centre) override;
    CVexGeSpiral& mirror(const CVexGeLine2d& line) override;
    CVexGeSpiral& rotateBy(double angle, const CVexGePoint2d& centre) override;
    CVexGeSpiral& translateBy(const CVexGeVector2d& vector) override;
    /// Radii and pitch become what the matrix makes of their lengths along the x axis.
    CVexGeSpiral& transformBy(const CVexGeMatrix2d& matrix) override;
    bool isInsidePoint(const CVexGePoint2d& point) const override;
    /// 0.
    double curvatureAtParam(double param) const override;
    double curvatureAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    /// Writes max radius, min radius, pitch, start angle, divisions, centre, then the chain. The
    /// ratio is not kept.
    void save(CFile* file) const override;
    void read(CFile* file) override;

private:
    void rebuild();
    void layOut();
    [[nodiscard]] bool hasEnd() const;

    double m_maxRadius = 0.0;
    double m_minRadius = 0.0;
    double m_offsetDist = 0.0;
    double m_startAng = 0.0;
    std::int32_t m_divNum = 0;
    CVexGePoint2d m_center;
    CVexGePolyline2d m_polyline;
    double m_ratio = 1.0;
};
