// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/EncodingError.h"
#include "Models/Playlist.h"
#include "Utils/JsonWriter.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QTest>
#include <QUuid>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

template <typename Record>
QJsonObject written(const Record &record)
{
    JsonWriter writer;
    record.writeJson(writer);
    return QJsonDocument::fromJson(writer.take()).object();
}

QByteArray pixel(const QColor &color)
{
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QDateTime seconds(qint64 since1970)
{
    return QDateTime::fromSecsSinceEpoch(since1970, Qt::UTC);
}

} // namespace

class TestPlaylist : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typesHaveTheirTexts()
    {
        QCOMPARE(rawValue(PlaylistType::local), u"local"_s);
        QCOMPARE(rawValue(PlaylistType::online), u"online"_s);
        for (const PlaylistType type : {PlaylistType::local, PlaylistType::online})
            QCOMPARE(playlistType(rawValue(type)), std::optional(type));
        for (const QString &text : {u"Local"_s, u""_s, u"cloud"_s})
            QVERIFY2(!playlistType(text), qPrintable(text));
    }

    void aNewPlaylistIsLocalAndEmptyWithAnIdOfItsOwn()
    {
        const QDateTime before = QDateTime::currentDateTimeUtc();
        const Playlist playlist;
        QVERIFY(!QUuid::fromString(playlist.id).isNull());
        QVERIFY(playlist.id != Playlist().id);
        QCOMPARE(playlist.type, PlaylistType::local);
        QCOMPARE(playlist.description, QString());
        QVERIFY(!playlist.coverURL && !playlist.coverImageData);
        QVERIFY(playlist.songIds.isEmpty() && playlist.onlineSongs.isEmpty());
        QVERIFY(playlist.createdAt >= before && playlist.updatedAt >= before);
    }

    void playlistsAreEqualByIdAlone()
    {
        const Playlist playlist;
        Playlist changed = playlist;
        changed.name = u"另一个"_s;
        changed.songIds = {u"a"_s};
        QCOMPARE(changed, playlist);
        QCOMPARE((QSet<Playlist>{playlist, changed}.size()), 1);
        changed.id = u"x"_s;
        QVERIFY(changed != playlist);
    }

    void songsOfItsOwnKindAreCounted()
    {
        Playlist playlist;
        playlist.songIds = {u"a"_s, u"a"_s, u"gone"_s};
        playlist.onlineSongs = {OnlineSong()};
        QCOMPARE(playlist.songCount(), 3);
        playlist.type = PlaylistType::online;
        QCOMPARE(playlist.songCount(), 1);
    }

    void aCoverIsDecodedWhenThereIsOne()
    {
        Playlist playlist;
        QVERIFY(!playlist.coverImage());
        playlist.coverImageData = pixel(Qt::red);
        QCOMPARE(playlist.coverImage().value_or(QImage()).pixelColor(0, 0), QColor(Qt::red));
        for (const QByteArray &bytes : {QByteArray(), "no picture"_ba}) {
            playlist.coverImageData = bytes;
            QVERIFY(!playlist.coverImage());
        }
    }

    void theIdentityOfARowTellsCoverAndSecond()
    {
        Playlist playlist;
        playlist.id = u"p"_s;
        playlist.updatedAt = seconds(1'700'000'000);
        QCOMPARE(playlist.uiIdentity(), u"p|cov:0|upd:1700000000"_s);
        playlist.updatedAt = playlist.updatedAt.addMSecs(999);
        QCOMPARE(playlist.uiIdentity(), u"p|cov:0|upd:1700000000"_s);
        playlist.updatedAt = seconds(1'700'000'001);
        QCOMPARE(playlist.uiIdentity(), u"p|cov:0|upd:1700000001"_s);

        playlist.coverImageData = "one"_ba;
        const QString one = playlist.uiIdentity();
        QVERIFY(one.startsWith("p|cov:"_L1) && one.endsWith("|upd:1700000001"_L1));
        QVERIFY(!one.contains("cov:0|"_L1));
        QCOMPARE(playlist.uiIdentity(), one);
        playlist.coverImageData = "two"_ba;
        QVERIFY(playlist.uiIdentity() != one);
    }

    void allFieldsAreWrittenUnderTheirNames()
    {
        Playlist playlist;
        playlist.id = u"p/\"1"_s;
        playlist.name = u"夜 🎵\n"_s;
        playlist.description = u"描述"_s;
        playlist.type = PlaylistType::online;
        playlist.coverURL = QUrl(u"https://example.org/封面.jpg?a=1 2"_s);
        playlist.coverImageData = QByteArray("\0\xff\x10", 3);
        // 2001-01-01T00:00:00Z is where the dates of JSON begin.
        playlist.createdAt = seconds(978'307'200);
        playlist.updatedAt = QDateTime::fromMSecsSinceEpoch(978'307'201'250, Qt::UTC);
        playlist.songIds = {u"a"_s, u""_s, u"歌"_s};
        playlist.onlineSongs = {{.id = u"1"_s,
                                 .name = u"n"_s,
                                 .artist = u"r"_s,
                                 .album = u"b"_s,
                                 .platform = MusicPlatform::qq,
                                 .picUrl = u"p"_s,
                                 .lrcUrl = u"l"_s}};
        const QJsonObject song{{u"id"_s, u"1"_s},    {u"name"_s, u"n"_s},      {u"artist"_s, u"r"_s},
                               {u"album"_s, u"b"_s}, {u"platform"_s, u"qq"_s}, {u"picUrl"_s, u"p"_s},
                               {u"lrcUrl"_s, u"l"_s}};
        const QJsonObject expected{{u"id"_s, playlist.id},
                                   {u"name"_s, playlist.name},
                                   {u"description"_s, playlist.description},
                                   {u"type"_s, u"online"_s},
                                   {u"coverURL"_s, u"https://example.org/%E5%B0%81%E9%9D%A2.jpg?a=1%202"_s},
                                   {u"coverImageData"_s, u"AP8Q"_s},
                                   {u"createdAt"_s, 0},
                                   {u"updatedAt"_s, 1.25},
                                   {u"songIds"_s, QJsonArray{u"a"_s, u""_s, u"歌"_s}},
                                   {u"onlineSongs"_s, QJsonArray{song}}};
        QCOMPARE(written(playlist), expected);
    }

    void whatIsAbsentIsNotWritten()
    {
        Playlist playlist;
        QCOMPARE(written(playlist).size(), 8);
        playlist.coverURL = QUrl();
        playlist.coverImageData = QByteArray();
        const QJsonObject object = written(playlist);
        QVERIFY(!object.contains(u"coverURL"_s));
        QCOMPARE(object.value(u"coverImageData"_s), QJsonValue(u""_s));
    }

    void aDateThatIsNoneHasNoJsonForm()
    {
        Playlist playlist;
        playlist.updatedAt = QDateTime();
        QVERIFY_THROWS_EXCEPTION(EncodingError, written(playlist));
    }
};

QTEST_GUILESS_MAIN(TestPlaylist)
#include "tst_playlist.moc"
