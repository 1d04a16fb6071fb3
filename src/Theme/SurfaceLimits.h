// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace cadorel::surfaceLimits {

/// In pixels, far more than any look needs and little enough to be drawn in no time: of a corner, and of how
/// far a shadow or a stroke is blurred or moved.
inline constexpr double largestRadius = 4096;
inline constexpr double largestReach = 64;

/// @p value as far as it lies within; 0 for what is no number.
inline double bounded(double value, double low, double high)
{
    return std::isfinite(value) ? std::clamp(value, low, high) : 0;
}

inline bool isSeen(const QColor &color)
{
    return color.isValid() && color.alpha() > 0;
}

} // namespace cadorel::surfaceLimits
