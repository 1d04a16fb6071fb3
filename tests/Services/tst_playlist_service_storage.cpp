// SPDX-License-Identifier: GPL-3.0-or-later
// How playlists are kept: what is stored, when, and what becomes of a store that is damaged.
#include "Platform/Sql/SqlitePreferences.h"
#include "Services/PlaylistBench.h"
#include "Services/Playlists/PlaylistText.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString loadFailure = u"Failed to load playlists: "_s;
const QString saveFailure = u"Failed to save playlists: "_s;

QJsonObject songRecord()
{
    return {{u"id"_s, u"1"_s},        {u"name"_s, u"n"_s},   {u"artist"_s, u"r"_s}, {u"album"_s, u"b"_s},
            {u"platform"_s, u"qq"_s}, {u"picUrl"_s, u"p"_s}, {u"lrcUrl"_s, u"l"_s}};
}

QJsonObject record(const QString &id = u"p"_s)
{
    return {{u"id"_s, id},
            {u"name"_s, u"歌单"_s},
            {u"description"_s, u""_s},
            {u"type"_s, u"online"_s},
            {u"createdAt"_s, 700000000},
            {u"updatedAt"_s, 700000000.5},
            {u"songIds"_s, QJsonArray{u"a"_s}},
            {u"onlineSongs"_s, QJsonArray{songRecord()}}};
}

QByteArray listOf(const QList<QJsonObject> &records)
{
    QJsonArray array;
    for (const QJsonObject &object : records)
        array.append(object);
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QJsonObject with(QJsonObject object, const QString &key, const QJsonValue &value)
{
    object.insert(key, value);
    return object;
}

QJsonObject without(QJsonObject object, const QString &key)
{
    object.remove(key);
    return object;
}

QJsonObject withSong(const QJsonValue &song)
{
    return with(record(), u"onlineSongs"_s, QJsonArray{song});
}

/// Every value of the playlists, as text.
QString everything(const QList<Playlist> &playlists)
{
    QString text;
    for (const Playlist &playlist : playlists) {
        text += playlist.id + u'|' + playlist.name + u'|' + playlist.description + u'|' +
                rawValue(playlist.type) + u'|' + playlist.coverURL.value_or(QUrl()).toString() + u'|' +
                QString::fromLatin1(playlist.coverImageData.value_or("none"_ba).toHex()) + u'|' +
                playlist.createdAt.toString(Qt::ISODateWithMs) + u'|' +
                playlist.updatedAt.toString(Qt::ISODateWithMs) + u'|' + playlist.songIds.join(u',') + u'\n';
        for (const OnlineSong &song : playlist.onlineSongs) {
            text += song.id + u'|' + song.name + u'|' + song.artist + u'|' + song.album + u'|' +
                    rawValue(song.platform) + u'|' + song.picUrl + u'|' + song.lrcUrl + u'\n';
        }
    }
    return text;
}

} // namespace

class TestPlaylistServiceStorage : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PlaylistBench> m_bench;

    PlaylistService &service() { return *m_bench->service; }
    QByteArray storedNow()
    {
        return m_bench->machine.preferences().dataValue(PlaylistBench::key).value_or("");
    }
    QString storedPlaylists()
    {
        const auto playlists = playlistsFromText(storedNow());
        return playlists ? everything(*playlists) : playlists.error();
    }
    /// A change at random, of any kind.
    void changeSomething(QRandomGenerator &random)
    {
        const auto number = [&random](qsizetype below) {
            return static_cast<qsizetype>(random.bounded(static_cast<quint32>(below)));
        };
        const Playlist playlist = service().playlists().at(number(service().playlists().size()));
        const QString id = QString::number(number(20));
        switch (number(9)) {
        case 0:
            m_bench->local(id);
            break;
        case 1:
            m_bench->online(id);
            break;
        case 2:
            if (service().playlists().size() > 3)
                service().deletePlaylist(playlist);
            break;
        case 3:
            service().renamePlaylist(playlist, id);
            break;
        case 4:
            service().removeCoverImage(playlist);
            break;
        case 5: {
            Playlist covered = playlist;
            covered.coverImageData = QByteArray(number(200), static_cast<char>(number(256)));
            service().updatePlaylist(covered);
            break;
        }
        case 6:
            service().toggleFavorite(PlaylistBench::song(id));
            break;
        case 7:
            service().toggleFavorite(PlaylistBench::onlineSong(id));
            break;
        default:
            service().addSongs({PlaylistBench::song(id)}, playlist);
            service().addOnlineSongs({PlaylistBench::onlineSong(id)}, playlist);
        }
    }

