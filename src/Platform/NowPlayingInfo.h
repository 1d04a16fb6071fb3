// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/PlayMode.h"

#include <QImage>
#include <QString>

#include <optional>

namespace cadorel {

/// What the desktop shows of the song. It holds no address, so that none can reach the bus.
struct NowPlayingInfo
{
    /// Tells songs apart; never shown. Empty: there is no song, and the other texts are empty too.
    QString songId;
    QString title;
    QString artist;
    QString albumTitle;
    /// Seconds; 0 while unknown.
    double playbackDuration = 0;
    std::optional<QImage> artwork;
    /// Seconds.
    double elapsedPlaybackTime = 0;
    /// 1 while playing, else 0.
    double playbackRate = 0;
};

/// What the desktop's controls can do now, and how they stand.
struct PlaybackControls
{
    PlayMode playMode = PlayMode::sequential;
    /// Amplitude factor, 0...1.
    double volume = 1;
    /// There is something to play.
    bool canPlay = false;
    /// There is something that next and previous lead to.
    bool canGoNext = false;
    bool canGoPrevious = false;
    bool canSeek = false;

    friend bool operator==(const PlaybackControls &, const PlaybackControls &) = default;
};

} // namespace cadorel
