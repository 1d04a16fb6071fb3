// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <chrono>
#include <memory>
#include <optional>

namespace cadorel {

class AudioPlayerService;
class Clock;
class ClockTimer;

/// How far the song has come, for what has to be on time: the player tells its position four times a second,
/// and what happens between two of these is late by up to a quarter of a second. While the song plays this
/// object knows from the clock when a position is reached, and no timer runs but for one that is waited for.
/// Main thread.
class PlaybackPosition : public QObject
{
    Q_OBJECT
public:
    /// Both outlive this object.
    PlaybackPosition(AudioPlayerService &player, Clock &clock);
    ~PlaybackPosition() override;
    Q_DISABLE_COPY_MOVE(PlaybackPosition)

    /// Milliseconds. What the player told last, or a position that was waited for and reached since. It does
    /// not go back by less than the player's own accuracy while the song plays on.
    int milliseconds() const { return m_milliseconds; }

    /// changed() comes once when the playback reaches that position, if it is about to: what lies beyond the
    /// player's next word is to be waited for then. A new call takes the place of the last one.
    void waitFor(std::optional<int> milliseconds);

Q_SIGNALS:
    /// The player told its position, or one that was waited for is reached.
    void changed();

private:
    struct Anchor
    {
        int milliseconds;
        std::chrono::nanoseconds at; ///< monotonic
    };
    void timeTold();
    void isPlayingChanged();
    void reached(int milliseconds);
    /// Where the song is by now; there is an anchor.
    double estimate() const;

    AudioPlayerService &m_player;
    Clock &m_clock;
    int m_milliseconds = 0;
    /// What the player told while it played; nothing while the position stands still.
    std::optional<Anchor> m_anchor;
    std::unique_ptr<ClockTimer> m_timer;
};

} // namespace cadorel
