#pragma once

#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include <vector>

/// The vertices of one polyline while an undo step edits them, record by record. The first few that
/// come or go do so in the polyline itself. When there are more, all are held here in short pieces,
/// so that one moves only its neighbours, and the polyline gets them back when this dies: until
/// then nobody else may look at its geometry or change it.
///
/// The operations are those of the polyline.
class VexUndoVertices {
public:
    explicit VexUndoVertices(CVexDbPolyline& polyline) : m_polyline(polyline) {}
    ~VexUndoVertices();
    VexUndoVertices(const VexUndoVertices&) = delete;
    VexUndoVertices& operator=(const VexUndoVertices&) = delete;

    [[nodiscard]] bool areOf(const CVexDbObject& object) const { return &m_polyline == &object; }
    bool GetBulgeAt(unsigned index, double& out);
    bool SetBulgeAt(unsigned index, double bulge);
    bool GetPointAt(unsigned index, CVexGePoint2d& out);
    bool SetPointAt(unsigned index, const CVexGePoint2d& point);
    /// Straight and without widths.
    bool AddVertexAt(unsigned index, const CVexGePoint2d& point);
    bool RemoveVertexAt(unsigned index);

private:
    struct Vertex {
        CVexGePoint2d point;
        double bulge;
        double startWidth;
        double endWidth;
    };
    using Piece = std::vector<Vertex>;

    bool areTaken();
    void take();
    [[nodiscard]] Vertex* at(unsigned index);
    [[nodiscard]] unsigned placeOf(unsigned index);
    void splitPresent();
    [[nodiscard]] unsigned behindPresent() const
    {
        return m_before + static_cast<unsigned>(m_pieces[m_present].size());
    }

    CVexDbPolyline& m_polyline;
    int m_cameOrWent = 0;        // before all were taken
    CVexGePolyline2d m_taken;    // what the polyline was when they were
    std::vector<Piece> m_pieces; // none before that; some may be empty
    unsigned m_count = 0;        // of all vertices in them
    std::size_t m_present = 0;   // the piece that was asked last: the next record is about it, too
    unsigned m_before = 0;       // the vertices before that one
};
