#pragma once

#include "vexdb/dbobject/dbentity/vexdbentity.h"

/// An entity that is one curve of the kernel: its queries are the curve's.
class VEXDB_EXPORT CVexDbCurve : public CVexDbEntity {
public:
    explicit CVexDbCurve(CVexDbDatabase* database);
    CVexDbCurve(const CVexDbCurve& other);
    ~CVexDbCurve() override;
    void makeProperty() override;
    /// The box of the grips, not of the true shape.
    CVexDbRect GetOutRect() override;
    void OnCurveChanged() override;
    [[nodiscard]] int isOn(const CVexGePoint2d& point, const double& tol) const override;
    [[nodiscard]] bool IsCurveEntity() const override;
    [[nodiscard]] bool IsClosedCurve() const override;
    [[nodiscard]] int IsBoundary() const override;
    void SetBoundary(int tag) override;
    /// Turns the direction of the curve round; nothing for most kinds.
    virtual void Reverse();

    /// The geometry, owned by the concrete class.
    [[nodiscard]] CVexGeEntity2d* geCurve() const { return m_geCurve; }
    // The geometry's own answers: parameters from 0 to 1, lengths in drawing units, -1.0 for a
    // point off the curve.
    double length();
    double length(double fromParam, double toParam, double tol);
    double paramAtDist(double fromParam, double dist, bool forward, double tol);
    double paramAtPoint(CVexGePoint2d point, double tol);
    CVexGePoint2d pointAtParam(double param);
    CVexGeVector2d normalAtParam(double param);
    CVexGeVector2d normalAtPoint(CVexGePoint2d point, double tol);
    bool PerpVecFromPoint(CVexGePoint2d& point, CVexGeVector2d& out, double tol);
    /// Takes the entity's properties over; the geometry is the concrete class's.
    CVexDbCurve& operator=(const CVexDbCurve& other);
    CVexDbCurve& operator=(const CVexDbEntity& other) override;
    /// The cached display vertices no longer fit the geometry.
    void clearVertexCache() { m_grVertexValid = false; }

protected:
    void setClassInfo(VexDb::ClassType type, int statusBits, CVexGeEntity2d* geometry);
    bool m_grVertexValid = false;

private:
    CVexGeEntity2d* m_geCurve = nullptr;
};
