// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/SystemColorTable.h"

#include <QObject>

namespace cadorel {

/// The tables of colours for SystemColors.qml, which is what screens read.
class ColorTables : public QObject
{
    Q_OBJECT
    Q_PROPERTY(cadorel::SystemColorTable light READ light CONSTANT)
    Q_PROPERTY(cadorel::SystemColorTable dark READ dark CONSTANT)
public:
    using QObject::QObject;

    static SystemColorTable light() { return systemColors(ColorScheme::light); }
    static SystemColorTable dark() { return systemColors(ColorScheme::dark); }
};

} // namespace cadorel
