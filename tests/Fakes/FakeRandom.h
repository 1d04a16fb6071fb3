// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Random.h"

#include <QList>

#include <algorithm>

namespace cadorel {

/// Chance that a test has written down beforehand: the given values in turn, then 0 and the low end.
class FakeRandom : public Random
{
public:
    QList<int> indexes;
    QList<double> reals;
    /// The bounds that index() was asked for, in order.
    QList<int> counts;

    int index(int count) override
    {
        counts.append(count);
        return indexes.isEmpty() ? 0 : std::min(indexes.takeFirst(), count - 1);
    }
    double real(double low, double high) override
    {
        return reals.isEmpty() ? low : std::clamp(reals.takeFirst(), low, high);
    }
};

} // namespace cadorel
