// SPDX-License-Identifier: GPL-3.0-or-later
// That the server which other tests rely on does what those expect of it.
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Servers/PlainRequest.h"
#include "Servers/SubsonicServer.h"

#include <QCryptographicHash>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString user = u"ann@home/5% +音"_s;
const QString password = u"p:w@d/%+ \"密码\"&#"_s;

QByteArray authentication(const QString &word)
{
    const QByteArray salt = "c19b2d";
    const QByteArray token = QCryptographicHash::hash(word.toUtf8() + salt, QCryptographicHash::Md5);
    return "u=" + QUrl::toPercentEncoding(user) + "&t=" + token.toHex() + "&s=" + salt + "&v=1.16.1&c=Test";
}

PlainAnswer ask(const SubsonicServer &server, const QByteArray &endpoint, const QByteArray &items = {},
                const QString &word = password)
{
    const QByteArray target = server.address().path().toUtf8() + "/rest/" + endpoint + '?' +
                              authentication(word) + "&f=json" + items;
    return plainRequest(server.address(), "GET"_ba, target, {}).value_or(PlainAnswer{});
}

QJsonObject answerOf(const PlainAnswer &answer)
{
    return QJsonDocument::fromJson(answer.body).object().value("subsonic-response"_L1).toObject();
}

QJsonArray songsIn(const PlainAnswer &answer, QLatin1StringView list)
{
    return answerOf(answer).value(list).toObject().value("song"_L1).toArray();
}

QString statusOf(const PlainAnswer &answer)
{
    return answerOf(answer).value("status"_L1).toString();
}

QJsonObject errorOf(const PlainAnswer &answer)
{
    return answerOf(answer).value("error"_L1).toObject();
}

} // namespace

class TestSubsonicServerStart : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { m_server.stop(); }

    void passesARightTokenOn();
    void refusesAWrongTokenInTheFormatAskedFor();
    void listsAndFindsItsSongs();
    void givesSoundCoverAndLyrics();
    void asksNobodyForLyrics();
    void knowsNoLyricsById();
    void knowsNoTokensWhenPlain();
    void standsBelowAPrefix();
    void startsAgainWithTheSameIds();

private:
    QByteArray idOf(const QString &title);

    QTemporaryDir m_music;
    SubsonicServer m_server;
};

void TestSubsonicServerStart::initTestCase()
{
    QVERIFY(makeSong(m_music.filePath(u"夜航 #1.mp3"_s), {.title = u"夜航 & 星 + 100%?"_s,
                                                          .artist = u"歌手/甲"_s,
                                                          .album = u"专辑"_s,
                                                          .track = u"7"_s,
                                                          .cover = madeJpeg(Qt::red, 600),
                                                          .seconds = 3}));
    QFile lyrics(m_music.filePath(u"夜航 #1.txt"_s));
    QVERIFY(lyrics.open(QIODevice::WriteOnly));
    lyrics.write("[00:01.00]第一句\n");
    lyrics.close();
    QVERIFY(makeSong(m_music.filePath(u"plain.flac"_s), {.title = u"Plain"_s, .artist = u"Nobody"_s}));
    QVERIFY(m_server.start(m_music.path(), user, password));
}

QByteArray TestSubsonicServerStart::idOf(const QString &title)
{
    const QByteArray query = "&query=" + QUrl::toPercentEncoding(title);
    const QJsonArray found = songsIn(ask(m_server, "search3.view", query), "searchResult3"_L1);
    return found.isEmpty() ? QByteArray() : found[0].toObject().value("id"_L1).toString().toUtf8();
}

void TestSubsonicServerStart::passesARightTokenOn()
{
    QCOMPARE(statusOf(ask(m_server, "ping.view")), u"ok"_s);
    const QByteArray last = m_server.requests().constLast();
    QVERIFY2(last.startsWith("GET /rest/ping.view?u=ann%40home%2F5%25%20%2B"), last.constData());
    QVERIFY(!last.contains("p="));
}

void TestSubsonicServerStart::refusesAWrongTokenInTheFormatAskedFor()
{
    const PlainAnswer json = ask(m_server, "ping.view", {}, password + u'x');
    QCOMPARE(json.status, 200);
    QCOMPARE(statusOf(json), u"failed"_s);
    QCOMPARE(errorOf(json).value("code"_L1).toInt(), 40);
    const QByteArray target = "/rest/ping.view?" + authentication(u"other"_s);
    const auto xml = plainRequest(m_server.address(), "GET"_ba, target, {});
    QVERIFY(xml && xml->body.startsWith("<subsonic-response") && xml->body.contains("code=\"40\""));
}

