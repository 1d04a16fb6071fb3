// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace cadorel {

/// Number of bands of the equalizer.
constexpr int equalizerBandCount = 10;
/// Gains in decibels, lowest band first.
using EqualizerGains = std::array<float, equalizerBandCount>;

/// Ready-made settings of the equalizer, in the order in which they are listed.
enum class EqualizerPreset {
    flat,
    rock,
    pop,
    jazz,
    classical,
    electronic,
    hiphop,
    rnb,
    acoustic,
    bass,
    treble,
    vocal,
    lateNight,
    custom
};

/// All of them, in their order.
const QList<EqualizerPreset> &allEqualizerPresets();
/// The text that stands for the preset in the preferences.
QString rawValue(EqualizerPreset preset);
/// The preset of a stored text; nothing for an unknown one.
std::optional<EqualizerPreset> equalizerPresetOf(const QString &rawValue);
/// Name as a listener reads it.
QString displayName(EqualizerPreset preset);
/// Name of its symbol.
QString symbol(EqualizerPreset preset);
/// What it does, for a listener.
QString descriptionText(EqualizerPreset preset);
/// Its gains; `custom` has none of its own and gives zeros.
const EqualizerGains &bandValues(EqualizerPreset preset);

} // namespace cadorel
