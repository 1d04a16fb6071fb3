// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/DesktopAppearance.h"

#include <QtQml/qqmlregistration.h>

namespace cadorel {

/// A desktop whose wishes are set in the gallery's own window. Main thread.
class GalleryAppearance : public DesktopAppearance
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the program has one")
    // Once more, for tools that do not know the properties of the class above it.
    Q_PROPERTY(bool dark READ isDark NOTIFY colorSchemeChanged)
    Q_PROPERTY(double textScale READ textScale NOTIFY textScaleChanged)
public:
    using DesktopAppearance::DesktopAppearance;

    ColorScheme colorScheme() const override { return m_colorScheme; }
    bool reducesMotion() const override { return m_reducesMotion; }
    double textScale() const override { return m_textScale; }

    Q_INVOKABLE void setDark(bool dark);
    Q_INVOKABLE void setTextScale(double scale);
    void setReducesMotion(bool reduces);

private:
    ColorScheme m_colorScheme = ColorScheme::light;
    bool m_reducesMotion = false;
    double m_textScale = 1;
};

} // namespace cadorel
