#pragma once

#include "platform/base/cfile.h"
#include "platform/base/crect.h"
#include "platform/base/cstring.h"
#include "platform/device/vexdevicetypes.h"
#include "vexdb/dbobject/vexdbobject.h"
#include "vexge/geentity2d/vexgeentity2d.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class CDC;
class CPen;
class CVexDbColorTableRecord;
class CVexDbCurve;
class CVexDbLayerTableRecord;
class CVexDbLTypeTableRecord;
class CVexDbRect;
class CVexGeCircArc2d;
class CVexGeEllipArc2d;
class CVexGeLine2d;
class CVexGeMatrix2d;
class CVexGeVector2d;
struct Return_Struct;

/// Anything that can be drawn: layer, linetype, colour, weight, extended data and grips. Concrete
/// classes add geometry, drawing and a file record.
class VEXDB_EXPORT CVexDbEntity : public CVexDbObject {
    // Before all other members: they fit behind the object's last byte, and a drawing has millions
    // of entities.
    bool m_dbEntity : 1 = false;
    bool m_highlighted : 1 = false;
    bool m_undrawing : 1 = false;
    bool m_highlightDrawing : 1 = false;
    bool m_gripsStale : 1 = true;  // the grips are not those of the geometry
    bool m_rectStale : 1 = true;   // nor is the screen rectangle
    bool m_indexed : 1 = false;    // m_indexBox is where the views' indexes have it
    bool m_moved : 1 = false;      // and has been left since
    bool m_isLastMade : 1 = false; // the command handler points at it and must hear of its end

public:
    using Intersect = CVexGeEntity2d::Intersect;
    using PointList = std::vector<CVexGePoint2d>;

