// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Contrast.h"
#include "Theme/ThemedSurfaces.h"
#include "Views/BackdropScene.h"

#include <QPainter>
#include <QSignalSpy>

namespace cadorel {

using namespace Qt::StringLiterals;

using Style = NowPlayingBackgroundStyle;

namespace {

const QByteArray backdrop = "NowPlayingBackdrop { width: 200; height: 400 }";
constexpr QColor purple(90, 30, 140);

QImage plain(const QColor &color)
{
    QImage image(64, 64, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// Squares of black, white and colours: the hardest ground for a text.
QImage busy()
{
    QImage image = plain(Qt::white);
    QPainter painter(&image);
    painter.fillRect(0, 0, 32, 64, Qt::black);
    painter.fillRect(32, 32, 20, 20, Qt::yellow);
    painter.fillRect(4, 40, 20, 20, Qt::blue);
    return image;
}

} // namespace

/// What is drawn behind the Now Playing screen, pixel by pixel.
class TestNowPlayingBackdrop : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<BackdropScene> b;

    bool show(Style style, const QString &cover, ThemeType type = ThemeType::classic,
              ColorScheme scheme = ColorScheme::light)
    {
        b->service.setNowPlayingBackgroundStyle(style);
        if (!b->show(backdrop, type, scheme, false))
            return false;
        // Stickers would lie on what is measured.
        item("decorations")->setVisible(false);
        setCover(cover);
        return true;
    }
    void setCover(const QString &cover) { b->scene.root()->setProperty("coverSource", cover); }
    QQuickItem *item(const char *name) const { return b->scene.item(QString::fromLatin1(name)); }
    QString shown() const { return item("pictures")->property("shownSource").toString(); }
    bool isFading() const { return item("pictures")->property("isFading").toBool(); }
    bool isSettledOn(const QString &cover) const
    {
        return shown() == u"image://backdrop/"_s + cover.mid(8) + u"?blur=50"_s && !isFading();
    }
    QColor color(const char *property) const { return b->scene.root()->property(property).value<QColor>(); }
    QColor pixel(double x, double y)
    {
        const QPointF place(x * b->scene.root()->width(), y * b->scene.root()->height());
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

    void aBlurredCoverLiesUnderItsVeil_data() { addThemes(); }
    void aBlurredCoverLiesUnderItsVeil()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        b->service.setNowPlayingBackgroundOpacity(0.7);
        const QString cover = BackdropScene::coverOf(QColor(200, 200, 200));
        QVERIFY(show(Style::blur, cover, type, scheme));
        QTRY_VERIFY(isSettledOn(cover));
        QColor veil = type == ThemeType::classic ? QColor(Qt::black) : b->scene.theme().backgroundColor();
        veil.setAlphaF(0.7F);
        QTRY_VERIFY(isNear(pixel(0.5, 0.5), Contrast::over(veil, QColor(200, 200, 200))));
    }

    void aVeilOfNothingShowsTheCover()
    {
        b->service.setNowPlayingBackgroundOpacity(0);
        const QString cover = BackdropScene::coverOf(QColor(20, 20, 20));
        QVERIFY(show(Style::blur, cover));
        QTRY_VERIFY(isNear(pixel(0.3, 0.9), QColor(20, 20, 20)));
        b->service.setNowPlayingBackgroundOpacity(1);
        QTRY_VERIFY(isNear(pixel(0.3, 0.9), Qt::black));
    }

    void plainIsTheLooksBackground_data() { addThemes(); }
    void plainIsTheLooksBackground()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        b->service.setNowPlayingBackgroundOpacity(0.4);
        QVERIFY(show(Style::solid, BackdropScene::coverOf(purple), type, scheme));
        QVERIFY(isNear(pixel(0.1, 0.9), b->scene.theme().backgroundColor(), 1));
        QCOMPARE(item("plainBackground")->property("color").value<QColor>(),
                 b->scene.theme().backgroundColor());
        QVERIFY(!item("ownBackground")->isVisible());
        QVERIFY(shown().isEmpty());
    }

    void aGradientRunsFromCornerToCorner_data() { addThemes(); }
    void aGradientRunsFromCornerToCorner()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        b->service.setNowPlayingBackgroundOpacity(0);
        QVERIFY(show(Style::gradient, {}, type, scheme));
        const QList<QColor> stops =
            ThemedSurfaces::laidOver({Qt::white}, ThemedSurfaces::nowPlayingGradient(&b->scene.theme()));
        // Texts may need a shade; the gradient itself is drawn beneath.
        item("veil")->setProperty("visible", false);
        QTRY_VERIFY(isNear(pixel(0.01, 0.005), stops.first(), 12));
        QVERIFY(isNear(pixel(0.5, 0.5), stops.at(1), 12));
        QVERIFY(isNear(pixel(0.99, 0.995), stops.last(), 12));
    }

