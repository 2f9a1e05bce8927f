#pragma once

#include "vexdb/dbobject/dbentity/vexdbentity.h"

#include <cstdint>

/// A marker that stands at a point, in one of fifteen shapes.
class VEXDB_EXPORT CVexDbPoint : public CVexDbEntity {
public:
    /// The highest number of a shape.
    static constexpr int kLastShape = 14;

    explicit CVexDbPoint(CVexDbDatabase* database);
    explicit CVexDbPoint(const CVexGePoint2d& position);
    CVexDbPoint(const CVexDbPoint& other);
    ~CVexDbPoint() override;
    /// Takes properties, position, size, fill, shape and tag over.
    CVexDbPoint& operator=(const CVexDbPoint& other);
    CVexDbPoint& operator=(const CVexDbEntity& other) override;

    bool save() override;
    bool read() override;
    void setGripPoints() override;
    /// Collapsed on the position: the marker's size does not count.
    CVexDbRect GetOutRect() override;
    void Draw(CDC* dc) override;
    [[nodiscard]] bool trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const override;
    /// Within `tol`.
    [[nodiscard]] int isOn(const CVexGePoint2d& point, const double& tol) const override;
    bool checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b) override;
    bool checkInside(CVexGePoint2d& a, CVexGePoint2d& b) override;
    using CVexDbEntity::Draw;
    // A point intersects nothing: false, and the outputs as they were.
    bool intersectWith(CVexDbEntity& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeEllipArc2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeCircArc2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeLine2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;

    void Set(double x, double y);
    void SetPosition(const CVexGePoint2d& position);
    [[nodiscard]] CVexGePoint2d Position() const { return m_position; }
    /// Half the marker in drawing units; 0 or less takes the drawing's point size, in pixels.
    void SetSize(double size)
    {
        m_size = size;
        markGripsStale();
    }
    [[nodiscard]] double Size() const { return m_size; }
    /// Whether a marker with an area is solid, without strokes inside.
    void SetFillMode(bool fill) { m_fill = fill; }
    [[nodiscard]] bool FillMode() const { return m_fill; }
    /// The shape; 0, which a number above kLastShape becomes, takes the drawing's. Files do not
    /// keep it.
    void SetPdMode(int mode) { m_pdMode = mode > kLastShape ? 0 : mode; }
    [[nodiscard]] int PdMode() const { return m_pdMode; }
    /// A byte that is the caller's.
    [[nodiscard]] std::uint8_t GetFlag() const { return m_flag; }
    /// The value before.
    std::uint8_t SetFlag(const std::uint8_t& flag);

    // What the transforms of an entity do to a point. None refreshes the grips.
    CVexDbPoint& transformBy(const CVexGeMatrix2d& matrix);
    CVexDbPoint& translateBy(const CVexGeVector2d& vector);
    CVexDbPoint& rotateBy(double angle, const CVexGePoint2d& centre);
    CVexDbPoint& mirror(const CVexGeLine2d& line);

protected:
    CRect computeEntityRect() override;

private:
    template <class Point, class Archive>
    static void walkFields(Point& point, Archive&& archive);
    [[nodiscard]] CRect markerBox() const;
    [[nodiscard]] int halfSize() const;
    [[nodiscard]] int shape() const;

    CVexGePoint2d m_position;
    double m_size = 0.0;
    int m_pdMode = 0;
    bool m_fill = false;
    std::uint8_t m_flag = 0;
};
