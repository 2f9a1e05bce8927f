#include "vexdb/dbtracker/vexmultientitytracker.h"

#include "platform/device/cdc.h"
#include "platform/device/vexdeviceobjects.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbtracker/vexexactly.h"
#include "vexdb/dbtracker/vexropscope.h"
#include "vexdb/dbtracker/vextransformedit.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexmemdc.h"
#include "vexge/geentity2d/vexgeline2d.h"

namespace {

constexpr double kUntransformed = 1.0;
/// Says that the copies are mirrored already: from then on they only turn.
constexpr double kMirrored = 1.1;

} // namespace

CVexMultiEntityTracker::CVexMultiEntityTracker(CWnd* window,
                                               const std::vector<CVexDbObjectId>* entities,
                                               VexDb::TransFormOption option)
    : CVexDbEntityTracker(window, entities, option)
{
    m_type = TrackerMulti;
    if (entities != nullptr) {
        std::vector<CVexDbObjectId> sources(*entities);
        CVexMultiEntityTracker::SetMultiEntity(&sources);
    }
}

CVexMultiEntityTracker::~CVexMultiEntityTracker()
{
    ClearCopyedArray();
}

void CVexMultiEntityTracker::SetMultiEntity(std::vector<CVexDbObjectId>* entities)
{
    ClearCopyedArray();
    m_ownSources.clear();
    m_sources.clear();
    if (entities == nullptr) {
        return;
    }
    for (const CVexDbObjectId& id : *entities) {
        if (id.getPObject() != nullptr && id.getPObject()->isEntity()) {
            m_sources.push_back(static_cast<CVexDbEntity*>(id.getPObject()));
        }
    }
}

void CVexMultiEntityTracker::ClearCopyedArray()
{
    for (CVexDbEntity* copy : m_copies) {
        if (!m_copiesGiven) {
            delete copy;
        }
    }
    m_copies.clear();
    m_copiesGiven = false;
}

void CVexMultiEntityTracker::SetCurrentToOrigin()
{
    std::vector<std::unique_ptr<CVexDbEntity>> own;
    for (CVexDbEntity* copy : m_copies) {
        if (!m_copiesGiven) {
            own.emplace_back(copy);
        }
    }
    m_sources.swap(m_copies);
    m_ownSources.swap(own); // those of before go with `own`
    m_copies.clear();
    m_copiesGiven = false;
}

void CVexMultiEntityTracker::UndrawOrigin()
{
    const VexRopScope asBand(m_dc, m_dc != nullptr ? bandRaster(*m_dc) : R2_XORPEN);
    for (CVexDbEntity* source : m_sources) {
        source->Draw(m_dc);
    }
}

void CVexMultiEntityTracker::DrawCurrent()
{
    const VexRopScope asBand(m_dc, m_dc != nullptr ? bandRaster(*m_dc) : R2_XORPEN);
    for (CVexDbEntity* copy : m_copies) {
        copy->Draw(m_dc);
    }
}

int CVexMultiEntityTracker::TrackHandle(CWnd* window, CPoint device, int /*grip*/)
{
    if (m_transform == VexDb::TransFormNone) {
        return InputCancel;
    }
    return runDrag(*window, device, -1);
}

CVexDbEntity* CVexMultiEntityTracker::CopyEntity(CVexDbEntity* entity)
{
    return entity->CopyEntity(true);
}

void CVexMultiEntityTracker::beginPicture(int /*grip*/)
{
    m_end.x += 1; // a way to the right: the first angle is that of the axis
    m_exact.x = m_exactStart.x + 1.0 / _dDispScale;
    m_picturePainted = false;
    ClearCopyedArray();
    m_copies.reserve(m_sources.size());
    // A kind that cannot be copied is not transformed either.
    std::erase_if(m_sources, [this](CVexDbEntity* source) {
        CVexDbEntity* const copy = CopyEntity(source);
        if (copy != nullptr) {
            m_copies.push_back(copy);
        }
        return copy == nullptr;
    });
    forgetWay();
}

void CVexMultiEntityTracker::followMove(int /*grip*/)
{
    TransForm();
}

void CVexMultiEntityTracker::TransForm()
{
    m_oldVector = m_newVector;
    m_newVector = bandVector();
    if (m_transform == VexDb::TransFormScale) {
        advanceScale();
    }
    transformCopies();
    paintCopies();
}

/// The copies stand at the band's length divided by the scale percent after every step; from a
/// factor of 0, which cannot be grown again, they start anew at the sources.
void CVexMultiEntityTracker::advanceScale()
{
    if (m_accumulatedScale == 0.0) {
        const CVexGeVector2d reached = m_newVector;
        CopyOriginToCurrent();
        m_newVector = reached;
    }
    const double whole = m_newVector.length() / scalePercent();
    m_stepFactor = whole / m_accumulatedScale;
    m_accumulatedScale = whole;
}

void CVexMultiEntityTracker::transformCopies()
{
    for (CVexDbEntity* copy : m_copies) {
        TransFormEntity(copy);
    }
    if (m_transform == VexDb::TransFormMirror && !isZero(m_newVector)) {
        m_accumulatedScale = kMirrored;
    }
}

void CVexMultiEntityTracker::MoveEntity(CVexDbEntity* entity)
{
    entity->TranslateBy(m_newVector - m_oldVector);
}

void CVexMultiEntityTracker::RotateEntity(CVexDbEntity* entity)
{
    entity->RotateBy(m_newVector.angle() - m_oldVector.angle(), startPoint());
}

