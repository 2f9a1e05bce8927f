#pragma once

#include "platform/base/carchive.h"
#include "platform/base/crect.h"
#include "platform/base/cstring.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/vexdbblocktable.h"
#include "vexdb/dbobject/vexdbcolortable.h"
#include "vexdb/dbobject/vexdbdisplaytable.h"
#include "vexdb/dbobject/vexdbentitytable.h"
#include "vexdb/dbobject/vexdbfileblocks.h"
#include "vexdb/dbobject/vexdblayertable.h"
#include "vexdb/dbobject/vexdbltypetable.h"
#include "vexdb/dbobject/vexdbprojectinfotable.h"
#include "vexdb/dbobject/vexdbrevisiontable.h"
#include "vexdb/dbobject/vexdbsymboltable.h"
#include "vexdb/dbobject/vexdbtextstyletable.h"
#include "vexdb/vexdbdrawpass.h"
#include "vexdb/vexdbloadreport.h"
#include "vexdb/vexdbpencache.h"
#include "vexge/geentity3d/vexgeplane.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

class CDC;
class CFile;
class CVexBuffDC;
class CVexCommandHandler;
class CVexDbEntity;
class CVexDbEntityTracker;
class CVexDbLoadContext;
class CVexDbSpatialIndexes;
class CVexUndoHandler;
class CWnd;

/// One drawing in memory: ten tables, the command and undo handlers, the settings that are also the
/// head of its file. The host makes one a document. Everything here runs on one thread.
class VEXDB_EXPORT CVexDbDatabase {
public:
    /// A fresh drawing with its default records; `paperSpace` adds the block "PAPER_SPACE".
    explicit CVexDbDatabase(bool paperSpace);
    /// Frees views' buffers, trackers, undo records, then all records and entities. `_gpDatabase`
    /// becomes null if it was this one.
    virtual ~CVexDbDatabase();
    /// Writes the drawing to the archive's file. What stood under the file's name is kept as its
    /// ".bak" when the file is closed. False, with lastReport() and one message, on any failure;
    /// the target is then untouched. The caller closes the file and asks whether that succeeded.
    virtual bool Save(CArchive& archive);
    /// Reads a drawing into this fresh database. False, with lastReport() and one message, when it
    /// ends early or makes no sense: the whole objects before the fault are kept.
    virtual bool Read(CArchive& archive);
    CVexDbDatabase(const CVexDbDatabase&) = delete;
    CVexDbDatabase& operator=(const CVexDbDatabase&) = delete;

    /// Makes the default records of a drawing that has none yet: the constructor's task.
    void InitDatabase(bool paperSpace);

    /// Identifiers of the tables.
    [[nodiscard]] CVexDbObjectId LayerTable() const;
    [[nodiscard]] CVexDbObjectId BlockTable() const;
    [[nodiscard]] CVexDbObjectId LinetypeTable() const;
    [[nodiscard]] CVexDbObjectId ColorTable() const;
    [[nodiscard]] CVexDbObjectId DisplayTable() const;
    [[nodiscard]] CVexDbObjectId TextStyleTable() const;
    [[nodiscard]] CVexDbObjectId SymbolTable() const;
    [[nodiscard]] CVexDbObjectId EntityTable() const;
    [[nodiscard]] CVexDbObjectId ProjectInfoTable() const;
    [[nodiscard]] CVexDbObjectId RevisionTable() const;
    // The tables themselves.
    [[nodiscard]] CVexDbLayerTable& layers() { return m_layers; }
    [[nodiscard]] CVexDbBlockTable& blocks() { return m_blocks; }
    [[nodiscard]] CVexDbLTypeTable& linetypes() { return m_linetypes; }
    [[nodiscard]] CVexDbColorTable& colors() { return m_colors; }
    [[nodiscard]] CVexDbDisplayTable& displays() { return m_displays; }
    [[nodiscard]] CVexDbTextStyleTable& textStyles() { return m_textStyles; }
    [[nodiscard]] CVexDbSymbolTable& symbols() { return m_symbols; }
    [[nodiscard]] CVexDbEntityTable& entities() { return m_entities; }
    [[nodiscard]] CVexDbProjectInfoTable& projectInfos() { return m_projectInfos; }
    [[nodiscard]] CVexDbRevisionTable& revisions() { return m_revisions; }
    [[nodiscard]] CVexCommandHandler& commandHandler() { return *m_commandHandler; }
    [[nodiscard]] CVexUndoHandler& undoHandler() { return *m_undoHandler; }

    /// The live settings.
    [[nodiscard]] VexDbFileHeader_tag* FileInfo() { return &m_header; }
    [[nodiscard]] VexDbDrawingSettings_tag& settings() { return m_settings; }
    [[nodiscard]] VexDbDimSettings_tag& dimSettings() { return m_dimSettings; }
    [[nodiscard]] CString FilePath() const;
    [[nodiscard]] CString Author() const;
    [[nodiscard]] CString Date() const;
    [[nodiscard]] CString FileVersion() const;
    void setFilePath(const CString& folder);
    void setAuthor(const CString& user);
    void setDate(const CString& date);
    void setFileVersion(const CString& version);

