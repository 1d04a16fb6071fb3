// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QRectF>

namespace cadorel {

/// Where the cover lies on the picture of a cassette. Screens know it as a singleton. Any thread.
class CassetteLayout : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// The square of the cover, in pixels from the upper left corner of a square picture of side @p side.
    /// @param scale side of the cover, @param offsetX and @param offsetY way of its centre from the picture's
    /// to the right and downwards, all as fractions of the picture's side. A stored number that would draw
    /// nothing, or too much, is taken for the nearest sensible one, and what is no number for the usual one.
    Q_INVOKABLE static QRectF coverRect(double side, double scale, double offsetX, double offsetY);
    /// Corner radius of a cover of that side: that of the labels.
    Q_INVOKABLE static double coverRadius(double side);
};

} // namespace cadorel
