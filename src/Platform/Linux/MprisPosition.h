// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace cadorel {

class Clock;
struct NowPlayingInfo;

/// Where the song stands between two tellings of the player, and whether the desktop has to hear of it.
/// Panels ask for the position once and compute on from there: they must be told of every jump, and of
/// nothing else. Main thread.
class MprisPosition
{
public:
    /// How far a position may be off while the song plays without being a jump. What is told between two
    /// ticks of the player is as old as the last tick.
    static constexpr double tolerance = 0.4;
    /// The same while the song stands still.
    static constexpr double toleranceAtRest = 0.01;
    /// The player tells four times a second while the song moves. After so long without a word it waits for
    /// the first bytes of a stream, although it counts as playing.
    static constexpr std::chrono::seconds longestSilence{2};

    /// @param clock outlives this object
    explicit MprisPosition(const Clock &clock);

    /// Takes up what the player tells.
    /// @return whether it is elsewhere than those who compute on believe
    bool take(const NowPlayingInfo &info);
    /// The desktop asked for this position, in seconds: also a small jump to it counts.
    void expect(double position);

    /// The position now, never beyond the end of the song, nor far from what was told last.
    std::chrono::microseconds now() const;

private:
    /// A position at a time, and what became of it since.
    struct Reading
    {
        double position = 0;
        std::chrono::nanoseconds time{0};
        double rate = 0;

        double at(std::chrono::nanoseconds moment) const;
    };

    double bounded(double position) const;
    bool hasLanded(double position, double expected, std::chrono::nanoseconds moment);

    const Clock &m_clock;
    QString m_songId;
    double m_length = 0;
    double m_told = 0;
    /// Our own view, and that of somebody who heard only what was announced.
    Reading m_reading;
    Reading m_belief;
    std::optional<double> m_target;
    std::chrono::nanoseconds m_targetSince{0};
};

} // namespace cadorel
