// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/AudioOutput.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>

namespace cadorel {

/// Sound that tells its own place in a recording: it rises from -0.8 to 0.8 in ten seconds, which 16 bits
/// resolve to a tenth of a millisecond.
class RampSource
{
public:
    static constexpr double lengthSeconds = 10;
    static constexpr double amplitude = 0.8;

    explicit RampSource(AudioFormat format)
        : m_format(format)
    {
    }

    AudioOutput::Source source()
    {
        return [this](float *interleaved, qint64 frameCount) {
            const qint64 count = std::min(frameCount, m_limit - m_next);
            for (qint64 i = 0; i < count; ++i, ++m_next)
                for (int channel = 0; channel < m_format.channelCount; ++channel)
                    *interleaved++ = float(valueAt(double(m_next) / m_format.sampleRate));
            return count;
        };
    }

    static double valueAt(double seconds) { return amplitude * (2 * seconds / lengthSeconds - 1); }
    /// Where in the sound a sample is from.
    static double secondsOf(float value) { return (double(value) / amplitude + 1) / 2 * lengthSeconds; }

    /// Goes on from here.
    void jumpTo(double seconds) { m_next = qint64(seconds * m_format.sampleRate); }
    /// Has nothing from here on.
    void limitTo(double seconds) { m_limit = qint64(seconds * m_format.sampleRate); }
    qint64 given() const { return m_next; }
    const AudioFormat &format() const { return m_format; }

private:
    AudioFormat m_format;
    std::atomic<qint64> m_next = 0;
    std::atomic<qint64> m_limit = std::numeric_limits<qint64>::max();
};

} // namespace cadorel
