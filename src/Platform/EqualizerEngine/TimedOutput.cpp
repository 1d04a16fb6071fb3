// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/TimedOutput.h"

#include <algorithm>

namespace cadorel {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// What is taken in one go, and how much of what was taken is unheard at most.
constexpr double blockSeconds = 0.02;
constexpr double aheadSeconds = 0.06;

} // namespace

double TimedOutput::heard() const
{
    if (!m_since)
        return m_heardBefore;
    const double passed = Seconds(Clock::now() - *m_since).count() * m_format.sampleRate;
    return std::min(m_heardBefore + passed, m_taken);
}

ThreadedOutput::Turn TimedOutput::nextTurn()
{
    const double ahead = aheadSeconds * m_format.sampleRate;
    const auto block = std::max<qint64>(1, qint64(blockSeconds * m_format.sampleRate));
    const double unheard = m_taken - heard();
    if (unheard + double(block) <= ahead)
        return {.frames = block, .until = {}};
    const Seconds wait((unheard + double(block) - ahead) / m_format.sampleRate);
    return {.frames = 0, .until = Clock::now() + std::chrono::ceil<Clock::duration>(wait)};
}

void TimedOutput::pulled(const float * /*interleaved*/, qint64 frameCount)
{
    // After a time without sound the clock goes on from where it stood.
    m_heardBefore = heard();
    m_since = Clock::now();
    m_taken += double(frameCount);
}

void TimedOutput::playingChanged(bool plays)
{
    m_heardBefore = heard();
    m_since = plays ? std::optional(Clock::now()) : std::nullopt;
}

void TimedOutput::dropped()
{
    m_taken = 0;
    m_heardBefore = 0;
    m_since.reset();
}

} // namespace cadorel
