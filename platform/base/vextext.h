#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-16 code units of `text`; a lone surrogate in it stays what it is, so that texts of a file
/// come back unit by unit.
VEXPLATFORM_EXPORT std::u16string toUtf16(std::wstring_view text);
/// Wide text of UTF-16 code units; a lone surrogate is kept as its own value.
VEXPLATFORM_EXPORT std::wstring fromUtf16(std::u16string_view units);
/// Length in UTF-16 code units.
VEXPLATFORM_EXPORT std::size_t utf16Length(std::wstring_view text);

/// Copies `text` into an array of `capacity` wide characters, cut so that it takes at most
/// capacity - 1 UTF-16 code units (never between the halves of one character), and fills the rest
/// with NUL. A null text empties the array. True when nothing was cut.
VEXPLATFORM_EXPORT bool copyText(wchar_t* array, std::size_t capacity, const wchar_t* text);
template <std::size_t N>
bool copyText(wchar_t (&array)[N], const wchar_t* text)
{
    return copyText(array, N, text);
}

/// True for a blank of any kind, whatever the locale.
VEXPLATFORM_EXPORT bool isWhiteSpace(wchar_t character);

/// The number at the head of `text` after white space, 0.0 when there is none; never by the locale.
/// Digits with a point and an exponent only; one too large for a double is the largest double.
VEXPLATFORM_EXPORT double toNumber(std::wstring_view text);
/// The decimal integer at the head of `text` after white space, 0 when there is none; saturates.
VEXPLATFORM_EXPORT int toInteger(std::wstring_view text);
