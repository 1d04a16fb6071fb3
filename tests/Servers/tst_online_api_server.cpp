// SPDX-License-Identifier: GPL-3.0-or-later
// That the online music server which other tests rely on answers as those expect of it.
#include "Fixtures/Sound/RunProgram.h"
#include "Fixtures/Sound/Spectrum.h"
#include "Servers/OnlineApiServer.h"
#include "Servers/PlainRequest.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

using Song = OnlineApiServer::Song;

const QStringList &platforms()
{
    static const QStringList names{u"netease"_s, u"kuwo"_s, u"qq"_s};
    return names;
}

QList<Song> allSongs()
{
    QList<Song> songs;
    for (const QString &platform : platforms())
        songs += OnlineApiServer::songs(platform);
    return songs;
}

/// Value of a header line.
QByteArray header(const PlainAnswer &answer, const QByteArray &name)
{
    for (const QByteArray &line : answer.head.split('\n')) {
        if (line.toLower().startsWith(name.toLower() + ':'))
            return line.mid(name.size() + 1).trimmed();
    }
    return {};
}

QStringList values(const QJsonArray &list, QLatin1StringView name)
{
    QStringList result;
    for (const QJsonValue &entry : list)
        result.append(entry.toObject().value(name).toString());
    return result;
}

/// The left channel of a sound file.
std::vector<float> decoded(const QByteArray &bytes)
{
    const QTemporaryDir directory;
    QFile file(directory.filePath(u"sound"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return {};
    file.close();
    QFile raw(directory.filePath(u"raw"_s));
    if (!runProgram(u"ffmpeg"_s,
                    {u"-loglevel"_s, u"error"_s, u"-i"_s, file.fileName(), u"-af"_s, u"pan=mono|c0=c0"_s,
                     u"-ar"_s, u"48000"_s, u"-f"_s, u"f32le"_s, raw.fileName()}) ||
        !raw.open(QIODevice::ReadOnly))
        return {};
    const QByteArray samples = raw.readAll();
    std::vector<float> result(static_cast<size_t>(samples.size()) / sizeof(float));
    memcpy(result.data(), samples.constData(), result.size() * sizeof(float));
    return result;
}

void verifyTone(const QByteArray &sound, const Song &song)
{
    const std::vector<float> samples = decoded(sound);
    constexpr int sampleRate = 48'000;
    QVERIFY(samples.size() > sampleRate);
    const Spectrum::Peak peak = Spectrum(samples, sampleRate).loudest();
    constexpr double tolerance = 5;
    QVERIFY2(std::abs(peak.hertz - song.frequency) < tolerance, qPrintable(QString::number(peak.hertz)));
    QVERIFY(peak.amplitude > 0.4 && peak.amplitude < 0.6);
}

} // namespace

class TestOnlineApiServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyFormIsInTheCatalogue();
    void searchFindsSongsOfOnePlatform();
    void searchIsLimited();
    void aggregateSearchTellsThePlatform();
    void chartsAreListedWithTheirSongs();
    void soundIsLedToInEachForm_data();
    void soundIsLedToInEachForm();
    void withoutAnAddressThereIsAMessage();
    void soundComesInEveryQuality_data();
    void soundComesInEveryQuality();
    void missingQualityGivesTheBest();
    void soundComesInRanges();
    void coverIsAnsweredInEachForm();
    void lyricsAreAnsweredInEachForm();
    void unknownThingsAreRefused_data();
    void unknownThingsAreRefused();
    void requestsAreToldInOrder();
    void connectionsAreKept();
    void isGoneAfterStop();
    void brokenDataKeepsItFromStarting();

private:
    PlainAnswer get(const QString &target, const QList<QByteArray> &headers = {});
    PlainAnswer api(const QString &query) { return get(u"/api/?"_s + query); }
    QJsonObject data(const QString &query);
    PlainAnswer followed(const PlainAnswer &redirect);
    QString about(const Song &song, const QString &type)
    {
        return u"source=%1&id=%2&type=%3"_s.arg(song.platform, song.id, type);
    }
    Song songWithPicture(const QString &form);
    Song songWithLyrics(const QString &form);

    OnlineApiServer m_server;
};

