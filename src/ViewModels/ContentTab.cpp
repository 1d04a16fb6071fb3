// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ContentTab.h"

#include "Utils/KawaiiIcon.h"

#include <QMetaEnum>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

struct TabTexts
{
    ContentTab tab;
    QString title;
    QString symbol;
    /// A symbol without a filled form stands for both.
    QString selectedSymbol;
    QString kawaiiIcon;
};

const QList<TabTexts> &table()
{
    static const QList<TabTexts> rows{
        {ContentTab::library, u"资料库"_s, u"music.note.house"_s, u"music.note.house.fill"_s,
         KawaiiIcon::library},
        {ContentTab::playlists, u"歌单"_s, u"music.note.list"_s, u"music.note.list.fill"_s,
         KawaiiIcon::playlist},
        {ContentTab::webdav, u"网盘"_s, u"cloud"_s, u"cloud.fill"_s, KawaiiIcon::cloud},
        {ContentTab::search, u"搜索"_s, u"magnifyingglass"_s, u"magnifyingglass"_s, KawaiiIcon::search},
        {ContentTab::settings, u"设置"_s, u"gearshape"_s, u"gearshape.fill"_s, KawaiiIcon::settings},
    };
    return rows;
}

const TabTexts &textsOf(ContentTab tab)
{
    return table().at(static_cast<int>(tab));
}

} // namespace

const QList<ContentTab> &allContentTabs()
{
    static const QList<ContentTab> all = [] {
        QList<ContentTab> tabs;
        for (const TabTexts &row : table())
            tabs.append(row.tab);
        return tabs;
    }();
    return all;
}

QString caseName(ContentTab tab)
{
    return QString::fromLatin1(QMetaEnum::fromType<ContentTab>().valueToKey(static_cast<int>(tab)));
}

QString rawValue(ContentTab tab)
{
    return textsOf(tab).title;
}

QString symbol(ContentTab tab)
{
    return textsOf(tab).symbol;
}

QString selectedSymbol(ContentTab tab)
{
    return textsOf(tab).selectedSymbol;
}

QString kawaiiIcon(ContentTab tab)
{
    return textsOf(tab).kawaiiIcon;
}

} // namespace cadorel
