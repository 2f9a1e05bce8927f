#include "tests/platform/standinmachine.h"
#include "tests/vexdb/entityfixture.h"

#include <algorithm>

namespace {

Return_Struct* stringNode(const std::wstring& text)
{
    auto* node = new Return_Struct;
    node->type = Return_Struct::kString;
    node->value.text = new wchar_t[text.size() + 1]();
    std::ranges::copy(text, node->value.text);
    return node;
}

Return_Struct* numberNode(double number)
{
    auto* node = new Return_Struct;
    node->type = 3004;
    node->value.number = number;
    return node;
}

/// A node's 32 bytes in a file: a string's.
Bytes stringImage(unsigned count)
{
    Bytes bytes;
    bytes.i32(3007).u32(0).u16(count).zeros(22);
    return bytes;
}

class XDataTest : public EntityTest {};

TEST_F(XDataTest, WithoutAListTwoZeroBytesStand)
{
    CVexDbLine line({1, 2}, {3, 4});
    EXPECT_SAME_BYTES(head(line, VexDb::kLine).u16(0).point(1, 2).point(3, 4).all(), saved(line));
}

TEST_F(XDataTest, StringsAndNumbersStandInListOrder)
{
    CVexDbLine line({1, 2}, {3, 4});
    Return_Struct* list = stringNode(L"Öl \U0001F600");
    list->next = numberNode(2.5);
    line.SetXData(list);
    Bytes expected = head(line, VexDb::kLine);
    expected.u16(2) << stringImage(5);
    expected.u16(0xd6).u16('l').u16(' ').u16(0xd83d).u16(0xde00);
    expected.i32(3004).u32(0).f64(2.5).zeros(16).point(1, 2).point(3, 4);
    EXPECT_SAME_BYTES(expected.all(), saved(line));
}

TEST_F(XDataTest, ReadsBackWhatItWrote)
{
    CVexDbLine line({1, 2}, {3, 4});
    Return_Struct* list = stringNode(L"Ö\U0001F600");
    list->next = numberNode(2.5);
    line.SetXData(list);
    CVexDbLine again(&drawing);
    ASSERT_TRUE(reads(again, saved(line)));
    ASSERT_NE(nullptr, again.xData());
    EXPECT_EQ(L"Ö\U0001F600", std::wstring(again.xData()->value.text));
    EXPECT_EQ(2.5, again.xData()->next->value.number);
    EXPECT_EQ(nullptr, again.xData()->next->next);
    EXPECT_POINT(3, 4, again.EndPoint());
}

TEST_F(XDataTest, PointersOfAFileAreNotBelieved)
{
    CVexDbLine line(&drawing);
    Bytes file = head(line, VexDb::kLine);
    file.u16(2).i32(3007).u32(0xdeadbeef).u16(1).u16(0xffff).zeros(4);
    file.u64(0x1122334455667788).u64(0x99).u16('x');
    file << stringImage(0);
    file.point(0, 0).point(1, 1);
    ASSERT_TRUE(reads(line, file.all()));
    EXPECT_EQ(L"x", std::wstring(line.xData()->value.text));
    EXPECT_EQ(L"", std::wstring(line.xData()->next->value.text)); // a count of 0 is an empty text
    EXPECT_EQ(nullptr, line.xData()->next->next);
}

struct BadCount {
    const char* name;
    unsigned nodes;
    unsigned units;
};

class BadXDataTest : public EntityTest, public testing::WithParamInterface<BadCount> {};

TEST_P(BadXDataTest, CountsBeyondTheFileAreRefused)
{
    CVexDbLine line(&drawing);
    Bytes file = head(line, VexDb::kLine);
    file.u16(GetParam().nodes) << stringImage(GetParam().units);
    file.zeros(16);
    EXPECT_FALSE(reads(line, file.all()));
    EXPECT_EQ(nullptr, line.xData());
}

INSTANTIATE_TEST_SUITE_P(, BadXDataTest,
                         testing::Values(BadCount{"Nodes", 65535, 0}, BadCount{"Units", 1, 9},
                                         BadCount{"SecondNode", 2, 0}),
                         [](const auto& row) { return row.param.name; });

TEST_F(XDataTest, RefusedMemoryIsNoList)
{
    CStandInMachine machine;
    machine.mostBytes = 64; // a node is granted, 20 wide characters are not
    const CVexMachineScope scope(machine);
    CVexDbLine line(&drawing);
    Bytes file = head(line, VexDb::kLine);
    file.u16(1) << stringImage(20);
    file.zeros(80);
    EXPECT_FALSE(reads(line, file.all()));
    EXPECT_EQ(nullptr, line.xData());
}

// The next six free exactly once: a leak or a second free shows under the address sanitizer.

TEST_F(XDataTest, CopyHoldsTheListOnAfterItsSourceIsGone)
{
    auto line = std::make_unique<CVexDbLine>(&drawing);
    line->SetXData(stringNode(L"valve"));
    const std::unique_ptr<CVexDbEntity> copy(line->CopyEntity(false));
    EXPECT_EQ(line->xData(), copy->xData());
    line.reset();
    EXPECT_EQ(L"valve", std::wstring(copy->xData()->value.text));
}

TEST_F(XDataTest, ReplacingTheHeadLetsTheOldListGoUnfreed)
{
    CVexDbLine line(&drawing);
    Return_Struct* before = numberNode(1.0);
    line.SetXData(before);
    auto* first = stringNode(L"new");
    first->next = before;
    line.SetXData(first); // puts a node in front of the list that was there
    EXPECT_EQ(1.0, line.xData()->next->value.number);
}

TEST_F(XDataTest, OneListMayBeGivenToTwoEntities)
{
    CVexDbLine line(&drawing);
    line.SetXData(numberNode(1.0));
    {
        CVexDbLine other(&drawing);
        other.SetXData(line.xData());
        other.ClearXData();
        EXPECT_EQ(nullptr, other.xData());
    }
    EXPECT_EQ(1.0, line.xData()->value.number);
}

// A node in front of a shared list leaves the others the list that they have, whoever goes first.

TEST_F(XDataTest, TheRestOfALongerListOutlivesIt)
{
    CVexDbLine other(&drawing);
    {
        CVexDbLine line(&drawing);
        line.SetXData(stringNode(L"shared"));
        other.SetXData(line.xData());
        Return_Struct* longer = numberNode(1.0);
        longer->next = line.xData();
        line.SetXData(longer);
    }
    EXPECT_EQ(L"shared", std::wstring(other.xData()->value.text));
}

TEST_F(XDataTest, ALongerListOutlivesTheHolderOfItsRest)
{
    CVexDbLine line(&drawing);
    line.SetXData(stringNode(L"shared"));
    auto copy = std::make_unique<CVexDbLine>(line);
    Return_Struct* longer = numberNode(1.0);
    longer->next = line.xData();
    line.SetXData(longer);
    copy.reset();
    EXPECT_EQ(L"shared", std::wstring(line.xData()->next->value.text));
}

TEST_F(XDataTest, ANodeTakenFromTheFrontIsTheCallers)
{
    CVexDbLine line(&drawing);
    line.SetXData(stringNode(L"kept"));
    Return_Struct* front = numberNode(1.0);
    front->next = line.xData();
    line.SetXData(front);
    line.SetXData(front->next);
    delete front;
    EXPECT_EQ(L"kept", std::wstring(line.xData()->value.text));
}

TEST_F(XDataTest, ListsThatSixteenBitsCannotCountDoNotFit)
{
    CVexDbLine line(&drawing);
    line.SetXData(stringNode(std::wstring(65535, L'x')));
    EXPECT_TRUE(xdataFits(line.xData()));
    CVexDbLine tooLong(&drawing);
    tooLong.SetXData(stringNode(std::wstring(65534, L'x') + L"\U0001F600"));
    EXPECT_FALSE(xdataFits(tooLong.xData()));
    CMemFile file;
    EXPECT_FALSE(saveXData(file, tooLong.xData()));
    EXPECT_TRUE(file.failed());
}

TEST_F(XDataTest, MoreNodesThanSixteenBitsCountDoNotFit)
{
    CVexDbLine line(&drawing);
    Return_Struct* list = nullptr;
    for (int i = 0; i < 65536; ++i) {
        auto* node = new Return_Struct;
        node->next = list;
        list = node;
    }
    line.SetXData(list);
    EXPECT_FALSE(xdataFits(line.xData()));
    EXPECT_TRUE(xdataFits(line.xData()->next));
}

} // namespace
