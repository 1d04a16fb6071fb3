// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/CassetteConfig.h"

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace cadorel {

/// Names of the cassettes, in a space of their own so that screens know them as "CassetteStyles.Type.none".
/// The first is stored as "default", which is a word of the language.
namespace CassetteStyles {
Q_NAMESPACE

enum class Type { defaultStyle, style1, style2, style3, style4, none };
Q_ENUM_NS(Type)

} // namespace CassetteStyles

/// The cassette that frames the large cover, or none, in the order in which it is offered.
using CassetteStyle = CassetteStyles::Type;

/// All of them, in their order.
const QList<CassetteStyle> &allCassetteStyles();
/// The text that stands for the style in the preferences.
QString rawValue(CassetteStyle style);
/// The style of a stored text; nothing for an unknown one.
std::optional<CassetteStyle> cassetteStyleOf(const QString &rawValue);
/// Name as a listener reads it.
QString displayName(CassetteStyle style);
/// Name of its picture; empty for `none`.
QString imageName(CassetteStyle style);
/// Where the cover sits in it until the listener moves it.
CassetteConfig defaultConfig(CassetteStyle style);

} // namespace cadorel
