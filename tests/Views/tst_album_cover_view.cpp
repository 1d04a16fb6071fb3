// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/CassetteLayout.h"
#include "Views/BackdropScene.h"

namespace cadorel {

using namespace Qt::StringLiterals;

/// The large cover of the Now Playing screen in its forms.
class TestAlbumCoverView : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<BackdropScene> b;

    bool show(const QString &cover, ThemeType type = ThemeType::classic,
              ColorScheme scheme = ColorScheme::light)
    {
        return b->show("AlbumCoverView { width: 300; height: 340; coverSource: \"" + cover.toUtf8() + "\" }",
                       type, scheme);
    }
    QQuickItem *item(const char *name) const { return b->scene.item(QString::fromLatin1(name)); }
    bool isPictureReady(const char *below) const
    {
        constexpr int ready = 1; // Image.Ready
        for (const QQuickItem *picture : b->scene.items(u"picture"_s)) {
            for (const QQuickItem *around = picture; around; around = around->parentItem()) {
                if (around == item(below) && picture->property("status").toInt() == ready)
                    return true;
            }
        }
        return false;
    }
    QRectF placeOf(const char *name) const
    {
        const QQuickItem *found = item(name);
        return found->mapRectToItem(b->scene.root(), QRectF(0, 0, found->width(), found->height()));
    }
    QColor pixel(const QPointF &place)
    {
        return b->scene.grab().pixelColor(b->scene.root()->mapToScene(place).toPoint());
    }

private Q_SLOTS:
    void init() { b = std::make_unique<BackdropScene>(); }
    void cleanup()
    {
        const QStringList warnings = b->scene.warnings.take();
        b.reset();
        QCOMPARE(warnings, QStringList());
    }

