// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/AudioPlayerService.h"
#include "Services/Seams/MediaCenter.h"

#include <QStringList>

namespace cadorel {

/// A desktop without media controls: `setups` in order, and what was published last.
class FakeMediaCenter : public MediaCenter
{
public:
    QStringList setups;
    int updates = 0;
    double publishedTime = -1;
    bool publishedPlaying = false;
    QString publishedTitle;
    /// The cover that was added since the last update.
    QImage mergedArtwork;

    void setupAudioSession(AudioPlayerService &player) override { setUp(QStringLiteral("session"), player); }
    void setupRemoteCommandCenter(AudioPlayerService &player) override
    {
        setUp(QStringLiteral("commands"), player);
    }
    void setupNowPlayingInfo(AudioPlayerService &player) override
    {
        setUp(QStringLiteral("information"), player);
    }
    void setupInterruptionObservers(AudioPlayerService &player) override
    {
        setUp(QStringLiteral("interruptions"), player);
    }
    void updateNowPlayingInfo(AudioPlayerService &player) override
    {
        ++updates;
        mergedArtwork = {};
        publishedTime = player.currentTime();
        publishedPlaying = player.isPlaying();
        publishedTitle = player.currentSong().value_or(Song()).title();
    }
    void mergeNowPlayingArtwork(const QImage &artwork) override { mergedArtwork = artwork; }

private:
    void setUp(const QString &step, const AudioPlayerService &player)
    {
        // The last song must not be back before the desktop can be told of it.
        setups.append(player.currentSong() ? step + QStringLiteral(" too late") : step);
    }
};

} // namespace cadorel
