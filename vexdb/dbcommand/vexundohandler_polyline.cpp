// The edits of a polyline: its vertices, bulges, closing, direction and start.

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbcommand/vexundopolyline.h"
#include "vexdb/dbcommand/vexundovertices.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include <utility>

namespace {

/// The last vertex as it was. Closing and opening compute its bulge anew, and a polyline that
/// returns to its start by its points alone loses it when it starts elsewhere.
struct LastVertex : VexUndoData {
    CVexGePoint2d point;
    double bulge = 0.0;

    explicit LastVertex(const CVexGePolyline2d& chain)
        : point(chain.vertices().back()), bulge(chain.bulges().back())
    {
    }
    /// The bulge: the point has not gone.
    void swapWith(CVexDbEntity& entity) override
    {
        auto& polyline = static_cast<CVexDbPolyline&>(entity);
        const unsigned last = polyline.NumVerts() - 1;
        const double present = polyline.GetBulgeAt(last);
        polyline.SetBulgeAt(last, std::exchange(bulge, present));
    }
};

void swapBulge(VexUndoVertices& vertices, tagUndoEditEntity& edit)
{
    const auto index = static_cast<unsigned>(edit.index);
    double present = 0.0;
    if (vertices.GetBulgeAt(index, present)) {
        vertices.SetBulgeAt(index, std::exchange(edit.vector.x, present));
    }
}

void swapPoint(VexUndoVertices& vertices, tagUndoEditEntity& edit)
{
    const auto index = static_cast<unsigned>(edit.index);
    CVexGePoint2d present;
    if (vertices.GetPointAt(index, present)) {
        vertices.SetPointAt(index, std::exchange(edit.point, present));
    }
}

void takeVertexOut(VexUndoVertices& vertices, tagUndoEditEntity& edit)
{
    const auto index = static_cast<unsigned>(edit.index);
    if (vertices.GetPointAt(index, edit.point)) {
        vertices.RemoveVertexAt(index);
    }
    edit.editType = kUndoRemoveVertex;
}

void putVertexIn(VexUndoVertices& vertices, tagUndoEditEntity& edit)
{
    vertices.AddVertexAt(static_cast<unsigned>(edit.index), edit.point);
    edit.point = CVexGePoint2d();
    edit.editType = kUndoAddVertex;
}

/// Turns the closed flag over. What SetClosed makes of the closing bulge is taken back: the record
/// keeps the one of before, and where it cannot, records of bulges do.
void turnClosed(CVexDbPolyline& polyline, tagUndoEditEntity& edit)
{
    const bool closes = edit.editType == kUndoOpen;
    const unsigned last = polyline.NumVerts() - 1;
    const double closing = polyline.GetBulgeAt(last);
    polyline.SetClosed(closes);
    polyline.SetBulgeAt(last, closing);
    if (edit.data != nullptr) {
        edit.data->swapWith(polyline);
    }
    edit.editType = closes ? kUndoClose : kUndoOpen;
}

/// Moves the points and bulges of the first `count` vertices round, so that those of `shift` come
/// first. Widths stay, as they do when the start is changed.
void rotate(CVexDbPolyline& polyline, unsigned count, unsigned shift)
{
    const std::vector<CVexGePoint2d> points = polyline.gePolyline().vertices();
    const std::vector<double> bulges = polyline.gePolyline().bulges();
    for (unsigned i = 0; i < count; ++i) {
        polyline.SetPointAt(i, points[(i + shift) % count]);
        polyline.SetBulgeAt(i, bulges[(i + shift) % count]);
    }
}

/// Turns a polyline that returns to its start by its points alone: its last vertex is the first one
/// again, or what the record keeps of it.
void rotateReturning(CVexDbPolyline& polyline, unsigned shift, tagUndoEditEntity& edit)
{
    const unsigned last = polyline.NumVerts() - 1;
    const LastVertex present(polyline.gePolyline());
    rotate(polyline, last, shift);
    CVexGePoint2d point = polyline.gePolyline().vertices().front();
    double bulge = polyline.GetBulgeAt(0);
    if (auto* kept = dynamic_cast<LastVertex*>(edit.data.get())) {
        if (kept->point.distanceTo(point) < kGeClosedTol) { // or it was kept after the edit
            point = kept->point;
            bulge = kept->bulge;
        }
        kept->point = present.point;
        kept->bulge = present.bulge;
    }
    polyline.SetPointAt(last, point);
    polyline.SetBulgeAt(last, bulge);
}

/// The start goes back to where it was. Not by ChangeStart, which reverses the polyline when the
/// start is to be its last vertex; a record of such a reversal has no second index.
void changeStartBack(CVexDbPolyline& polyline, tagUndoEditEntity& edit)
{
    constexpr std::int32_t kWasRotated = 0;
    const auto total = static_cast<std::int32_t>(polyline.NumVerts());
    if (edit.index == total - 1 && edit.index2 != kWasRotated) {
        polyline.Reverse();
        return;
    }
    // A polyline that only returns to its start has that vertex twice.
    const std::int32_t count = polyline.IsClosed() ? total : total - 1;
    if (!polyline.Closed() || edit.index < 0 || edit.index >= total || count < 1) {
        return;
    }
    edit.index = (count - edit.index) % count;
    edit.index2 = kWasRotated;
    const auto shift = static_cast<unsigned>(edit.index);
    if (polyline.IsClosed()) {
        rotate(polyline, static_cast<unsigned>(count), shift);
    } else {
        rotateReturning(polyline, shift, edit);
    }
}

} // namespace

