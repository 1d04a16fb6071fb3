// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpris/MprisBench.h"

using namespace Qt::StringLiterals;

namespace cadorel {

MprisBench::MprisBench()
    : m_isBusRunning(m_bus.start())
    , m_client(m_bus)
    , m_player(std::make_unique<MprisPlayer>(
          Directories{.documents = {}, .applicationSupport = {}, .caches = m_caches.path()}, m_clock,
          connectTo(m_bus)))
    , m_log(std::make_unique<CommandLog>(*m_player))
    , m_isReady(m_isBusRunning && m_client.findsPlayer())
{
}

void MprisBench::end()
{
    m_log.reset();
    m_player.reset();
}

MprisBus::Connect MprisBench::connectTo(const PrivateBus &bus)
{
    return [address = bus.address()](const QString &name) {
        return QDBusConnection::connectToBus(address, name);
    };
}

NowPlayingInfo MprisBench::song(const QString &id)
{
    NowPlayingInfo info;
    info.songId = id;
    info.title = u"晴天"_s;
    info.artist = u"阿箬"_s;
    info.albumTitle = u"第一张"_s;
    info.playbackDuration = 200;
    info.playbackRate = 1;
    return info;
}

PlaybackControls MprisBench::everything()
{
    return {.playMode = PlayMode::sequential,
            .volume = 0.5,
            .canPlay = true,
            .canGoNext = true,
            .canGoPrevious = true,
            .canSeek = true};
}

bool MprisBench::begin(const NowPlayingInfo &info, const PlaybackControls &controls)
{
    tell(info);
    tell(controls);
    if (!m_isReady || !m_client.settle())
        return false;
    m_client.takeChanges();
    m_client.takeJumps();
    m_log->take();
    return true;
}

} // namespace cadorel
