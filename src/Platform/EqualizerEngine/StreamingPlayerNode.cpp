// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/StreamingPlayerNode.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace cadorel {

namespace {

using namespace std::chrono_literals;

/// How long the volume takes from silence to full: shorter is heard as a click.
constexpr double volumeRampSeconds = 0.01;
/// How long a sound takes to begin that begins in its middle.
constexpr double fadeInSeconds = 0.004;
/// What the end of the player waits for a thread that reads. One that hangs longer, on a share that is gone,
/// is left to itself: it holds what it needs.
constexpr auto patienceAtEnd = 250ms;

} // namespace

StreamingPlayerNode::StreamingPlayerNode(Effect effect)
    : m_effect(std::move(effect))
{
}

StreamingPlayerNode::~StreamingPlayerNode()
{
    m_output = nullptr;
    stop();
    const auto deadline = std::chrono::steady_clock::now() + patienceAtEnd;
    for (const auto &run : m_leaving)
        run->waitUntilEnded(std::max(0ms, std::chrono::duration_cast<std::chrono::milliseconds>(
                                              deadline - std::chrono::steady_clock::now())));
}

void StreamingPlayerNode::setFormat(const AudioFormat &format)
{
    stop();
    m_format = format;
}

void StreamingPlayerNode::setOutput(AudioOutput *output)
{
    if (m_output)
        m_output->pause(); // so that it pulls no more
    {
        const std::scoped_lock guard(m_waker->mutex);
        m_waker->output = output;
    }
    m_output = output;
    m_clockBase += double(std::exchange(m_given, 0));
    m_isPlaying = false;
}

AudioOutput::Source StreamingPlayerNode::source()
{
    return [this](float *interleaved, qint64 frameCount) { return render(interleaved, frameCount); };
}

AudioOutput *StreamingPlayerNode::usableOutput() const
{
    return m_output && m_output->isOpen() ? m_output : nullptr;
}

std::shared_ptr<std::mutex> StreamingPlayerNode::exclusiveUseOf(const std::shared_ptr<AudioFile> &file)
{
    std::erase_if(m_exclusiveUse, [](const auto &entry) { return entry.first.expired(); });
    std::shared_ptr<std::mutex> &mutex = m_exclusiveUse[file];
    if (!mutex)
        mutex = std::make_shared<std::mutex>();
    return mutex;
}

void StreamingPlayerNode::beginRun()
{
    m_effect.reset();
    // A thread that finds the output gone has nobody to tell.
    m_run = std::make_shared<DecodeRun>(m_format, [waker = m_waker] {
        const std::scoped_lock guard(waker->mutex);
        if (waker->output)
            waker->output->wake();
    });
}

void StreamingPlayerNode::scheduleSegment(std::shared_ptr<AudioFile> file, qint64 startFrame,
                                          qint64 frameCount)
{
    if (!file || frameCount <= 0 || m_format.channelCount <= 0)
        return;
    Q_ASSERT(file->processingFormat() == m_format);
    if (!m_run) {
        beginRun();
        m_fade = startFrame > 0 ? 0 : 1;
        m_gain = double(m_volume);
    }
    auto exclusive = exclusiveUseOf(file);
    m_run->append({std::move(file), std::move(exclusive), std::max<qint64>(startFrame, 0), frameCount});
}

void StreamingPlayerNode::play()
{
    AudioOutput *output = usableOutput();
    if (!output || m_isPlaying)
        return;
    if (!m_run)
        beginRun();
    m_isPlaying = true;
    m_hasStarted = true;
    output->play();
}

void StreamingPlayerNode::pause()
{
    if (AudioOutput *output = usableOutput(); output && m_isPlaying)
        output->pause();
    m_isPlaying = false;
}

void StreamingPlayerNode::stop()
{
    if (m_output)
        m_output->drop();
    m_isPlaying = false;
    m_hasStarted = false;
    m_clockBase = 0;
    m_given = 0;
    if (!m_run)
        return;
    m_run->cancel();
    std::erase_if(m_leaving, [](const auto &run) { return run->waitUntilEnded(0ms); });
    m_leaving.push_back(std::exchange(m_run, nullptr));
}

bool StreamingPlayerNode::isPlaying() const
{
    return m_isPlaying && usableOutput();
}

std::optional<NodeTime> StreamingPlayerNode::playerTime() const
{
    if (!m_hasStarted)
        return std::nullopt;
    const double heard = m_output ? m_output->framesHeard() : 0;
    return NodeTime{.sampleTime = m_clockBase + heard, .sampleRate = double(m_format.sampleRate)};
}

qint64 StreamingPlayerNode::render(float *interleaved, qint64 frameCount)
{
    const qint64 given = m_run->take(interleaved, frameCount);
    m_effect.process(interleaved, given);
    applyGain(interleaved, given);
    m_given += given;
    return given;
}

void StreamingPlayerNode::applyGain(float *interleaved, qint64 frameCount)
{
    const double target = double(m_volume);
    if (m_gain == 1 && target == 1 && m_fade == 1)
        return;
    const double step = 1 / (volumeRampSeconds * m_format.sampleRate);
    const double fadeStep = 1 / (fadeInSeconds * m_format.sampleRate);
    for (qint64 frame = 0; frame < frameCount; ++frame) {
        m_gain += std::clamp(target - m_gain, -step, step);
        m_fade = std::min(1.0, m_fade + fadeStep);
        const auto factor = static_cast<float>(m_gain * m_fade);
        for (int channel = 0; channel < m_format.channelCount; ++channel)
            *interleaved++ *= factor;
    }
}

} // namespace cadorel
