// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/SurfaceImageProvider.h"
#include "Theme/SurfacePainter.h"
#include "Theme/ThemedScene.h"
#include "Theme/ThemedSurfaces.h"

#include <QPainter>
#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int place = 40; // of the component in the scene

QByteArray item(const QByteArray &surface, QSizeF size)
{
    return "SurfaceImage { width: " + QByteArray::number(size.width()) +
           "; height: " + QByteArray::number(size.height()) + "; surface: Surfaces." + surface + " }";
}

int differenceOf(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

} // namespace

/// What reaches the screen of a surface; run at several scales of the screen.
class SurfaceImageTest : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;

    qreal ratio() const { return s->window()->effectiveDevicePixelRatio(); }
    Surface surface() const { return s->root()->property("surface").value<Surface>(); }
    QQuickItem *picture() const { return s->item(u"picture"_s); }
    QString source() const { return picture()->property("source").toString(); }

    /// The window as it has to look with that surface at its place.
    QImage expected(const Surface &surface, QSizeF size) const
    {
        QImage screen((QSizeF(s->window()->size()) * ratio()).toSize(), QImage::Format_RGB32);
        screen.fill(s->window()->color());
        const QImage drawn =
            paintSurface(surface, {qRound(size.width() * ratio()), qRound(size.height() * ratio())}, ratio());
        const int at = qRound(place * ratio()) - scaledLength(surface.margin(), ratio());
        QPainter(&screen).drawImage(at, at, drawn);
        return screen;
    }

    void compareToScreen(const QImage &wanted)
    {
        QImage seen = s->grab().convertToFormat(QImage::Format_RGB32);
        seen.setDevicePixelRatio(1);
        QCOMPARE(seen.size(), wanted.size());
        int worst = 0;
        QPoint where;
        for (int y = 0; y < seen.height(); ++y) {
            const auto *seenLine = reinterpret_cast<const QRgb *>(seen.constScanLine(y));
            const auto *wantedLine = reinterpret_cast<const QRgb *>(wanted.constScanLine(y));
            for (int x = 0; x < seen.width(); ++x) {
                const int difference = differenceOf(seenLine[x], wantedLine[x]);
                if (difference > worst) {
                    worst = difference;
                    where = {x, y};
                }
            }
        }
        QVERIFY2(worst <= 3, qPrintable(u"off by %1 at %2, %3"_s.arg(worst).arg(where.x()).arg(where.y())));
    }

