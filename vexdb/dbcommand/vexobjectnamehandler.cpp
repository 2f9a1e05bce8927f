#include "vexdb/dbcommand/vexobjectnamehandler.h"

#include <array>
#include <span>

namespace {

// By VexDb::ClassType: a class that is added goes to its number's place.
constexpr std::array kClassNames = {
    L"Entity",
    L"Curve",
    L"Arc",
    L"Circle",
    L"Ellipse",
    L"EllipseArc",
    L"Line",
    L"Polyline",
    L"Spline",
    L"CubicSpline",
    L"Spiral",
    L"Cobweb",
    L"BlockInsert",
    L"Hatch",
    L"Point",
    L"Text",
    L"Rectangle",
    L"Dimension",
    L"2LineAngularDim",
    L"3PointAngularDim",
    L"AlignedDim",
    L"DiametricDim",
    L"HorizontalDim",
    L"LeaderDim",
    L"RadialDim",
    L"VerticalDim",
    L"Box",
    L"Image",
    L"Symbol",
    L"AttribDefinition",
    L"Attribute",
    L"TextTable",
    L"BlockTable",
    L"ColorTable",
    L"DisplayTable",
    L"LayerTable",
    L"EntityTable",
    L"LinetypeTable",
    L"SymbolTable",
    L"TextStyleTable",
    L"ProjectInfoTable",
    L"RevisionTable",
    L"BlockTableRecord",
    L"ColorTableRecord",
    L"DisplayTableRecord",
    L"EntityTableRecord",
    L"LayerTableRecord",
    L"LinetypeTableRecord",
    L"SymbolTableRecord",
    L"TextStyleTableRecord",
    L"ProjectInfoTableRecord",
    L"RevisionTableRecord",
    L"CommandHandler",
    L"UndoHandler",
    L"Not Selected",
};

constexpr std::array kPolylineTypes = {L"None", L"Composite"};

int fill(std::vector<CString>& table, std::span<const wchar_t* const> names)
{
    table.assign(names.begin(), names.end());
    return static_cast<int>(table.size());
}

CString entryOf(const std::vector<CString>& table, int index)
{
    return index < 0 || index >= static_cast<int>(table.size())
               ? CString()
               : table[static_cast<std::size_t>(index)];
}

} // namespace

int CVexObjectNameHandler::LoadName(const CString& /*path*/)
{
    return fill(m_names, kClassNames);
}

int CVexObjectNameHandler::LoadType(const CString& /*path*/)
{
    return fill(m_types, kPolylineTypes);
}

CString CVexObjectNameHandler::getName(int index) const
{
    return entryOf(m_names, index);
}

CString CVexObjectNameHandler::getPolyType(int index) const
{
    return entryOf(m_types, index);
}
