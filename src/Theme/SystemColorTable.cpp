// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/SystemColorTable.h"

namespace cadorel {

namespace {

constexpr int labelAlpha60 = 153;
constexpr int labelAlpha30 = 77;
constexpr int separatorAlpha29 = 74;

SystemColorTable lightColors()
{
    return {.background = 0xFFFFFF,
            .secondaryBackground = 0xF2F2F7,
            .tertiaryBackground = 0xFFFFFF,
            .label = Qt::black,
            .secondaryLabel = {0x3C, 0x3C, 0x43, labelAlpha60},
            .tertiaryLabel = {0x3C, 0x3C, 0x43, labelAlpha30},
            .separator = {0x3C, 0x3C, 0x43, separatorAlpha29},
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
            .accent = 0x007AFF};
}

SystemColorTable darkColors()
{
    return {.background = Qt::black,
            .secondaryBackground = 0x1C1C1E,
            .tertiaryBackground = 0x2C2C2E,
            .label = 0xFFFFFF,
            .secondaryLabel = {0xEB, 0xEB, 0xF5, labelAlpha60},
            .tertiaryLabel = {0xEB, 0xEB, 0xF5, labelAlpha30},
            .separator = {0x54, 0x54, 0x58, labelAlpha60},
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
            .accent = 0x0A84FF};
}

} // namespace

const SystemColorTable &systemColors(ColorScheme scheme)
{
    static const SystemColorTable light = lightColors();
    static const SystemColorTable dark = darkColors();
    return scheme == ColorScheme::dark ? dark : light;
}

} // namespace cadorel
