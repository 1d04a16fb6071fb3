// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/PercentCoding.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestPercentCoding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<std::optional<QString>>("decoded");
        const auto row = [](const char *name, const QString &text, const std::optional<QString> &decoded) {
            QTest::newRow(name) << text << decoded;
        };
        row("nothing", u""_s, u""_s);
        row("no escapes", u"/音乐/a+b.mp3"_s, u"/音乐/a+b.mp3"_s);
        row("a blank", u"a%20b"_s, u"a b"_s);
        row("Chinese, either case", u"%e4%B8%AD"_s, u"中"_s);
        row("beside what is not escaped", u"中%E4%B8%AD"_s, u"中中"_s);
        row("an escaped percent sign is decoded once", u"100%2525"_s, u"100%25"_s);
        row("a percent sign alone", u"100%"_s, std::nullopt);
        row("one digit", u"%4"_s, std::nullopt);
        row("no digits", u"%zz%41"_s, std::nullopt);
        row("GBK", u"%D6%D0"_s, std::nullopt);
        row("half a character", u"%E4%B8"_s, std::nullopt);
        row("NUL", u"a%00b"_s, u"a\0b"_s);
    }
    void decodes()
    {
        QFETCH(const QString, text);
        QFETCH(const std::optional<QString>, decoded);
        QVERIFY(percentDecoded(text) == decoded);
    }

    void encodesAllButLettersAndDigits()
    {
        QCOMPARE(percentEncoded(u"aZ09"_s), u"aZ09"_s);
        QCOMPARE(percentEncoded(u"_-.~ /é中😀"_s), u"%5F%2D%2E%7E%20%2F%C3%A9%E4%B8%AD%F0%9F%98%80"_s);
        QCOMPARE(percentEncoded(u"a_b-c/d"_s, "-/"_ba), u"a%5Fb-c/d"_s);
    }

    void textWithoutUtf8FormIsNotEncoded() { QVERIFY(!percentEncoded(u"a"_s + QChar(0xd800))); }

    void everyCharacterComesBack()
    {
        QString all;
        for (char32_t c = 0; c <= 0x2ffff; c += c < 0x300 ? 1 : 97) {
            if (!QChar::isSurrogate(c))
                all += QString::fromUcs4(&c, 1);
        }
        const std::optional<QString> encoded = percentEncoded(all);
        QVERIFY(encoded);
        QVERIFY(percentDecoded(*encoded) == all);
    }
};

QTEST_GUILESS_MAIN(TestPercentCoding)
#include "tst_percent_coding.moc"
