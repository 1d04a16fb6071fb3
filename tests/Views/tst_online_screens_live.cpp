// SPDX-License-Identifier: GPL-3.0-or-later
// The place of the online platforms over the real network against a server that speaks the API.
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/OnlineApiServer.h"
#include "ViewModels/RemoteCovers.h"
#include "Views/OnlineScreenTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

class LiveOnlineScreensTest : public OnlineScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void songsAreFoundPlayedAndChartsOpened();
    void serverThatIsGoneIsSaid();
};

void LiveOnlineScreensTest::songsAreFoundPlayedAndChartsOpened()
{
    OnlineApiServer server;
    QVERIFY(server.start());
    t.reset();
    t = std::make_unique<TestWindow>(std::make_unique<NetworkHttpClient>());
    t->remoteCovers = std::make_unique<RemoteCovers>(*t->platform.httpClient, *t->platform.clock);
    showPlace();

    // The address goes in by the form, as a listener gives it.
    t->click(u"apiSettingsButton"_s);
    QTRY_VERIFY(isOpen(u"apiSettings"_s));
    fill(u"apiAddressText"_s, server.address().toString());
    t->click(u"apiSave"_s);
    t->click(u"apiSettingsClose"_s);
    QTRY_VERIFY(isGone(u"apiSettings"_s));

    const OnlineApiServer::Song wanted = OnlineApiServer::songWithAddress(u"netease"_s, u"redirect"_s);
    searchFor(wanted.name);
    QTRY_COMPARE_GE(search().songs()->count(), 1);
    QTRY_VERIFY(rowOf(u"onlineSongList"_s, 0));
    QCOMPARE(rowOf(u"onlineSongList"_s, 0)->property("title").toString(), wanted.name);
    QCOMPARE(rowOf(u"onlineSongList"_s, 0)->property("subtitle").toString(),
             wanted.artist + u"·"_s + wanted.album);
    t->click(rowOf(u"onlineSongList"_s, 0));
    QTRY_VERIFY(t->player && t->player->lastItem());
    QCOMPARE(currentName(), wanted.name);
    // Its cover was asked for once it stood in the list.
    QTRY_VERIFY(!server.requests().filter(u"type=pic"_s).isEmpty());

    // All platforms at once.
    t->click(u"searchPlatform3"_s);
    searchFor(u"的"_s);
    QTRY_VERIFY(search().content() == OnlineSearchViewModel::Content::Results);

    t->click(u"chartsButton"_s);
    QTRY_VERIFY(covers(u"chartsPage"_s));
    QTRY_COMPARE_GE(charts().charts()->count(), 1);
    QTRY_VERIFY(rowOf(u"chartGrid"_s, 0));
    t->click(rowOf(u"chartGrid"_s, 0));
    QTRY_COMPARE_GE(charts().page()->songs()->count(), 1);
    QTRY_VERIFY(covers(u"chartPage"_s));
    const int count = charts().page()->songs()->count();
    QTRY_COMPARE(textOf(u"playAllButton"_s), u"播放全部 (%1)"_s.arg(count));
    t->click(u"playAllButton"_s);
    QCOMPARE(t->audioPlayer->onlineQueue().size(), count);
}

void LiveOnlineScreensTest::serverThatIsGoneIsSaid()
{
    OnlineApiServer server;
    QVERIFY(server.start());
    t.reset();
    t = std::make_unique<TestWindow>(std::make_unique<NetworkHttpClient>());
    t->apiConfig->setBaseURL(server.address().toString());
    showPlace();
    server.stop();
    searchFor(u"夜"_s);
    QTRY_VERIFY(t->shows(u"searchFailed"_s));
    QVERIFY(t->item(u"searchFailed"_s)->property("description").toString().startsWith(u"搜索失败: "_s));
    t->click(u"chartsButton"_s);
    QTRY_VERIFY(t->shows(u"chartsEmpty"_s));
}

QTEST_MAIN(LiveOnlineScreensTest)
#include "tst_online_screens_live.moc"
