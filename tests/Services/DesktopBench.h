// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/PlayerBench.h"

#include <QCoreApplication>
#include <QTest>

namespace cadorel {

/// The player with the real media centre on a machine of fakes.
class DesktopBench : public PlayerBench
{
public:
    DesktopBench() { usesSystemMediaCenter = true; }

    FakeNowPlayingCenter &desktop() { return home.nowPlayingCenter(); }
    const NowPlayingInfo &shown() { return desktop().nowPlayingInfo(); }
    PlaybackControls controls() { return desktop().lastControls(); }
    FakeRemoteCommandCenter &keys() { return home.remoteCommandCenter(); }
    FakeAudioSession &session() { return home.audioSession(); }

    /// Plays a file of the given length, and drops what was logged and asked of the stream player for it.
    void playFile(const QString &id, double length = 200)
    {
        player().playSong(fileSong(id), fileSongs({id, id + QStringLiteral("-next")}));
        answerDuration(length);
        console.take();
        stream().calls.clear();
    }

    /// Plays an online song up to the first time that it is shown. What waits of the web then is its cover.
    void playOnline(const OnlineSong &song)
    {
        player().playOnlineSong(song, {});
        const HttpResponse redirected{.url = QUrl(QStringLiteral("https://cdn.example/%1.mp3").arg(song.id)),
                                      .status = 200,
                                      .headers = {},
                                      .body = {}};
        QVERIFY(home.web().answer(QStringLiteral("url?id=") + song.id, redirected));
        settle();
        QCOMPARE(shown().title, song.name);
        console.take();
    }

    /// As many ticks of a playing song as come in half a minute.
    void tickOn()
    {
        constexpr int ticks = 120;
        constexpr double interval = 0.25;
        for (int tick = 1; tick <= ticks; ++tick) {
            stream().tick(tick * interval);
            QCoreApplication::processEvents();
        }
        settle();
    }
};

/// A song of a server that is no WebDAV server, without credentials in its address.
inline Song streamedSong(const QString &id, const QString &coverUrl = {})
{
    SongFields fields;
    fields.id = QStringLiteral("navidrome_1_") + id;
    fields.title = QStringLiteral("Title ") + id;
    fields.albumId = QStringLiteral("navidrome_1_album_1");
    fields.assetURL = QUrl(QStringLiteral("https://music.example/rest/stream?id=") + id);
    if (!coverUrl.isEmpty())
        fields.artworkURL = QUrl(coverUrl);
    return Song(fields);
}

} // namespace cadorel
