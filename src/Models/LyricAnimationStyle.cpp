// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/LyricAnimationStyle.h"

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
const std::array<StyleRow, 5> &styleTable()
{
    static const std::array<StyleRow, 5> table{{
        {u"bounce"_s, u"弹跳"_s, u"arrow.up.arrow.down"_s},
        {u"fade"_s, u"淡入淡出"_s, u"circle.lefthalf.filled"_s},
        {u"slide"_s, u"滑动"_s, u"arrow.left.arrow.right"_s},
        {u"scale"_s, u"缩放"_s, u"arrow.up.left.and.arrow.down.right"_s},
        // The line falls into place, whatever it is called in the preferences.
        {u"typewriter"_s, u"下落"_s, u"arrow.down"_s},
    }};
    return table;
}

const StyleRow &rowOf(LyricAnimationStyle style)
{
    return styleTable().at(static_cast<size_t>(style));
}

} // namespace

const QList<LyricAnimationStyle> &allLyricAnimationStyles()
{
    static const QList<LyricAnimationStyle> all = casesOf<LyricAnimationStyle>(styleTable());
    return all;
}

QString rawValue(LyricAnimationStyle style)
{
    return rowOf(style).rawValue;
}

std::optional<LyricAnimationStyle> lyricAnimationStyleOf(const QString &rawValue)
{
    return caseOf<LyricAnimationStyle>(styleTable(), rawValue);
}

QString displayName(LyricAnimationStyle style)
{
    return rowOf(style).displayName;
}

QString icon(LyricAnimationStyle style)
{
    return rowOf(style).icon;
}

} // namespace cadorel
