// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemeType.h"

#include "Models/NamedCases.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

struct ThemeTexts
{
    QString rawValue;
    QString displayName;
    QString icon;
};

/// In the order of the declaration.
const std::array<ThemeTexts, 3> &themeTable()
{
    static const std::array<ThemeTexts, 3> table{{
        {u"classic"_s, u"经典"_s, u"music.note"_s},
        {u"neumorphism"_s, u"拟态风格"_s, u"cube.fill"_s},
        {u"kawaiiPink"_s, u"可爱粉粉"_s, u"heart.fill"_s},
    }};
    return table;
}

const ThemeTexts &textsOf(ThemeType type)
{
    return themeTable().at(static_cast<size_t>(type));
}

} // namespace

const QList<ThemeType> &allThemeTypes()
{
    static const QList<ThemeType> types = casesOf<ThemeType>(themeTable());
    return types;
}

QString rawValue(ThemeType type)
{
    return textsOf(type).rawValue;
}

std::optional<ThemeType> themeTypeOf(const QString &rawValue)
{
    return caseOf<ThemeType>(themeTable(), rawValue);
}

QString displayName(ThemeType type)
{
    return textsOf(type).displayName;
}

QString icon(ThemeType type)
{
    return textsOf(type).icon;
}

} // namespace cadorel
