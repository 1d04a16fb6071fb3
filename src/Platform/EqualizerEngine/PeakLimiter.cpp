// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/PeakLimiter.h"

#include <algorithm>
#include <cmath>

namespace cadorel {

namespace {

// Half a wave of 20 Hz, the lowest that is heard.
constexpr double holdSeconds = 0.025;
constexpr double releaseSeconds = 0.2;
// A peak within a tenth of a decibel of the last one renews the hold: sampling alone makes the peaks of one
// tone differ by so much.
constexpr double samePeak = 0.99;
// From here on the way back to 1 is not heard.
constexpr double nearlyOne = 1 - 1e-5;

} // namespace

void PeakLimiter::prepare(double sampleRate)
{
    m_holdFrames = static_cast<int>(holdSeconds * sampleRate);
    m_release = 1 - std::exp(-1 / (releaseSeconds * sampleRate));
    reset();
}

void PeakLimiter::reset()
{
    m_gain = 1;
    m_heldFor = 0;
}

void PeakLimiter::process(const double *input, float *output, int frames, int channels)
{
    const int samples = frames * channels;
    if (m_gain == 1.0) {
        double loudest = 0;
        for (int i = 0; i < samples; ++i)
            loudest = std::max(loudest, std::abs(input[i]));
        if (loudest <= 1) {
            for (int i = 0; i < samples; ++i)
                output[i] = static_cast<float>(input[i]);
            return;
        }
    }
    for (int frame = 0; frame < frames; ++frame, input += channels, output += channels) {
        double peak = 0;
        for (int channel = 0; channel < channels; ++channel)
            peak = std::max(peak, std::abs(input[channel]));
        if (peak * m_gain >= samePeak)
            m_heldFor = 0;
        else if (m_heldFor < m_holdFrames)
            ++m_heldFor;
        else
            m_gain += (1 - m_gain) * m_release;
        if (m_gain > nearlyOne)
            m_gain = 1;
        m_gain = std::min(m_gain, 1 / std::max(peak, 1.0));
        // Rounding must not lead beyond full scale either.
        for (int channel = 0; channel < channels; ++channel)
            output[channel] = std::clamp(static_cast<float>(input[channel] * m_gain), -1.0F, 1.0F);
    }
}

} // namespace cadorel