void TestOnlineApiServer::initTestCase()
{
    QVERIFY(m_server.start({u"--seconds"_s, u"2"_s}));
}

PlainAnswer TestOnlineApiServer::get(const QString &target, const QList<QByteArray> &headers)
{
    return plainRequest(m_server.address(), "GET"_ba, target.toUtf8(), headers).value_or(PlainAnswer{});
}

QJsonObject TestOnlineApiServer::data(const QString &query)
{
    const PlainAnswer answer = api(query);
    const QJsonObject object = QJsonDocument::fromJson(answer.body).object();
    return answer.status == 200 && object.value("code"_L1) == 200 ? object.value("data"_L1).toObject()
                                                                  : QJsonObject();
}

PlainAnswer TestOnlineApiServer::followed(const PlainAnswer &redirect)
{
    const QUrl target = QUrl::fromEncoded(header(redirect, "location"_ba));
    return redirect.status == 302 && target.host() == m_server.address().host() &&
                   target.port() == m_server.address().port()
               ? get(target.path())
               : PlainAnswer{};
}

Song TestOnlineApiServer::songWithPicture(const QString &form)
{
    const QList<Song> songs = allSongs();
    return *std::ranges::find(songs, form, &Song::picture);
}

Song TestOnlineApiServer::songWithLyrics(const QString &form)
{
    const QList<Song> songs = allSongs();
    return *std::ranges::find(songs, form, &Song::lyrics);
}

void TestOnlineApiServer::everyFormIsInTheCatalogue()
{
    QSet<QString> pictures;
    QSet<QString> lyrics;
    QSet<int> frequencies;
    for (const QString &platform : platforms()) {
        const QList<Song> songs = OnlineApiServer::songs(platform);
        QCOMPARE(songs.size(), 12);
        QSet<QString> addresses;
        for (const Song &song : songs) {
            addresses.insert(song.address);
            pictures.insert(song.picture);
            lyrics.insert(song.lyrics);
            frequencies.insert(song.frequency);
        }
        QCOMPARE(addresses, (QSet<QString>{u"redirect"_s, u"json"_s, u"text"_s, u"audio"_s, u"none"_s}));
    }
    QCOMPARE(pictures, (QSet<QString>{u"jpeg"_s, u"png"_s, u"redirect"_s, u"error"_s}));
    QCOMPARE(lyrics, (QSet<QString>{u"lrc"_s, u"plain"_s, u"none"_s}));
    // Each song is known by its tone.
    QCOMPARE(frequencies.size(), 36);
}

void TestOnlineApiServer::searchFindsSongsOfOnePlatform()
{
    const QJsonObject found = data(u"source=kuwo&type=search&keyword=%E9%98%BF%E7%AE%AC&limit=20"_s);
    const QJsonArray results = found.value("results"_L1).toArray();
    QStringList expected;
    for (const Song &song : OnlineApiServer::songs(u"kuwo"_s)) {
        if (song.artist.contains(u"阿箬"_s))
            expected.append(song.id);
    }
    QVERIFY(!expected.isEmpty());
    QCOMPARE(values(results, "id"_L1), expected);
    QCOMPARE(found.value("total"_L1).toInt(), expected.size());
    QCOMPARE(found.value("keyword"_L1).toString(), u"阿箬"_s);
    for (const QJsonValue &result : results) {
        for (const QString &name : {u"name"_s, u"artist"_s, u"album"_s, u"url"_s})
            QVERIFY(!result.toObject().value(name).toString().isEmpty());
        QVERIFY(!result.toObject().contains("platform"_L1));
    }
    QCOMPARE(data(u"source=qq&type=search&keyword=lantern%20ferry&limit=20"_s).value("total"_L1).toInt(), 1);
    QCOMPARE(data(u"source=qq&type=search&keyword=zzz&limit=20"_s).value("results"_L1), QJsonArray());
}

