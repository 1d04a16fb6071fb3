// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpv/MpvStreamPlayer.h"

#include "Platform/Mpv/FailureText.h"
#include "Platform/Mpv/MpvRequest.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// From here on a seek to the nearest packet, which may lie 0.9 s early, stays within the tolerance.
constexpr double keyframeTolerance = 1.0;

QList<MpvHandle::Option> playerOptions(const QList<MpvHandle::Option> &extra)
{
    const QByteArray productName = "Tarnova Music Player"_ba;
    const QList<MpvHandle::Option> options{
        // Nothing of the user's own configuration, no scripts, no screen, no terminal.
        {"config", "no"},
        {"terminal", "no"},
        {"load-scripts", "no"},
        {"load-auto-profiles", "no"},
        {"load-osd-console", "no"},
        {"load-stats-overlay", "no"},
        {"osc", "no"},
        {"ytdl", "no"},
        {"resume-playback", "no"},
        {"idle", "yes"},
        {"vid", "no"},
        {"sid", "no"},
        {"vo", "null"},
        {"audio-display", "no"},
        {"hwdec", "no"},
        // A file is itself alone: no look for covers and subtitles beside it, no playlists and edit lists.
        {"autoload-files", "no"},
        {"ordered-chapters", "no"},
        {"demuxer", "lavf"},
        {"prefetch-playlist", "no"},
        // libavcodec's own Speex decoder clips.
        {"ad", "libspeex"},
        // Without a sound server an item fails, rather than play to nobody.
        {"ao", "pulse,pipewire,alsa"},
        {"audio-fallback-to-null", "no"},
        // What mixers show; the default would be the address.
        {"audio-client-name", productName},
        {"title", productName},
        {"force-media-title", productName},
        {"tls-verify", "yes"},
        // A whole lossless song fits; the default of 150 MiB would be the largest part of the process.
        {"demuxer-max-bytes", "32MiB"},
        {"demuxer-max-back-bytes", "8MiB"},
    };
    return options + extra;
}

bool isPlayable(const MpvPlayerItem &item)
{
    const QString scheme = item.asset().url.scheme();
    return item.isLocal() || item.usesLoader() || scheme == "http"_L1 || scheme == "https"_L1;
}

} // namespace

MpvStreamPlayer::MpvStreamPlayer(const AssetReader &reader, const QList<MpvHandle::Option> &extraOptions)
    : m_scanner(reader)
    , m_mpv(playerOptions(extraOptions))
    , m_observers([this] { requestHeardPosition(false); })
{
    using Kind = MpvRequest::Kind;
    m_mpv.observe(MpvRequest{Kind::pausedForCache}.tag(), "paused-for-cache", MPV_FORMAT_FLAG);
    m_mpv.observe(MpvRequest{Kind::duration}.tag(), "duration", MPV_FORMAT_NONE);
    m_seekGuard.setSingleShot(true);
    m_seekGuard.callOnTimeout(this, [this] { settleSeek(false); });
    m_protocol.registerWith(m_mpv);
    m_mpv.setWakeupCallback(&MpvStreamPlayer::wake, this);
}

MpvStreamPlayer::~MpvStreamPlayer()
{
    m_mpv.setWakeupCallback(nullptr, nullptr);
    m_scanner.close();
    if (m_item)
        m_item->abandonDuration(abandonedItemText());
}

std::shared_ptr<PlayerItem> MpvStreamPlayer::makeItem(const MediaAsset &asset)
{
    return std::make_shared<MpvPlayerItem>(asset, m_scanner);
}

void MpvStreamPlayer::replaceCurrentItem(std::shared_ptr<PlayerItem> item)
{
    cancelSeek();
    const auto old = std::exchange(m_item, std::dynamic_pointer_cast<MpvPlayerItem>(std::move(item)));
    if (old) {
        old->setAdvancing(false);
        old->abandonDuration(abandonedItemText());
    }
    scheduleLoad(0);
    if (m_item)
        m_item->beginLoading();
    refreshStatus();
}

void MpvStreamPlayer::follow(const OutputDevices &devices)
{
    const auto take = [this, &devices] { setOutputDevice(devices.chosenDevice()); };
    connect(&devices, &OutputDevices::chosenDeviceChanged, this, take);
    take();
}

