#include "host/vextool/settingsjson.h"

#include "host/vextool/settingrows.h"
#include "platform/base/vextext.h"
#include "vexdb/vexdbdatabase.h"

namespace {

using Settings = VexDbDrawingSettings_tag;
using DimSettings = VexDbDimSettings_tag;

// The members with a number in their name mean nothing to this program, yet a drawing keeps them.
constexpr auto kSettings = settingRows<Settings>(
    SettingRow<Settings, bool>{"ortho", &Settings::m_bOrtho},
    SettingRow<Settings, bool>{"gripSnap", &Settings::m_bGripSnap},
    SettingRow<Settings, bool>{"gridVisible", &Settings::m_bGridVisible},
    SettingRow<Settings, bool>{"polarReadout", &Settings::m_bPolarReadout},
    SettingRow<Settings, bool>{"gridSnap", &Settings::m_bGridSnap},
    SettingRow<Settings, bool>{"snapIntersection", &Settings::m_bSnapIntersection},
    SettingRow<Settings, bool>{"snapCenter", &Settings::m_bSnapCenter},
    SettingRow<Settings, bool>{"snapNearest", &Settings::m_bSnapNearest},
    SettingRow<Settings, bool>{"gridPointSnap", &Settings::m_bGridPointSnap},
    SettingRow<Settings, std::uint8_t>{"gridDivisions", &Settings::m_nGridDivisions},
    SettingRow<Settings, std::uint8_t>{"pointStyle", &Settings::m_nPointStyle},
    SettingRow<Settings, std::uint8_t>{"pointSize", &Settings::m_nPointSize},
    SettingRow<Settings, std::uint8_t>{"pickBox", &Settings::m_nPickBox},
    SettingRow<Settings, std::uint8_t>{"reserved06", &Settings::m_nReserved6},
    SettingRow<Settings, std::uint8_t>{"reserved07", &Settings::m_nReserved7},
    SettingRow<Settings, std::uint8_t>{"reserved08", &Settings::m_nReserved8},
    SettingRow<Settings, std::uint32_t>{"reserved10", &Settings::m_nReserved10},
    SettingRow<Settings, double>{"linetypeScale", &Settings::m_dLinetypeScale},
    SettingRow<Settings, double>{"textHeight", &Settings::m_dTextHeight},
    SettingRow<Settings, double>{"gridStep", &Settings::m_dGridStep},
    SettingRow<Settings, double>{"zoomStep", &Settings::m_dZoomStep},
    SettingRow<Settings, double>{"scalePercent", &Settings::m_dScalePercent},
    SettingRow<Settings, double>{"reserved30", &Settings::m_dReserved30},
    SettingRow<Settings, double>{"reserved38", &Settings::m_dReserved38},
    SettingRow<Settings, VexXY>{"blockBase", &Settings::m_ptBlockBase},
    SettingRow<Settings, VexXY>{"limitsMin", &Settings::m_ptLimitsMin},
    SettingRow<Settings, VexXY>{"limitsMax", &Settings::m_ptLimitsMax},
    SettingRow<Settings, VexXY>{"extentsMin", &Settings::m_ptExtentsMin},
    SettingRow<Settings, VexXY>{"extentsMax", &Settings::m_ptExtentsMax},
    SettingRow<Settings, VexXY>{"viewMin", &Settings::m_ptViewMin},
    SettingRow<Settings, VexXY>{"viewMax", &Settings::m_ptViewMax},
    SettingRow<Settings, VexXY>{"paperMin", &Settings::m_ptPaperMin},
    SettingRow<Settings, VexXY>{"paperMax", &Settings::m_ptPaperMax});

constexpr auto kDimSettings = settingRows<DimSettings>(
    SettingRow<DimSettings, wchar_t[32]>{"arrowBlock", &DimSettings::m_szArrowBlock},
    SettingRow<DimSettings, wchar_t[32]>{"textStyle", &DimSettings::m_szTextStyle},
    SettingRow<DimSettings, std::int16_t>{"angularPlaces", &DimSettings::m_nAngularPlaces},
    SettingRow<DimSettings, std::int16_t>{"reserved82", &DimSettings::m_nAngularReserved},
    SettingRow<DimSettings, std::int16_t>{"lineColor", &DimSettings::m_nLineColor},
    SettingRow<DimSettings, std::int16_t>{"extensionColor", &DimSettings::m_nExtensionColor},
    SettingRow<DimSettings, std::int16_t>{"textColor", &DimSettings::m_nTextColor},
    SettingRow<DimSettings, std::int16_t>{"linearPlaces", &DimSettings::m_nLinearPlaces},
    SettingRow<DimSettings, std::int16_t>{"reserved8c", &DimSettings::m_nReserved8c},
    SettingRow<DimSettings, std::int16_t>{"reserved8e", &DimSettings::m_nReserved8e},
    SettingRow<DimSettings, std::int16_t>{"suppressZeros", &DimSettings::m_nSuppressZeros},
    SettingRow<DimSettings, double>{"arrowSize", &DimSettings::m_dArrowSize},
    SettingRow<DimSettings, double>{"lengthFactor", &DimSettings::m_dLengthFactorB8},
    SettingRow<DimSettings, double>{"reservedA0", &DimSettings::m_dReservedA0},
    SettingRow<DimSettings, double>{"reservedA8", &DimSettings::m_dReservedA8},
    SettingRow<DimSettings, double>{"reservedB0", &DimSettings::m_dReservedB0},
    SettingRow<DimSettings, double>{"reservedC0", &DimSettings::m_dReservedC0},
    SettingRow<DimSettings, double>{"reservedC8", &DimSettings::m_dReservedC8},
    SettingRow<DimSettings, double>{"reservedD0", &DimSettings::m_dReservedD0},
    SettingRow<DimSettings, double>{"reservedD8", &DimSettings::m_dReservedD8},
    SettingRow<DimSettings, double>{"reservedE0", &DimSettings::m_dReservedE0});

constexpr auto kPlane =
    settingRows<CVexGePlane>(SettingRow<CVexGePlane, double>{"a", &CVexGePlane::a},
                             SettingRow<CVexGePlane, double>{"b", &CVexGePlane::b},
                             SettingRow<CVexGePlane, double>{"c", &CVexGePlane::c},
                             SettingRow<CVexGePlane, double>{"d", &CVexGePlane::d});

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
    JsonObject object;
    object["kind"] = "settings";
    object["description"] = CString(database.FileInfo()->m_szDescription).utf8();
    writeSettings(database.settings(), kSettings, object);
    return object;
}

