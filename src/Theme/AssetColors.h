// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ColorScheme.h"

#include <QColor>
#include <QString>

namespace cadorel {

/// A colour of the program's assets by its plain name, as artworkPath() knows the pictures: "AccentColor" is
/// the desktop's own accent in that scheme. Invalid for an unknown name; upper and lower case differ. Any
/// thread.
QColor assetColor(const QString &name, ColorScheme scheme);

} // namespace cadorel
