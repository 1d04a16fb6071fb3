// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioPlayerService.h"
#include "ViewModels/OnlineBench.h"

#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Content = OnlineSearchViewModel::Content;

class OnlineSearchViewModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { t = std::make_unique<OnlineBench>(); }
    void cleanup() { t.reset(); }
    void platformsAreNamedAndAllOfThemTogetherComeLast();
    void searchRunsOnSubmitOnlyAndAsksForTwenty();
    void statesFollowASearch();
    void searchThatFindsNothingIsEmpty();
    void unreadableAnswerIsEmptyAndNoFailure();
    void failureSaysWhy();
    void emptyTextSearchesNothingAndIsTheBeginningAgain();
    void aTextIsSearchedForOnceUntilItIsAnother();
    void platformChangeSearchesForTheTextThatIsThere();
    void platformChangeWithAnEmptyFieldSendsNothing();
    void choosingTheChosenPlatformSendsNothing();
    void allPlatformsAreSearchedTogether();
    void retryAfterTheTextWasEditedSearchesTheOldTextAgain();
    void retryGoesBackToAllPlatforms();
    void clearTakesTextAndFailureAway();
    void clearLeavesWhatWasFoundBefore();
    void anotherPlatformIsTheNextOne_data();
    void anotherPlatformIsTheNextOne();
    void ofTwoSearchesTheLaterAnswerIsShown();
    void rowPlaysWithTheResultsAsQueue();
    void rowThatIsGonePlaysNothing();
    void songThatPlaysIsMarked();

private:
    std::unique_ptr<OnlineBench> t;
};

void OnlineSearchViewModelTest::platformsAreNamedAndAllOfThemTogetherComeLast()
{
    QCOMPARE(t->search().platforms(), (QStringList{u"网易云"_s, u"酷我"_s, u"QQ音乐"_s, u"聚合"_s}));
    QCOMPARE(t->search().platformIndex(), 0);
    QCOMPARE(t->search().content(), Content::Initial);
    QCOMPARE(t->sent(), 0);
}

void OnlineSearchViewModelTest::searchRunsOnSubmitOnlyAndAsksForTwenty()
{
    t->search().setSearchText(u"夜航 a"_s);
    settle();
    QCOMPARE(t->sent(), 0);
    t->search().performSearch();
    QCOMPARE(t->sent(), 1);
    QCOMPARE(t->lastAddress(), u"https://api.example/api/?source=netease&type=search&keyword="
                               "%E5%A4%9C%E8%88%AA%20a&limit=20"_s);
    QCOMPARE(t->search().lastSearchKeyword(), u"夜航 a"_s);
    QCOMPARE(t->search().lastSearchPlatform(), OnlineSearchViewModel::Scope(MusicPlatform::netease));
}

void OnlineSearchViewModelTest::statesFollowASearch()
{
    QSignalSpy states(&t->search(), &OnlineSearchViewModel::contentChanged);
    t->searchFor(u"a"_s);
    QCOMPARE(t->search().content(), Content::Searching);
    t->answer(onlineAnswers::found(onlineSongs({u"1"_s, u"2"_s})));
    QCOMPARE(t->search().content(), Content::Results);
    QCOMPARE(t->search().songs()->count(), 2);
    QCOMPARE(states.size(), 2);
    // Another search stands in the place of what was found before.
    t->searchFor(u"b"_s);
    QCOMPARE(t->search().content(), Content::Searching);
}

void OnlineSearchViewModelTest::searchThatFindsNothingIsEmpty()
{
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::found({}));
    QCOMPARE(t->search().content(), Content::Empty);
    t->search().setSearchText(u"ab"_s);
    QCOMPARE(t->search().content(), Content::Empty);
}

void OnlineSearchViewModelTest::unreadableAnswerIsEmptyAndNoFailure()
{
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::body(R"({"code": 500, "message": "busy"})"));
    QCOMPARE(t->search().content(), Content::Empty);
    QCOMPARE(t->search().error(), QString());
}

void OnlineSearchViewModelTest::failureSaysWhy()
{
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::broken(u"无法连接服务器"_s));
    QCOMPARE(t->search().content(), Content::Failed);
    QCOMPARE(t->search().error(), u"搜索失败: 无法连接服务器"_s);
    // It is gone as soon as another search begins.
    t->search().performSearch();
    QCOMPARE(t->search().content(), Content::Searching);
    QCOMPARE(t->search().error(), QString());
}