void TestOnlineApiServer::searchIsLimited()
{
    const QString query = u"source=netease&type=search&keyword=%E7%A0%9A%E6%BA%AA&limit="_s;
    const QJsonObject all = data(query + u"20"_s);
    QVERIFY(all.value("total"_L1).toInt() > 1);
    const QJsonObject one = data(query + u"1"_s);
    QCOMPARE(one.value("results"_L1).toArray().size(), 1);
    QCOMPARE(one.value("total"_L1), all.value("total"_L1));
}

void TestOnlineApiServer::aggregateSearchTellsThePlatform()
{
    const QJsonArray results =
        data(u"type=aggregateSearch&keyword=%E5%8F%B7%E7%A0%81&limit=100"_s).value("results"_L1).toArray();
    // One id on two platforms is two songs.
    QCOMPARE(values(results, "id"_L1), (QStringList{u"1001"_s, u"1001"_s}));
    QCOMPARE(values(results, "platform"_L1), (QStringList{u"netease"_s, u"kuwo"_s}));
    QVERIFY(results.at(0).toObject().value("name"_L1) != results.at(1).toObject().value("name"_L1));
}

void TestOnlineApiServer::chartsAreListedWithTheirSongs()
{
    int empty = 0;
    int withoutFrequency = 0;
    for (const QString &platform : platforms()) {
        const QJsonArray charts = data(u"source=%1&type=toplists"_s.arg(platform)).value("list"_L1).toArray();
        QCOMPARE(charts.size(), 3);
        for (const QJsonValue &chart : charts) {
            withoutFrequency += !chart.toObject().contains("updateFrequency"_L1);
            const QJsonObject content = data(
                u"source=%1&id=%2&type=toplist"_s.arg(platform, chart.toObject().value("id"_L1).toString()));
            QCOMPARE(content.value("source"_L1).toString(), platform);
            const QJsonArray songs = content.value("list"_L1).toArray();
            empty += songs.isEmpty();
            for (const QJsonValue &song : songs)
                QVERIFY(!song.toObject().value("types"_L1).toArray().isEmpty());
        }
    }
    QCOMPARE(empty, 1);
    QCOMPARE(withoutFrequency, 3);
}

void TestOnlineApiServer::soundIsLedToInEachForm_data()
{
    QTest::addColumn<QString>("form");
    for (const QString &form : {u"redirect"_s, u"json"_s, u"text"_s, u"audio"_s})
        QTest::newRow(qPrintable(form)) << form;
}

void TestOnlineApiServer::soundIsLedToInEachForm()
{
    QFETCH(const QString, form);
    const Song song = OnlineApiServer::songWithAddress(u"netease"_s, form);
    const PlainAnswer answer = api(about(song, u"url"_s) + u"&br=320k"_s);
    if (form == "redirect"_L1) {
        verifyTone(followed(answer).body, song);
        return;
    }
    QCOMPARE(answer.status, 200);
    if (form == "audio"_L1) {
        QCOMPARE(header(answer, "content-type"_ba), "audio/mpeg"_ba);
        verifyTone(answer.body, song);
        return;
    }
    if (form == "text"_L1)
        QVERIFY(answer.body.endsWith('\n'));
    const QString address = form == "json"_L1
                                ? QJsonDocument::fromJson(answer.body).object().value("url"_L1).toString()
                                : QString::fromUtf8(answer.body).trimmed();
    QVERIFY(address.startsWith(m_server.address().toString() + u"audio/"_s));
    verifyTone(get(QUrl(address).path()).body, song);
}

void TestOnlineApiServer::withoutAnAddressThereIsAMessage()
{
    const Song song = OnlineApiServer::songWithAddress(u"qq"_s, u"none"_s);
    const PlainAnswer answer = api(about(song, u"url"_s));
    QCOMPARE(answer.status, 200);
    const QJsonObject object = QJsonDocument::fromJson(answer.body).object();
    QVERIFY(object.contains("message"_L1) && !object.contains("url"_L1));
}

void TestOnlineApiServer::soundComesInEveryQuality_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("128k") << "audio/mpeg"_ba;
    QTest::newRow("192k") << "audio/mpeg"_ba;
    QTest::newRow("320k") << "audio/mpeg"_ba;
    QTest::newRow("flac") << "audio/flac"_ba;
}

