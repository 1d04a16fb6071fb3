// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <optional>

namespace cadorel {

/// The picture scaled, up too, so that it covers @p target; it keeps its shape and is not cut. One that is so
/// long that its result could not be drawn, more than 16,384 pixels, becomes just as long as that. A null
/// image gives a null one. Any thread.
QImage coveringImage(const QImage &image, const QSize &target);

/// The bytes that a playlist keeps of a picture: JPEG, 300 pixels at its shorter side, on white where it was
/// transparent. Nothing when it cannot be encoded. Any thread.
std::optional<QByteArray> playlistCover(const QImage &image);

} // namespace cadorel
