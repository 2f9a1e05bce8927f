#include "vexdb/dbcommand/vexundovertices.h"

#include <algorithm>

namespace {

constexpr int kFew = 8; // that come or go before taking all is worth its copying
constexpr unsigned kPiece = 64;

} // namespace

VexUndoVertices::~VexUndoVertices()
{
    if (m_pieces.empty()) {
        return;
    }
    m_taken.setSize(m_count);
    for (const Piece& piece : m_pieces) {
        for (const Vertex& vertex : piece) {
            m_taken.appendVertex(vertex.point, vertex.bulge, vertex.startWidth, vertex.endWidth);
        }
    }
    m_polyline.SetGeometry(m_taken);
}

/// To be asked before a vertex comes or goes.
bool VexUndoVertices::areTaken()
{
    if (m_pieces.empty() && ++m_cameOrWent > kFew && m_polyline.NumVerts() > kPiece) {
        take();
    }
    return !m_pieces.empty();
}

void VexUndoVertices::take()
{
    m_taken = m_polyline.gePolyline();
    m_count = m_taken.numVerts();
    m_pieces.reserve(2 * m_count / kPiece);
    for (unsigned i = 0; i < m_count; ++i) {
        if (i % kPiece == 0) {
            m_pieces.emplace_back().reserve(std::size_t{2} * kPiece);
        }
        m_pieces.back().push_back({m_taken.vertices()[i], m_taken.bulges()[i],
                                   m_taken.startWidths()[i], m_taken.endWidths()[i]});
    }
}

/// Makes the piece that holds vertex `index` the present one and gives the place in it. The index
/// behind the last vertex has its place behind that one.
unsigned VexUndoVertices::placeOf(unsigned index)
{
    while (index < m_before) {
        m_before -= static_cast<unsigned>(m_pieces[--m_present].size());
    }
    while (index >= behindPresent() && m_present + 1 < m_pieces.size()) {
        m_before = behindPresent();
        ++m_present;
    }
    return index - m_before;
}

/// Null for a vertex that does not exist.
VexUndoVertices::Vertex* VexUndoVertices::at(unsigned index)
{
    if (index >= m_count) {
        return nullptr;
    }
    const unsigned place = placeOf(index);
    return &m_pieces[m_present][place];
}

void VexUndoVertices::splitPresent()
{
    const auto next = m_pieces.begin() + static_cast<std::ptrdiff_t>(m_present) + 1;
    Piece& behind = *m_pieces.insert(next, Piece());
    behind.reserve(std::size_t{2} * kPiece);
    Piece& present = m_pieces[m_present];
    behind.assign(present.begin() + kPiece, present.end());
    present.erase(present.begin() + kPiece, present.end());
}

bool VexUndoVertices::GetBulgeAt(unsigned index, double& out)
{
    if (m_pieces.empty()) {
        return m_polyline.GetBulgeAt(index, out);
    }
    const Vertex* vertex = at(index);
    out = vertex != nullptr ? vertex->bulge : out;
    return vertex != nullptr;
}

bool VexUndoVertices::SetBulgeAt(unsigned index, double bulge)
{
    if (m_pieces.empty()) {
        return m_polyline.SetBulgeAt(index, bulge);
    }
    Vertex* vertex = at(index);
    if (vertex != nullptr) {
        vertex->bulge = bulge;
    }
    return vertex != nullptr;
}

bool VexUndoVertices::GetPointAt(unsigned index, CVexGePoint2d& out)
{
    if (m_pieces.empty()) {
        return m_polyline.GetPointAt(index, out);
    }
    const Vertex* vertex = at(index);
    if (vertex != nullptr) {
        out = vertex->point;
    }
    return vertex != nullptr;
}

bool VexUndoVertices::SetPointAt(unsigned index, const CVexGePoint2d& point)
{
    if (m_pieces.empty()) {
        return m_polyline.SetPointAt(index, point);
    }
    Vertex* vertex = at(index);
    if (vertex != nullptr) {
        vertex->point = point;
    }
    return vertex != nullptr;
}

bool VexUndoVertices::AddVertexAt(unsigned index, const CVexGePoint2d& point)
{
    if (!areTaken()) {
        return m_polyline.AddVertexAt(index, point, 0.0);
    }
    if (index > m_count) {
        return false;
    }
    const unsigned place = placeOf(index);
    Piece& piece = m_pieces[m_present];
    piece.insert(piece.begin() + place,
                 {point, 0.0, CVexGePolyline2d::kNoWidth, CVexGePolyline2d::kNoWidth});
    ++m_count;
    if (piece.size() >= std::size_t{2} * kPiece) {
        splitPresent();
    }
    return true;
}

bool VexUndoVertices::RemoveVertexAt(unsigned index)
{
    if (!areTaken()) {
        return m_polyline.RemoveVertexAt(static_cast<int>(index));
    }
    if (index >= m_count) {
        return false;
    }
    const unsigned place = placeOf(index);
    Piece& piece = m_pieces[m_present];
    piece.erase(piece.begin() + place);
    --m_count;
    return true;
}
