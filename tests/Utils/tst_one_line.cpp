// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/OneLine.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class OneLineTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void linesBecomeOne()
    {
        QCOMPARE(oneLine(u" 晚\n风\t🎵\u2028a\r\n"_s), u"晚 风 🎵 a"_s);
        QCOMPARE(oneLine(u"\n\u0007 "_s), QString());
    }

    void ofALongTextTheBeginningIsTaken()
    {
        const QString thousand(1000, u'a');
        QCOMPARE(oneLine(thousand), thousand);
        QCOMPARE(oneLine(thousand + QString(10'000'000, u'b')), thousand);
        QCOMPARE(oneLine(QString(2000, u' ') + u"a"_s), u"a"_s);
        // Not half a character.
        QCOMPARE(oneLine(thousand.first(999) + u"🎵🎵"_s), thousand.first(999));
        QCOMPARE(oneLine(thousand.first(998) + u"🎵🎵"_s), QString(thousand.first(998) + u"🎵"_s));
    }
};

QTEST_GUILESS_MAIN(OneLineTest)
#include "tst_one_line.moc"
