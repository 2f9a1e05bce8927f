#pragma once

#include "vexdb/dbobject/dbentity/vexdbcurve.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <map>

/// A straight line.
class VEXDB_EXPORT CVexDbLine : public CVexDbCurve {
public:
    explicit CVexDbLine(CVexDbDatabase* database);
    CVexDbLine(const CVexDbLine& other);
    CVexDbLine(const CVexGePoint2d& start, const CVexGePoint2d& end);
    ~CVexDbLine() override;
    /// Takes properties and geometry over.
    CVexDbLine& operator=(const CVexDbLine& other);
    CVexDbLine& operator=(const CVexDbEntity& other) override;

    bool save() override;
    bool read() override;
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
    bool intersectWith(CVexDbEntity& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeEllipArc2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeCircArc2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeLine2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    CVexDbEntity* Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters,
                       double tol) override;
    /// The end nearest `pick` moves, even where the boundary lies beyond the other end.
    bool Extend(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& boundaries, double tol) override;
    bool getOffset(CVexGePoint2d& side, CVexDbEntity*& result, double distance) override;

    [[nodiscard]] const CVexGeLine2d& geLine() const { return m_line; }
    /// Moves both ends; the caller refreshes the grips.
    void set(const CVexGePoint2d& start, const CVexGePoint2d& end);
    [[nodiscard]] CVexGePoint2d StartPoint() const { return m_line.startPoint(); }
    [[nodiscard]] CVexGePoint2d EndPoint() const { return m_line.endPoint(); }
    void setStartPoint(const CVexGePoint2d& start);
    void setEndPoint(const CVexGePoint2d& end);

protected:
    CRect computeEntityRect() override;

private:
    /// Points of the line by their parameter; of two with one parameter the first stays.
    using Cuts = std::map<double, CVexGePoint2d>;

    void setClassInfo();
    [[nodiscard]] Cuts cutsBy(const std::vector<CVexDbEntity*>& cutters, double tol) const;
    [[nodiscard]] double paramOfPick(const CVexGePoint2d& pick, double tol) const;
    void moveEnd(int end, const CVexGePoint2d& target);
    CVexDbEntity* cutOut(const Cuts& cuts, double pickParam);

    CVexGeLine2d m_line;
};
