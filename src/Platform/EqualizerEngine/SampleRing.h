// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <span>
#include <vector>

namespace cadorel {

/// Hands samples from one thread to another. Neither waits: what does not fit, or is not there, is told by
/// the count.
class SampleRing
{
public:
    explicit SampleRing(std::size_t capacity)
        : m_samples(capacity)
    {
    }

    std::size_t capacity() const { return m_samples.size(); }

    /// How many can be written at least. Any thread.
    std::size_t room() const { return capacity() - filled(); }
    /// How many can be read at least. Any thread.
    std::size_t filled() const
    {
        // Read before written: the other way round the difference could be taken over a whole turn.
        const std::size_t read = m_read.load(std::memory_order_acquire);
        return std::min(m_written.load(std::memory_order_acquire) - read, capacity());
    }

    /// The writing thread. @return how many of the first samples were taken
    std::size_t write(std::span<const float> samples)
    {
        const std::size_t at = m_written.load(std::memory_order_relaxed);
        const std::size_t count =
            std::min(samples.size(), capacity() - (at - m_read.load(std::memory_order_acquire)));
        const std::size_t start = at % capacity();
        const std::size_t first = std::min(count, capacity() - start);
        std::copy_n(samples.begin(), first, m_samples.begin() + std::ptrdiff_t(start));
        std::copy_n(samples.begin() + std::ptrdiff_t(first), count - first, m_samples.begin());
        m_written.store(at + count, std::memory_order_release);
        return count;
    }

    /// The reading thread. @return how many samples were given
    std::size_t read(std::span<float> samples)
    {
        const std::size_t at = m_read.load(std::memory_order_relaxed);
        const std::size_t count = std::min(samples.size(), m_written.load(std::memory_order_acquire) - at);
        const std::size_t start = at % capacity();
        const std::size_t first = std::min(count, capacity() - start);
        std::copy_n(m_samples.begin() + std::ptrdiff_t(start), first, samples.begin());
        std::copy_n(m_samples.begin(), count - first, samples.begin() + std::ptrdiff_t(first));
        m_read.store(at + count, std::memory_order_release);
        return count;
    }

private:
    static constexpr std::size_t cacheLine = 64;

    std::vector<float> m_samples;
    /// Samples since the beginning; they grow for ever and each has one writer.
    alignas(cacheLine) std::atomic<std::size_t> m_written = 0;
    alignas(cacheLine) std::atomic<std::size_t> m_read = 0;
};

} // namespace cadorel
