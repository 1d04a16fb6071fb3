// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioFile.h"

#include <QUrl>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <limits>
#include <mutex>

namespace cadorel {

/// Sound whose every sample tells where it is from: valueAt(frame) in each channel, with the sign of the
/// channel. Reads can be held back, and it notices two threads in it at once.
class CountingFile : public AudioFile
{
public:
    CountingFile(qint64 length, AudioFormat format, int offset = 0)
        : m_format(format)
        , m_length(length)
        , m_offset(offset)
    {
    }

    /// Never 0, exact as a float and within full scale.
    static float valueAt(qint64 frame, int offset = 0)
    {
        return float((frame + offset) % period + 1) / float(period);
    }
    static constexpr qint64 period = 1 << 20;

    const QUrl &url() const override { return m_url; }
    AudioFormat processingFormat() const override { return m_format; }
    qint64 length() const override { return m_length; }

    void seek(qint64 frame) override
    {
        const Visit visit(*this);
        const std::scoped_lock guard(m_mutex);
        m_position = frame;
    }

    qint64 read(float *interleaved, qint64 frameCount) override
    {
        const Visit visit(*this);
        std::unique_lock lock(m_mutex);
        m_waiting = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_position < m_readable; });
        m_waiting = false;
        const qint64 count =
            std::clamp<qint64>(std::min(m_length, m_broken.load()) - m_position, 0, frameCount);
        for (qint64 i = 0; i < count; ++i)
            for (int channel = 0; channel < m_format.channelCount; ++channel)
                *interleaved++ = valueAt(m_position + i, m_offset) * (channel % 2 ? -1.0F : 1.0F);
        m_position += count;
        return count;
    }

    /// Reads wait that begin here or later.
    void holdAt(qint64 frame)
    {
        const std::scoped_lock guard(m_mutex);
        m_readable = frame;
        m_changed.notify_all();
    }
    void release() { holdAt(std::numeric_limits<qint64>::max()); }
    /// A read waits in it.
    bool isWaiting() const
    {
        const std::scoped_lock guard(m_mutex);
        return m_waiting && m_position >= m_readable;
    }
    /// Nothing can be read from here on.
    void breakAt(qint64 frame) { m_broken = frame; }
    /// Two threads were in it at once.
    bool wasShared() const { return m_wasShared; }

private:
    struct Visit
    {
        explicit Visit(CountingFile &visited)
            : file(visited)
        {
            if (++file.m_visitors > 1)
                file.m_wasShared = true;
        }
        ~Visit() { --file.m_visitors; }
        Q_DISABLE_COPY_MOVE(Visit)
        CountingFile &file;
    };

    QUrl m_url;
    AudioFormat m_format;
    qint64 m_length;
    int m_offset;
    qint64 m_position = 0;
    std::atomic<qint64> m_broken = std::numeric_limits<qint64>::max();
    qint64 m_readable = std::numeric_limits<qint64>::max();
    bool m_waiting = false;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::atomic<int> m_visitors = 0;
    std::atomic<bool> m_wasShared = false;
};

} // namespace cadorel
