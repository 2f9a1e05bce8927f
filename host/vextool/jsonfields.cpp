#include "host/vextool/jsonfields.h"

#include "platform/base/vextext.h"

#include <charconv>
#include <cmath>
#include <limits>

std::string jsonText(const JsonObject& object, int indent)
{
    return object.dump(indent, ' ', false, JsonObject::error_handler_t::replace);
}

JsonObject numberOut(double value)
{
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value > 0 ? "Infinity" : "-Infinity";
    }
    return value;
}

JsonObject pointOut(const CVexGePoint2d& point)
{
    return {numberOut(point.x), numberOut(point.y)};
}

JsonFields::JsonFields(const JsonObject& object) : m_object(object)
{
    // What every line has; the identifiers are drawn anew, so that drawings can be put together.
    take("kind");
    const JsonObject* const id = take("id");
    if (id != nullptr && !id->is_number_unsigned()) {
        refuse("id", "a positive whole number");
    }
}

const JsonObject* JsonFields::take(const char* name)
{
    m_taken.insert(name);
    const auto found = m_object.find(name);
    return found == m_object.end() ? nullptr : &*found;
}

void JsonFields::fail(const std::string& what)
{
    if (m_fault.empty()) {
        m_fault = what;
    }
}

void JsonFields::refuse(const char* name, const char* expected)
{
    fail(std::string("\"") + name + "\" is not " + expected);
}

bool JsonFields::done()
{
    for (const auto& [name, value] : m_object.items()) {
        if (!m_taken.contains(name)) {
            fail("\"" + name + "\" is not known here");
        }
    }
    return m_fault.empty();
}

double JsonFields::numberIn(const JsonObject& value, const char* name)
{
    if (value.is_number()) {
        return value.get<double>();
    }
    if (value == "NaN") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (value == "Infinity" || value == "-Infinity") {
        const double infinity = std::numeric_limits<double>::infinity();
        return value == "Infinity" ? infinity : -infinity;
    }
    refuse(name, "made of numbers");
    return 0.0;
}

double JsonFields::number(const char* name)
{
    if (!has(name)) {
        fail(std::string("\"") + name + "\" is missing");
        return 0.0;
    }
    return number(name, 0.0);
}

double JsonFields::number(const char* name, double otherwise)
{
    const JsonObject* const value = take(name);
    return value == nullptr ? otherwise : numberIn(*value, name);
}

CVexGePoint2d JsonFields::point(const char* name)
{
    if (!has(name)) {
        fail(std::string("\"") + name + "\" is missing");
    }
    return point(name, {});
}

CVexGePoint2d JsonFields::point(const char* name, const CVexGePoint2d& otherwise)
{
    const JsonObject* const pair = take(name);
    if (pair == nullptr) {
        return otherwise;
    }
    if (!pair->is_array() || pair->size() != 2) {
        refuse(name, "a pair [x, y]");
        return otherwise;
    }
    return {numberIn((*pair)[0], name), numberIn((*pair)[1], name)};
}

int JsonFields::integer(const char* name, int otherwise, int least, int most)
{
    return static_cast<int>(wideInteger(name, otherwise, least, most));
}

std::int64_t JsonFields::wideInteger(const char* name, std::int64_t otherwise, std::int64_t least,
                                     std::int64_t most)
{
    const JsonObject* const value = take(name);
    if (value == nullptr) {
        return otherwise;
    }
    // By way of a double: a whole number that no integer holds is out of the range, not wrapped.
    const auto highest = static_cast<double>(most);
    const double number = value->is_number_integer() ? value->get<double>() : highest + 1.0;
    if (number < static_cast<double>(least) || number > highest) {
        refuse(name,
               ("a whole number from " + std::to_string(least) + " to " + std::to_string(most))
                   .c_str());
        return otherwise;
    }
    return static_cast<std::int64_t>(number);
}

bool JsonFields::flag(const char* name, bool otherwise)
{
    const JsonObject* const value = take(name);
    if (value != nullptr && !value->is_boolean()) {
        refuse(name, "true or false");
        return otherwise;
    }
    return value == nullptr ? otherwise : value->get<bool>();
}

CString JsonFields::text(const char* name, const char* otherwise, std::size_t most)
{
    const JsonObject* const value = take(name);
    if (value != nullptr && !value->is_string()) {
        refuse(name, "a text");
        return {};
    }
    CString text = CString::fromUtf8(value == nullptr ? otherwise : value->get<std::string>());
    if (utf16Length(text.str()) > most || text.str().find(L'\0') != std::wstring::npos) {
        refuse(name, ("a text of at most " + std::to_string(most) + " characters").c_str());
    }
    return text;
}

CString JsonFields::name(const char* name)
{
    CString found = text(name, "");
    if (found.IsEmpty()) {
        fail(std::string("\"") + name + "\" is missing or empty");
    }
    return found;
}

unsigned JsonFields::color(const char* name, unsigned otherwise)
{
    if (!has(name)) {
        return otherwise;
    }
    const std::string text = this->text(name, "").utf8();
    unsigned value = 0;
    const char* const end = text.data() + text.size();
    if (text.size() != 7 || text[0] != '#' ||
        std::from_chars(text.data() + 1, end, value, 16).ptr != end) {
        refuse(name, "a colour like #ff8000");
        return otherwise;
    }
    return value >> 16 | (value & 0xff00) | (value & 0xff) << 16;
}

const JsonObject& JsonFields::list(const char* name)
{
    static const JsonObject empty = JsonObject::array();
    const JsonObject* const value = take(name);
    if (value != nullptr && !value->is_array()) {
        refuse(name, "a list");
        return empty;
    }
    return value == nullptr ? empty : *value;
}
