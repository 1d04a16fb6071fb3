// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/PulseOutput.h"

#include "Platform/EqualizerEngine/EqualizerLog.h"
#include "Platform/EqualizerEngine/NoDevice.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <utility>

namespace cadorel {

namespace {

using namespace std::chrono_literals;

/// The longest that the main thread waits for a server that does not answer, connection and stream together.
constexpr auto openingLimit = 750ms;
/// Sent ahead and not heard yet: a moved slider is heard so much later, and a busy machine has so much time.
constexpr double latencySeconds = 0.13;
/// What the server asks for at a time.
constexpr double requestSeconds = 0.025;
/// After it ran dry the server waits for so much.
constexpr double restartSeconds = 0.01;
/// How far ahead of what is heard the stream can still be overwritten: servers take it in pieces of some
/// milliseconds, and not every one gives back what it has taken.
constexpr double overwriteSeconds = 0.022;
/// The same for a sound that begins: when it comes too late, its beginning is what is lost.
constexpr double beginSeconds = 0.04;
/// Silence before the first sound after a rest: a server may let that much go by unheard.
constexpr double leadSeconds = 0.012;
/// Shorter is heard as a click.
constexpr double fadeSeconds = 0.005;
/// From the end of the fade until the tap is closed.
constexpr pa_usec_t silenceBeforeCork = 60'000;
/// How often the server is asked where it is, but for the first times after a start.
constexpr pa_usec_t timingInterval = 200'000;
constexpr int quickTimings = 6;

pa_buffer_attr bufferOf(const pa_sample_spec &spec)
{
    const auto bytes = [&spec](double seconds) {
        return static_cast<uint32_t>(
            pa_usec_to_bytes(static_cast<pa_usec_t>(seconds * PA_USEC_PER_SEC), &spec));
    };
    return {.maxlength = UINT32_MAX,
            .tlength = bytes(latencySeconds),
            .prebuf = bytes(restartSeconds),
            .minreq = bytes(requestSeconds),
            .fragsize = UINT32_MAX};
}

/// Where the channels of an AudioFormat are heard, eight at most.
pa_channel_map mapOf(int channelCount)
{
    switch (channelCount) {
    case 1:
        return {.channels = 1, .map = {PA_CHANNEL_POSITION_MONO}};
    case 4:
        return {.channels = 4,
                .map = {PA_CHANNEL_POSITION_FRONT_LEFT, PA_CHANNEL_POSITION_FRONT_RIGHT,
                        PA_CHANNEL_POSITION_REAR_LEFT, PA_CHANNEL_POSITION_REAR_RIGHT}};
    case 5:
        return {.channels = 5,
                .map = {PA_CHANNEL_POSITION_FRONT_LEFT, PA_CHANNEL_POSITION_FRONT_RIGHT,
                        PA_CHANNEL_POSITION_FRONT_CENTER, PA_CHANNEL_POSITION_REAR_LEFT,
                        PA_CHANNEL_POSITION_REAR_RIGHT}};
    case 7:
        return {.channels = 7,
                .map = {PA_CHANNEL_POSITION_FRONT_LEFT, PA_CHANNEL_POSITION_FRONT_RIGHT,
                        PA_CHANNEL_POSITION_FRONT_CENTER, PA_CHANNEL_POSITION_LFE,
                        PA_CHANNEL_POSITION_REAR_CENTER, PA_CHANNEL_POSITION_SIDE_LEFT,
                        PA_CHANNEL_POSITION_SIDE_RIGHT}};
    default:
        // 2, 3, 6 or 8: so many of these.
        return {.channels = static_cast<uint8_t>(channelCount),
                .map = {PA_CHANNEL_POSITION_FRONT_LEFT, PA_CHANNEL_POSITION_FRONT_RIGHT,
                        PA_CHANNEL_POSITION_FRONT_CENTER, PA_CHANNEL_POSITION_LFE,
                        PA_CHANNEL_POSITION_REAR_LEFT, PA_CHANNEL_POSITION_REAR_RIGHT,
                        PA_CHANNEL_POSITION_SIDE_LEFT, PA_CHANNEL_POSITION_SIDE_RIGHT}};
    }
}

void letGo(pa_operation *operation)
{
    if (operation)
        pa_operation_unref(operation);
}

} // namespace

PulseOutput::PulseOutput(std::shared_ptr<PulseLink> link, QByteArray sink)
    : m_link(std::move(link))
    , m_sink(std::move(sink))
{
}

PulseOutput::~PulseOutput()
{
    if (!m_connection)
        return;
    {
        const std::scoped_lock guard(m_connection->thread());
        if (std::exchange(m_plays, false) && !m_mustPlace)
            fallSilent();
        cancelCork();
        m_isOpen = false;
        forgetRest();
        if (m_stream) {
            pa_stream_set_state_callback(m_stream.get(), nullptr, nullptr);
            pa_stream_set_write_callback(m_stream.get(), nullptr, nullptr);
        }
    }
    if (m_stream)
        m_link->endSoon(std::move(m_connection), std::move(m_stream));
}

PulsePtr<pa_stream> PulseOutput::newStream() const
{
    const pa_sample_spec spec{.format = PA_SAMPLE_FLOAT32NE,
                              .rate = static_cast<uint32_t>(m_format.sampleRate),
                              .channels = static_cast<uint8_t>(m_format.channelCount)};
    const pa_channel_map map = mapOf(m_format.channelCount);
    if (!pa_sample_spec_valid(&spec) || !pa_channel_map_valid(&map))
        return {};
    // No title and no path: whatever sits on this desktop can read the names of streams.
    const PulsePtr<pa_proplist> properties(pa_proplist_new());
    pa_proplist_sets(properties.get(), PA_PROP_MEDIA_ROLE, "music");
    return PulsePtr<pa_stream>(
        pa_stream_new_with_proplist(m_connection->context(), "Music", &spec, &map, properties.get()));
}

void PulseOutput::open(const AudioFormat &format, Source source)
{
    const auto deadline = std::chrono::steady_clock::now() + openingLimit;
    m_format = format;
    m_source = std::move(source);
    m_connection = m_link->connection(openingLimit);
    std::unique_lock lock(m_connection->thread());
    m_recent = RecentSound(format.channelCount);
    const bool isAtSink = !m_sink.isEmpty() && connectStream(m_sink.constData(), lock, deadline);
    if (!isAtSink && !connectStream(nullptr, lock, deadline))
        throwNoDevice();
    m_isOpen = true;
}

/// @return whether the server has taken the stream by the @p deadline
bool PulseOutput::connectStream(const char *sink, std::unique_lock<PulseThread> &lock,
                                std::chrono::steady_clock::time_point deadline)
{
    if (m_stream) {
        pa_stream_set_state_callback(m_stream.get(), nullptr, nullptr);
        pa_stream_set_write_callback(m_stream.get(), nullptr, nullptr);
        pa_stream_disconnect(m_stream.get());
    }
    m_stream = newStream();
    if (!m_stream)
        return false;
    pa_stream_set_state_callback(
        m_stream.get(), [](pa_stream *, void *self) { static_cast<PulseOutput *>(self)->stateChanged(); },
        this);
    pa_stream_set_write_callback(
        m_stream.get(), [](pa_stream *, size_t, void *self) { static_cast<PulseOutput *>(self)->pump(); },
        this);
    // The server is asked for the time as long as somebody listens, and not by libpulse's own timer, which
    // would go on through a pause.
    constexpr auto flags = static_cast<pa_stream_flags_t>(
        PA_STREAM_START_CORKED | PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_ADJUST_LATENCY);
    const pa_buffer_attr buffer = bufferOf(*pa_stream_get_sample_spec(m_stream.get()));
    if (pa_stream_connect_playback(m_stream.get(), sink, &buffer, flags, nullptr, nullptr) < 0)
        return false;
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    m_connection->waitFor(lock, std::max(0ms, left),
                          [this] { return pa_stream_get_state(m_stream.get()) != PA_STREAM_CREATING; });
    return pa_stream_get_state(m_stream.get()) == PA_STREAM_READY;
}

void PulseOutput::stateChanged()
{
    m_connection->thread().signal();
    if (PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream.get())))
        return;
    if (m_isOpen)
        qCInfo(equalizerLog) << "the sound server has gone, or has ended the stream";
    m_held = heard();
    m_plays = false;
    m_isOpen = false;
    cancelCork();
}

