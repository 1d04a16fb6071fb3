// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/BeatDetector.h"

#include <algorithm>
#include <numeric>

namespace cadorel {

namespace {

constexpr qsizetype lowBars = 3;
/// By how much a beat is louder than usual.
constexpr double rise = 0.12;
/// How much of what is usual a tick makes up: half of it is forgotten in half a second.
constexpr double share = 0.1;

} // namespace

bool BeatDetector::take(const QList<qreal> &levels)
{
    const qsizetype count = std::min(lowBars, levels.size());
    if (count == 0)
        return false;
    const double low =
        std::accumulate(levels.cbegin(), levels.cbegin() + count, 0.0) / static_cast<double>(count);
    ++m_ticks;
    const bool isBeat = low > m_usual + rise && m_ticks > fewestTicks;
    m_usual += share * (low - m_usual);
    if (isBeat)
        m_ticks = 0;
    return isBeat;
}

} // namespace cadorel
