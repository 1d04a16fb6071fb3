// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/CassetteLayout.h"

#include <algorithm>
#include <cmath>

namespace cadorel {

namespace {

constexpr double usualScale = 0.18;
/// A smaller cover would be a dot, a larger one hides the whole picture.
constexpr double smallestScale = 0.05;
constexpr double largestScale = 1;
/// The centre of the cover does not leave the picture.
constexpr double farthest = 0.5;
constexpr double radiusFraction = 0.06;

double sensible(double value, double low, double high, double usual)
{
    return std::isnan(value) ? usual : std::clamp(value, low, high);
}

} // namespace

QRectF CassetteLayout::coverRect(double side, double scale, double offsetX, double offsetY)
{
    if (!std::isfinite(side) || side <= 0)
        return {};
    const double cover = side * sensible(scale, smallestScale, largestScale, usualScale);
    const double x = side * (0.5 + sensible(offsetX, -farthest, farthest, 0));
    const double y = side * (0.5 + sensible(offsetY, -farthest, farthest, 0));
    return {x - cover / 2, y - cover / 2, cover, cover};
}

double CassetteLayout::coverRadius(double side)
{
    return std::isfinite(side) ? std::max(side, 0.0) * radiusFraction : 0;
}

} // namespace cadorel
