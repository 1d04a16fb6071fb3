// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/ProcessHash.h"
#include "ViewModels/ViewModelBench.h"

#include <QBuffer>
#include <QProcess>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

Song librarySong(const QString &id, const QString &title, const QString &artist, const QString &album,
                 int trackNumber = 0, const QString &albumId = u"1"_s)
{
    SongFields fields;
    fields.id = id;
    fields.title = title;
    fields.artist = artist;
    fields.album = album;
    fields.albumId = albumId;
    fields.trackNumber = trackNumber;
    return Song(fields);
}

Album libraryAlbum(const QString &name, int songCount)
{
    Album album;
    album.id = u"1"_s;
    album.name = name;
    album.artist = u"Library artist"_s;
    album.songCount = songCount;
    return album;
}

template <typename Record>
QStringList namesOf(const QList<Record> &records)
{
    QStringList names;
    for (const Record &record : records)
        names.append(record.name);
    return names;
}

QStringList titlesOf(const QList<Song> &songs)
{
    QStringList titles;
    for (const Song &song : songs)
        titles.append(song.title());
    return titles;
}

QByteArray png(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// What one run of the program prints: the ids of an album and of an artist.
QStringList idsOfOneRun(const std::optional<QString> &hashSeed)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"QT_HASH_SEED"_s);
    if (hashSeed)
        environment.insert(u"QT_HASH_SEED"_s, *hashSeed);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(CADOREL_BUILD_DIR "/tests/print_merged_ids"), QStringList());
    if (!process.waitForFinished() || process.exitCode() != 0)
        return {};
    QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    return lines;
}

} // namespace

class CadorelViewModelLibraryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void allSongsAreJoinedInOrderWithoutComparison();
    void localSongsLeaveOutTheServers();
    void aListThatIsAloneIsSharedNotCopied();
    void importedAlbumsAreGroupedByName();
    void mediaLibraryAlbumWinsAndFindsTheImportedSong();
    void emptyAlbumNameLandsInTheUnknownAlbum();
    void emptyAndUnknownNameAreOneAlbum();
    void albumTakesTheFirstCoverOfItsSongs();
    void albumsAreSortedByPlainComparison();
    void serverSongsGiveNoAlbumsAndArtists();
    void importedArtistsAreGroupedByName();
    void mediaLibraryArtistWins();
    void emptyArtistNameLandsInTheUnknownArtist();
    void idsHoldForOneRun();
    void twoRunsGiveTheSameAlbumDifferentIds_data();
    void twoRunsGiveTheSameAlbumDifferentIds();
    void songsOfAnAlbumAreFoundByNameOrId();
    void songsOfAnAlbumAreSortedByTrackNumberAndKeepTheirOrder();
    void songsAndAlbumsOfAnArtist();
    void searchFindsTitleArtistAndAlbum_data();
    void searchFindsTitleArtistAndAlbum();
    void searchTakesTheQueryOfTheSearchBox();
};

void CadorelViewModelLibraryTest::allSongsAreJoinedInOrderWithoutComparison()
{
    ViewModelBench bench;
    const Song imported = bench.home.addImportedSong(u"a.mp3"_s, u"imported"_s);
    bench.mediaLibrary.songList = {librarySong(imported.id(), u"library"_s, {}, {})};
    bench.webDAV.songList = {librarySong(u"webdav_1"_s, u"server"_s, {}, {}),
                             librarySong(u"webdav_1"_s, u"again"_s, {}, {})};
    QCOMPARE(titlesOf(bench.startViewModel().allSongs()),
             (QStringList{u"library"_s, u"imported"_s, u"server"_s, u"again"_s}));
}

void CadorelViewModelLibraryTest::localSongsLeaveOutTheServers()
{
    ViewModelBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"imported"_s);
    bench.mediaLibrary.songList = {librarySong(u"1"_s, u"library"_s, {}, {})};
    bench.webDAV.songList = {librarySong(u"webdav_1"_s, u"server"_s, {}, {})};
    QCOMPARE(titlesOf(bench.startViewModel().localSongs()), (QStringList{u"library"_s, u"imported"_s}));
}