void MpvStreamPlayer::setOutputDevice(const QString &device)
{
    m_outputDevice = device.isEmpty() ? QByteArray(defaultOutputDevice) : "pulse/" + device.toUtf8();
    if (!m_outputOpen)
        applyOutputDevice();
}

void MpvStreamPlayer::applyOutputDevice()
{
    if (std::exchange(m_toldOutputDevice, m_outputDevice) != m_outputDevice)
        m_mpv.setProperty("audio-device", m_outputDevice);
}

void MpvStreamPlayer::scheduleLoad(double startTime)
{
    m_startTime = startTime;
    m_entry = -1;
    ++m_load;
    m_outputOpen = false;
    m_tickRequested = false;
    m_heardPosition.reset();
    m_heardFrom = 0;
    // Commands given in one go become one load, which begins where the last seek wants it.
    if (std::exchange(m_phase, Phase::scheduled) != Phase::scheduled)
        QMetaObject::invokeMethod(this, &MpvStreamPlayer::flushLoad, Qt::QueuedConnection);
}

void MpvStreamPlayer::flushLoad()
{
    if (m_phase != Phase::scheduled)
        return;
    m_protocol.withdraw();
    if (!m_item || !m_mpv || !isPlayable(*m_item)) {
        std::ignore = m_mpv.command(MpvRequest{MpvRequest::Kind::unanswered}.tag(), {"stop"});
        m_phase = Phase::none;
        if (m_item)
            failItem(m_mpv ? unsupportedAddressText() : missingEngineText());
        return;
    }
    applyOutputDevice();
    m_phase = Phase::loading;
    m_loadSentPaused = m_rate == 0;
    const auto sent = m_mpv.command(MpvRequest{MpvRequest::Kind::load, m_load}.tag(),
                                    {"loadfile", publishedAddress(), "replace", loadOptions()});
    if (!sent)
        fail(sent.error());
}

QByteArray MpvStreamPlayer::publishedAddress()
{
    const MediaAsset &asset = m_item->asset();
    if (m_item->usesLoader())
        return m_protocol.publish(asset.url, asset.resourceLoader, m_item->loaderLifetime());
    return m_item->isLocal() ? QFile::encodeName(asset.url.toLocalFile())
                             : asset.url.toEncoded(QUrl::FullyEncoded);
}

QByteArray MpvStreamPlayer::loadOptions() const
{
    // Pausing with the load leaves the item before it alone: unpausing that would sound for a moment.
    QByteArray options = m_loadSentPaused ? "pause=yes"_ba : "pause=no"_ba;
    // All of the file is in memory already when libmpv reads the first of it.
    if (m_item->usesLoader())
        options += ",cache=no";
    if (m_startTime > 0)
        options += ",start=" + QByteArray::number(m_startTime, 'f', 6);
    return options;
}

void MpvStreamPlayer::play()
{
    if (m_phase == Phase::failed)
        return;
    if (m_phase == Phase::ended)
        scheduleLoad(m_startTime);
    setRate(1);
}

void MpvStreamPlayer::pause()
{
    setRate(0);
}

void MpvStreamPlayer::setRate(double rate)
{
    if (m_rate == rate)
        return;
    m_rate = rate;
    if (eventsAreOurs())
        m_mpv.setProperty("pause", rate == 0);
    if (m_phase == Phase::ready)
        requestHeardPosition(true);
    Q_EMIT rateChanged();
    refreshStatus();
}

StreamPlayer::TimeControlStatus MpvStreamPlayer::timeControlStatus() const
{
    if (m_rate == 0)
        return TimeControlStatus::paused;
    if (m_item && (m_item->isLocal() || (m_phase == Phase::ready && !m_pausedForCache)))
        return TimeControlStatus::playing;
    return TimeControlStatus::waitingToPlay;
}

void MpvStreamPlayer::refreshStatus()
{
    const TimeControlStatus status = timeControlStatus();
    setAdvancing(m_phase == Phase::ready && status == TimeControlStatus::playing);
    if (std::exchange(m_announcedStatus, status) != status)
        Q_EMIT timeControlStatusChanged();
}

void MpvStreamPlayer::setAdvancing(bool advancing)
{
    m_observers.setRunning(advancing);
    if (m_item)
        m_item->setAdvancing(advancing);
}

