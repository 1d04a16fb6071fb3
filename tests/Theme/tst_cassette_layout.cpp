// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/CassetteLayout.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace cadorel;

/// Where the cover lies on a cassette.
class CassetteLayoutTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void coverIsAFractionOfThePictureFromItsCentre_data();
    void coverIsAFractionOfThePictureFromItsCentre();
    void numbersOutOfRangeGiveACoverThatCanBeDrawn_data();
    void numbersOutOfRangeGiveACoverThatCanBeDrawn();
    void aPictureWithoutASizeHasNoCover();
    void radiusGrowsWithTheCover();
};

void CassetteLayoutTest::coverIsAFractionOfThePictureFromItsCentre_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("offsetX");
    QTest::addColumn<double>("offsetY");
    QTest::addColumn<QRectF>("rect");
    // The pictures' own places, on one of 300 pixels.
    QTest::addRow("classic") << 0.18 << 0.0 << -0.2 << QRectF(123, 63, 54, 54);
    QTest::addRow("pink") << 0.25 << 0.0 << -0.15 << QRectF(112.5, 67.5, 75, 75);
    QTest::addRow("blue") << 0.22 << 0.0 << -0.1 << QRectF(117, 87, 66, 66);
    QTest::addRow("purple") << 0.24 << 0.0 << -0.12 << QRectF(114, 78, 72, 72);
    QTest::addRow("orange") << 0.23 << 0.0 << -0.14 << QRectF(115.5, 73.5, 69, 69);
    QTest::addRow("cover alone") << 1.0 << 0.0 << 0.0 << QRectF(0, 0, 300, 300);
    QTest::addRow("to the right, down") << 0.2 << 0.1 << 0.3 << QRectF(150, 210, 60, 60);
    QTest::addRow("farthest") << 0.5 << 0.5 << -0.5 << QRectF(225, -75, 150, 150);
}

void CassetteLayoutTest::coverIsAFractionOfThePictureFromItsCentre()
{
    QFETCH(double, scale);
    QFETCH(double, offsetX);
    QFETCH(double, offsetY);
    QFETCH(QRectF, rect);
    const QRectF cover = CassetteLayout::coverRect(300, scale, offsetX, offsetY);
    for (const auto &[actual, expected] :
         {std::pair(cover.x(), rect.x()), {cover.y(), rect.y()}, {cover.width(), rect.width()}})
        QVERIFY2(qAbs(actual - expected) < 1e-9, qPrintable(QString::number(actual)));
    QCOMPARE(cover.height(), cover.width());
}

void CassetteLayoutTest::numbersOutOfRangeGiveACoverThatCanBeDrawn_data()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("offsetX");
    QTest::addColumn<double>("offsetY");
    QTest::addColumn<QRectF>("rect");
    QTest::addRow("scale 40") << 40.0 << 0.0 << 0.0 << QRectF(0, 0, 100, 100);
    QTest::addRow("scale -3") << -3.0 << 0.0 << 0.0 << QRectF(47.5, 47.5, 5, 5);
    QTest::addRow("scale infinite") << infinity << 0.0 << 0.0 << QRectF(0, 0, 100, 100);
    QTest::addRow("scale no number") << nothing << 0.0 << 0.0 << QRectF(41, 41, 18, 18);
    QTest::addRow("offsets no numbers") << 0.2 << nothing << nothing << QRectF(40, 40, 20, 20);
    QTest::addRow("offsets far") << 0.2 << 900.0 << -infinity << QRectF(90, -10, 20, 20);
}

void CassetteLayoutTest::numbersOutOfRangeGiveACoverThatCanBeDrawn()
{
    QFETCH(double, scale);
    QFETCH(double, offsetX);
    QFETCH(double, offsetY);
    QTEST(CassetteLayout::coverRect(100, scale, offsetX, offsetY), "rect");
}

void CassetteLayoutTest::aPictureWithoutASizeHasNoCover()
{
    for (const double side : {0.0, -10.0, std::nan(""), std::numeric_limits<double>::infinity()})
        QCOMPARE(CassetteLayout::coverRect(side, 0.2, 0, 0), QRectF());
}

void CassetteLayoutTest::radiusGrowsWithTheCover()
{
    QCOMPARE(CassetteLayout::coverRadius(50), 3);
    QCOMPARE(CassetteLayout::coverRadius(100), 6);
    QCOMPARE(CassetteLayout::coverRadius(-1), 0);
    QCOMPARE(CassetteLayout::coverRadius(std::nan("")), 0);
}

QTEST_GUILESS_MAIN(CassetteLayoutTest)
#include "tst_cassette_layout.moc"
