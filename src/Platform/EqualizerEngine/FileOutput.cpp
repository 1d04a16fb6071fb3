// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/FileOutput.h"

#include <algorithm>
#include <utility>

namespace cadorel {

void FileOutput::allow(qint64 frameCount)
{
    const Guard guard(*this);
    m_allowance += frameCount;
    lookAgain();
}

qint64 FileOutput::allowance() const
{
    const Guard guard(*this);
    return m_allowance;
}

std::vector<float> FileOutput::samples() const
{
    const Guard guard(*this);
    return m_samples;
}

std::vector<float> FileOutput::takeSamples()
{
    const Guard guard(*this);
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
