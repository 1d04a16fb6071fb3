// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types of the looks by.
#pragma once

#include "Theme/AppTheme.h"
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

struct ForeignThemeTypes
{
    Q_GADGET
    QML_FOREIGN(cadorel::ThemeTypes)
    QML_NAMED_ELEMENT(ThemeTypes)
    QML_UNCREATABLE("names only")
};

} // namespace cadorel
