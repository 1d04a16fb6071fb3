// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/LegacyText.h"

#include <QStringEncoder>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace cadorel;

/// Texts in fields without a declared encoding.
class LegacyTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void latin1Stays_data();
    void latin1Stays();
    void gbkIsFound_data();
    void gbkIsFound();
    void utf8IsFound();
    void cutField();
    void endsAtZero();
    void anyBytes();

private:
    static QByteArray gbk(const QString &text)
    {
        QStringEncoder encoder("GB18030");
        return encoder.encode(text);
    }
};

void LegacyTextTest::latin1Stays_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : {
             u"Café"_s,
             u"Motörhead"_s,
             u"Sigur Rós"_s,
             u"Sigur Rós - Ágætis byrjun"_s,
             u"Björk Guðmundsdóttir"_s,
             u"Hoppípolla, Sæglópur, Ólöf"_s,
             u"Blue Öyster Cult"_s,
             u"Mötley Crüe"_s,
             u"Queensrÿche"_s,
             u"Größe"_s,
             u"Füße, Straße, Größe, süß"_s,
             u"Beyoncé"_s,
             u"Édith Piaf - Non, je ne regrette rien (déjà vu)"_s,
             u"créée"_s,
             u"À la claire fontaine"_s,
             u"coração, ações, irmãos"_s,
             u"Ääni, pää, yö, Töölö"_s,
             u"Åse Åström & Øystein Sunde"_s,
             u"¿Qué pasó? ¡Olé!"_s,
             u"El Niño"_s,
             u"½ Mensch"_s,
             u"25° à l'ombre"_s,
             u"«Été» – no"_s.replace(u'–', u'-'),
             u"© 1999 Señor Coconut ®"_s,
             u"plain"_s,
             u""_s,
         })
        QTest::newRow(qPrintable(text)) << text;
}

void LegacyTextTest::latin1Stays()
{
    QFETCH(QString, text);
    QCOMPARE(legacyText(text.toLatin1()), text);
    QCOMPARE(legacyText(text.toLatin1(), FieldEnd::maybeCut), text);
}

void LegacyTextTest::gbkIsFound_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : {
             u"周杰伦"_s,
             u"周杰倫"_s,
             u"陳奕迅"_s,
             u"張學友"_s,
             u"劉德華"_s,
             u"鄧麗君"_s,
             u"青花瓷"_s,
             u"晴天"_s,
             u"Jay周杰伦"_s,
             u"S.H.E - 美丽新世界"_s,
             u"稻香 (Live)"_s,
             u"01.七里香"_s,
             u"爱"_s,
             u"爱 (Live)"_s,
             u"海阔天空，Beyond"_s,
             u"[00:01.00]天青色等烟雨\n[00:03.50]而我在等你"_s,
             u"邓丽君《月亮代表我的心》"_s,
             u"王菲·红豆"_s,
         })
        QTest::newRow(qPrintable(text)) << text;
}

void LegacyTextTest::gbkIsFound()
{
    QFETCH(QString, text);
    QCOMPARE(legacyText(gbk(text)), text);
}

void LegacyTextTest::utf8IsFound()
{
    for (const QString &text : {u"周杰伦"_s, u"Café"_s, u"ねえ 🎵"_s})
        QCOMPARE(legacyText(text.toUtf8()), text);
}

void LegacyTextTest::cutField()
{
    const QByteArray whole = gbk(u"一千个伤心的理由和更多"_s);
    QCOMPARE(legacyText(whole.chopped(1), FieldEnd::maybeCut), u"一千个伤心的理由和更"_s);
    QCOMPARE(legacyText(whole, FieldEnd::maybeCut), u"一千个伤心的理由和更多"_s);
}

void LegacyTextTest::endsAtZero()
{
    QCOMPARE(legacyText(QByteArray("abc\0\0def", 8)), u"abc"_s);
    QCOMPARE(legacyText(gbk(u"晴天"_s) + QByteArray(4, '\0')), u"晴天"_s);
}

void LegacyTextTest::anyBytes()
{
    // Whatever the bytes are, the text is as long as Latin-1 at most and nothing is thrown.
    QByteArray bytes;
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            bytes = QByteArray(1, char(first)) + char(second);
            QVERIFY(legacyText(bytes).size() <= 2);
            QVERIFY(legacyText(bytes, FieldEnd::maybeCut).size() <= 2);
        }
    }
}

QTEST_GUILESS_MAIN(LegacyTextTest)
#include "tst_legacy_text.moc"
