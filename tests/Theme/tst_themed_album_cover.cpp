// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakePreferences.h"
#include "Models/Song.h"
#include "Services/ThemeService.h"
#include "Theme/ThemeManager.h"
#include "Theme/ThemedScene.h"
#include "ViewModels/CoverRegistry.h"

#include <QElapsedTimer>
#include <QQuickImageProvider>
#include <QTemporaryDir>

#include <atomic>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Milliseconds between two pictures of something whose size changes.
constexpr int redrawInterval = 100;

/// Counts the pictures that are asked for.
class CountingProvider : public QQuickImageProvider
{
public:
    CountingProvider()
        : QQuickImageProvider(Image)
    {
    }
    QImage requestImage(const QString & /*id*/, QSize *size, const QSize &requestedSize) override
    {
        ++count;
        lastSize = requestedSize.width();
        QImage image(requestedSize, QImage::Format_RGB32);
        image.fill(Qt::red);
        *size = image.size();
        return image;
    }

    // Written by the engine's thread of pictures.
    std::atomic<int> count = 0;
    std::atomic<int> lastSize = 0;
};

} // namespace

/// The large cover on its shadow.
class TestThemedAlbumCover : public QObject
{
    Q_OBJECT
private:
    FakePreferences m_preferences;
    FakeDesktopAppearance m_appearance;
    ThemeManager m_manager{m_preferences, m_appearance};
    ThemeService m_service{m_preferences, m_manager, m_appearance};
    std::unique_ptr<ThemedScene> s;
    QTemporaryDir m_folder;

    void showCover(const QString &image, ThemeType type = ThemeType::classic,
                   ColorScheme scheme = ColorScheme::light)
    {
        QVERIFY(s->show("ThemedAlbumCover { size: 200; cornerRadius: 20; image: \"" + image.toUtf8() + "\" }",
                        type, scheme));
    }
    bool isReady() const
    {
        constexpr int ready = 1; // Image.Ready
        return s->item(u"picture"_s)->property("status").toInt() == ready;
    }
    QColor pixel(int x, int y)
    {
        return s->grab().pixelColor(s->root()->mapToScene(QPointF(x, y)).toPoint());
    }

private Q_SLOTS:
    void init()
    {
        s = std::make_unique<ThemedScene>(
            InterfaceParts{.themeManager = &m_manager, .themeService = &m_service});
    }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void withoutAPictureItsRoomIsFilled_data() { addThemes(); }
    void withoutAPictureItsRoomIsFilled()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showCover({}, type, scheme);
        QCOMPARE(s->root()->size(), QSizeF(200, 200));
        QVERIFY(s->item(u"placeholder"_s)->isVisible());
        QCOMPARE(pixel(100, 100).rgb(), s->theme().surfaceColor().rgb());
        QCOMPARE(s->item(u"placeholder"_s)->property("radius").toDouble(), 20.0);
        QVERIFY(ThemedScene::accessibleName(s->root()).isEmpty());
    }
    void aCoverFillsItsRoomAndHasRoundCorners_data()
    {
        QTest::addColumn<QString>("image");
        QImage red(320, 320, QImage::Format_RGB32);
        red.fill(Qt::red);
        const QString path = m_folder.filePath(u"红 50%#1.png"_s);
        QVERIFY(red.save(path));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        Song song = Song(SongFields{.id = u"a"_s,
                                    .title = u"a"_s,
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
        song.setArtworkData(ArtworkData(file.readAll()));
        QTest::newRow("cover") << CoverRegistry::shared().source(song);
        m_service.setCustomBackgroundImage(red);
        QTest::newRow("picture of the listener") << m_service.customBackgroundImageSource();
        QTest::newRow("file") << QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    }
    void aCoverFillsItsRoomAndHasRoundCorners()
    {
        QFETCH(QString, image);
        showCover(image);
        QTRY_VERIFY(isReady());
        QVERIFY(!s->item(u"placeholder"_s)->isVisible());
        QCOMPARE(pixel(100, 100), QColor(Qt::red));
        QCOMPARE(pixel(100, 190), QColor(Qt::red));
        // Within the corners, where a square would be.
        for (const QPoint corner : {QPoint(1, 1), QPoint(198, 1), QPoint(1, 198), QPoint(198, 198)})
            QVERIFY(pixel(corner.x(), corner.y()).green() > 100);
    }
    void aWideCoverIsCutAboutItsCentre()
    {
        QImage wide(600, 200, QImage::Format_RGB32);
        wide.fill(Qt::blue);
        for (int y = 0; y < 200; ++y) {
            for (int x = 200; x < 400; ++x)
                wide.setPixelColor(x, y, Qt::red);
        }
        const QString path = m_folder.filePath(u"wide.png"_s);
        QVERIFY(wide.save(path));
        showCover(QUrl::fromLocalFile(path).toString());
        QTRY_VERIFY(isReady());
        for (const int x : {20, 100, 180})
            QCOMPARE(pixel(x, 100), QColor(Qt::red));
    }
    void aWindowThatIsResizedAsksForFewPictures()
    {
        auto *provider = new CountingProvider; // the engine's
        showCover({});
        qmlEngine(s->root())->addImageProvider(u"counted"_s, provider);
        s->root()->setProperty("image", u"image://counted/cover"_s);
        QTRY_VERIFY(isReady());
        QCOMPARE(provider->count, 1);

        QElapsedTimer passed;
        passed.start();
        double size = 200;
        for (int width = 0; width < 40; ++width) {
            size += 3;
            s->root()->setProperty("size", size);
            s->root()->setSize({size, size});
            QCoreApplication::processEvents();
            // The picture before stays, stretched.
            QVERIFY(s->item(u"picture"_s)->property("isPicture").toBool());
            QVERIFY(!s->item(u"placeholder"_s)->isVisible());
        }
        // One at once, and then one each time the rest is over.
        const qint64 rests = passed.elapsed() / redrawInterval;
        QVERIFY2(provider->count <= 3 + rests, qPrintable(QString::number(provider->count)));
        // In the end it is drawn as large as it is shown.
        QTRY_COMPARE(provider->lastSize.load(), 320);
        QTRY_VERIFY(isReady());
    }
    void aPictureThatIsNotThereIsNoWarning()
    {
        showCover(QUrl::fromLocalFile(m_folder.filePath(u"gone.png"_s)).toString());
        QTRY_VERIFY(isReady());
        showCover(u"https://example.invalid/cover.png"_s);
        QTRY_VERIFY(isReady());
    }
    void theLookFramesTheCover_data() { addThemes(); }
    void theLookFramesTheCover()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showCover({}, type, scheme);
        const QColor far = pixel(-38, 100);
        const QColor below = pixel(100, 203);
        QCOMPARE(far.rgb(), s->theme().backgroundColor().rgb());
        QVERIFY2(below != far, "a shadow lies beneath the cover");
        if (type != ThemeType::neumorphism)
            QVERIFY2(pixel(1, 100) != pixel(100, 100), "a stroke lies on its edge");
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestThemedAlbumCover)
#include "tst_themed_album_cover.moc"
