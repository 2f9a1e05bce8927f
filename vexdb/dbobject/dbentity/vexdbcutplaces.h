#pragma once

#include "vexge/gemath/vexgetol.h"

#include <cmath>
#include <iterator>
#include <map>

/// What a pick takes away, from cut to cut. An end without one is the curve's own; without any,
/// nothing is taken. The cuts are those of the map that was asked, and live as long.
template <class Cut>
struct VexDbCutPiece {
    const Cut* before = nullptr;
    const Cut* behind = nullptr;
};

/// Cuts by their place along a curve, drawing units from its start.
template <class Cut>
using VexDbCutPlaces = std::map<double, Cut>;

/// Adds a cut; of two that are not farther apart than `spacing` the first stays.
template <class Cut>
void addCut(VexDbCutPlaces<Cut>& cuts, double place, const Cut& cut, double spacing)
{
    const auto isApart = [&](const auto& other) {
        return std::fabs(other.first - place) > spacing;
    };
    const auto next = cuts.lower_bound(place);
    if ((next == cuts.end() || isApart(*next)) &&
        (next == cuts.begin() || isApart(*std::prev(next)))) {
        cuts.emplace_hint(next, place, cut);
    }
}

/// `place`, or that of the cut to which a pick there was snapped: it is on the cut, whatever
/// rounding made of the two.
template <class Cut>
double snappedToCut(const VexDbCutPlaces<Cut>& cuts, double place)
{
    const auto cut = cuts.lower_bound(place - kGeEpsilon);
    return cut != cuts.end() && cut->first <= place + kGeEpsilon ? cut->first : place;
}

/// The piece of an open curve at `place`: on the first cut it is that of the start.
template <class Cut>
VexDbCutPiece<Cut> openPieceOf(const VexDbCutPlaces<Cut>& cuts, double place)
{
    if (cuts.empty()) {
        return {};
    }
    const auto notBefore = cuts.lower_bound(place);
    if (notBefore == cuts.begin()) {
        return {nullptr, &notBefore->second};
    }
    const auto behind = cuts.upper_bound(place);
    if (behind == cuts.end()) {
        return {&cuts.rbegin()->second, nullptr};
    }
    return {&std::prev(notBefore)->second, &behind->second};
}