void makeSettings(CVexDbDatabase& database, JsonFields& fields)
{
    Settings settings = database.settings();
    const CString before(database.FileInfo()->m_szDescription);
    const CString description = fields.text("description", before.utf8().c_str(), 255);
    readSettings(fields, kSettings, settings);
    if (fields.done()) {
        database.settings() = settings;
        copyText(database.FileInfo()->m_szDescription, description);
    }
}

JsonObject dimSettingsObject(CVexDbDatabase& database)
{
    JsonObject object;
    object["kind"] = "dimsettings";
    writeSettings(database.dimSettings(), kDimSettings, object);
    return object;
}

void makeDimSettings(CVexDbDatabase& database, JsonFields& fields)
{
    DimSettings settings = database.dimSettings();
    readSettings(fields, kDimSettings, settings);
    if (fields.done()) {
        database.dimSettings() = settings;
    }
}

JsonObject planeObject(CVexDbDatabase& database)
{
    JsonObject object;
    object["kind"] = "plane";
    writeSettings(database.plane(), kPlane, object);
    return object;
}

void makePlane(CVexDbDatabase& database, JsonFields& fields)
{
    CVexGePlane plane = database.plane();
    readSettings(fields, kPlane, plane);
    if (fields.done()) {
        database.plane() = plane;
    }
}

JsonObject projectObject(CVexDbDatabase& database)
{
    JsonObject object;
    object["kind"] = "project";
    object["first"] = database.projectInfos().firstText().utf8();
    object["second"] = database.projectInfos().secondText().utf8();
    return object;
}

void makeProject(CVexDbDatabase& database, JsonFields& fields)
{
    CVexDbProjectInfoTable& project = database.projectInfos();
    const CString first = fields.text("first", project.firstText().utf8().c_str());
    const CString second = fields.text("second", project.secondText().utf8().c_str());
    if (fields.done()) {
        project.setFirstText(first);
        project.setSecondText(second);
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
