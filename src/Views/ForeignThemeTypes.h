// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types of the looks by.
#pragma once

#include "Theme/AppTheme.h"
#include "Theme/Contrast.h"
#include "Theme/Progress.h"
#include "Theme/ThemeType.h"

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

struct ForeignProgress
{
    Q_GADGET
    QML_FOREIGN(cadorel::Progress)
    QML_NAMED_ELEMENT(Progress)
    QML_SINGLETON
public:
    static Progress *create(QQmlEngine *, QJSEngine *) { return new Progress; }
};

struct ForeignThemeTypes
{
    Q_GADGET
    QML_FOREIGN(cadorel::ThemeTypes)
    QML_NAMED_ELEMENT(ThemeTypes)
    QML_UNCREATABLE("names only")
};

} // namespace cadorel
