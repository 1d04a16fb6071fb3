// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Progress.h"

#include <QtNumeric>

namespace cadorel {

double Progress::clamped(double progress)
{
    return qIsNaN(progress) ? 0 : qBound(0.0, progress, 1.0);
}

double Progress::at(double x, double width)
{
    return width > 0 ? clamped(x / width) : 0;
}

} // namespace cadorel