void CVexMultiEntityTracker::ScaleEntity(CVexDbEntity* entity)
{
    entity->ScaleBy(m_stepFactor, startPoint());
}

void CVexMultiEntityTracker::MirrorEntity(CVexDbEntity* entity)
{
    if (m_accumulatedScale != kUntransformed) {
        MirrorRotateEntity(entity);
    } else if (!isZero(m_newVector)) {
        entity->Mirror(CVexGeLine2d(startPoint(), endPoint()));
    }
}

void CVexMultiEntityTracker::MirrorRotateEntity(CVexDbEntity* entity)
{
    entity->RotateBy(2.0 * (m_newVector.angle() - m_oldVector.angle()), startPoint());
}

void CVexMultiEntityTracker::CopyOriginToCurrent()
{
    for (std::size_t at = 0; at < m_copies.size(); ++at) {
        *m_copies[at] = *m_sources[at];
    }
    forgetWay();
}

/// The copies stand where the sources are.
void CVexMultiEntityTracker::forgetWay()
{
    m_oldVector = m_newVector = {};
    m_accumulatedScale = kUntransformed;
    m_stepFactor = 1.0;
}

void CVexMultiEntityTracker::paintCopies()
{
    if (m_dc == nullptr || m_database == nullptr) {
        return;
    }
    if (m_database->buffer() == nullptr) {
        showDrawing(); // which keeps its picture
    }
    // A picture of the drawing with band and copies on it goes to the view in one block. Laying
    // them on by SRCPAINT instead would show the same on black, and nothing at all on white.
    CVexBuffDC* const drawing = m_database->buffer();
    CVexBuffDC picture(*m_dc, m_window);
    picture.GetDC()->SetBkColor(m_dc->GetBkColor());
    if (picture.ok() && drawing != nullptr && drawing->ok()) {
        drawing->VexBitBlt(picture.GetDC(), SRCCOPY);
        paintOn(*picture.GetDC());
        picture.VexBitBlt(m_dc, SRCCOPY);
    } else {
        showDrawing(); // without memory the picture was the view, and has cleared it
        paintOn(*m_dc);
    }
    m_picturePainted = true;
    if (m_handler != nullptr && m_handler->isBlipDrawn()) {
        m_handler->DrawBlip(m_blip, m_dc, 0); // the block has covered it
    }
}

void CVexMultiEntityTracker::paintOn(CDC& dc)
{
    const VexRopScope copying(&dc, R2_COPYPEN);
    const CPen pen(PS_SOLID, m_penWidth, m_rubberColor);
    const CPen* const before = dc.SelectObject(&pen);
    dc.MoveTo(m_start);
    dc.LineTo(m_end);
    dc.SelectObject(before);
    for (CVexDbEntity* copy : m_copies) {
        copy->Draw(&dc);
    }
}

/// The drawing as it is, from its buffer where that holds it.
void CVexMultiEntityTracker::showDrawing()
{
    CVexBuffDC* const drawing = m_database->buffer();
    if (drawing != nullptr && drawing->ok()) {
        drawing->VexBitBlt(m_dc, SRCCOPY);
    } else {
        const VexRopScope copying(m_dc, R2_COPYPEN);
        m_database->Draw();
    }
}

void CVexMultiEntityTracker::liftPicture()
{
    if (m_picturePainted && m_dc != nullptr && m_database != nullptr) {
        showDrawing();
    }
    m_picturePainted = false;
}

void CVexMultiEntityTracker::restorePicture(bool /*band*/, bool /*copy*/)
{
    if (!m_copies.empty() && !isZero(m_newVector)) {
        paintCopies();
    }
}

bool CVexMultiEntityTracker::ControlEnd(int /*grip*/)
{
    if (m_database == nullptr) {
        return false;
    }
    settlePosition();
    CopyOriginToCurrent();
    m_newVector = bandVector();
    m_stepFactor = m_newVector.length() / scalePercent();
    transformCopies();
    {
        const VexUndoGroup step(m_database->undoHandler());
        // A copy may be put on its source, but there is no image in a line without length.
        const bool imageless = m_transform == VexDb::TransFormMirror && isWithoutWay();
        if (m_keepOrigin && !imageless) {
            addCopies();
        } else if (!m_keepOrigin && !isWithoutWay()) {
            CopyCurrentToOrigin();
        }
    }
    m_database->setLastPoint(endPoint());
    if (m_window != nullptr) {
        m_window->Invalidate();
    }
    return true;
}

void CVexMultiEntityTracker::addCopies()
{
    if (m_copiesGiven) {
        return;
    }
    m_copiesGiven = true;
    for (CVexDbEntity* copy : m_copies) {
        CVexDbObjectId id;
        m_database->addEntity(copy, id);
        tagUndoEditEntity edit;
        edit.editType = kUndoCreate;
        edit.entity = id;
        m_database->undoHandler().AddUndo(&edit);
    }
}

void CVexMultiEntityTracker::CopyCurrentToOrigin()
{
    const VexUndoGroup step(m_database->undoHandler());
    for (std::size_t at = 0; at < m_copies.size(); ++at) {
        CVexDbEntity& source = *m_sources[at];
        if (source.IsDbEntity()) {
            const tagUndoEditEntity edit =
                transformEdit(m_transform, source, startPoint(), m_newVector, m_stepFactor);
            m_database->undoHandler().AddUndo(&edit);
        }
        source = *m_copies[at];
        source.OnCurveChanged();
    }
}
