// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QGradient>
#include <QMetaType>
#include <QPointF>

namespace cadorel {

/// Colours along a line across a rectangle. Equal when they draw the same.
struct LinearGradient
{
    Q_GADGET
public:
    QGradientStops stops;
    /// Ends of the line in fractions of the rectangle's width and height.
    QPointF start{0, 0};
    QPointF end{1, 1};

    bool isEmpty() const { return stops.isEmpty(); }
    bool operator==(const LinearGradient &) const = default;
};

} // namespace cadorel
