// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/LyricLineStyle.h"

#include <algorithm>

namespace cadorel {

namespace {

constexpr double brightest = 0.6; ///< of the lines about the current one
constexpr double dimmingPerLine = 0.1;
constexpr double mostDimming = 0.4;
constexpr double blurPerLine = 0.8;
constexpr double mostBlur = 3.0;
constexpr double restingScale = 0.95;

} // namespace

LyricLineStyle LyricLineStyle::of(int distance, bool isActive, double fontSize, bool blurEnabled)
{
    if (isActive)
        return {
            .pointSize = fontSize + activeGrowth, .isBold = true, .opacity = 1, .blurRadius = 0, .scale = 1};
    return {.pointSize = fontSize,
            .isBold = false,
            .opacity = brightest - std::min(distance * dimmingPerLine, mostDimming),
            .blurRadius = blurEnabled ? std::min(distance * blurPerLine, mostBlur) : 0,
            .scale = restingScale};
}

} // namespace cadorel
