// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know by what a listener chooses of the appearance.
#pragma once

#include "Models/AppearanceChoice.h"
#include "Models/CassetteStyle.h"
#include "Models/LyricAnimationStyle.h"
#include "Models/LyricsAlignment.h"
#include "Models/NowPlayingBackgroundStyle.h"
#include "Models/NumberRange.h"
#include "Models/PresetColor.h"
#include "Services/AppearanceOptions.h"
#include "Services/ThemeService.h"
#include "Views/InterfaceParts.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignThemeService
{
    Q_GADGET
    QML_FOREIGN(cadorel::ThemeService)
    QML_NAMED_ELEMENT(ThemeService)
    QML_SINGLETON
public:
    static ThemeService *create(QQmlEngine *engine, QJSEngine *)
    {
        return partOf(engine, &InterfaceParts::themeService);
    }
};

struct ForeignAppearanceOptions
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppearanceOptions)
    QML_NAMED_ELEMENT(AppearanceOptions)
    QML_SINGLETON
};

namespace ForeignCassetteStyles {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(cadorel::CassetteStyles)
QML_NAMED_ELEMENT(CassetteStyles)
} // namespace ForeignCassetteStyles

namespace ForeignLyricAnimationStyles {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(cadorel::LyricAnimationStyles)
QML_NAMED_ELEMENT(LyricAnimationStyles)
} // namespace ForeignLyricAnimationStyles

namespace ForeignLyricsAlignments {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(cadorel::LyricsAlignments)
QML_NAMED_ELEMENT(LyricsAlignments)
} // namespace ForeignLyricsAlignments

namespace ForeignNowPlayingBackgroundStyles {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(cadorel::NowPlayingBackgroundStyles)
QML_NAMED_ELEMENT(NowPlayingBackgroundStyles)
} // namespace ForeignNowPlayingBackgroundStyles

struct ForeignAppearanceChoice
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppearanceChoice)
    QML_VALUE_TYPE(appearanceChoice)
};

struct ForeignCassetteConfig
{
    Q_GADGET
    QML_FOREIGN(cadorel::CassetteConfig)
    QML_VALUE_TYPE(cassetteConfig)
};

struct ForeignNumberRange
{
    Q_GADGET
    QML_FOREIGN(cadorel::NumberRange)
    QML_VALUE_TYPE(numberRange)
};

struct ForeignPresetColor
{
    Q_GADGET
    QML_FOREIGN(cadorel::PresetColor)
    QML_VALUE_TYPE(presetColor)
};

} // namespace cadorel
