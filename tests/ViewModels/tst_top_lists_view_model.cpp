// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioPlayerService.h"
#include "ViewModels/OnlineBench.h"

#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Content = TopListsViewModel::Content;
using PageContent = TopListPageViewModel::Content;

class TopListsViewModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { t = std::make_unique<OnlineBench>(); }
    void cleanup() { t.reset(); }
    void chartsLoadWhenTheyComeUpAndNotBefore();
    void loadedChartsAreNotAskedForAgain();
    void platformChangeLoadsItsCharts();
    void answerForAnotherPlatformEndsNoLoading();
    void failedChartsAreEmptyAndMayBeTriedAgain();
    void noChartsAreEmpty();
    void newServerLoadsTheChartsThatAreOpen();
    void chartOpensAndLoadsItsSongs();
    void openingAChartShowsNoSongsOfTheOneBefore();
    void answerForAnOlderChartEndsNoLoading();
    void failedChartIsEmptyAndMayBeTriedAgain();
    void chartKeepsItsNameWhileItGoes();
    void chartPlaysFromARowWithTheWholeListAsQueue();
    void playAllStartsWithTheFirstSong();
    void playAllOfAnEmptyChartDoesNothing();
    void songThatPlaysIsMarked();
    void rowThatIsGoneOpensNothing();

private:
    /// The charts of the first platform, one of them open with two songs.
    void openChart();

    std::unique_ptr<OnlineBench> t;
};

void TopListsViewModelTest::openChart()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s), OnlineBench::chart(u"b"_s)}));
    t->charts().openChart(0);
    t->answer(onlineAnswers::chartSongs(onlineSongs({u"1"_s, u"2"_s})));
}

void TopListsViewModelTest::chartsLoadWhenTheyComeUpAndNotBefore()
{
    QCOMPARE(t->charts().platforms(), (QStringList{u"网易云"_s, u"酷我"_s, u"QQ音乐"_s}));
    QCOMPARE(t->sent(), 0);
    t->charts().open();
    QVERIFY(t->charts().isOpen());
    QCOMPARE(t->charts().content(), Content::Loading);
    QCOMPARE(t->lastAddress(), u"https://api.example/api/?source=netease&type=toplists"_s);
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s), OnlineBench::chart(u"b"_s)}));
    QCOMPARE(t->charts().content(), Content::Charts);
    QCOMPARE(t->charts().charts()->count(), 2);
    const QModelIndex second = t->charts().charts()->index(1);
    QCOMPARE(second.data(TopListListModel::NameRole), u"榜 b"_s);
    QCOMPARE(second.data(TopListListModel::UpdateFrequencyRole), u"每天更新"_s);
}

void TopListsViewModelTest::loadedChartsAreNotAskedForAgain()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s)}));
    t->charts().close();
    QVERIFY(!t->charts().isOpen());
    t->charts().open();
    QCOMPARE(t->sent(), 1);
    QCOMPARE(t->charts().content(), Content::Charts);
}

void TopListsViewModelTest::platformChangeLoadsItsCharts()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s)}));
    t->charts().selectPlatform(2);
    QCOMPARE(t->charts().platformIndex(), 2);
    QCOMPARE(t->charts().content(), Content::Loading);
    QCOMPARE(t->charts().charts()->count(), 0);
    t->answer(u"source=qq&type=toplists"_s, onlineAnswers::charts({OnlineBench::chart(u"q"_s)}));
    QCOMPARE(t->charts().charts()->index(0).data(TopListListModel::NameRole), u"榜 q"_s);
    // Back to what is there already.
    t->charts().selectPlatform(0);
    QCOMPARE(t->sent(), 2);
    QCOMPARE(t->charts().charts()->index(0).data(TopListListModel::NameRole), u"榜 a"_s);
    QCOMPARE(t->charts().content(), Content::Charts);
}

void TopListsViewModelTest::answerForAnotherPlatformEndsNoLoading()
{
    t->charts().open();
    t->charts().selectPlatform(1);
    t->answer(u"source=netease"_s, onlineAnswers::charts({OnlineBench::chart(u"a"_s)}));
    QCOMPARE(t->charts().charts()->count(), 0);
    QCOMPARE(t->charts().content(), Content::Loading);
    t->answer(u"source=kuwo"_s, onlineAnswers::charts({OnlineBench::chart(u"k"_s)}));
    QCOMPARE(t->charts().content(), Content::Charts);
}

void TopListsViewModelTest::failedChartsAreEmptyAndMayBeTriedAgain()
{
    t->charts().open();
    t->answer(onlineAnswers::broken(u"no"_s));
    QCOMPARE(t->charts().content(), Content::Empty);
    t->charts().retry();
    QCOMPARE(t->sent(), 2);
    QCOMPARE(t->charts().content(), Content::Loading);
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s)}));
    QCOMPARE(t->charts().content(), Content::Charts);
}

void TopListsViewModelTest::noChartsAreEmpty()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({}));
    QCOMPARE(t->charts().content(), Content::Empty);
}

