// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QQuickItem>

namespace cadorel {

/// Colours of the disc's cover, turned as it may be, where no note stands: near the rim at its four sides.
inline QList<QColor> besideTheNote(const QQuickItem *cover, const QImage &window)
{
    constexpr double nearTheRim = 0.12;
    QList<QColor> colors;
    for (const QPointF at : {QPointF(0.5, nearTheRim), QPointF(0.5, 1 - nearTheRim), QPointF(nearTheRim, 0.5),
                             QPointF(1 - nearTheRim, 0.5)})
        colors.append(window.pixelColor(
            cover->mapToScene({at.x() * cover->width(), at.y() * cover->height()}).toPoint()));
    return colors;
}

} // namespace cadorel
