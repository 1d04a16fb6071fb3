// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QObject>

#include <algorithm>

namespace cadorel {

/// The numbers from one to another, both included.
struct NumberRange
{
    Q_GADGET
    Q_PROPERTY(double from MEMBER from CONSTANT)
    Q_PROPERTY(double to MEMBER to CONSTANT)
public:
    double from = 0;
    double to = 1;

    /// The number of the range that is nearest.
    constexpr double clamped(double value) const { return std::clamp(value, from, to); }
    constexpr bool operator==(const NumberRange &) const = default;
};

} // namespace cadorel
