// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/AssetColors.h"

#include "Theme/SystemColorTable.h"

namespace cadorel {

using namespace Qt::StringLiterals;

QColor assetColor(const QString &name, ColorScheme scheme)
{
    return name == "AccentColor"_L1 ? systemColors(scheme).accent : QColor();
}

} // namespace cadorel
