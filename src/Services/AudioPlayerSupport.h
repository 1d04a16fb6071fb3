// SPDX-License-Identifier: GPL-3.0-or-later
// What the sources of AudioPlayerService share among themselves.
#pragma once

#include <QList>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace cadorel {

/// How often the position is published while a song plays.
constexpr std::chrono::milliseconds tickInterval{250};

inline bool isUsableTime(double seconds)
{
    return std::isfinite(seconds) && seconds >= 0;
}

/// Index of the first equal element, or 0 when there is none.
template <typename T>
int indexOrFirst(const QList<T> &list, const T &value)
{
    return static_cast<int>(std::max<qsizetype>(0, list.indexOf(value)));
}

} // namespace cadorel
