// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/ThreadedOutput.h"

namespace cadorel {

/// An output that takes as much as a device would, by the clock of the machine, and lets nobody hear it.
class TimedOutput : public ThreadedOutput
{
public:
    TimedOutput() = default;
    ~TimedOutput() override { close(); }

protected:
    Turn nextTurn() override;
    void pulled(const float *interleaved, qint64 frameCount) override;
    double heard() const override;
    void playingChanged(bool plays) override;
    void dropped() override;

private:
    /// Frames taken, and frames heard at m_since, from which on they are heard one after the other.
    double m_taken = 0;
    double m_heardBefore = 0;
    std::optional<Time> m_since;
};

} // namespace cadorel
