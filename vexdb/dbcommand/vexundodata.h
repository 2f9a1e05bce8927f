#pragma once

#include "platform/base/vexexport.h"

#include <memory>

class CVexDbEntity;

/// What an undo record keeps beside its numbers: a text, a shape. The records that hold it own it.
struct VEXDB_EXPORT VexUndoData {
    VexUndoData() = default;
    VexUndoData(const VexUndoData&) = delete;
    VexUndoData& operator=(const VexUndoData&) = delete;
    virtual ~VexUndoData();
    /// Gives the entity what is kept here and keeps what it had: once undoes, twice redoes.
    virtual void swapWith(CVexDbEntity& entity) = 0;
};

/// The shape of an entity, for an edit that no opposite edit takes back. Layer, colour, linetype,
/// weight and boundary tag have no part in it.
class VEXDB_EXPORT VexUndoGeometry : public VexUndoData {
public:
    /// Keeps the shape that `entity` has now; null for a kind that cannot be copied.
    static std::shared_ptr<VexUndoData> of(CVexDbEntity& entity);
    explicit VexUndoGeometry(std::unique_ptr<CVexDbEntity> shape);
    ~VexUndoGeometry() override;
    void swapWith(CVexDbEntity& entity) override;

private:
    std::unique_ptr<CVexDbEntity> m_shape; // in no drawing
};
