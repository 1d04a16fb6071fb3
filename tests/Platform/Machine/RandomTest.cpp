// SPDX-License-Identifier: GPL-3.0-or-later
// What every Random keeps to, run against the fake and the real one, and the spread of the real one.
#include "Fakes/FakeRandom.h"
#include "Platform/Linux/SystemRandom.h"

#include <QTest>

#include <array>

using namespace cadorel;

class RandomTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void staysInRange_data();
    void staysInRange();
    void reachesEveryIndexEvenly();
    void spreadsRealNumbers();
};

void RandomTest::staysInRange_data()
{
    QTest::addColumn<bool>("isReal");
    QTest::newRow("fake") << false;
    QTest::newRow("system") << true;
}

void RandomTest::staysInRange()
{
    QFETCH(bool, isReal);
    FakeRandom fake;
    fake.indexes = {0, 5, 1000};
    fake.reals = {-1000.0, 0.5, 1000.0};
    SystemRandom system;
    Random &random = isReal ? static_cast<Random &>(system) : fake;
    for (const int count : {1, 2, 7, std::numeric_limits<int>::max()}) {
        for (int i = 0; i < 100; ++i) {
            const int index = random.index(count);
            QVERIFY(index >= 0 && index < count);
        }
    }
    for (int i = 0; i < 1000; ++i) {
        const double number = random.real(-0.25, 3.0);
        QVERIFY(number >= -0.25 && number <= 3.0);
        QCOMPARE(random.real(2.5, 2.5), 2.5);
    }
}

void RandomTest::reachesEveryIndexEvenly()
{
    SystemRandom random;
    std::array<int, 10> counts{};
    constexpr int rounds = 20'000;
    for (int i = 0; i < rounds; ++i)
        ++counts.at(static_cast<size_t>(random.index(10)));
    // 2,000 are expected of each; 12 standard deviations (42) cannot happen by chance.
    for (const int count : counts)
        QVERIFY2(qAbs(count - rounds / 10) < 510, QByteArray::number(count).constData());
}

void RandomTest::spreadsRealNumbers()
{
    SystemRandom random;
    double sum = 0;
    double lowest = 1;
    double highest = 0;
    constexpr int rounds = 20'000;
    for (int i = 0; i < rounds; ++i) {
        const double number = random.real(0, 1);
        sum += number;
        lowest = std::min(lowest, number);
        highest = std::max(highest, number);
    }
    // The mean has a standard deviation of 0.002.
    QVERIFY(qAbs(sum / rounds - 0.5) < 0.025);
    QVERIFY(lowest < 0.01 && highest > 0.99);
}

QTEST_GUILESS_MAIN(RandomTest)
#include "RandomTest.moc"
