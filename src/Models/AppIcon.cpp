// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/AppIcon.h"

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

const QList<AppIcon> &allAppIcons()
{
    static const QList<AppIcon> icons{
        {.iconName = std::nullopt, .displayName = u"默认"_s, .imageName = u"AppIcon11"_s},
        {.iconName = u"AppIcon22"_s, .displayName = u"图标 2"_s, .imageName = u"AppIcon22"_s},
        {.iconName = u"AppIcon33"_s, .displayName = u"图标 3"_s, .imageName = u"AppIcon33"_s},
        {.iconName = u"AppIcon44"_s, .displayName = u"图标 4"_s, .imageName = u"AppIcon44"_s},
    };
    return icons;
}

std::optional<AppIcon> appIconOf(const std::optional<QString> &iconName)
{
    const QList<AppIcon> &icons = allAppIcons();
    const auto found = std::ranges::find(icons, iconName, &AppIcon::iconName);
    return found == icons.cend() ? std::nullopt : std::optional(*found);
}

QString appIconPicture(const QString &imageName, const ArtworkLookup &lookUp)
{
    const QString large = lookUp(imageName + "@2x"_L1);
    return large.isEmpty() ? lookUp(imageName) : large;
}

} // namespace cadorel
