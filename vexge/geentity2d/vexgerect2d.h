#pragma once

#include "platform/base/vexexport.h"
#include "vexge/geentity2d/vexgeentity2d.h"

#include <vector>

class CVexGeEllipArc2d;
class CVexGePolyline2d;

/// A rectangle by its base corner, signed width and height, a rotation about the base in radians,
/// and the corner opposite the base. Most queries are those of its closed polyline.
///
/// The diagonal corner is kept, not derived: set(base, width, height, rotation), setWidth,
/// setHeight and read put it where an unrotated rectangle has it.
class VEXGE_EXPORT CVexGeRect2d : public CVexGeEntity2d {
public:
    constexpr CVexGeRect2d() : CVexGeEntity2d(VexGe::kGeRect2d) {}
    constexpr CVexGeRect2d(const CVexGeRect2d&) = default;
    CVexGeRect2d(const CVexGePoint2d& base, const CVexGeVector2d& size, double rotation);
    CVexGeRect2d(const CVexGePoint2d& base, double width, double height, double rotation);
    CVexGeRect2d& operator=(const CVexGeRect2d& other);

    /// As the constructors: the diagonal is rotated.
    CVexGeRect2d& set(const CVexGePoint2d& base, const CVexGeVector2d& size, double rotation);
    /// Puts the diagonal at base + (width, height), unrotated, unlike the constructor.
    CVexGeRect2d& set(const CVexGePoint2d& base, double width, double height, double rotation);
    /// Turns the diagonal about the base by the difference to the old rotation.
    void setRotation(double rotation);
    /// Moves the diagonal with the base.
    void setBasePoint(const CVexGePoint2d& point);
    // Both put the diagonal at base + (width, height), unrotated.
    void setWidth(double width);
    void setHeight(double height);
    // By reference: a property row points at the number itself.
    [[nodiscard]] const double& rotation() const { return m_rotation; }
    [[nodiscard]] const double& width() const { return m_width; }
    [[nodiscard]] const double& height() const { return m_height; }
    [[nodiscard]] const CVexGePoint2d& basePoint() const { return m_base; }
    void getDiagonPoint(CVexGePoint2d& out) const { out = m_diagonal; }
    /// The length of the diagonal.
    [[nodiscard]] double diagonal() const { return (m_diagonal - m_base).length(); }
    /// The middle between the base and the diagonal corner.
    [[nodiscard]] CVexGePoint2d centerPoint() const;
    /// Replaces `out` by the four corners, the base first, the diagonal third; 4.
    int getVertex(std::vector<CVexGePoint2d>& out) const;
    /// Makes `out` the closed polyline of the corners, without widths.
    void getPolyline(CVexGePolyline2d& out) const;

    bool isEqualTo(const CVexGeEntity2d& other, const double& tol = kGeTol) const override;
    /// Bases, widths and heights differ by at most `tol`, rotations by less.
    bool isEqualTo(const CVexGeRect2d& other, const double& tol = kGeTol) const;
    /// Bases by the points' ==; width, height and rotation exactly.
    bool operator==(const CVexGeRect2d& other) const;
    bool operator!=(const CVexGeRect2d& other) const { return !(*this == other); }

    /// 1 on one of the four edges.
    int isOn(const CVexGePoint2d& point, const double& tol = kGeEpsilon) const override;
    CVexGeRect2d& scaleBy(double fx, double fy, const CVexGePoint2d& centre) override;
    CVexGeRect2d& scaleBy(double factor, const CVexGePoint2d& centre) override;
    /// Width and height keep their values and their signs.
    CVexGeRect2d& mirror(const CVexGeLine2d& line) override;
    CVexGeRect2d& rotateBy(double angle, const CVexGePoint2d& centre) override;
    CVexGeRect2d& translateBy(const CVexGeVector2d& vector) override;
    CVexGeRect2d& transformBy(const CVexGeMatrix2d& matrix) override;
    bool isInsidePoint(const CVexGePoint2d& point) const override;
    double length() const override;
    double length(double fromParam, double toParam, double tol = kGeEpsilon) const override;
    double paramAtDist(double fromParam, double dist, bool forward,
                       double tol = kGeEpsilon) const override;
    double paramAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    double distAtParam(double param) const override;
    double distAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    CVexGePoint2d pointAtDist(double dist) const override;
    CVexGePoint2d pointAtParam(double param) const override;
    CVexGeVector2d normalAtParam(double param) const override;
    CVexGeVector2d normalAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    /// The closest point of the last edge that is nearer than 1 / tol, not of the nearest edge; the
    /// origin when there is none.
    CVexGePoint2d closestPointTo(const CVexGePoint2d& point,
                                 double tol = kGeEpsilon) const override;
    CVexGePoint2d closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                 double tol = kGeEpsilon) const override;
    double distanceTo(const CVexGeLine2d& line, double tol = kGeEpsilon) const override;
    double distanceTo(const CVexGePoint2d& point, double tol = kGeEpsilon) const override;
    /// 0, as straight edges have it.
    double curvatureAtParam(double param) const override;
    double curvatureAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    bool perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                          double tol = kGeEpsilon) const override;
    /// Writes base, width, height, rotation: 44 bytes. The diagonal is not kept.
    void save(CFile* file) const override;
    void read(CFile* file) override;

    // The polyline's intersections.
    bool intersectWith(const CVexGeLine2d& line, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGeCircArc2d& arc, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGeEllipArc2d& ellipse, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    /// Always false, with no points.
    bool intersectWith(const CVexGePolyline2d& polyline, int& count,
                       std::vector<CVexGePoint2d>& out, Intersect kind,
                       double tol = kGeEpsilon) const;

    /// Becomes the offset of its polyline at `dist` towards `side`, or stays where that has none.
    /// The rotation stays, width and height lose their signs. True, but for an offset that has
    /// fewer than four corners.
    bool offset(const CVexGePoint2d& side, double dist);

private:
    [[nodiscard]] CVexGePolyline2d polyline() const;
    void placeDiagonalUpright();
    void takeSizeFromDiagonal();

    CVexGePoint2d m_base;
    double m_width = 0.0;
    double m_height = 0.0;
    double m_rotation = 0.0;
    CVexGePoint2d m_diagonal;
};
