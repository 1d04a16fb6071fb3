// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickImageProvider>

namespace cadorel {

/// Image provider "rounded": a picture of the file system or of the program, cut to a square about the centre
/// and given round corners, which no item could clip on every backend. Its percent-encoded address follows
/// the provider's name, and `?radius=` is the corner radius as a fraction of the side. What is no such
/// picture is the drawing of a note. Pictures are read on a thread of the engine.
class RoundedImageProvider : public QQuickImageProvider
{
public:
    static constexpr auto id = "rounded";

    RoundedImageProvider();

    QImage requestImage(const QString &address, QSize *size, const QSize &requestedSize) override;
};

} // namespace cadorel
