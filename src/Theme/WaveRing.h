// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QObject>

namespace cadorel {

/// A bar that stands on the outline of a cover.
struct WaveBar
{
    Q_GADGET
    /// Its foot, in pixels from the upper left corner of the cover.
    Q_PROPERTY(double x MEMBER x CONSTANT)
    Q_PROPERTY(double y MEMBER y CONSTANT)
    /// Degrees, clockwise, that it is turned by from upright.
    Q_PROPERTY(double angle MEMBER angle CONSTANT)
    /// Which of the player's levels it shows.
    Q_PROPERTY(int level MEMBER level CONSTANT)
public:
    double x = 0;
    double y = 0;
    double angle = 0;
    int level = 0;

    bool operator==(const WaveBar &) const = default;
};

/// Where the bars of the ring about a cover stand: at equal distances on an outline that runs parallel to
/// that of the cover, first right of its upper middle, then clockwise. The levels go up and down once on each
/// quarter, so that the ring looks the same from all sides. Lengths in pixels; a corner is at most as round
/// as the shorter side allows. Screens know it as a singleton. Any thread.
class WaveRing : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Bars about a cover of that size: a multiple of four, about @p spacing apart; 0 without a cover.
    /// @param gap from the cover to the feet
    Q_INVOKABLE static int count(double width, double height, double cornerRadius, double gap,
                                 double spacing);
    /// One of @p count.
    Q_INVOKABLE static cadorel::WaveBar bar(int index, int count, double width, double height,
                                            double cornerRadius, double gap);
};

} // namespace cadorel