    [[nodiscard]] CVexGePoint2d lastPoint() const { return m_lastPoint; }
    void setLastPoint(const CVexGePoint2d& point) { m_lastPoint = point; }
    /// The entity added or picked last; null after it was removed.
    [[nodiscard]] CVexDbEntity* lastEntity() const { return m_lastEntity; }
    void setLastEntity(CVexDbEntity* entity) { m_lastEntity = entity; }
    /// The tracker whose track runs; null between tracks. Not owned.
    [[nodiscard]] CVexDbEntityTracker* activeTracker() const { return m_activeTracker; }
    void setActiveTracker(CVexDbEntityTracker* tracker) { m_activeTracker = tracker; }
    [[nodiscard]] CVexGePlane& plane() { return m_plane; }
    // The tables' current records.
    [[nodiscard]] CVexDbObjectId currentLayer() const { return currentOf(m_layers); }
    [[nodiscard]] CVexDbObjectId currentLinetype() const { return currentOf(m_linetypes); }
    [[nodiscard]] CVexDbObjectId currentColor() const { return currentOf(m_colors); }
    [[nodiscard]] CVexDbObjectId currentTextStyle() const { return currentOf(m_textStyles); }
    /// Null is ignored.
    void setCurrentLayer(const CVexDbObjectId& id);
    void setCurrentLinetype(const CVexDbObjectId& id);
    void setCurrentColor(const CVexDbObjectId& id);
    void setCurrentTextStyle(const CVexDbObjectId& id);
    [[nodiscard]] VexDb::LineWeight currentLineWeight() const
    {
        return static_cast<VexDb::LineWeight>(m_settings.m_nLineWeight);
    }

    /// Takes ownership and enters the entity in the current block, its view and every index; `id`
    /// gets its identifier. An entity that stands in a block already only gives its identifier.
    void addEntity(CVexDbEntity* entity, CVexDbObjectId& id);
    /// What addEntity does with an entity of any kind but a hatch, whose boundary comes along.
    void addEntitySub(CVexDbEntity* entity, CVexDbObjectId& id);
    /// The same into another block than the current one.
    void addEntityTo(CVexDbBlockTableRecord& block, CVexDbEntity* entity, CVexDbObjectId& id);
    /// The same for many new ones, whose numbers ascend from above all in the drawing: neighbours
    /// mostly share their records, whose sets then take them as a run. For a load; texts and
    /// attribute definitions go the way of addEntityTo.
    void addLoadedTo(CVexDbBlockTableRecord& block, std::span<CVexDbObject* const> entities);
    /// Takes the entity out of its block and every index without deleting it; the database keeps it
    /// until it dies. Nothing for an entity that stands in no block of this drawing.
    void removeEntity(CVexDbEntity* entity);
    /// Takes the entity out of every index but its block, whose task that and the ownership are.
    void forgetEntity(CVexDbEntity* entity);
    /// The contrary, for one that stands in a block of this drawing: makes it an entity of the
    /// database, bound to this drawing's records.
    void enterEntity(CVexDbEntity* entity);
    /// Keeps an object that left its place until the database dies, so that undo records and sets
    /// never dangle.
    void retire(std::unique_ptr<CVexDbObject> object);
    /// Lets go of a retired object that is about to get an owner again; nothing for any other.
    void reclaim(const CVexDbObject& object);

    /// Redraws the current view; nothing without one.
    void Draw();
    /// Draws every entity of a class on the active context.
    void DrawEntities(VexDb::ClassType type);
    void setActiveDC(CDC* dc) { m_activeDC = dc; }
    [[nodiscard]] CDC* activeDC() const { return m_activeDC; }
    /// The off-screen buffer of the last draw of a view, replaced at each draw.
    void setBuffer(std::unique_ptr<CVexBuffDC> buffer);
    [[nodiscard]] CVexBuffDC* buffer() const { return m_buffer.get(); }
    [[nodiscard]] CVexDbPenCache& pens() { return m_pens; }
    /// The indexes of this drawing's views.
    [[nodiscard]] CVexDbSpatialIndexes& spatialIndexes() { return *m_spatialIndexes; }
    /// What the running drawing pass changes about every entity.
    [[nodiscard]] CVexDbDrawPass& drawPass() { return m_drawPass; }
    /// A number that is the host's: nothing here looks at it.
    [[nodiscard]] int dragState() const { return m_dragState; }
    void setDragState(int state) { m_dragState = state; }
    /// True from the destructor's first line on.
    [[nodiscard]] bool isClosing() const { return m_isClosing; }

