#pragma once

#include "platform/base/cstring.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

/// One object of a drawing as one JSON object, its "kind" first. Numbers that JSON does not know
/// are the texts "NaN", "Infinity" and "-Infinity".
using JsonObject = nlohmann::ordered_json;

/// The object on one line, or by `indent` on many; half a character in a name becomes U+FFFD.
std::string jsonText(const JsonObject& object, int indent = -1);
JsonObject numberOut(double value);
JsonObject pointOut(const CVexGePoint2d& point);

/// Reads the members of one JSON object by type and remembers the first that is wrong: a maker asks
/// for all it needs, then once for done(), and changes nothing in the drawing before that.
class JsonFields {
public:
    /// `object` must outlive the reader.
    explicit JsonFields(const JsonObject& object);

    [[nodiscard]] bool has(const char* name) const { return m_object.contains(name); }
    double number(const char* name);
    double number(const char* name, double otherwise);
    CVexGePoint2d point(const char* name);
    /// A member that is missing keeps `otherwise`.
    CVexGePoint2d point(const char* name, const CVexGePoint2d& otherwise);
    /// A whole number from `least` to `most`.
    int integer(const char* name, int otherwise, int least, int most);
    std::int64_t wideInteger(const char* name, std::int64_t otherwise, std::int64_t least,
                             std::int64_t most);
    bool flag(const char* name, bool otherwise);
    /// A text without NUL, of at most `most` UTF-16 units.
    CString text(const char* name, const char* otherwise, std::size_t most = 80);
    /// A text that must be there and not empty.
    CString name(const char* name);
    /// "#rrggbb" as red, green, blue from the lowest byte.
    unsigned color(const char* name, unsigned otherwise);
    /// An array, empty when it is missing.
    const JsonObject& list(const char* name);
    /// A number that stands in a list of the member `name`.
    double numberIn(const JsonObject& value, const char* name);

    /// Remembers what is wrong, unless something was wrong before.
    void fail(const std::string& what);
    /// True when nothing is wrong, members that nobody asked for included.
    bool done();
    [[nodiscard]] const std::string& fault() const { return m_fault; }

private:
    const JsonObject* take(const char* name);
    void refuse(const char* name, const char* expected);

    const JsonObject& m_object;
    std::set<std::string> m_taken;
    std::string m_fault;
};
