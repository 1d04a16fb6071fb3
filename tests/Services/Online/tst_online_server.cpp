// SPDX-License-Identifier: GPL-3.0-or-later
// The online services and a server that speaks the API.
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/OnlineApiServer.h"
#include "Services/Online/OnlineBench.h"

#include <QTest>

#include <algorithm>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

OnlineSong onlineSong(const OnlineApiServer::Song &song)
{
    OnlineSong result;
    result.id = song.id;
    result.name = song.name;
    result.artist = song.artist;
    result.album = song.album;
    result.platform = musicPlatform(song.platform).value_or(MusicPlatform::netease);
    return result;
}

} // namespace

class OnlineServerTest : public QObject
{
    Q_OBJECT

private:
    OnlineApiServer m_server;
    std::unique_ptr<OnlineBench> m_bench;

    OnlineMusicService &service() { return *m_bench->service; }

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_server.start({u"--seconds"_s, u"1"_s})); }
    void init()
    {
        m_bench = std::make_unique<OnlineBench>();
        m_bench->machine.platform.httpClient = std::make_unique<NetworkHttpClient>();
        m_bench->api.setBaseURL(m_server.address().toString());
    }
    void cleanup()
    {
        m_bench->service.reset();
        m_bench->machine.platform.httpClient = std::make_unique<FakeHttpClient>();
        m_bench.reset();
    }

    void platforms_data()
    {
        QTest::addColumn<MusicPlatform>("platform");
        for (const MusicPlatform platform : allMusicPlatforms())
            QTest::newRow(qPrintable(rawValue(platform))) << platform;
    }

    void everySongIsFoundByItsName_data() { platforms_data(); }
    void everySongIsFoundByItsName()
    {
        QFETCH(MusicPlatform, platform);
        for (const OnlineApiServer::Song &song : OnlineApiServer::songs(rawValue(platform))) {
            QVERIFY(await(service().search(song.name, platform)));
            const QList<OnlineSong> found = service().searchResults();
            const qsizetype at = found.indexOf(onlineSong(song));
            QVERIFY2(at >= 0, qPrintable(song.name));
            QCOMPARE(found.at(at).name, song.name);
            QCOMPARE(found.at(at).artist, song.artist);
            QCOMPARE(found.at(at).album, song.album);
        }
    }

    void aSearchOfAllPlatformsNamesTheirs()
    {
        // One id on several platforms is several songs.
        const OnlineApiServer::Song song = OnlineApiServer::songs(u"netease"_s).constFirst();
        QVERIFY(await(service().aggregateSearch(song.name)));
        QVERIFY(service().searchResults().contains(onlineSong(song)));
        const OnlineApiServer::Song other = OnlineApiServer::songs(u"qq"_s).constFirst();
        QVERIFY(await(service().aggregateSearch(other.name)));
        QVERIFY(service().searchResults().contains(onlineSong(other)));
    }

    void chartsAndTheirSongs()
    {
        QVERIFY(await(service().loadAllTopLists()));
        QCOMPARE(service().topLists().size(), 3);
        for (const MusicPlatform platform : allMusicPlatforms()) {
            const QList<OnlineApiServer::Song> songs = OnlineApiServer::songs(rawValue(platform));
            const QList<TopList> charts = service().topLists().value(platform);
            QVERIFY(!charts.isEmpty());
            qsizetype shown = 0;
            for (const TopList &chart : charts) {
                QVERIFY(!chart.updateFrequency.isEmpty());
                QVERIFY(await(service().getTopListSongs(chart)));
                shown += service().topListSongs().size();
                for (const OnlineSong &song : service().topListSongs()) {
                    const auto known = std::ranges::find(songs, song.id, &OnlineApiServer::Song::id);
                    QVERIFY(known != songs.end());
                    QCOMPARE(song.name, known->name);
                    QCOMPARE(song.artist, known->artist);
                    QCOMPARE(song.platform, platform);
                }
            }
            QVERIFY(shown > 0);
        }
    }

    void addressesOfEveryForm()
    {
        for (const QString &form : {u"json"_s, u"text"_s}) {
            const auto url = await(service().getPlayUrl(
                onlineSong(OnlineApiServer::songWithAddress(u"netease"_s, form)), u"128k"_s));
            QVERIFY(url && *url);
            QVERIFY2((*url)->path().startsWith(u"/audio/netease/"_s), qPrintable(form));
            QVERIFY((*url)->path().endsWith(u"/128k.mp3"_s));
        }
        // Where the answer is the sound itself, or none, the player asks the API.
        for (const QString &form : {u"redirect"_s, u"audio"_s, u"none"_s}) {
            const OnlineSong song = onlineSong(OnlineApiServer::songWithAddress(u"netease"_s, form));
            const auto url = await(service().getPlayUrl(song, u"128k"_s));
            QVERIFY(url);
            QCOMPARE(*url, m_bench->api.getPlayUrl(song, u"128k"_s));
        }
    }

    void lyricsOfEveryKind()
    {
        for (const OnlineApiServer::Song &song : OnlineApiServer::songs(u"netease"_s)) {
            const auto lines = await(service().getLyrics(onlineSong(song)));
            QVERIFY(lines);
            if (song.lyrics == u"none"_s) {
                QVERIFY(lines->isEmpty());
                continue;
            }
            QStringList texts;
            for (const LyricLine &line : *lines)
                texts.append(line.text);
            for (const QString &verse : song.verse)
                QVERIFY2(texts.contains(verse), qPrintable(verse));
            QCOMPARE(lines->constLast().isPlainText, song.lyrics == u"plain"_s);
        }
    }
};

QTEST_GUILESS_MAIN(OnlineServerTest)
#include "tst_online_server.moc"
