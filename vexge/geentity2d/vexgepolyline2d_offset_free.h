#pragma once

#include "vexge/geentity2d/vexgepolyline2d_index.h"
#include "vexge/geentity2d/vexgepolyline2d_offset.h"

#include <cstddef>
#include <vector>

/// The short way of an offset, for a chain of straight segments whose offsets surely meet nothing.
///
/// Nearly every chain that is drawn is such a one: its segments are longer than the distance, its
/// corners turn by less than a right angle, and what follows a few segments on lies far off. Then
/// the raw chains of both sides cross neither themselves nor each other and keep their distance
/// everywhere, so that neither is cut nor trimmed and the raw chain is the result, to the bit. Each
/// test here errs to the safe side: a chain that it does not pass goes the long way.
///
/// Between the offsets to both sides lies a strip for each segment, from the bisector of one corner
/// to that of the next. Where corners turn by less than a right angle no point of a strip is
/// farther than `kStripReach` distances from its segment.
class VexGeFreeOffset {
public:
    /// Looks into `source`, which has to outlive it. `dist` is not negative.
    VexGeFreeOffset(const CVexGePolyline2d& source, double dist);
    /// Whether the strips surely meet only where they follow each other.
    [[nodiscard]] bool isFree();
    /// The raw chain of that side, with its end at its start for a closed source; empty where a
    /// corner takes one of the rare ways that the corner tables have.
    [[nodiscard]] std::vector<CVexGePoint2d> rawChain(int side) const;

private:
    /// A segment as a vector, with its length.
    struct Run {
        CVexGeVector2d way;
        double length = 0.0;
    };
    /// Neighbouring segments that run into one quadrant: none turns back on another.
    struct Block {
        std::size_t from = 0;
        std::size_t to = 0;
        std::size_t quadrantRun = 0; // the same for blocks with no turn into another quadrant
    };

    [[nodiscard]] bool measureRuns();
    [[nodiscard]] bool turnsGently() const;
    [[nodiscard]] bool strayNowhere();
    void makeBlocks();
    [[nodiscard]] bool blocksApart(const Block& a, const Block& b) const;
    [[nodiscard]] bool segmentsApart(std::size_t a, std::size_t b) const;
    [[nodiscard]] bool runsAhead(std::size_t first, std::size_t steps) const;
    [[nodiscard]] VexGeBox boxOf(std::size_t from, std::size_t to) const;
    [[nodiscard]] std::size_t wrapped(std::size_t i) const
    {
        return i < m_points.size() ? i : i - m_points.size();
    }

    const std::vector<CVexGePoint2d>& m_points;
    const std::vector<double>& m_bulges;
    bool m_closed;
    double m_dist;
    std::vector<Run> m_runs;
    std::vector<Block> m_blocks;
};
