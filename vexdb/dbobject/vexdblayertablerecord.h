#pragma once

#include "platform/device/vexdevicetypes.h"
#include "vexdb/dbobject/vexdbrefset.h"
#include "vexdb/dbobject/vexdbtablerecord.h"

#include <cstdint>

/// A layer: colour, linetype and weight of what is drawn by layer, and whether it shows.
class VEXDB_EXPORT CVexDbLayerTableRecord : public CVexDbTableRecord, public CVexDbRefSet {
public:
    static constexpr const wchar_t* kBaseLayer = L"0";

    explicit CVexDbLayerTableRecord(CVexDbDatabase* database);
    CVexDbLayerTableRecord(const CVexDbLayerTableRecord& other);
    ~CVexDbLayerTableRecord() override;
    bool save() override;
    /// Also enters the layer in the colour and the linetype that it names.
    bool read() override;
    /// Refused for the base layer "0", whose argument is cut all the same.
    void setName(wchar_t* name) override;
    using CVexDbTableRecord::setName;
    /// Takes name and fields over, resolved by name in this record's drawing.
    CVexDbLayerTableRecord& operator=(const CVexDbLayerTableRecord& other);

    /// The layer's own mask, not the object's: bit 0 off, bit 1 locked.
    [[nodiscard]] std::uint16_t status() const { return m_layerStatus; }
    void setStatus(std::uint16_t mask) { m_layerStatus = mask; }
    [[nodiscard]] bool isOff() const { return (m_layerStatus & kOff) != 0; }
    [[nodiscard]] bool isLocked() const { return (m_layerStatus & kLocked) != 0; }
    void setIsOff(bool off) { setBit(kOff, off); }
    void setIsLocked(bool locked) { setBit(kLocked, locked); }
    void resetStatus() { m_layerStatus = 0; }
    [[nodiscard]] CVexDbObjectId getColorId() const { return CVexDbObjectId(m_color); }
    /// Only assigns: the colour is not told of the layer.
    void setColorId(const CVexDbObjectId& id) { m_color = id.getPObject(); }
    /// A layer without a colour shows as colour "7" does.
    [[nodiscard]] COLORREF getColorValue() const;
    [[nodiscard]] CVexDbObjectId getLinetypeId() const { return CVexDbObjectId(m_linetype); }
    [[nodiscard]] CVexDbObjectId getThreadId() const { return getLinetypeId(); }
    /// Moves the layer from the old linetype's layers to the new one's; null is allowed.
    void setLinetypeId(const CVexDbObjectId& id);
    /// Takes colour and linetype of these names in this record's drawing, null for none.
    void bindTo(CVexDbObject* color, CVexDbObject* linetype);
    /// Takes the layer out of the layers of its linetype and of every colour.
    void leaveUsers();
    [[nodiscard]] VexDb::LineWeight getLineWeight() const { return m_weight; }
    void setLineWeight(VexDb::LineWeight weight) { m_weight = weight; }

private:
    static constexpr std::uint16_t kOff = 1;
    static constexpr std::uint16_t kLocked = 2;
    void setBit(std::uint16_t bit, bool on)
    {
        m_layerStatus = static_cast<std::uint16_t>(on ? m_layerStatus | bit : m_layerStatus & ~bit);
    }
    void resolve(std::uint64_t colorNumber, std::uint64_t linetypeNumber);

    std::uint16_t m_layerStatus = 0;
    CVexDbObject* m_color = nullptr;
    CVexDbObject* m_linetype = nullptr;
    VexDb::LineWeight m_weight = static_cast<VexDb::LineWeight>(0);
};
