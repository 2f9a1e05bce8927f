#pragma once

#include "platform/base/vexexport.h"
#include "vexge/geentity2d/vexgechaincurve2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <vector>

/// A control polygon with its corners rounded by circular arcs. It keeps the chain of straight legs
/// and arcs beside the control points; only getGePolyline and the rigid edits make it anew, so
/// after a change of points or fit every other query still answers from the former one.
class VEXGE_EXPORT CVexGeSpline : public CVexGeChainCurve2d {
public:
    CVexGeSpline() : CVexGeChainCurve2d(VexGe::kGeSpline) {}
    CVexGeSpline(const CVexGeSpline&) = default;
    CVexGeSpline& operator=(const CVexGeSpline& other);

    /// Removes all control points and makes room for `n`.
    void setSize(unsigned n);
    /// Always true.
    bool appendCtrlPt(const CVexGePoint2d& point);
    /// Inserts before `index`; the count appends, a greater one is refused.
    bool AddCtrlPt(unsigned index, const CVexGePoint2d& point);
    // False, with nothing changed, for an index beyond the last point.
    bool setPointAt(unsigned index, const CVexGePoint2d& point);
    bool removeCtrlPtAt(unsigned index);
    bool getCtrlPtAt(unsigned index, CVexGePoint2d& out) const;
    [[nodiscard]] unsigned numCtrlVerts() const
    {
        return static_cast<unsigned>(m_ctrlPoints.size());
    }
    /// The share of the shorter leg that a corner takes; 1 and more are not stored. Always true.
    bool setFitParam(double fit);
    [[nodiscard]] double getFitParam() const { return m_fitParam; }
    /// Makes the chain anew and copies it; true when it has vertices.
    bool getGePolyline(CVexGePolyline2d& out);
    [[nodiscard]] const CVexGePolyline2d& chain() const override { return m_polyline; }
    /// Turns the chain and the order of the control points.
    void reverse();
    /// One rounded corner: `in` is the point before, the corner, the point after; `out` gets the
    /// point before, both ends of the arc, the point after. Always true.
    bool GetPolyVertex(const CVexGePoint2d (&in)[3], CVexGePoint2d (&out)[4], double& bulge) const;

    bool isEqualTo(const CVexGeEntity2d& other, const double& tol = kGeTol) const override;
    /// Fit exactly equal, each control point == .
    bool operator==(const CVexGeSpline& other) const;
    bool operator!=(const CVexGeSpline& other) const { return !(*this == other); }

    CVexGeSpline& scaleBy(double fx, double fy, const CVexGePoint2d& centre) override;
    CVexGeSpline& scaleBy(double factor, const CVexGePoint2d& centre) override;
    CVexGeSpline& mirror(const CVexGeLine2d& line) override;
    CVexGeSpline& rotateBy(double angle, const CVexGePoint2d& centre) override;
    CVexGeSpline& translateBy(const CVexGeVector2d& vector) override;
    CVexGeSpline& transformBy(const CVexGeMatrix2d& matrix) override;
    bool isInsidePoint(const CVexGePoint2d& point) const override;
    /// Writes the fit, the count, 20 bytes a control point, then the chain.
    void save(CFile* file) const override;
    void read(CFile* file) override;

    /// Offsets the chain by `dist` on the side of `side` and takes its vertices as control points;
    /// true also when the chain had no offset and stayed.
    bool offset(const CVexGePoint2d& side, double dist);
    /// Makes every vertex of the chain a control point.
    void setGePolylineToCtrlPoint();

private:
    void rebuild();

    std::vector<CVexGePoint2d> m_ctrlPoints;
    CVexGePolyline2d m_polyline;
    double m_fitParam = 0.49;
};
