// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/LyricLineStyle.h"

#include <QTest>

using namespace cadorel;

class TestLyricLineStyle : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void currentLineIsLargerBoldSharpAndOpaque()
    {
        for (const bool blurEnabled : {true, false}) {
            const LyricLineStyle style = LyricLineStyle::of(0, true, 18, blurEnabled);
            QCOMPARE(style.pointSize, 24.0);
            QVERIFY(style.isBold);
            QCOMPARE(style.opacity, 1.0);
            QCOMPARE(style.blurRadius, 0.0);
            QCOMPARE(style.scale, 1.0);
        }
    }

    void otherLinesPaleAndBlurWithTheirDistance_data()
    {
        QTest::addColumn<int>("distance");
        QTest::addColumn<double>("opacity");
        QTest::addColumn<double>("blurRadius");
        QTest::newRow("1") << 1 << 0.5 << 0.8;
        QTest::newRow("2") << 2 << 0.4 << 1.6;
        QTest::newRow("3") << 3 << 0.3 << 2.4;
        QTest::newRow("4") << 4 << 0.2 << 3.0;
        QTest::newRow("5") << 5 << 0.2 << 3.0;
        QTest::newRow("thousands") << 4999 << 0.2 << 3.0;
    }

    void otherLinesPaleAndBlurWithTheirDistance()
    {
        QFETCH(int, distance);
        QFETCH(double, opacity);
        QFETCH(double, blurRadius);
        const LyricLineStyle style = LyricLineStyle::of(distance, false, 18, true);
        QCOMPARE(style.pointSize, 18.0);
        QVERIFY(!style.isBold);
        QCOMPARE(style.opacity, opacity);
        QCOMPARE(style.blurRadius, blurRadius);
        QCOMPARE(style.scale, 0.95);
    }

    void withoutBlurAllLinesAreSharp()
    {
        for (const int distance : {1, 2, 3, 4, 100}) {
            const LyricLineStyle style = LyricLineStyle::of(distance, false, 18, false);
            QCOMPARE(style.blurRadius, 0.0);
            // And nothing else changes.
            LyricLineStyle blurred = LyricLineStyle::of(distance, false, 18, true);
            blurred.blurRadius = 0;
            QCOMPARE(style, blurred);
        }
    }

    void fontSizeIsTheListeners()
    {
        QCOMPARE(LyricLineStyle::of(2, false, 14, true).pointSize, 14.0);
        QCOMPARE(LyricLineStyle::of(0, true, 14, true).pointSize, 20.0);
        QCOMPARE(LyricLineStyle::of(0, true, 28, true).pointSize, 34.0);
    }

    void beyondTheFarthestDistanceLinesLookAlike()
    {
        const int farthest = LyricLineStyle::farthestDistance;
        const LyricLineStyle there = LyricLineStyle::of(farthest, false, 18, true);
        QCOMPARE(LyricLineStyle::of(farthest + 1, false, 18, true), there);
        QVERIFY(LyricLineStyle::of(farthest - 1, false, 18, true) != there);
    }
};

QTEST_GUILESS_MAIN(TestLyricLineStyle)
#include "tst_lyric_line_style.moc"