void TopListsViewModelTest::newServerLoadsTheChartsThatAreOpen()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s)}));
    t->settings().open();
    t->settings().tempURL()->edit(u"https://other.example"_s);
    t->settings().saveURL();
    QCOMPARE(t->lastAddress(), u"https://other.example/api/?source=netease&type=toplists"_s);
    QCOMPARE(t->charts().content(), Content::Loading);
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"o"_s)}));
    QCOMPARE(t->charts().charts()->index(0).data(TopListListModel::NameRole), u"榜 o"_s);
}

void TopListsViewModelTest::chartOpensAndLoadsItsSongs()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s), OnlineBench::chart(u"b"_s)}));
    QVERIFY(!t->page().isOpen());
    t->charts().openChart(1);
    QVERIFY(t->page().isOpen());
    QCOMPARE(t->page().name(), u"榜 b"_s);
    QCOMPARE(t->page().updateFrequency(), u"每天更新"_s);
    QCOMPARE(t->page().content(), PageContent::Loading);
    QCOMPARE(t->lastAddress(), u"https://api.example/api/?source=netease&id=b&type=toplist"_s);
    t->answer(onlineAnswers::chartSongs(onlineSongs({u"1"_s, u"2"_s})));
    QCOMPARE(t->page().content(), PageContent::Songs);
    QCOMPARE(t->page().songs()->count(), 2);
}

void TopListsViewModelTest::openingAChartShowsNoSongsOfTheOneBefore()
{
    openChart();
    t->page().close();
    t->charts().openChart(1);
    QCOMPARE(t->page().songs()->count(), 0);
    QCOMPARE(t->page().content(), PageContent::Loading);
    // The same chart, too, is loaded anew.
    t->answer(onlineAnswers::chartSongs(onlineSongs({u"3"_s})));
    const qsizetype sent = t->sent();
    t->charts().openChart(1);
    QCOMPARE(t->sent(), sent + 1);
    QCOMPARE(t->page().content(), PageContent::Loading);
}

void TopListsViewModelTest::answerForAnOlderChartEndsNoLoading()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s), OnlineBench::chart(u"b"_s)}));
    t->charts().openChart(0);
    t->charts().openChart(1);
    t->answer(u"id=a"_s, onlineAnswers::broken(u"no"_s));
    QCOMPARE(t->page().name(), u"榜 b"_s);
    QCOMPARE(t->page().content(), PageContent::Loading);
    t->answer(u"id=b"_s, onlineAnswers::chartSongs(onlineSongs({u"1"_s})));
    QCOMPARE(t->page().content(), PageContent::Songs);
}

void TopListsViewModelTest::failedChartIsEmptyAndMayBeTriedAgain()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s)}));
    t->page().retry();
    QCOMPARE(t->sent(), 1); // nothing is open yet
    t->charts().openChart(0);
    t->answer(onlineAnswers::broken(u"no"_s));
    QCOMPARE(t->page().content(), PageContent::Empty);
    t->page().retry();
    QCOMPARE(t->page().content(), PageContent::Loading);
    t->answer(onlineAnswers::chartSongs(onlineSongs({u"1"_s})));
    QCOMPARE(t->page().content(), PageContent::Songs);
}

void TopListsViewModelTest::chartKeepsItsNameWhileItGoes()
{
    openChart();
    t->page().close();
    QVERIFY(!t->page().isOpen());
    QCOMPARE(t->page().name(), u"榜 a"_s);
    QCOMPARE(t->page().songs()->count(), 2);
}

void TopListsViewModelTest::chartPlaysFromARowWithTheWholeListAsQueue()
{
    openChart();
    t->page().playSongAt(1);
    QCOMPARE(t->player().onlineQueue(), onlineSongs({u"1"_s, u"2"_s}));
    QCOMPARE(t->player().currentOnlineSong(), std::optional(onlineSong(u"2"_s)));
}

void TopListsViewModelTest::playAllStartsWithTheFirstSong()
{
    openChart();
    t->page().playAll();
    QCOMPARE(t->player().onlineQueue().size(), 2);
    QCOMPARE(t->player().currentOnlineSong(), std::optional(onlineSong(u"1"_s)));
}

void TopListsViewModelTest::playAllOfAnEmptyChartDoesNothing()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s)}));
    t->charts().openChart(0);
    t->page().playAll();
    t->answer(onlineAnswers::chartSongs({}));
    QCOMPARE(t->page().content(), PageContent::Empty);
    t->page().playAll();
    QVERIFY(!t->player().currentOnlineSong());
}

void TopListsViewModelTest::songThatPlaysIsMarked()
{
    openChart();
    t->page().playSongAt(0);
    QVERIFY(t->page().songs()->index(0).data(OnlineSongListModel::IsCurrentRole).toBool());
    QVERIFY(!t->page().songs()->index(1).data(OnlineSongListModel::IsCurrentRole).toBool());
}

void TopListsViewModelTest::rowThatIsGoneOpensNothing()
{
    t->charts().openChart(0);
    t->charts().openChart(-1);
    t->charts().selectPlatform(3);
    t->charts().selectPlatform(-1);
    QVERIFY(!t->page().isOpen());
    QCOMPARE(t->charts().platformIndex(), 0);
    QCOMPARE(t->sent(), 0);
}

QTEST_GUILESS_MAIN(TopListsViewModelTest)
#include "tst_top_lists_view_model.moc"
