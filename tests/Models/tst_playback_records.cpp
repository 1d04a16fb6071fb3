// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/OnlineSong.h"
#include "Models/PlayMode.h"
#include "Models/PlaybackSnapshot.h"
#include "Models/Playlist.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(cadorel::PlayMode)

namespace {

PlaybackSnapshot snapshot()
{
    return {.songId = u"ID"_s,
            .title = u"标\"题"_s,
            .artist = u"歌手"_s,
            .album = u"专辑"_s,
            .filePath = u"/音乐/a b.mp3"_s,
            .position = 12.25,
            .duration = 200,
            .date = QDateTime(QDate(2001, 1, 1), QTime(0, 1), Qt::UTC)};
}

/// The stored form; empty when there is none.
QByteArray encoded(const PlaybackSnapshot &record)
{
    return record.encoded().value_or(QByteArray());
}

} // namespace

class PlaybackRecordsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void modeHasItsTexts_data();
    void modeHasItsTexts();
    void modeCycleIsNotTheDeclarationOrder();
    void snapshotWritesItsKeysInOrder();
    void snapshotReadsBackWhatItWrote();
    void snapshotWithoutAFiniteNumberHasNoForm_data();
    void snapshotWithoutAFiniteNumberHasNoForm();
    void snapshotThatLacksAValueIsNone_data();
    void snapshotThatLacksAValueIsNone();
    void tornSnapshotIsNone_data();
    void tornSnapshotIsNone();
    void onlineSongsAreEqualByIdAndPlatform();
    void platformsAreFoundByTheirText();
};

void PlaybackRecordsTest::modeHasItsTexts_data()
{
    QTest::addColumn<PlayMode>("mode");
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("symbolName");
    QTest::addColumn<QString>("text");
    QTest::newRow("sequential") << PlayMode::sequential << u"sequential"_s << u"list.number"_s
                                << u"顺序播放"_s;
    QTest::newRow("shuffle") << PlayMode::shuffle << u"shuffle"_s << u"shuffle"_s << u"随机播放"_s;
    QTest::newRow("repeatOne") << PlayMode::repeatOne << u"repeatOne"_s << u"repeat.1"_s << u"单曲循环"_s;
    QTest::newRow("repeatAll") << PlayMode::repeatAll << u"repeatAll"_s << u"repeat"_s << u"列表循环"_s;
}

void PlaybackRecordsTest::modeHasItsTexts()
{
    QFETCH(PlayMode, mode);
    QTEST(rawValue(mode), "raw");
    QTEST(symbol(mode), "symbolName");
    QTEST(label(mode), "text");
}

void PlaybackRecordsTest::modeCycleIsNotTheDeclarationOrder()
{
    QCOMPARE(toggled(PlayMode::sequential), PlayMode::repeatAll);
    QCOMPARE(toggled(PlayMode::repeatAll), PlayMode::shuffle);
    QCOMPARE(toggled(PlayMode::shuffle), PlayMode::repeatOne);
    QCOMPARE(toggled(PlayMode::repeatOne), PlayMode::sequential);
}

void PlaybackRecordsTest::snapshotWritesItsKeysInOrder()
{
    QCOMPARE(encoded(snapshot()),
             QByteArray("{\"songId\":\"ID\",\"title\":\"标\\\"题\",\"artist\":\"歌手\",\"album\":\"专辑\","
                        "\"filePath\":\"/音乐/a b.mp3\",\"position\":12.25,\"duration\":200,\"date\":60}"));
}

void PlaybackRecordsTest::snapshotReadsBackWhatItWrote()
{
    const PlaybackSnapshot before = snapshot();
    const std::optional<PlaybackSnapshot> decoded = PlaybackSnapshot::decoded(encoded(before));
    QVERIFY(decoded.has_value());
    const PlaybackSnapshot after = decoded.value_or(PlaybackSnapshot());
    QCOMPARE(after.songId, before.songId);
    QCOMPARE(after.title, before.title);
    QCOMPARE(after.artist, before.artist);
    QCOMPARE(after.album, before.album);
    QCOMPARE(after.filePath, before.filePath);
    QCOMPARE(after.position, before.position);
    QCOMPARE(after.duration, before.duration);
    QCOMPARE(after.date, before.date);
}

void PlaybackRecordsTest::snapshotWithoutAFiniteNumberHasNoForm_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("duration");
    QTest::newRow("position not a number") << qQNaN() << 1.0;
    QTest::newRow("position without end") << qInf() << 1.0;
    QTest::newRow("duration without end") << 1.0 << qInf();
    QTest::newRow("duration not a number") << 1.0 << qQNaN();
}

void PlaybackRecordsTest::snapshotWithoutAFiniteNumberHasNoForm()
{
    QFETCH(double, position);
    QFETCH(double, duration);
    PlaybackSnapshot record = snapshot();
    record.position = position;
    record.duration = duration;
    QVERIFY(!record.encoded());
}

void PlaybackRecordsTest::snapshotThatLacksAValueIsNone_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("mistyped");
    for (const char *key : {"songId", "title", "artist", "album", "filePath"})
        QTest::newRow(key) << QString::fromLatin1(key) << QJsonValue(1);
    for (const char *key : {"position", "duration", "date"})
        QTest::newRow(key) << QString::fromLatin1(key) << QJsonValue(u"1"_s);
}

void PlaybackRecordsTest::snapshotThatLacksAValueIsNone()
{
    QFETCH(QString, key);
    QFETCH(QJsonValue, mistyped);
    QJsonObject object = QJsonDocument::fromJson(encoded(snapshot())).object();
    QVERIFY(PlaybackSnapshot::decoded(QJsonDocument(object).toJson()));
    object.insert(key, mistyped);
    QVERIFY(!PlaybackSnapshot::decoded(QJsonDocument(object).toJson()));
    object.remove(key);
    QVERIFY(!PlaybackSnapshot::decoded(QJsonDocument(object).toJson()));
}

void PlaybackRecordsTest::tornSnapshotIsNone_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("half") << encoded(snapshot()).chopped(5);
    QTest::newRow("a list") << "[]"_ba;
    QTest::newRow("no JSON") << "\xff\xfe"_ba;
}

void PlaybackRecordsTest::tornSnapshotIsNone()
{
    QFETCH(QByteArray, json);
    QVERIFY(!PlaybackSnapshot::decoded(json));
}

void PlaybackRecordsTest::onlineSongsAreEqualByIdAndPlatform()
{
    OnlineSong song;
    song.id = u"1"_s;
    song.name = u"A"_s;
    OnlineSong renamed = song;
    renamed.name = u"B"_s;
    QVERIFY(song == renamed);
    QCOMPARE(qHash(song, 3), qHash(renamed, 3));
    OnlineSong elsewhere = song;
    elsewhere.platform = MusicPlatform::qq;
    QVERIFY(!(song == elsewhere));
}

void PlaybackRecordsTest::platformsAreFoundByTheirText()
{
    for (const MusicPlatform platform : allMusicPlatforms())
        QCOMPARE(musicPlatform(rawValue(platform)), std::optional(platform));
    QVERIFY(!musicPlatform(u"QQ"_s));
}

QTEST_GUILESS_MAIN(PlaybackRecordsTest)
#include "tst_playback_records.moc"
