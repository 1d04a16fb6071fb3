// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

namespace cadorel {

/// @p color at @p opacity (0 to 1) of its own.
inline QColor translucent(QColor color, float opacity)
{
    color.setAlphaF(color.alphaF() * opacity);
    return color;
}

} // namespace cadorel
