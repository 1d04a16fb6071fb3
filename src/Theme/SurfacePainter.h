// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/Surface.h"

#include <QImage>
#include <QSize>

namespace cadorel {

/// Picture of a surface whose shape has the size @p shape in pixels of the screen, of which @p ratio (0.5 to
/// 4) are one pixel of the surface; about the shape lies the surface's margin. Null where nothing is to be
/// seen, and for a picture of more than 64 MB. Any thread.
QImage paintSurface(const Surface &surface, QSize shape, double ratio);

/// The smallest picture from which the surface can be stretched to every size: its borders, margin included,
/// are scaledLength(surface.border(), ratio) wide. Any thread.
QImage paintStretchableSurface(const Surface &surface, double ratio);

/// Pixels of the screen that a whole length of a surface takes at that ratio.
int scaledLength(int length, double ratio);

} // namespace cadorel
