// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QMutex>
#include <QQuickImageProvider>

namespace cadorel {

/// Image provider "surface": `image://surface/<address of a Surface>?ratio=<pixels of the screen per pixel>`
/// is the picture that the surface is stretched from; with `&width=` and `&height=`, the size of the shape in
/// pixels of the screen, it is the picture of that size. What is no such address is a transparent pixel.
/// Drawn pictures are kept up to 16 MB. Any thread.
class SurfaceImageProvider : public QQuickImageProvider
{
public:
    static constexpr auto id = "surface";

    SurfaceImageProvider();

    /// Pictures have a size of their own: @p requestedSize means nothing.
    QImage requestImage(const QString &address, QSize *size, const QSize &requestedSize) override;

private:
    QMutex m_mutex;
    QCache<QString, QImage> m_drawn;
};

} // namespace cadorel
