#pragma once

#include "vexdb/dbobject/dbentity/vexdbcurveof.h"
#include "vexge/geentity2d/vexgecircarc2d.h"

class CVexDbCircle;

/// A circular arc, counter-clockwise from its start angle to its end angle (radians).
class VEXDB_EXPORT CVexDbArc : public CVexDbCurveOf<CVexGeCircArc2d> {
public:
    explicit CVexDbArc(CVexDbDatabase* database);
    CVexDbArc(const CVexDbArc& other);
    /// The whole turn of a circle, with its properties and database.
    explicit CVexDbArc(const CVexDbCircle& circle);
    /// From `p1` over `p2` to `p3`.
    CVexDbArc(const CVexGePoint2d& p1, const CVexGePoint2d& p2, const CVexGePoint2d& p3);
    CVexDbArc(const CVexGePoint2d& center, double radius, double startAngle, double endAngle);
    /// Between two points by its bulge, which is tan(sweep / 4): negative for clockwise.
    CVexDbArc(const CVexGePoint2d& p1, const CVexGePoint2d& p2, double bulge);
    ~CVexDbArc() override;
    /// Takes properties and geometry over.
    CVexDbArc& operator=(const CVexDbArc& other);
    CVexDbArc& operator=(const CVexDbEntity& other) override;

    /// Centre, start, middle of the sweep, end.
    void setGripPoints() override;
    /// The box of the display vertices.
    CVexDbRect GetOutRect() override;
    void Draw(CDC* dc) override;
    [[nodiscard]] bool trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const override;
    void makeProperty() override;
    bool checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b) override;
    bool checkInside(CVexGePoint2d& a, CVexGePoint2d& b) override;
    [[nodiscard]] bool centerPoint(CVexGePoint2d& center) const override;
    using CVexDbEntity::Draw;
    CVexDbEntity* Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters,
                       double tol) override;
    bool Extend(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& boundaries, double tol) override;

    [[nodiscard]] const CVexGeCircArc2d& geArc() const { return m_geometry; }
    // All of these refresh the grips and drop the display vertices.
    void set(const CVexGePoint2d& p1, const CVexGePoint2d& p2, const CVexGePoint2d& p3);
    void set(const CVexGePoint2d& center, double radius, double startAngle, double endAngle);
    void set(const CVexGePoint2d& p1, const CVexGePoint2d& p2, double bulge);
    void setCenter(const CVexGePoint2d& center);
    void setRadius(double radius);
    void setStartAngle(double angle);
    void setEndAngle(double angle);
    [[nodiscard]] CVexGePoint2d Center() const { return m_geometry.center(); }
    [[nodiscard]] double Radius() const { return m_geometry.radius(); }
    [[nodiscard]] double StartAngle() const { return m_geometry.startAng(); }
    [[nodiscard]] double EndAngle() const { return m_geometry.endAng(); }
    [[nodiscard]] double Bulge() const { return m_geometry.bulge(); }
    [[nodiscard]] CVexGePoint2d StartPoint() const { return m_geometry.startPoint(); }
    [[nodiscard]] CVexGePoint2d EndPoint() const { return m_geometry.endPoint(); }
    /// Computes the display vertices, logical units, anew. An arc that was never drawn has none.
    void InitGrVertexArray();
    [[nodiscard]] const std::vector<CPoint>& GrVertexArray() const { return m_grVertices; }

protected:
    CRect computeEntityRect() override;

private:
    std::vector<CPoint> m_grVertices;
};
