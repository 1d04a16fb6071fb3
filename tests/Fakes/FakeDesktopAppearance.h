// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/DesktopAppearance.h"

namespace cadorel {

/// A desktop whose wishes the test sets.
class FakeDesktopAppearance : public DesktopAppearance
{
public:
    explicit FakeDesktopAppearance(ColorScheme scheme = ColorScheme::light)
        : m_colorScheme(scheme)
    {
    }

    ColorScheme colorScheme() const override { return m_colorScheme; }
    bool reducesMotion() const override { return m_reducesMotion; }
    double textScale() const override { return m_textScale; }

    void setColorScheme(ColorScheme scheme)
    {
        if (scheme == m_colorScheme)
            return;
        m_colorScheme = scheme;
        Q_EMIT colorSchemeChanged();
    }
    void setReducesMotion(bool reduces)
    {
        if (reduces == m_reducesMotion)
            return;
        m_reducesMotion = reduces;
        Q_EMIT reducesMotionChanged();
    }
    void setTextScale(double scale)
    {
        if (scale == m_textScale)
            return;
        m_textScale = scale;
        Q_EMIT textScaleChanged();
    }

private:
    ColorScheme m_colorScheme;
    bool m_reducesMotion = false;
    double m_textScale = 1;
};

} // namespace cadorel
