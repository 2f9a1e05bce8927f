#include "host/vextool/xdatajson.h"

#include "platform/base/vextext.h"
#include "vexdb/dbobject/dbentity/vexdbxdata.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

namespace {

constexpr int kMostOfAType = std::numeric_limits<int>::max();
constexpr std::size_t kMostNodes = 65535; // a file counts nodes and characters in 16 bits
constexpr std::size_t kMostText = 65535;

std::string hexOf(const Return_Struct::Value& value)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const std::byte byte : value.bytes) {
        text += kDigits[std::to_integer<unsigned>(byte) >> 4];
        text += kDigits[std::to_integer<unsigned>(byte) & 15];
    }
    return text;
}

bool bytesOf(const std::string& text, Return_Struct::Value& value)
{
    if (text.size() != 2 * std::size(value.bytes)) {
        return false;
    }
    for (std::size_t i = 0; i < std::size(value.bytes); ++i) {
        unsigned byte = 0;
        const char* const digits = text.data() + 2 * i;
        if (std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2) {
            return false;
        }
        value.bytes[i] = static_cast<std::byte>(byte);
    }
    return true;
}

// The node's text is the node's: an array that its list frees.
wchar_t* ownText(const CString& text)
{
    auto* const copy = new wchar_t[text.str().size() + 1];
    std::ranges::copy(text.str(), copy);
    copy[text.str().size()] = L'\0';
    return copy;
}

Return_Struct* nodeIn(const JsonObject& object, JsonFields& fields)
{
    auto* const node = new Return_Struct;
    JsonFields own(object);
    node->type = own.integer("type", 0, -kMostOfAType - 1, kMostOfAType);
    if (node->type == Return_Struct::kString) {
        node->value.text = ownText(own.text("text", "", kMostText));
    } else if (!bytesOf(own.text("bytes", "").utf8(), node->value)) {
        own.fail("\"bytes\" is not 48 hexadecimal digits");
    }
    if (!own.done()) {
        fields.fail("\"xdata\": " + own.fault());
    }
    return node;
}

} // namespace

JsonObject xdataOut(const Return_Struct* head)
{
    JsonObject list = JsonObject::array();
    for (; head != nullptr; head = head->next) {
        JsonObject node;
        node["type"] = head->type;
        if (head->type == Return_Struct::kString) {
            node["text"] = head->value.text == nullptr ? "" : CString(head->value.text).utf8();
        } else {
            node["bytes"] = hexOf(head->value);
        }
        list.push_back(std::move(node));
    }
    return list;
}

Return_Struct* xdataIn(JsonFields& fields)
{
    const JsonObject& list = fields.list("xdata");
    if (list.size() > kMostNodes) {
        fields.fail("\"xdata\" has more than 65535 nodes");
        return nullptr;
    }
    Return_Struct* head = nullptr;
    Return_Struct** last = &head;
    for (const JsonObject& node : list) {
        if (!node.is_object()) {
            fields.fail("\"xdata\" is not a list of objects");
            break;
        }
        *last = nodeIn(node, fields);
        last = &(*last)->next;
    }
    return head;
}
