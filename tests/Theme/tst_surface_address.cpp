// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Surface.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Surfaces as texts, which anybody may have written.
class SurfaceAddressTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void addressGivesTheSurfaceBack();
    void addressTellsSurfacesApart();
    void whatCannotBeSeenIsLeftOut();
    void hostileAddressIsNoSurface_data();
    void hostileAddressIsNoSurface();

private:
    static Surface sample()
    {
        return {.fill = QColor(1, 2, 3, 4),
                .gradient = {.stops = {{0, Qt::red}, {0.25, Qt::green}, {1, Qt::blue}}, .start = {0, 0.5}},
                .cornerRadius = 12.5,
                .shadows = {{.color = QColor(5, 6, 7), .radius = 6.25, .x = -2, .y = 2}},
                .strokes = {{.color = QColor(8, 9, 10), .gradient = {}, .width = 1.5},
                            {.color = {},
                             .gradient = {.stops = {{0, Qt::black}, {1, Qt::white}}},
                             .width = 2,
                             .blur = 1,
                             .x = -1,
                             .y = 0.5}}};
    }
};

void SurfaceAddressTest::addressGivesTheSurfaceBack()
{
    QCOMPARE(Surface::ofAddress(sample().address()), sample());
    QCOMPARE(Surface::ofAddress({}), Surface());
    // Colours of themes are often told in fractions.
    Surface fractions = sample();
    fractions.fill = QColor::fromRgbF(1.0F, 0.92F, 0.95F, 0.6F);
    QCOMPARE(Surface::ofAddress(fractions.address()), fractions);
}

void SurfaceAddressTest::addressTellsSurfacesApart()
{
    QList<Surface> others(8, sample());
    others[0].fill = Qt::red;
    others[1].cornerRadius = 13;
    others[2].shadows[0].radius = 7;
    others[3].shadows[0].y = 3;
    others[4].strokes[0].width = 2;
    others[5].strokes[1].blur = 2;
    others[6].gradient.end = {0.5, 1};
    others[7].strokes[1].gradient.stops[0].second = Qt::gray;
    for (const Surface &other : others)
        QVERIFY(other.address() != sample().address());
}

void SurfaceAddressTest::whatCannotBeSeenIsLeftOut()
{
    Surface surface;
    surface.fill = Qt::transparent;
    surface.cornerRadius = 12;
    QCOMPARE(surface.address(), QString());
    Surface seen = sample();
    const QString address = seen.address();
    seen.shadows.append({.color = Qt::transparent, .radius = 60, .x = 60, .y = 60});
    seen.strokes.append({.color = QColor(255, 0, 0, 0), .gradient = {}, .width = 60});
    QCOMPARE(seen.address(), address);
    QCOMPARE(seen.margin(), sample().margin());
    QCOMPARE(seen.border(), sample().border());
}

void SurfaceAddressTest::hostileAddressIsNoSurface_data()
{
    QTest::addColumn<QString>("address");
    const QString color = u"ffff00000000ffff"_s;
    QTest::newRow("words") << u"../../etc/passwd"_s;
    QTest::newRow("unknown part") << u"z1"_s;
    QTest::newRow("no colour") << u"fred"_s;
    QTest::newRow("short colour") << u"fff"_s;
    QTest::newRow("empty part") << u"f%1;;r12"_s.arg(color);
    QTest::newRow("huge radius") << u"f%1;r1e300"_s.arg(color);
    QTest::newRow("no number") << u"f%1;rnan"_s.arg(color);
    QTest::newRow("endless") << u"f%1;rinf"_s.arg(color);
    QTest::newRow("huge blur") << u"s%1,1e9,0,0"_s.arg(color);
    QTest::newRow("huge offset") << u"s%1,4,9999,0"_s.arg(color);
    QTest::newRow("negative blur") << u"s%1,-4,0,0"_s.arg(color);
    QTest::newRow("too few numbers") << u"s%1,4,0"_s.arg(color);
    QTest::newRow("too many numbers") << u"s%1,4,0,0,0"_s.arg(color);
    QTest::newRow("stroke without numbers") << u"k%1"_s.arg(color);
    QTest::newRow("gradient without stops") << u"g0,0,1,1"_s;
    QTest::newRow("gradient with half a stop") << u"g0,0,1,1,0"_s;
    QTest::newRow("gradient backwards") << u"g0,0,1,1,1,%1,0,%1"_s.arg(color);
    QTest::newRow("too many stops") << u"g0,0,1,1"_s + u",0,%1"_s.arg(color).repeated(40);
    QTest::newRow("too many shadows") << QStringList(50, u"s%1,4,0,0"_s.arg(color)).join(u';');
    QTest::newRow("endless text") << u"f%1;"_s.arg(color).repeated(100'000);
    QTest::newRow("zero") << QString(QChar(0));
}

void SurfaceAddressTest::hostileAddressIsNoSurface()
{
    QFETCH(QString, address);
    QCOMPARE(Surface::ofAddress(address), Surface());
}

QTEST_APPLESS_MAIN(SurfaceAddressTest)
#include "tst_surface_address.moc"
