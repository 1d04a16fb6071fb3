// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Online/BusyWorkers.h"
#include "Services/Online/OnlineBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QByteArray charts(const QByteArray &name)
{
    return R"({"data":{"list":[{"id":"1","name":")" + name + R"("}]}})";
}

QByteArray songs(const QByteArray &title)
{
    return R"({"data":{"list":[{"id":"1","name":")" + title + R"("}]}})";
}

/// The same in a body so long that a worker reads it.
QByteArray atLength(QByteArray body)
{
    return body.replace(0, 1, R"({"padding":")" + QByteArray(1'000'000, 'x') + R"(",)");
}

const TopList chartA{.id = u"a"_s, .name = u"甲榜"_s, .updateFrequency = {}, .platform = MusicPlatform::qq};
const TopList chartB{.id = u"b"_s, .name = u"乙榜"_s, .updateFrequency = {}, .platform = MusicPlatform::kuwo};

} // namespace

class OnlineChartsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<OnlineBench> m_bench;

    OnlineMusicService &service() { return *m_bench->service; }
    QStringList names(MusicPlatform platform)
    {
        QStringList result;
        for (const TopList &list : service().topLists().value(platform))
            result.append(list.name);
        return result;
    }
    QStringList titles() { return OnlineBench::titles(service().topListSongs()); }