void CadorelViewModelLibraryTest::aListThatIsAloneIsSharedNotCopied()
{
    ViewModelBench bench;
    constexpr int count = 100000;
    QStringList ids;
    for (int i = 0; i < count; ++i)
        ids.append(QString::number(i));
    bench.webDAV.songList = fileSongs(ids);
    const CadorelViewModel &viewModel = bench.startViewModel();
    QCOMPARE(viewModel.allSongs().constData(), std::as_const(bench.webDAV.songList).constData());
    // Joined with others the records are still the same ones.
    bench.mediaLibrary.songList = fileSongs({u"m"_s});
    const QList<Song> all = viewModel.allSongs();
    QCOMPARE(all.size(), count + 1);
    for (int i = 0; i < count; ++i) {
        if (!all.at(i + 1).isSameRecord(bench.webDAV.songList.at(i)))
            QFAIL(qPrintable(u"song %1 was copied"_s.arg(i)));
    }
}

void CadorelViewModelLibraryTest::importedAlbumsAreGroupedByName()
{
    ViewModelBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"1"_s, u"First"_s, u"B"_s);
    bench.home.addImportedSong(u"b.mp3"_s, u"2"_s, u"X"_s, u"A"_s);
    bench.home.addImportedSong(u"c.mp3"_s, u"3"_s, u"Second"_s, u"B"_s);
    const QList<Album> albums = bench.startViewModel().allAlbums();
    QCOMPARE(namesOf(albums), (QStringList{u"A"_s, u"B"_s}));
    const Album &album = albums[1];
    QCOMPARE(album.id, "imported_"_L1 + processHash(u"B"_s));
    QCOMPARE(album.artist, u"First"_s);
    QCOMPARE(album.songCount, 2);
    QCOMPARE(album.year, 0);
    QVERIFY(!album.artwork);
    QVERIFY(!album.artworkImage.image());
}

void CadorelViewModelLibraryTest::mediaLibraryAlbumWinsAndFindsTheImportedSong()
{
    ViewModelBench bench;
    bench.mediaLibrary.albumList = {libraryAlbum(u"Same"_s, 4)};
    bench.mediaLibrary.songList = {librarySong(u"1"_s, u"library"_s, u"X"_s, u"Same"_s, 2)};
    bench.home.addImportedSong(u"a.mp3"_s, u"imported"_s, u"X"_s, u"Same"_s, 1);
    bench.home.addImportedSong(u"b.mp3"_s, u"other case"_s, u"X"_s, u"same"_s);
    const CadorelViewModel &viewModel = bench.startViewModel();
    const QList<Album> albums = viewModel.allAlbums();
    QCOMPARE(namesOf(albums), (QStringList{u"Same"_s, u"same"_s}));
    QCOMPARE(albums[0].id, u"1"_s);
    QCOMPARE(albums[0].songCount, 4);
    QCOMPARE(viewModel.allSongs().size(), 3);
    QCOMPARE(titlesOf(viewModel.getSongsForAlbum(albums[0])), (QStringList{u"imported"_s, u"library"_s}));
}

void CadorelViewModelLibraryTest::emptyAlbumNameLandsInTheUnknownAlbum()
{
    ViewModelBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"A"_s, u"X"_s, QString());
    const CadorelViewModel &viewModel = bench.startViewModel();
    const QList<Album> albums = viewModel.allAlbums();
    QCOMPARE(namesOf(albums), (QStringList{u"未知专辑"_s}));
    QCOMPARE(albums[0].songCount, 1);
    QCOMPARE(albums[0].id, "imported_"_L1 + processHash(u"未知专辑"_s));
    // Its song bears another albumId, so the list of songs is shorter than the count.
    QVERIFY(viewModel.getSongsForAlbum(albums[0]).isEmpty());
    Album byId = albums[0];
    byId.id = viewModel.allSongs().constFirst().albumId();
    QCOMPARE(viewModel.getSongsForAlbum(byId).size(), 1);
}

