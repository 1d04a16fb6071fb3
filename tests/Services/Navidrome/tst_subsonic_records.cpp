// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Subsonic/SubsonicRefusal.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QByteArray answer(const QByteArray &members)
{
    return R"({"subsonic-response":{"status":"ok","version":"1.16.1")" + members + "}}";
}

QByteArray listing(const QByteArray &song)
{
    return answer(R"(,"randomSongs":{"song":[{"id":"0","title":"first"},)" + song + "]}");
}

} // namespace

class TestSubsonicRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPing()
    {
        const auto response = decodedAnswer<SubsonicPingResponse>(answer({}));
        QVERIFY(response);
        QCOMPARE(response->subsonicResponse.status, u"ok"_s);
        QCOMPARE(response->subsonicResponse.version, u"1.16.1"_s);
        QVERIFY(!response->subsonicResponse.error);
    }

    void aRefusal()
    {
        const auto response = decodedAnswer<SubsonicPingResponse>(
            R"({"subsonic-response":{"status":"failed","error":{"code":40,"message":"不对"}}})");
        QVERIFY(response);
        QVERIFY(!response->subsonicResponse.version);
        QCOMPARE(response->subsonicResponse.error->code, 40);
        QCOMPARE(response->subsonicResponse.error->message, u"不对"_s);
    }

    void aSongWithAllItsKeys()
    {
        const auto response = decodedAnswer<SubsonicRandomSongsResponse>(listing(
            R"({"id":"1","title":"t","artist":"a","album":"b","albumId":"c","duration":180,"track":2,
                "coverArt":"d","genre":7,"artists":[{"id":1}]})"));
        QVERIFY(response);
        const SubsonicSong song = response->subsonicResponse.randomSongs->song->at(1);
        QCOMPARE(song.id, u"1"_s);
        QCOMPARE(song.title, u"t"_s);
        QCOMPARE(song.artist, u"a"_s);
        QCOMPARE(song.album, u"b"_s);
        QCOMPARE(song.albumId, u"c"_s);
        QCOMPARE(song.duration, 180);
        QCOMPARE(song.track, 2);
        QCOMPARE(song.coverArt, u"d"_s);
    }

    void whatASongMayLack()
    {
        const auto response = decodedAnswer<SubsonicRandomSongsResponse>(listing(
            R"({"id":"1","title":"t","artist":null,"album":null,"albumId":null,"duration":null,"track":null,
                "coverArt":null})"));
        QVERIFY(response);
        for (const SubsonicSong &song : *response->subsonicResponse.randomSongs->song) {
            QVERIFY(!song.artist && !song.album && !song.albumId && !song.coverArt);
            QVERIFY(!song.duration && !song.track);
        }
    }

    void aWholeNumberMayBeWrittenWithAPoint()
    {
        const auto response = decodedAnswer<SubsonicRandomSongsResponse>(
            listing(R"({"id":"1","title":"t","duration":180.0,"track":20240101123})"));
        QVERIFY(response);
        QCOMPARE(response->subsonicResponse.randomSongs->song->at(1).duration, 180);
        QCOMPARE(response->subsonicResponse.randomSongs->song->at(1).track, 20'240'101'123);
    }

    void oneSongThatIsNoneFailsTheAnswer_data()
    {
        QTest::addColumn<QByteArray>("song");
        QTest::newRow("no id") << QByteArray(R"({"title":"t"})");
        QTest::newRow("a number as id") << QByteArray(R"({"id":1,"title":"t"})");
        QTest::newRow("null as id") << QByteArray(R"({"id":null,"title":"t"})");
        QTest::newRow("no title") << QByteArray(R"({"id":"1"})");
        QTest::newRow("a number as title") << QByteArray(R"({"id":"1","title":7})");
        QTest::newRow("null as title") << QByteArray(R"({"id":"1","title":null})");
        QTest::newRow("a number as artist") << QByteArray(R"({"id":"1","title":"t","artist":1})");
        QTest::newRow("a list as album") << QByteArray(R"({"id":"1","title":"t","album":[]})");
        QTest::newRow("a number as album id") << QByteArray(R"({"id":"1","title":"t","albumId":3})");
        QTest::newRow("a number as cover") << QByteArray(R"({"id":"1","title":"t","coverArt":3})");
        QTest::newRow("part of a second") << QByteArray(R"({"id":"1","title":"t","duration":180.5})");
        QTest::newRow("a text as duration") << QByteArray(R"({"id":"1","title":"t","duration":"180"})");
        QTest::newRow("true as duration") << QByteArray(R"({"id":"1","title":"t","duration":true})");
        QTest::newRow("an endless duration") << QByteArray(R"({"id":"1","title":"t","duration":1e300})");
        QTest::newRow("a text as track") << QByteArray(R"({"id":"1","title":"t","track":"2"})");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("a text") << QByteArray("\"song\"");
        QTest::newRow("a list") << QByteArray("[]");
    }
    void oneSongThatIsNoneFailsTheAnswer()
    {
        QFETCH(const QByteArray, song);
        QVERIFY(decodedAnswer<SubsonicRandomSongsResponse>(listing(R"({"id":"1","title":"t"})")));
        QVERIFY(!decodedAnswer<SubsonicRandomSongsResponse>(listing(song)));
    }

    void listsThatAreNotThere_data()
    {
        QTest::addColumn<QByteArray>("members");
        QTest::newRow("no list") << QByteArray();
        QTest::newRow("null") << QByteArray(R"(,"randomSongs":null,"searchResult3":null)");
        QTest::newRow("no songs") << QByteArray(R"(,"randomSongs":{},"searchResult3":{"artist":[]})");
        QTest::newRow("null songs") << QByteArray(
            R"(,"randomSongs":{"song":null},"searchResult3":{"song":null})");
    }
    void listsThatAreNotThere()
    {
        QFETCH(const QByteArray, members);
        const auto random = decodedAnswer<SubsonicRandomSongsResponse>(answer(members));
        QVERIFY(random);
        QVERIFY(!random->subsonicResponse.randomSongs || !random->subsonicResponse.randomSongs->song);
        const auto found = decodedAnswer<SubsonicSearch3Response>(answer(members));
        QVERIFY(found);
        QVERIFY(!found->subsonicResponse.searchResult3 || !found->subsonicResponse.searchResult3->song);
    }

    void lyrics()
    {
        const auto response = decodedAnswer<SubsonicLyricsResponse>(
            answer(R"(,"lyrics":{"artist":"a","title":"t","value":"[00:01.00]词"})"));
        QVERIFY(response);
        QCOMPARE(response->subsonicResponse.lyrics->artist, u"a"_s);
        QCOMPARE(response->subsonicResponse.lyrics->title, u"t"_s);
        QCOMPARE(response->subsonicResponse.lyrics->value, u"[00:01.00]词"_s);
        QVERIFY(!decodedAnswer<SubsonicLyricsResponse>(answer({}))->subsonicResponse.lyrics);
        QVERIFY(!decodedAnswer<SubsonicLyricsResponse>(answer(R"(,"lyrics":{"value":1})")));
        QVERIFY(!decodedAnswer<SubsonicLyricsResponse>(answer(R"(,"lyrics":["词"])")));
    }

    void whatIsNoAnswer_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a page") << QByteArray("<html><body>请登录</body></html>");
        QTest::newRow("XML") << QByteArray(R"(<subsonic-response status="ok"/>)");
        QTest::newRow("half of it") << answer({}).chopped(1);
        QTest::newRow("no UTF-8") << answer(",\"version2\":\"\xff\xfe\"");
        QTest::newRow("a list") << QByteArray("[]");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("without the envelope") << QByteArray(R"({"status":"ok"})");
        QTest::newRow("a list as envelope") << QByteArray(R"({"subsonic-response":[]})");
        QTest::newRow("null as envelope") << QByteArray(R"({"subsonic-response":null})");
        QTest::newRow("no status") << QByteArray(R"({"subsonic-response":{"version":"1"}})");
        QTest::newRow("a number as status") << QByteArray(R"({"subsonic-response":{"status":1}})");
        QTest::newRow("a number as version")
            << QByteArray(R"({"subsonic-response":{"status":"ok","version":1.16}})");
        QTest::newRow("a text as error")
            << QByteArray(R"({"subsonic-response":{"status":"failed","error":"x"}})");
        QTest::newRow("a text as code")
            << QByteArray(R"({"subsonic-response":{"status":"failed","error":{"code":"40"}}})");
        QTest::newRow("a number as message")
            << QByteArray(R"({"subsonic-response":{"status":"failed","error":{"message":40}}})");
        QTest::newRow("nested without end") << QByteArray(100'000, '[');
    }
    void whatIsNoAnswer()
    {
        QFETCH(const QByteArray, body);
        QVERIFY(!decodedAnswer<SubsonicPingResponse>(body));
        QVERIFY(!decodedAnswer<SubsonicRandomSongsResponse>(body));
        QVERIFY(!decodedAnswer<SubsonicSearch3Response>(body));
        QVERIFY(!decodedAnswer<SubsonicLyricsResponse>(body));
    }

    void whatAServerSaysIsShownWithoutTheSignature_data()
    {
        QTest::addColumn<QString>("said");
        QTest::addColumn<QString>("shown");
        const QString longText(longestRefusal, u'长');
        const QString token(32, u'a');
        QTest::newRow("plain") << u"Wrong username or password"_s << u"Wrong username or password"_s;
        QTest::newRow("nothing") << QString() << QString();
        QTest::newRow("the address") << u"no /x.view?u=me&t="_s + token + u"&s=salt12salt12&v=1"_s
                                     << u"no /x.view?u=me&t=…&s=…&v=1"_s;
        QTest::newRow("upper case") << token.toUpper() << u"…"_s;
        QTest::newRow("as long as can be") << longText << longText;
        QTest::newRow("longer") << longText + u'长' << longText.chopped(1) + u'…';
        QTest::newRow("a character cut in two")
            << longText.chopped(2) + u"🎵长"_s << longText.chopped(2) + u'…';
        QTest::newRow("a secret cut in two")
            << token.repeated(63) + u" "_s + token + u"x"_s << QString(31, u'…');
    }
    void whatAServerSaysIsShownWithoutTheSignature()
    {
        QFETCH(const QString, said);
        QFETCH(const QString, shown);
        const QUrl asked(u"http://music.test/x.view?u=me&t="_s + QString(32, u'a') +
                         u"&s=salt12salt12&v=1.16.1"_s);
        const auto error = fitToShow(SubsonicError{.code = 40, .message = said}, asked);
        QVERIFY(error);
        QCOMPARE(error->code, std::optional<qint64>(40));
        QCOMPARE(error->message, std::optional(shown));
    }

    void aServerThatSaysNothingStaysSilent()
    {
        QVERIFY(!fitToShow(std::nullopt, QUrl()));
        QVERIFY(!fitToShow(SubsonicError{}, QUrl())->message);
        QCOMPARE(fitToShow(SubsonicError{.code = {}, .message = u"x"_s}, QUrl())->message, u"x"_s);
    }

    void aListThatIsNoListFailsTheAnswer()
    {
        QVERIFY(!decodedAnswer<SubsonicRandomSongsResponse>(
            answer(R"(,"randomSongs":{"song":{"id":"1","title":"t"}})")));
        QVERIFY(!decodedAnswer<SubsonicRandomSongsResponse>(answer(R"(,"randomSongs":[])")));
        QVERIFY(!decodedAnswer<SubsonicSearch3Response>(
            answer(R"(,"searchResult3":{"song":{"id":"1","title":"t"}})")));
        QVERIFY(!decodedAnswer<SubsonicSearch3Response>(answer(R"(,"searchResult3":"none")")));
    }
};

QTEST_GUILESS_MAIN(TestSubsonicRecords)
#include "tst_subsonic_records.moc"
