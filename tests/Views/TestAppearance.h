// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/PaletteAppearance.h"

namespace cadorel {

/// Light or dark as the palette is; motion and size of texts as a test sets them.
class TestAppearance : public PaletteAppearance
{
public:
    bool reducesMotion() const override { return m_reducesMotion; }
    double textScale() const override { return m_textScale; }

    void setReducesMotion(bool reduces)
    {
        m_reducesMotion = reduces;
        Q_EMIT reducesMotionChanged();
    }
    void setTextScale(double scale)
    {
        m_textScale = scale;
        Q_EMIT textScaleChanged();
    }

private:
    bool m_reducesMotion = false;
    double m_textScale = 1;
};

} // namespace cadorel
