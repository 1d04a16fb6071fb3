// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Progress.h"

#include <QTest>

#include <limits>

namespace cadorel {

class TestProgress : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void touchesBecomeFractions()
    {
        QCOMPARE(Progress::at(50, 200), 0.25);
        QCOMPARE(Progress::at(200, 200), 1.0);
    }
    void touchesBeyondTheBarAreItsEnds()
    {
        QCOMPARE(Progress::at(-7, 200), 0.0);
        QCOMPARE(Progress::at(207, 200), 1.0);
    }
    void aBarWithoutWidthGivesANumber()
    {
        QCOMPARE(Progress::at(0, 0), 0.0);
        QCOMPARE(Progress::at(10, 0), 0.0);
        QCOMPARE(Progress::at(10, -3), 0.0);
    }
    void whatIsNoNumberIsNothing()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double infinite = std::numeric_limits<double>::infinity();
        QCOMPARE(Progress::clamped(nan), 0.0);
        QCOMPARE(Progress::clamped(infinite), 1.0);
        QCOMPARE(Progress::clamped(-infinite), 0.0);
        QCOMPARE(Progress::at(nan, 200), 0.0);
        QCOMPARE(Progress::at(10, nan), 0.0);
    }
};

} // namespace cadorel

QTEST_APPLESS_MAIN(cadorel::TestProgress)
#include "tst_progress.moc"
