// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/StableHash.h"

#include <QRegularExpression>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestStableHash : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The values come from another implementation of SHA-256: sha256sum of coreutils.
    void knownValues_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("hash");
        QTest::newRow("empty") << QString() << u"E3B0C44298FC1C14"_s;
        QTest::newRow("file name") << u"song.mp3"_s << u"204F3BD8187BC5A7"_s;
        QTest::newRow("Chinese") << u"未知专辑"_s << u"A3EF1EE876CC2E67"_s;
        QTest::newRow("outside of the basic plane") << u"🎵.flac"_s << u"2B013779E79A10D5"_s;
        QTest::newRow("composed") << u"\u00e9"_s << u"4A99557E4033C353"_s;
        QTest::newRow("decomposed is another text") << u"e\u0301"_s << u"BF12767B0F2A56B2"_s;
    }
    void knownValues()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, hash);
        QCOMPARE(stableHash(text), hash);
    }

    void sixteenUpperCaseDigits()
    {
        const QRegularExpression form(u"^[0-9A-F]{16}$"_s);
        for (int i = 0; i < 1000; ++i)
            QVERIFY(form.match(stableHash(QString::number(i))).hasMatch());
    }
};

QTEST_GUILESS_MAIN(TestStableHash)
#include "tst_stable_hash.moc"
