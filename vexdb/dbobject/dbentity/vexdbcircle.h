#pragma once

#include "vexdb/dbobject/dbentity/vexdbcurveof.h"
#include "vexge/geentity2d/vexgecircarc2d.h"

/// A full circle.
class VEXDB_EXPORT CVexDbCircle : public CVexDbCurveOf<CVexGeCircArc2d> {
public:
    explicit CVexDbCircle(CVexDbDatabase* database);
    CVexDbCircle(const CVexDbCircle& other);
    CVexDbCircle(const CVexGePoint2d& center, double radius);
    ~CVexDbCircle() override;
    /// Takes properties and geometry over.
    CVexDbCircle& operator=(const CVexDbCircle& other);
    CVexDbCircle& operator=(const CVexDbEntity& other) override;

    /// Centre, then right, top, left and bottom of the circle.
    void setGripPoints() override;
    CVexDbRect GetOutRect() override;
    void Draw(CDC* dc) override;
    [[nodiscard]] bool trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const override;
    void makeProperty() override;
    bool checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b) override;
    bool checkInside(CVexGePoint2d& a, CVexGePoint2d& b) override;
    [[nodiscard]] bool centerPoint(CVexGePoint2d& center) const override;
    using CVexDbEntity::Draw;
    /// Needs two cuts: the circle leaves the drawing, and the arc that stays is the caller's to
    /// add.
    CVexDbEntity* Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters,
                       double tol) override;

    [[nodiscard]] const CVexGeCircArc2d& geCircle() const { return m_geometry; }
    // These refresh the grips.
    void setCenter(const CVexGePoint2d& center);
    void setRadius(double radius);
    [[nodiscard]] CVexGePoint2d Center() const { return m_geometry.center(); }
    [[nodiscard]] double Radius() const { return m_geometry.radius(); }
    [[nodiscard]] CVexGePoint2d StartPoint() const { return m_geometry.startPoint(); }
};
