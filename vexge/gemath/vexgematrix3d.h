#pragma once

#include "platform/base/vexexport.h"

/// A 4 by 4 matrix, row by row: a carrier of sixteen numbers for the host, with no arithmetic.
class VEXGE_EXPORT CVexGeMatrix3d {
public:
    double m[4][4];

    /// Leaves the elements unset.
    CVexGeMatrix3d() {} // NOLINT(cppcoreguidelines-pro-type-member-init): unset is the promise
    CVexGeMatrix3d(const CVexGeMatrix3d&) = default;
    CVexGeMatrix3d& operator=(const CVexGeMatrix3d&) = default;
    virtual ~CVexGeMatrix3d();

    double operator()(int row, int column) const { return m[row][column]; }
    double& operator()(int row, int column) { return m[row][column]; }
};
