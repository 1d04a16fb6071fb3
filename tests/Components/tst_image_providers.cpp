// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/CoverImageProvider.h"
#include "Components/CoverPainter.h"
#include "Components/CoverRequest.h"
#include "Fixtures/MadePicture.h"
#include "Models/Song.h"
#include "ViewModels/CoverRegistry.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QQuickImageResponse>
#include <QQuickTextureFactory>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// A picture whose left third is red, middle third green, right third blue.
QByteArray stripes(const QSize &size, const char *format)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(image.rect(), Qt::green);
    painter.fillRect(0, 0, size.width() / 3, size.height(), Qt::red);
    painter.fillRect(size.width() * 2 / 3, 0, size.width(), size.height(), Qt::blue);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

Song songWith(const QString &id, const QByteArray &cover)
{
    Song song(SongFields{.id = id,
                         .title = id,
                         .artist = {},
                         .album = {},
                         .albumId = {},
                         .duration = 0,
                         .trackNumber = 0,
                         .dateAdded = QDateTime::fromSecsSinceEpoch(0, Qt::UTC),
                         .artworkURL = std::nullopt,
                         .assetURL = std::nullopt,
                         .embeddedLyrics = std::nullopt,
                         .artworkData = {}});
    if (!cover.isNull())
        song.setArtworkData(ArtworkData(cover));
    return song;
}

/// Waits for what the provider answers.
QImage ask(CoverImageProvider &provider, const QString &address, const QSize &size)
{
    return CoverRequest(provider, address, size).wait();
}

} // namespace

class ImageProvidersTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void coverHasTheSizeAskedForAndRoundCorners_data();
    void coverHasTheSizeAskedForAndRoundCorners();
    void wideCoverIsCutAboutItsCentre();
    void smallCoverIsEnlarged();
    void transparentCoverLiesOnTheFill();
    void undecodableCoverIsThePlaceholder_data();
    void undecodableCoverIsThePlaceholder();
    void bombIsThePlaceholder();
    void coverInAFileIsRead();
    void drawnCoversAreKept();
    void cancelledAndForgottenResponsesEnd();
};

void ImageProvidersTest::coverHasTheSizeAskedForAndRoundCorners_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("JPEG") << QByteArray("JPEG");
    QTest::newRow("PNG") << QByteArray("PNG");
}

void ImageProvidersTest::coverHasTheSizeAskedForAndRoundCorners()
{
    QFETCH(QByteArray, format);
    CoverRegistry registry;
    CoverImageProvider provider(registry);
    const QString address =
        coverAddress(registry.source(songWith(u"a"_s, stripes({900, 900}, format.constData()))));
    const QImage image = ask(provider, address + u"?radius=0.1667"_s, {96, 96});
    QCOMPARE(image.size(), QSize(96, 96));
    for (const QPoint corner : {QPoint(0, 0), QPoint(95, 0), QPoint(0, 95), QPoint(95, 95)})
        QCOMPARE(image.pixelColor(corner).alpha(), 0);
    // Where the curve of 16 pixels has just ended.
    QCOMPARE(image.pixelColor(16, 0).alpha(), 255);
    QVERIFY(isOfCover(image.pixelColor(8, 48), Qt::red));
    QVERIFY(isOfCover(image.pixelColor(48, 48), Qt::green));
    QVERIFY(isOfCover(image.pixelColor(88, 48), Qt::blue));
    // Another size of the same cover is another picture.
    QCOMPARE(ask(provider, address + u"?radius=0"_s, {48, 48}).size(), QSize(48, 48));
    QCOMPARE(ask(provider, address + u"?radius=0"_s, {48, 48}).pixelColor(0, 0).alpha(), 255);
}

void ImageProvidersTest::wideCoverIsCutAboutItsCentre()
{
    for (const char *format : {"JPEG", "PNG"}) {
        const QImage image = drawCover(ArtworkData(stripes({1500, 500}, format)), 100, 0);
        for (const int x : {3, 50, 96})
            QVERIFY(isOfCover(image.pixelColor(x, 50), Qt::green));
    }
}

void ImageProvidersTest::smallCoverIsEnlarged()
{
    const QImage image = drawCover(ArtworkData(stripes({30, 30}, "PNG")), 120, 0);
    QCOMPARE(image.size(), QSize(120, 120));
    QVERIFY(isOfCover(image.pixelColor(10, 60), Qt::red));
    QVERIFY(isOfCover(image.pixelColor(110, 60), Qt::blue));
}

