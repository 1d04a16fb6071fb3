// SPDX-License-Identifier: GPL-3.0-or-later
// The half of MpvStreamPlayer that listens to libmpv.
#include "Platform/Mpv/FailureText.h"
#include "Platform/Mpv/MpvLog.h"
#include "Platform/Mpv/MpvRequest.h"
#include "Platform/Mpv/MpvStreamPlayer.h"
#include "Platform/Mpv/WhenFinished.h"

#include <QPointer>
#include <QtConcurrent>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <tuple>
#include <utility>

namespace cadorel {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// libmpv leaves the old position within milliseconds of taking a seek, whatever the network does.
constexpr auto seekGuardTime = 2s;

/// The entry number in the answer to a loadfile command; -1 without one.
qint64 loadedEntry(const mpv_event_command &answer)
{
    if (answer.result.format != MPV_FORMAT_NODE_MAP)
        return -1;
    const mpv_node_list &map = *answer.result.u.list;
    for (int i = 0; i < map.num; ++i)
        if (std::string_view(map.keys[i]) == "playlist_entry_id" && map.values[i].format == MPV_FORMAT_INT64)
            return map.values[i].u.int64;
    return -1;
}

/// The number that a reply carries; nothing for an error.
std::optional<double> number(const mpv_event &reply)
{
    const auto *property = static_cast<const mpv_event_property *>(reply.data);
    if (reply.error < 0 || property->format != MPV_FORMAT_DOUBLE)
        return {};
    return *static_cast<const double *>(property->data);
}

/// The flag that a reply or a change carries; false for an error.
bool flag(const mpv_event &event)
{
    const auto *property = static_cast<const mpv_event_property *>(event.data);
    return event.error >= 0 && property->format == MPV_FORMAT_FLAG &&
           *static_cast<const int *>(property->data) != 0;
}

} // namespace

void MpvStreamPlayer::wake(void *player)
{
    auto *self = static_cast<MpvStreamPlayer *>(player);
    if (!self->m_drainQueued.exchange(true))
        QMetaObject::invokeMethod(self, &MpvStreamPlayer::drainEvents, Qt::QueuedConnection);
}

void MpvStreamPlayer::drainEvents()
{
    m_drainQueued = false;
    const QPointer<MpvStreamPlayer> self(this);
    while (self) {
        const mpv_event *event = m_mpv.nextEvent();
        if (!event)
            return;
        handle(*event);
    }
}

void MpvStreamPlayer::handle(const mpv_event &event)
{
    switch (event.event_id) {
    case MPV_EVENT_COMMAND_REPLY:
        commandReplied(event);
        break;
    case MPV_EVENT_GET_PROPERTY_REPLY:
        propertyReplied(event);
        break;
    case MPV_EVENT_PROPERTY_CHANGE:
        propertyChanged(event);
        break;
    case MPV_EVENT_START_FILE:
        fileStarted(static_cast<const mpv_event_start_file *>(event.data)->playlist_entry_id);
        break;
    case MPV_EVENT_FILE_LOADED:
        if (eventsAreOurs())
            fileOpened();
        break;
    case MPV_EVENT_SEEK:
        if (eventsAreOurs())
            seekBegan();
        break;
    case MPV_EVENT_PLAYBACK_RESTART:
        if (eventsAreOurs())
            playbackRestarted();
        break;
    case MPV_EVENT_END_FILE:
        fileEnded(*static_cast<const mpv_event_end_file *>(event.data));
        break;
    default:
        break;
    }
}

void MpvStreamPlayer::commandReplied(const mpv_event &event)
{
    const auto [kind, sentNumber] = MpvRequest::fromTag(event.reply_userdata);
    if (kind == MpvRequest::Kind::load && sentNumber == m_load) {
        if (event.error < 0)
            fail(event.error);
        else
            m_entry = loadedEntry(*static_cast<const mpv_event_command *>(event.data));
    } else if (kind == MpvRequest::Kind::seek && m_seek && m_seek->number == sentNumber) {
        if (event.error < 0) {
            settleSeek(false);
            return;
        }
        m_seek->stage = PendingSeek::Stage::taken;
        m_seekGuard.start(seekGuardTime);
    }
}

