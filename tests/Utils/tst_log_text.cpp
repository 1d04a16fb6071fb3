// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/LogText.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestLogText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ordinaryTextStays()
    {
        QCOMPARE(logText(u"/音乐/é 😀/a b.mp3"_s), u"/音乐/é 😀/a b.mp3"_s);
        QCOMPARE(logText(QString()), QString());
    }

    void nothingBeginsAnotherLine_data()
    {
        QTest::addColumn<QChar>("character");
        for (const QChar c : u"\0\a\t\n\v\r\x1b\x7f\u0085\u009b\u2028\u2029"_s)
            QTest::addRow("U+%04X", c.unicode()) << c;
    }
    void nothingBeginsAnotherLine()
    {
        QFETCH(const QChar, character);
        QCOMPARE(logText(u"a"_s + character + u"b"_s), u"a\ufffdb"_s);
    }
};

QTEST_GUILESS_MAIN(TestLogText)
#include "tst_log_text.moc"
