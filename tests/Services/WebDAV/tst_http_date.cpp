// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/HttpDate.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestHttpDate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheOneForm_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("utc");
        const auto row = [](const char *text, const char *utc) {
            QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(utc);
        };
        row("Sat, 09 Mar 2024 08:07:06 GMT", "2024-03-09T08:07:06Z");
        row("Thu, 29 Feb 2024 23:59:59 UTC", "2024-02-29T23:59:59Z");
        row("sat, 9 mar 2024 8:7:6 gmt", "2024-03-09T08:07:06Z");
        row("Sat, 09 Mar 2024 08:07:06 Z", "2024-03-09T08:07:06Z");
        row("Sat, 09 Mar 2024 08:07:06 +0800", "2024-03-09T00:07:06Z");
        row("Sat, 09 Mar 2024 08:07:06 -0130", "2024-03-09T09:37:06Z");
        row("Sat, 09 Mar 2024 08:07:06 +08:00", "2024-03-09T00:07:06Z");
        row("Sat, 09 Mar 2024 08:07:06 GMT+8", "2024-03-09T00:07:06Z");
        row("Sat, 09 Mar 2024 08:07:06 EST", "2024-03-09T13:07:06Z");
        row("Sat, 09 Mar 2024 08:07:06 pdt", "2024-03-09T15:07:06Z");
        row("Mon, 09 Mar 2024 08:07:06 GMT", "2024-03-09T08:07:06Z");
        row("Thu, 01 Jan 1970 00:00:00 GMT", "1970-01-01T00:00:00Z");
    }
    void readsTheOneForm()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, utc);
        const std::optional<QDateTime> date = dateFromHttpText(text);
        QVERIFY(date);
        QCOMPARE(date->toString(Qt::ISODate), utc);
        QCOMPARE(date->timeSpec(), Qt::UTC);
    }

    void everyOtherFormIsNoDate_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text : {"",
                                 "today",
                                 "2024-03-09T08:07:06Z",
                                 "1709971626",
                                 "Sat Mar  9 08:07:06 2024",
                                 "Saturday, 09-Mar-24 08:07:06 GMT",
                                 "Sat, 09 Mar 2024 08:07:06",
                                 "Sat, 09 Mar 2024 08:07 GMT",
                                 "09 Mar 2024 08:07:06 GMT",
                                 "Sat, 31 Feb 2024 08:07:06 GMT",
                                 "Sat, 00 Mar 2024 08:07:06 GMT",
                                 "Sat, 09 Mar 2024 24:07:06 GMT",
                                 "Sat, 09 Mar 2024 08:60:06 GMT",
                                 "Sat, 09 Mar 0000 08:07:06 GMT",
                                 "Sat, 09 Mar 2024 08:07:06 XYZ",
                                 "Sat, 09 Mar 2024 08:07:06 +9900",
                                 "Sat, 09 Mar 2024 08:07:06 +0860",
                                 "Sat, 09 Mar 2024 08:07:06 GMT\n",
                                 "Sat, 09 Mar 2024 08:07:06 GMTx",
                                 " Sat, 09 Mar 2024 08:07:06 GMT"})
            QTest::addRow("'%s'", text) << QString::fromLatin1(text);
        QTest::newRow("Chinese") << u"周六, 09 3月 2024 08:07:06 GMT"_s;
        QTest::newRow("Arabic digits") << u"Sat, ٠٩ Mar 2024 08:07:06 GMT"_s;
    }
    void everyOtherFormIsNoDate()
    {
        QFETCH(const QString, text);
        QVERIFY(!dateFromHttpText(text));
    }
};

QTEST_GUILESS_MAIN(TestHttpDate)
#include "tst_http_date.moc"