void OnlineSearchViewModelTest::emptyTextSearchesNothingAndIsTheBeginningAgain()
{
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::found(onlineSongs({u"1"_s})));
    t->searchFor(QString());
    QCOMPARE(t->sent(), 1);
    QCOMPARE(t->search().songs()->count(), 0);
    QCOMPARE(t->search().content(), Content::Initial);
}

void OnlineSearchViewModelTest::aTextIsSearchedForOnceUntilItIsAnother()
{
    t->search().searchIfNew();
    QCOMPARE(t->sent(), 0);
    t->search().setSearchText(u"a"_s);
    t->search().searchIfNew();
    QCOMPARE(t->sent(), 1);
    // Under way, answered with nothing, failed: each is an answer to this text.
    t->search().searchIfNew();
    QCOMPARE(t->sent(), 1);
    t->answer(onlineAnswers::found({}));
    t->search().searchIfNew();
    QCOMPARE(t->sent(), 1);
    // What was found belongs to the text before.
    t->search().setSearchText(u"b"_s);
    t->search().searchIfNew();
    QCOMPARE(t->sent(), 2);
    t->answer(onlineAnswers::found(onlineSongs({u"1"_s})));
    t->search().setSearchText(u"c"_s);
    t->search().searchIfNew();
    QCOMPARE(t->sent(), 3);
    QCOMPARE(t->search().lastSearchKeyword(), u"c"_s);
}

void OnlineSearchViewModelTest::platformChangeSearchesForTheTextThatIsThere()
{
    t->search().setSearchText(u"a"_s);
    t->search().selectPlatform(1);
    QCOMPARE(t->search().platformIndex(), 1);
    QCOMPARE(t->sent(), 1);
    QVERIFY(t->lastAddress().contains(u"source=kuwo&type=search&keyword=a&"_s));
}

void OnlineSearchViewModelTest::platformChangeWithAnEmptyFieldSendsNothing()
{
    t->search().selectPlatform(1);
    t->search().selectPlatform(3);
    QCOMPARE(t->search().platformIndex(), 3);
    QCOMPARE(t->search().content(), Content::Initial);
    QCOMPARE(t->sent(), 0);
    // Nor is it a search for nothing, which would take away what was found and what to retry.
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::found(onlineSongs({u"1"_s})));
    t->search().setSearchText(QString());
    t->search().selectPlatform(0);
    QCOMPARE(t->search().songs()->count(), 1);
    QCOMPARE(t->search().lastSearchKeyword(), u"a"_s);
    QCOMPARE(t->search().lastSearchPlatform(), OnlineSearchViewModel::Scope());
    QCOMPARE(t->sent(), 1);
}

void OnlineSearchViewModelTest::choosingTheChosenPlatformSendsNothing()
{
    t->search().setSearchText(u"a"_s);
    t->search().selectPlatform(0);
    QCOMPARE(t->sent(), 0);
}

void OnlineSearchViewModelTest::allPlatformsAreSearchedTogether()
{
    t->search().selectPlatform(3);
    t->searchFor(u"a"_s);
    QVERIFY(t->lastAddress().contains(u"?type=aggregateSearch&keyword=a&limit=100"_s));
    QVERIFY(!t->search().lastSearchPlatform());
    OnlineSong other = onlineSong(u"1"_s);
    other.platform = MusicPlatform::qq;
    t->answer(onlineAnswers::found({onlineSong(u"1"_s), other}));
    QCOMPARE(t->search().songs()->count(), 2);
    QCOMPARE(t->search().songs()->index(1).data(OnlineSongListModel::PlatformTextRole), u"QQ音乐"_s);
}

void OnlineSearchViewModelTest::retryAfterTheTextWasEditedSearchesTheOldTextAgain()
{
    t->search().selectPlatform(2);
    t->searchFor(u"old"_s);
    t->answer(onlineAnswers::broken(u"no"_s));
    t->search().setSearchText(QString());
    t->search().selectPlatform(1);
    t->search().setSearchText(u"new"_s);
    t->search().retry();
    QCOMPARE(t->search().searchText(), u"old"_s);
    QCOMPARE(t->search().platformIndex(), 2);
    QCOMPARE(t->sent(), 2);
    QVERIFY(t->lastAddress().contains(u"source=qq&type=search&keyword=old&"_s));
}

