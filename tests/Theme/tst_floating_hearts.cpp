// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeClock.h"
#include "Fakes/FakeRandom.h"
#include "Theme/FloatingHearts.h"

#include <QAbstractItemModelTester>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace std::chrono_literals;

namespace {

constexpr QSizeF phone(390, 844);

/// Remembers the bounds that each number was asked for, and gives the upper end.
class HighRandom : public Random
{
public:
    QList<std::pair<double, double>> asked;

    int index(int count) override { return count - 1; }
    double real(double low, double high) override
    {
        asked.append({low, high});
        return high;
    }
};

} // namespace

/// Hearts that rise: when, where, how long.
class FloatingHeartsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aHeartComesUpEveryTwoSecondsFromTheFirstIntervalOn();
    void numbersAreDrawnFromTheirRanges();
    void aHeartStartsBeneathTheBoxAndIsSentAboveIt();
    void aHeartIsGoneAfterSixSeconds();
    void theSixteenthHeartPushesTheFirstOut();
    void aHeartThatWasPushedOutTakesNoOtherWithIt();
    void aBoxOfLessThanFortyMakesNoHearts();
    void aBoxWithoutASizeMakesNoHearts_data();
    void aBoxWithoutASizeMakesNoHearts();
    void stoppingTakesHeartsAndTimersAway();
    void startingTwiceStartsOneTimer();
    void theBoxMayChangeWhileHeartsRise();
    void endingWithHeartsUnderWayLeavesNoTimer();
};

void FloatingHeartsTest::aHeartComesUpEveryTwoSecondsFromTheFirstIntervalOn()
{
    FakeClock clock;
    FakeRandom random;
    FloatingHearts hearts(clock, random);
    const QAbstractItemModelTester tester(&hearts);
    hearts.setSize(phone);
    QCOMPARE(clock.activeTimers(), 0);
    hearts.setRunning(true);
    QCOMPARE(hearts.rowCount(), 0);
    clock.advance(1999ms);
    QCOMPARE(hearts.rowCount(), 0);
    clock.advance(1ms);
    QCOMPARE(hearts.rowCount(), 1);
    clock.advance(2000ms);
    QCOMPARE(hearts.rowCount(), 2);
    clock.advance(2000ms);
    QCOMPARE(hearts.rowCount(), 3);
    // From now on one goes as one comes.
    clock.advance(60s);
    QCOMPARE(hearts.rowCount(), 3);
}

void FloatingHeartsTest::numbersAreDrawnFromTheirRanges()
{
    FakeClock clock;
    HighRandom random;
    FloatingHearts hearts(clock, random);
    hearts.addHeart(phone);
    const QList<std::pair<double, double>> expected{{20, 370}, {0.5, 1.2}, {0.2, 0.5}, {-30, 30}, {4, 6}};
    QCOMPARE(random.asked, expected);
    const FloatingHeart &heart = hearts.hearts().constFirst();
    QCOMPARE(heart.x, 370.0F);
    QCOMPARE(heart.scale, 1.2F);
    QCOMPARE(heart.rotation, 30.0);
    QCOMPARE(heart.duration, 6000ms);
}

void FloatingHeartsTest::aHeartStartsBeneathTheBoxAndIsSentAboveIt()
{
    FakeClock clock;
    FakeRandom random;
    random.reals = {100, 0.75, 0.375, -12, 4.5};
    FloatingHearts hearts(clock, random);
    const QAbstractItemModelTester tester(&hearts);
    QList<std::pair<float, double>> seen; // height and opacity, as they were told
    const auto look = [&] {
        seen.append({hearts.hearts().constFirst().y, hearts.hearts().constFirst().opacity});
    };
    connect(&hearts, &QAbstractItemModel::rowsInserted, this, look);
    connect(&hearts, &QAbstractItemModel::dataChanged, this, look);
    hearts.addHeart(phone);
    const QList<std::pair<float, double>> expected{{874.0F, 0.375}, {-30.0F, 0.0}};
    QCOMPARE(seen, expected);
    const QModelIndex row = hearts.index(0);
    QCOMPARE(row.data(FloatingHearts::HeartXRole).toDouble(), 100.0);
    QCOMPARE(row.data(FloatingHearts::HeartYRole).toDouble(), -30.0);
    QCOMPARE(row.data(FloatingHearts::HeartScaleRole).toDouble(), 0.75);
    QCOMPARE(row.data(FloatingHearts::HeartOpacityRole).toDouble(), 0.0);
    QCOMPARE(row.data(FloatingHearts::HeartRotationRole).toDouble(), -12.0);
    QCOMPARE(row.data(FloatingHearts::DurationRole).toInt(), 4500);
}

void FloatingHeartsTest::aHeartIsGoneAfterSixSeconds()
{
    FakeClock clock;
    FakeRandom random;
    FloatingHearts hearts(clock, random);
    const QAbstractItemModelTester tester(&hearts);
    hearts.addHeart(phone);
    clock.advance(1s);
    hearts.addHeart(phone);
    const QUuid second = hearts.hearts().at(1).id;
    clock.advance(4999ms);
    QCOMPARE(hearts.rowCount(), 2);
    clock.advance(1ms);
    QCOMPARE(hearts.rowCount(), 1);
    QCOMPARE(hearts.hearts().constFirst().id, second);
    clock.advance(1s);
    QCOMPARE(hearts.rowCount(), 0);
    QCOMPARE(clock.activeTimers(), 0);
}