private Q_SLOTS:
    void init() { m_bench = std::make_unique<OnlineBench>(); }
    void cleanup() { m_bench.reset(); }

    void nothingIsThereAtTheStart()
    {
        QVERIFY(service().topLists().isEmpty());
        QVERIFY(service().topListSongs().isEmpty());
        QVERIFY(!service().currentTopList());
        QVERIFY(!service().isLoadingTopLists() && !service().isLoadingTopListSongs());
    }

    void chartsOfAPlatformAreLoadedAndLogged()
    {
        const QByteArray body =
            R"({"code":1,"data":{"list":[{"id":"1","name":"热歌榜","updateFrequency":"每天更新"},
                                    {"id":"2","name":"新歌榜"}]}})";
        QVERIFY(m_bench->answered(service().getTopLists(MusicPlatform::netease), OnlineBench::ok(body, 503)));
        const TopList hot{.id = u"1"_s,
                          .name = u"热歌榜"_s,
                          .updateFrequency = u"每天更新"_s,
                          .platform = MusicPlatform::netease};
        const TopList fresh{.id = u"2"_s,
                            .name = u"新歌榜"_s,
                            .updateFrequency = u"定期更新"_s,
                            .platform = MusicPlatform::netease};
        QCOMPARE(service().topLists().value(MusicPlatform::netease), (QList<TopList>{hot, fresh}));
        const QStringList said{u"📊 获取排行榜列表: http://music.test/api/?source=netease&type=toplists"_s,
                               u"📥 排行榜列表响应: "_s + QString::fromUtf8(body), u"✅ 获取到 2 个排行榜"_s};
        QCOMPARE(m_bench->console.take(), said);
        const HttpRequest request = m_bench->web().sent.constFirst();
        QCOMPARE(request.idleTimeout, 30s);
        QCOMPARE(request.totalTimeout, 60s);
    }

    void theWaitForChartsIsPublished()
    {
        const QSignalSpy loading(&service(), &OnlineMusicService::isLoadingTopListsChanged);
        const QSignalSpy lists(&service(), &OnlineMusicService::topListsChanged);
        const QSignalSpy changes(&service(), &OnlineMusicService::changed);
        auto task = service().getTopLists(MusicPlatform::qq);
        QVERIFY(service().isLoadingTopLists());
        QVERIFY(m_bench->answered(std::move(task), OnlineBench::ok(charts("榜"))));
        QVERIFY(!service().isLoadingTopLists());
        QCOMPARE(loading.size(), 2);
        QCOMPARE(lists.size(), 1);
        QCOMPARE(changes.size(), 3);
    }

    void loadedChartsAreNotAskedForAgain_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("charts") << charts("榜");
        QTest::newRow("empty list") << QByteArray(R"({"data":{"list":[]}})");
    }
    void loadedChartsAreNotAskedForAgain()
    {
        QFETCH(QByteArray, body);
        QVERIFY(m_bench->answered(service().getTopLists(MusicPlatform::qq), OnlineBench::ok(body)));
        QVERIFY(service().topLists().contains(MusicPlatform::qq));
        const QSignalSpy changes(&service(), &OnlineMusicService::changed);
        QVERIFY(await(service().getTopLists(MusicPlatform::qq)));
        QCOMPARE(m_bench->web().sent.size(), 1);
        QCOMPARE(changes.size(), 0);
        // Another platform is another list.
        QVERIFY(m_bench->answered(service().getTopLists(MusicPlatform::kuwo), OnlineBench::ok(body)));
        QCOMPARE(m_bench->web().sent.size(), 2);
    }

    void clearedChartsAreLoadedAnew()
    {
        QVERIFY(m_bench->answered(service().getTopLists(MusicPlatform::qq), OnlineBench::ok(charts("旧榜"))));
        const QSignalSpy lists(&service(), &OnlineMusicService::topListsChanged);
        service().clearTopListsCache();
        QVERIFY(service().topLists().isEmpty());
        QCOMPARE(lists.size(), 1);
        QVERIFY(m_bench->answered(service().getTopLists(MusicPlatform::qq), OnlineBench::ok(charts("新榜"))));
        QCOMPARE(names(MusicPlatform::qq), QStringList{u"新榜"_s});
    }

    void whatWasAskedForBeforeTheyWereClearedIsNotKept()
    {
        auto old = service().getTopLists(MusicPlatform::qq);
        service().clearTopListsCache();
        auto anew = service().getTopLists(MusicPlatform::qq);
        QVERIFY(m_bench->answered(std::move(old), OnlineBench::ok(charts("旧榜"))));
        QVERIFY(service().topLists().isEmpty());
        QVERIFY(m_bench->answered(std::move(anew), OnlineBench::ok(charts("新榜"))));
        QCOMPARE(names(MusicPlatform::qq), QStringList{u"新榜"_s});
    }

    void aFailedListOfChartsIsTriedAgain_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("said");
        const QString without = u"⚠️ 解析排行榜列表失败"_s;
        const QString error = u"❌ 获取排行榜列表错误: "_s;
        QTest::newRow("no data") << QByteArray("{}") << without;
        QTest::newRow("null") << QByteArray(R"({"data":{"list":null}})") << without;
        QTest::newRow("empty body") << QByteArray() << error;
        QTest::newRow("page") << QByteArray("<html>") << error;
        QTest::newRow("number for a text")
            << QByteArray(R"({"data":{"list":[{"id":1,"name":"a"}]}})") << error;
    }
    void aFailedListOfChartsIsTriedAgain()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, said);
        QVERIFY(m_bench->answered(service().getTopLists(MusicPlatform::qq), OnlineBench::ok(body)));
        QVERIFY(service().topLists().isEmpty());
        QVERIFY(!service().isLoadingTopLists());
        QVERIFY(m_bench->console.take().constLast().startsWith(said));
        QVERIFY(!service().searchError());
        QVERIFY(m_bench->answered(service().getTopLists(MusicPlatform::qq), OnlineBench::ok(charts("榜"))));
        QCOMPARE(names(MusicPlatform::qq), QStringList{u"榜"_s});
    }

    void aFailedRequestForChartsIsLogged()
    {
        QVERIFY(m_bench->answered(service().getTopLists(MusicPlatform::qq), OnlineBench::failed(u"断了"_s)));
        QCOMPARE(m_bench->console.take().constLast(), u"❌ 获取排行榜列表错误: 断了"_s);
        QVERIFY(!service().isLoadingTopLists());
        QVERIFY(!service().searchError());
    }

    void withoutAnAddressNothingIsAsked()
    {
        m_bench->api.setBaseURL(u"http://[::1"_s);
        QVERIFY(await(service().getTopLists(MusicPlatform::qq)));
        QVERIFY(!service().isLoadingTopLists());
        QVERIFY(await(service().getTopListSongs(chartA)));
        QVERIFY(!service().isLoadingTopListSongs());
        QCOMPARE(service().currentTopList(), std::optional(chartA));
        QVERIFY(m_bench->web().sent.isEmpty());
        QCOMPARE(m_bench->console.take(), QStringList());
    }

    void allChartsAreLoadedOnePlatformAfterTheOther()
    {
        auto task = service().loadAllTopLists();
        const QStringList sources{u"netease"_s, u"kuwo"_s, u"qq"_s};
        for (const QString &source : sources) {
            QTRY_COMPARE(m_bench->web().pending.size(), 1U);
            QVERIFY(m_bench->web().pending.front().request.url.query().contains(u"source="_s + source));
            // One platform fails, and the others come all the same.
            m_bench->web().answer(source == sources.at(1) ? OnlineBench::failed(u"断了"_s)
                                                          : OnlineBench::ok(charts("榜")));
        }
        QVERIFY(await(std::move(task)));
        QCOMPARE(m_bench->web().sent.size(), 3);
        QVERIFY(service().topLists().contains(MusicPlatform::netease));
        QVERIFY(!service().topLists().contains(MusicPlatform::kuwo));
        QVERIFY(service().topLists().contains(MusicPlatform::qq));
        QVERIFY(!service().isLoadingTopLists());
    }

    void songsOfAChartAreLoadedAndLogged()
    {
        const QByteArray body = R"({"data":{"source":"netease","list":[
            {"id":"1","name":"晚风","artist":"歌手","types":["128k","flac"]},{"id":"2","name":"雨"}]}})";
        QVERIFY(m_bench->answered(service().getTopListSongs(chartA), OnlineBench::ok(body, 404)));
        const QList<OnlineSong> found = service().topListSongs();
        QCOMPARE(OnlineBench::titles(found), (QStringList{u"晚风"_s, u"雨"_s}));
        QCOMPARE(found.at(0).id, u"1"_s);
        QCOMPARE(found.at(0).artist, u"歌手"_s);
        QCOMPARE(found.at(0).album, QString());
        QCOMPARE(found.at(0).platform, MusicPlatform::qq);
        QCOMPARE(found.at(1).artist, u"未知艺术家"_s);
        QCOMPARE(m_bench->console.take(),
                 (QStringList{u"🎵 获取排行榜歌曲: http://music.test/api/?source=qq&id=a&type=toplist"_s,
                              u"📥 排行榜歌曲响应: "_s + QString::fromUtf8(body), u"✅ 获取到 2 首歌曲"_s}));
    }

    void theLogShowsTheBeginningOfAnAnswer()
    {
        const QString body = u"{\"message\":\""_s + u"雨"_s.repeated(2000) + u"\"}"_s;
        QVERIFY(m_bench->answered(service().getTopListSongs(chartA), OnlineBench::ok(body.toUtf8())));
        QCOMPARE(m_bench->console.take().at(1), u"📥 排行榜歌曲响应: "_s + body.first(800));
        QVERIFY(m_bench->answered(service().getTopLists(MusicPlatform::qq), OnlineBench::ok(body.toUtf8())));
        QCOMPARE(m_bench->console.take().at(1), u"📥 排行榜列表响应: "_s + body.first(500));
    }

    void openingAChartClearsTheOneBefore()
    {
        QVERIFY(m_bench->answered(service().getTopListSongs(chartA), OnlineBench::ok(songs("甲歌"))));
        QCOMPARE(titles(), QStringList{u"甲歌"_s});
        QStringList order;
        connect(&service(), &OnlineMusicService::currentTopListChanged, this,
                [&] { order.append(u"chart"_s); });
        connect(&service(), &OnlineMusicService::isLoadingTopListSongsChanged, this,
                [&] { order.append(u"loading"_s); });
        connect(&service(), &OnlineMusicService::topListSongsChanged, this,
                [&] { order.append(u"songs"_s); });
        const QSignalSpy changes(&service(), &OnlineMusicService::changed);
        auto task = service().getTopListSongs(chartB);
        QCOMPARE(service().currentTopList(), std::optional(chartB));
        QVERIFY(service().isLoadingTopListSongs());
        QVERIFY(titles().isEmpty());
        QCOMPARE(order, (QStringList{u"chart"_s, u"loading"_s, u"songs"_s}));
        QVERIFY(m_bench->answered(std::move(task), OnlineBench::ok(songs("乙歌"))));
        QCOMPARE(titles(), QStringList{u"乙歌"_s});
        QVERIFY(!service().isLoadingTopListSongs());
        QCOMPARE(changes.size(), order.size());
    }

    void aChartIsLoadedAnewEachTime()
    {
        QVERIFY(m_bench->answered(service().getTopListSongs(chartA), OnlineBench::ok(songs("旧歌"))));
        QVERIFY(m_bench->answered(service().getTopListSongs(chartA), OnlineBench::ok(songs("新歌"))));
        QCOMPARE(m_bench->web().sent.size(), 2);
        QCOMPARE(titles(), QStringList{u"新歌"_s});
    }

    void theListOfTheLaterAnswerStays()
    {
        auto a = service().getTopListSongs(chartA);
        auto b = service().getTopListSongs(chartB);
        m_bench->web().answer(u"id=b"_s, OnlineBench::ok(songs("乙歌")));
        m_bench->web().answer(u"id=a"_s, OnlineBench::ok(songs("甲歌")));
        QVERIFY(await(std::move(b)));
        QVERIFY(await(std::move(a)));
        QCOMPARE(service().currentTopList(), std::optional(chartB));
        QCOMPARE(titles(), QStringList{u"甲歌"_s});
    }

    void aLongListDoesNotReplaceALaterOne()
    {
        BusyWorkers workers;
        auto a = service().getTopListSongs(chartA);
        auto b = service().getTopListSongs(chartB);
        m_bench->web().answer(u"id=b"_s, OnlineBench::ok(atLength(songs("乙歌"))));
        settle();
        m_bench->web().answer(u"id=a"_s, OnlineBench::ok(songs("甲歌")));
        QVERIFY(await(std::move(a)));
        workers.release();
        QVERIFY(await(std::move(b)));
        QCOMPARE(titles(), QStringList{u"甲歌"_s});
        QVERIFY(!service().isLoadingTopListSongs());
    }

    void songsThatAWorkerStillReadsAreNotShownInTheNextChart()
    {
        BusyWorkers workers;
        auto a = service().getTopListSongs(chartA);
        m_bench->web().answer(OnlineBench::ok(atLength(songs("甲歌"))));
        settle();
        auto b = service().getTopListSongs(chartB);
        workers.release();
        QVERIFY(await(std::move(a)));
        QVERIFY(titles().isEmpty());
        QVERIFY(service().isLoadingTopListSongs());
        QVERIFY(m_bench->answered(std::move(b), OnlineBench::ok(songs("乙歌"))));
        QCOMPARE(titles(), QStringList{u"乙歌"_s});
    }

    void longChartsDoNotReplaceLaterOnes()
    {
        BusyWorkers workers;
        auto longer = service().getTopLists(MusicPlatform::qq);
        auto shorter = service().getTopLists(MusicPlatform::qq);
        auto other = service().getTopLists(MusicPlatform::kuwo);
        m_bench->web().answer(u"source=qq"_s, OnlineBench::ok(atLength(charts("先来"))));
        settle();
        m_bench->web().answer(u"source=qq"_s, OnlineBench::ok(charts("后到")));
        m_bench->web().answer(u"source=kuwo"_s, OnlineBench::ok(charts("别处")));
        QVERIFY(await(std::move(shorter)));
        QVERIFY(await(std::move(other)));
        workers.release();
        QVERIFY(await(std::move(longer)));
        QCOMPARE(names(MusicPlatform::qq), QStringList{u"后到"_s});
        QCOMPARE(names(MusicPlatform::kuwo), QStringList{u"别处"_s});
    }

    void aPlatformIsNotHeldUpByAnother()
    {
        BusyWorkers workers;
        auto longer = service().getTopLists(MusicPlatform::qq);
        auto other = service().getTopLists(MusicPlatform::kuwo);
        m_bench->web().answer(u"source=qq"_s, OnlineBench::ok(atLength(charts("先来"))));
        settle();
        m_bench->web().answer(u"source=kuwo"_s, OnlineBench::ok(charts("别处")));
        QVERIFY(await(std::move(other)));
        workers.release();
        QVERIFY(await(std::move(longer)));
        QCOMPARE(names(MusicPlatform::qq), QStringList{u"先来"_s});
    }

    void aFailedChartIsAnEmptyOne_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("said");
        const QString without = u"⚠️ 解析排行榜歌曲失败"_s;
        const QString error = u"❌ 获取排行榜歌曲错误: "_s;
        QTest::newRow("no data") << QByteArray("{}") << without;
        QTest::newRow("no list") << QByteArray(R"({"data":{"source":"qq"}})") << without;
        QTest::newRow("empty body") << QByteArray() << error;
        const QByteArray mistyped = R"({"data":{"list":[{"id":"1","name":"a","types":[1]}]}})";
        QTest::newRow("types") << mistyped << error;
    }
    void aFailedChartIsAnEmptyOne()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, said);
        QVERIFY(m_bench->answered(service().getTopListSongs(chartA), OnlineBench::ok(songs("甲歌"))));
        QVERIFY(m_bench->answered(service().getTopListSongs(chartB), OnlineBench::ok(body)));
        QVERIFY(titles().isEmpty());
        QVERIFY(!service().isLoadingTopListSongs());
        QVERIFY(!service().searchError());
        QVERIFY(m_bench->console.take().constLast().startsWith(said));
    }

    void aFailedRequestForSongsIsLogged()
    {
        QVERIFY(m_bench->answered(service().getTopListSongs(chartA), OnlineBench::failed(u"断了"_s)));
        QCOMPARE(m_bench->console.take().constLast(), u"❌ 获取排行榜歌曲错误: 断了"_s);
        QVERIFY(!service().isLoadingTopListSongs());
    }

    void aServiceThatGoesEndsItsRequests()
    {
        auto all = service().loadAllTopLists();
        auto chart = service().getTopListSongs(chartA);
        m_bench->console.take();
        m_bench->service.reset();
        QVERIFY(await(std::move(all)));
        QVERIFY(await(std::move(chart)));
        QCOMPARE(m_bench->web().pending.size(), 0U);
        QCOMPARE(m_bench->web().sent.size(), 2);
        QCOMPARE(m_bench->console.take(), QStringList());
    }
};

QTEST_GUILESS_MAIN(OnlineChartsTest)
#include "tst_online_charts.moc"
