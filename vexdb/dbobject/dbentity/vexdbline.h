#pragma once

#include "vexdb/dbobject/dbentity/vexdbcurveof.h"
#include "vexge/geentity2d/vexgeline2d.h"

/// A straight line.
class VEXDB_EXPORT CVexDbLine : public CVexDbCurveOf<CVexGeLine2d> {
public:
    explicit CVexDbLine(CVexDbDatabase* database);
    CVexDbLine(const CVexDbLine& other);
    CVexDbLine(const CVexGePoint2d& start, const CVexGePoint2d& end);
    ~CVexDbLine() override;
    /// Takes properties and geometry over.
    CVexDbLine& operator=(const CVexDbLine& other);
    CVexDbLine& operator=(const CVexDbEntity& other) override;

    /// Midpoint, start, end.
    void setGripPoints() override;
    CVexDbRect GetOutRect() override;
    void Draw(CDC* dc) override;
    [[nodiscard]] bool trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const override;
    void makeProperty() override;
    /// The midpoint or the start lies inside, or the line crosses a side.
    bool checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b) override;
    bool checkInside(CVexGePoint2d& a, CVexGePoint2d& b) override;
    using CVexDbEntity::Draw;
    CVexDbEntity* Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters,
                       double tol) override;
    /// The end nearest `pick` moves, even where the boundary lies beyond the other end.
    bool Extend(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& boundaries, double tol) override;

    [[nodiscard]] const CVexGeLine2d& geLine() const { return m_geometry; }
    /// Moves both ends; the caller refreshes the grips.
    void set(const CVexGePoint2d& start, const CVexGePoint2d& end);
    [[nodiscard]] CVexGePoint2d StartPoint() const { return m_geometry.startPoint(); }
    [[nodiscard]] CVexGePoint2d EndPoint() const { return m_geometry.endPoint(); }
    void setStartPoint(const CVexGePoint2d& start);
    void setEndPoint(const CVexGePoint2d& end);

protected:
    CRect computeEntityRect() override;
};
