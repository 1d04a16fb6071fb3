// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Base64.h"

#include <QRandomGenerator>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QByteArray randomBytes(QRandomGenerator &random, int size)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(random.bounded(256)));
    return bytes;
}

/// What the library makes of it, which stops at errors too.
std::optional<QByteArray> expected(const QByteArray &text)
{
    const auto result = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    return result ? std::optional(*result) : std::nullopt;
}

} // namespace

class TestBase64 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesOfEveryLengthComeBack()
    {
        QRandomGenerator random = QRandomGenerator::securelySeeded();
        for (int size = 0; size < 300; ++size) {
            const QByteArray bytes = randomBytes(random, size);
            QCOMPARE(bytesFromBase64(bytes.toBase64()), std::optional(bytes));
            QCOMPARE(bytesFromBase64(bytes.toBase64(QByteArray::OmitTrailingEquals)), std::optional(bytes));
        }
        QVERIFY(bytesFromBase64(QByteArrayView()).has_value());
    }

    void aForeignCharacterAnywhereIsRefused()
    {
        const QByteArray good = QByteArray(8, '\xa5').toBase64();
        for (qsizetype place = 0; place < good.size(); ++place) {
            for (int character = 0; character < 256; ++character) {
                QByteArray text = good;
                text[place] = static_cast<char>(character);
                QVERIFY2(bytesFromBase64(text) == expected(text), text.toPercentEncoding().constData());
            }
        }
        for (const QByteArray &text : {"TQ=="_ba, "TQ="_ba, "TQ"_ba, "T"_ba, "="_ba, "===="_ba, "TQ==TQ=="_ba,
                                       "TWFu\n"_ba, "TWFu TWFu"_ba, "TWFuT==="_ba, "-_-_"_ba})
            QVERIFY2(bytesFromBase64(text) == expected(text), text.constData());
        QVERIFY(!bytesFromBase64("TWFu\nTWFu"));
    }
};

QTEST_GUILESS_MAIN(TestBase64)
#include "tst_base64.moc"
