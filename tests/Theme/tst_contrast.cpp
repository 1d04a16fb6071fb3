// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Contrast.h"

#include <QTest>

namespace cadorel {

/// The formula against values that others have published, and what is made of it.
class TestContrast : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void blackOnWhiteIsTheMost() { QCOMPARE(Contrast::ratio(Qt::black, Qt::white), 21.0); }
    void theSameIsTheLeast() { QCOMPARE(Contrast::ratio(0xFF2D55, 0xFF2D55), 1.0); }
    void grayOfTheGuidelines()
    {
        // #767676 is the lightest grey that WCAG passes on white.
        QVERIFY(Contrast::ratio(0x767676, Qt::white) >= 4.5);
        QVERIFY(Contrast::ratio(0x777777, Qt::white) < 4.5);
    }
    void translucentTextLiesOnItsGround()
    {
        QColor halfBlack(Qt::black);
        halfBlack.setAlphaF(0.5F);
        const double expected = Contrast::ratio(QColor::fromRgbF(0.5F, 0.5F, 0.5F), Qt::white);
        QVERIFY(qAbs(Contrast::ratio(halfBlack, Qt::white) - expected) < 0.01);
        QVERIFY(Contrast::ratio(halfBlack, Qt::black) < 1.01);
    }
    void groundsBecomeLegible_data()
    {
        QTest::addColumn<QColor>("color");
        for (const QRgb color : {0xFFFF2D55, 0xFFFFCC00, 0xFF007AFF, 0xFF8E8E93, 0xFFFFFFFF, 0xFF000000})
            QTest::newRow(qPrintable(QColor(color).name())) << QColor(color);
    }
    void groundsBecomeLegible()
    {
        QFETCH(QColor, color);
        const QColor ground = Contrast::groundFor(Qt::white, color);
        QVERIFY(Contrast::ratio(Qt::white, ground) >= Contrast::legible);
        if (color.hslSaturation() > 0 && color.lightness() > 0)
            QVERIFY(qAbs(ground.hslHue() - color.hslHue()) <= 2);
        const QColor text = Contrast::textOn(Qt::white, color);
        QVERIFY(Contrast::ratio(text, Qt::white) >= Contrast::legible);
    }
    void translucentTextBecomesOpaqueWhereItMust()
    {
        QColor pale(Qt::darkGray);
        pale.setAlphaF(0.7F);
        const QColor onWhite = Contrast::textOn(Qt::white, pale);
        QVERIFY(Contrast::ratio(onWhite, Qt::white) >= Contrast::legible);
        QCOMPARE(onWhite.alpha(), pale.alpha());
        // Halfway between black and white, where 0.7 of either is too near.
        const QColor onGray = Contrast::textOn(0x777777, pale);
        QVERIFY(Contrast::ratio(onGray, 0x777777) >= Contrast::legible);
        QCOMPARE(onGray.alpha(), 255);
    }
    void whatIsLegibleStays()
    {
        QCOMPARE(Contrast::groundFor(Qt::white, Qt::darkBlue), QColor(Qt::darkBlue));
        QCOMPARE(Contrast::textOn(Qt::black, Qt::yellow), QColor(Qt::yellow));
    }
};

} // namespace cadorel

QTEST_APPLESS_MAIN(cadorel::TestContrast)
#include "tst_contrast.moc"
