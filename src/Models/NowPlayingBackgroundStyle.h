// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace cadorel {

/// Names of the backgrounds of the Now Playing screen, in a space of their own so that screens know them as
/// "NowPlayingBackgroundStyles.Type.blur".
namespace NowPlayingBackgroundStyles {
Q_NAMESPACE

enum class Type { blur, solid, gradient, customColor, customImage, clear };
Q_ENUM_NS(Type)

} // namespace NowPlayingBackgroundStyles

/// What lies behind the Now Playing screen, as a listener chooses it, in the order in which it is offered;
/// what a look proposes is the smaller NowPlayingConfig::NowPlayingBackgroundStyle.
using NowPlayingBackgroundStyle = NowPlayingBackgroundStyles::Type;

/// All of them, in their order.
const QList<NowPlayingBackgroundStyle> &allNowPlayingBackgroundStyles();
/// The text that stands for the style in the preferences.
QString rawValue(NowPlayingBackgroundStyle style);
/// The style of a stored text; nothing for an unknown one.
std::optional<NowPlayingBackgroundStyle> nowPlayingBackgroundStyleOf(const QString &rawValue);
/// Name as a listener reads it.
QString displayName(NowPlayingBackgroundStyle style);
/// Name of its symbol.
QString icon(NowPlayingBackgroundStyle style);

} // namespace cadorel
