// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakePreferences.h"
#include "ViewModels/ContentViewModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestContentViewModel : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void tabsAreTheseInThisOrder();
    void everyTabHasADrawnIcon();
    void firstStartShowsEveryTab();
    void storedChoiceIsRead();
    void hidingTheTabTakesOneRowOutAndStores();
    void showingItAgainPutsItBetweenItsNeighbours();
    void askingForTheSameAgainDoesNothing();
    void rowsBeyondTheModelGiveNothing();
};

void TestContentViewModel::tabsAreTheseInThisOrder()
{
    struct Row
    {
        ContentTab tab;
        QString name, title, symbol, selected, kawaii;
    };
    const QList<Row> rows{
        {ContentTab::library, u"library"_s, u"资料库"_s, u"music.note.house"_s, u"music.note.house.fill"_s,
         u"library"_s},
        {ContentTab::playlists, u"playlists"_s, u"歌单"_s, u"music.note.list"_s, u"music.note.list.fill"_s,
         u"playlist"_s},
        {ContentTab::webdav, u"webdav"_s, u"网盘"_s, u"cloud"_s, u"cloud.fill"_s, u"cloud"_s},
        {ContentTab::search, u"search"_s, u"搜索"_s, u"magnifyingglass"_s, u"magnifyingglass"_s, u"search"_s},
        {ContentTab::settings, u"settings"_s, u"设置"_s, u"gearshape"_s, u"gearshape.fill"_s, u"settings"_s},
    };
    FakePreferences preferences;
    ContentViewModel content(preferences);
    const ContentTabModel &model = *content.visibleTabs();
    QCOMPARE(model.count(), rows.size());
    QCOMPARE(allContentTabs().size(), rows.size());
    for (int i = 0; i < rows.size(); ++i) {
        const Row &row = rows.at(i);
        const QModelIndex index = model.index(i);
        QCOMPARE(allContentTabs().at(i), row.tab);
        QCOMPARE(rawValue(row.tab), row.title);
        QCOMPARE(symbol(row.tab), row.symbol);
        QCOMPARE(kawaiiIcon(row.tab), row.kawaii);
        QCOMPARE(index.data(ContentTabModel::TabRole).toInt(), static_cast<int>(row.tab));
        QCOMPARE(index.data(ContentTabModel::NameRole).toString(), row.name);
        QCOMPARE(index.data(ContentTabModel::TitleRole).toString(), row.title);
        QCOMPARE(index.data(ContentTabModel::SymbolRole).toString(), row.symbol);
        QCOMPARE(index.data(ContentTabModel::SelectedSymbolRole).toString(), row.selected);
        QCOMPARE(index.data(ContentTabModel::KawaiiIconRole).toString(), row.kawaii);
        QCOMPARE(model.tabAt(i), static_cast<int>(row.tab));
        QCOMPARE(model.rowOf(static_cast<int>(row.tab)), i);
    }
}

void TestContentViewModel::everyTabHasADrawnIcon()
{
    // The pictures themselves are in the library of the screens; their names are files here.
    for (const ContentTab tab : allContentTabs()) {
        const QString file =
            QStringLiteral(CADOREL_SOURCE_DIR "/resources/artwork/kawaii/") + kawaiiIcon(tab) + u".svg"_s;
        QVERIFY2(QFile::exists(file), qPrintable(file));
    }
}

void TestContentViewModel::firstStartShowsEveryTab()
{
    FakePreferences preferences;
    ContentViewModel content(preferences);
    QVERIFY(content.showWebDAVTab());
    QCOMPARE(content.visibleTabs()->tabs(), allContentTabs());
    QCOMPARE(preferences.writes(), 0);
}

void TestContentViewModel::storedChoiceIsRead()
{
    FakePreferences preferences;
    preferences.setBool(u"showWebDAVTab"_s, false);
    ContentViewModel content(preferences);
    QVERIFY(!content.showWebDAVTab());
    QVERIFY(!content.visibleTabs()->tabs().contains(ContentTab::webdav));
    QCOMPARE(content.visibleTabs()->rowOf(static_cast<int>(ContentTab::webdav)), -1);
    QCOMPARE(content.visibleTabs()->rowOf(static_cast<int>(ContentTab::search)), 2);
}

void TestContentViewModel::hidingTheTabTakesOneRowOutAndStores()
{
    FakePreferences preferences;
    ContentViewModel content(preferences);
    const QAbstractItemModelTester tester(content.visibleTabs());
    QSignalSpy changed(&content, &ContentViewModel::showWebDAVTabChanged);
    QSignalSpy removed(content.visibleTabs(), &QAbstractItemModel::rowsRemoved);
    content.setShowWebDAVTab(false);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(content.visibleTabs()->tabs(),
             (QList{ContentTab::library, ContentTab::playlists, ContentTab::search, ContentTab::settings}));
    QCOMPARE(preferences.boolValue(u"showWebDAVTab"_s), std::optional(false));
}

void TestContentViewModel::showingItAgainPutsItBetweenItsNeighbours()
{
    FakePreferences preferences;
    ContentViewModel content(preferences);
    const QAbstractItemModelTester tester(content.visibleTabs());
    QSignalSpy count(content.visibleTabs(), &ContentTabModel::countChanged);
    content.setShowWebDAVTab(false);
    content.setShowWebDAVTab(true);
    QCOMPARE(content.visibleTabs()->tabs(), allContentTabs());
    QCOMPARE(count.count(), 2);
    QCOMPARE(preferences.boolValue(u"showWebDAVTab"_s), std::optional(true));
}

void TestContentViewModel::askingForTheSameAgainDoesNothing()
{
    FakePreferences preferences;
    ContentViewModel content(preferences);
    QSignalSpy changed(&content, &ContentViewModel::showWebDAVTabChanged);
    content.setShowWebDAVTab(true);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(preferences.writes(), 0);
}

void TestContentViewModel::rowsBeyondTheModelGiveNothing()
{
    FakePreferences preferences;
    ContentViewModel content(preferences);
    QCOMPARE(content.visibleTabs()->tabAt(-1), -1);
    QCOMPARE(content.visibleTabs()->tabAt(5), -1);
    QVERIFY(!content.visibleTabs()->data({}, ContentTabModel::TitleRole).isValid());
}

QTEST_GUILESS_MAIN(TestContentViewModel)
#include "tst_content_view_model.moc"
