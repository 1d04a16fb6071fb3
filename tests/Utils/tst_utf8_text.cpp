// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Utf8Text.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class Utf8TextTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void textIsReadWhole()
    {
        QCOMPARE(utf8Text("晚风 🎵\n"_ba), std::optional(u"晚风 🎵\n"_s));
        QCOMPARE(utf8Text(QByteArray()), std::optional(QString()));
        QCOMPARE(utf8Text("\xEF\xBB\xBFhttp"_ba), std::optional(u"http"_s));
    }

    void otherBytesAreNoText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("no UTF-8") << "a\xff"_ba;
        QTest::newRow("half a character at the end") << "晚"_ba.chopped(1);
        QTest::newRow("half a character in the middle") << "晚"_ba.chopped(1) + 'a';
        QTest::newRow("surrogate") << "\xED\xA0\x80"_ba;
    }
    void otherBytesAreNoText()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!utf8Text(bytes));
    }
};

QTEST_GUILESS_MAIN(Utf8TextTest)
#include "tst_utf8_text.moc"
