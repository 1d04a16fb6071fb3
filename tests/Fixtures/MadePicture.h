// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QColor>

namespace cadorel {

/// A JPEG or PNG file with a plain colour. @param side length of a side in pixels
QByteArray madeJpeg(const QColor &color = Qt::red, int side = 64);
QByteArray madePng(const QColor &color = Qt::blue, int side = 64);

} // namespace cadorel
