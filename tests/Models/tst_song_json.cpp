// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/DecodingError.h"
#include "Models/Song.h"
#include "Utils/JsonWriter.h"

#include <QJsonDocument>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

SongFields fields()
{
    SongFields result;
    result.id = u"0123456789ABCDEF"_s;
    result.title = u"晴\"天\\\n"_s;
    result.artist = u"歌手"_s;
    result.album = u"专辑"_s;
    result.albumId = u"album_1"_s;
    result.duration = 59.9;
    result.trackNumber = -2;
    result.dateAdded = QDateTime(QDate(2001, 1, 1), QTime(0, 0, 1, 500), Qt::UTC);
    result.artworkURL = QUrl(u"https://h.example/c.png"_s);
    result.assetURL = QUrl::fromLocalFile(u"/m/a.mp3"_s);
    return result;
}

QByteArray written(const Song &song)
{
    JsonWriter writer;
    song.writeJson(writer);
    return writer.take();
}

QJsonObject objectOf(const Song &song)
{
    return QJsonDocument::fromJson(written(song)).object();
}

Song complete()
{
    SongFields values = fields();
    values.embeddedLyrics = u"[00:01]词"_s;
    values.artworkData = ArtworkData(QByteArray("\0\xff\x01", 3));
    return Song(values);
}

} // namespace

class SongJsonTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void writesTheTenKeysInOrder();
    void writesOptionalKeysOnlyWhenPresent();
    void writesEmptyLyricsAndCoverThatArePresent();
    void readsBackWhatItWrote();
    void readBackSongHasNoAddresses();
    void ignoresAddressesInTheText();
    void failsOnMissingRequiredKey_data();
    void failsOnMissingRequiredKey();
    void failsOnMistypedValue_data();
    void failsOnMistypedValue();
    void nullOptionalKeysMeanNone();
    void namesTheFirstMissingKey();
};

void SongJsonTest::writesTheTenKeysInOrder()
{
    QCOMPARE(written(complete()),
             QByteArray("{\"id\":\"0123456789ABCDEF\",\"title\":\"晴\\\"天\\\\\\n\",\"artist\":\"歌手\","
                        "\"album\":\"专辑\",\"albumId\":\"album_1\",\"duration\":59.9,\"trackNumber\":-2,"
                        "\"dateAdded\":1.5,\"embeddedLyrics\":\"[00:01]词\",\"artworkData\":\"AP8B\"}"));
}

void SongJsonTest::writesOptionalKeysOnlyWhenPresent()
{
    QCOMPARE(objectOf(Song(fields())).keys(),
             (QStringList{u"album"_s, u"albumId"_s, u"artist"_s, u"dateAdded"_s, u"duration"_s, u"id"_s,
                          u"title"_s, u"trackNumber"_s}));
}

void SongJsonTest::writesEmptyLyricsAndCoverThatArePresent()
{
    SongFields values = fields();
    values.embeddedLyrics = u""_s;
    values.artworkData = ArtworkData(QByteArray());
    const Song back = Song::fromJson(objectOf(Song(values)));
    QCOMPARE(back.embeddedLyrics(), std::optional(u""_s));
    QVERIFY(back.artworkData().isPresent());
    QCOMPARE(back.artworkData().size(), 0);
}

void SongJsonTest::readsBackWhatItWrote()
{
    const Song song = complete();
    const Song back = Song::fromJson(objectOf(song));
    QCOMPARE(back.id(), song.id());
    QCOMPARE(back.title(), song.title());
    QCOMPARE(back.artist(), song.artist());
    QCOMPARE(back.album(), song.album());
    QCOMPARE(back.albumId(), song.albumId());
    QCOMPARE(back.duration(), song.duration());
    QCOMPARE(back.trackNumber(), song.trackNumber());
    QCOMPARE(back.dateAdded(), song.dateAdded());
    QCOMPARE(back.embeddedLyrics(), song.embeddedLyrics());
    QCOMPARE(back.artworkData().bytes(), song.artworkData().bytes());
}

void SongJsonTest::readBackSongHasNoAddresses()
{
    const Song back = Song::fromJson(objectOf(complete()));
    QVERIFY(!back.artworkURL());
    QVERIFY(!back.assetURL());
}

void SongJsonTest::ignoresAddressesInTheText()
{
    QJsonObject object = objectOf(complete());
    object.insert(u"assetURL"_s, u"file:///m/a.mp3"_s);
    object.insert(u"artworkURL"_s, 5);
    QVERIFY(!Song::fromJson(object).assetURL());
}

void SongJsonTest::failsOnMissingRequiredKey_data()
{
    QTest::addColumn<QString>("key");
    for (const char *key :
         {"id", "title", "artist", "album", "albumId", "duration", "trackNumber", "dateAdded"})
        QTest::newRow(key) << QString::fromLatin1(key);
}

void SongJsonTest::failsOnMissingRequiredKey()
{
    QFETCH(QString, key);
    QJsonObject object = objectOf(complete());
    object.remove(key);
    QVERIFY_THROWS_EXCEPTION(DecodingError, Song::fromJson(object));
    object.insert(key, QJsonValue::Null);
    QVERIFY_THROWS_EXCEPTION(DecodingError, Song::fromJson(object));
}

void SongJsonTest::failsOnMistypedValue_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    for (const char *key : {"id", "title", "artist", "album", "albumId", "embeddedLyrics", "artworkData"})
        QTest::newRow(key) << QString::fromLatin1(key) << QJsonValue(1);
    for (const char *key : {"duration", "trackNumber", "dateAdded"})
        QTest::newRow(key) << QString::fromLatin1(key) << QJsonValue(u"1"_s);
    QTest::newRow("flag for a number") << u"duration"_s << QJsonValue(true);
    QTest::newRow("broken track number") << u"trackNumber"_s << QJsonValue(1.5);
    QTest::newRow("track number too large") << u"trackNumber"_s << QJsonValue(1e12);
    QTest::newRow("date beyond the calendar") << u"dateAdded"_s << QJsonValue(1e300);
    QTest::newRow("no base64") << u"artworkData"_s << QJsonValue(u"%%%"_s);
    QTest::newRow("list for lyrics") << u"embeddedLyrics"_s << QJsonValue(QJsonArray());
}

void SongJsonTest::failsOnMistypedValue()
{
    QFETCH(QString, key);
    QFETCH(QJsonValue, value);
    QJsonObject object = objectOf(complete());
    object.insert(key, value);
    QVERIFY_THROWS_EXCEPTION(DecodingError, Song::fromJson(object));
}

void SongJsonTest::nullOptionalKeysMeanNone()
{
    QJsonObject object = objectOf(complete());
    object.insert(u"embeddedLyrics"_s, QJsonValue::Null);
    object.insert(u"artworkData"_s, QJsonValue::Null);
    const Song song = Song::fromJson(object);
    QVERIFY(!song.embeddedLyrics());
    QVERIFY(!song.artworkData().isPresent());
}

void SongJsonTest::namesTheFirstMissingKey()
{
    QJsonObject object = objectOf(complete());
    object.remove(u"artist"_s);
    object.remove(u"dateAdded"_s);
    try {
        Song::fromJson(object);
        QFAIL("a record without an artist was read");
    } catch (const DecodingError &error) {
        QVERIFY(QByteArray(error.what()).contains("artist"));
    }
}

QTEST_GUILESS_MAIN(SongJsonTest)
#include "tst_song_json.moc"
