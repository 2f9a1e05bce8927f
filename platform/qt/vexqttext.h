#pragma once

#include "platform/base/cstring.h"

#include <QString>

inline QString toQString(const CString& text)
{
    return QString::fromStdWString(text.str());
}

inline CString toCString(const QString& text)
{
    return CString(text.toStdWString());
}
