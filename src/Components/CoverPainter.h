// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/ArtworkData.h"

#include <QImage>
#include <QString>

#include <optional>

namespace cadorel {

/// Draws a cover as a square of @p side pixels with round corners of @p radius pixels. The picture is decoded
/// no larger than it is shown; one that would need more than 256 MB counts as undecodable. Without a
/// decodable picture the placeholder is drawn. Any thread.
QImage drawCover(const ArtworkData &artwork, int side, qreal radius);

/// The same for encoded bytes that came from a server; nothing when they are no picture, or none that is safe
/// to decode. Any thread.
std::optional<QImage> drawFetchedCover(const QByteArray &bytes, int side, qreal radius);

/// The middle of a picture as such a square. What is transparent stays so. Any thread.
QImage drawRounded(const QImage &picture, int side, qreal radius);

/// The corner radius in pixels that a picture's address asks for by `radius`, a fraction of @p side.
qreal cornerRadiusOf(const QString &address, int side);

} // namespace cadorel
