// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>

namespace cadorel {

/// Finds the beat in the player's level bars, for what dances to it: a beat is when the low tones rise well
/// above what they have been of late. Main thread.
class BeatDetector : public QObject
{
    Q_OBJECT
public:
    /// Beats are at least as many ticks apart: 0.4 s.
    static constexpr int fewestTicks = 5;

    using QObject::QObject;

    /// The levels of one tick, 0 to 1, the lowest tone first. @return whether this is a beat; never when
    /// there are none
    Q_INVOKABLE bool take(const QList<qreal> &levels);

private:
    double m_usual = 0;
    int m_ticks = fewestTicks;
};

} // namespace cadorel