    void aColorOfChoiceLiesUnderItsVeil()
    {
        b->service.setCustomBackgroundColor(QColor(40, 120, 80));
        b->service.setNowPlayingBackgroundOpacity(0.5);
        QVERIFY(show(Style::customColor, BackdropScene::coverOf(purple)));
        QVERIFY(isNear(pixel(0.5, 0.2), QColor(20, 60, 40)));
        b->service.setCustomBackgroundColor(QColor(200, 0, 0));
        QTRY_VERIFY(isNear(pixel(0.5, 0.2), QColor(100, 0, 0)));
    }

    void theListenersPictureFillsTheScreen()
    {
        b->service.setCustomBackgroundImage(busy());
        b->service.setCustomBackgroundBlur(0);
        b->service.setNowPlayingBackgroundOpacity(0.7);
        QVERIFY(show(Style::customImage, BackdropScene::coverOf(purple)));
        QTRY_VERIFY(shown().startsWith(u"image://backdrop/custom/"_s));
        // The middle of the square, as high as the screen: black left of its centre, colours right of it.
        QTRY_VERIFY(isNear(pixel(0.3, 0.1), Qt::black));
        QTRY_VERIFY(isNear(pixel(0.7, 0.1), QColor(77, 77, 77)));
        b->service.setCustomBackgroundBlur(50);
        QTRY_VERIFY(shown().endsWith(u"blur=50"_s) && !isFading());
        QTRY_VERIFY(pixel(0.48, 0.1).red() > 10);
        b->service.clearCustomBackgroundImage();
        QTRY_COMPARE(shown(), QString());
        QTRY_VERIFY(isNear(pixel(0.3, 0.1), b->scene.theme().backgroundColor()));
    }