void CadorelViewModelLibraryTest::emptyAndUnknownNameAreOneAlbum()
{
    ViewModelBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"A"_s, u"X"_s, QString());
    bench.home.addImportedSong(u"b.mp3"_s, u"B"_s, u"X"_s, u"未知专辑"_s);
    QCOMPARE(namesOf(bench.startViewModel().allAlbums()), (QStringList{u"未知专辑"_s}));
}

void CadorelViewModelLibraryTest::albumTakesTheFirstCoverOfItsSongs()
{
    ViewModelBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"A"_s, u"X"_s, u"Album"_s);
    const Song covered = bench.home.addImportedSong(u"b.mp3"_s, u"B"_s, u"X"_s, u"Album"_s);
    const Song later = bench.home.addImportedSong(u"c.mp3"_s, u"C"_s, u"X"_s, u"Album"_s);
    bench.home.addMetadataFile(covered.id() + u"_artwork.jpg"_s, png(QSize(3, 4)));
    bench.home.addMetadataFile(later.id() + u"_artwork.jpg"_s, png(QSize(5, 6)));
    const CadorelViewModel &viewModel = bench.startViewModel();
    QCOMPARE(viewModel.allAlbums().constFirst().getArtworkImage().value_or(QImage()).size(), QSize(3, 4));
    QCOMPARE(viewModel.allArtists().constFirst().getArtworkImage().value_or(QImage()).size(), QSize(3, 4));
}

void CadorelViewModelLibraryTest::albumsAreSortedByPlainComparison()
{
    ViewModelBench bench;
    bench.mediaLibrary.albumList = {libraryAlbum(u"Zebra"_s, 1), libraryAlbum(u"m"_s, 1)};
    int number = 0;
    for (const QString &name : {u"apple"_s, u"晴"_s, u"Apple"_s, u"10"_s, u"9"_s, u"Émile"_s})
        bench.home.addImportedSong(QString::number(number++) + u".mp3"_s, u"T"_s, name, name);
    const CadorelViewModel &viewModel = bench.startViewModel();
    QCOMPARE(namesOf(viewModel.allAlbums()),
             (QStringList{u"10"_s, u"9"_s, u"Apple"_s, u"Zebra"_s, u"apple"_s, u"m"_s, u"Émile"_s, u"晴"_s}));
    QCOMPARE(namesOf(viewModel.allArtists()),
             (QStringList{u"10"_s, u"9"_s, u"Apple"_s, u"apple"_s, u"Émile"_s, u"晴"_s}));
}

void CadorelViewModelLibraryTest::serverSongsGiveNoAlbumsAndArtists()
{
    ViewModelBench bench;
    bench.webDAV.songList = {librarySong(u"webdav_1"_s, u"T"_s, u"X"_s, u"A"_s)};
    bench.mediaLibrary.songList = {librarySong(u"1"_s, u"T"_s, u"Y"_s, u"B"_s)};
    const CadorelViewModel &viewModel = bench.startViewModel();
    QVERIFY(viewModel.allAlbums().isEmpty());
    QVERIFY(viewModel.allArtists().isEmpty());
}

void CadorelViewModelLibraryTest::importedArtistsAreGroupedByName()
{
    ViewModelBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"1"_s, u"B"_s, u"one"_s);
    bench.home.addImportedSong(u"b.mp3"_s, u"2"_s, u"A"_s, u"one"_s);
    bench.home.addImportedSong(u"c.mp3"_s, u"3"_s, u"B"_s, u"two"_s);
    bench.home.addImportedSong(u"d.mp3"_s, u"4"_s, u"B"_s, u"one"_s);
    const QList<Artist> artists = bench.startViewModel().allArtists();
    QCOMPARE(namesOf(artists), (QStringList{u"A"_s, u"B"_s}));
    QCOMPARE(artists[1].id, "imported_"_L1 + processHash(u"B"_s));
    QCOMPARE(artists[1].songCount, 3);
    QCOMPARE(artists[1].albumCount, 2);
}

