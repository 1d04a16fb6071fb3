// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BoxBlur.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace cadorel {

namespace {

QImage plain(const QSize &size, const QColor &color, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    image.fill(color);
    return image;
}

/// Black on the left, white from the middle on.
QImage edge(int width, int height)
{
    QImage image = plain({width, height}, Qt::black);
    for (int y = 0; y < height; ++y) {
        for (int x = width / 2; x < width; ++x)
            image.setPixelColor(x, y, Qt::white);
    }
    return image;
}

} // namespace

/// The averages against the Gaussian that they stand for.
class TestBoxBlur : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void noBlurLeavesThePictureAsItIs_data()
    {
        QTest::addColumn<double>("deviation");
        QTest::newRow("none") << 0.0;
        QTest::newRow("negative") << -3.0;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
    }
    void noBlurLeavesThePictureAsItIs()
    {
        QFETCH(double, deviation);
        const QImage image = edge(20, 20);
        QCOMPARE(BoxBlur(deviation).blurred(image), image);
        QVERIFY(BoxBlur(deviation).blurred({}).isNull());
    }

    void boxesAreOddAndTogetherAsWideAsTheGaussian()
    {
        for (double deviation = 1; deviation < 60; deviation += 0.5) {
            double variance = 0;
            for (const int width : BoxBlur(deviation).widths()) {
                QCOMPARE(width % 2, 1);
                variance += (width * width - 1) / 12.0;
            }
            QVERIFY2(std::abs(std::sqrt(variance) - deviation) < 0.25,
                     qPrintable(QString::number(deviation)));
        }
    }

    void anEdgeBecomesTheCurveOfAGaussian_data()
    {
        QTest::addColumn<double>("deviation");
        for (const double deviation : {1.5, 4.0, 8.0})
            QTest::addRow("%.1f", deviation) << deviation;
    }
    void anEdgeBecomesTheCurveOfAGaussian()
    {
        QFETCH(double, deviation);
        const QImage image = BoxBlur(deviation).blurred(edge(120, 5));
        for (int x = 0; x < image.width(); ++x) {
            const double distance = x + 0.5 - image.width() / 2.0;
            const double expected = 127.5 * (1 + std::erf(distance / deviation / std::sqrt(2)));
            const int value = image.pixelColor(x, 2).red();
            QVERIFY2(std::abs(value - expected) < 9, qPrintable(QString::number(x)));
        }
    }

    void aPlainPictureStaysPlainToItsEdges()
    {
        for (const double deviation : {0.5, 3.0, 40.0}) {
            const QImage image = plain({31, 17}, QColor(200, 100, 7));
            QCOMPARE(BoxBlur(deviation).blurred(image), image);
        }
    }

    void leftAndRightAreBlurredAlike()
    {
        QImage image = plain({41, 41}, Qt::black);
        image.setPixelColor(20, 20, Qt::white);
        for (int y = 18; y < 23; ++y)
            image.setPixelColor(9, y, Qt::red);
        const QImage blurred = BoxBlur(3).blurred(image);
        QCOMPARE(BoxBlur(3).blurred(image.mirrored(true, false)), blurred.mirrored(true, false));
        QCOMPARE(BoxBlur(3).blurred(image.mirrored(false, true)), blurred.mirrored(false, true));
    }

    void picturesOfOneLineAreBlurred_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("row") << QSize(40, 1);
        QTest::newRow("column") << QSize(1, 40);
        QTest::newRow("pixel") << QSize(1, 1);
    }
    void picturesOfOneLineAreBlurred()
    {
        QFETCH(QSize, size);
        QImage image = plain(size, Qt::black);
        image.setPixelColor(0, 0, Qt::white);
        const QImage blurred = BoxBlur(2).blurred(image);
        QCOMPARE(blurred.size(), size);
        const int first = blurred.pixelColor(0, 0).red();
        QVERIFY(size == QSize(1, 1) ? first == 255 : first > 40 && first < 200);
    }

    void anEndlessBlurIsOneColor()
    {
        for (const double deviation : {1e4, 1e12, std::numeric_limits<double>::infinity()}) {
            const QImage blurred = BoxBlur(deviation).blurred(edge(10, 10));
            QVERIFY(std::abs(blurred.pixelColor(0, 5).red() - blurred.pixelColor(9, 5).red()) <= 1);
        }
    }

    void colorsDoNotDarkenTowardsWhatIsTransparent()
    {
        QImage image = plain({40, 8}, Qt::transparent, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < 8; ++y) {
            for (int x = 0; x < 20; ++x)
                image.setPixelColor(x, y, Qt::red);
        }
        const QColor color = BoxBlur(3).blurred(image).pixelColor(20, 4);
        QVERIFY(color.alpha() > 60 && color.alpha() < 160);
        QVERIFY(color.red() > 250);
    }
};

} // namespace cadorel

QTEST_APPLESS_MAIN(cadorel::TestBoxBlur)
#include "tst_box_blur.moc"