void MpvStreamPlayer::fileStarted(qint64 entry)
{
    m_startedEntry = entry;
    // What the load was sent with holds from here on, and the rate may have moved since.
    if (eventsAreOurs() && m_loadSentPaused != (m_rate == 0))
        m_mpv.setProperty("pause", m_rate == 0);
}

void MpvStreamPlayer::fileOpened()
{
    m_phase = Phase::open;
    if (m_item->usesLoader())
        m_item->takeLoadedBytes(m_protocol.completeData());
    requestDuration();
    m_mpv.requestProperty(MpvRequest{MpvRequest::Kind::seekable, m_load}.tag(), "seekable", MPV_FORMAT_FLAG);
    if (m_seek && m_seek->stage == PendingSeek::Stage::afterLoad)
        sendSeek();
}

void MpvStreamPlayer::seekBegan()
{
    if (!m_seek || m_seek->stage != PendingSeek::Stage::taken)
        return;
    m_seek->stage = PendingSeek::Stage::underWay;
    m_seekGuard.stop();
}

void MpvStreamPlayer::playbackRestarted()
{
    using Kind = MpvRequest::Kind;
    using Stage = PendingSeek::Stage;
    // A restart without a sound device is followed by the end of the file.
    m_mpv.requestProperty(MpvRequest{Kind::output, m_load}.tag(), "current-ao", MPV_FORMAT_STRING);
    m_mpv.requestProperty(MpvRequest{Kind::sampleRate, m_load}.tag(), "audio-params/samplerate",
                          MPV_FORMAT_DOUBLE);
    requestDuration();
    if (m_seek && (m_seek->stage == Stage::withLoad || m_seek->stage == Stage::underWay))
        m_seek->stage = Stage::readsPosition;
    requestPosition(true);
}

void MpvStreamPlayer::requestDuration()
{
    m_mpv.requestProperty(MpvRequest{MpvRequest::Kind::duration, m_load}.tag(), "duration",
                          MPV_FORMAT_DOUBLE);
}

void MpvStreamPlayer::fileEnded(const mpv_event_end_file &end)
{
    if (end.playlist_entry_id == m_startedEntry)
        m_startedEntry = -1;
    if (m_entry < 0 || end.playlist_entry_id != m_entry)
        return;
    // A loader's failure ends the file in whatever way libmpv makes of it, also like its natural end.
    if (failedToLoad())
        return;
    // A pause that came too late for the file would hold the sound that is still on its way to the device.
    m_mpv.setProperty("pause", false);
    const bool beganAtEnd =
        end.error == MPV_ERROR_NOTHING_TO_PLAY && m_startTime > 0 && m_phase != Phase::loading;
    if (end.reason == MPV_END_FILE_REASON_EOF || beganAtEnd) {
        reachEnd();
    } else if (end.reason == MPV_END_FILE_REASON_REDIRECT) {
        std::ignore = m_mpv.command(MpvRequest{MpvRequest::Kind::unanswered}.tag(), {"stop"});
        fail(MPV_ERROR_UNKNOWN_FORMAT);
    } else {
        fail(end.error);
    }
}

bool MpvStreamPlayer::failedToLoad()
{
    const auto failure = m_protocol.failure();
    if (!failure)
        return false;
    if (failure->description.isEmpty()) {
        fail(MPV_ERROR_LOADING_FAILED);
    } else {
        m_entry = -1;
        failItem(failure->description);
    }
    return true;
}

void MpvStreamPlayer::reachEnd()
{
    const std::shared_ptr<MpvPlayerItem> item = m_item;
    const quint64 load = m_load;
    const bool played = m_rate > 0;
    const auto current = [this, load] { return m_load == load; };

    m_phase = Phase::ended;
    m_entry = -1;
    setAdvancing(false);
    // Paused within the last sounds, or sought to the end while paused: play() takes it from there.
    m_startTime = played ? 0 : m_seek ? m_seek->time : item->currentTime();
    if (played || m_seek)
        item->setCurrentTime(std::isnan(item->duration()) ? item->currentTime() : item->duration());
    item->endEngineDuration();
    m_rate = 0;
    item->becomeReady();
    if (current() && played)
        Q_EMIT rateChanged();
    if (current())
        refreshStatus();
    if (current())
        settleSeek(true);
    if (current() && std::isfinite(item->currentTime()))
        m_observers.deliverAll(item->currentTime());
    if (current() && played)
        Q_EMIT item->didPlayToEnd();
}

