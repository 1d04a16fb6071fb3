// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeClock.h"
#include "Fixtures/Keyring/PrivateBus.h"
#include "Platform/Linux/MprisPlayer.h"
#include "Platform/Mpris/CommandLog.h"
#include "Platform/Mpris/MprisClient.h"

#include <QTemporaryDir>

#include <memory>

namespace cadorel {

/// The media controls on a bus of their own, with somebody who looks at them from there.
class MprisBench
{
public:
    MprisBench();

    /// The player is on the bus.
    bool isReady() { return m_isReady; }
    MprisPlayer &player() { return *m_player; }
    MprisClient &client() { return m_client; }
    FakeClock &clock() { return m_clock; }
    PrivateBus &bus() { return m_bus; }
    QString caches() const { return m_caches.path(); }
    QStringList takeCommands() { return m_log->take(); }
    const QStringList &commands() const { return m_log->commands(); }
    /// Ends the player.
    void end();

    /// Finds a bus as the player does.
    static MprisBus::Connect connectTo(const PrivateBus &bus);
    static NowPlayingInfo song(const QString &id = QStringLiteral("song"));
    static PlaybackControls everything();

    /// Tells the player, as somebody does who plays.
    void tell(const NowPlayingInfo &info) { m_player->setNowPlayingInfo(info); }
    void tell(const PlaybackControls &controls) { m_player->setPlaybackControls(controls); }
    /// Tells a song and that everything can be done, and forgets what was announced.
    bool begin(const NowPlayingInfo &info = song(), const PlaybackControls &controls = everything());

private:
    QTemporaryDir m_caches;
    PrivateBus m_bus;
    FakeClock m_clock;
    const bool m_isBusRunning;
    MprisClient m_client;
    std::unique_ptr<MprisPlayer> m_player;
    std::unique_ptr<CommandLog> m_log;
    bool m_isReady = false;
};

} // namespace cadorel
