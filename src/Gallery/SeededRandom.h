// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Random.h"

#include <random>

namespace cadorel {

/// Chance that is the same in every run, so that two pictures of one page are equal. Main thread.
class SeededRandom : public Random
{
public:
    int index(int count) override { return static_cast<int>(m_engine() % static_cast<unsigned>(count)); }
    double real(double low, double high) override
    {
        // The standard library's distributions differ between its makers.
        constexpr double highest = std::mt19937::max();
        return low + (high - low) * static_cast<double>(m_engine()) / highest;
    }

private:
    std::mt19937 m_engine{7};
};

} // namespace cadorel
