// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/ConsoleLines.h"
#include "Fakes/FakeEqualizerEngine.h"
#include "Fakes/FakeMediaCenter.h"
#include "Fakes/FakeOnlineSongAddresses.h"
#include "Fakes/TestPlatform.h"
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/SystemMediaCenter.h"
#include "Services/WebDAVStreamingService.h"

namespace cadorel {

/// The player on a machine of fakes, with every part that is built elsewhere faked too. A test prepares the
/// machine and calls start(), or restart() for a second run in the same home.
class PlayerBench
{
public:
    PlayerBench() = default;
    ~PlayerBench();
    Q_DISABLE_COPY_MOVE(PlayerBench)

    ConsoleLines console;
    TestPlatform home;
    FakeEqualizerEngine equalizer;
    FakeOnlineSongAddresses addresses;
    FakeMediaCenter mediaCenter;
    /// From the next start on the player tells the machine's own desktop instead of `mediaCenter`.
    bool usesSystemMediaCenter = false;
    /// What the player learnt of songs on servers, in order.
    QList<Song> updatedSongs;

    /// Builds the import service and the player. The lines of both are dropped.
    AudioPlayerService &start();
    /// Ends the player and the import service, then starts anew with what the home holds.
    AudioPlayerService &restart();
    void stop();

    AudioPlayerService &player() { return *m_player; }
    LocalMusicImportService &importService() { return *m_importService; }
    WebDAVStreamingService &streaming() { return *m_streaming; }
    SystemMediaCenter &systemMediaCenter() { return *m_systemMediaCenter; }
    /// The player's stream player; the test has made it needed.
    FakeStreamPlayer &stream() { return *home.streamPlayer(); }
    FakePlayerItem &item() { return *stream().lastItem(); }

    /// Answers the oldest address that is being fetched, and lets the player take it.
    void answerWeb(const FakeHttpClient::Result &result);
    /// Tells the length of the current item, and lets the player take it.
    void answerDuration(std::expected<double, QString> seconds);
    void reachEnd() { stream().reachEnd(); }
    /// How many timers follow the playback: all but that of the level bars.
    int playbackTimers();
    /// The stored snapshot; empty when there is none.
    QByteArray snapshot();

private:
    std::unique_ptr<LocalMusicImportService> m_importService;
    std::unique_ptr<WebDAVStreamingService> m_streaming;
    std::unique_ptr<SystemMediaCenter> m_systemMediaCenter;
    std::unique_ptr<AudioPlayerService> m_player;
};

/// The current song; an empty record when there is none.
Song songOf(const AudioPlayerService &player);
/// A song in a file that need not exist.
Song fileSong(const QString &id);
/// A song of a web address without credentials.
Song webSong(const QString &id, double duration = 0);
/// A song on a server, with its credentials.
Song serverSong(const QString &id, double duration = 0);
QList<Song> fileSongs(const QStringList &ids);
OnlineSong onlineSong(const QString &id);
QList<OnlineSong> onlineSongs(const QStringList &ids);

} // namespace cadorel
