// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/Album.h"
#include "Models/Artist.h"

#include <QBuffer>
#include <QSet>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QImage filled(QSize size, Qt::GlobalColor colour = Qt::red)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

/// A cover of the media library that is drawn in blue at the size that is asked for.
std::shared_ptr<const MediaItemArtwork> libraryArtwork()
{
    return std::make_shared<const MediaItemArtwork>(QSize(500, 500),
                                                    [](QSize size) { return filled(size, Qt::blue); });
}

MediaItem mediaItem()
{
    MediaItem item;
    item.albumPersistentID = 12;
    item.artistPersistentID = 34;
    item.albumTitle = u"Album"_s;
    item.artist = u"Artist"_s;
    item.albumArtist = u"Album artist"_s;
    item.releaseDate = QDateTime(QDate(1999, 6, 15), QTime(12, 0), Qt::UTC);
    item.artwork = libraryArtwork();
    return item;
}

MediaItemCollection collection(const MediaItem &item = mediaItem())
{
    return {.representativeItem = item, .count = 9};
}

template <typename Record>
Record named(const QString &id, const QString &name)
{
    Record record;
    record.id = id;
    record.name = name;
    return record;
}

} // namespace

class AlbumArtistTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void albumTakesTheValuesOfItsCollection();
    void albumFallsBackToTheArtistThenToTheUnknownOne();
    void albumOfNoItemHasIdZero();
    void artistTakesTheValuesOfItsCollection();
    void artistOfNoItemHasIdZero();
    void yearDefaultsToZero();
    void equalityUsesTheIdAlone();
    void getArtworkImagePrefersTheDecodedOne();
    void getArtworkImageDecodesASongsCover();
    void getArtworkImageFallsBackToTheLibraryWhenTheCoverIsNoPicture();
    void getArtworkImageDrawsAtTheDefaultSizes();
    void getArtworkImageWithoutAnyIsAbsent();
    void examplesAreUsable();
};

void AlbumArtistTest::albumTakesTheValuesOfItsCollection()
{
    const Album album = Album::fromCollection(collection());
    QCOMPARE(album.id, u"12"_s);
    QCOMPARE(album.name, u"Album"_s);
    QCOMPARE(album.artist, u"Album artist"_s);
    QCOMPARE(album.songCount, 9);
    QCOMPARE(album.year, 1999);
    QVERIFY(album.artwork);
    QVERIFY(!album.artworkImage.image());
}

void AlbumArtistTest::albumFallsBackToTheArtistThenToTheUnknownOne()
{
    MediaItem item = mediaItem();
    item.albumArtist.reset();
    QCOMPARE(Album::fromCollection(collection(item)).artist, u"Artist"_s);
    item.artist.reset();
    item.albumTitle.reset();
    item.releaseDate.reset();
    const Album album = Album::fromCollection(collection(item));
    QCOMPARE(album.artist, u"未知艺术家"_s);
    QCOMPARE(album.name, u"未知专辑"_s);
    QCOMPARE(album.year, 0);
}

void AlbumArtistTest::albumOfNoItemHasIdZero()
{
    const Album album = Album::fromCollection({.representativeItem = {}, .count = 2});
    QCOMPARE(album.id, u"0"_s);
    QCOMPARE(album.name, u"未知专辑"_s);
    QCOMPARE(album.artist, u"未知艺术家"_s);
    QCOMPARE(album.songCount, 2);
    QCOMPARE(album.year, 0);
    QVERIFY(!album.artwork);
}

void AlbumArtistTest::artistTakesTheValuesOfItsCollection()
{
    const Artist artist = Artist::fromCollection(collection(), 3);
    QCOMPARE(artist.id, u"34"_s);
    QCOMPARE(artist.name, u"Artist"_s);
    QCOMPARE(artist.songCount, 9);
    QCOMPARE(artist.albumCount, 3);
    QVERIFY(artist.artwork);
}

void AlbumArtistTest::artistOfNoItemHasIdZero()
{
    const Artist artist = Artist::fromCollection({.representativeItem = {}, .count = 2}, 1);
    QCOMPARE(artist.id, u"0"_s);
    QCOMPARE(artist.name, u"未知艺术家"_s);
}