std::shared_ptr<VexUndoData> keptOfPolyline(CVexDbEntity& entity, const tagUndoEditEntity& edit)
{
    const auto& polyline = static_cast<const CVexDbPolyline&>(entity);
    const bool turnsClosed = edit.editType == kUndoClose || edit.editType == kUndoOpen;
    const bool losesEnd =
        turnsClosed || (edit.editType == kUndoChangeStart && !polyline.IsClosed());
    return losesEnd && polyline.NumVerts() > 0 ? std::make_shared<LastVertex>(polyline.gePolyline())
                                               : nullptr;
}

bool CVexUndoHandler::MakeUndoPolyline()
{
    return classifyAs(VexDb::kPolyline);
}

/// The vertices of `polyline` for the rest of the step, or until a record of another kind comes.
VexUndoVertices& CVexUndoHandler::verticesOf(CVexDbPolyline& polyline)
{
    if (m_vertices == nullptr || !m_vertices->areOf(polyline)) {
        m_vertices.reset(); // first: they may be another polyline's
        m_vertices = std::make_unique<VexUndoVertices>(polyline);
    }
    return *m_vertices;
}

bool CVexUndoHandler::isAboutVertices() const
{
    if (m_current.classType != VexDb::kPolyline) {
        return false;
    }
    switch (m_current.editType) {
    case kUndoChangeBulge:
    case kUndoMovePoint:
    case kUndoAddVertex:
    case kUndoRemoveVertex: return true;
    default: return false;
    }
}

/// A join erases what it takes, a vertex here and an entity there: these leave the polyline that
/// the step is at alone.
bool CVexUndoHandler::isPresenceOfAnother() const
{
    const bool isBit = m_current.editType == kUndoCreate || m_current.editType == kUndoErase;
    return isBit && !m_vertices->areOf(*m_current.entity.getPObject());
}

bool CVexUndoHandler::UndoPolyline(bool /*redo*/)
{
    // Each of these lets the grips be computed anew when they are next asked for, and not at once:
    // a step of ten thousand vertices is as many records.
    auto& polyline = subject<CVexDbPolyline>();
    switch (m_current.editType) {
    case kUndoChangeBulge: swapBulge(verticesOf(polyline), m_current); break;
    case kUndoClose:
    case kUndoOpen: turnClosed(polyline, m_current); break;
    case kUndoMovePoint: swapPoint(verticesOf(polyline), m_current); break;
    case kUndoAddVertex: takeVertexOut(verticesOf(polyline), m_current); break;
    case kUndoRemoveVertex: putVertexIn(verticesOf(polyline), m_current); break;
    case kUndoReverse: polyline.Reverse(); break;
    case kUndoChangeStart: changeStartBack(polyline, m_current); break;
    default: break;
    }
    if (!m_undoing && !m_redoing) {
        m_vertices.reset(); // by itself, it is a step
    }
    return true;
}
