// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/KawaiiDecorations.h"

#include "Theme/KawaiiCartoon.h"

namespace cadorel {

namespace {

/// To either side, in degrees.
constexpr double titleTilt = 10;

} // namespace

KawaiiDecorations::KawaiiDecorations(Clock &clock, Random &random)
    : m_clock(clock)
    , m_random(random)
{
}

QString KawaiiDecorations::cartoonAt(int index)
{
    return KawaiiCartoon::at(index);
}

QString KawaiiDecorations::randomCartoon() const
{
    return KawaiiCartoon::random(m_random);
}

double KawaiiDecorations::randomTilt() const
{
    return m_random.real(-titleTilt, titleTilt);
}

StickerPlace KawaiiDecorations::scattered(int index, double width, double height)
{
    return scatteredSticker(index, QSizeF(width, height));
}

QPointF KawaiiDecorations::cornerCentre(KawaiiCorner corner, double size, double width, double height)
{
    return cornerStickerCentre(corner, size, QSizeF(width, height));
}

FloatingHearts *KawaiiDecorations::makeHearts(QObject *owner) const
{
    return new FloatingHearts(m_clock, m_random, owner);
}

} // namespace cadorel
