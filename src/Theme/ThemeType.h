// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace cadorel {

/// Names of the looks, in a space of their own so that screens know them as
/// "ThemeTypes.Type.classic".
namespace ThemeTypes {
Q_NAMESPACE

enum class Type { classic, neumorphism, kawaiiPink };
Q_ENUM_NS(Type)
} // namespace ThemeTypes

/// The looks of the player, in the order in which they are offered.
using ThemeType = ThemeTypes::Type;

/// All of them, in their order.
const QList<ThemeType> &allThemeTypes();
/// The text that stands for the look in the preferences.
QString rawValue(ThemeType type);
/// The look of a stored text; nothing for an unknown one.
std::optional<ThemeType> themeTypeOf(const QString &rawValue);
/// Name as a listener reads it.
QString displayName(ThemeType type);
/// Name of its symbol.
QString icon(ThemeType type);

} // namespace cadorel
