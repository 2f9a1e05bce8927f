#include "host/vextool/settingsjson.h"

#include "platform/base/vextext.h"
#include "vexdb/vexdbdatabase.h"

#include <array>

namespace {

using Settings = VexDbDrawingSettings_tag;

// The settings by name: a further one is a further row of its type.
template <class T>
struct SettingRow {
    const char* name;
    T Settings::*member;
};

constexpr std::array kFlags{
    SettingRow<bool>{"ortho", &Settings::m_bOrtho},
    SettingRow<bool>{"gripSnap", &Settings::m_bGripSnap},
    SettingRow<bool>{"gridVisible", &Settings::m_bGridVisible},
    SettingRow<bool>{"polarReadout", &Settings::m_bPolarReadout},
    SettingRow<bool>{"gridSnap", &Settings::m_bGridSnap},
    SettingRow<bool>{"snapIntersection", &Settings::m_bSnapIntersection},
    SettingRow<bool>{"snapCenter", &Settings::m_bSnapCenter},
    SettingRow<bool>{"snapNearest", &Settings::m_bSnapNearest},
    SettingRow<bool>{"gridPointSnap", &Settings::m_bGridPointSnap},
};

constexpr std::array kBytes{
    SettingRow<std::uint8_t>{"gridDivisions", &Settings::m_nGridDivisions},
    SettingRow<std::uint8_t>{"pointStyle", &Settings::m_nPointStyle},
    SettingRow<std::uint8_t>{"pointSize", &Settings::m_nPointSize},
    SettingRow<std::uint8_t>{"pickBox", &Settings::m_nPickBox},
};

constexpr std::array kNumbers{
    SettingRow<double>{"linetypeScale", &Settings::m_dLinetypeScale},
    SettingRow<double>{"textHeight", &Settings::m_dTextHeight},
    SettingRow<double>{"gridStep", &Settings::m_dGridStep},
    SettingRow<double>{"zoomStep", &Settings::m_dZoomStep},
    SettingRow<double>{"scalePercent", &Settings::m_dScalePercent},
};

constexpr std::array kPoints{
    SettingRow<VexXY>{"blockBase", &Settings::m_ptBlockBase},
    SettingRow<VexXY>{"limitsMin", &Settings::m_ptLimitsMin},
    SettingRow<VexXY>{"limitsMax", &Settings::m_ptLimitsMax},
    SettingRow<VexXY>{"extentsMin", &Settings::m_ptExtentsMin},
    SettingRow<VexXY>{"extentsMax", &Settings::m_ptExtentsMax},
    SettingRow<VexXY>{"viewMin", &Settings::m_ptViewMin},
    SettingRow<VexXY>{"viewMax", &Settings::m_ptViewMax},
    SettingRow<VexXY>{"paperMin", &Settings::m_ptPaperMin},
    SettingRow<VexXY>{"paperMax", &Settings::m_ptPaperMax},
};

std::string nameOf(const CVexDbObjectId& id)
{
    const auto* record = static_cast<const CVexDbTableRecord*>(id.getPObject());
    return record == nullptr ? "" : record->getName().utf8();
}

/// The record that a member names; null where the member is missing, told when the record is.
template <class Table>
CVexDbObjectId recordNamed(JsonFields& fields, const char* member, const Table& table)
{
    CVexDbObjectId id;
    if (fields.has(member)) {
        const CString name = fields.text(member, "");
        if (!table.getAt(name, id, false)) {
            fields.fail(std::string("there is no ") + member + " \"" + name.utf8() + "\"");
        }
    }
    return id;
}

} // namespace

JsonObject settingsObject(CVexDbDatabase& database)
{
    const Settings& settings = database.settings();
    JsonObject object;
    object["kind"] = "settings";
    object["description"] = CString(database.FileInfo()->m_szDescription).utf8();
    for (const auto& row : kFlags) {
        object[row.name] = settings.*row.member;
    }
    for (const auto& row : kBytes) {
        object[row.name] = settings.*row.member;
    }
    for (const auto& row : kNumbers) {
        object[row.name] = numberOut(settings.*row.member);
    }
    for (const auto& row : kPoints) {
        const VexXY& point = settings.*row.member;
        object[row.name] = {numberOut(point.x), numberOut(point.y)};
    }
    return object;
}

void makeSettings(CVexDbDatabase& database, JsonFields& fields)
{
    Settings settings = database.settings();
    const CString before(database.FileInfo()->m_szDescription);
    const CString description = fields.text("description", before.utf8().c_str(), 255);
    for (const auto& row : kFlags) {
        settings.*row.member = fields.flag(row.name, settings.*row.member);
    }
    for (const auto& row : kBytes) {
        settings.*row.member =
            static_cast<std::uint8_t>(fields.integer(row.name, settings.*row.member, 0, 255));
    }
    for (const auto& row : kNumbers) {
        settings.*row.member = fields.number(row.name, settings.*row.member);
    }
    for (const auto& row : kPoints) {
        const VexXY& point = settings.*row.member;
        const CVexGePoint2d read = fields.point(row.name, CVexGePoint2d(point.x, point.y));
        settings.*row.member = VexXY{read.x, read.y};
    }
    if (fields.done()) {
        database.settings() = settings;
        copyText(database.FileInfo()->m_szDescription, description);
    }
}

JsonObject currentObject(CVexDbDatabase& database)
{
    JsonObject object;
    object["kind"] = "current";
    object["space"] = database.settings().m_nCurrentSpace;
    object["layer"] = nameOf(database.currentLayer());
    object["linetype"] = nameOf(database.currentLinetype());
    object["color"] = nameOf(database.currentColor());
    object["textstyle"] = nameOf(database.currentTextStyle());
    object["weight"] = static_cast<int>(database.currentLineWeight());
    return object;
}

void makeCurrent(CVexDbDatabase& database, JsonFields& fields)
{
    Settings& settings = database.settings();
    const int space = fields.integer("space", settings.m_nCurrentSpace, 0, 1);
    const CVexDbObjectId layer = recordNamed(fields, "layer", database.layers());
    const CVexDbObjectId linetype = recordNamed(fields, "linetype", database.linetypes());
    const CVexDbObjectId color = recordNamed(fields, "color", database.colors());
    const CVexDbObjectId style = recordNamed(fields, "textstyle", database.textStyles());
    const int weight = fields.integer("weight", settings.m_nLineWeight, -3, 10000);
    if (space == 1 && !database.blocks().has(CVexDbBlockTable::kPaperSpace)) {
        fields.fail("\"space\" 1 is not in this drawing");
    }
    if (!fields.done()) {
        return;
    }
    settings.m_nCurrentSpace = static_cast<std::uint16_t>(space);
    settings.m_nLineWeight = weight;
    // A null identifier changes nothing.
    database.setCurrentLayer(layer);
    database.setCurrentLinetype(linetype);
    database.setCurrentColor(color);
    database.setCurrentTextStyle(style);
}
