#pragma once

#include "vexdb/dbobject/vexdbrefset.h"
#include "vexdb/dbobject/vexdbtablerecord.h"
#include "vexge/gemath/vexgepoint2d.h"
#include "vexge/gemath/vexgepoint3d.h"

#include <cstdint>
#include <vector>

/// A vertex of a symbol: a point with a byte of its own. In a file 21 bytes.
class VEXDB_EXPORT CVexDbSymPoint : public CVexGePoint2d {
public:
    static constexpr int kFileSize = 21;

    std::uint8_t flag = 0;

    CVexDbSymPoint() = default;
    CVexDbSymPoint(const CVexGePoint2d& point, std::uint8_t flagByte)
        : CVexGePoint2d(point), flag(flagByte)
    {
    }
    void save(CFile* file) const override;
    void read(CFile* file) override;
};

/// A symbol: one polyline that symbol entities repeat.
class VEXDB_EXPORT CVexDbSymbolTableRecord : public CVexDbTableRecord, public CVexDbRefSet {
public:
    explicit CVexDbSymbolTableRecord(CVexDbDatabase* database);
    CVexDbSymbolTableRecord(const CVexDbSymbolTableRecord& other);
    ~CVexDbSymbolTableRecord() override;
    bool save() override;
    bool read() override;
    CVexDbSymbolTableRecord& operator=(const CVexDbSymbolTableRecord& other);

    void SetBase(const CVexGePoint3d& base) { m_base = base; }
    void SetBase(const CVexGePoint2d& base) { SetBase(base.x, base.y, 0.0); }
    void SetBase(double x, double y, double z) { m_base = CVexGePoint3d(x, y, z); }
    [[nodiscard]] CVexGePoint2d GetBase2() const { return CVexGePoint2d(m_base.x, m_base.y); }
    [[nodiscard]] CVexGePoint3d GetBase3() const { return m_base; }
    /// The origin outside of the list, so also for the ends of an empty one.
    [[nodiscard]] CVexDbSymPoint GetPointAt(unsigned long index) const;
    [[nodiscard]] CVexDbSymPoint GetStartPoint() const { return GetPointAt(0); }
    [[nodiscard]] CVexDbSymPoint GetEndPoint() const { return GetPointAt(NumPoints() - 1); }
    [[nodiscard]] unsigned long NumPoints() const { return m_points.size(); }
    void AppendPoint(const CVexDbSymPoint& point) { m_points.push_back(point); }
    /// Names the record after the symbol table's next number, "*S7"; `buffer` (81 characters) gets
    /// the name.
    void SetAutoName(wchar_t* buffer);

private:
    std::vector<CVexDbSymPoint> m_points;
    CVexGePoint3d m_base;
};
