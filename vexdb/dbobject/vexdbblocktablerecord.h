#pragma once

#include "vexdb/dbobject/vexdbidset.h"
#include "vexdb/dbobject/vexdbtablerecord.h"

#include <vector>

class CVexDbCurve;
class CVexDbDisplayTableRecord;
class CVexDbEntSetIterator;
class CVexDbEntity;
class CVexFieldReader;

/// A block: owns its entities, in order of creation, and has a view of its own name.
class VEXDB_EXPORT CVexDbBlockTableRecord : public CVexDbTableRecord {
public:
    explicit CVexDbBlockTableRecord(CVexDbDatabase* database);
    CVexDbBlockTableRecord(const CVexDbBlockTableRecord&) = delete;
    ~CVexDbBlockTableRecord() override;
    /// The block's frame in a file: entities and attribute definitions, each behind its class type.
    bool save() override;
    bool read() override;
    void setDatabase(CVexDbDatabase* database) override;
    /// Renames the block and its view.
    void setName(wchar_t* name) override;
    using CVexDbTableRecord::setName;
    /// Takes over the name and copies of the entities, each with an identity of its own, bound to
    /// this block's drawing and entered in it.
    CVexDbBlockTableRecord& operator=(const CVexDbBlockTableRecord& other);

    /// Takes an entity in (class 29 among the attribute definitions), becomes its owner, and shows
    /// it in the block's view; gives the number of entities.
    int addEntity(const CVexDbObjectId& id);
    /// The same for many, none of class 29.
    int addEntities(std::span<CVexDbObject* const> entities);
    /// Takes it out of block and view; it has no owner then.
    int removeEntity(const CVexDbObjectId& id);
    /// True for an entity or attribute definition of this block.
    [[nodiscard]] bool contains(const CVexDbObjectId& id) const;
    int addReference(const CVexDbObjectId& id);
    int removeReference(const CVexDbObjectId& id);
    [[nodiscard]] int getNumEntity() const { return static_cast<int>(m_entities.size()); }
    [[nodiscard]] CVexDbIdSet* entitySet() { return &m_entities; }
    [[nodiscard]] CVexDbIdSet* attribDefinitionSet() { return &m_attribDefinitions; }
    [[nodiscard]] CVexDbIdSet* referenceSet() { return &m_references; }
    /// False, with no iterator, for an empty block; else the caller owns it.
    bool newIterator(CVexDbEntSetIterator*& out, bool start);
    /// Takes every entity out of the drawing and retires it, erased ones included; 0, or -1 when
    /// there was none.
    int ClearEntity();
    int ClearReferenceSet();
    /// Takes every entity out of the drawing's indexes and out of the view, which the block gives
    /// up; the block keeps the entities.
    void leaveDrawing();
    /// Makes or finds the view of this block's name; the two spaces, and a view that was there, are
    /// made current. A new view of a filled block shows its entities.
    void initDisplayRec();
    [[nodiscard]] CVexDbDisplayTableRecord* displayRecord() const { return m_display; }
    void setDisplayRecord(CVexDbDisplayTableRecord* display) { m_display = display; }
    /// Enters all that the block holds in its view, which must be set.
    void showEntities();
    /// With mode 1 offers a changed boundary curve to the drawing's hatches until one says that it
    /// is its own; the view of this block is then painted anew.
    void OnCurveChanged(CVexDbCurve* curve, int mode);
    /// The text tables of the block, in order; null for a name that none of them has.
    void GetTextTable(std::vector<CVexDbEntity*>& tables);
    CVexDbEntity* GetTextTable(const CString& name);

private:
    CVexDbIdSet& setFor(const CVexDbObjectId& id);
    bool saveSet(const CVexDbIdSet& set);
    bool readEntities();
    bool readNextEntity(CVexFieldReader& fields, bool inStep);
    bool readAttribDefinitions();

    CVexDbIdSet m_attribDefinitions;
    CVexDbIdSet m_entities;
    CVexDbDisplayTableRecord* m_display = nullptr;
    CVexDbIdSet m_references;
};
