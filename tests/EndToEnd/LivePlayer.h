// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/ConsoleLines.h"
#include "Platform/Platform.h"
#include "Services/APIConfigService.h"
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/NavidromeService.h"
#include "Services/WebDAVService.h"
#include "Services/WebDAVStreamingService.h"

#include <QTemporaryDir>

#include <memory>

namespace cadorel {

/// The player and its servers' side made of nothing but real parts, in a home of its own, without a window.
class LivePlayer
{
public:
    LivePlayer();
    ~LivePlayer();
    Q_DISABLE_COPY_MOVE(LivePlayer)

    /// The program ends, and starts again in the same home.
    void restart();

    WebDAVService &servers() { return *m_servers; }
    NavidromeService &navidrome() { return *m_navidrome; }
    AudioPlayerService &player() { return *m_player; }
    Preferences &preferences() { return *m_platform.preferences; }
    /// Where the online songs lie.
    APIConfigService &api() { return *m_api; }
    /// Saves a server and walks it. @return whether that succeeded
    bool scan(const WebDAVConfig &config, const QString &password);
    /// The song of that title; fails the test when there is none.
    Song song(const QString &title);
    /// Plays the song with all others as the queue.
    void play(const QString &title);
    /// The current song's title.
    QString current() const;
    QString home() const { return m_home.path(); }
    /// The file of the passwords.
    QString passwordFile() const
    {
        return m_platform.directories.applicationSupport + QStringLiteral("/secrets.json");
    }
    const Preferences &preferences() const { return *m_platform.preferences; }
    /// Names of everything in the folder of copies, temporary files too.
    QStringList copies() const;
    /// Paths of everything else in the home.
    QStringList everythingElse() const;
    /// Waits for a line that begins so.
    bool says(const QString &beginning);
    /// Every line so far.
    const QStringList &lines();

private:
    void start();
    void stop();

    QTemporaryDir m_home;
    ConsoleLines m_console;
    QStringList m_lines;
    Platform m_platform;
    std::unique_ptr<APIConfigService> m_api;
    std::unique_ptr<WebDAVService> m_servers;
    std::unique_ptr<NavidromeService> m_navidrome;
    std::unique_ptr<WebDAVStreamingService> m_streaming;
    std::unique_ptr<LocalMusicImportService> m_importService;
    std::unique_ptr<AudioPlayerService> m_player;
};

} // namespace cadorel
