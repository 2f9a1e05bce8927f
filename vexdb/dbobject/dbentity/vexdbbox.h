#pragma once

#include "vexdb/dbobject/dbentity/vexdbcurveof.h"
#include "vexge/geentity2d/vexgerect2d.h"

#include <array>

class CVexDbPolyline;
class CVexGePolyline2d;

/// A rectangle in any direction, as a closed curve.
class VEXDB_EXPORT CVexDbBox : public CVexDbCurveOf<CVexGeRect2d> {
public:
    explicit CVexDbBox(CVexDbDatabase* database);
    CVexDbBox(const CVexDbBox& other);
    CVexDbBox(const CVexGePoint2d& base, const CVexGeVector2d& size, double rotation = 0.0);
    CVexDbBox(const CVexGePoint2d& base, double width, double height, double rotation);
    ~CVexDbBox() override;
    /// Takes properties and geometry over.
    CVexDbBox& operator=(const CVexDbBox& other);
    CVexDbBox& operator=(const CVexDbEntity& other) override;

    /// Corner, middle of the side behind it, next corner, and so on round.
    void setGripPoints() override;
    CVexDbRect GetOutRect() override;
    void Draw(CDC* dc) override;
    [[nodiscard]] bool trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const override;
    void makeProperty() override;
    /// One of the four corners lies inside; a side that crosses does not count.
    bool checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b) override;
    bool checkInside(CVexGePoint2d& a, CVexGePoint2d& b) override;
    using CVexDbEntity::Draw;

    [[nodiscard]] const CVexGeRect2d& geRect() const { return m_geometry; }
    // These refresh the grips. Set by width and height, SetWidth and SetHeight put the corner
    // opposite the base where an unrotated box has it, as the geometry does.
    void Set(const CVexGePoint2d& base, const CVexGeVector2d& size, double rotation = 0.0);
    void Set(const CVexGePoint2d& base, double width, double height, double rotation);
    void SetBasePoint(const CVexGePoint2d& point);
    /// Takes width and height from `point` as an unrotated box does, and turns the corner then.
    void SetDiagonalPoint(const CVexGePoint2d& point);
    void SetWidth(double width);
    void SetHeight(double height);
    /// Radians, about the base.
    void SetRotation(double rotation);
    [[nodiscard]] double Width() const { return m_geometry.width(); }
    [[nodiscard]] double Height() const { return m_geometry.height(); }
    /// The diagonal's length.
    [[nodiscard]] double Diagonal() const { return m_geometry.diagonal(); }
    [[nodiscard]] double Rotation() const { return m_geometry.rotation(); }
    [[nodiscard]] CVexGePoint2d BasePoint() const { return m_geometry.basePoint(); }
    /// The corner opposite the base.
    void GetDiagonPoint(CVexGePoint2d& out) const { m_geometry.getDiagonPoint(out); }
    void GetPolyline(CVexGePolyline2d& out) const;
    /// Gives `polyline` the outline in place of its vertices, and layer, linetype, colour and
    /// weight.
    void ConvertToPolyline(CVexDbPolyline& polyline) const;

private:
    [[nodiscard]] std::array<CVexGePoint2d, 4> corners() const;
};
