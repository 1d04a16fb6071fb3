// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QList>

namespace cadorel {

/// How a picture becomes what lies behind a whole screen.
struct BackdropDrawing
{
    /// Of a screen as high as a phone, in device-independent pixels: standard deviation of the blur of a
    /// picture that fills it. A picture is blurred by the same part of itself on every screen.
    double blur = 0;
    /// How much more colourful it becomes; 1 leaves the colours as they are.
    double saturation = 1;

    bool operator==(const BackdropDrawing &) const = default;
};

/// Longest side in pixels of a picture that is drawn with that blur: as small as the blur allows, since what
/// is blurred has no detail, and whoever shows it stretches it smoothly. 64 for the widest blur.
int backdropSide(double blur);

/// @p picture, which is not null, drawn that way: opaque, white where it was transparent, no longer than
/// backdropSide() and at least eight pixels wide and high. Any thread.
QImage paintBackdrop(const QImage &picture, const BackdropDrawing &drawing);

/// Colours of its parts, as many as that, from the darkest to the lightest: what a text on it may lie on. Any
/// thread.
inline constexpr int backdropColorCount = 8;
QList<QColor> backdropColors(const QImage &backdrop);

} // namespace cadorel