void FloatingHeartsTest::theSixteenthHeartPushesTheFirstOut()
{
    FakeClock clock;
    FakeRandom random;
    FloatingHearts hearts(clock, random);
    const QAbstractItemModelTester tester(&hearts);
    QSet<QUuid> ids;
    for (int i = 0; i < 15; ++i) {
        hearts.addHeart(phone);
        ids.insert(hearts.hearts().constLast().id);
    }
    QCOMPARE(hearts.rowCount(), 15);
    QCOMPARE(ids.size(), 15);
    const QUuid first = hearts.hearts().at(0).id;
    const QUuid second = hearts.hearts().at(1).id;
    hearts.addHeart(phone);
    QCOMPARE(hearts.rowCount(), 15);
    QVERIFY(!ids.contains(hearts.hearts().constLast().id));
    QVERIFY(hearts.hearts().constFirst().id != first);
    QCOMPARE(hearts.hearts().constFirst().id, second);
}

void FloatingHeartsTest::aHeartThatWasPushedOutTakesNoOtherWithIt()
{
    FakeClock clock;
    FakeRandom random;
    FloatingHearts hearts(clock, random);
    hearts.addHeart(phone);
    clock.advance(5s);
    for (int i = 0; i < 15; ++i)
        hearts.addHeart(phone);
    QCOMPARE(hearts.rowCount(), 15);
    QCOMPARE(clock.activeTimers(), 15);
    // The end of the one that was pushed out.
    clock.advance(1s);
    QCOMPARE(hearts.rowCount(), 15);
    clock.advance(5s);
    QCOMPARE(hearts.rowCount(), 0);
}

void FloatingHeartsTest::aBoxOfLessThanFortyMakesNoHearts()
{
    FakeClock clock;
    HighRandom random;
    FloatingHearts hearts(clock, random);
    hearts.addHeart(QSizeF(39.9, 800));
    QCOMPARE(hearts.rowCount(), 0);
    QVERIFY(random.asked.isEmpty());
    hearts.addHeart(QSizeF(40, 800));
    QCOMPARE(hearts.rowCount(), 1);
    QCOMPARE(hearts.hearts().constFirst().x, 20.0F);
}

void FloatingHeartsTest::aBoxWithoutASizeMakesNoHearts_data()
{
    constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
    QTest::addColumn<QSizeF>("size");
    QTest::addRow("none") << QSizeF();
    QTest::addRow("no height") << QSizeF(400, 0);
    QTest::addRow("negative") << QSizeF(-400, -400);
    QTest::addRow("width no number") << QSizeF(nothing, 400);
    QTest::addRow("height no number") << QSizeF(400, nothing);
    QTest::addRow("endless") << QSizeF(std::numeric_limits<double>::infinity(), 400);
}

void FloatingHeartsTest::aBoxWithoutASizeMakesNoHearts()
{
    QFETCH(QSizeF, size);
    FakeClock clock;
    FakeRandom random;
    FloatingHearts hearts(clock, random);
    hearts.addHeart(size);
    QCOMPARE(hearts.rowCount(), 0);
    QCOMPARE(clock.activeTimers(), 0);
}

void FloatingHeartsTest::stoppingTakesHeartsAndTimersAway()
{
    FakeClock clock;
    FakeRandom random;
    FloatingHearts hearts(clock, random);
    const QAbstractItemModelTester tester(&hearts);
    const QSignalSpy spy(&hearts, &FloatingHearts::runningChanged);
    hearts.setSize(phone);
    hearts.setRunning(true);
    clock.advance(4s);
    QCOMPARE(hearts.rowCount(), 2);
    hearts.setRunning(false);
    QCOMPARE(hearts.rowCount(), 0);
    QCOMPARE(clock.activeTimers(), 0);
    clock.advance(60s);
    QCOMPARE(hearts.rowCount(), 0);
    hearts.setRunning(true);
    clock.advance(2s);
    QCOMPARE(hearts.rowCount(), 1);
    QCOMPARE(spy.count(), 3);
}

void FloatingHeartsTest::startingTwiceStartsOneTimer()
{
    FakeClock clock;
    FakeRandom random;
    FloatingHearts hearts(clock, random);
    const QSignalSpy spy(&hearts, &FloatingHearts::runningChanged);
    hearts.setRunning(true);
    hearts.setRunning(true);
    QCOMPARE(clock.activeTimers(), 1);
    QCOMPARE(spy.count(), 1);
}

void FloatingHeartsTest::theBoxMayChangeWhileHeartsRise()
{
    FakeClock clock;
    FakeRandom random;
    FloatingHearts hearts(clock, random);
    const QSignalSpy spy(&hearts, &FloatingHearts::sizeChanged);
    QList<float> starts;
    connect(&hearts, &QAbstractItemModel::rowsInserted, this,
            [&] { starts.append(hearts.hearts().constLast().y); });
    hearts.setSize(phone);
    hearts.setRunning(true);
    clock.advance(2s);
    hearts.setSize(QSizeF(900, 640));
    hearts.setSize(QSizeF(900, 640));
    clock.advance(2s);
    hearts.setSize(QSizeF(10, 640));
    clock.advance(2s);
    QCOMPARE(starts, QList<float>({874, 670}));
    QCOMPARE(spy.count(), 3);
}

void FloatingHeartsTest::endingWithHeartsUnderWayLeavesNoTimer()
{
    FakeClock clock;
    FakeRandom random;
    {
        FloatingHearts hearts(clock, random);
        hearts.setSize(phone);
        hearts.setRunning(true);
        clock.advance(4s);
        QVERIFY(clock.activeTimers() > 0);
    }
    QCOMPARE(clock.activeTimers(), 0);
    clock.advance(60s);
}

QTEST_GUILESS_MAIN(FloatingHeartsTest)
#include "tst_floating_hearts.moc"
