#pragma once

#include "vexge/geentity2d/vexgepolyline2d_hits.h"
#include "vexge/geentity2d/vexgepolyline2d_index.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <cstddef>
#include <numeric>
#include <vector>

/// Calls `visit(i, candidates)` for the segments of `chain` in order, with the segments of `other`
/// that each may meet, in order too; for none, it may not.
template <class Visit>
void eachCandidates(const CVexGePolyline2d& chain, const CVexGePolyline2d& other, double tol,
                    const Visit& visit)
{
    const VexGeSegmentIndex own(chain);
    const VexGeSegmentIndex others(other);
    const double margin = 2.0 * tol + own.rounding() + others.rounding();
    struct Near {
        std::size_t segment = 0;
        VexGeBox box;
    };
    std::vector<Near> near; // the segments of `other` beside a run of `chain`
    std::vector<std::size_t> candidates;
    const auto meeting = [margin](const VexGeBox& box) {
        return [reach = box.grownBy(margin)](const VexGeBox& b) { return !b.apartFrom(reach); };
    };
    const auto meetsAny = [&](const VexGeBox& box) {
        return others.searchRuns(meeting(box), 0, [](std::size_t, std::size_t) { return true; });
    };
    own.descend(meetsAny, [&](const VexGeBox& box, std::size_t from, std::size_t to) {
        near.clear();
        const auto meetsRun = meeting(box);
        others.searchRuns(meetsRun, 0, [&](std::size_t first, std::size_t last) {
            for (std::size_t k = first; k < last; ++k) {
                const VexGeBox there = others.box(k);
                if (meetsRun(there)) {
                    near.push_back({k, there});
                }
            }
            return false;
        });
        for (std::size_t i = from; i < to && !near.empty(); ++i) {
            candidates.clear();
            const auto meets = meeting(own.box(i));
            for (const Near& there : near) {
                if (meets(there.box)) {
                    candidates.push_back(there.segment);
                }
            }
            if (!candidates.empty()) {
                visit(i, candidates);
            }
        }
    });
}

/// Every hit that the segments' own intersections give is one.
struct VexGeAnyHit {
    bool operator()(const auto& /*segment*/, const auto& /*receiver*/,
                    const CVexGePoint2d& /*hit*/) const
    {
        return true;
    }
};

/// Calls `take(index, segment, hits)` for each segment of `chain` with the list of its hits with
/// `other`, adjacent equal ones reduced, of those that `counts(segment, receiver, hit)` lets pass.
/// `take` may change the list.
template <class Take, class Counts = VexGeAnyHit>
void eachHitList(const CVexGePolyline2d& chain, const CVexGePolyline2d& other,
                 CVexGeEntity2d::Intersect kind, double tol, const Take& take,
                 const Counts& counts = {})
{
    const CVexGeEntity2d::Intersect fromOther = CVexGeEntity2d::exchanged(kind);
    std::vector<CVexGePoint2d> hits;
    const auto gather = [&](std::size_t i, const std::vector<std::size_t>& candidates) {
        CVexGePolylineWalk::at(chain, static_cast<unsigned>(i), [&](const auto& segment) {
            hits.clear();
            for (const std::size_t k : candidates) {
                CVexGePolylineWalk::at(other, static_cast<unsigned>(k), [&](const auto& receiver) {
                    for (const CVexGePoint2d& hit : hitsOf(receiver, segment, fromOther, tol)) {
                        if (counts(segment, receiver, hit)) {
                            hits.push_back(hit);
                        }
                    }
                    return true;
                });
            }
            if (!hits.empty()) {
                chain.CheckSameIntPoints(hits);
                take(static_cast<unsigned>(i), segment, hits);
            }
            return true;
        });
    };
    if (kind == CVexGeEntity2d::kExtendNone && tol <= kGeTol) {
        eachCandidates(chain, other, tol, gather);
        return;
    }
    // An extended curve, or a wide tolerance, reaches beyond the boxes.
    std::vector<std::size_t> all(other.numVerts());
    std::iota(all.begin(), all.end(), std::size_t{0});
    for (std::size_t i = 0; i < chain.numVerts(); ++i) {
        gather(i, all);
    }
}
