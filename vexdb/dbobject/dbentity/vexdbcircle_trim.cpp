#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbcuts.h"

CVexDbEntity* CVexDbCircle::Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters,
                                 double tol)
{
    const VexDbArcWay way(CVexGeCircArc2d(Center(), Radius()));
    const VexDbCuts cuts(*this, way, cutters, tol);
    const VexDbCuts::Piece piece = cuts.closedPieceAt(pick);
    if (piece.before == nullptr) {
        return nullptr; // one cut takes nothing out of a ring
    }
    recordEdit(*this, undoEditOf(*this, kUndoErase));
    auto rest = std::make_unique<CVexDbArc>(*this);
    rest->set(Center(), Radius(), Center().angleTo(*piece.behind), Center().angleTo(*piece.before));
    setErased();
    return rest.release();
}