    explicit CVexDbEntity(CVexDbDatabase* database);
    /// Shares the source's extended data list, which is freed once, with its last holder.
    CVexDbEntity(const CVexDbEntity& other);
    ~CVexDbEntity() override;
    // Entities lie side by side in a pool of their own.
    static void* operator new(std::size_t size);
    static void operator delete(void* memory, std::size_t size) noexcept;
    /// The entity record alone: a concrete class writes the object's bytes before it.
    bool save() override;
    bool read() override;
    /// Neither erased nor invisible, on a layer that is not off.
    bool isVisiable() const override;
    /// With a first database the entity takes its current properties; with another one it re-binds
    /// layer, linetype, colour and style by name.
    void setDatabase(CVexDbDatabase* database) override;
    void makeProperty() override;
    /// The extents that a kind tells of itself, drawing units; all sides 0 unless it does.
    virtual CVexDbRect GetOutRect();
    /// Offers a changed boundary to the hatches of its block; only curves are boundaries.
    virtual void OnCurveChanged();
    // These draw on `dc`, of which null draws nothing: in the colour of the ground, as the
    // properties say, and with the pen that highlights, which the entity remembers for ReDraw.
    virtual void UnDraw(CDC* dc);
    virtual void Draw(CDC* dc);
    virtual void HighlightDraw(CDC* dc);
    /// Fills the grips in the class's order and the screen rectangle.
    virtual void setGripPoints();
    /// Not 0 when `point` lies on the entity, within `tol` drawing units.
    [[nodiscard]] virtual int isOn(const CVexGePoint2d& point, const double& tol) const = 0;
    // Whether the rectangle with the opposite corners `a` and `b` holds a part of the entity, or
    // all of it. A kind may sort the corners in place.
    virtual bool checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b) = 0;
    virtual bool checkInside(CVexGePoint2d& a, CVexGePoint2d& b) = 0;
    [[nodiscard]] virtual bool IsCurveEntity() const;
    [[nodiscard]] virtual bool IsClosedCurve() const;
    /// For a kind that keeps something by its extents; none of ours does.
    virtual void OnRectChanged();
    /// The tag that SetBoundary gave a curve, not 0 for the boundary of a hatch; 0 for other kinds.
    [[nodiscard]] virtual int IsBoundary() const;
    virtual void SetBoundary(int tag);
    // The six transforms go by a table of kinds; none refreshes grips or rectangle.
    virtual void TransformBy(const CVexGeMatrix2d& matrix);
    virtual void TranslateBy(const CVexGeVector2d& vector);
    virtual void RotateBy(double angle, const CVexGePoint2d& centre);
    virtual void ScaleBy(double fx, double fy, const CVexGePoint2d& centre);
    virtual void ScaleBy(double factor, const CVexGePoint2d& centre);
    virtual void Mirror(const CVexGeLine2d& line);
    /// Copies properties (a concrete class: geometry too), never identity, owner or database.
    virtual CVexDbEntity& operator=(const CVexDbEntity& other);
    // The points where two shapes meet, drawing units: `kind` says which of the two is unbounded,
    // `tol` is a length. A curve replaces `points` by the `count` of them, none on false; the
    // forms by a geometry are what the first one hands on to.
    virtual bool intersectWith(CVexDbEntity& other, int& count, PointList& points, Intersect kind,
                               double tol) const = 0;
    virtual bool intersectWith(const CVexGeEllipArc2d& other, int& count, PointList& points,
                               Intersect kind, double tol) const = 0;
    virtual bool intersectWith(const CVexGeCircArc2d& other, int& count, PointList& points,
                               Intersect kind, double tol) const = 0;
    virtual bool intersectWith(const CVexGeLine2d& other, int& count, PointList& points,
                               Intersect kind, double tol) const = 0;
    /// Cuts the piece at `pick` off at the nearest cutters. A new entity that stands for what is
    /// left beyond it is the caller's to add; null when there is none, and when nothing was cut.
    virtual CVexDbEntity* Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters,
                               double tol);
    /// Moves the end nearest `pick` to a boundary; true when one moved.
    virtual bool Extend(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& boundaries, double tol);
    /// A new entity, the caller's, at `distance` on the side of `side`; null and false when
    /// refused.
    virtual bool getOffset(CVexGePoint2d& side, CVexDbEntity*& result, double distance);
    // What tables and blocks ask of the few kinds that refer to more than every entity does.
    /// The style of a text; null for every other kind.
    [[nodiscard]] virtual CVexDbObjectId textStyle() const { return {}; }
    virtual void setTextStyle(const CVexDbObjectId&) {}
    /// A symbol's record by name, a text table's own name; empty for every other kind.
    [[nodiscard]] virtual CString recordName() const { return {}; }
    /// What a centre snap finds: arcs, circles, ellipses, elliptical arcs and cobwebs have one.
    [[nodiscard]] virtual bool centerPoint(CVexGePoint2d& /*center*/) const { return false; }
    /// A hatch follows `curve` when that is one of its boundaries; true then.
    virtual bool OnBoundaryChanged(CVexDbCurve*) { return false; }

    [[nodiscard]] CVexDbObjectId LayerId() const { return CVexDbObjectId(m_layer); }
    [[nodiscard]] CVexDbObjectId LineTypeId() const { return CVexDbObjectId(m_lineType); }
    [[nodiscard]] CVexDbObjectId ColorId() const { return CVexDbObjectId(m_color); }
    [[nodiscard]] VexDb::LineWeight LineWeight() const { return m_lineWeight; }
    /// Names of the records; a linetype "ByLayer" gives the layer's linetype.
    [[nodiscard]] CString Layer() const;
    [[nodiscard]] CString LineType() const;
    /// The colour record; null for none.
    [[nodiscard]] CVexDbColorTableRecord* Color() const;
    /// The colour record's index; for 256 the index of the layer's colour.
    [[nodiscard]] int ColorIndex() const;
    // For an entity of the database each setter moves it between the records' sets of users. The
    // bools are not used.
    bool setLayer(const CVexDbObjectId& id);
    bool setLineType(const CVexDbObjectId& id, bool);
    bool setColor(const CVexDbObjectId& id, bool);
    /// An unknown name changes nothing; this one then answers false and the linetype's true.
    bool setLayer(const CString& name);
    bool setLineType(const CString& name, bool);
    bool setColor(CVexDbColorTableRecord* record, bool);
    /// By index: a record that the drawing lacks is made.
    bool setColor(int index, bool);
    bool setLineWeight(VexDb::LineWeight weight, bool);
    /// Takes the database's current properties and resets the working state.
    void SetEntProperty();
    /// Re-binds an entity of another drawing by the names and index of its records. A layer that
    /// this drawing lacks becomes "0", a linetype "ByLayer"; a colour is made.
    void SetEntPropertyToThis();
    /// Takes layer, linetype, colour, weight and boundary tag over.
    void CopyEntProperties(const CVexDbEntity& other);

    [[nodiscard]] Return_Struct* xData() const { return m_xdata; }
    /// Holds the list that starts at `head` (null for none) and lets the list before go, unfreed.
    /// Copies of an entity hold its list too; the last holder frees it.
    void SetXData(Return_Struct* head);
    /// Lets the list go, which the last holder frees.
    void ClearXData();
    /// Drops the entity's tracker, sets the erased bit, and takes a database entity out of it.
    void Erase();
    /// Drops the entity's tracker; true.
    bool OnErased();
    /// Whether the entity stands in a drawing, which SetDbEntity only marks.
    [[nodiscard]] bool IsDbEntity() const { return m_dbEntity; }
    void SetDbEntity(bool inDatabase);
    /// Drawing units; the origin for an index outside of the grips.
    CVexGePoint2d getGripPoint(int index);
    /// Hands out the address of the grips, refreshed when stale; it stays the same vector.
    bool getGripPointVec(PointList*& grips);
    /// Index of the first grip whose box, 10 pixels wide at `scale` logical units a pixel, holds
    /// `point`; -1 for none and for an entity outside the database. `out` gets the grip looked at
    /// last.
    int GetGripNumber(CVexGePoint2d point, const double& scale, CVexGePoint2d& out);
    /// The screen extents, logical units; the address is the entity's own.
    CRect* GetEntityRect();
    /// Selects the pen for the next strokes and gives the one before, for RemovePen. Where a record
    /// is missing, or a highlight has selected its pen, the present pen stays.
    const CPen* setPen(CDC* dc);
    /// Selects the pen of before.
    void RemovePen(CDC* dc, const CPen* before);
    /// On the context of the database's current view.
    void Draw();
    void HighlightDraw();
    /// Draws highlighted what was highlighted before, everything else plainly.
    void ReDraw(CDC* dc);
    /// Whether the bounded line meets the entity.
    bool IntersectWith(CVexGeLine2d& line, double tol);
    /// Whether it meets the entity farther than `width` from one of its own ends.
    bool IsCrossWidth(CVexGeLine2d& line, double width);
    /// Whether a ray from `point` leaves the polygon of `count` corners an odd number of times.
    [[nodiscard]] bool IsInsidePolygon(const CVexGePoint2d* polygon, const CVexGePoint2d& point,
                                       int count) const;
    [[nodiscard]] bool IsInsideRect(CVexGePoint2d a, CVexGePoint2d b,
                                    const CVexGePoint2d& point) const;
    /// A detached copy with an identity of its own, the caller's; null for a class without one.
    /// The bool is not used.
    CVexDbEntity* CopyEntity(bool);
    void ClearBoundary() { m_boundary = 0; }
    /// The geometry has changed: the next getter computes grips and rectangle anew, and the views'
    /// indexes look where it lies now.
    void markGripsStale()
    {
        m_gripsStale = true;
        m_rectStale = true;
        if (m_indexed && !m_moved) {
            noteMoved();
        }
    }
    /// The box of the true shape, drawing units, which may be too large but never too small. False
    /// when a kind cannot tell: its entities are then looked at by every query.
    [[nodiscard]] virtual bool trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const;

