#pragma once

class CVexDbArc;
class CVexDbCircle;
class CVexDbEntity;
class CVexDbLine;

/// The most parts that one question makes: a number beyond is a slip of the hand, and fills the
/// memory.
inline constexpr int kMostParts = 100'000;

// A new polyline, the caller's, with the properties of the source, which it covers in `count` equal
// segments. A circle has at least two.
CVexDbEntity* dividedInto(int count, const CVexDbLine& line);
CVexDbEntity* dividedInto(int count, const CVexDbArc& arc);
CVexDbEntity* dividedInto(int count, const CVexDbCircle& circle);
