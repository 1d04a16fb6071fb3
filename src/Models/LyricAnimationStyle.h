// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace cadorel {

/// Names of the animations of lyrics, in a space of their own so that screens know them as
/// "LyricAnimationStyles.Type.bounce".
namespace LyricAnimationStyles {
Q_NAMESPACE

enum class Type { bounce, fade, slide, scale, typewriter };
Q_ENUM_NS(Type)

} // namespace LyricAnimationStyles

/// How the current line of lyrics appears, in the order in which it is offered.
using LyricAnimationStyle = LyricAnimationStyles::Type;

/// All of them, in their order.
const QList<LyricAnimationStyle> &allLyricAnimationStyles();
/// The text that stands for the style in the preferences.
QString rawValue(LyricAnimationStyle style);
/// The style of a stored text; nothing for an unknown one.
std::optional<LyricAnimationStyle> lyricAnimationStyleOf(const QString &rawValue);
/// Name as a listener reads it.
QString displayName(LyricAnimationStyle style);
/// Name of its symbol.
QString icon(LyricAnimationStyle style);

} // namespace cadorel
