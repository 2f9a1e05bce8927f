#pragma once

#include "vexdb/dbobject/dbentity/vexdbentity.h"

#include <span>

class CVexGePolyline2d;

/// A rectangle parallel to the axes: an entity, and the value in which extents are told. As extents
/// its `top` is the smaller y; nothing sorts the sides. As a value it costs no heap memory.
class VEXDB_EXPORT CVexDbRect : public CVexDbEntity {
public:
    /// All four sides 0.
    explicit CVexDbRect(CVexDbDatabase* database);
    /// Takes left and top from the first point, right and bottom from the second, unsorted.
    CVexDbRect(const CVexGePoint2d& leftTop, const CVexGePoint2d& rightBottom);
    CVexDbRect(const CVexDbRect& other);
    ~CVexDbRect() override;
    CVexDbRect& operator=(const CVexDbRect& other);
    CVexDbRect& operator=(const CVexDbEntity& other) override;

    bool save() override;
    bool read() override;
    void setGripPoints() override;
    CVexDbRect GetOutRect() override;
    void Draw(CDC* dc) override;
    [[nodiscard]] bool trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const override;
    void makeProperty() override;
    /// On any of the four sides.
    [[nodiscard]] int isOn(const CVexGePoint2d& point, const double& tol) const override;
    /// One of the four corners lies inside; a side that crosses does not count.
    bool checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b) override;
    bool checkInside(CVexGePoint2d& a, CVexGePoint2d& b) override;
    using CVexDbEntity::Draw;
    bool intersectWith(CVexDbEntity& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeEllipArc2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeCircArc2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeLine2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;

    [[nodiscard]] CVexGePoint2d LeftTop() const { return {m_left, m_top}; }
    [[nodiscard]] CVexGePoint2d RightBottom() const { return {m_right, m_bottom}; }
    [[nodiscard]] CVexGePoint2d LeftBottom() const { return {m_left, m_bottom}; }
    [[nodiscard]] CVexGePoint2d RightTop() const { return {m_right, m_top}; }
    void setLeftTop(const CVexGePoint2d& point);
    void setRightBottom(const CVexGePoint2d& point);
    /// Without sign.
    [[nodiscard]] double Width() const;
    [[nodiscard]] double Height() const;
    /// Left equals right and top equals bottom, exactly.
    [[nodiscard]] bool isRectEmpty() const { return m_left == m_right && m_top == m_bottom; }
    [[nodiscard]] bool isPtInRect(const CVexGePoint2d& point) const;
    /// The sides in logical units, unsorted.
    explicit operator CRect() const;
    [[nodiscard]] CRect GetDevRect() const { return CRect(*this); }
    /// Appends the corners, without widths, and closes the polyline.
    void getPolyline(CVexGePolyline2d& polyline) const;

    // What the transforms of an entity do to a rectangle. None refreshes the grips.
    CVexDbRect& translateBy(const CVexGeVector2d& vector);
    /// Turns the centre about `base`; size and direction of the sides stay.
    CVexDbRect& rotateBy(double angle, const CVexGePoint2d& base);
    // These move two opposite corners, so that left may end up to the right.
    CVexDbRect& scaleBy(double factor, const CVexGePoint2d& base);
    CVexDbRect& scaleBy(double fx, double fy, const CVexGePoint2d& base);
    CVexDbRect& mirror(const CVexGeLine2d& line);

protected:
    CRect computeEntityRect() override;

private:
    template <class Rect, class Archive>
    static void walkFields(Rect& rect, Archive&& archive);
    [[nodiscard]] CVexGePoint2d centre() const;
    [[nodiscard]] CVexGePolyline2d outline() const;
    void setSides(const CVexGePoint2d& leftTop, const CVexGePoint2d& rightBottom);

    double m_top = 0.0;
    double m_bottom = 0.0;
    double m_left = 0.0;
    double m_right = 0.0;
};

/// The smallest rectangle around the points, its `top` the smaller y; all 0 for none. A coordinate
/// that is not a number does not count.
VEXDB_EXPORT CVexDbRect boundsOf(std::span<const CVexGePoint2d> points);