qint64 PulseOutput::framesIn(double seconds) const
{
    return static_cast<qint64>(seconds * m_format.sampleRate);
}

// --- Clock ---

double PulseOutput::position() const
{
    pa_usec_t time = 0;
    if (pa_stream_get_time(m_stream.get(), &time) < 0)
        return 0; // the server has not told yet
    return double(time) * m_format.sampleRate / PA_USEC_PER_SEC;
}

double PulseOutput::heard() const
{
    if (m_plays && !m_mustPlace) {
        const double last = double(m_anchorFrame + m_written - m_anchor);
        // Once dry the server's estimate stops a little short.
        const double now = hasRunDry() ? last : double(m_anchorFrame) + position() - double(m_anchor);
        m_held = std::max(m_held, std::min(now, last));
    }
    return m_held;
}

bool PulseOutput::hasRunDry() const
{
    const qint64 index = pa_stream_get_underflow_index(m_stream.get());
    return index >= m_written * qint64(pa_frame_size(pa_stream_get_sample_spec(m_stream.get())));
}

double PulseOutput::framesHeard() const
{
    if (!m_connection)
        return 0;
    const std::scoped_lock guard(m_connection->thread());
    return heard();
}

void PulseOutput::askForTiming()
{
    const pa_usec_t now = pa_rtclock_now();
    if (m_timingsSinceStart >= quickTimings && now - m_timingAsked < timingInterval)
        return;
    ++m_timingsSinceStart;
    m_timingAsked = now;
    letGo(pa_stream_update_timing_info(m_stream.get(), nullptr, nullptr));
}