void MpvStreamPlayer::setVolume(float volume)
{
    // libmpv's volume goes by the third power.
    const double amplitude = std::isnan(volume) ? 0.0 : std::clamp(double{volume}, 0.0, 1.0);
    m_mpv.setProperty("volume", 100 * std::cbrt(amplitude));
}

void MpvStreamPlayer::setAutomaticallyWaitsToMinimizeStalling(bool waits)
{
    m_mpv.setProperty("cache-pause", waits);
}

int MpvStreamPlayer::addPeriodicTimeObserver(std::chrono::milliseconds interval,
                                             std::function<void(double)> callback)
{
    return m_observers.add(interval, std::move(callback));
}

void MpvStreamPlayer::removeTimeObserver(int observer)
{
    m_observers.remove(observer);
}

/// While a file plays libmpv brings "time-pos" up to date a few times a second only; the position of the
/// sound is worked out when it is asked for, but there is none around a seek and at the end. Replies keep the
/// order.
void MpvStreamPlayer::requestHeardPosition(bool jumped)
{
    if (jumped || !m_tickRequested)
        m_mpv.requestProperty(MpvRequest{MpvRequest::Kind::heardPosition, m_load}.tag(), "audio-pts",
                              MPV_FORMAT_DOUBLE);
    requestPosition(jumped);
}

void MpvStreamPlayer::requestPosition(bool jumped)
{
    using Kind = MpvRequest::Kind;
    if (!jumped && std::exchange(m_tickRequested, true))
        return;
    m_mpv.requestProperty(MpvRequest{jumped ? Kind::positionJump : Kind::positionTick, m_load}.tag(),
                          "time-pos", MPV_FORMAT_DOUBLE);
}

void MpvStreamPlayer::seek(double time, double toleranceBefore, double toleranceAfter,
                           std::function<void(bool)> completion)
{
    cancelSeek();
    if (!m_item || m_phase == Phase::failed || !std::isfinite(time)) {
        completeLater(std::move(completion), false);
        return;
    }
    m_heardFrom = 0;
    const double target = std::max(time, 0.0);
    if (m_phase == Phase::ended) {
        m_startTime = target;
        m_item->setCurrentTime(target);
        completeLater(
            [this, position = m_item->currentTime(), completion = std::move(completion)](bool finished) {
                m_observers.deliverAll(position);
                if (completion)
                    completion(finished);
            },
            true);
        return;
    }
    using Stage = PendingSeek::Stage;
    // Decoding from the packet before costs nothing where no network is in between.
    const bool exact = m_item->isLocal() || m_item->usesLoader() ||
                       std::min(toleranceBefore, toleranceAfter) < keyframeTolerance;
    m_seek = PendingSeek{.time = target, .exact = exact, .completion = std::move(completion)};
    if (m_phase == Phase::scheduled) {
        m_startTime = target;
        m_seek->stage = Stage::withLoad;
    } else if (m_phase == Phase::open || m_phase == Phase::ready) {
        sendSeek();
    }
}

void MpvStreamPlayer::sendSeek()
{
    if (!m_seek)
        return;
    if (m_phase == Phase::ready && !m_item->isSeekable()) {
        cancelSeek();
        return;
    }
    m_seek->stage = PendingSeek::Stage::sent;
    m_seek->number = ++m_seeksSent;
    const auto sent = m_mpv.command(MpvRequest{MpvRequest::Kind::seek, m_seek->number}.tag(),
                                    {"seek", QByteArray::number(m_seek->time, 'f', 6),
                                     m_seek->exact ? "absolute+exact"_ba : "absolute+keyframes"_ba});
    if (!sent)
        cancelSeek();
}

void MpvStreamPlayer::cancelSeek()
{
    m_seekGuard.stop();
    if (const auto seek = std::exchange(m_seek, {}))
        completeLater(seek->completion, false);
}

void MpvStreamPlayer::completeLater(std::function<void(bool)> completion, bool finished)
{
    if (!completion)
        return;
    m_completions.append([completion = std::move(completion), finished] { completion(finished); });
    QMetaObject::invokeMethod(this, &MpvStreamPlayer::callCompletions, Qt::QueuedConnection);
}

void MpvStreamPlayer::callCompletions()
{
    while (!m_completions.isEmpty())
        m_completions.takeFirst()();
}

} // namespace cadorel