private Q_SLOTS:
    void init() { s = std::make_unique<ThemedScene>(); }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void screenShowsWhatThePainterDraws_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<bool>("stretches");
        const auto row = [](const char *name, QSizeF size, bool stretches) {
            QTest::addRow("%s %gx%g", name, size.width(), size.height())
                << QByteArray(name) << size << stretches;
        };
        row("themedRow(ThemeEnvironment.theme)", {358, 64}, true);
        row("themedRow(ThemeEnvironment.theme)", {20, 20}, false);
        row("themedCard(ThemeEnvironment.theme, 12)", {200, 112}, true);
        row("themedCard(ThemeEnvironment.theme, 16)", {30, 112}, false);
        row("themedButton(ThemeEnvironment.theme, true, 12)", {160, 60}, true);
        row("kawaiiButton(ThemeEnvironment.theme, true)", {120, 44}, true);
        row("searchBar(ThemeEnvironment.theme)", {300, 44}, true);
        row("themedRowArtwork(ThemeEnvironment.theme)", {48, 48}, false);
        row("albumCoverShadow(ThemeEnvironment.theme, 20)", {240, 240}, true);
        row("albumCoverStroke(ThemeEnvironment.theme, 20)", {240, 240}, false);
        row("playButton(ThemeEnvironment.theme, 64)", {64, 64}, false);
        row("progressTrack(ThemeEnvironment.theme)", {200, 4}, false);
        row("progressKnob(ThemeEnvironment.theme, 12)", {12, 12}, false);
        row("progressKnob(ThemeEnvironment.theme, 12)", {1, 1}, false);
        row("background(ThemeEnvironment.theme)", {200, 300}, false);
    }
    void screenShowsWhatThePainterDraws()
    {
        QFETCH(QByteArray, name);
        QFETCH(QSizeF, size);
        QFETCH(bool, stretches);
        QVERIFY(s->show(item(name, size)));
        for (const ThemeType type : allThemeTypes()) {
            for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
                s->setTheme(type, scheme);
                compareToScreen(expected(surface(), size));
                if (surface().address().isEmpty() || !surface().isStretched())
                    continue;
                if (stretches)
                    QVERIFY2(!source().contains("width"_L1), qPrintable(source()));
            }
        }
    }

    void oneSmallPictureServesEverySize()
    {
        QVERIFY(s->show(item("themedRow(ThemeEnvironment.theme)", {300, 64})));
        const QString before = source();
        QVERIFY(!before.isEmpty());
        for (const QSizeF size : {QSizeF(120, 70), QSizeF(1000, 64), QSizeF(358, 400)}) {
            s->root()->setSize(size);
            QCOMPARE(source(), before);
        }
        QVERIFY(picture()->property("border").value<QObject *>()->property("left").toInt() > 0);
        // Thinner than its borders, it is drawn as it is.
        s->root()->setHeight(20);
        QVERIFY(source().contains("&height="_L1));
        QCOMPARE(picture()->property("border").value<QObject *>()->property("left").toInt(), 0);
        compareToScreen(expected(surface(), {358, 20}));
    }
    void scalingAndFractionsOfAPixelDrawNothingAnew()
    {
        QVERIFY(s->show(item("playButton(ThemeEnvironment.theme, 64)", {64, 64})));
        const QString before = source();
        s->root()->setScale(0.97);
        s->root()->setWidth(64.1);
        QCOMPARE(source(), before);
        s->root()->setWidth(70);
        QVERIFY(source() != before);
    }
    void nothingToSeeIsNoPicture()
    {
        for (const QByteArray name : {"themedRow(null)", "albumCoverShadow(null)"}) {
            QVERIFY(s->show(item(name, {100, 100})));
            QCOMPARE(source(), QString());
        }
        QVERIFY(s->show("SurfaceImage { width: 100; height: 100 }"));
        QCOMPARE(source(), QString());
        for (const QSizeF size : {QSizeF(0, 0), QSizeF(100, 0), QSizeF(0, 100)}) {
            QVERIFY(s->show(item("themedRow(ThemeEnvironment.theme)", size)));
            QCOMPARE(source(), QString());
        }
    }
    void pictureIsTakenAsItIs()
    {
        // Pixels of the picture lie on pixels of the screen, or edges would be blurred.
        QVERIFY(s->show(item("themedCard(ThemeEnvironment.theme, 12)", {200, 100})));
        const QRectF area = picture()->mapRectToScene({0, 0, picture()->width(), picture()->height()});
        for (const qreal edge : {area.left(), area.top(), area.right(), area.bottom()})
            QVERIFY(qAbs(edge * ratio() - qRound(edge * ratio())) < 1e-6);
    }
    void itIsNothingForScreenReaders()
    {
        QVERIFY(s->show(item("themedCard(ThemeEnvironment.theme, 12)", {200, 100})));
        QAccessibleInterface *interface = ThemedScene::accessible(s->root());
        QVERIFY(!interface || interface->state().invisible || interface->text(QAccessible::Name).isEmpty());
    }

    void providerDrawsEachPictureOnce()
    {
        SurfaceImageProvider provider;
        const QString address =
            ThemedSurfaces::kawaiiCard(&ThemeFactory::create(ThemeType::classic)).address() + u"?ratio=2"_s;
        QSize size;
        const QImage first = provider.requestImage(address, &size, {});
        QCOMPARE(size, first.size());
        QCOMPARE(provider.requestImage(address, nullptr, {5, 5}).cacheKey(), first.cacheKey());
    }
    void providerAnswersHostileAddresses_data()
    {
        QTest::addColumn<QString>("address");
        const QString good = ThemedSurfaces::kawaiiCard(&ThemeFactory::create(ThemeType::classic)).address();
        QTest::newRow("nothing") << QString();
        QTest::newRow("words") << u"../../etc/passwd"_s;
        QTest::newRow("negative size") << good + u"?ratio=1&width=-5&height=5"_s;
        QTest::newRow("no size") << good + u"?ratio=1&width=a&height=b"_s;
        QTest::newRow("half a size") << good + u"?ratio=1&width=7"_s;
        QTest::newRow("huge size") << good + u"?ratio=1&width=2000000000&height=2000000000"_s;
        QTest::newRow("too large a number") << good + u"?ratio=1&width=99999999999999999999&height=1"_s;
    }
    void providerAnswersHostileAddresses()
    {
        QFETCH(QString, address);
        SurfaceImageProvider provider;
        const QImage image = provider.requestImage(address, nullptr, {});
        QCOMPARE(image.size(), QSize(1, 1));
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    }
    void providerDrawsAtAnyRatio()
    {
        SurfaceImageProvider provider;
        const QString good = ThemedSurfaces::kawaiiCard(&ThemeFactory::create(ThemeType::classic)).address();
        for (const QString &text : {u"nan"_s, u"inf"_s, u"0"_s, u"-3"_s, u"1e300"_s, QString()}) {
            const QImage image = provider.requestImage(good + u"?ratio="_s + text, nullptr, {});
            QVERIFY(image.width() > 1 && image.width() < 1000);
        }
    }

    void backgroundFillsTheScreenWithItsGradient()
    {
        QVERIFY(s->show("ThemedBackground { width: 240; height: 400 }", ThemeType::kawaiiPink));
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            for (const ThemeType type : allThemeTypes()) {
                s->setTheme(type, scheme);
                compareToScreen(expected(ThemedSurfaces::background(&s->theme()), {240, 400}));
            }
        }
    }
    void backgroundOfAScreenOfAnySizeIsDrawnSmall_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<QSize>("drawn");
        QTest::newRow("phone") << QSize(390, 844) << QSize(390, 844);
        QTest::newRow("just so") << QSize(1024, 1024) << QSize(1024, 1024);
        QTest::newRow("a pixel more") << QSize(1024, 1025) << QSize(1023, 1024);
        QTest::newRow("large") << QSize(7680, 4320) << QSize(1024, 576);
        QTest::newRow("a line") << QSize(1, 90'000) << QSize(1, 1024);
        QTest::newRow("nothing") << QSize(0, 844) << QSize(0, 844);
    }
    void backgroundOfAScreenOfAnySizeIsDrawnSmall()
    {
        QFETCH(QSize, screen);
        QFETCH(QSize, drawn);
        QCOMPARE(ThemedSurfaces::backgroundSize(screen), drawn);
        if (drawn.isEmpty())
            return;
        QVERIFY(s->show("ThemedBackground { width: 240; height: 400 }", ThemeType::kawaiiPink));
        s->root()->setSize(QSizeF(screen) / ratio());
        const QString wanted = u"&width=%1&height=%2"_s.arg(drawn.width()).arg(drawn.height());
        QTRY_VERIFY2(source().endsWith(wanted), qPrintable(source()));
        SurfaceImageProvider provider;
        const QImage image =
            provider.requestImage(source().mid(QStringLiteral("image://surface/").size()), nullptr, {});
        QCOMPARE(image.size(), drawn);
        QCOMPARE(qAlpha(image.pixel(drawn.width() / 2, drawn.height() / 2)), 255);
    }
    void backgroundOfADraggedWindowIsDrawnAFewTimesOnly()
    {
        QVERIFY(s->show("ThemedBackground { width: 240; height: 400 }", ThemeType::kawaiiPink));
        QSignalSpy drawings(picture(), SIGNAL(sourceChanged(QUrl)));
        QVERIFY(drawings.isValid());
        constexpr int moves = 60;
        for (int i = 1; i <= moves; ++i) {
            s->root()->setWidth(240 + i);
            // Meanwhile it is stretched.
            QCOMPARE(picture()->width(), qRound((240 + i) * ratio()));
        }
        QVERIFY(drawings.size() <= 2);
        const QString wanted = u"&width=%1&"_s.arg(qRound((240 + moves) * ratio()));
        QTRY_VERIFY2(source().contains(wanted), qPrintable(source()));
        QVERIFY(drawings.size() <= 4);
        compareToScreen(expected(surface(u"background"_s), {240 + moves, 400}));
    }

private:
    Surface surface(const QString &name) const { return s->item(name)->property("surface").value<Surface>(); }
};

QTEST_MAIN(SurfaceImageTest)
#include "tst_surface_image.moc"
