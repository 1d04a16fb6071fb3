// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <span>
#include <vector>

namespace cadorel {

/// The last part of a stream, kept until it was heard: what has been sent to a device can so be taken back
/// and sent once more. Frames are counted from the beginning of the stream.
class RecentSound
{
public:
    explicit RecentSound(int channelCount)
        : m_channels(std::size_t(channelCount))
    {
    }

    /// Frame after the last one.
    qint64 end() const { return m_begin + qint64((m_samples.size() - m_skipped) / m_channels); }

    void append(std::span<const float> samples)
    {
        m_samples.insert(m_samples.end(), samples.begin(), samples.end());
    }
    /// Forgets everything and goes on at another frame.
    void restart(qint64 frame)
    {
        m_samples.clear();
        m_skipped = 0;
        m_begin = frame;
    }
    /// Forgets what is before @p frame.
    void forgetBefore(qint64 frame)
    {
        const qint64 count = std::clamp<qint64>(frame - m_begin, 0, end() - m_begin);
        m_begin += count;
        m_skipped += std::size_t(count) * m_channels;
        // Moved to the front now and then, not at each call.
        if (m_skipped > m_samples.size() / 2) {
            m_samples.erase(m_samples.begin(), m_samples.begin() + std::ptrdiff_t(m_skipped));
            m_skipped = 0;
        }
    }
    /// What is kept from @p frame on.
    std::span<const float> from(qint64 frame) const
    {
        const qint64 first = std::clamp(frame, m_begin, end());
        return std::span(m_samples).subspan(m_skipped + std::size_t(first - m_begin) * m_channels);
    }

private:
    std::size_t m_channels;
    std::vector<float> m_samples;
    std::size_t m_skipped = 0; ///< samples at the front that are forgotten
    qint64 m_begin = 0;        ///< frame of the first sample that is not
};

} // namespace cadorel