void TestSubsonicServerStart::listsAndFindsItsSongs()
{
    const QJsonArray listed = songsIn(ask(m_server, "getRandomSongs.view", "&size=10"), "randomSongs"_L1);
    QCOMPARE(listed.size(), 2);
    QCOMPARE(songsIn(ask(m_server, "getRandomSongs.view", "&size=1"), "randomSongs"_L1).size(), 1);
    QVERIFY(!idOf(u"夜航"_s).isEmpty());
    QVERIFY(!idOf(u"& 星 + 100%?"_s).isEmpty());
    QVERIFY(idOf(u"& 星  100"_s).isEmpty());
}

void TestSubsonicServerStart::givesSoundCoverAndLyrics()
{
    const QByteArray id = idOf(u"夜航"_s);
    const PlainAnswer sound = ask(m_server, "stream.view", "&id=" + id);
    QFile file(m_music.filePath(u"夜航 #1.mp3"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(sound.body == file.readAll());
    QVERIFY(sound.head.contains("audio/mpeg"));
    const QImage cover = QImage::fromData(ask(m_server, "getCoverArt.view", "&size=400&id=" + id).body);
    QCOMPARE(cover.size(), QSize(400, 400));
    const QByteArray whose = "&artist=" + QUrl::toPercentEncoding(u"歌手/甲"_s) +
                             "&title=" + QUrl::toPercentEncoding(u"夜航 & 星 + 100%?"_s);
    const QJsonObject lyrics = answerOf(ask(m_server, "getLyrics.view", whose)).value("lyrics"_L1).toObject();
    QCOMPARE(lyrics.value("value"_L1).toString(), u"[00:01.00]第一句\n"_s);
}

void TestSubsonicServerStart::asksNobodyForLyrics()
{
    const PlainAnswer answer = ask(m_server, "getLyrics.view", "&artist=Nobody&title=Plain");
    QCOMPARE(statusOf(answer), u"ok"_s);
    QVERIFY(!answerOf(answer).contains("lyrics"_L1));
    // Where the server would have asked had it been let.
    QVERIFY2(m_server.log().contains("not asked: GET http"), m_server.log().constData());
}

void TestSubsonicServerStart::knowsNoLyricsById()
{
    const PlainAnswer answer = ask(m_server, "getLyricsBySongId.view", "&id=" + idOf(u"夜航"_s));
    QCOMPARE(answer.status, 404);
    QCOMPARE(errorOf(answer).value("message"_L1).toString(), u"Unknown method"_s);
}

void TestSubsonicServerStart::knowsNoTokensWhenPlain()
{
    SubsonicServer server;
    QVERIFY(server.start(m_music.path(), user, password, {.knowsTokens = false}));
    const PlainAnswer refused = ask(server, "ping.view");
    QCOMPARE(refused.status, 200);
    QCOMPARE(errorOf(refused).value("message"_L1).toString(), u"A required parameter is missing."_s);
    QCOMPARE(statusOf(ask(server, "ping.view", "&p=" + QUrl::toPercentEncoding(password))), u"ok"_s);
}

void TestSubsonicServerStart::standsBelowAPrefix()
{
    SubsonicServer server;
    QVERIFY(server.start(m_music.path(), user, password, {.prefix = u"/music/api"_s}));
    QCOMPARE(server.address().path(), u"/music/api"_s);
    QCOMPARE(statusOf(ask(server, "ping.view")), u"ok"_s);
    QCOMPARE(plainRequest(server.address(), "GET"_ba, "/rest/ping.view"_ba, {})->status, 404);
}

void TestSubsonicServerStart::startsAgainWithTheSameIds()
{
    const QByteArray id = idOf(u"夜航"_s);
    const QUrl address = m_server.address();
    m_server.stop();
    QVERIFY(!plainRequest(address, "GET"_ba, "/rest/ping.view"_ba, {}));
    QVERIFY(m_server.startAgain());
    QCOMPARE(m_server.address(), address);
    QCOMPARE(idOf(u"夜航"_s), id);
}

QTEST_GUILESS_MAIN(TestSubsonicServerStart)

#include "tst_subsonic_server_start.moc"