// --- Sound ---

void PulseOutput::play()
{
    if (!m_isOpen)
        return;
    const std::scoped_lock guard(m_connection->thread());
    if (m_plays || !m_isOpen)
        return;
    m_plays = true;
    m_isHungry = false;
    m_mustPlace = true;
    m_timingsSinceStart = 0;
    cancelCork();
    pump();
}

void PulseOutput::wake()
{
    if (!m_isOpen)
        return;
    const std::scoped_lock guard(m_connection->thread());
    if (!std::exchange(m_isHungry, false))
        return;
    if (m_plays && !m_mustPlace && hasRunDry()) {
        // Like a start: after a silence, and in the middle of a sound.
        heard();
        m_mustPlace = true;
        m_fadesIn = framesIn(fadeSeconds);
    }
    pump();
}

void PulseOutput::pump()
{
    if (!m_plays || m_isHungry)
        return;
    const auto frameBytes = sizeof(float) * std::size_t(m_format.channelCount);
    const std::size_t writable = pa_stream_writable_size(m_stream.get());
    if (writable == std::size_t(-1))
        return;
    qint64 room = qint64(writable / frameBytes);
    // What still lies in the stream behind the place for the next frame is silence, and makes room.
    const qint64 seek = m_mustPlace ? startOfNext() - m_written : 0;
    room -= seek;
    const qint64 block = framesIn(requestSeconds) + 1;
    while (room > 0 && !m_isHungry) {
        const qint64 wanted = std::min(room, block);
        const qint64 count = fill(wanted);
        m_isHungry = count < wanted;
        if (count == 0)
            break;
        if (std::exchange(m_mustPlace, false))
            moveTo(m_written + seek);
        sendBlock(count);
        room -= count;
    }
    if (m_mustPlace)
        return;
    m_recent.forgetBefore(qint64(position()));
    heard(); // remembers it, for the case that the server goes
    setCorked(false);
    askForTiming();
}

qint64 PulseOutput::fill(qint64 frameCount)
{
    const auto channels = std::size_t(m_format.channelCount);
    m_block.resize(std::size_t(frameCount) * channels);
    const std::size_t again = std::min(m_again.size() - m_nextAgain, m_block.size());
    std::copy_n(m_again.begin() + std::ptrdiff_t(m_nextAgain), again, m_block.begin());
    m_nextAgain += again;
    qint64 count = qint64(again / channels);
    if (count < frameCount)
        count += m_source(m_block.data() + again, frameCount - count);
    return count;
}

qint64 PulseOutput::startOfNext() const
{
    if (m_isCorked) {
        const qint64 rest = m_rest.value_or(qint64(position()) + framesIn(overwriteSeconds));
        return std::max(rest + framesIn(leadSeconds), m_fadeEnd);
    }
    if (hasRunDry())
        return m_written + framesIn(leadSeconds);
    const qint64 earliest = qint64(position()) + framesIn(beginSeconds);
    return std::min(std::max(earliest, m_fadeEnd), m_written);
}

void PulseOutput::moveTo(qint64 frame)
{
    if (frame > m_written) {
        const std::vector<float> silence(std::size_t(frame - m_written) * std::size_t(m_format.channelCount));
        write(silence);
    }
    m_seek = frame - m_written;
    m_written = frame;
    m_anchor = frame;
    m_anchorFrame = qint64(m_held);
    m_recent.restart(frame);
}

void PulseOutput::write(std::span<const float> samples)
{
    const auto channels = std::size_t(m_format.channelCount);
    pa_stream_write(m_stream.get(), samples.data(), samples.size_bytes(), nullptr,
                    std::exchange(m_seek, 0) * qint64(sizeof(float) * channels), PA_SEEK_RELATIVE);
    m_written += qint64(samples.size() / channels);
}

