#pragma once

#include "platform/base/vexexport.h"
#include "vexge/geentity2d/vexgechaincurve2d.h"
#include "vexge/geentity2d/vexgecspline2d_system.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cstddef>
#include <vector>

/// A cubic curve through all its control points, drawn and measured as a chain of short straight
/// pieces. Each control point has an option byte. The chain is made when it is first asked for and
/// kept until the control data changes.
class VEXGE_EXPORT CVexGeCSpline2d : public CVexGeChainCurve2d {
public:
    /// Bits of a control point's option.
    enum CtrlOption : unsigned char {
        kCorner = 1, ///< the curve breaks here; the runs on either side are solved apart
        kReal = 2,   ///< placed by the user, not generated
    };
    using PointList = std::vector<CVexGePoint2d>;
    using OptionList = std::vector<unsigned char>;

    /// `divFactor` is the length of chord that a piece covers, in drawing units.
    explicit CVexGeCSpline2d(double divFactor = 0.5);
    /// All options 0.
    explicit CVexGeCSpline2d(const PointList& points);
    CVexGeCSpline2d(const CVexGeCSpline2d&) = default;
    CVexGeCSpline2d& operator=(const CVexGeCSpline2d& other);

    /// All options become 0; the closed flag stays.
    void set(const PointList& points);
    /// One option a point; missing ones are 0.
    void set(const PointList& points, const OptionList& options);
    /// Appends all of `points`; always true. Null `options` are 0.
    bool appendCtrlPt(const PointList* points, const OptionList* options);
    bool appendCtrlPt(const CVexGePoint2d& point, unsigned char option);
    /// Inserts before `index`; the count appends, a greater one is refused.
    bool addCtrlPt(unsigned index, const CVexGePoint2d& point, unsigned char option);
    // False, with nothing changed, for an index beyond the last point.
    bool setPointAt(unsigned index, const CVexGePoint2d& point, unsigned char option);
    bool removeCtrlPtAt(unsigned index);
    bool getCtrlPtAt(unsigned index, CVexGePoint2d& point, unsigned char& option) const;
    bool getCtrlPtAt(unsigned index, CVexGePoint2d& point) const;
    bool setControlOption(unsigned index, unsigned char option);
    /// 0 for an index beyond the last point.
    [[nodiscard]] unsigned char getCtrlOption(unsigned index) const;
    [[nodiscard]] unsigned numCtrlVerts() const
    {
        return static_cast<unsigned>(m_ctrlPoints.size());
    }
    [[nodiscard]] double divFactor() const { return m_divFactor; }
    /// Turns the order of points and options.
    void reverse();
    /// The flag, or end points nearer than 0.02.
    [[nodiscard]] bool closed() const;
    /// The flag alone; it decides how the curve is made.
    [[nodiscard]] bool isClosed() const { return m_closedFlag; }
    /// Sets the flag; closing removes a last point that repeats the first.
    void setClosed(bool flag);
    /// Whether some point is a corner.
    [[nodiscard]] bool hasCtrlOption() const;

    // Solve the tangents, of all points as one run or of the given run; nothing is drawn yet.
    void generate() const;
    void generate(const PointList& points) const;
    void genClosed() const;
    /// What was solved last.
    [[nodiscard]] const CVexGeCSplineSystem& system() const { return m_system; }
    /// Makes the curve, unless it stands; false for fewer than 2 points.
    bool genCurve() const;
    /// Makes the curve and points `out` at its points, which belong to the spline and live until
    /// its next edit; their number, 0 with `out` as it was for fewer than 2 control points.
    int getCurve(PointList*& out) const;
    /// The curve's points as an open chain; false, with `out` as it was, without a curve.
    bool getGePolyline(CVexGePolyline2d& out) const;
    /// The curve's points `from` to `to`, both included, as far as they exist. False, with `out` as
    /// it was, when the curve has fewer than two points.
    bool getSubGePolyline(CVexGePolyline2d& out, int from, int to) const;
    /// The control polygon, with the closed flag.
    void asPolyline(CVexGePolyline2d& out) const;
    [[nodiscard]] const CVexGePolyline2d& chain() const override;

