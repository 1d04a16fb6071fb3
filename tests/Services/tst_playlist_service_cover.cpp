// SPDX-License-Identifier: GPL-3.0-or-later
// Covers of playlists: scaling, encoding, and what happens meanwhile.
#include "Fakes/Await.h"
#include "Services/PlaylistBench.h"
#include "Services/Playlists/PlaylistCover.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QSemaphore>
#include <QTest>
#include <QThreadPool>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QImage plain(const QSize &size, const QColor &color = Qt::red, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    image.fill(color);
    return image;
}

/// JPEG does not keep colours exactly.
bool isNear(const QColor &a, const QColor &b)
{
    constexpr int most = 4;
    return std::abs(a.red() - b.red()) <= most && std::abs(a.green() - b.green()) <= most &&
           std::abs(a.blue() - b.blue()) <= most;
}

QColor centre(const std::optional<QImage> &image)
{
    return image ? image->pixelColor(image->width() / 2, image->height() / 2) : QColor();
}

} // namespace

class TestPlaylistServiceCover : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PlaylistBench> m_bench;

    PlaylistService &service() { return *m_bench->service; }
    void setCover(const QImage &image, const Playlist &playlist)
    {
        QVERIFY(await(service().setCoverImage(image, playlist)));
    }

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<PlaylistBench>();
        m_bench->start();
    }
    void cleanup() { m_bench.reset(); }

    void aPictureIsScaledToCoverTheTarget_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("target");
        QTest::addColumn<QSize>("expected");
        const QSize square(300, 300);
        QTest::newRow("wide") << QSize(1000, 500) << square << QSize(600, 300);
        QTest::newRow("tall") << QSize(500, 1000) << square << QSize(300, 600);
        QTest::newRow("square") << QSize(640, 640) << square << square;
        QTest::newRow("the target itself") << square << square << square;
        QTest::newRow("smaller, scaled up") << QSize(100, 50) << square << QSize(600, 300);
        QTest::newRow("one pixel") << QSize(1, 1) << square << square;
        QTest::newRow("rounded") << QSize(700, 300) << QSize(100, 100) << QSize(233, 100);
        QTest::newRow("rounded up") << QSize(500, 300) << QSize(100, 100) << QSize(167, 100);
        QTest::newRow("a target that is wide") << QSize(100, 100) << QSize(200, 50) << QSize(200, 200);
        QTest::newRow("longer than can be drawn") << QSize(1, 30000) << square << QSize(1, 16384);
        QTest::newRow("just as long as can be drawn") << QSize(16384, 300) << square << QSize(16384, 300);
    }
    void aPictureIsScaledToCoverTheTarget()
    {
        QFETCH(const QSize, size);
        QFETCH(const QSize, target);
        QFETCH(const QSize, expected);
        const QImage scaled = PlaylistService::resizeImage(plain(size), target);
        QCOMPARE(scaled.size(), expected);
        QCOMPARE(centre(scaled), QColor(Qt::red));
    }

    void nothingIsCutOff()
    {
        QImage image = plain({1000, 500}, Qt::white);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < 100; ++x) {
                image.setPixelColor(x, y, Qt::red);
                image.setPixelColor(image.width() - 1 - x, y, Qt::blue);
            }
        }
        const QImage scaled = PlaylistService::resizeImage(image, {300, 300});
        QCOMPARE(scaled.pixelColor(2, 150), QColor(Qt::red));
        QCOMPARE(scaled.pixelColor(597, 150), QColor(Qt::blue));
    }

    void noPictureOrNoTargetGivesNoPicture()
    {
        QVERIFY(PlaylistService::resizeImage({}, {300, 300}).isNull());
        QVERIFY(PlaylistService::resizeImage(plain({10, 10}), {0, 300}).isNull());
    }

    void aCoverIsStoredAsASmallJpeg()
    {
        const Playlist playlist = m_bench->local();
        m_bench->passSeconds(5);
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        setCover(plain({1000, 500}, Qt::darkCyan), playlist);
        QCOMPARE(changes.size(), 1);
        const Playlist stored = m_bench->now(playlist);
        QCOMPARE(stored.updatedAt, m_bench->machine.clock().now());
        QByteArray bytes = stored.coverImageData.value();
        QBuffer buffer(&bytes);
        QImageReader reader(&buffer);
        QCOMPARE(reader.format(), "jpeg"_ba);
        QCOMPARE(reader.size(), QSize(600, 300));
        QVERIFY(isNear(centre(stored.coverImage()), Qt::darkCyan));

        m_bench->start();
        QCOMPARE(m_bench->now(playlist).coverImageData, stored.coverImageData);
    }

    void aCoverIsEncodedAtFourFifthsOfTheQuality()
    {
        const QByteArray cover = playlistCover(plain({300, 300})).value();
        // Behind the marker: the length in two bytes, number and precision in one, the first divisor of
        // brightness. The tables of the standard have 16 there, of which quality 80 takes two fifths.
        const qsizetype table = cover.indexOf("\xff\xdb");
        QVERIFY(table > 0);
        QCOMPARE(static_cast<int>(cover.at(table + 5)), 6);
    }

    void theAddressOfACoverStays()
    {
        Playlist playlist = m_bench->online();
        playlist.coverURL = QUrl(u"https://example.org/a.jpg"_s);
        service().updatePlaylist(playlist);
        setCover(plain({10, 10}), playlist);
        QCOMPARE(m_bench->now(playlist).coverURL, playlist.coverURL);
        service().removeCoverImage(playlist);
        QCOMPARE(m_bench->now(playlist).coverURL, playlist.coverURL);
    }

    void theSameCoverAgainChangesTheRowOnceASecondHasPassed()
    {
        const Playlist playlist = m_bench->local();
        setCover(plain({10, 10}), playlist);
        const QString before = m_bench->now(playlist).uiIdentity();
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        setCover(plain({10, 10}), playlist);
        QCOMPARE(m_bench->now(playlist).uiIdentity(), before);
        m_bench->passSeconds(1);
        setCover(plain({10, 10}), playlist);
        QVERIFY(m_bench->now(playlist).uiIdentity() != before);
        QCOMPARE(changes.size(), 2);
    }

    void aCoverIsRemoved()
    {
        const Playlist playlist = m_bench->local();
        setCover(plain({10, 10}), playlist);
        m_bench->passSeconds(5);
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        service().removeCoverImage(playlist);
        service().removeCoverImage(playlist);
        QVERIFY(!m_bench->now(playlist).coverImageData);
        QCOMPARE(m_bench->now(playlist).updatedAt, m_bench->machine.clock().now());
        QCOMPARE(changes.size(), 2);
    }

    void whatCannotBeEncodedLeavesTheOldCover()
    {
        const Playlist playlist = m_bench->local();
        setCover(plain({10, 10}), playlist);
        const Playlist before = m_bench->now(playlist);
        m_bench->passSeconds(5);
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        setCover({}, playlist);
        QCOMPARE(m_bench->now(playlist).coverImageData, before.coverImageData);
        QCOMPARE(m_bench->now(playlist).updatedAt, before.updatedAt);
        QVERIFY(changes.isEmpty());
    }

    void aCoverOfAPlaylistThatIsGoneOrMovedIsNoTrouble()
    {
        const Playlist gone = m_bench->local(u"走"_s);
        const Playlist moved = m_bench->local(u"留"_s);
        QCoro::Task<void> first = service().setCoverImage(plain({500, 500}), gone);
        QCoro::Task<void> second = service().setCoverImage(plain({500, 500}, Qt::blue), moved);
        service().deletePlaylist(gone);
        service().renamePlaylist(moved, u"新名"_s);
        QVERIFY(await(std::move(first)));
        QVERIFY(await(std::move(second)));
        QVERIFY(!service().playlist(gone.id));
        QCOMPARE(m_bench->now(moved).name, u"新名"_s);
        QVERIFY(isNear(centre(m_bench->now(moved).coverImage()), Qt::blue));
    }

    void theLastWishAboutACoverHolds()
    {
        const Playlist playlist = m_bench->local();
        // The first takes longer than the second.
        QCoro::Task<void> first = service().setCoverImage(plain({5000, 5000}), playlist);
        QCoro::Task<void> second = service().setCoverImage(plain({10, 10}, Qt::blue), playlist);
        QVERIFY(await(std::move(first)));
        QVERIFY(await(std::move(second)));
        QVERIFY(isNear(centre(m_bench->now(playlist).coverImage()), Qt::blue));

        QCoro::Task<void> third = service().setCoverImage(plain({10, 10}), playlist);
        service().removeCoverImage(playlist);
        QVERIFY(await(std::move(third)));
        QVERIFY(!m_bench->now(playlist).coverImageData);

        // A wish that comes to nothing takes none back.
        QCoro::Task<void> fourth = service().setCoverImage(plain({10, 10}), playlist);
        QVERIFY(await(service().setCoverImage({}, playlist)));
        QVERIFY(await(std::move(fourth)));
        QVERIFY(m_bench->now(playlist).coverImageData);
    }

    void theServiceMayEndWhileACoverIsMade()
    {
        const Playlist playlist = m_bench->local();
        // No worker is free before the service has gone.
        QThreadPool &pool = *QThreadPool::globalInstance();
        QSemaphore held;
        const int threads = pool.maxThreadCount();
        pool.setMaxThreadCount(1);
        pool.start([&held] { held.acquire(); });
        QCoro::Task<void> task = service().setCoverImage(plain({10, 10}), playlist);
        m_bench->service.reset();
        held.release();
        QVERIFY(await(std::move(task)));
        pool.setMaxThreadCount(threads);
        m_bench->start();
        QVERIFY(!m_bench->now(playlist).coverImageData);
    }

    void everyKindOfPictureMakesACover_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<QColor>("expected");
        const QSize size(40, 40);
        QTest::newRow("transparent, on white")
            << plain(size, Qt::transparent, QImage::Format_ARGB32) << QColor(Qt::white);
        QTest::newRow("half transparent")
            << plain(size, QColor(255, 0, 0, 128), QImage::Format_ARGB32) << QColor(255, 127, 127);
        QTest::newRow("premultiplied")
            << plain(size, QColor(255, 0, 0, 128), QImage::Format_ARGB32_Premultiplied)
            << QColor(255, 127, 127);
        QTest::newRow("16 bits") << plain(size, Qt::darkGreen, QImage::Format_RGBX64)
                                 << QColor(Qt::darkGreen);
        QTest::newRow("16 bits, transparent")
            << plain(size, Qt::transparent, QImage::Format_RGBA64) << QColor(Qt::white);
        QTest::newRow("floats") << plain(size, Qt::darkGreen, QImage::Format_RGBA32FPx4)
                                << QColor(Qt::darkGreen);
        QTest::newRow("grey") << plain(size, Qt::gray, QImage::Format_Grayscale8) << QColor(Qt::gray);
        QTest::newRow("16 bits of grey")
            << plain(size, Qt::gray, QImage::Format_Grayscale16) << QColor(Qt::gray);
        QImage palette(size, QImage::Format_Indexed8);
        palette.setColorTable({qRgb(1, 2, 3), qRgb(200, 100, 50)});
        palette.fill(1);
        QTest::newRow("palette") << palette << QColor(200, 100, 50);
        QImage mono(size, QImage::Format_Mono);
        mono.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
        mono.fill(1);
        QTest::newRow("black and white") << mono << QColor(Qt::white);
        QTest::newRow("5, 6 and 5 bits") << plain(size, Qt::red, QImage::Format_RGB16) << QColor(Qt::red);
        QImage dense = plain(size);
        dense.setDevicePixelRatio(3);
        QTest::newRow("dense") << dense << QColor(Qt::red);
        // Its red is a brighter one in the colours of the web.
        QImage wide = plain(size, QColor(150, 75, 75));
        wide.setColorSpace(QColorSpace::DisplayP3);
        QImage web = wide;
        web.convertToColorSpace(QColorSpace::SRgb);
        QTest::newRow("wide colours") << wide << web.pixelColor(0, 0);
        QTest::newRow("a thread") << plain({1, 30'000}) << QColor(Qt::red);
        QTest::newRow("enormous") << plain({8'000, 6'000}, Qt::blue) << QColor(Qt::blue);
    }
    void everyKindOfPictureMakesACover()
    {
        QFETCH(const QImage, image);
        QFETCH(const QColor, expected);
        const std::optional<QByteArray> bytes = playlistCover(image);
        QVERIFY(bytes);
        const QImage cover = QImage::fromData(*bytes);
        QVERIFY(!cover.isNull());
        const QColor color = centre(cover);
        QVERIFY2(isNear(color, expected), qPrintable(color.name() + u" for "_s + expected.name()));
        QCOMPARE(cover.size(), PlaylistService::resizeImage(image, {300, 300}).size());
    }

    void aCoverCarriesNoTextsOfItsFile()
    {
        QImage image = plain({400, 400});
        image.setText(u"Comment"_s, u"taken at home"_s);
        const QByteArray bytes = playlistCover(image).value();
        QVERIFY(!bytes.contains("taken at home"));
        QVERIFY(QImage::fromData(bytes).textKeys().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestPlaylistServiceCover)
#include "tst_playlist_service_cover.moc"