void MpvStreamPlayer::fail(int mpvError)
{
    m_entry = -1;
    const QUrl url = m_item->asset().url;
    // The text may need a look at the disk.
    whenFinished(QtConcurrent::run(failureText, mpvError, url), this,
                 [this, load = m_load](const QString &text) {
                     if (m_load == load)
                         failItem(text);
                 });
}

void MpvStreamPlayer::failItem(const QString &description)
{
    const std::shared_ptr<MpvPlayerItem> item = m_item;
    const quint64 load = m_load;
    m_phase = Phase::failed;
    const bool rateMoves = std::exchange(m_rate, 0) != 0;
    setAdvancing(false);
    item->fail(description);
    if (m_load == load)
        settleSeek(false);
    if (m_load != load)
        return;
    if (rateMoves)
        Q_EMIT rateChanged();
    refreshStatus();
}

void MpvStreamPlayer::propertyReplied(const mpv_event &event)
{
    using Kind = MpvRequest::Kind;
    const auto [kind, load] = MpvRequest::fromTag(event.reply_userdata);
    if (load != m_load || m_entry < 0)
        return;
    switch (kind) {
    case Kind::duration:
        m_item->setEngineDuration(number(event).value_or(0));
        break;
    case Kind::seekable:
        m_item->setSeekable(flag(event));
        break;
    case Kind::sampleRate:
        m_item->setTimescale(static_cast<int>(number(event).value_or(0)));
        break;
    case Kind::output:
        m_outputOpen = event.error >= 0;
        break;
    case Kind::heardPosition:
        m_heardPosition = number(event);
        break;
    case Kind::positionTick:
        m_tickRequested = false;
        positionTold(newestPosition(event), false);
        break;
    case Kind::positionJump:
        positionTold(newestPosition(event), true);
        break;
    case Kind::load:
    case Kind::seek:
    case Kind::pausedForCache:
    case Kind::unanswered:
        break;
    }
}

void MpvStreamPlayer::propertyChanged(const mpv_event &event)
{
    switch (MpvRequest::fromTag(event.reply_userdata).kind) {
    case MpvRequest::Kind::pausedForCache:
        m_pausedForCache = flag(event);
        refreshStatus();
        break;
    case MpvRequest::Kind::duration:
        // The news may be of the file before: the answer to a request says whose it is.
        if (eventsAreOurs() && m_phase == Phase::ready)
            requestDuration();
        break;
    default:
        break;
    }
}

/// The answer to a request for the position, or that of the sound, which came just before it.
std::optional<double> MpvStreamPlayer::newestPosition(const mpv_event &reply)
{
    const std::optional<double> heard = std::exchange(m_heardPosition, {});
    const std::optional<double> told = number(reply);
    return told && heard ? heard : told;
}

void MpvStreamPlayer::positionTold(std::optional<double> seconds, bool jumped)
{
    const std::shared_ptr<MpvPlayerItem> item = m_item;
    const quint64 load = m_load;
    const auto current = [this, load] { return m_load == load; };

    // On the way to another position libmpv tells of neither.
    const bool travels = m_seek && m_seek->stage != PendingSeek::Stage::readsPosition;
    // libmpv takes off what the device is late by, also where the device has been given nothing yet.
    if (seconds && !travels && m_seek && m_seek->exact && m_rate == 0)
        m_heardFrom = m_seek->time;
    if (seconds && !travels) {
        seconds = std::max(*seconds, m_heardFrom);
        item->setCurrentTime(*seconds);
    }
    if (m_phase == Phase::open && m_outputOpen) {
        m_phase = Phase::ready;
        item->becomeReady();
        if (current())
            refreshStatus();
    }
    if (travels || !current())
        return;
    if (!seconds) {
        // The end of the file is on its way and settles the seek.
        if (m_seek)
            m_seekGuard.start(seekGuardTime);
        return;
    }
    if (m_seek)
        settleSeek(true);
    if (!current())
        return;
    if (jumped)
        m_observers.deliverAll(item->currentTime());
    else
        m_observers.deliverTick(item->currentTime());
}

void MpvStreamPlayer::settleSeek(bool finished)
{
    m_seekGuard.stop();
    const auto seek = std::exchange(m_seek, {});
    // Those that it overtook hear of it first.
    callCompletions();
    if (seek && seek->completion)
        seek->completion(finished);
}

} // namespace cadorel
