// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/ThreadedOutput.h"

#include <vector>

namespace cadorel {

/// An output that keeps every sample that it is given, as fast as they come and as many as it is told to
/// take: for whoever wants to look at the sound itself. What it has taken counts as heard.
class FileOutput : public ThreadedOutput
{
public:
    FileOutput() = default;
    ~FileOutput() override { close(); }

    /// Takes so many frames more, as soon as it plays.
    void allow(qint64 frameCount);
    /// Frames that it may still take.
    qint64 allowance() const;
    /// Everything that was taken and is not forgotten, interleaved.
    std::vector<float> samples() const;
    /// The same, and forgets them.
    std::vector<float> takeSamples();
    const AudioFormat &format() const { return m_format; }

protected:
    Turn nextTurn() override;
    void pulled(const float *interleaved, qint64 frameCount) override;
    double heard() const override { return double(m_heard); }
    void playingChanged(bool) override {}
    void dropped() override { m_heard = 0; }

private:
    qint64 m_allowance = 0;
    qint64 m_heard = 0;
    std::vector<float> m_samples;
};

} // namespace cadorel
