// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Sound/SoundServer.h"

#include <chrono>
#include <memory>
#include <vector>

namespace cadorel {

/// Hears what a device of a SoundServer plays: one channel, 48,000 samples a second.
class Recorder
{
public:
    static constexpr int sampleRate = 48'000;

    /// Hears everything from the moment that the constructor returns.
    explicit Recorder(const SoundServer &server, const QString &device = SoundServer::firstDevice);
    ~Recorder();
    Q_DISABLE_COPY_MOVE(Recorder)

    /// Forgets what it has heard so far.
    void clear();
    /// Waits, in an event loop, until it has heard so much since the last clear(). False after ten times
    /// that.
    bool hear(std::chrono::milliseconds length);
    /// Waits until the last @p length is silent.
    bool hearSilence(std::chrono::milliseconds length, std::chrono::milliseconds limit);
    /// Waits for the first sample above @p amplitude.
    bool hearSound(float amplitude, std::chrono::milliseconds limit);

    /// Loudest frequency of what it hears from now on; 0 for silence, -1 when nothing comes.
    double hertzNow();
    /// Waits until that is @p hertz.
    bool hearTone(double hertz, std::chrono::milliseconds limit = std::chrono::seconds(20));

    /// What it has heard since the last clear().
    const std::vector<float> &samples() const { return m_samples; }
    /// Index of the first sample above @p amplitude, of the last one, and -1 without one.
    std::ptrdiff_t firstAbove(float amplitude) const;
    std::ptrdiff_t lastAbove(float amplitude) const;

    /// How much of it was a loud tone between two frequencies, gaps of a busy machine left out.
    std::chrono::milliseconds toneLength(double fromHertz, double toHertz) const;

    static std::size_t samplesIn(std::chrono::milliseconds length);

private:
    void collect();
    double hertzAtEnd() const;

    std::unique_ptr<QProcess> m_process;
    std::vector<float> m_samples;
};

} // namespace cadorel
