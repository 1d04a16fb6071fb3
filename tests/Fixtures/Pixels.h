// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

namespace cadorel {

/// No channel of the two colours differs by more than the tolerance, in 255ths.
inline bool isNear(const QColor &a, const QColor &b, int tolerance = 4)
{
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance &&
           qAbs(a.blue() - b.blue()) <= tolerance && qAbs(a.alpha() - b.alpha()) <= tolerance;
}

} // namespace cadorel
