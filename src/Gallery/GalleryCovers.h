// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace cadorel {

/// Paints covers for the gallery and leaves them where the image provider of covers finds them.
/// @return their addresses, always the same. Main thread.
QStringList makeGalleryCovers();

} // namespace cadorel