void TestOnlineApiServer::soundComesInEveryQuality()
{
    QFETCH(const QByteArray, type);
    const QString quality = QString::fromLatin1(QTest::currentDataTag());
    const Song song = OnlineApiServer::songWithAddress(u"kuwo"_s, u"audio"_s);
    const PlainAnswer answer = api(about(song, u"url"_s) + u"&br="_s + quality);
    QCOMPARE(header(answer, "content-type"_ba), type);
    verifyTone(answer.body, song);
    if (type != "audio/mpeg"_ba)
        return;
    constexpr int bytesPerKilobit = 125;
    constexpr int seconds = 2;
    const auto expected = quality.chopped(1).toInt() * bytesPerKilobit * seconds;
    QVERIFY(std::abs(answer.body.size() - expected) < expected / 10);
}

void TestOnlineApiServer::missingQualityGivesTheBest()
{
    const QList<Song> songs = allSongs();
    const auto song = std::ranges::find(songs, QStringList{u"128k"_s}, &Song::qualities);
    QVERIFY(song != songs.end());
    const PlainAnswer answer = api(about(*song, u"url"_s) + u"&br=flac"_s);
    QVERIFY(header(answer, "location"_ba).endsWith("/128k.mp3"));
    verifyTone(followed(answer).body, *song);
    QString better = QUrl::fromEncoded(header(answer, "location"_ba)).path();
    QCOMPARE(get(better.replace(u"128k"_s, u"320k"_s)).status, 404);
}

void TestOnlineApiServer::soundComesInRanges()
{
    const QString target =
        u"/api/?"_s + about(OnlineApiServer::songWithAddress(u"qq"_s, u"audio"_s), u"url"_s);
    const QByteArray whole = get(target).body;
    const auto size = QByteArray::number(whole.size());
    struct Row
    {
        QByteArray range;
        QByteArray told;
        QByteArray part;
    };
    const QList<Row> rows = {
        {"bytes=0-99"_ba, "bytes 0-99/" + size, whole.first(100)},
        {"bytes=100-"_ba, "bytes 100-" + QByteArray::number(whole.size() - 1) + '/' + size, whole.mid(100)},
        {"bytes=-10"_ba,
         "bytes " + QByteArray::number(whole.size() - 10) + '-' + QByteArray::number(whole.size() - 1) + '/' +
             size,
         whole.last(10)},
    };
    for (const Row &row : rows) {
        const PlainAnswer answer = get(target, {"Range: " + row.range});
        QCOMPARE(answer.status, 206);
        QCOMPARE(header(answer, "content-range"_ba), row.told);
        QVERIFY(answer.body == row.part);
    }
    const PlainAnswer beyond = get(target, {"Range: bytes=" + size + '-'});
    QCOMPARE(beyond.status, 416);
    QCOMPARE(header(beyond, "content-range"_ba), "bytes */" + size);
}

void TestOnlineApiServer::coverIsAnsweredInEachForm()
{
    const PlainAnswer jpeg = api(about(songWithPicture(u"jpeg"_s), u"pic"_s));
    QCOMPARE(header(jpeg, "content-type"_ba), "image/jpeg"_ba);
    QCOMPARE(QImage::fromData(jpeg.body, "JPEG").size(), QSize(400, 400));
    const PlainAnswer png = api(about(songWithPicture(u"png"_s), u"pic"_s));
    QCOMPARE(header(png, "content-type"_ba), "image/png"_ba);
    QCOMPARE(QImage::fromData(png.body, "PNG").size(), QSize(400, 400));
    const PlainAnswer elsewhere = followed(api(about(songWithPicture(u"redirect"_s), u"pic"_s)));
    QCOMPARE(QImage::fromData(elsewhere.body).size(), QSize(400, 400));
    const PlainAnswer error = api(about(songWithPicture(u"error"_s), u"pic"_s));
    QCOMPARE(error.status, 200);
    QVERIFY(QJsonDocument::fromJson(error.body).object().contains("message"_L1));
}

