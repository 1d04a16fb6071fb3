// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types of the looks by.
#pragma once

#include "Platform/DesktopAppearance.h"
#include "Theme/AppTheme.h"
#include "Theme/Contrast.h"
#include "Theme/NowPlayingConfig.h"
#include "Theme/Progress.h"
#include "Theme/Springs.h"
#include "Theme/Surface.h"
#include "Theme/ThemeManager.h"
#include "Theme/ThemeType.h"
#include "Theme/ThemedSurfaces.h"
#include "Views/InterfaceParts.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignAppTheme
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppTheme)
    QML_NAMED_ELEMENT(AppTheme)
    QML_UNCREATABLE("made by the theme factory")
};

struct ForeignContrast
{
    Q_GADGET
    QML_FOREIGN(cadorel::Contrast)
    QML_NAMED_ELEMENT(Contrast)
    QML_SINGLETON
public:
    static Contrast *create(QQmlEngine *, QJSEngine *) { return new Contrast; }
};

struct ForeignNowPlayingConfig
{
    Q_GADGET
    QML_FOREIGN(cadorel::NowPlayingConfig)
    QML_VALUE_TYPE(nowPlayingConfig)
};

namespace ForeignNowPlayingConfigNames {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(cadorel::NowPlayingConfigNames)
QML_NAMED_ELEMENT(NowPlayingConfig)
} // namespace ForeignNowPlayingConfigNames

struct ForeignProgress
{
    Q_GADGET
    QML_FOREIGN(cadorel::Progress)
    QML_NAMED_ELEMENT(Progress)
    QML_SINGLETON
public:
    static Progress *create(QQmlEngine *, QJSEngine *) { return new Progress; }
};

struct ForeignThemeManager
{
    Q_GADGET
    QML_FOREIGN(cadorel::ThemeManager)
    QML_NAMED_ELEMENT(ThemeManager)
    QML_SINGLETON
public:
    static ThemeManager *create(QQmlEngine *engine, QJSEngine *)
    {
        return partOf(engine, &InterfaceParts::themeManager);
    }
};

namespace ForeignThemeTypes {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(cadorel::ThemeTypes)
QML_NAMED_ELEMENT(ThemeTypes)
} // namespace ForeignThemeTypes

struct ForeignSurface
{
    Q_GADGET
    QML_FOREIGN(cadorel::Surface)
    QML_VALUE_TYPE(surface)
};

struct ForeignThemedSurfaces
{
    Q_GADGET
    QML_FOREIGN(cadorel::ThemedSurfaces)
    QML_NAMED_ELEMENT(Surfaces)
    QML_SINGLETON
};

struct ForeignSprings
{
    Q_GADGET
    QML_FOREIGN(cadorel::Springs)
    QML_NAMED_ELEMENT(Springs)
    QML_SINGLETON
};

} // namespace cadorel
