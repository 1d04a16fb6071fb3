// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace cadorel {

/// Resource path of a drawn picture of ours by its plain name: "cartoon5", "Cassette1", "AppIcon22", or a
/// name of KawaiiIcon. Empty for an unknown name; upper and lower case differ. Any thread.
QString artworkPath(const QString &name);

/// Every known name, in no order.
QStringList artworkNames();

} // namespace cadorel
