// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MprisPlayer.h"

#include "Platform/Clock.h"
#include "Platform/Linux/MprisProperties.h"

#include <QDBusMessage>
#include <QDBusObjectPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr double microsecondsPerSecond = 1e6;

/// A song that stands at its start so soon after it was asked to stop has stopped.
constexpr std::chrono::seconds stopLimit{2};

struct Command
{
    QLatin1StringView method;
    void (RemoteCommandCenter::*signal)();
    /// What has to hold for it; null: nothing.
    bool PlaybackControls::*condition;
};

constexpr std::array commands{
    Command{"Next"_L1, &RemoteCommandCenter::nextTrackCommand, &PlaybackControls::canGoNext},
    Command{"Previous"_L1, &RemoteCommandCenter::previousTrackCommand, &PlaybackControls::canGoPrevious},
    Command{"Pause"_L1, &RemoteCommandCenter::pauseCommand, &PlaybackControls::canPlay},
    Command{"PlayPause"_L1, &RemoteCommandCenter::togglePlayPauseCommand, &PlaybackControls::canPlay},
    Command{"Play"_L1, &RemoteCommandCenter::playCommand, &PlaybackControls::canPlay},
    Command{"Stop"_L1, &RemoteCommandCenter::stopCommand, nullptr},
    Command{"Raise"_L1, &RemoteCommandCenter::raiseCommand, nullptr},
    Command{"Quit"_L1, &RemoteCommandCenter::quitCommand, nullptr}};

/// Whether two say the same but for position and cover.
bool isAlike(const NowPlayingInfo &one, const NowPlayingInfo &other)
{
    const auto told = [](const NowPlayingInfo &info) {
        return std::tie(info.songId, info.title, info.artist, info.albumTitle, info.playbackDuration,
                        info.playbackRate);
    };
    return told(one) == told(other);
}

/// It stands at its start, as a song does that was stopped.
bool isAtRest(const NowPlayingInfo &info)
{
    return info.playbackRate == 0 && info.elapsedPlaybackTime < MprisPosition::toleranceAtRest;
}

} // namespace

MprisPlayer::MprisPlayer(const Directories &directories, const Clock &clock, MprisBus::Connect connect)
    : m_clock(clock)
    , m_position(clock)
    , m_cover(directories.caches + u"/NowPlaying"_s)
    , m_object(*this)
    , m_bus(std::move(connect), m_object, clock)
{
    QObject::connect(&m_cover, &MprisCoverFile::urlChanged, this, &MprisPlayer::announceSoon);
    // Who finds the object from now on asks for what there is.
    const auto appear = [this] {
        m_announced = announcedProperties();
        m_hasJumped = false;
    };
    QObject::connect(&m_bus, &MprisBus::appeared, this, appear);
}

MprisPlayer::~MprisPlayer() = default;

QDBusConnection MprisPlayer::connectToSession(const QString &connectionName)
{
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
}

void MprisPlayer::setNowPlayingInfo(const NowPlayingInfo &info)
{
    const bool saysMore = !isAlike(info, m_info);
    const bool wasStopped = m_isStopped;
    m_isStopped = isAtRest(info) && info.songId == m_info.songId && (wasStopped || isStopping());
    if (m_isStopped || info.songId != m_info.songId)
        m_stopAsked.reset();
    const QString url = m_cover.url();
    m_info = info;
    m_cover.setCover(info.songId.isEmpty() ? std::nullopt : info.artwork);
    const bool hasJumped = m_position.take(info);
    m_hasJumped = m_hasJumped || hasJumped;
    if (saysMore || hasJumped || wasStopped != m_isStopped || m_cover.url() != url)
        announceSoon();
}

void MprisPlayer::setPlaybackControls(const PlaybackControls &controls)
{
    if (std::exchange(m_controls, controls) != controls)
        announceSoon();
}

QVariantMap MprisPlayer::announcedProperties() const
{
    return mpris::playerProperties(m_info, m_controls, m_cover.url(), m_isStopped);
}

void MprisPlayer::announceSoon()
{
    if (!std::exchange(m_isAnnouncing, true))
        QMetaObject::invokeMethod(this, &MprisPlayer::announce, Qt::QueuedConnection);
}