    [[nodiscard]] int numRealCtrlVerts() const;
    // Replace `out` by the places on the curve of all control points, of the real ones, of the
    // corners between the curve's first and last place. False without a curve.
    bool getControlPtIndex(std::vector<unsigned long>& out) const;
    bool getRealControlPtIndex(std::vector<unsigned long>& out) const;
    bool getVertexControlPtIndex(std::vector<unsigned long>& out) const;
    /// Makes the inner real points generated ones; corners stay as they are.
    void clearRealControl();
    /// Inserts `point`, real, where its parameter falls among the control points: as the second
    /// one when it lies off the curve. False at or beyond the end of an open curve.
    bool addRealControlPoint(CVexGePoint2d point);
    /// Joins `other`, which stays as it is, at the first of the ends that meet within 0.02: last
    /// to first, last to last, first to first, first to last. `index` becomes `other`'s count less
    /// 1 for a join at the end (this spline's count less 1 for a line or arc), 0 for one at the
    /// front. False when no ends meet or either is flagged closed.
    bool appendCSpline(const CVexGeCSpline2d* other, int& index);
    /// The far end becomes a real corner.
    bool appendCSpline(const CVexGeLine2d* line, int& index);
    /// As for a line, with points on the arc in between, one for 15 degrees.
    bool appendCSpline(const CVexGeCircArc2d* arc, int& index);
    /// Spaces the control points for an offset by `dist`, in place, and makes `out` their polygon:
    /// generated points give way to up to 5 a span, and points nearer than 0.5 go.
    void getOffsetPolyline(CVexGePolyline2d& out, double dist);
    /// Takes the vertices of the offset of that polygon as control points; true also when there is
    /// none. Each option stays at its index.
    bool offset(const CVexGePoint2d& side, double dist);

    /// Points within `tol` and equal options; the closed flag takes no part.
    bool isEqualTo(const CVexGeEntity2d& other, const double& tol = kGeTol) const override;

    CVexGeCSpline2d& scaleBy(double fx, double fy, const CVexGePoint2d& centre) override;
    CVexGeCSpline2d& scaleBy(double factor, const CVexGePoint2d& centre) override;
    CVexGeCSpline2d& mirror(const CVexGeLine2d& line) override;
    CVexGeCSpline2d& rotateBy(double angle, const CVexGePoint2d& centre) override;
    CVexGeCSpline2d& translateBy(const CVexGeVector2d& vector) override;
    CVexGeCSpline2d& transformBy(const CVexGeMatrix2d& matrix) override;
    using CVexGeChainCurve2d::length;
    /// -1.0 without a curve.
    double length() const override;
    /// 0.
    double curvatureAtParam(double param) const override;
    double curvatureAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    /// Writes the closed flag, the count, 20 bytes a point, one byte an option.
    void save(CFile* file) const override;
    void read(CFile* file) override;

private:
    // What the control points make; filled when asked for.
    struct Generated {
        PointList curve;
        std::vector<std::size_t> places; // of each control point in the curve
        CVexGePolyline2d chain;
        bool valid = false;
    };

    [[nodiscard]] bool isCorner(unsigned index) const;
    void makeCurve() const;
    void changed() { m_generated.valid = false; }
    template <class Wanted>
    void pushIndices(std::vector<unsigned long>& out, double tol, const Wanted& wanted) const;
    [[nodiscard]] std::vector<double> controlParams() const;
    void appendSpaced(PointList& points, OptionList& options, double from, double to,
                      double dist) const;
    void spaceControlPoints(double dist);
    void dropNearPoints();
    bool join(const PointList& points, const OptionList& options, int appended, int& index);

    double m_divFactor;
    bool m_closedFlag = false;
    PointList m_ctrlPoints;
    OptionList m_ctrlOptions;
    mutable CVexGeCSplineSystem m_system;
    mutable Generated m_generated;
};
