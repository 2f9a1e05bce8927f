#pragma once

/// The widest logical coordinate that a truncation gives; far beyond any screen or sheet.
inline constexpr int kTruncateLimit = 1'000'000'000;

/// `value` without its fraction (towards zero), held within +-kTruncateLimit; NaN gives 0. Every
/// double of a drawing that becomes an integer comes through here, so none can overflow.
constexpr int truncateSaturated(double value)
{
    if (value != value) {
        return 0;
    }
    if (value >= kTruncateLimit) {
        return kTruncateLimit;
    }
    if (value <= -kTruncateLimit) {
        return -kTruncateLimit;
    }
    return static_cast<int>(value);
}
