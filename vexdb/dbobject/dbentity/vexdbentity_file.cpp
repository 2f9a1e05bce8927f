#include "platform/base/vexfields.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdbnamedrecord.h"
#include "vexdb/dbobject/dbentity/vexdbxdata.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbloadcontext.h"

namespace {

/// The number by which a file refers to `record`; 0 for none.
std::uint64_t referenceTo(const CVexDbObject* record)
{
    return record == nullptr ? 0 : record->getCreatedTime();
}

/// The record of `table` with this number; null when there is none.
CVexDbObject* numberedRecord(const CVexDbTable& table, std::uint64_t hardId)
{
    CVexDbObjectId id; // a failed search leaves the record looked at last
    return table.getAt(hardId, id, false) ? id.getPObject() : nullptr;
}

// A running load finds a number by hash; without one the table is searched. What is not found is
// the record that every drawing has.

CVexDbObject* layerOf(CVexDbDatabase& drawing, std::uint64_t hardId)
{
    CVexDbLoadContext* loading = drawing.loading();
    CVexDbObject* record = loading != nullptr ? loading->layerByHardId(hardId)
                                              : numberedRecord(drawing.layers(), hardId);
    return record != nullptr
               ? record
               : namedRecord(drawing.layers(), CVexDbLayerTableRecord::kBaseLayer).getPObject();
}

CVexDbObject* linetypeOf(CVexDbDatabase& drawing, std::uint64_t hardId)
{
    CVexDbLoadContext* loading = drawing.loading();
    CVexDbObject* record = loading != nullptr ? loading->linetypeByHardId(hardId)
                                              : numberedRecord(drawing.linetypes(), hardId);
    return record != nullptr
               ? record
               : namedRecord(drawing.linetypes(), CVexDbLTypeTableRecord::kByLayer).getPObject();
}

CVexDbObject* colorOf(CVexDbDatabase& drawing, std::int32_t index)
{
    CVexDbColorTableRecord* record = nullptr;
    if (CVexDbLoadContext* loading = drawing.loading()) {
        record = loading->colorByIndex(index);
    } else {
        CString name;
        name.Format(L"%d", index);
        drawing.colors().getRecord(name, record, false);
    }
    return record != nullptr
               ? record
               : namedRecord(drawing.colors(), CVexDbColorTableRecord::kByLayer).getPObject();
}

} // namespace

bool CVexDbEntity::save()
{
    CFile* out = file();
    if (out == nullptr) {
        return false;
    }
    CVexFieldWriter{*out}(referenceTo(m_layer), referenceTo(m_lineType), savedColorIndex(),
                          m_lineWeight);
    return saveXData(*out, m_xdata);
}

// One run of bytes: a drawing has millions of entities, and most of them no extended data.
bool CVexDbEntity::saveHead(CFile& out)
{
    setHardId();
    CVexFieldWriter fields(out);
    if (m_xdata != nullptr) {
        fields(getCreatedTime(), classType(), status());
        return CVexDbEntity::save();
    }
    fields(getCreatedTime(), classType(), status(), referenceTo(m_layer), referenceTo(m_lineType),
           savedColorIndex(), m_lineWeight, std::uint16_t{0});
    return !out.failed();
}

std::int32_t CVexDbEntity::savedColorIndex() const
{
    return m_color == nullptr ? CVexDbColorTableRecord::kByLayerIndex : Color()->colorIndex();
}

bool CVexDbEntity::read()
{
    CFile* in = file();
    if (in == nullptr || !readReferences(*in)) {
        return false;
    }
    Return_Struct* list = nullptr;
    if (!readXData(*in, list)) {
        ClearXData();
        if (CVexDbLoadContext* loading = database()->loading()) {
            loading->fault(L"An entity's extended data is longer than the file");
        }
        return false;
    }
    if (list != nullptr || m_xdata != nullptr) {
        ClearXData();
        SetXData(list);
    }
    return true;
}

bool CVexDbEntity::readReferences(CFile& in)
{
    std::uint64_t layerNumber = 0;
    std::uint64_t linetypeNumber = 0;
    std::int32_t colorIndex = 0;
    VexDb::LineWeight weight = m_lineWeight;
    CVexFieldReader fields(in);
    fields(layerNumber, linetypeNumber, colorIndex, weight);
    if (fields.failed()) {
        return false;
    }
    CVexDbDatabase& drawing = *database();
    // One after the other: the report tells them in the order of the file.
    CVexDbObject* const newLayer = layerOf(drawing, layerNumber);
    CVexDbObject* const newLinetype = linetypeOf(drawing, linetypeNumber);
    CVexDbObject* const newColor = colorOf(drawing, colorIndex);
    bindTo(newLayer, newLinetype, newColor);
    m_lineWeight = weight;
    return true;
}

void CVexDbEntity::bindTo(CVexDbObject* layer, CVexDbObject* lineType, CVexDbObject* color)
{
    if (isListed()) {
        setLayer(CVexDbObjectId(layer));
        setLineType(CVexDbObjectId(lineType), false);
        setColor(CVexDbObjectId(color), false);
    } else { // as every entity that a drawing is loaded with
        m_layer = layer;
        m_lineType = lineType;
        m_color = color;
    }
}
