// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/DecodeRun.h"

#include "Platform/EqualizerEngine/EqualizerLog.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include <pthread.h>

namespace cadorel {

namespace {

/// How far the decoding runs ahead: a read that takes longer is heard as a gap.
constexpr int ringMilliseconds = 250;
/// What is decoded in one go; the first sound waits for it.
constexpr int pieceMilliseconds = 25;

std::size_t samplesIn(int milliseconds, const AudioFormat &format)
{
    const auto frames = static_cast<std::size_t>(format.sampleRate) * std::size_t(milliseconds) / 1000;
    return std::max<std::size_t>(frames, 1) * std::size_t(format.channelCount);
}

} // namespace

DecodeRun::DecodeRun(const AudioFormat &format, std::function<void()> moreReady)
    : m_format(format)
    , m_moreReady(std::move(moreReady))
    , m_ring(samplesIn(ringMilliseconds, format))
{
}

DecodeRun::~DecodeRun() = default;

void DecodeRun::append(Segment segment)
{
    m_due += segment.frameCount;
    bool hadThread = false;
    {
        const std::scoped_lock guard(m_mutex);
        m_segments.push_back(std::move(segment));
        hadThread = std::exchange(m_hasThread, true);
    }
    nudge();
    if (hadThread)
        return;
    std::thread([self = shared_from_this()] {
        pthread_setname_np(pthread_self(), "decode");
        self->work();
    }).detach();
}

void DecodeRun::cancel()
{
    m_isCancelled = true;
    nudge();
}

bool DecodeRun::waitUntilEnded(std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_mutex);
    return m_ended.wait_for(lock, limit, [this] { return !m_hasThread; });
}

void DecodeRun::nudge()
{
    ++m_nudges;
    m_nudges.notify_one();
}

void DecodeRun::work()
{
    while (!m_isCancelled) {
        const int seen = m_nudges;
        std::optional<Segment> segment;
        {
            const std::scoped_lock guard(m_mutex);
            if (!m_segments.empty()) {
                segment = std::move(m_segments.front());
                m_segments.pop_front();
            }
        }
        if (segment)
            play(*segment);
        else if (!m_isCancelled)
            m_nudges.wait(seen);
    }
    const std::scoped_lock guard(m_mutex);
    m_segments.clear();
    m_hasThread = false;
    m_ended.notify_all();
}

void DecodeRun::play(const Segment &segment)
{
    const std::size_t channels = std::size_t(m_format.channelCount);
    std::vector<float> piece(samplesIn(pieceMilliseconds, m_format));
    qint64 left = segment.frameCount;
    const std::scoped_lock exclusive(*segment.exclusive);
    try {
        if (!m_isCancelled)
            segment.file->seek(segment.startFrame);
        while (left > 0 && waitForRoom(piece.size())) {
            const qint64 asked = std::min(left, qint64(piece.size() / channels));
            const qint64 given = segment.file->read(piece.data(), asked);
            if (given <= 0 || m_isCancelled)
                break;
            m_ring.write(std::span(piece).first(std::size_t(given) * channels));
            left -= given;
            offer();
        }
    } catch (const std::exception &) {
        qCWarning(equalizerLog) << "a file cannot be read any further";
    }
    // The rest of a damaged file does not come: what is not due is not waited for.
    m_due -= left;
    offer();
}

bool DecodeRun::waitForRoom(std::size_t samples)
{
    // Once full it rests until half is taken, so that it wakes a few times a second and no more.
    std::size_t wanted = samples;
    while (!m_isCancelled) {
        const int seen = m_nudges;
        if (m_ring.room() >= wanted)
            return true;
        wanted = m_ring.capacity() / 2;
        if (m_ring.room() < wanted && !m_isCancelled)
            m_nudges.wait(seen);
    }
    return false;
}

void DecodeRun::offer()
{
    if (!m_isCancelled && m_isHungry.exchange(false))
        m_moreReady();
}

qint64 DecodeRun::takeReady(float *interleaved, qint64 frameCount)
{
    const auto channels = std::size_t(m_format.channelCount);
    const std::size_t samples = m_ring.read(std::span(interleaved, std::size_t(frameCount) * channels));
    const auto frames = static_cast<qint64>(samples / channels);
    m_due -= frames;
    return frames;
}

qint64 DecodeRun::take(float *interleaved, qint64 frameCount)
{
    const qint64 channels = m_format.channelCount;
    qint64 taken = takeReady(interleaved, frameCount);
    if (taken < frameCount && m_due > 0) {
        // Hungry first, then another look: what comes between the two would tell nobody.
        m_isHungry = true;
        taken += takeReady(interleaved + taken * channels, frameCount - taken);
    }
    if (taken < frameCount && m_due == 0) {
        std::fill_n(interleaved + taken * channels, (frameCount - taken) * channels, 0.0F);
        taken = frameCount;
    }
    if (m_ring.room() >= m_ring.capacity() / 2)
        nudge();
    return taken;
}

} // namespace cadorel
