// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/FloatingHearts.h"
#include "Theme/StickerPlace.h"

#include <QObject>

namespace cadorel {

/// What the decorations of the pink look ask for: stickers, their places, chance and hearts. Screens know it
/// as a singleton. Main thread.
class KawaiiDecorations : public QObject
{
    Q_OBJECT
public:
    /// Both outlive it and the hearts that it makes.
    KawaiiDecorations(Clock &clock, Random &random);

    /// KawaiiCartoon::at() and KawaiiCartoon::random().
    Q_INVOKABLE static QString cartoonAt(int index);
    Q_INVOKABLE QString randomCartoon() const;
    /// Degrees that a sticker beside a title is turned by.
    Q_INVOKABLE double randomTilt() const;

    /// See scatteredSticker() and cornerStickerCentre().
    Q_INVOKABLE static cadorel::StickerPlace scattered(int index, double width, double height);
    Q_INVOKABLE static QPointF cornerCentre(cadorel::KawaiiCorners::Corner corner, double size, double width,
                                            double height);

    /// Hearts of their own for a view, which go with @p owner.
    Q_INVOKABLE cadorel::FloatingHearts *makeHearts(QObject *owner) const;

private:
    Clock &m_clock;
    Random &m_random;
};

} // namespace cadorel
