// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the tokens know by what the desktop wishes. They are a module of their own, "Cadorel.Desktop":
// tokens are singletons, and singletons that import the module they belong to wait for each other.
#pragma once

#include "Platform/DesktopAppearance.h"
#include "Theme/ColorTables.h"
#include "Theme/SystemColorTable.h"
#include "Views/InterfaceParts.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignColorTables
{
    Q_GADGET
    QML_FOREIGN(cadorel::ColorTables)
    QML_NAMED_ELEMENT(ColorTables)
    QML_SINGLETON
};

struct ForeignDesktopAppearance
{
    Q_GADGET
    QML_FOREIGN(cadorel::DesktopAppearance)
    QML_NAMED_ELEMENT(DesktopAppearance)
    QML_SINGLETON
public:
    static DesktopAppearance *create(QQmlEngine *engine, QJSEngine *)
    {
        return partOf(engine, &InterfaceParts::desktopAppearance);
    }
};

struct ForeignSystemColorTable
{
    Q_GADGET
    QML_FOREIGN(cadorel::SystemColorTable)
    QML_VALUE_TYPE(systemColorTable)
};

} // namespace cadorel