    void transparentIsTheLooksOwnScreen_data() { addThemes(); }
    void transparentIsTheLooksOwnScreen()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(b->show("ThemedBackground { width: 200; height: 400 }", type, scheme, false));
        const QColor own = pixel(0.5, 0.03);
        QVERIFY(show(Style::clear, BackdropScene::coverOf(purple), type, scheme));
        QTRY_VERIFY(isNear(pixel(0.5, 0.03), own));
        QVERIFY(!item("veil")->isVisible());
    }

    void withoutACoverThereIsTheLooksOwnScreen_data()
    {
        QTest::addColumn<QString>("cover");
        QTest::newRow("nothing plays") << QString();
        QTest::newRow("no cover") << u"image://cover/none"_s;
        QTest::newRow("undecodable") << BackdropScene::coverOf("this is no picture"_ba);
        QTest::newRow("forgotten") << u"image://cover/0123456789"_s;
    }
    void withoutACoverThereIsTheLooksOwnScreen()
    {
        QFETCH(QString, cover);
        const QString purpleCover = BackdropScene::coverOf(purple);
        QVERIFY(show(Style::blur, purpleCover));
        QTRY_VERIFY(isSettledOn(purpleCover));
        QCOMPARE(color("textColor"), QColor(Qt::white));
        setCover(cover);
        QTRY_VERIFY(shown() != u"image://backdrop/"_s + purpleCover.mid(8) + u"?blur=50"_s && !isFading());
        QTRY_VERIFY(isNear(pixel(0.5, 0.5), Qt::white));
        QTRY_COMPARE(color("textColor"), QColor(Qt::black));
        QVERIFY(!b->scene.root()->property("isDark").toBool());
        setCover(purpleCover);
        QTRY_VERIFY(isSettledOn(purpleCover));
        QTRY_COMPARE(color("textColor"), QColor(Qt::white));
    }

    void aNewCoverFadesInAndTheOldOneStaysMeanwhile()
    {
        b->service.setNowPlayingBackgroundOpacity(0);
        const QString red = BackdropScene::coverOf(QColor(120, 0, 0));
        const QString blue = BackdropScene::coverOf(QColor(0, 0, 120));
        QVERIFY(show(Style::blur, red));
        QTRY_VERIFY(isSettledOn(red));
        const QSignalSpy fades(item("pictures"), SIGNAL(isFadingChanged()));
        setCover(blue);
        const auto isDone = [&] {
            // Nothing of what lies beneath, which is white, shines through.
            const QColor now = pixel(0.5, 0.5);
            return now.green() > 12 || (isSettledOn(blue) && now.blue() > 100 && now.red() < 12);
        };
        QTRY_VERIFY(isDone());
        QVERIFY(pixel(0.5, 0.5).green() <= 12);
        QCOMPARE(fades.size(), 2);
    }

    void nothingFadesOnADesktopOfLessMotion()
    {
        b->kawaii.desktop.setReducesMotion(true);
        const QString red = BackdropScene::coverOf(QColor(120, 0, 0));
        const QString blue = BackdropScene::coverOf(QColor(0, 0, 120));
        QVERIFY(show(Style::blur, red));
        QTRY_VERIFY(isSettledOn(red));
        const QSignalSpy fades(item("pictures"), SIGNAL(isFadingChanged()));
        setCover(blue);
        QTRY_VERIFY(isSettledOn(blue));
        QCOMPARE(fades.size(), 0);
    }

    void ofManyQuickChangesTheLastOneStays()
    {
        QStringList covers;
        for (int i = 0; i < 40; ++i)
            covers << BackdropScene::coverOf(QColor(10 + 5 * i, 0, 0));
        QVERIFY(show(Style::blur, covers.first()));
        for (int round = 0; round < 3; ++round) {
            for (const QString &cover : covers) {
                setCover(cover);
                QCoreApplication::processEvents();
            }
        }
        QTRY_VERIFY(isSettledOn(covers.constLast()));
        // There and back before the other one was there.
        setCover(covers.first());
        setCover(covers.constLast());
        QTest::qWait(0);
        QTRY_VERIFY(isSettledOn(covers.constLast()));
        // And in the middle of the fade.
        const QSignalSpy fades(item("pictures"), SIGNAL(isFadingChanged()));
        setCover(covers.first());
        QTRY_VERIFY(!fades.isEmpty());
        setCover(covers.constLast());
        QTRY_VERIFY(isSettledOn(covers.constLast()));
    }

    void aChangeOfStyleShowsAtOnceWhatItIs()
    {
        const QString cover = BackdropScene::coverOf(QColor(100, 100, 100));
        QVERIFY(show(Style::blur, cover));
        QTRY_VERIFY(isSettledOn(cover));
        b->service.setNowPlayingBackgroundStyle(Style::solid);
        QTRY_VERIFY(isNear(pixel(0.5, 0.5), Qt::white));
        QTRY_COMPARE(color("textColor"), QColor(Qt::black));
        b->service.setNowPlayingBackgroundStyle(Style::blur);
        QTRY_VERIFY(isSettledOn(cover));
        QTRY_VERIFY(isNear(pixel(0.5, 0.5), QColor(30, 30, 30)));
    }

    void textsCanBeReadOnWhatIsDrawn_data() { addThemes(); }
    void textsCanBeReadOnWhatIsDrawn()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        b->kawaii.desktop.setReducesMotion(true);
        const QString cover = BackdropScene::coverOf(busy());
        for (const double opacity : {0.0, 0.5, 0.7}) {
            b->service.setNowPlayingBackgroundOpacity(opacity);
            QVERIFY(show(Style::blur, cover, type, scheme));
            QTRY_VERIFY(isSettledOn(cover));
            QTRY_VERIFY(color("textColor").isValid());
            const QImage grabbed = b->scene.grab();
            for (double y = 0.02; y < 1; y += 0.06) {
                for (double x = 0.05; x < 1; x += 0.1) {
                    const QPointF place(x * 200, y * 400);
                    const QColor ground = grabbed.pixelColor(b->scene.root()->mapToScene(place).toPoint());
                    QVERIFY2(Contrast::ratio(color("textColor"), ground) > 4.2, qPrintable(ground.name()));
                    QVERIFY(Contrast::ratio(color("secondaryTextColor"), ground) > 4.2);
                }
            }
        }
    }

    void onlyThePinkLookIsDecorated_data() { addThemes(); }
    void onlyThePinkLookIsDecorated()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(show(Style::gradient, {}, type, scheme));
        QCOMPARE(b->scene.item(u"sticker0"_s) != nullptr, type == ThemeType::kawaiiPink);
    }

    void itIsNothingToAScreenReader()
    {
        QVERIFY(
            b->show("Item { width: 200; height: 400 }", ThemeType::kawaiiPink, ColorScheme::light, false));
        const int before = b->kawaii.accessibleItems();
        QVERIFY(show(Style::blur, BackdropScene::coverOf(purple), ThemeType::kawaiiPink));
        QCOMPARE(b->kawaii.accessibleItems(), before);
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestNowPlayingBackdrop)
#include "tst_now_playing_backdrop.moc"
