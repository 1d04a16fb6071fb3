// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace cadorel {

/// A text that is out of focus, laid out as an item of the screens lays out the sharp one. Lengths are in
/// pixels of the items. A value; any thread.
struct BlurredText
{
    QString text;
    /// Of the column that it is wrapped into.
    int width = 0;
    /// As many lines are drawn.
    int mostLines = 1;
    int pixelSize = 0;
    bool isBold = false;
    Qt::Alignment alignment = Qt::AlignLeft;
    /// Twice the standard deviation of the Gaussian.
    double radius = 0;
    QColor color;
    /// Pixels of the screen for each pixel of the items.
    double ratio = 1;

    /// From the query of an address; what is missing or of no use is as above, what is too large is bounded.
    static BlurredText ofQuery(const QString &query);

    /// In pixels of the screen, the column in its middle: at each side there is room for the blur. A text of
    /// nothing is one transparent pixel.
    QImage drawn() const;
};

} // namespace cadorel
