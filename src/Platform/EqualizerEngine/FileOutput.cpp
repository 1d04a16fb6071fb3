// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/FileOutput.h"

#include <algorithm>
#include <utility>

namespace cadorel {

void FileOutput::allow(qint64 frameCount)
{
    const std::scoped_lock guard(m_mutex);
    m_allowance += frameCount;
    lookAgain();
}

qint64 FileOutput::allowance() const
{
    const std::scoped_lock guard(m_mutex);
    return m_allowance;
}

std::vector<float> FileOutput::samples() const
{
    const std::scoped_lock guard(m_mutex);
    return m_samples;
}

std::vector<float> FileOutput::takeSamples()
{
    const std::scoped_lock guard(m_mutex);
    return std::exchange(m_samples, {});
}

ThreadedOutput::Turn FileOutput::nextTurn()
{
    constexpr qint64 block = 1024;
    return {.frames = std::min(m_allowance, block), .until = {}};
}

void FileOutput::pulled(const float *interleaved, qint64 frameCount)
{
    m_samples.insert(m_samples.end(), interleaved, interleaved + frameCount * m_format.channelCount);
    m_allowance -= frameCount;
    m_heard += frameCount;
}

} // namespace cadorel