    /// Writes the drawing to a named file, whole or not at all: true when it stands there.
    bool SaveAs(const CString& path);
    /// Makes the header's 160 by 120 picture of the current view, through the backend in force;
    /// without pixels, on a failure or past 500 ms the picture stays as it was.
    void DrawThumnail();
    /// Renames the file at `path` to its ".bak" name, whose old holder is deleted. Nothing when no
    /// file stands there, or when it is its own backup.
    void MakeBakFile(const CString& path);
    /// What the last Save or Read found.
    [[nodiscard]] const VexDbLoadReport& lastReport() const { return m_report; }
    /// Every fault of the structure in words: pointers, orders, owners, indexes. Empty when whole.
    [[nodiscard]] std::vector<CString> selfCheck();

    /// Shows the read-out, drawing units, in `text`. With a null `base`, `point` is a device
    /// position. Else both are logical, and grid snap and ortho hold `point` too. Nothing for a
    /// null `point`; the view is not looked at.
    void SetCoordinate(CWnd* view, CWnd* text, CPoint* point, CPoint* base);

    /// The file of the running Save or Read; stays set afterwards as the last one, until it closes.
    [[nodiscard]] CFile* file() const { return m_file; }
    /// Not owned.
    void setFile(CFile* file) { m_file = file; }
    /// While a Read runs: hash lookups of what was read so far; else null.
    [[nodiscard]] CVexDbLoadContext* loading() const { return m_loading; }

private:
    template <class Record>
    static CVexDbObjectId currentOf(const CVexDbTableWithCurrent<Record>& table)
    {
        return CVexDbObjectId(table.getCurrentRecord());
    }
    [[nodiscard]] bool isBound(const CVexDbEntity& entity) const;
    bool writeAll();
    void readAll();
    void selectSavedCurrents();
    void fillHeader(const CString& path);
    void refreshSavedNames();
    bool saveRefused(const CString& what);
    bool readRefused(const VexDbFault& fault);

    CDC* m_activeDC = nullptr;
    std::unique_ptr<CVexBuffDC> m_buffer;
    CFile* m_file = nullptr;
    VexDbFileHeader_tag m_header;
    VexDbDrawingSettings_tag m_settings;
    VexDbDimSettings_tag m_dimSettings;
    CVexGePoint2d m_lastPoint;
    CVexDbEntity* m_lastEntity = nullptr;
    CVexDbEntityTracker* m_activeTracker = nullptr;
    CVexGePlane m_plane;
    bool m_isClosing = false;                               // asked by whatever dies after it
    std::unique_ptr<CVexDbSpatialIndexes> m_spatialIndexes; // entities and views tell it their end
    // What left its place, found by its address when it comes back. Above the tables, so freed
    // after them.
    std::unordered_map<const CVexDbObject*, std::unique_ptr<CVexDbObject>> m_retired;
    CVexDbPenCache m_pens;
    CVexDbDrawPass m_drawPass;
    VexDbLoadReport m_report;
    CVexDbLoadContext* m_loading = nullptr;
    CVexDbLayerTable m_layers;
    CVexDbColorTable m_colors;
    CVexDbLTypeTable m_linetypes;
    CVexDbBlockTable m_blocks;
    CVexDbDisplayTable m_displays;
    CVexDbTextStyleTable m_textStyles;
    CVexDbSymbolTable m_symbols;
    CVexDbEntityTable m_entities;
    CVexDbProjectInfoTable m_projectInfos;
    CVexDbRevisionTable m_revisions;
    std::unique_ptr<CVexCommandHandler> m_commandHandler;
    std::unique_ptr<CVexUndoHandler> m_undoHandler;
    int m_dragState = 0;
};

/// Segments of a full turn when curves are shown.
extern VEXDB_EXPORT std::uint16_t _wArcRes;

/// Full path of the running program; true.
VEXDB_EXPORT bool _GetModulePath(CString& out);
/// True when every character of the trimmed text is a decimal digit; also for an empty one.
VEXDB_EXPORT bool _isDigitValue(CString text);
/// True when no character of the trimmed text is a letter: signs, points and commas all pass.
VEXDB_EXPORT bool _isNumericValue(CString text);
/// `text` in a code page, NUL-terminated, in a buffer that the caller frees with delete[].
VEXDB_EXPORT char* _ConvertUnicodeToAnsi(const wchar_t* text, unsigned codePage);
/// Scans the square around `centre`, column by column, for a pixel of the background colour; true
/// with its logical position in `found`.
VEXDB_EXPORT bool _getPixelInofo(CDC* dc, int radius, CPoint centre, CPoint& found);
/// Asks the person for a folder, starting at `start`; 1 and the path, or 0 on cancel or without a
/// parent, and on a backend that cannot ask.
VEXDB_EXPORT int _FindFolderDlg(CWnd* parent, CString& out, const wchar_t* title,
                                const CString& start);
