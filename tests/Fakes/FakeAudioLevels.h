// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Seams/AudioLevelSimulation.h"

namespace cadorel {

/// Level bars that only know whether they move.
class FakeAudioLevels : public AudioLevelSimulation
{
public:
    bool running = false;
    int starts = 0;
    int stops = 0;

    void startAudioLevelSimulation() override
    {
        running = true;
        ++starts;
    }
    void stopAudioLevelSimulation() override
    {
        running = false;
        ++stops;
    }
};

} // namespace cadorel
