#include "vexdb/dbobject/dbentity/vexdbxdata.h"

#include "platform/base/cfile.h"
#include "platform/base/vexfields.h"
#include "platform/base/vexmachine.h"
#include "platform/base/vextext.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

namespace {

// A node in a file: the type, 4 bytes without meaning (zeros), the value. A string's value is its
// length, and its units follow the node.
constexpr std::size_t kNodeSize = 32;
constexpr std::size_t kValueOffset = 8;
constexpr std::size_t kMostCount = 0xffff;

void freeList(Return_Struct* head)
{
    while (head != nullptr) {
        const std::unique_ptr<Return_Struct> node(head);
        head = node->next;
        if (node->type == Return_Struct::kString) {
            delete[] node->value.text;
        }
        if (head != nullptr && head->holders.any() && head->holders.remove() != 0) {
            return; // the rest is another list, which somebody still holds
        }
    }
}

/// Where `list` runs on into another one that is held for itself; null when it does not.
Return_Struct* heldTail(const Return_Struct& list)
{
    std::size_t passed = 0;
    for (Return_Struct* node = list.next; node != nullptr; node = node->next) {
        if (node->holders.any()) {
            return node;
        }
        if (++passed > kMostCount) {
            break;
        }
    }
    return nullptr;
}

std::wstring_view textOf(const Return_Struct& node)
{
    return node.value.text == nullptr ? std::wstring_view() : std::wstring_view(node.value.text);
}

std::size_t nodeCount(const Return_Struct* head)
{
    std::size_t count = 0;
    for (; head != nullptr && count <= kMostCount; head = head->next) {
        ++count; // one too many is enough to know: a list that bites its tail must end too
    }
    return count;
}

void writeText(CFile& file, const std::u16string& units)
{
    for (const char16_t unit : units) {
        storeLittle(file.give(sizeof unit), static_cast<std::uint16_t>(unit));
    }
}

void writeNode(CFile& file, const Return_Struct& node)
{
    std::byte image[kNodeSize] = {};
    storeLittle(image, node.type);
    std::u16string units;
    if (node.type == Return_Struct::kString) {
        units = toUtf16(textOf(node));
        storeLittle(image + kValueOffset, static_cast<std::uint16_t>(units.size()));
    } else {
        std::memcpy(image + kValueOffset, node.value.bytes, sizeof node.value.bytes);
    }
    std::memcpy(file.give(kNodeSize), image, kNodeSize);
    writeText(file, units);
}

/// The text of a string node, NUL-terminated, in a buffer that the node frees; null when the file
/// holds less than it says.
wchar_t* readText(CFile& file, std::size_t count)
{
    if (2 * count > file.remaining() ||
        !CVexMachine::current().mayAllocate((count + 1) * sizeof(wchar_t))) {
        return nullptr;
    }
    std::u16string units(count, u'\0');
    for (char16_t& unit : units) {
        const std::byte* at = file.take(sizeof unit);
        unit = at == nullptr ? u'\0' : static_cast<char16_t>(loadLittle<std::uint16_t>(at));
    }
    const std::wstring text = fromUtf16(units);
    auto* buffer = new wchar_t[count + 1]();
    std::ranges::copy(text, buffer);
    return buffer;
}

/// Fills `node` from its image: the type and, for a string, the length are all that is believed.
bool readNode(CFile& file, Return_Struct& node)
{
    const std::byte* image = file.take(kNodeSize);
    if (image == nullptr) {
        return false;
    }
    const auto type = loadLittle<std::int32_t>(image);
    if (type != Return_Struct::kString) {
        node.type = type;
        std::memcpy(node.value.bytes, image + kValueOffset, sizeof node.value.bytes);
        return true;
    }
    wchar_t* text = readText(file, loadLittle<std::uint16_t>(image + kValueOffset));
    if (text != nullptr) {
        node.type = type;
        node.value.text = text;
    }
    return text != nullptr;
}

/// Appends `count` nodes of the file at `tail`; false where one could not be read.
bool readNodes(CFile& file, std::size_t count, Return_Struct** tail)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (!CVexMachine::current().mayAllocate(sizeof(Return_Struct))) {
            return false;
        }
        *tail = new Return_Struct;
        if (!readNode(file, **tail)) {
            return false;
        }
        tail = &(*tail)->next;
    }
    return true;
}

} // namespace

// A node put in front of a list makes a list of its own, and copies may go on with the rest. So a
// held list counts as one holder of the list that it runs on into.

void holdXData(Return_Struct* head)
{
    if (head == nullptr) {
        return;
    }
    Return_Struct* tail = head->holders.any() ? nullptr : heldTail(*head);
    if (tail != nullptr) {
        tail->holders.add();
    }
    head->holders.add();
}

void letGoXData(Return_Struct* head)
{
    if (head == nullptr || !head->holders.any() || head->holders.remove() != 0) {
        return;
    }
    if (Return_Struct* tail = heldTail(*head)) {
        tail->holders.remove();
    }
}

void releaseXData(Return_Struct* head)
{
    if (head != nullptr && head->holders.remove() == 0) {
        freeList(head);
    }
}

bool xdataFits(const Return_Struct* head)
{
    if (nodeCount(head) > kMostCount) {
        return false;
    }
    for (; head != nullptr; head = head->next) {
        if (head->type == Return_Struct::kString && utf16Length(textOf(*head)) > kMostCount) {
            return false;
        }
    }
    return true;
}

bool saveXData(CFile& file, const Return_Struct* head)
{
    if (head != nullptr && !xdataFits(head)) {
        file.fail();
        return false;
    }
    storeLittle(file.give(2), static_cast<std::uint16_t>(nodeCount(head)));
    for (; head != nullptr; head = head->next) {
        writeNode(file, *head);
    }
    return !file.failed();
}

bool readXData(CFile& file, Return_Struct*& head)
{
    head = nullptr;
    const std::byte* at = file.take(2);
    const std::size_t count = at == nullptr ? 0 : loadLittle<std::uint16_t>(at);
    if (count * kNodeSize <= file.remaining() && readNodes(file, count, &head) && !file.failed()) {
        return true;
    }
    freeList(head);
    head = nullptr;
    file.fail();
    return false;
}
