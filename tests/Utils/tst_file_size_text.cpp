// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/FileSizeText.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestFileSizeText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isShortAndInStepsOfAThousand_data()
    {
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<QString>("text");
        const auto row = [](qint64 bytes, const QString &text) {
            QTest::addRow("%lld", bytes) << bytes << text;
        };
        row(0, u"Zero KB"_s);
        row(1, u"1 byte"_s);
        row(999, u"999 bytes"_s);
        row(1'000, u"1 KB"_s);
        row(12'499, u"12 KB"_s);
        row(999'499, u"999 KB"_s);
        row(999'999, u"1 MB"_s);
        row(3'000'000, u"3 MB"_s);
        row(3'449'000, u"3.4 MB"_s);
        row(999'960'000, u"1 GB"_s);
        row(1'254'000'000, u"1.25 GB"_s);
        row(2'500'000'000'000, u"2.5 TB"_s);
    }
    void isShortAndInStepsOfAThousand()
    {
        QFETCH(const qint64, bytes);
        QTEST(fileSizeText(bytes), "text");
    }
};

QTEST_GUILESS_MAIN(TestFileSizeText)
#include "tst_file_size_text.moc"
