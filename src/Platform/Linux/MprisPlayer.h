// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Directories.h"
#include "Platform/Linux/MprisBus.h"
#include "Platform/Linux/MprisCoverFile.h"
#include "Platform/Linux/MprisObject.h"
#include "Platform/Linux/MprisPosition.h"
#include "Platform/NowPlayingCenter.h"
#include "Platform/RemoteCommandCenter.h"

#include <QVariantMap>

#include <chrono>
#include <optional>

namespace cadorel {

/// The desktop's media controls over the session bus, both ways, by MPRIS 2.2, the interfaces of desktops for
/// media players. Changes are announced once per turn of the event loop, the position only when it jumps.
/// Where there is no bus nothing happens. Main thread; no timers.
class MprisPlayer : public RemoteCommandCenter, public NowPlayingCenter, private MprisEndpoint
{
    Q_OBJECT
public:
    /// Goes on the bus, which takes some turns of the event loop. Covers lie in the folder "NowPlaying" of
    /// the caches. @p clock outlives this object. @p connect finds the bus: that of the session.
    MprisPlayer(const Directories &directories, const Clock &clock,
                MprisBus::Connect connect = connectToSession);
    ~MprisPlayer() override;
    Q_DISABLE_COPY_MOVE(MprisPlayer)

    const NowPlayingInfo &nowPlayingInfo() const override { return m_info; }
    void setNowPlayingInfo(const NowPlayingInfo &info) override;
    void setPlaybackControls(const PlaybackControls &controls) override;

private:
    static QDBusConnection connectToSession(const QString &connectionName);

    QVariantMap properties(const QString &interface) const override;
    Result change(const QString &name, const QVariant &value) override;
    Result call(const QString &method, const QVariantList &arguments) override;

    void changePlayMode(PlayMode mode);
    void seek(double position);
    void seekBy(qint64 offset);
    void setPosition(const QString &trackId, qint64 position);
    void noteStop();
    bool isStopping() const;
    double length() const;
    /// The player interface's properties that are announced.
    QVariantMap announcedProperties() const;
    void announceSoon();
    void announce();

    const Clock &m_clock;
    NowPlayingInfo m_info;
    PlaybackControls m_controls;
    MprisPosition m_position;
    MprisCoverFile m_cover;
    /// What others on the bus know.
    QVariantMap m_announced;
    bool m_isStopped = false;
    std::optional<std::chrono::nanoseconds> m_stopAsked;
    bool m_isAnnouncing = false;
    bool m_hasJumped = false;
    MprisObject m_object;
    MprisBus m_bus; // goes first
};

} // namespace cadorel
