// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// Chance, so that tests own it. Main thread.
class Random
{
public:
    virtual ~Random() = default;

    /// Uniform in 0 ..< @p count; @p count is above 0.
    virtual int index(int count) = 0;
    /// Uniform in @p low ... @p high.
    virtual double real(double low, double high) = 0;
};

} // namespace cadorel
