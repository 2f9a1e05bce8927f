#include "vexge/geentity2d/vexgecspline2d_system.h"

void CVexGeCSplineSystem::resize(std::size_t points, std::size_t spans)
{
    count = static_cast<int>(points);
    for (auto* weights : {&subDiag, &diag, &superDiag}) {
        weights->assign(points, 0.0);
    }
    ratio.assign(spans, 1.0);
    chords.assign(spans, CVexGeVector2d());
    mat.assign(points, CVexGeVector2d());
    tangents.assign(spans, CVexGeVector2d());
}

void CVexGeCSplineSystem::setInnerRow(std::size_t row, std::size_t before, std::size_t after)
{
    const double k = ratio[before];
    subDiag[row] = 1.0;
    diag[row] = 2.0 * k * (1.0 + k);
    superDiag[row] = k * k * ratio[after];
    mat[row] = (chords[before] + chords[after] * (k * k)) * 3.0;
}

void CVexGeCSplineSystem::generate(const std::vector<CVexGePoint2d>& points)
{
    const std::size_t n = points.size();
    if (n < 2) {
        return;
    }
    resize(n, n - 1);
    for (std::size_t i = 0; i + 1 < n; ++i) {
        chords[i] = points[i + 1] - points[i];
    }
    for (std::size_t i = 0; i + 2 < n; ++i) {
        ratio[i] = chords[i].length() / chords[i + 1].length();
    }
    for (std::size_t i = 1; i + 1 < n; ++i) {
        setInnerRow(i, i - 1, i);
    }
    diag[0] = 2.0;
    superDiag[0] = ratio[0];
    mat[0] = chords[0] * 3.0;
    subDiag[n - 1] = 1.0;
    diag[n - 1] = 2.0 * ratio[n - 2];
    mat[n - 1] = chords[n - 2] * 3.0;
    SolveMatrix();
    for (std::size_t i = 0; i + 1 < n; ++i) {
        tangents[i] = mat[i + 1] * ratio[i];
    }
}

void CVexGeCSplineSystem::genClosed(const std::vector<CVexGePoint2d>& points)
{
    const std::size_t n = points.size();
    if (n < 2) {
        return;
    }
    resize(n, n);
    for (std::size_t i = 0; i < n; ++i) {
        chords[i] = points[(i + 1) % n] - points[i];
    }
    for (std::size_t i = 0; i < n; ++i) {
        ratio[i] = chords[i].length() / chords[(i + 1) % n].length();
    }
    for (std::size_t i = 0; i < n; ++i) {
        setInnerRow(i, (i + n - 1) % n, i);
    }
    SolveMatrixEX();
    for (std::size_t i = 0; i < n; ++i) {
        tangents[i] = mat[(i + 1) % n] * ratio[i];
    }
}

void CVexGeCSplineSystem::SolveMatrix()
{
    iterate(false);
}

void CVexGeCSplineSystem::SolveMatrixEX()
{
    iterate(true);
}

void CVexGeCSplineSystem::iterate(bool cyclic)
{
    // Two rounds and no more, though the tangents are not settled by then. Drawings keep only the
    // control points, and their curves come out as they were drawn by stopping at the same place.
    constexpr int kRounds = 2;
    const std::size_t n = mat.size();
    std::vector<CVexGeVector2d> solution(n);
    for (std::size_t i = 0; i < n; ++i) {
        solution[i] = mat[i] / diag[i];
    }
    for (int round = 0; round < kRounds; ++round) {
        m_last = solution;
        for (std::size_t i = 0; i < n; ++i) {
            CVexGeVector2d rest = mat[i];
            if (i > 0 || cyclic) {
                rest -= m_last[(i + n - 1) % n] * subDiag[i];
            }
            if (i + 1 < n || cyclic) {
                rest -= m_last[(i + 1) % n] * superDiag[i];
            }
            solution[i] = rest / diag[i];
        }
    }
    mat.swap(solution);
}