void OnlineSearchViewModelTest::retryGoesBackToAllPlatforms()
{
    t->search().selectPlatform(3);
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::broken(u"no"_s));
    t->search().setSearchText(QString());
    t->search().selectPlatform(0);
    t->search().retry();
    QCOMPARE(t->search().platformIndex(), 3);
    QVERIFY(t->lastAddress().contains(u"type=aggregateSearch"_s));
}

void OnlineSearchViewModelTest::clearTakesTextAndFailureAway()
{
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::broken(u"no"_s));
    t->search().clear();
    QCOMPARE(t->search().searchText(), QString());
    QVERIFY(!t->service().searchError());
    QCOMPARE(t->search().content(), Content::Initial);
    QCOMPARE(t->sent(), 1);
}

void OnlineSearchViewModelTest::clearLeavesWhatWasFoundBefore()
{
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::found(onlineSongs({u"1"_s})));
    t->searchFor(u"b"_s);
    t->answer(onlineAnswers::broken(u"no"_s));
    QCOMPARE(t->search().content(), Content::Failed);
    t->search().clear();
    QCOMPARE(t->search().content(), Content::Results);
    QCOMPARE(t->titles(*t->search().songs()), QStringList{u"Online 1"_s});
}

void OnlineSearchViewModelTest::anotherPlatformIsTheNextOne_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("source");
    QTest::newRow("netease") << 0 << 1 << u"source=kuwo&"_s;
    QTest::newRow("kuwo") << 1 << 2 << u"source=qq&"_s;
    QTest::newRow("qq") << 2 << 0 << u"source=netease&"_s;
    QTest::newRow("all") << 3 << 0 << u"source=netease&"_s;
}

void OnlineSearchViewModelTest::anotherPlatformIsTheNextOne()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const QString, source);
    t->search().selectPlatform(from);
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::found({}));
    t->search().tryNextPlatform();
    QCOMPARE(t->search().platformIndex(), to);
    // One search, not one for the change and one for the button.
    QCOMPARE(t->sent(), 2);
    QVERIFY(t->lastAddress().contains(source));
}

void OnlineSearchViewModelTest::ofTwoSearchesTheLaterAnswerIsShown()
{
    t->searchFor(u"first"_s);
    t->searchFor(u"second"_s);
    t->answer(u"second"_s, onlineAnswers::found(onlineSongs({u"2"_s})));
    QCOMPARE(t->titles(*t->search().songs()), QStringList{u"Online 2"_s});
    t->answer(u"first"_s, onlineAnswers::found(onlineSongs({u"1"_s})));
    QCOMPARE(t->titles(*t->search().songs()), QStringList{u"Online 1"_s});
    QCOMPARE(t->search().content(), Content::Results);
}

void OnlineSearchViewModelTest::rowPlaysWithTheResultsAsQueue()
{
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::found(onlineSongs({u"1"_s, u"2"_s, u"3"_s})));
    t->search().playSongAt(1);
    QCOMPARE(t->player().onlineQueue(), onlineSongs({u"1"_s, u"2"_s, u"3"_s}));
    QCOMPARE(t->player().currentOnlineSong(), std::optional(onlineSong(u"2"_s)));
    QCOMPARE(t->player().currentIndex(), 1);
}

void OnlineSearchViewModelTest::rowThatIsGonePlaysNothing()
{
    t->search().playSongAt(0);
    t->search().playSongAt(-1);
    QVERIFY(!t->player().currentOnlineSong());
}

void OnlineSearchViewModelTest::songThatPlaysIsMarked()
{
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::found(onlineSongs({u"1"_s, u"2"_s})));
    t->search().playSongAt(1);
    const auto isCurrent = [this](int row) {
        return t->search().songs()->index(row).data(OnlineSongListModel::IsCurrentRole).toBool();
    };
    QVERIFY(!isCurrent(0));
    QVERIFY(isCurrent(1));
    // The same song found again is marked at once, a song of the library that plays unmarks it.
    t->searchFor(u"b"_s);
    t->answer(u"keyword=b"_s, onlineAnswers::found(onlineSongs({u"2"_s})));
    QVERIFY(isCurrent(0));
    t->player().playSong(fileSong(u"local"_s), {fileSong(u"local"_s)});
    QVERIFY(!isCurrent(0));
}

QTEST_GUILESS_MAIN(OnlineSearchViewModelTest)
#include "tst_online_search_view_model.moc"
