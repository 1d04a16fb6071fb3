// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportFixture.h"
#include "Services/Import/MetadataExtractor.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QByteArray picture(const QColor &colour, const char *format)
{
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, format))
        qFatal("no encoder");
    return bytes;
}

} // namespace

/// Removal of songs, and what the service answers about those it has.
class TestLocalMusicImportRemoval : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ImportFixture> m_fixture;

    LocalMusicImportService &service() { return m_fixture->service(); }
    Song only() { return service().importedSongs().constFirst(); }
    /// A store with these files, all listed.
    void fill(const QStringList &names)
    {
        for (const QString &name : names)
            ImportFixture::write(m_fixture->documents(name));
        QVERIFY(await(service().scanSandbox()).has_value());
        m_fixture->console().take();
    }
    bool clear() { return await(service().clearAllImportedMusic()).has_value(); }
    bool indexLanded() { return await(service().indexIdle()).has_value(); }

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ImportFixture>();
        m_fixture->start();
    }
    void cleanup() { m_fixture.reset(); }

    void deletedSongLosesItsFileItsRowAndItsRecordButNotItsSideFiles()
    {
        fill({u"a.mp3"_s, u"b.mp3"_s});
        const Song song = only();
        const QString cover =
            ImportFixture::write(m_fixture->metadata(song.id() + u"_artwork.jpg"_s), "cover");
        const QString lyrics =
            ImportFixture::write(m_fixture->metadata(song.id() + u"_lyrics.lrc"_s), "lyrics");
        const QStringList events = recorded(*m_fixture, [&] { service().deleteSong(song); });
        QCOMPARE(events, QStringList{u"songs 1"_s});
        QVERIFY(indexLanded());
        QVERIFY(!QFileInfo::exists(m_fixture->documents(u"a.mp3"_s)));
        QCOMPARE(m_fixture->titles(), QStringList{u"b"_s});
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"b"_s});
        QVERIFY(QFileInfo::exists(cover));
        QVERIFY(QFileInfo::exists(lyrics));
    }

    void songThatFailsDeletionStaysInTheListAndInTheIndex()
    {
        fill({u"a.mp3"_s, u"b.mp3"_s});
        const Song song = only();
        // A directory in the file's place cannot be removed as a file, whatever the rights.
        QVERIFY(QFile::remove(song.assetPath()));
        QVERIFY(QDir().mkpath(song.assetPath()));
        const QStringList events = recorded(*m_fixture, [&] { service().deleteSong(song); });
        QCOMPARE(events, QStringList{u"Failed to delete song: 这是一个文件夹"_s});
        QVERIFY(indexLanded());
        QCOMPARE(m_fixture->titles(), (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(m_fixture->indexedTitles(), (QStringList{u"a"_s, u"b"_s}));
    }

    void songWhoseFileIsGoneCannotBeDeleted()
    {
        fill({u"a.mp3"_s});
        QVERIFY(QFile::remove(m_fixture->documents(u"a.mp3"_s)));
        service().deleteSong(only());
        QCOMPARE(m_fixture->console().take(), QStringList{u"Failed to delete song: 文件不存在"_s});
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
    }

    void songInADirectoryWithoutRightsStays()
    {
        fill({u"a.mp3"_s});
        QVERIFY(QFile::setPermissions(m_fixture->documents(), QFile::ReadOwner | QFile::ExeOwner |
                                                                  QFile::ReadOther | QFile::ExeOther));
        m_fixture->giveTo(UnprivilegedScope::nobody);
        {
            const UnprivilegedScope scope;
            QVERIFY(scope.isActive());
            service().deleteSong(only());
        }
        QVERIFY(QFile::setPermissions(m_fixture->documents(),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QCOMPARE(m_fixture->console().take(), QStringList{u"Failed to delete song: 没有权限"_s});
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
        QVERIFY(QFileInfo::exists(m_fixture->documents(u"a.mp3"_s)));
    }

    void songWithoutAFileIsRemovedFromTheListAlone()
    {
        ImportFixture::write(m_fixture->metadata(u"index.json"_s),
                             '[' + ImportFixture::record(QString(), u"无文件"_s) + ']');
        m_fixture->start();
        service().deleteSong(only());
        QVERIFY(indexLanded());
        QVERIFY(service().importedSongs().isEmpty());
        QCOMPARE(m_fixture->indexBytes(), "[]"_ba);
    }

    void everyRowOfTheIdGoes()
    {
        fill({u"one/a.mp3"_s, u"two/a.mp3"_s, u"b.mp3"_s});
        QCOMPARE(service().importedSongs().size(), 3);
        const std::optional<Song> song = service().findImportedSong(
            QUrl::fromLocalFile(m_fixture->documents(u"one/a.mp3"_s)), std::nullopt);
        QVERIFY(song);
        service().deleteSong(*song);
        QCOMPARE(m_fixture->titles(), QStringList{u"b"_s});
        QVERIFY(QFileInfo::exists(m_fixture->documents(u"two/a.mp3"_s)));
    }

    void clearRemovesAudioIndexAndSideFilesAndNothingElse()
    {
        fill({u"a.mp3"_s, u"sub/b.FLAC"_s});
        const QString notes = ImportFixture::write(m_fixture->documents(u"sub/notes.txt"_s));
        const QString hidden = ImportFixture::write(m_fixture->documents(u".hidden.mp3"_s));
        ImportFixture::write(m_fixture->metadata(u"0123456789ABCDEF_artwork.jpg"_s));
        ImportFixture::write(m_fixture->metadata(u"deep/er/file"_s));
        QVERIFY(clear());
        QCOMPARE(m_fixture->console().take(), QStringList());
        QVERIFY(service().importedSongs().isEmpty());
        QVERIFY(!QFileInfo::exists(m_fixture->documents(u"a.mp3"_s)));
        QVERIFY(!QFileInfo::exists(m_fixture->documents(u"sub/b.FLAC"_s)));
        QVERIFY(QFileInfo::exists(notes));
        QVERIFY(QFileInfo::exists(hidden));
        QVERIFY(QFileInfo(m_fixture->metadata()).isDir());
        QVERIFY(QDir(m_fixture->metadata()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    void importsWorkAfterAClear()
    {
        fill({u"a.mp3"_s});
        QVERIFY(clear());
        fill({u"b.mp3"_s});
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"b"_s});
    }

    void clearOfAnEmptyStoreMakesTheMetadataDirectory()
    {
        QVERIFY(QDir(m_fixture->metadata()).removeRecursively());
        QVERIFY(clear());
        QVERIFY(QFileInfo(m_fixture->metadata()).isDir());
    }

    void clearStopsAtTheFirstErrorAndLeavesTheList()
    {
        fill({u"a.mp3"_s, u"locked/b.mp3"_s});
        m_fixture->giveTo(UnprivilegedScope::nobody);
        QVERIFY(QFile::setPermissions(m_fixture->documents(u"locked"_s), QFile::ReadOwner | QFile::ExeOwner));
        {
            const UnprivilegedScope scope;
            QVERIFY(scope.isActive());
            QVERIFY(clear());
        }
        QVERIFY(QFile::setPermissions(m_fixture->documents(u"locked"_s),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QCOMPARE(m_fixture->console().take(), QStringList{u"Failed to clear imported music: 没有权限"_s});
        QCOMPARE(m_fixture->titles(), (QStringList{u"a"_s, u"b"_s}));
        QVERIFY(QFileInfo::exists(m_fixture->metadata(u"index.json"_s)));
        QVERIFY(QFileInfo::exists(m_fixture->documents(u"locked/b.mp3"_s)));
    }

    void artworkOfTheRecordComesFirst()
    {
        SongFields fields;
        fields.id = u"X"_s;
        fields.artworkData = ArtworkData(picture(Qt::red, "PNG"));
        fields.artworkURL = QUrl::fromLocalFile(
            ImportFixture::write(m_fixture->outside(u"c.jpg"_s), picture(Qt::blue, "PNG")));
        const std::optional<QImage> image = service().getArtwork(Song(fields));
        QVERIFY(image);
        QCOMPARE(image->pixelColor(1, 1), QColor(Qt::red));
    }

    void artworkOfTheFileWhenTheRecordsDoesNotDecode()
    {
        SongFields fields;
        fields.artworkData = ArtworkData("no picture");
        // The side file's name is fixed whatever the format of its bytes.
        fields.artworkURL = QUrl::fromLocalFile(
            ImportFixture::write(m_fixture->outside(u"c_artwork.jpg"_s), picture(Qt::blue, "PNG")));
        const std::optional<QImage> image = service().getArtwork(Song(fields));
        QVERIFY(image);
        QCOMPARE(image->pixelColor(1, 1), QColor(Qt::blue));
    }

    void artworkThatCannotBeHadGivesNoImage()
    {
        SongFields fields;
        QVERIFY(!service().getArtwork(Song(fields)));
        fields.artworkURL = QUrl::fromLocalFile(m_fixture->outside(u"missing.jpg"_s));
        QVERIFY(!service().getArtwork(Song(fields)));
        fields.artworkURL = QUrl::fromLocalFile(ImportFixture::write(m_fixture->outside(u"bad.jpg"_s)));
        QVERIFY(!service().getArtwork(Song(fields)));
    }

    void lyricsOfTheRecordThenOfTheSideFile()
    {
        SongFields fields;
        fields.id = u"0123456789ABCDEF"_s;
        QVERIFY(!service().getLyrics(Song(fields)));
        ImportFixture::write(lyricsFilePath(m_fixture->metadata(), fields.id), "旁边的词"_ba);
        QCOMPARE(service().getLyrics(Song(fields)), u"旁边的词"_s);
        fields.embeddedLyrics = QString(u""_s);
        QCOMPARE(service().getLyrics(Song(fields)), u"旁边的词"_s);
        fields.embeddedLyrics = u"自己的词"_s;
        QCOMPARE(service().getLyrics(Song(fields)), u"自己的词"_s);
    }

    void lyricsThatAreNoTextGiveNone()
    {
        SongFields fields;
        fields.id = u"0123456789ABCDEF"_s;
        ImportFixture::write(lyricsFilePath(m_fixture->metadata(), fields.id), "\xC4\xE3\xBA\xC3");
        QVERIFY(!service().getLyrics(Song(fields)));
    }

    void artworkFileOfAnId()
    {
        QVERIFY(!service().artworkFileURL(u"ABC"_s));
        const QString path = ImportFixture::write(m_fixture->metadata(u"ABC_artwork.jpg"_s));
        QCOMPARE(service().artworkFileURL(u"ABC"_s), QUrl::fromLocalFile(path));
    }

    void songIsFoundByItsFileBeforeItsId()
    {
        fill({u"a.mp3"_s, u"b.mp3"_s});
        const Song a = service().importedSongs().at(0);
        const Song b = service().importedSongs().at(1);
        const QUrl fileOfB = *b.assetURL();
        const QUrl unknown = QUrl::fromLocalFile(m_fixture->documents(u"c.mp3"_s));
        QCOMPARE(service().findImportedSong(fileOfB, a.id())->title(), u"b"_s);
        QCOMPARE(service().findImportedSong(fileOfB, std::nullopt)->title(), u"b"_s);
        QCOMPARE(service().findImportedSong(unknown, a.id())->title(), u"a"_s);
        QVERIFY(!service().findImportedSong(unknown, std::nullopt));
        QVERIFY(!service().findImportedSong(unknown, u"unknown"_s));
        QVERIFY(!service().findImportedSong(QUrl(), QString()));
    }

    void sizeIsThatOfTheAudioFilesAlone()
    {
        ImportFixture::write(m_fixture->documents(u"a.mp3"_s), QByteArray(1'000'000, 'x'));
        ImportFixture::write(m_fixture->documents(u"sub/b.flac"_s), QByteArray(500'000, 'x'));
        ImportFixture::write(m_fixture->documents(u"c.txt"_s), QByteArray(900'000, 'x'));
        QVERIFY(QFile::link(m_fixture->outside(u"nowhere"_s), m_fixture->documents(u"broken.mp3"_s)));
        const std::optional<QString> size = await(service().getImportedMusicSize());
        QCOMPARE(size, QLocale().formattedDataSize(1'500'000, 1, QLocale::DataSizeSIFormat));
        QVERIFY(size->startsWith(u"1.5"_s));
    }
};

QTEST_GUILESS_MAIN(TestLocalMusicImportRemoval)
#include "tst_local_music_import_removal.moc"