void CadorelViewModelLibraryTest::mediaLibraryArtistWins()
{
    ViewModelBench bench;
    Artist artist;
    artist.id = u"1"_s;
    artist.name = u"B"_s;
    artist.songCount = 7;
    bench.mediaLibrary.artistList = {artist};
    bench.home.addImportedSong(u"a.mp3"_s, u"1"_s, u"B"_s);
    const QList<Artist> artists = bench.startViewModel().allArtists();
    QCOMPARE(artists.size(), 1);
    QCOMPARE(artists[0].songCount, 7);
}

void CadorelViewModelLibraryTest::emptyArtistNameLandsInTheUnknownArtist()
{
    ViewModelBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"1"_s, QString());
    bench.home.addImportedSong(u"b.mp3"_s, u"2"_s, u"未知艺术家"_s);
    QCOMPARE(namesOf(bench.startViewModel().allArtists()), (QStringList{u"未知艺术家"_s}));
}

void CadorelViewModelLibraryTest::idsHoldForOneRun()
{
    ViewModelBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"1"_s);
    const CadorelViewModel &viewModel = bench.startViewModel();
    QCOMPARE(viewModel.allAlbums(), viewModel.allAlbums());
    QCOMPARE(viewModel.allArtists(), viewModel.allArtists());
}

void CadorelViewModelLibraryTest::twoRunsGiveTheSameAlbumDifferentIds_data()
{
    QTest::addColumn<std::optional<QString>>("hashSeed");
    QTest::newRow("seed unset") << std::optional<QString>();
    QTest::newRow("seed set to 0") << std::optional(u"0"_s);
    QTest::newRow("seed set to 7") << std::optional(u"7"_s);
}

void CadorelViewModelLibraryTest::twoRunsGiveTheSameAlbumDifferentIds()
{
    QFETCH(std::optional<QString>, hashSeed);
    const QStringList first = idsOfOneRun(hashSeed);
    const QStringList second = idsOfOneRun(hashSeed);
    QCOMPARE(first.size(), 2);
    QCOMPARE(second.size(), 2);
    for (qsizetype i = 0; i < first.size(); ++i) {
        QVERIFY(first[i] != second[i]);
        QVERIFY(first[i].startsWith(u"imported_"_s));
        bool isNumber = false;
        first[i].section(u'_', 1).toLongLong(&isNumber);
        QVERIFY2(isNumber, qPrintable(first[i]));
    }
}

void CadorelViewModelLibraryTest::songsOfAnAlbumAreFoundByNameOrId()
{
    ViewModelBench bench;
    bench.mediaLibrary.songList = {librarySong(u"1"_s, u"by id"_s, {}, u"elsewhere"_s),
                                   librarySong(u"2"_s, u"neither"_s, {}, u"B"_s, 0, u"99"_s)};
    bench.webDAV.songList = {librarySong(u"webdav_1"_s, u"by name"_s, {}, u"A"_s, 0, u"webdav_album_1"_s)};
    const CadorelViewModel &viewModel = bench.startViewModel();
    QCOMPARE(titlesOf(viewModel.getSongsForAlbum(libraryAlbum(u"A"_s, 1))),
             (QStringList{u"by id"_s, u"by name"_s}));
}