private Q_SLOTS:
    void init() { m_bench = std::make_unique<PlaylistBench>(); }
    void cleanup() { m_bench.reset(); }

    void aFreshStoreIsStoredWithItsFavourites()
    {
        m_bench->start();
        settle();
        QCOMPARE(storedPlaylists(), everything(service().playlists()));
        QCOMPARE(service().playlists().size(), 2);
        QCOMPARE(m_bench->console.take(), QStringList());
    }

    void aStoreWithFavouritesIsNotWrittenAtTheStart()
    {
        m_bench->start();
        m_bench->start();
        settle();
        QCOMPARE(m_bench->machine.preferences().writes(), 1);
    }

    void everyChangeIsStoredWhenTheEventLoopComesRound()
    {
        m_bench->start();
        // The same changes each time that the test runs.
        QRandomGenerator random(7); // NOLINT(bugprone-random-generator-seed)
        for (int round = 0; round < 500; ++round) {
            m_bench->passSeconds(static_cast<int>(random.bounded(2)));
            changeSomething(random);
            settle();
            QCOMPARE(storedPlaylists(), everything(service().playlists()));
        }
    }

    void changesOfOneTurnShareAWrite()
    {
        m_bench->start();
        settle();
        const int writes = m_bench->machine.preferences().writes();
        const Playlist playlist = m_bench->local();
        for (int number = 0; number < 100; ++number)
            service().addSong(PlaylistBench::song(QString::number(number)), playlist);
        QCOMPARE(m_bench->machine.preferences().writes(), writes);
        settle();
        QCOMPARE(m_bench->machine.preferences().writes(), writes + 1);
        QCOMPARE(storedPlaylists(), everything(service().playlists()));
    }

    void aChangeRightBeforeTheEndIsStored()
    {
        m_bench->start();
        m_bench->local(u"最后"_s);
        const QString expected = everything(service().playlists());
        m_bench->storedText();
        QCOMPARE(storedPlaylists(), expected);
    }

    void aLargeStoreIsEncodedBesideTheMainThreadAndItsLastStateLands()
    {
        m_bench->start();
        Playlist big = m_bench->local();
        constexpr qsizetype coverBytes = 600'000;
        big.coverImageData = QByteArray(coverBytes, 'c');
        service().updatePlaylist(big);
        QTRY_COMPARE(storedPlaylists(), everything(service().playlists()));
        // Changes while a state is being encoded.
        for (int number = 0; number < 20; ++number) {
            service().toggleFavorite(PlaylistBench::song(QString::number(number)));
            settle();
        }
        QTRY_COMPARE(storedPlaylists(), everything(service().playlists()));
        QCOMPARE(service().favoritesPlaylist()->songCount(), 20);

        // The end in the middle of it.
        for (const QString &id : {u"x"_s, u"y"_s}) {
            service().toggleFavorite(PlaylistBench::song(id));
            QCoreApplication::processEvents();
        }
        const QString expected = everything(service().playlists());
        m_bench->storedText();
        QCOMPARE(storedPlaylists(), expected);
    }

    void realPreferencesBringALargeStoreBack()
    {
        const QTemporaryDir home;
        Platform &platform = m_bench->machine.platform;
        const QString file = home.filePath(u"preferences.sqlite"_s);
        platform.preferences = std::make_unique<SqlitePreferences>(file);
        m_bench->start();
        QList<Song> songs;
        for (int number = 0; number < 5'000; ++number)
            songs.append(PlaylistBench::song(u"song_%1"_s.arg(number)));
        service().addSongs(songs, *service().favoritesPlaylist());
        for (int number = 0; number < 40; ++number) {
            Playlist playlist = m_bench->online(QString::number(number));
            constexpr qsizetype coverBytes = 40'000;
            playlist.coverImageData = QByteArray(coverBytes, static_cast<char>(number));
            service().updatePlaylist(playlist);
            settle();
        }
        service().toggleFavorite(songs.first());
        const QString expected = everything(service().playlists());
        m_bench->service.reset();
        platform.preferences.reset();

        platform.preferences = std::make_unique<SqlitePreferences>(file);
        m_bench->start();
        QCOMPARE(everything(service().playlists()), expected);
        QVERIFY(!service().isFavorite(songs.first()) && service().isFavorite(songs.last()));
    }

    void aStoredTextComesBackByteForByte()
    {
        m_bench->start();
        Playlist odd =
            m_bench->online(u"夜 \"\\\n\t\u2028🎵👩‍👩‍👧 <b>"_s + u"长"_s.repeated(300));
        odd.description = u"\u0001\u007f"_s;
        odd.coverURL = QUrl(u"https://example.org/封 面?a=%2F&b=1#x"_s);
        QByteArray allBytes;
        for (int byte = 0; byte < 256; ++byte)
            allBytes.append(static_cast<char>(byte));
        odd.coverImageData = allBytes;
        odd.createdAt = QDateTime::fromMSecsSinceEpoch(-1, Qt::UTC);
        odd.songIds = {u""_s, u"webdav_X_%2Fa/b?c=1&d"_s, u"../\"'`;\0x"_s, u"歌🎵"_s, u"a b\r\n"_s};
        for (const MusicPlatform platform : allMusicPlatforms()) {
            OnlineSong song = PlaylistBench::onlineSong(u"id/\\\"%00?&=#"_s, platform);
            song.picUrl = u"https://example.org/p?x=1&y=\"2\""_s;
            song.lrcUrl = u"[00:00.00]"_s;
            odd.onlineSongs.append(song);
        }
        service().updatePlaylist(odd);
        Playlist empty = m_bench->local();
        empty.coverImageData = QByteArray();
        service().updatePlaylist(empty);
        const QString expected = everything(service().playlists());
        const QByteArray first = m_bench->storedText();
        m_bench->start();
        QCOMPARE(everything(service().playlists()), expected);
        // Written anew at the same time of day, with nothing remembered of the first time.
        service().renamePlaylist(empty, empty.name);
        QCOMPARE(m_bench->storedText(), first);
        QCOMPARE(m_bench->console.take(), QStringList());
    }

    void aHundredThousandIdsComeBack()
    {
        m_bench->start();
        QList<Song> songs;
        for (int number = 0; number < 100'000; ++number)
            songs.append(PlaylistBench::song(u"0123456789ABCDE%1"_s.arg(number)));
        const Playlist playlist = m_bench->local();
        service().addSongs(songs, playlist);
        service().addSongs(songs, playlist);
        service().removeSongsByIds({songs.first().id()}, playlist);
        const QString expected = everything(service().playlists());
        m_bench->start();
        QCOMPARE(everything(service().playlists()), expected);
        QCOMPARE(m_bench->now(playlist).songCount(), 99'999);
    }

    void halfACharacterDoesNotLoseTheStore()
    {
        m_bench->start();
        const Playlist playlist = m_bench->local(u"半个"_s + QChar(0xd83d));
        service().addSong(PlaylistBench::song(QString(QChar(0xdcfa))), playlist);
        m_bench->console.take();
        m_bench->start();
        QCOMPARE(service().playlists().size(), 3);
        QVERIFY(m_bench->now(playlist).name.startsWith(u"半个"_s));
        QCOMPARE(m_bench->now(playlist).songCount(), 1);
        QCOMPARE(m_bench->console.take(), QStringList());
    }

    void keysThatAreNotKnownAreIgnoredAndOptionalOnesMayBeAbsent_data()
    {
        QTest::addColumn<QJsonObject>("stored");
        QTest::newRow("required keys alone") << record();
        QTest::newRow("more keys") << with(with(record(), u"sortOrder"_s, 3), u"more"_s,
                                           QJsonObject{{u"id"_s, 5}});
        QTest::newRow("more keys of a song") << withSong(with(songRecord(), u"bitrate"_s, QJsonArray{1}));
        QTest::newRow("null cover") << with(record(), u"coverImageData"_s, QJsonValue());
        QTest::newRow("null address") << with(record(), u"coverURL"_s, QJsonValue());
        QTest::newRow("an address that is none") << with(record(), u"coverURL"_s, u"http://[half"_s);
        QTest::newRow("an empty address") << with(record(), u"coverURL"_s, u""_s);
    }
    void keysThatAreNotKnownAreIgnoredAndOptionalOnesMayBeAbsent()
    {
        QFETCH(const QJsonObject, stored);
        m_bench->store(listOf({stored}));
        m_bench->start();
        QCOMPARE(m_bench->console.take(), QStringList());
        QCOMPARE(m_bench->ids(),
                 QStringList({u"favorites_online_playlist"_s, u"favorites_playlist"_s, u"p"_s}));
        const Playlist playlist = service().playlists().last();
        QCOMPARE(playlist.name, u"歌单"_s);
        QCOMPARE(playlist.type, PlaylistType::online);
        QVERIFY(!playlist.coverURL && !playlist.coverImageData);
        QCOMPARE(playlist.createdAt, QDateTime::fromSecsSinceEpoch(1'678'307'200, Qt::UTC));
        QCOMPARE(playlist.updatedAt, playlist.createdAt.addMSecs(500));
        QCOMPARE(playlist.songIds, QStringList{u"a"_s});
        QCOMPARE(playlist.onlineSongs.size(), 1);
        QCOMPARE(playlist.onlineSongs.first().platform, MusicPlatform::qq);
        QCOMPARE(playlist.onlineSongs.first().lrcUrl, u"l"_s);
    }

    void aDamagedStoreIsLostAsAWhole_data()
    {
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const QString &name, const QJsonObject &bad) {
            QTest::newRow(qPrintable(name)) << listOf({record(u"first"_s), bad, record(u"last"_s)});
        };
        QTest::newRow("empty") << ""_ba;
        QTest::newRow("null") << "null"_ba;
        QTest::newRow("number") << "5"_ba;
        QTest::newRow("object") << QJsonDocument(record()).toJson();
        QTest::newRow("no JSON") << "playlists"_ba;
        QTest::newRow("bytes") << QByteArray("\0\xff\xfe[", 4);
        QTest::newRow("list of null") << "[null]"_ba;
        QTest::newRow("list of texts") << R"(["p"])"_ba;
        const QByteArray good = listOf({record()});
        QTest::newRow("torn") << good.chopped(20);
        QTest::newRow("end missing") << good.chopped(1);
        QTest::newRow("more after it") << good + "]";
        QTest::newRow("two lists") << good + good;
        QTest::newRow("comma too many") << good.chopped(1) + ",]";
        const QByteArray coverless =
            QByteArray(good).replace(R"("createdAt")", R"("coverImageData":@,"createdAt")");
        for (const QByteArray &cover :
             {R"("AP8Q"x)"_ba, R"("AP8Q" "")"_ba, R"("AP8Q)"_ba, R"(AP8Q)"_ba, R"("AP8\Q")"_ba,
              R"("AP\n8Q")"_ba, R"("AP 8Q")"_ba, R"(["AP8Q"])"_ba, R"(")"_ba})
            QTest::newRow("cover: " + cover) << QByteArray(coverless).replace('@', cover);
        QTest::newRow("no UTF-8") << QByteArray(good).replace("歌单", "\xff\xfe");
        const QStringList required{u"id"_s,        u"name"_s,      u"description"_s, u"type"_s,
                                   u"createdAt"_s, u"updatedAt"_s, u"songIds"_s,     u"onlineSongs"_s};
        for (const QString &key : required) {
            row(u"without "_s + key, without(record(), key));
            row(u"null in "_s + key, with(record(), key, QJsonValue()));
            row(u"true in "_s + key, with(record(), key, true));
            row(u"object in "_s + key, with(record(), key, QJsonObject()));
        }
        for (const QString &key : required.first(4))
            row(u"number in "_s + key, with(record(), key, 5));
        for (const QString &key : required.last(4))
            row(u"text in "_s + key, with(record(), key, u"5"_s));
        for (const QString &key : songRecord().keys()) {
            row(u"song without "_s + key, withSong(without(songRecord(), key)));
            row(u"song with a number in "_s + key, withSong(with(songRecord(), key, 5)));
            row(u"song with null in "_s + key, withSong(with(songRecord(), key, QJsonValue())));
        }
        row(u"unknown type"_s, with(record(), u"type"_s, u"Local"_s));
        row(u"unknown platform"_s, withSong(with(songRecord(), u"platform"_s, u"radio"_s)));
        row(u"a song that is none"_s, withSong(u"1"_s));
        row(u"an id that is a number"_s, with(record(), u"songIds"_s, QJsonArray{u"a"_s, 5}));
        row(u"an id that is null"_s, with(record(), u"songIds"_s, QJsonArray{QJsonValue()}));
        row(u"a cover that is no base64"_s, with(record(), u"coverImageData"_s, u"AP8Q*#"_s));
        row(u"a cover that is a number"_s, with(record(), u"coverImageData"_s, 5));
        row(u"an address that is a number"_s, with(record(), u"coverURL"_s, 5));
        row(u"a date beyond all years"_s, with(record(), u"createdAt"_s, 1e300));
    }
    void aDamagedStoreIsLostAsAWhole()
    {
        QFETCH(const QByteArray, text);
        m_bench->store(text);
        m_bench->start();
        const QStringList lines = m_bench->console.take();
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.first().startsWith(loadFailure) && lines.first().size() > loadFailure.size(),
                 qPrintable(lines.first()));
        QCOMPARE(m_bench->ids(), QStringList({u"favorites_online_playlist"_s, u"favorites_playlist"_s}));
        settle();
        QCOMPARE(storedPlaylists(), everything(service().playlists()));
    }

    void aCoverIsReadHoweverItIsWritten_data()
    {
        QTest::addColumn<QByteArray>("cover");
        QTest::newRow("plain") << R"("A/8Q")"_ba;
        QTest::newRow("blanks behind it") << "\"A/8Q\" \t\r\n"_ba;
        QTest::newRow("escaped stroke") << R"("A\/8Q")"_ba;
        QTest::newRow("escaped letter") << R"("\u0041/8Q")"_ba;
    }
    void aCoverIsReadHoweverItIsWritten()
    {
        QFETCH(const QByteArray, cover);
        m_bench->store(
            listOf({record()}).replace(R"("createdAt")", R"("coverImageData":)" + cover + R"(,"createdAt")"));
        m_bench->start();
        QCOMPARE(m_bench->console.take(), QStringList());
        QCOMPARE(service().playlists().last().coverImageData, std::optional("\x03\xff\x10"_ba));
    }

    void aFailureTellsWhichPlaylistAndKeyItIs()
    {
        m_bench->store(listOf({record(), without(record(), u"songIds"_s)}));
        m_bench->start();
        const QString line = m_bench->console.take().value(0);
        QVERIFY2(line.contains(u"playlist 1"_s) && line.contains(u"songIds"_s), qPrintable(line));
    }

    void aValueOfAnotherTypeCountsAsNone()
    {
        m_bench->machine.preferences().setString(PlaylistBench::key, u"[]"_s);
        m_bench->start();
        QCOMPARE(m_bench->console.take(), QStringList());
        QCOMPARE(service().playlists().size(), 2);
    }

    void whatCannotBeEncodedLeavesTheStoreAsItWas_data()
    {
        QTest::addColumn<qsizetype>("coverBytes");
        QTest::newRow("a small store") << qsizetype{10};
        QTest::newRow("a large store") << qsizetype{600'000};
    }
    void whatCannotBeEncodedLeavesTheStoreAsItWas()
    {
        QFETCH(const qsizetype, coverBytes);
        m_bench->start();
        Playlist playlist = m_bench->local(u"先前"_s);
        playlist.coverImageData = QByteArray(coverBytes, 'c');
        service().updatePlaylist(playlist);
        QTRY_COMPARE(storedPlaylists(), everything(service().playlists()));
        const QByteArray before = storedNow();
        m_bench->console.take();

        playlist.createdAt = QDateTime();
        playlist.name = u"之后"_s;
        service().updatePlaylist(playlist);
        QStringList lines;
        QTRY_VERIFY(!(lines += m_bench->console.take()).isEmpty());
        QVERIFY2(lines.first().startsWith(saveFailure) && lines.first().contains(u"createdAt"_s),
                 qPrintable(lines.first()));
        QCOMPARE(m_bench->now(playlist).name, u"之后"_s);
        QCOMPARE(storedNow(), before);

        playlist.createdAt = playlist.updatedAt;
        service().updatePlaylist(playlist);
        QTRY_COMPARE(storedPlaylists(), everything(service().playlists()));
    }
};

QTEST_GUILESS_MAIN(TestPlaylistServiceStorage)
#include "tst_playlist_service_storage.moc"
