// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/PaletteAppearance.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>

namespace cadorel {

namespace {

ColorScheme schemeOf(const QPalette &palette)
{
    constexpr float middle = 0.5F;
    const bool isDark = palette.color(QPalette::Window).lightnessF() < middle;
    return isDark ? ColorScheme::dark : ColorScheme::light;
}

} // namespace

PaletteAppearance::PaletteAppearance(QObject *parent)
    : DesktopAppearance(parent)
    , m_colorScheme(schemeOf(QGuiApplication::palette()))
{
    // The event that is to replace this signal is sent only while the application's own loop runs, and never
    // to objects other than the application.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    connect(qGuiApp, &QGuiApplication::paletteChanged, this, &PaletteAppearance::readPalette);
    QT_WARNING_POP
}

void PaletteAppearance::readPalette()
{
    const ColorScheme scheme = schemeOf(QGuiApplication::palette());
    if (scheme == m_colorScheme)
        return;
    m_colorScheme = scheme;
    Q_EMIT colorSchemeChanged();
}

} // namespace cadorel
