#include "platform/base/vexfields.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

std::string hex(const std::vector<std::byte>& bytes)
{
    std::string text;
    for (const std::byte byte : bytes) {
        text += "0123456789abcdef"[std::to_integer<unsigned>(byte) >> 4];
        text += "0123456789abcdef"[std::to_integer<unsigned>(byte) & 15];
    }
    return text;
}

std::vector<std::byte> bytesOf(std::initializer_list<int> values)
{
    std::vector<std::byte> bytes;
    for (const int value : values) {
        bytes.push_back(static_cast<std::byte>(value));
    }
    return bytes;
}

enum class Weight : std::int32_t { kByLayer = -1 };

TEST(FieldsTest, NumbersAreLittleEndianWithoutGaps)
{
    CMemFile file;
    CVexFieldWriter fields(file);
    fields(true, std::uint16_t{0x0102}, Weight::kByLayer, 1.0, std::uint64_t{0x0102030405060708});
    ASSERT_TRUE(file.Close());
    EXPECT_EQ("01"
              "0201"
              "ffffffff"
              "000000000000f03f"
              "0807060504030201",
              hex(file.bytes()));
}

TEST(FieldsTest, AnyByteButZeroIsATrueBool)
{
    CMemFile file(bytesOf({0x80, 0x00, 0xfe, 0xff, 0xff, 0xff}));
    CVexFieldReader fields(file);
    bool first = false;
    bool second = true;
    int number = 0;
    fields(first, second, number);
    EXPECT_TRUE(first);
    EXPECT_FALSE(second);
    EXPECT_EQ(-2, number);
}

TEST(FieldsTest, ATextFillsItsArrayWithZeros)
{
    CMemFile file;
    CVexFieldWriter fields(file);
    const wchar_t name[5] = L"a\u20ac";
    fields(name);
    ASSERT_TRUE(file.Close());
    EXPECT_EQ("6100ac20000000000000", hex(file.bytes()));
}

TEST(FieldsTest, ATextIsCutBeforeTheCharacterThatDoesNotFit)
{
    std::array<std::byte, 8> at;
    at.fill(std::byte{0xcc});
    storeText(at.data(), 4, L"ab\U0001f600");
    EXPECT_EQ("6100620000000000", hex({at.begin(), at.end()}));
    storeText(at.data(), 4, L"a\U0001f600");
    EXPECT_EQ("61003dd800de0000", hex({at.begin(), at.end()}));
    storeText(at.data(), 4, nullptr);
    EXPECT_EQ("0000000000000000", hex({at.begin(), at.end()}));
}

TEST(FieldsTest, ATextWithoutNulInTheFileEndsBeforeItsLastUnit)
{
    CMemFile file(bytesOf({'a', 0, 'b', 0, 'c', 0, 'd', 0}));
    CVexFieldReader fields(file);
    wchar_t name[4] = L"###";
    fields(name);
    EXPECT_STREQ(L"abc", name);
}

TEST(FieldsTest, WhatFollowsTheNulIsNotRead)
{
    CMemFile file(bytesOf({'a', 0, 0, 0, 'x', 0, 'y', 0}));
    CVexFieldReader fields(file);
    wchar_t name[4] = L"###";
    fields(name);
    EXPECT_EQ(std::wstring(L"a\0\0\0", 4), std::wstring(name, 4));
}

TEST(FieldsTest, AnEarlyEndLeavesFieldsAsTheyAre)
{
    CMemFile file(bytesOf({1, 0, 2}));
    CVexFieldReader fields(file);
    std::uint16_t first = 7;
    std::uint16_t second = 8;
    std::uint8_t third = 9;
    fields(first, second, third);
    EXPECT_EQ(1, first);
    EXPECT_EQ(8, second);
    EXPECT_EQ(9, third); // one failure ends the record, though a byte would be left
    EXPECT_TRUE(fields.failed());
}

} // namespace
