// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/SystemColorTable.h"

namespace cadorel {

namespace {

/// A colour as it is written in the tables of design: alpha in front.
QColor argb(QRgb value)
{
    return QColor::fromRgba(value);
}

SystemColorTable lightColors()
{
    return {.background = 0xFFFFFF,
            .secondaryBackground = 0xF2F2F7,
            .tertiaryBackground = 0xFFFFFF,
            .label = Qt::black,
            .secondaryLabel = argb(0x993C3C43),
            .tertiaryLabel = argb(0x4D3C3C43),
            .separator = argb(0x4A3C3C43),
            .gray = 0x8E8E93,
            .brown = 0xA2845E,
            .red = 0xFF3B30,
            .orange = 0xFF9500,
            .yellow = 0xFFCC00,
            .green = 0x34C759,
            .mint = 0x00C7BE,
            .teal = 0x30B0C7,
            .blue = 0x007AFF,
            .indigo = 0x5856D6,
            .purple = 0xAF52DE,
            .pink = 0xFF2D55,
            .accent = 0x007AFF,
            .accentText = 0x0055C0,
            .redText = 0xB81208,
            .accentFill = 0x006FE6,
            .redFill = 0xDB2E24,
            .accentInk = 0xFFFFFF,
            .hover = argb(0x0D000000),
            .pressed = argb(0x1A000000),
            .scrim = argb(0x66000000),
            .track = argb(0x33787880),
            .redTint = argb(0x1FFF3B30),
            .accentTint = argb(0x1F007AFF),
            .coverFill = argb(0x2E8E8E93)};
}

SystemColorTable darkColors()
{
    return {.background = Qt::black,
            .secondaryBackground = 0x1C1C1E,
            .tertiaryBackground = 0x2C2C2E,
            .label = 0xFFFFFF,
            .secondaryLabel = argb(0x99EBEBF5),
            .tertiaryLabel = argb(0x4DEBEBF5),
            .separator = argb(0x99545458),
            .gray = 0x8E8E93,
            .brown = 0xAC8E68,
            .red = 0xFF453A,
            .orange = 0xFF9F0A,
            .yellow = 0xFFD60A,
            .green = 0x30D158,
            .mint = 0x63E6E2,
            .teal = 0x40C8E0,
            .blue = 0x0A84FF,
            .indigo = 0x5E5CE6,
            .purple = 0xBF5AF2,
            .pink = 0xFF375F,
            .accent = 0x0A84FF,
            .accentText = 0x84C4FF,
            .redText = 0xFFA8A1,
            .accentFill = 0x006FE6,
            .redFill = 0xDB2E24,
            .accentInk = 0xFFFFFF,
            .hover = argb(0x14FFFFFF),
            .pressed = argb(0x29FFFFFF),
            .scrim = argb(0x99000000),
            .track = argb(0x52787880),
            .redTint = argb(0x38FF453A),
            .accentTint = argb(0x380A84FF),
            .coverFill = argb(0x2E8E8E93)};
}

} // namespace

const SystemColorTable &systemColors(ColorScheme scheme)
{
    static const SystemColorTable light = lightColors();
    static const SystemColorTable dark = darkColors();
    return scheme == ColorScheme::dark ? dark : light;
}

} // namespace cadorel
