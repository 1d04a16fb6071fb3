// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeRandom.h"
#include "Theme/KawaiiCartoon.h"
#include "Theme/KawaiiDecorations.h"
#include "Theme/StickerPlace.h"

#include "Fakes/FakeClock.h"

#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Which stickers there are, and where decorations put them.
class KawaiiStickersTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theSeriesHasFifteenStickersAndNoNumberTwo();
    void anIndexOfAnySignAndSizeGivesASticker_data();
    void anIndexOfAnySignAndSizeGivesASticker();
    void anEmptyTableGivesTheFirstSticker();
    void chanceReachesEverySticker();
    void scatterFollowsItsFormulas_data();
    void scatterFollowsItsFormulas();
    void scatterIsTheSameAtEveryRedraw();
    void scatterStaysInItsBox();
    void cornerStickerLiesAThirdOfItsSideIn_data();
    void cornerStickerLiesAThirdOfItsSideIn();
    void titleStickerAndItsTiltAreChosenByChance();
};

void KawaiiStickersTest::theSeriesHasFifteenStickersAndNoNumberTwo()
{
    const QStringList expected{u"cartoon1"_s,  u"cartoon3"_s,  u"cartoon4"_s,  u"cartoon5"_s,
                               u"cartoon6"_s,  u"cartoon7"_s,  u"cartoon8"_s,  u"cartoon9"_s,
                               u"cartoon10"_s, u"cartoon11"_s, u"cartoon12"_s, u"cartoon13"_s,
                               u"cartoon14"_s, u"cartoon15"_s, u"cartoon16"_s};
    QCOMPARE(KawaiiCartoon::allImages(), expected);
}

void KawaiiStickersTest::anIndexOfAnySignAndSizeGivesASticker_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");
    QTest::addRow("first") << 0 << u"cartoon1"_s;
    QTest::addRow("second") << 1 << u"cartoon3"_s;
    QTest::addRow("last") << 14 << u"cartoon16"_s;
    QTest::addRow("round again") << 15 << u"cartoon1"_s;
    QTest::addRow("-3 counts as 3") << -3 << u"cartoon5"_s;
    QTest::addRow("-15") << -15 << u"cartoon1"_s;
    // 2147483647 = 143165576 * 15 + 7, and the lowest integer lies one further out.
    QTest::addRow("highest") << std::numeric_limits<int>::max() << u"cartoon9"_s;
    QTest::addRow("lowest") << std::numeric_limits<int>::min() << u"cartoon10"_s;
}

void KawaiiStickersTest::anIndexOfAnySignAndSizeGivesASticker()
{
    QFETCH(int, index);
    QTEST(KawaiiCartoon::at(index), "name");
}

void KawaiiStickersTest::anEmptyTableGivesTheFirstSticker()
{
    QCOMPARE(KawaiiCartoon::at(4, {}), u"cartoon1"_s);
    QCOMPARE(KawaiiCartoon::at(-4, {u"a"_s, u"b"_s, u"c"_s}), u"b"_s);
}

void KawaiiStickersTest::chanceReachesEverySticker()
{
    FakeRandom random;
    QStringList drawn;
    for (int i = 0; i < 15; ++i) {
        random.indexes = {i};
        drawn.append(KawaiiCartoon::random(random));
    }
    QCOMPARE(drawn, KawaiiCartoon::allImages());
    QCOMPARE(random.counts, QList<int>(15, 15));
}

void KawaiiStickersTest::scatterFollowsItsFormulas_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("image");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("size");
    QTest::addColumn<double>("rotation");
    QTest::addRow("0") << 0 << u"cartoon1"_s << 200.0 << 800.0 << 55.0 << -15.0;
    QTest::addRow("1") << 1 << u"cartoon3"_s << 11.497109 << 174.138035 << 79.917172 << 2.0;
    QTest::addRow("2") << 2 << u"cartoon4"_s << 74.017719 << 255.068137 << 50.946767 << -11.0;
    QTest::addRow("3") << 3 << u"cartoon5"_s << 304.305056 << 789.534943 << 30.74216 << 6.0;
    QTest::addRow("7") << 7 << u"cartoon9"_s << 54.559084 << 51.349003 << 33.95205 << 14.0;
    QTest::addRow("19") << 19 << u"cartoon6"_s << 396.382448 << 32.313679 << 54.406579 << 8.0;
    QTest::addRow("40") << 40 << u"cartoon12"_s << 374.706434 << 569.889957 << 52.122145 << 5.0;
}

void KawaiiStickersTest::scatterFollowsItsFormulas()
{
    QFETCH(int, index);
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, size);
    const StickerPlace place = scatteredSticker(index, QSizeF(400, 800));
    constexpr double rounding = 1e-5;
    QTEST(place.imageName, "image");
    QVERIFY(qAbs(place.x - x) < rounding);
    QVERIFY(qAbs(place.y - y) < rounding);
    QVERIFY(qAbs(place.size - size) < rounding);
    QTEST(place.rotation, "rotation");
    QCOMPARE(place.opacity, 0.3);
}

void KawaiiStickersTest::scatterIsTheSameAtEveryRedraw()
{
    for (int i = 0; i < 50; ++i)
        QCOMPARE(scatteredSticker(i, QSizeF(390, 844)), scatteredSticker(i, QSizeF(390, 844)));
    QVERIFY(scatteredSticker(1, QSizeF(390, 844)) != scatteredSticker(2, QSizeF(390, 844)));
}

void KawaiiStickersTest::scatterStaysInItsBox()
{
    const QRectF box(0, 0, 320, 480);
    for (int i = 0; i < 1000; ++i) {
        const StickerPlace place = scatteredSticker(i, box.size());
        QVERIFY(box.contains(QPointF(place.x, place.y)));
        QVERIFY(place.size >= 30 && place.size <= 80);
        QVERIFY(place.rotation >= -15 && place.rotation < 15);
    }
    const StickerPlace nowhere = scatteredSticker(3, QSizeF(0, 0));
    QCOMPARE(QPointF(nowhere.x, nowhere.y), QPointF(0, 0));
}

void KawaiiStickersTest::cornerStickerLiesAThirdOfItsSideIn_data()
{
    QTest::addColumn<KawaiiCorner>("corner");
    QTest::addColumn<QPointF>("centre");
    QTest::addRow("top leading") << KawaiiCorner::TopLeading << QPointF(20, 20);
    QTest::addRow("top trailing") << KawaiiCorner::TopTrailing << QPointF(370, 20);
    QTest::addRow("bottom leading") << KawaiiCorner::BottomLeading << QPointF(20, 824);
    QTest::addRow("bottom trailing") << KawaiiCorner::BottomTrailing << QPointF(370, 824);
}

void KawaiiStickersTest::cornerStickerLiesAThirdOfItsSideIn()
{
    QFETCH(KawaiiCorner, corner);
    QTEST(cornerStickerCentre(corner, 60, QSizeF(390, 844)), "centre");
}

void KawaiiStickersTest::titleStickerAndItsTiltAreChosenByChance()
{
    FakeClock clock;
    FakeRandom random;
    KawaiiDecorations decorations(clock, random);
    random.indexes = {3};
    QCOMPARE(decorations.randomCartoon(), u"cartoon5"_s);
    random.reals = {4.5, -50, 50};
    QCOMPARE(decorations.randomTilt(), 4.5);
    QCOMPARE(decorations.randomTilt(), -10);
    QCOMPARE(decorations.randomTilt(), 10);
}

QTEST_GUILESS_MAIN(KawaiiStickersTest)
#include "tst_kawaii_stickers.moc"
