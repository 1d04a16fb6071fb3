// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Random.h"

namespace cadorel {

/// Chance from the system's generator, seeded anew in each run. Any thread.
class SystemRandom : public Random
{
public:
    int index(int count) override;
    double real(double low, double high) override;
};

} // namespace cadorel
