// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/NowPlayingBackgroundStyle.h"

#include "Models/NamedCases.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

struct StyleRow
{
    QString rawValue;
    QString displayName;
    QString icon;
};

/// In the order of the declaration.
const std::array<StyleRow, 6> &styleTable()
{
    static const std::array<StyleRow, 6> table{{
        {u"blur"_s, u"封面模糊"_s, u"drop.fill"_s},
        {u"solid"_s, u"纯色"_s, u"rectangle.fill"_s},
        {u"gradient"_s, u"渐变"_s, u"square.stack.3d.up.fill"_s},
        {u"customColor"_s, u"自定义颜色"_s, u"paintpalette.fill"_s},
        {u"customImage"_s, u"自定义图片"_s, u"photo.fill"_s},
        {u"clear"_s, u"透明"_s, u"square.dashed"_s},
    }};
    return table;
}

const StyleRow &rowOf(NowPlayingBackgroundStyle style)
{
    return styleTable().at(static_cast<size_t>(style));
}

} // namespace

const QList<NowPlayingBackgroundStyle> &allNowPlayingBackgroundStyles()
{
    static const QList<NowPlayingBackgroundStyle> all = casesOf<NowPlayingBackgroundStyle>(styleTable());
    return all;
}

QString rawValue(NowPlayingBackgroundStyle style)
{
    return rowOf(style).rawValue;
}

std::optional<NowPlayingBackgroundStyle> nowPlayingBackgroundStyleOf(const QString &rawValue)
{
    return caseOf<NowPlayingBackgroundStyle>(styleTable(), rawValue);
}

QString displayName(NowPlayingBackgroundStyle style)
{
    return rowOf(style).displayName;
}

QString icon(NowPlayingBackgroundStyle style)
{
    return rowOf(style).icon;
}

} // namespace cadorel