    void thePlainCoverHasTheStoredCorners_data() { addThemes(); }
    void thePlainCoverHasTheStoredCorners()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        b->service.setCassetteStyle(CassetteStyle::none);
        b->service.setSoundWaveRing(false);
        b->service.setAlbumCoverCornerRadius(50);
        QVERIFY(show(BackdropScene::coverOf(QColor(0, 0, 200)), type, scheme));
        QVERIFY(item("normalAlbumCover")->isVisible() && !item("cassetteAlbumCover")->isVisible());
        QTRY_VERIFY(isPictureReady("normalAlbumCover"));
        // The largest square, in the middle of its room.
        QCOMPARE(placeOf("normalAlbumCover"), QRectF(0, 20, 300, 300));
        QTRY_VERIFY(isNear(pixel({150, 170}), QColor(0, 0, 200)));
        QVERIFY(!isNear(pixel({6, 26}), QColor(0, 0, 200), 60));
        b->service.setSquareAlbumCover();
        QTRY_VERIFY(isPictureReady("normalAlbumCover"));
        QTRY_VERIFY(isNear(pixel({8, 28}), QColor(0, 0, 200), 60));
        QVERIFY(!item("placeholder note")->isVisible());
    }

    void storedNonsenseDrawsACoverAllTheSame()
    {
        FakePreferences preferences;
        preferences.setDouble(u"albumCoverCornerRadius"_s, -10);
        preferences.setString(u"dancingEmoji"_s, u"🕺"_s.repeated(1000));
        preferences.setString(u"selectedCassetteStyle"_s, rawValue(CassetteStyle::none));
        FakeDesktopAppearance desktop;
        ThemeManager manager(preferences, desktop);
        ThemeService stored(preferences, manager, desktop);
        ThemedScene scene({.desktopAppearance = &desktop, .themeManager = &manager, .themeService = &stored});
        QVERIFY(scene.show("AlbumCoverView { width: 300; height: 340 }", ThemeType::classic,
                           ColorScheme::light, {{u"player"_s, QVariant::fromValue(&b->player.player())}}));
        QCOMPARE(scene.item(u"normalAlbumCover"_s)->property("cornerRadius").toDouble(), 0.0);
        const QQuickItem *emoji = scene.item(u"emoji"_s);
        QVERIFY(emoji->property("contentWidth").toDouble() <= emoji->parentItem()->width());
        QCOMPARE(scene.warnings.take(), QStringList());
    }

    void onlyALookThatWantsItHasAShadow()
    {
        b->service.setCassetteStyle(CassetteStyle::none);
        for (const ThemeType type : allThemeTypes()) {
            QVERIFY(show(BackdropScene::coverOf(QColor(0, 0, 200)), type));
            QCOMPARE(item("shadow")->isVisible(), type != ThemeType::kawaiiPink);
        }
    }

    void aCassetteHoldsTheCover_data()
    {
        QTest::addColumn<CassetteStyle>("style");
        for (const CassetteStyle style : allCassetteStyles()) {
            if (style != CassetteStyle::none)
                QTest::newRow(qPrintable(rawValue(style))) << style;
        }
    }
    void aCassetteHoldsTheCover()
    {
        QFETCH(CassetteStyle, style);
        b->service.setCassetteStyle(style);
        QVERIFY(show(BackdropScene::coverOf(QColor(0, 0, 200))));
        QVERIFY(!item("normalAlbumCover")->isVisible());
        QCOMPARE(item("cassetteAlbumCover")->property("imageName").toString(), imageName(style));
        const CassetteConfig config = defaultConfig(style);
        const double side = item("cassetteAlbumCover")->width();
        const QRectF cover = CassetteLayout::coverRect(side, config.scale, config.offsetX, config.offsetY);
        QTRY_VERIFY(isPictureReady("cassetteAlbumCover"));
        const QPointF centre = item("cassetteAlbumCover")->mapToItem(b->scene.root(), cover.center());
        QTRY_VERIFY(isNear(pixel(centre), QColor(0, 0, 200)));
        // The listener moves it.
        b->service.setCassetteScale(0.5);
        b->service.setCassetteOffsetX(0.2);
        QTRY_COMPARE(item("cassetteAlbumCover")->property("configScale").toDouble(), 0.5);
        QVERIFY(qAbs(item("cassetteAlbumCover")->property("offsetX").toDouble() - 0.2) < 1e-6);
    }

    void aChangeOfTheStyleChangesTheCover()
    {
        QVERIFY(show(BackdropScene::coverOf(QColor(0, 0, 200))));
        QVERIFY(item("cassetteAlbumCover")->isVisible());
        b->service.setCassetteStyle(CassetteStyle::none);
        QTRY_VERIFY(item("normalAlbumCover")->isVisible());
        QVERIFY(!item("cassetteAlbumCover")->isVisible());
        b->service.setCassetteStyle(CassetteStyle::style3);
        QTRY_VERIFY(item("cassetteAlbumCover")->isVisible());
        QCOMPARE(item("cassetteAlbumCover")->property("imageName").toString(), u"Cassette3"_s);
    }

    void aSongWithoutACoverShowsANote_data()
    {
        QTest::addColumn<QString>("cover");
        QTest::newRow("nothing plays") << QString();
        QTest::newRow("no cover") << u"image://cover/none"_s;
    }
    void aSongWithoutACoverShowsANote()
    {
        QFETCH(QString, cover);
        b->service.setCassetteStyle(CassetteStyle::none);
        QVERIFY(show(cover));
        QVERIFY(item("placeholder note")->isVisible());
        QCOMPARE(item("placeholder note")->property("name").toString(), u"music.note"_s);
        QVERIFY(isNear(pixel({150, 80}), b->scene.theme().surfaceColor()));
    }

    void theRingAndTheDancerComeAndGoByTheSetting()
    {
        b->service.setCassetteStyle(CassetteStyle::none);
        QVERIFY(show(BackdropScene::coverOf(QColor(0, 0, 200))));
        QVERIFY(item("soundWaveRing")->isVisible() && item("dancingEmoji")->isVisible());
        const double within = item("normalAlbumCover")->width();
        QCOMPARE(within, 300.0 - 2 * 22);
        b->service.setSoundWaveRing(false);
        QTRY_VERIFY(!item("soundWaveRing")->isVisible());
        QVERIFY(!item("dancingEmoji")->isVisible());
        QTRY_COMPARE(item("normalAlbumCover")->width(), 300.0);
    }

    void theDancerStandsOnTheEdgeAndWithinTheRoom()
    {
        QVERIFY(show(BackdropScene::coverOf(QColor(0, 0, 200))));
        const QRectF cover = placeOf("cassetteAlbumCover");
        const QRectF dancer = placeOf("dancingEmoji");
        QVERIFY(dancer.intersects(cover) && !cover.contains(dancer));
        QVERIFY(QRectF(0, 0, 300, 340).contains(dancer));
    }

    void noRoomIsNoCover()
    {
        QVERIFY(show(BackdropScene::coverOf(QColor(0, 0, 200))));
        // What is about the cover goes first.
        b->scene.root()->setSize({170, 170});
        QTRY_VERIFY(!item("soundWaveRing")->isVisible() && !item("dancingEmoji")->isVisible());
        QCOMPARE(item("cassetteAlbumCover")->width(), 170.0);
        b->scene.root()->setSize({0, 0});
        QTRY_VERIFY(!item("cassetteAlbumCover")->isVisible());
        QVERIFY(!b->scene.grab().isNull());
    }

    void aScreenReaderHearsOfACover()
    {
        QVERIFY(show(BackdropScene::coverOf(QColor(0, 0, 200))));
        QCOMPARE(ThemedScene::accessibleName(b->scene.root()), u"封面"_s);
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestAlbumCoverView)
#include "tst_album_cover_view.moc"
