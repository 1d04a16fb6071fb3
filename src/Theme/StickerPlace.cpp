// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/StickerPlace.h"

#include "Theme/KawaiiCartoon.h"

#include <cmath>

namespace cadorel {

namespace {

/// Far enough from whole turns that neighbours of a scatter share no direction.
constexpr double seedStep = 137;
constexpr double heightTurn = 1.3;
constexpr double sizeTurn = 0.7;
constexpr double smallestSize = 30;
/// Half of what the largest is larger.
constexpr double sizeSpread = 25;
/// Degrees from the outermost tilt to the one to the other side.
constexpr double tiltRange = 30;
constexpr double scatterOpacity = 0.3;
/// How far the centre of a sticker lies in from both edges of its corner, as a part of its side.
constexpr double cornerInset = 1.0 / 3.0;

/// From -1 … 1 to 0 … 1.
double fractionOf(double wave)
{
    return (wave + 1) / 2;
}

} // namespace

StickerPlace scatteredSticker(int index, const QSizeF &box)
{
    const double seed = index * seedStep;
    return {.imageName = KawaiiCartoon::at(index),
            .x = fractionOf(std::sin(seed)) * box.width(),
            .y = fractionOf(std::cos(seed * heightTurn)) * box.height(),
            .size = smallestSize + (std::sin(seed * sizeTurn) + 1) * sizeSpread,
            .rotation = std::fmod(seed, tiltRange) - tiltRange / 2,
            .opacity = scatterOpacity};
}

QPointF cornerStickerCentre(KawaiiCorner corner, double size, const QSizeF &box)
{
    const double inset = size * cornerInset;
    const bool isLeading = corner == KawaiiCorner::TopLeading || corner == KawaiiCorner::BottomLeading;
    const bool isTop = corner == KawaiiCorner::TopLeading || corner == KawaiiCorner::TopTrailing;
    return {isLeading ? inset : box.width() - inset, isTop ? inset : box.height() - inset};
}

} // namespace cadorel
