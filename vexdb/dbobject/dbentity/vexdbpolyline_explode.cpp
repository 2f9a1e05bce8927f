#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcuts.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/vexdbdatabase.h"

#include <memory>

namespace {

/// The entity of segment `index`; null for a segment without length.
std::unique_ptr<CVexDbEntity> pieceOf(const CVexDbPolyline& polyline, unsigned index,
                                      CVexDbDatabase* drawing)
{
    CVexGeLine2d line;
    if (polyline.GetLineSegAt(index, line)) {
        auto piece = std::make_unique<CVexDbLine>(drawing);
        piece->set(line.startPoint(), line.endPoint());
        return piece;
    }
    CVexGeCircArc2d arc;
    if (polyline.GetArcSegAt(index, arc)) {
        auto piece = std::make_unique<CVexDbArc>(drawing);
        piece->set(arc.center(), arc.radius(), arc.startAng(), arc.endAng());
        return piece;
    }
    return nullptr;
}

} // namespace

void CVexDbPolyline::Explode()
{
    CVexDbDatabase* drawing = database() != nullptr ? database() : _gpDatabase;
    if (drawing == nullptr) {
        return;
    }
    const VexUndoGroup group(drawing->undoHandler());
    for (unsigned i = 0; i < NumVerts(); ++i) {
        std::unique_ptr<CVexDbEntity> piece = pieceOf(*this, i, drawing);
        if (piece == nullptr) {
            continue;
        }
        piece->CVexDbEntity::operator=(*this); // the properties, without the boundary tag
        CVexDbEntity* const added = piece.get();
        CVexDbObjectId id;
        drawing->addEntity(piece.release(), id);
        tagUndoEditEntity edit = undoEditOf(*added, kUndoCreate);
        edit.other = ownerId();
        recordEdit(*added, edit);
    }
}
