#pragma once

#include "vexdb/dbcommand/vexundohandler.h"

#include <optional>

class CVexDbPolyline;
class CVexGePolyline2d;

/// The undo records of an edit of one polyline, a step of their own unless a group is open already;
/// none for a polyline that is in no drawing.
/// A record tells what was before: it may be made before or after the edit that it is about.
class VexPolylineRecords {
public:
    explicit VexPolylineRecords(const CVexDbPolyline& polyline);

    void bulge(unsigned index, double before) const;
    void moved(unsigned index, const CVexGePoint2d& before) const;
    void added(unsigned index) const;
    /// Vertex `vertex` of `chain` goes, which has the number `index` then. Its bulge is kept, too:
    /// the undo of a removal adds a straight vertex.
    void removed(unsigned index, const CVexGePolyline2d& chain, unsigned vertex) const;
    /// A vertex at `point` goes; its bulge, where it had one, is recorded first.
    void removed(unsigned index, const CVexGePoint2d& point) const;
    /// Before the closed flag goes: the record keeps the closing bulge.
    void opened() const;
    /// Before the flag is set: the record keeps the end of the open chain.
    void closed() const;
    void reversed() const;
    /// Before vertex `index` becomes the first: the record keeps the end that a chain loses which
    /// returns to its start by its points alone.
    void startChanges(unsigned index) const;
    /// The bounds of a block, which is undone as a whole.
    void blockBegins() const;
    void blockEnds() const;

private:
    [[nodiscard]] tagUndoEditEntity record(UndoEditType type) const;
    void add(const tagUndoEditEntity& edit) const;

    const CVexDbPolyline& m_polyline;
    std::optional<VexUndoGroup> m_group;
};
