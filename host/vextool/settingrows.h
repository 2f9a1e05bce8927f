#pragma once

#include "host/vextool/jsonfields.h"
#include "platform/base/vextext.h"
#include "vexge/gemath/vexxy.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <type_traits>

/// A member of a fixed block of the drawing by its name in JSON: a further one is a further row.
template <class Block, class T>
struct SettingRow {
    const char* name;
    T Block::*member;
};

/// Rows of several types in the order in which they are written.
template <class Block, class... T>
constexpr auto settingRows(SettingRow<Block, T>... rows)
{
    return std::make_tuple(rows...);
}

// The JSON form of a member by its type.

inline JsonObject settingOut(bool value)
{
    return value;
}

inline JsonObject settingOut(double value)
{
    return numberOut(value);
}

inline JsonObject settingOut(const VexXY& value)
{
    return {numberOut(value.x), numberOut(value.y)};
}

inline JsonObject settingOut(const wchar_t* text)
{
    return CString(text).utf8();
}

template <class Integer>
requires std::is_integral_v<Integer> JsonObject settingOut(Integer value)
{
    return value;
}

// Takes a member over where the JSON has it.

inline void settingIn(JsonFields& fields, const char* name, bool& value)
{
    value = fields.flag(name, value);
}

inline void settingIn(JsonFields& fields, const char* name, double& value)
{
    value = fields.number(name, value);
}

inline void settingIn(JsonFields& fields, const char* name, VexXY& value)
{
    const CVexGePoint2d read = fields.point(name, CVexGePoint2d(value.x, value.y));
    value = VexXY{read.x, read.y};
}

template <std::size_t N>
void settingIn(JsonFields& fields, const char* name, wchar_t (&text)[N])
{
    const std::string before = CString(text).utf8();
    copyText(text, fields.text(name, before.c_str(), N - 1));
}

template <class Integer>
requires std::is_integral_v<Integer>
void settingIn(JsonFields& fields, const char* name, Integer& value)
{
    using Limits = std::numeric_limits<Integer>;
    value = static_cast<Integer>(fields.wideInteger(name, value, Limits::min(), Limits::max()));
}

/// Adds every row's member to `object`.
template <class Block, class Rows>
void writeSettings(const Block& block, const Rows& rows, JsonObject& object)
{
    const auto write = [&](const auto& row) { object[row.name] = settingOut(block.*row.member); };
    std::apply([&](const auto&... each) { (write(each), ...); }, rows);
}

/// Puts the members that the JSON has into `block`; what is wrong stays in `fields`.
template <class Block, class Rows>
void readSettings(JsonFields& fields, const Rows& rows, Block& block)
{
    const auto read = [&](const auto& row) { settingIn(fields, row.name, block.*row.member); };
    std::apply([&](const auto&... each) { (read(each), ...); }, rows);
}
