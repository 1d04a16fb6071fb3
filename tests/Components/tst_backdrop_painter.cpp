// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BackdropPainter.h"

#include "Theme/Contrast.h"

#include <QPainter>
#include <QTest>

#include <limits>

namespace cadorel {

namespace {

QImage plain(const QSize &size, const QColor &color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

/// The lower half in another colour.
QImage halves(int side, const QColor &upper, const QColor &lower)
{
    QImage image = plain({side, side}, upper);
    QPainter(&image).fillRect(0, side / 2, side, side / 2, lower);
    return image;
}

} // namespace

/// What becomes of a picture behind a screen.
class TestBackdropPainter : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void thePictureIsAsSmallAsItsBlurAllows()
    {
        QCOMPARE(backdropSide(0), 800);
        QCOMPARE(backdropSide(std::numeric_limits<double>::quiet_NaN()), 800);
        QCOMPARE(backdropSide(50), 68);
        QCOMPARE(backdropSide(1000), 64);
        for (double blur = 1; blur < 50; ++blur)
            QVERIFY(backdropSide(blur) >= backdropSide(blur + 1));
        QCOMPARE(paintBackdrop(plain({1200, 600}, Qt::red), {.blur = 50}).size(), QSize(68, 34));
        QCOMPARE(paintBackdrop(plain({1200, 600}, Qt::red), {.blur = 0}).size(), QSize(800, 400));
    }

    void tinyPicturesAreMadeLargeEnoughToBeSeen()
    {
        QCOMPARE(paintBackdrop(plain({1, 1}, Qt::red), {.blur = 50}).size(), QSize(8, 8));
        QCOMPARE(paintBackdrop(plain({4000, 1}, Qt::red), {.blur = 50}).size(), QSize(68, 8));
    }

    void itIsOpaqueAndWhiteWhereItWasTransparent()
    {
        const QImage image = paintBackdrop(plain({100, 100}, QColor(0, 0, 255, 128)), {.blur = 30});
        QVERIFY(!image.hasAlphaChannel());
        const QColor color = image.pixelColor(30, 30);
        QVERIFY(qAbs(color.red() - 127) < 3 && color.blue() > 252);
    }

    void theSamePartIsBlurredWhateverTheSizeOfThePicture()
    {
        const QImage small = paintBackdrop(halves(120, Qt::black, Qt::white), {.blur = 30});
        const QImage large = paintBackdrop(halves(1500, Qt::black, Qt::white), {.blur = 30});
        for (const double at : {0.3, 0.42, 0.5, 0.58, 0.7}) {
            const auto value = [at](const QImage &image) {
                return image.pixelColor(image.width() / 2, static_cast<int>(at * image.height())).red();
            };
            QVERIFY2(qAbs(value(small) - value(large)) < 16, qPrintable(QString::number(at)));
        }
        QVERIFY(small.pixelColor(50, 5).red() < 5);
        QVERIFY(small.pixelColor(50, small.height() - 5).red() > 250);
    }

    void colorsGlowAndGreysStay()
    {
        const auto painted = [](const QColor &color) {
            return paintBackdrop(plain({70, 70}, color), {.blur = 50, .saturation = 1.3}).pixelColor(9, 9);
        };
        QCOMPARE(painted(QColor(90, 90, 90)), QColor(90, 90, 90));
        QCOMPARE(painted(Qt::white), QColor(Qt::white));
        const QColor muted(120, 100, 110);
        QVERIFY(painted(muted).hslSaturation() > muted.hslSaturation());
        QVERIFY(qAbs(Contrast::ratio(painted(muted), muted) - 1) < 0.2);
        const QImage plainly = paintBackdrop(plain({70, 70}, muted), {.blur = 50, .saturation = 1});
        QCOMPARE(plainly.pixelColor(9, 9), muted);
    }

    void colorsOfItsPartsGoFromDarkToLight()
    {
        const QList<QColor> colors = backdropColors(halves(60, Qt::yellow, Qt::darkBlue));
        QCOMPARE(colors.size(), backdropColorCount);
        QCOMPARE(colors.first(), QColor(Qt::darkBlue));
        QCOMPARE(colors.last(), QColor(Qt::yellow));
        QVERIFY(backdropColors({}).isEmpty());
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestBackdropPainter)
#include "tst_backdrop_painter.moc"