void TestOnlineApiServer::lyricsAreAnsweredInEachForm()
{
    const Song timed = songWithLyrics(u"lrc"_s);
    const QString lrc = QString::fromUtf8(api(about(timed, u"lrc"_s)).body);
    QVERIFY(lrc.contains(u"[ti:%1]"_s.arg(timed.name)));
    QVERIFY(lrc.contains(QRegularExpression(u"\\[00:0\\d\\.\\d\\d]"_s + timed.verse.constFirst())));
    const Song plain = songWithLyrics(u"plain"_s);
    QCOMPARE(QString::fromUtf8(api(about(plain, u"lrc"_s)).body), plain.verse.join(u'\n'));
    const PlainAnswer none = api(about(songWithLyrics(u"none"_s), u"lrc"_s));
    QCOMPARE(none.status, 200);
    QVERIFY(none.body.isEmpty());
}

void TestOnlineApiServer::unknownThingsAreRefused_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("status");
    QTest::newRow("platform") << u"/api/?source=other&type=toplists"_s << 400;
    QTest::newRow("type") << u"/api/?source=qq&type=other"_s << 400;
    QTest::newRow("song") << u"/api/?source=qq&id=none&type=url"_s << 404;
    QTest::newRow("chart") << u"/api/?source=qq&id=none&type=toplist"_s << 404;
    QTest::newRow("path") << u"/other"_s << 404;
    QTest::newRow("sound") << u"/audio/qq/99/128k.mp3"_s << 404;
    QTest::newRow("quality") << u"/audio/qq/0/999k.mp3"_s << 404;
    QTest::newRow("way out of the folder") << u"/audio/../../etc/passwd"_s << 404;
}

void TestOnlineApiServer::unknownThingsAreRefused()
{
    QFETCH(const QString, target);
    QFETCH(const int, status);
    QCOMPARE(get(target).status, status);
}

void TestOnlineApiServer::requestsAreToldInOrder()
{
    const qsizetype before = m_server.requests().size();
    get(u"/api/?source=qq&type=toplists"_s);
    get(u"/api/?source=qq&id=5&type=toplist"_s);
    QCOMPARE(m_server.requests().mid(before), (QStringList{u"GET /api/?source=qq&type=toplists"_s,
                                                           u"GET /api/?source=qq&id=5&type=toplist"_s}));
}

void TestOnlineApiServer::connectionsAreKept()
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, static_cast<quint16>(m_server.address().port()));
    QVERIFY(socket.waitForConnected());
    QByteArray received;
    for (int request = 1; request <= 2; ++request) {
        socket.write("GET /api/?source=qq&type=toplists HTTP/1.1\r\nHost: localhost\r\n\r\n");
        const auto answers = [&received] { return received.count("HTTP/1.1 200"); };
        while (answers() < request || !received.endsWith("]}}")) {
            QVERIFY(socket.waitForReadyRead(10'000));
            received += socket.readAll();
        }
    }
}

void TestOnlineApiServer::isGoneAfterStop()
{
    OnlineApiServer other;
    QVERIFY(other.start());
    const QUrl address = other.address();
    QVERIFY(address != m_server.address());
    QVERIFY(plainRequest(address, "GET"_ba, "/api/?source=qq&type=toplists"_ba, {}));
    other.stop();
    QVERIFY(!plainRequest(address, "GET"_ba, "/api/?source=qq&type=toplists"_ba, {}));
    QVERIFY(other.start());
    QVERIFY(other.requests().isEmpty());
}

void TestOnlineApiServer::brokenDataKeepsItFromStarting()
{
    const QTemporaryDir directory;
    OnlineApiServer other;
    QVERIFY(!other.start({u"--data"_s, directory.path()}));
    for (const QString &platform : platforms()) {
        QFile file(directory.filePath(platform + u".json"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(R"({"songs": [{"id": "1", "name": "词", "artist": "", "album": "", "frequency": 400,
                       "verse": [], "address": "elsewhere"}], "toplists": []})");
    }
    QVERIFY(!other.start({u"--data"_s, directory.path()}));
}

QTEST_GUILESS_MAIN(TestOnlineApiServer)
#include "tst_online_api_server.moc"
