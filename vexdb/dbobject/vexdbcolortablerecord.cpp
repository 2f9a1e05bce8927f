#include "vexdb/dbobject/vexdbcolortablerecord.h"

#include "platform/base/vexfields.h"
#include "platform/base/vextext.h"

#include <algorithm>
#include <array>

CVexDbColorTableRecord::CVexDbColorTableRecord(CVexDbDatabase* database)
    : CVexDbTableRecord(database)
{
    // Not the colour record's own number: every file ever written has this one.
    setClassType(VexDb::kEntityTableRecord);
}

CVexDbColorTableRecord::CVexDbColorTableRecord(const CVexDbColorTableRecord& other)
    // NOLINTNEXTLINE(bugprone-copy-constructor-init): nothing refers to a copy
    : CVexDbTableRecord(other), CVexDbLayerRefSet(), m_color(other.m_color),
      m_modified(other.m_modified)
{
    setColorName(other.m_colorName);
    renewIndex();
}

CVexDbColorTableRecord::~CVexDbColorTableRecord() = default;

CVexDbColorTableRecord& CVexDbColorTableRecord::operator=(const CVexDbColorTableRecord& other)
{
    if (this != &other) {
        assignName(other);
        renewIndex();
        setColorName(other.m_colorName);
        m_color = other.m_color;
        m_modified = other.m_modified;
    }
    return *this;
}

bool CVexDbColorTableRecord::save()
{
    if (!CVexDbTableRecord::save()) {
        return false;
    }
    CVexFieldWriter{*file()}(m_colorName, m_color, m_modified);
    return !file()->failed();
}

bool CVexDbColorTableRecord::read()
{
    if (!CVexDbTableRecord::read()) {
        return false;
    }
    renewIndex();
    CVexFieldReader{*file()}(m_colorName, m_color, m_modified);
    return !file()->failed();
}

void CVexDbColorTableRecord::setName(wchar_t* name)
{
    CVexDbTableRecord::setName(name);
    renewIndex();
}

void CVexDbColorTableRecord::renewIndex()
{
    m_index = toInteger(name());
}

void CVexDbColorTableRecord::setColorName(const wchar_t* name)
{
    copyText(m_colorName, name);
}

void CVexDbColorTableRecord::getNaturColorName(CString& out)
{
    struct Named {
        COLORREF color;
        const wchar_t* name;
    };
    static constexpr std::array kNames = {
        Named{RGB(0, 0, 0), L"black"},      Named{RGB(0, 0, 255), L"blue"},
        Named{RGB(0, 255, 0), L"green"},    Named{RGB(0, 255, 255), L"cyan"},
        Named{RGB(255, 0, 0), L"red"},      Named{RGB(255, 0, 255), L"magenta"},
        Named{RGB(255, 255, 0), L"yellow"}, Named{RGB(255, 255, 255), L"white"},
    };
    out = getName();
    const auto found = std::find_if(kNames.begin(), kNames.end(),
                                    [this](const Named& named) { return named.color == m_color; });
    if (found != kNames.end()) {
        out = found->name;
        if (m_color == RGB(255, 255, 255) && colorIndex() == kByBlockIndex) {
            out = L"ByBlock";
        } else if (m_color == RGB(255, 255, 255) && colorIndex() == kByLayerIndex) {
            out = L"ByLayer";
        }
    }
    setColorName(out);
}
