// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// The moving level bars. Main thread.
class AudioLevelSimulation
{
public:
    virtual ~AudioLevelSimulation() = default;

    virtual void startAudioLevelSimulation() = 0;
    virtual void stopAudioLevelSimulation() = 0;
};

} // namespace cadorel
