// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace cadorel {

/// Resource path of the picture for a symbol name ("play.fill"); of the plain circle when no picture is known
/// by that name, so that a missing one shows without breaking a screen. The pictures are drawn on a square
/// grid in one colour. Any thread.
QString symbolFile(const QString &name);

/// Whether symbolFile() knows the name.
bool hasSymbol(const QString &name);

/// Every known name.
QStringList symbolNames();

} // namespace cadorel
