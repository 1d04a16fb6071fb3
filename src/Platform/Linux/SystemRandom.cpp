// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SystemRandom.h"

#include <QRandomGenerator>

#include <algorithm>

namespace cadorel {

int SystemRandom::index(int count)
{
    return QRandomGenerator::global()->bounded(count);
}

double SystemRandom::real(double low, double high)
{
    // Rounding can lift the sum above the upper end.
    return std::min(high, low + QRandomGenerator::global()->generateDouble() * (high - low));
}

} // namespace cadorel
