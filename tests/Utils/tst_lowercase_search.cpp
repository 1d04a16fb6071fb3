// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/LowercaseSearch.h"

#include <QRandomGenerator>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestLowercaseSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void search_data()
    {
        QTest::addColumn<QString>("haystack");
        QTest::addColumn<QString>("needle");
        QTest::addColumn<bool>("isIn");
        QTest::newRow("case of the needle") << u"morning light"_s << u"LIGHT"_s << true;
        QTest::newRow("case of the text") << u"MORNING Light"_s << u"light"_s << true;
        QTest::newRow("at the start") << u"Light"_s << u"l"_s << true;
        QTest::newRow("whole") << u"Light"_s << u"lIGHT"_s << true;
        QTest::newRow("longer than the text") << u"Light"_s << u"lights"_s << false;
        QTest::newRow("after a false start") << u"aaab"_s << u"aab"_s << true;
        QTest::newRow("not there") << u"morning"_s << u"evening"_s << false;
        QTest::newRow("nothing is in everything") << u"x"_s << QString() << true;
        QTest::newRow("nothing in nothing") << QString() << QString() << true;
        QTest::newRow("something in nothing") << QString() << u"x"_s << false;
        QTest::newRow("Chinese") << u"晴天 Live"_s << u"天 l"_s << true;
        QTest::newRow("Chinese, not there") << u"晴天"_s << u"夜曲"_s << false;
        QTest::newRow("accents") << u"ÉTOILE"_s << u"étoile"_s << true;
        QTest::newRow("accent is another letter") << u"etoile"_s << u"étoile"_s << false;
        QTest::newRow("Greek") << u"ΑΒΓ"_s << u"βγ"_s << true;
        QTest::newRow("Cyrillic") << u"МУЗЫКА"_s << u"музыка"_s << true;
        QTest::newRow("full width") << u"ＡＢＣ"_s << u"ａｂ"_s << true;
        QTest::newRow("Deseret, outside of the basic plane") << u"\U00010400x"_s << u"\U00010428"_s << true;
        QTest::newRow("emoji") << u"Song 🎵"_s << u"🎵"_s << true;
        QTest::newRow("emoji in a plain text") << u"Song"_s << u"🎵"_s << false;
        QTest::newRow("Kelvin sign") << u"\u212A"_s << u"k"_s << true;
        QTest::newRow("brackets are no letters") << u"[a]"_s << u"{A}"_s << false;
        QTest::newRow("at sign is no accent") << u"@"_s << u"`"_s << false;
        QTest::newRow("Japanese and Latin") << u"アイドル IDOL"_s << u"ドル id"_s << true;
        QTest::newRow("Hangul") << u"강남 STYLE"_s << u"남 sty"_s << true;
    }
    void search()
    {
        QFETCH(const QString, haystack);
        QFETCH(const QString, needle);
        QFETCH(const bool, isIn);
        QCOMPARE(LowercaseSearch(needle).isIn(haystack), isIn);
    }

    void sameAnswerAsWithCopiesInLowerCase()
    {
        const QString alphabet = u"aAbBzZ 1éÉß夜曲ΑαЖжＡａ\uA640\uA641\u2E80\uA63FK"_s;
        QRandomGenerator random(20260101);
        const auto text = [&](int longest) {
            QString made;
            for (int i = random.bounded(longest + 1); i > 0; --i)
                made.append(alphabet[random.bounded(alphabet.size())]);
            return made;
        };
        int found = 0;
        for (int round = 0; round < 20'000; ++round) {
            const QString haystack = text(8);
            const QString needle = text(2);
            const bool isIn = haystack.toLower().contains(needle.toLower());
            found += isIn ? 1 : 0;
            QVERIFY2(LowercaseSearch(needle).isIn(haystack) == isIn,
                     qPrintable(haystack + u" | "_s + needle));
        }
        QVERIFY(found > 1000 && found < 19'000);
    }

    void everyLetterIsFoundByItsOtherCase()
    {
        for (char16_t unit = 1; unit < 0xD800; ++unit) {
            const QString upper(QChar(unit).toUpper());
            const QString lower = upper.toLower();
            QVERIFY2(LowercaseSearch(lower).isIn(u"x"_s + upper), qPrintable(QString::number(unit, 16)));
        }
    }
};

QTEST_GUILESS_MAIN(TestLowercaseSearch)
#include "tst_lowercase_search.moc"
