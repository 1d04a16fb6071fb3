// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/DesktopAppearance.h"

namespace cadorel {

/// Where nothing but the palette of the application's windows tells of the desktop's wishes: dark or light as
/// they are, with motion, texts of the usual size. It follows the palette. Main thread, after the application
/// object.
class PaletteAppearance : public DesktopAppearance
{
    Q_OBJECT
public:
    explicit PaletteAppearance(QObject *parent = nullptr);

    ColorScheme colorScheme() const override { return m_colorScheme; }
    bool reducesMotion() const override { return false; }
    double textScale() const override { return 1; }

private:
    void readPalette();

    ColorScheme m_colorScheme = ColorScheme::light;
};

} // namespace cadorel