void MprisPlayer::announce()
{
    m_isAnnouncing = false;
    if (!m_bus.isPresent()) {
        m_bus.returnIfLost();
        return;
    }
    const QVariantMap properties = announcedProperties();
    QVariantMap changed;
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        if (m_announced.value(property.key()) != property.value())
            changed.insert(property.key(), property.value());
    }
    m_announced = properties;
    if (!changed.isEmpty()) {
        QDBusMessage message = QDBusMessage::createSignal(
            mpris::objectPath, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
        message << QString(mpris::playerInterface) << changed << QStringList();
        m_bus.send(message);
    }
    // After the song that the position belongs to.
    if (std::exchange(m_hasJumped, false) && !m_info.songId.isEmpty()) {
        QDBusMessage message =
            QDBusMessage::createSignal(mpris::objectPath, mpris::playerInterface, u"Seeked"_s);
        message << static_cast<qlonglong>(m_position.now().count());
        m_bus.send(message);
    }
}

QVariantMap MprisPlayer::properties(const QString &interface) const
{
    QVariantMap result;
    if (interface != mpris::playerInterface)
        result.insert(mpris::rootProperties());
    if (interface != mpris::rootInterface) {
        result.insert(announcedProperties());
        result.insert(u"Position"_s, static_cast<qlonglong>(m_position.now().count()));
    }
    return result;
}

MprisEndpoint::Result MprisPlayer::change(const QString &name, const QVariant &value)
{
    if (name == "Shuffle"_L1) {
        changePlayMode(mpris::modeForShuffle(value.toBool(), m_controls.playMode));
    } else if (name == "LoopStatus"_L1) {
        const auto mode = mpris::modeForLoopStatus(value.toString(), m_controls.playMode);
        if (!mode)
            return std::unexpected(MprisError{QDBusError::InvalidArgs, u"no such LoopStatus"_s});
        changePlayMode(*mode);
    } else if (name == "Volume"_L1) {
        const double volume = value.toDouble();
        if (std::isnan(volume))
            return std::unexpected(MprisError{QDBusError::InvalidArgs, u"no such Volume"_s});
        Q_EMIT changeVolumeCommand(std::clamp(volume, 0.0, 1.0));
    } else if (name == "Rate"_L1 && value.toDouble() == 0) {
        return call(u"Pause"_s, {}); // as MPRIS wants it; other rates cannot be played
    }
    return {};
}

void MprisPlayer::changePlayMode(PlayMode mode)
{
    if (mode != m_controls.playMode)
        Q_EMIT changePlayModeCommand(mode);
}

MprisEndpoint::Result MprisPlayer::call(const QString &method, const QVariantList &arguments)
{
    if (method == "OpenUri"_L1)
        return std::unexpected(MprisError{QDBusError::NotSupported, u"this player opens no addresses"_s});
    if (method == "Seek"_L1)
        seekBy(arguments.constFirst().toLongLong());
    if (method == "SetPosition"_L1)
        setPosition(arguments.constFirst().value<QDBusObjectPath>().path(),
                    arguments.constLast().toLongLong());
    for (const Command &command : commands) {
        if (command.method != method)
            continue;
        const bool isPossible = command.condition == nullptr || m_controls.*command.condition;
        if (isPossible)
            (this->*command.signal)();
        else if (method == "PlayPause"_L1) // which alone is to tell
            return std::unexpected(MprisError{QDBusError::Failed, u"there is nothing to play"_s});
    }
    if (method == "Stop"_L1)
        noteStop();
    else
        m_stopAsked.reset();
    return {};
}

void MprisPlayer::noteStop()
{
    // A player that has stopped looks like one that was paused at the start, but for who asked it to.
    m_isStopped = isAtRest(m_info);
    if (!m_isStopped)
        m_stopAsked = m_clock.monotonic(); // it takes a moment to stand there
    announceSoon();
}

bool MprisPlayer::isStopping() const
{
    return m_stopAsked && m_clock.monotonic() - *m_stopAsked < stopLimit;
}

double MprisPlayer::length() const
{
    return static_cast<double>(mpris::microseconds(m_info.playbackDuration)) / microsecondsPerSecond;
}

void MprisPlayer::seek(double position)
{
    m_position.expect(position);
    Q_EMIT changePlaybackPositionCommand(position);
}

void MprisPlayer::seekBy(qint64 offset)
{
    if (!m_controls.canSeek || m_info.songId.isEmpty())
        return;
    const double position =
        (static_cast<double>(m_position.now().count()) + static_cast<double>(offset)) / microsecondsPerSecond;
    if (length() > 0 && position > length())
        call(u"Next"_s, {});
    else
        seek(std::max(position, 0.0));
}

void MprisPlayer::setPosition(const QString &trackId, qint64 position)
{
    // A caller that means a song which is over must not move this one.
    if (!m_controls.canSeek || m_info.songId.isEmpty() || trackId != mpris::trackId(m_info.songId).path())
        return;
    const double seconds = static_cast<double>(position) / microsecondsPerSecond;
    if (position < 0 || (length() > 0 && seconds > length()))
        return;
    seek(seconds);
}

} // namespace cadorel