void ImageProvidersTest::transparentCoverLiesOnTheFill()
{
    QImage empty(64, 64, QImage::Format_ARGB32);
    empty.fill(Qt::transparent);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QVERIFY(empty.save(&buffer, "PNG"));
    const int alpha = drawCover(ArtworkData(bytes), 64, 0).pixelColor(32, 32).alpha();
    QVERIFY(alpha > 0 && alpha < 255);
}

void ImageProvidersTest::undecodableCoverIsThePlaceholder_data()
{
    QTest::addColumn<QByteArray>("cover");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("garbage") << QByteArray("\x00\x01 no picture", 13);
    QTest::newRow("nothing but a head") << stripes({300, 300}, "PNG").left(40);
}

void ImageProvidersTest::undecodableCoverIsThePlaceholder()
{
    QFETCH(QByteArray, cover);
    CoverRegistry registry;
    CoverImageProvider provider(registry);
    const QImage expected = drawCover({}, 80, 0);
    QVERIFY(expected.pixelColor(40, 2).alpha() > 0);
    // The note stands out of the fill.
    int strongest = 0;
    for (int x = 0; x < 80; ++x)
        strongest = qMax(strongest, expected.pixelColor(x, 48).alpha());
    QVERIFY(strongest > 100);
    QCOMPARE(ask(provider, coverAddress(registry.source(songWith(u"a"_s, cover))) + u"?radius=0"_s, {80, 80}),
             expected);
}

void ImageProvidersTest::bombIsThePlaceholder()
{
    // A few kilobytes of PNG, 3.6 GB decoded.
    const QByteArray bomb = madePictureBomb(30'000);
    QCOMPARE(drawCover(ArtworkData(bomb), 64, 8), drawCover({}, 64, 8));
}

void ImageProvidersTest::coverInAFileIsRead()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"封面.jpg"_s);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(stripes({600, 600}, "JPEG"));
    file.close();
    QVERIFY(isOfCover(drawCover(ArtworkData::inFile(path.toUtf8(), file.size()), 60, 0).pixelColor(30, 30),
                      Qt::green));
    QVERIFY(QFile::remove(path));
    QCOMPARE(drawCover(ArtworkData::inFile(path.toUtf8(), 10), 60, 0), drawCover({}, 60, 0));
}

void ImageProvidersTest::drawnCoversAreKept()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.png"_s);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(stripes({90, 90}, "PNG"));
    file.close();
    CoverRegistry registry;
    CoverImageProvider provider(registry);
    Song song = songWith(u"a"_s, {});
    song.setArtworkData(ArtworkData::inFile(path.toUtf8(), file.size()));
    const QString address = coverAddress(registry.source(song)) + u"?radius=0"_s;
    const QImage first = ask(provider, address, {40, 40});
    QVERIFY(QFile::remove(path));
    QCOMPARE(ask(provider, address, {40, 40}), first);
    QVERIFY(ask(provider, address, {41, 41}) != first);
}

void ImageProvidersTest::cancelledAndForgottenResponsesEnd()
{
    CoverRegistry registry;
    auto provider = std::make_unique<CoverImageProvider>(registry);
    const QByteArray large = stripes({3000, 3000}, "JPEG");
    QList<QQuickImageResponse *> responses;
    for (int i = 0; i < 30; ++i) {
        const QString address = coverAddress(registry.source(songWith(QString::number(i), large)));
        responses.append(provider->requestImageResponse(address, {96, 96}));
    }
    std::vector<std::unique_ptr<QSignalSpy>> finished;
    for (QQuickImageResponse *response : std::as_const(responses)) {
        finished.push_back(std::make_unique<QSignalSpy>(response, &QQuickImageResponse::finished));
        response->cancel();
    }
    QTRY_VERIFY(
        std::all_of(finished.cbegin(), finished.cend(), [](const auto &spy) { return spy->size() == 1; }));
    qDeleteAll(responses);

    // One that is dropped, and a provider that goes, while a cover is being drawn.
    const QString address = coverAddress(registry.source(songWith(u"last"_s, large)));
    const std::unique_ptr<QQuickImageResponse> kept(provider->requestImageResponse(address, {97, 97}));
    delete provider->requestImageResponse(address, {98, 98});
    provider.reset();
}

QTEST_MAIN(ImageProvidersTest)
#include "tst_image_providers.moc"
