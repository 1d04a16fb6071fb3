// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/ShortNames.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class ShortNamesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aNameLeavesRoomForTheQuestion_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("shown");
        QTest::newRow("none") << QString() << QString();
        QTest::newRow("usual") << u"家里的 NAS"_s << u"家里的 NAS"_s;
        QTest::newRow("just as long") << u"长"_s.repeated(32) << u"长"_s.repeated(32);
        QTest::newRow("longer") << u"长"_s.repeated(33) << u"长"_s.repeated(32) + u"…"_s;
        QTest::newRow("emoji stay whole")
            << u"👩‍👩‍👧"_s.repeated(40) << u"👩‍👩‍👧"_s.repeated(32) + u"…"_s;
        QTest::newRow("line ends") << u"上\n下"_s << u"上 下"_s;
        QTest::newRow("a megabyte") << u"a"_s.repeated(1'000'000) << u"a"_s.repeated(32) + u"…"_s;
    }
    void aNameLeavesRoomForTheQuestion()
    {
        QFETCH(QString, name);
        QTEST(ShortNames::of(name), "shown");
    }
};

QTEST_APPLESS_MAIN(ShortNamesTest)
#include "tst_short_names.moc"
