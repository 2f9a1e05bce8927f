#include "vexge/gemath/vexgematrix2d.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// One over the largest element of each row; false when a row is all zeros.
bool rowScales(const double a[3][3], double scales[3])
{
    for (int row = 0; row < 3; ++row) {
        double largest = 0.0;
        for (int column = 0; column < 3; ++column) {
            largest = std::max(largest, std::fabs(a[row][column]));
        }
        if (largest == 0.0) {
            return false;
        }
        scales[row] = 1.0 / largest;
    }
    return true;
}

/// Takes the products of the parts already found from column `j`, and gives the pivot's row: the
/// largest element by its row's scale, the later row on a tie.
int reduceColumn(double a[3][3], const double scales[3], int j)
{
    double best = 0.0;
    int pivot = j;
    for (int i = 0; i < 3; ++i) {
        for (int k = 0; k < std::min(i, j); ++k) {
            a[i][j] -= a[i][k] * a[k][j];
        }
        const double size = i < j ? -1.0 : scales[i] * std::fabs(a[i][j]);
        if (best <= size) {
            best = size;
            pivot = i;
        }
    }
    return pivot;
}

} // namespace

bool CVexGeMatrix2d::LU_Decompose(double a[3][3], int index[3])
{
    double scales[3] = {};
    if (!rowScales(a, scales)) {
        return false;
    }
    for (int j = 0; j < 3; ++j) {
        const int pivot = reduceColumn(a, scales, j);
        if (pivot != j) {
            std::swap_ranges(a[pivot], a[pivot] + 3, a[j]);
            scales[pivot] = scales[j];
        }
        index[j] = pivot;
        if (a[j][j] == 0.0) {
            return false;
        }
        const double inversePivot = 1.0 / a[j][j];
        for (int i = j + 1; i < 3; ++i) {
            a[i][j] *= inversePivot;
        }
    }
    return true;
}

void CVexGeMatrix2d::LU_Backsub(const double a[3][3], const int index[3], double b[3])
{
    int first = -1; // of the elements of b that are not zero; the sums start there
    for (int i = 0; i < 3; ++i) {
        double sum = std::exchange(b[index[i]], b[i]);
        if (first >= 0) {
            for (int j = first; j < i; ++j) {
                sum -= a[i][j] * b[j];
            }
        } else if (sum != 0.0) {
            first = i;
        }
        b[i] = sum;
    }
    for (int i = 2; i >= 0; --i) {
        double sum = b[i];
        for (int j = i + 1; j < 3; ++j) {
            sum -= a[i][j] * b[j];
        }
        b[i] = sum / a[i][i];
    }
}

CVexGeMatrix2d CVexGeMatrix2d::inverse() const
{
    CVexGeMatrix2d result(false);
    CVexGeMatrix2d parts = *this;
    int index[3] = {};
    if (!LU_Decompose(parts.m, index)) {
        return result;
    }
    for (int column = 0; column < 3; ++column) {
        double solution[3] = {};
        solution[column] = 1.0;
        LU_Backsub(parts.m, index, solution);
        for (int row = 0; row < 3; ++row) {
            result.m[row][column] = solution[row];
        }
    }
    return result;
}

CVexGeMatrix2d& CVexGeMatrix2d::invert()
{
    return *this = inverse();
}
