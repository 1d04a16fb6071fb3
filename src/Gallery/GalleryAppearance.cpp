// SPDX-License-Identifier: GPL-3.0-or-later
#include "Gallery/GalleryAppearance.h"

namespace cadorel {

void GalleryAppearance::setDark(bool dark)
{
    const ColorScheme scheme = dark ? ColorScheme::dark : ColorScheme::light;
    if (scheme == m_colorScheme)
        return;
    m_colorScheme = scheme;
    Q_EMIT colorSchemeChanged();
}

void GalleryAppearance::setTextScale(double scale)
{
    if (scale == m_textScale)
        return;
    m_textScale = scale;
    Q_EMIT textScaleChanged();
}

void GalleryAppearance::setReducesMotion(bool reduces)
{
    if (reduces == m_reducesMotion)
        return;
    m_reducesMotion = reduces;
    Q_EMIT reducesMotionChanged();
}

} // namespace cadorel
