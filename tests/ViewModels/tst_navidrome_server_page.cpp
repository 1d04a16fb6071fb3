// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/NavidromeBench.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Content = NavidromeServerPageViewModel::Content;

class NavidromeServerPageTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<NavidromeBench> m_bench;

    NavidromeServerPageViewModel &page() { return m_bench->page(); }

private Q_SLOTS:
    void init() { m_bench = std::make_unique<NavidromeBench>(); }
    void cleanup() { m_bench.reset(); }

    void openingConnectsAndListsSongs()
    {
        m_bench->web.setSongs({u"一"_s, u"二"_s});
        m_bench->servers().openServer(m_bench->add(u"家"_s));
        QVERIFY(page().isOpen());
        QCOMPARE(page().name(), u"家"_s);
        QCOMPARE(page().host(), u"music.test:4533"_s);
        QCOMPARE(page().summary(), u"music.test:4533"_s);
        QCOMPARE(page().content(), Content::Connecting);
        QVERIFY(page().isBusy());
        QVERIFY(m_bench->answerOne());
        QTRY_COMPARE(page().content(), Content::Loading);
        QVERIFY(page().isConnected());
        QVERIFY(m_bench->answerOne());
        QTRY_COMPARE(page().content(), Content::Songs);
        QVERIFY(!page().isBusy());
        QCOMPARE(m_bench->titles(), (QStringList{u"一"_s, u"二"_s}));
        QCOMPARE(page().summary(), u"随机 2 首歌曲"_s);
        QCOMPARE(m_bench->web.askedEndpoints(), (QStringList{u"ping.view"_s, u"getRandomSongs.view"_s}));
    }

    void aServerWithoutSongsSaysSo()
    {
        m_bench->openPage({});
        QCOMPARE(page().content(), Content::Empty);
    }

    void aFailedConnectSaysWhyAndCanBeTriedAgain()
    {
        m_bench->web.setAnswer(u"ping.view"_s, webAnswer(subsonicRefusal("Wrong username or password")));
        m_bench->openPage({u"一"_s});
        QCOMPARE(page().content(), Content::Failed);
        QCOMPARE(page().failure(), u"Wrong username or password"_s);
        QVERIFY(!page().isConnected());

        m_bench->web.setAnswer(u"ping.view"_s, webAnswer(subsonicAnswer()));
        page().refresh();
        QCOMPARE(page().content(), Content::Connecting);
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(page().content(), Content::Songs);
        QVERIFY(page().failure().isEmpty());
    }

    void aFailedListingSaysWhyAndCanBeTriedAgain()
    {
        const QString id = m_bench->add(u"家"_s);
        m_bench->servers().openServer(id);
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(page().content(), Content::Failed);
        QCOMPARE(page().failure(), u"拉取歌曲失败"_s);
        QVERIFY(page().isConnected());
        m_bench->web.setSongs({u"一"_s});
        page().refresh();
        QCOMPARE(page().content(), Content::Loading);
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(page().content(), Content::Songs);
    }

    void aServerWithoutAPasswordSaysSo()
    {
        const QString id = m_bench->add(u"家"_s);
        m_bench->home.secrets().refuseAll(SecretStatus::interactionNotAllowed);
        m_bench->servers().openServer(id);
        QTRY_COMPARE(page().content(), Content::Failed);
        QCOMPARE(page().failure(), u"无法获取密码"_s);
    }

    void aSearchReplacesTheSongs()
    {
        m_bench->openPage({u"一"_s});
        m_bench->web.setFound({u"夜曲"_s});
        QSignalSpy listed(&page(), &NavidromeServerPageViewModel::listed);
        page().setSearchText(u" 夜曲 "_s);
        page().search();
        QCOMPARE(page().content(), Content::Songs);
        QVERIFY(page().isBusy());
        QCOMPARE(page().summary(), u"随机 1 首歌曲"_s);
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(m_bench->titles(), QStringList{u"夜曲"_s});
        QCOMPARE(page().summary(), u"“夜曲” · 1 首歌曲"_s);
        QCOMPARE(listed.count(), 1);
        const QUrl asked = m_bench->home.web().sent.constLast().url;
        QVERIFY(asked.toEncoded().contains("&query=%E5%A4%9C%E6%9B%B2&songCount=120"));
    }

    void aSearchWithoutAResultSaysSo()
    {
        m_bench->openPage({u"一"_s});
        m_bench->web.setFound({});
        page().setSearchText(u"没有"_s);
        page().search();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(page().content(), Content::NothingFound);
        QCOMPARE(page().query(), u"没有"_s);
    }

    void anEmptyFieldBringsRandomSongs()
    {
        m_bench->openPage({u"一"_s});
        m_bench->web.setFound({});
        page().setSearchText(u"没有"_s);
        page().search();
        QVERIFY(m_bench->answerUntilIdle());
        page().setSearchText(u"  "_s);
        page().search();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(m_bench->titles(), QStringList{u"一"_s});
        QCOMPARE(page().content(), Content::Songs);
    }

    void refreshingAsksAgainForWhatIsShown()
    {
        m_bench->openPage({u"一"_s});
        m_bench->web.setSongs({u"二"_s});
        page().refresh();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(m_bench->titles(), QStringList{u"二"_s});
        m_bench->web.setFound({u"夜曲"_s});
        page().setSearchText(u"夜"_s);
        page().search();
        QVERIFY(m_bench->answerUntilIdle());
        page().setSearchText(u"还没有提交"_s);
        page().refresh();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(m_bench->home.web().sent.constLast().url.fileName(), u"search3.view"_s);
        QVERIFY(m_bench->home.web().sent.constLast().url.toEncoded().contains("&query=%E5%A4%9C&"));
    }

    void aFailedSearchLeavesTheSongsAndCanBeDismissed()
    {
        m_bench->openPage({u"一"_s});
        page().setSearchText(u"夜"_s);
        page().search();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(page().content(), Content::Songs);
        QCOMPARE(page().failure(), u"搜索失败"_s);
        QCOMPARE(m_bench->titles(), QStringList{u"一"_s});
        page().dismissFailure();
        QVERIFY(page().failure().isEmpty());
        // The same failure again is told again.
        page().search();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(page().failure(), u"搜索失败"_s);
    }

    void anOldFailureIsNotShownWhileTheNextTryIsUnderWay()
    {
        m_bench->openPage({u"一"_s});
        page().setSearchText(u"夜"_s);
        page().search();
        QVERIFY(m_bench->answerUntilIdle());
        page().dismissFailure();
        m_bench->web.setFound({u"夜曲"_s});
        QStringList shown;
        connect(&page(), &NavidromeServerPageViewModel::changed, this,
                [this, &shown] { shown.append(page().failure()); });
        page().search();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(m_bench->titles(), QStringList{u"夜曲"_s});
        QVERIFY(!shown.isEmpty());
        shown.removeAll(QString());
        QCOMPARE(shown, QStringList());
    }

    void aSearchWhileConnectingIsAskedForAfterwards()
    {
        m_bench->web.setSongs({u"一"_s});
        m_bench->web.setFound({u"夜曲"_s});
        m_bench->servers().openServer(m_bench->add(u"家"_s));
        page().setSearchText(u" 夜 "_s);
        page().search();
        QCOMPARE(page().content(), Content::Connecting);
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(m_bench->titles(), QStringList{u"夜曲"_s});
        QCOMPARE(m_bench->web.askedEndpoints(), (QStringList{u"ping.view"_s, u"search3.view"_s}));
    }

    void aNewerSearchWins()
    {
        m_bench->openPage({u"一"_s});
        page().setSearchText(u"旧"_s);
        page().search();
        QTRY_VERIFY(m_bench->web.isAsked());
        page().setSearchText(u"新"_s);
        page().search();
        m_bench->web.setFound({u"新歌"_s});
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(m_bench->titles(), QStringList{u"新歌"_s});
        QCOMPARE(page().summary(), u"“新” · 1 首歌曲"_s);
        QVERIFY(page().failure().isEmpty());
    }

    void aSearchWithoutAConnectionConnectsFirst()
    {
        m_bench->openPage({u"一"_s});
        page().disconnectFromServer();
        QCOMPARE(page().content(), Content::Disconnected);
        QVERIFY(page().failure().isEmpty());
        m_bench->web.setFound({u"夜曲"_s});
        page().setSearchText(u"夜"_s);
        page().search();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(page().content(), Content::Songs);
        QCOMPARE(m_bench->titles(), QStringList{u"夜曲"_s});
    }

    void disconnectingEndsAConnect()
    {
        m_bench->web.setSongs({u"一"_s});
        m_bench->servers().openServer(m_bench->add(u"家"_s));
        QTRY_VERIFY(m_bench->web.isAsked());
        page().disconnectFromServer();
        QCOMPARE(page().content(), Content::Disconnected);
        settle();
        QCOMPARE(page().content(), Content::Disconnected);
        QVERIFY(!page().isBusy());
        page().refresh();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(page().content(), Content::Songs);
    }

    void anotherServerBeginsAnew()
    {
        m_bench->openPage({u"一"_s});
        page().setSearchText(u"夜"_s);
        const QString other = m_bench->add(u"别处"_s, u"http://other.test"_s);
        m_bench->web.setSongs({u"二"_s});
        m_bench->servers().openServer(other);
        QCOMPARE(page().name(), u"别处"_s);
        QCOMPARE(page().content(), Content::Connecting);
        QCOMPARE(page().searchText(), QString());
        QCOMPARE(page().songs()->count(), 0);
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(m_bench->titles(), QStringList{u"二"_s});
    }

    void aSlowServerThatWasLeftDoesNotComeBack()
    {
        const QString slow = m_bench->add(u"慢"_s, u"http://slow.test"_s);
        const QString quick = m_bench->add(u"快"_s, u"http://quick.test"_s);
        m_bench->web.setSongs({u"一"_s});
        m_bench->servers().openServer(slow);
        QTRY_VERIFY(m_bench->web.isAsked());
        page().close();
        m_bench->servers().openServer(quick);
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(page().name(), u"快"_s);
        QCOMPARE(page().content(), Content::Songs);
        QCOMPARE(m_bench->service().currentConfig()->uuidText(), quick);
    }

    void aPageThatClosesKeepsItsRows()
    {
        m_bench->openPage({u"一"_s});
        page().close();
        QVERIFY(!page().isOpen());
        QCOMPARE(page().content(), Content::Songs);
        QCOMPARE(page().songs()->count(), 1);
    }

    void thePageOfADeletedServerCloses()
    {
        const QString id = m_bench->openPage({u"一"_s});
        m_bench->servers().deleteServer(id);
        QTRY_VERIFY(!page().isOpen());
        QVERIFY(!m_bench->service().isConnected());
    }

    void aChangedServerIsConnectedAnew_data()
    {
        QTest::addColumn<bool>("isMoved");
        QTest::newRow("another address") << true;
        QTest::newRow("another name") << false;
    }
    void aChangedServerIsConnectedAnew()
    {
        QFETCH(const bool, isMoved);
        const QString id = m_bench->openPage({u"一"_s});
        m_bench->servers().editServer(id);
        QTRY_VERIFY(m_bench->form().canSubmit());
        if (isMoved)
            m_bench->form().serverURL()->edit(u"https://new.test"_s);
        m_bench->form().name()->edit(u"新家"_s);
        m_bench->home.web().sent.clear();
        m_bench->form().save();
        QTRY_VERIFY(!m_bench->form().isOpen());
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(page().name(), u"新家"_s);
        QCOMPARE(page().content(), Content::Songs);
        QCOMPARE(m_bench->home.web().sent.isEmpty(), !isMoved);
        if (isMoved)
            QCOMPARE(m_bench->service().currentConfig()->serverURL, u"https://new.test"_s);
    }

    void aServerThatMovesWhileItsPageIsClosedIsConnectedNoMore()
    {
        const QString id = m_bench->openPage({u"一"_s});
        const QString other = m_bench->add(u"别处"_s, u"http://other.test"_s);
        page().close();
        const auto move = [this](const QString &server, const QString &address) {
            m_bench->servers().editServer(server);
            if (!QTest::qWaitFor([this] { return m_bench->form().canSubmit(); }))
                return false;
            m_bench->form().serverURL()->edit(address);
            m_bench->form().save();
            return QTest::qWaitFor([this] { return !m_bench->form().isOpen(); });
        };
        QVERIFY(move(other, u"http://new-other.test"_s));
        QVERIFY(m_bench->service().isConnected());
        QVERIFY(move(id, u"http://new.test"_s));
        QVERIFY(!m_bench->service().isConnected());
        QVERIFY(!page().isOpen());
        m_bench->home.web().sent.clear();
        m_bench->servers().refresh();
        settle();
        QVERIFY(m_bench->home.web().sent.isEmpty());
    }

    void aListWithASongTwiceIsShown()
    {
        const QAbstractItemModelTester tester(page().songs());
        m_bench->openPage({u"一"_s, u"一"_s, u"二"_s});
        QCOMPARE(m_bench->titles(), (QStringList{u"一"_s, u"一"_s, u"二"_s}));
        m_bench->web.setSongs({u"二"_s, u"三"_s, u"一"_s, u"一"_s, u"一"_s});
        page().refresh();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(m_bench->titles(), (QStringList{u"二"_s, u"三"_s, u"一"_s, u"一"_s, u"一"_s}));
    }

    void aSongPlaysWithTheSongsShownAsQueue()
    {
        m_bench->openPage({u"一"_s, u"二"_s, u"三"_s});
        page().playSongAt(1);
        QCOMPARE(songOf(m_bench->player()).title(), u"二"_s);
        QCOMPARE(m_bench->player().queue().size(), 3);
        QVERIFY(page().songs()->index(1).data(SongListModel::IsCurrentRole).toBool());
        QVERIFY(!page().songs()->index(0).data(SongListModel::IsCurrentRole).toBool());
        page().playSongAt(-1);
        page().playSongAt(3);
        QCOMPARE(songOf(m_bench->player()).title(), u"二"_s);
        // What is listed afterwards leaves the queue alone.
        m_bench->web.setSongs({u"四"_s});
        page().refresh();
        QVERIFY(m_bench->answerUntilIdle());
        QCOMPARE(m_bench->player().queue().size(), 3);
    }
};

QTEST_GUILESS_MAIN(NavidromeServerPageTest)
#include "tst_navidrome_server_page.moc"