protected:
    /// The file record of a concrete class: the object's bytes, the entity's, then what `fields`
    /// writes to the CFile that it is given. False when the file failed.
    template <class Fields>
    bool saveRecord(Fields&& fields)
    {
        CFile* out = file();
        if (out == nullptr || !saveHead(*out)) {
            return false;
        }
        fields(*out);
        return !out->failed();
    }
    /// The mirror of saveRecord, for `read`.
    template <class Fields>
    bool readRecord(Fields&& fields)
    {
        if (!CVexDbObject::read() || !CVexDbEntity::read()) {
            return false;
        }
        CFile& in = *file();
        fields(in);
        markGripsStale();
        return !in.failed();
    }
    /// Writes what CVexDbObject::save and CVexDbEntity::save write, in one go.
    bool saveHead(CFile& out);
    /// The emptied grips, for setGripPoints to fill; they count as fresh from here on.
    PointList& beginGrips();
    /// The screen extents of the geometry; those of GetOutRect unless a class knows a shorter way.
    virtual CRect computeEntityRect();
    /// Stores the screen extents; the last act of each setGripPoints.
    void storeEntityRect();
    /// What setGripPoints is there for, after a change of the geometry: the rectangle at once, the
    /// grips when someone asks.
    void renewGrips();
    /// Fills the grips if they are stale.
    void refreshGrips();
    /// Appends a row "%f" to the group "Shape" of the properties; the row points at `value`.
    void addShapeRow(const CString& name, const double& value);
    /// Makes a plain copy a thing of its own: fresh identity, not in the database.
    void detach();

    PointList m_gripPoints;
    std::int32_t m_boundary = 0;

private:
    [[nodiscard]] CVexDbLayerTableRecord* layerRecord() const;
    [[nodiscard]] CVexDbLTypeTableRecord* linetypeRecord() const;
    template <class Record>
    void bind(CVexDbObject*& slot, CVexDbObject* record);
    void bindByNames(const CVexDbEntity& source);
    void takeCurrentProperties();
    bool readReferences(CFile& in);
    void bindTo(CVexDbObject* layer, CVexDbObject* lineType, CVexDbObject* color);
    [[nodiscard]] std::int32_t savedColorIndex() const;
    // Whether its records list it. A plain copy of a database entity goes by its source's
    // identifier, which stays where it is.
    [[nodiscard]] bool isListed() const { return m_dbEntity && objectId() == this; }
    template <class OfCurve, class OfKind, class... Args>
    void transform(OfCurve ofCurve, OfKind ofKind, const Args&... args);
    void noteMoved();
    /// The weight widens the strokes, which the views' indexes know too.
    void changeWeight(VexDb::LineWeight weight)
    {
        m_lineWeight = weight;
        if (m_indexed && !m_moved) {
            noteMoved();
        }
    }
    friend class CVexCommandHandler;
    friend class CVexDbSpatialIndex;
    friend class CVexDbSpatialIndexes;
    [[nodiscard]] const CPen* penFor(CDC& dc) const;
    [[nodiscard]] COLORREF strokeColor(const CDC& dc) const;
    [[nodiscard]] int strokeWidth(const CDC& dc) const;

    VexDb::LineWeight m_lineWeight = VexDb::kLineWeightByLayer;
    CVexDbObject* m_layer = nullptr;
    CVexDbObject* m_lineType = nullptr;
    CVexDbObject* m_color = nullptr;
    Return_Struct* m_xdata = nullptr; // one of its holders is this entity
    CRect m_entityRect;
    CRect m_indexBox; // logical units
};