void CadorelViewModelLibraryTest::songsOfAnAlbumAreSortedByTrackNumberAndKeepTheirOrder()
{
    ViewModelBench bench;
    for (const auto &[title, track] : {std::pair(u"d"_s, 2), {u"a"_s, 0}, {u"c"_s, 1}, {u"b"_s, 0}})
        bench.mediaLibrary.songList.append(librarySong(title, title, {}, u"A"_s, track));
    QCOMPARE(titlesOf(bench.startViewModel().getSongsForAlbum(libraryAlbum(u"A"_s, 4))),
             (QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
}

void CadorelViewModelLibraryTest::songsAndAlbumsOfAnArtist()
{
    ViewModelBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"2"_s, u"X"_s, u"B"_s, 9);
    bench.home.addImportedSong(u"b.mp3"_s, u"1"_s, u"X"_s, u"A"_s, 1);
    bench.home.addImportedSong(u"c.mp3"_s, u"3"_s, u"Y"_s, u"C"_s);
    bench.home.addImportedSong(u"d.mp3"_s, u"4"_s, u"X"_s, u"C"_s);
    const CadorelViewModel &viewModel = bench.startViewModel();
    Artist artist;
    artist.id = u"any"_s;
    artist.name = u"X"_s;
    QCOMPARE(titlesOf(viewModel.getSongsForArtist(artist)), (QStringList{u"2"_s, u"1"_s, u"4"_s}));
    // The album "C" is the one of its first song's artist.
    QCOMPARE(namesOf(viewModel.getAlbumsForArtist(artist)), (QStringList{u"A"_s, u"B"_s}));
}

void CadorelViewModelLibraryTest::searchFindsTitleArtistAndAlbum_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("upper case finds the lower-cased title")
        << u"MORNING"_s << QStringList{u"morning light"_s};
    QTest::newRow("lower case finds upper case") << u"sun"_s << QStringList{u"SUNDAY"_s};
    QTest::newRow("artist") << u"周"_s << QStringList{u"晴天"_s};
    QTest::newRow("album") << u"best of"_s << QStringList{u"morning light"_s, u"SUNDAY"_s};
    QTest::newRow("middle of a word") << u"nda"_s << QStringList{u"SUNDAY"_s};
    QTest::newRow("letters with marks") << u"ÉMI"_s << QStringList{u"SUNDAY"_s};
    QTest::newRow("a blank counts") << u"g l"_s << QStringList{u"morning light"_s};
    QTest::newRow("not across fields") << u"light周"_s << QStringList{};
    QTest::newRow("nothing") << u"xyz"_s << QStringList{};
}

void CadorelViewModelLibraryTest::searchFindsTitleArtistAndAlbum()
{
    QFETCH(QString, query);
    ViewModelBench bench;
    bench.mediaLibrary.songList = {librarySong(u"1"_s, u"morning light"_s, u"Band"_s, u"Best Of"_s)};
    bench.home.addImportedSong(u"a.mp3"_s, u"晴天"_s, u"周"_s, u"叶"_s);
    bench.webDAV.songList = {librarySong(u"webdav_1"_s, u"SUNDAY"_s, u"émile"_s, u"THE BEST OF"_s)};
    QTEST(titlesOf(bench.startViewModel().searchLocal(query)), "found");
}

void CadorelViewModelLibraryTest::searchTakesTheQueryOfTheSearchBox()
{
    ViewModelBench bench;
    bench.mediaLibrary.songList = {librarySong(u"1"_s, u"one"_s, {}, {}),
                                   librarySong(u"2"_s, u"two"_s, {}, {})};
    CadorelViewModel &viewModel = bench.startViewModel();
    QCOMPARE(viewModel.searchLocal().size(), 2);
    viewModel.setSearchQuery(u"two"_s);
    QCOMPARE(titlesOf(viewModel.searchLocal()), (QStringList{u"two"_s}));
    QCOMPARE(titlesOf(viewModel.searchLocal(u"one"_s)), (QStringList{u"one"_s}));
}

QTEST_GUILESS_MAIN(CadorelViewModelLibraryTest)
#include "tst_cadorel_view_model_library.moc"
