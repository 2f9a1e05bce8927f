#include "vexdb/dbobject/dbentity/vexdbcurve.h"

#include "vexdb/dbobject/dbentity/vexdbentitykinds.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/vexdbdatabase.h"

CVexDbCurve::CVexDbCurve(CVexDbDatabase* database) : CVexDbEntity(database)
{
    setClassType(VexDb::kCurve);
}

/// The geometry is the source's until the concrete class points at its own.
CVexDbCurve::CVexDbCurve(const CVexDbCurve& other) = default;

CVexDbCurve::~CVexDbCurve() = default;

void CVexDbCurve::setClassInfo(VexDb::ClassType type, int statusBits, CVexGeEntity2d* geometry)
{
    setClassType(type);
    setObjectStatus(statusBits);
    m_geCurve = geometry;
}

CVexDbCurve& CVexDbCurve::operator=(const CVexDbCurve& other)
{
    CVexDbEntity::operator=(other);
    return *this;
}

CVexDbCurve& CVexDbCurve::operator=(const CVexDbEntity& other)
{
    CVexDbEntity::operator=(other);
    return *this;
}

void CVexDbCurve::makeProperty()
{
    CVexDbEntity::makeProperty();
}

CVexDbRect CVexDbCurve::GetOutRect()
{
    refreshGrips();
    return boundsOf(m_gripPoints);
}

void CVexDbCurve::OnCurveChanged()
{
    if (m_boundary == 0 || database() == nullptr) {
        return;
    }
    CVexDbBlockTableRecord* modelSpace = nullptr;
    if (database()->blocks().getRecord(CVexDbBlockTable::kModelSpace, modelSpace, false)) {
        modelSpace->OnCurveChanged(this, m_boundary);
    }
}

int CVexDbCurve::isOn(const CVexGePoint2d& point, const double& tol) const
{
    return m_geCurve->isOn(point, tol);
}

bool CVexDbCurve::IsCurveEntity() const
{
    return true;
}

bool CVexDbCurve::IsClosedCurve() const
{
    const auto isClosed = entityKind(classType()).isClosed;
    return isClosed != nullptr && isClosed(*this);
}

int CVexDbCurve::IsBoundary() const
{
    return m_boundary;
}

void CVexDbCurve::SetBoundary(int tag)
{
    m_boundary = tag;
}

void CVexDbCurve::Reverse()
{
}

double CVexDbCurve::length()
{
    return m_geCurve->length();
}

double CVexDbCurve::length(double fromParam, double toParam, double tol)
{
    return m_geCurve->length(fromParam, toParam, tol);
}

double CVexDbCurve::paramAtDist(double fromParam, double dist, bool forward, double tol)
{
    return m_geCurve->paramAtDist(fromParam, dist, forward, tol);
}

double CVexDbCurve::paramAtPoint(CVexGePoint2d point, double tol)
{
    return m_geCurve->paramAtPoint(point, tol);
}

CVexGePoint2d CVexDbCurve::pointAtParam(double param)
{
    return m_geCurve->pointAtParam(param);
}

CVexGeVector2d CVexDbCurve::normalAtParam(double param)
{
    return m_geCurve->normalAtParam(param);
}

CVexGeVector2d CVexDbCurve::normalAtPoint(CVexGePoint2d point, double tol)
{
    return m_geCurve->normalAtPoint(point, tol);
}

bool CVexDbCurve::PerpVecFromPoint(CVexGePoint2d& point, CVexGeVector2d& out, double tol)
{
    return m_geCurve->perpVecFromPoint(point, out, tol);
}