void AlbumArtistTest::yearDefaultsToZero()
{
    QCOMPARE(named<Album>(u"1"_s, u"A"_s).year, 0);
}

void AlbumArtistTest::equalityUsesTheIdAlone()
{
    QCOMPARE(named<Album>(u"1"_s, u"A"_s), named<Album>(u"1"_s, u"B"_s));
    QVERIFY(!(named<Album>(u"1"_s, u"A"_s) == named<Album>(u"2"_s, u"A"_s)));
    QCOMPARE(named<Artist>(u"1"_s, u"A"_s), named<Artist>(u"1"_s, u"B"_s));
    QVERIFY(!(named<Artist>(u"1"_s, u"A"_s) == named<Artist>(u"2"_s, u"A"_s)));
    QCOMPARE((QSet<Album>{named<Album>(u"1"_s, u"A"_s), named<Album>(u"1"_s, u"B"_s)}.size()), 1);
    QCOMPARE((QSet<Artist>{named<Artist>(u"1"_s, u"A"_s), named<Artist>(u"1"_s, u"B"_s)}.size()), 1);
}

void AlbumArtistTest::getArtworkImagePrefersTheDecodedOne()
{
    Album album = Album::fromCollection(collection());
    album.artworkImage = ArtworkImage(filled(QSize(7, 7)));
    QCOMPARE(album.getArtworkImage(QSize(50, 50)).value_or(QImage()).size(), QSize(7, 7));
    Artist artist = Artist::fromCollection(collection(), 1);
    artist.artworkImage = ArtworkImage(filled(QSize(7, 7)));
    QCOMPARE(artist.getArtworkImage(QSize(50, 50)).value_or(QImage()).size(), QSize(7, 7));
}

void AlbumArtistTest::getArtworkImageDecodesASongsCover()
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QVERIFY(filled(QSize(4, 5)).save(&buffer, "PNG"));
    Album album = named<Album>(u"1"_s, u"A"_s);
    album.artworkImage = ArtworkImage(ArtworkData(bytes));
    QCOMPARE(album.getArtworkImage().value_or(QImage()).size(), QSize(4, 5));
    QCOMPARE(album.artworkImage.encoded().bytes(), bytes);
}

void AlbumArtistTest::getArtworkImageFallsBackToTheLibraryWhenTheCoverIsNoPicture()
{
    Album album = Album::fromCollection(collection());
    album.artworkImage = ArtworkImage(ArtworkData("no picture"));
    QCOMPARE(album.getArtworkImage(QSize(50, 40)).value_or(QImage()).size(), QSize(50, 40));
}

void AlbumArtistTest::getArtworkImageDrawsAtTheDefaultSizes()
{
    QCOMPARE(Album::fromCollection(collection()).getArtworkImage().value_or(QImage()).size(),
             QSize(180, 180));
    QCOMPARE(Artist::fromCollection(collection(), 1).getArtworkImage().value_or(QImage()).size(),
             QSize(120, 120));
    QCOMPARE(libraryArtwork()->bounds(), QSize(500, 500));
}

void AlbumArtistTest::getArtworkImageWithoutAnyIsAbsent()
{
    QVERIFY(!named<Album>(u"1"_s, u"A"_s).getArtworkImage());
    QVERIFY(!named<Artist>(u"1"_s, u"A"_s).getArtworkImage());
    Album album = named<Album>(u"1"_s, u"A"_s);
    album.artwork = std::make_shared<const MediaItemArtwork>(QSize(1, 1), MediaItemArtwork::Renderer());
    QVERIFY(!album.getArtworkImage());
}

void AlbumArtistTest::examplesAreUsable()
{
    QCOMPARE(Album::example(), Album::examples().constFirst());
    QCOMPARE(Artist::example(), Artist::examples().constFirst());
    QVERIFY(!Album::example().name.isEmpty());
    QVERIFY(!Artist::example().name.isEmpty());
}

QTEST_GUILESS_MAIN(AlbumArtistTest)
#include "tst_album_artist.moc"
