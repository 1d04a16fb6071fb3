// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

namespace cadorel {

/// Endings of the pictures that this system can read, lower case, without the dot.
QStringList pictureExtensions();

/// The picture of a file, upright, no larger than a cover needs; null when the file holds none that can be
/// read. Takes as long as decoding takes: not for the main thread.
QImage readPicture(const QString &path);

} // namespace cadorel