void PulseOutput::sendBlock(qint64 frameCount)
{
    const auto channels = std::size_t(m_format.channelCount);
    const std::span<float> samples = std::span(m_block).first(std::size_t(frameCount) * channels);
    m_recent.append(samples);
    const qint64 all = framesIn(fadeSeconds);
    for (std::size_t i = 0; i < samples.size() && m_fadesIn > 0; i += channels, --m_fadesIn)
        for (float &sample : samples.subspan(i, channels))
            sample *= float(all - m_fadesIn) / float(all);
    write(samples);
}

// --- Silence ---

void PulseOutput::pause()
{
    if (!m_connection)
        return;
    const std::scoped_lock guard(m_connection->thread());
    if (!std::exchange(m_plays, false))
        return;
    if (m_mustPlace) {
        corkAgain();
        return;
    }
    const qint64 cut = fallSilent();
    const std::span<const float> back = m_recent.from(cut);
    std::vector<float> again(back.begin(), back.end());
    again.insert(again.end(), m_again.begin() + std::ptrdiff_t(m_nextAgain), m_again.end());
    m_again = std::move(again);
    m_nextAgain = 0;
    m_fadesIn = framesIn(fadeSeconds);
    m_held = double(m_anchorFrame + cut - m_anchor);
}

void PulseOutput::drop()
{
    if (!m_connection)
        return;
    const std::scoped_lock guard(m_connection->thread());
    if (std::exchange(m_plays, false)) {
        if (m_mustPlace)
            corkAgain();
        else
            fallSilent();
    }
    m_again.clear();
    m_nextAgain = 0;
    m_fadesIn = 0;
    m_held = 0;
}

qint64 PulseOutput::fallSilent()
{
    const auto channels = std::size_t(m_format.channelCount);
    const qint64 cut = std::clamp(qint64(position()) + framesIn(overwriteSeconds), m_anchor, m_written);
    const std::span<const float> unheard = m_recent.from(cut);
    const qint64 all = std::max<qint64>(1, std::min(framesIn(fadeSeconds), m_written - cut));
    m_block.assign(unheard.size(), 0);
    for (std::size_t i = 0; i < unheard.size() && i / channels < std::size_t(all); ++i)
        m_block[i] = unheard[i] * float(all - qint64(i / channels)) / float(all);
    m_fadeEnd = std::min(cut + all, m_written);
    if (!m_block.empty()) {
        m_seek = cut - m_written;
        m_written = cut;
        write(m_block);
    }
    corkSoon();
    return cut;
}

void PulseOutput::setCorked(bool corked)
{
    if (std::exchange(m_isCorked, corked) != corked)
        letGo(pa_stream_cork(m_stream.get(), corked ? 1 : 0, nullptr, nullptr));
}

void PulseOutput::corkSoon()
{
    cancelCork();
    const auto fade = static_cast<pa_usec_t>((overwriteSeconds + fadeSeconds) * PA_USEC_PER_SEC);
    m_corkTimer = pa_context_rttime_new(
        m_connection->context(), pa_rtclock_now() + fade + silenceBeforeCork,
        [](pa_mainloop_api *, pa_time_event *, const timeval *, void *self) {
            auto *output = static_cast<PulseOutput *>(self);
            output->cancelCork();
            output->setCorked(true);
            output->askForRest();
        },
        this);
}

void PulseOutput::forgetRest()
{
    m_rest.reset();
    if (m_restAnswer)
        pa_operation_cancel(m_restAnswer.get());
    m_restAnswer.reset();
}

void PulseOutput::askForRest()
{
    forgetRest();
    const auto told = [](pa_stream *stream, int success, void *self) {
        auto *output = static_cast<PulseOutput *>(self);
        const pa_timing_info *timing = pa_stream_get_timing_info(stream);
        if (success != 0 && output->m_isCorked && timing && timing->read_index_corrupt == 0)
            output->m_rest = timing->read_index / qint64(pa_frame_size(pa_stream_get_sample_spec(stream)));
    };
    m_restAnswer.reset(pa_stream_update_timing_info(m_stream.get(), told, this));
}

/// Nothing sounded since play(), which took back the closing of the tap.
void PulseOutput::corkAgain()
{
    if (m_isOpen && !m_isCorked)
        corkSoon();
}

void PulseOutput::cancelCork()
{
    if (pa_time_event *timer = std::exchange(m_corkTimer, nullptr))
        m_connection->thread().api()->time_free(timer);
}

} // namespace cadorel
