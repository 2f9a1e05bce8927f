#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <cstddef>
#include <vector>

/// The linear system behind a run of a cubic spline: one row a point, with the neighbours' weights
/// beside the diagonal. Its vectors are kept from run to run.
struct VEXGE_EXPORT CVexGeCSplineSystem {
    int count = 0;               ///< points of the run
    std::vector<double> subDiag; ///< weight of the point before
    std::vector<double> diag;
    std::vector<double> superDiag; ///< weight of the point after
    std::vector<double> ratio;     ///< of each chord's length to the next one's
    std::vector<CVexGeVector2d> chords;
    std::vector<CVexGeVector2d> mat;      ///< right-hand side, then the start tangents
    std::vector<CVexGeVector2d> tangents; ///< end tangent of each span

    /// Solves the open run through `points`; nothing for fewer than 2.
    void generate(const std::vector<CVexGePoint2d>& points);
    /// The same for the run that returns to its first point.
    void genClosed(const std::vector<CVexGePoint2d>& points);
    /// Replaces `mat` by the solution, as far as two rounds bring it.
    void SolveMatrix();
    /// The same with the last and the first row as neighbours.
    void SolveMatrixEX();

private:
    void resize(std::size_t points, std::size_t spans);
    void setInnerRow(std::size_t row, std::size_t before, std::size_t after);
    void iterate(bool cyclic);

    std::vector<CVexGeVector2d> m_last; // the round before
};
