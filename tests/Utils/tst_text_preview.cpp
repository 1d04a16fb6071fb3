// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/TextPreview.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TextPreviewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aTextIsCutBetweenCharacters_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("empty") << QString() << u""_s;
        QTest::newRow("shorter") << u"ab"_s << u"ab"_s;
        QTest::newRow("just as long") << u"abc"_s << u"abc"_s;
        QTest::newRow("longer") << u"abcd"_s << u"abc"_s;
        QTest::newRow("Chinese") << u"晚风渡口"_s << u"晚风渡"_s;
        QTest::newRow("two surrogates each") << u"🎵🎶🎸🎹"_s << u"🎵🎶🎸"_s;
        QTest::newRow("accents, not joined")
            << u"e\u0301e\u0301e\u0301e\u0301"_s << u"e\u0301e\u0301e\u0301"_s;
        QTest::newRow("families") << u"👩‍👩‍👧"_s.repeated(4)
                                  << u"👩‍👩‍👧"_s.repeated(3);
        QTest::newRow("line ends") << u"\n\nab"_s << u"\n\na"_s;
    }
    void aTextIsCutBetweenCharacters()
    {
        QFETCH(QString, text);
        QTEST(textPreview(text.toUtf8(), 3).value_or(u"none"_s), "shown");
    }

    void whatIsNoUtf8HasNoPreview_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("stray byte") << QByteArray("ab\xff");
        QTest::newRow("half a character at the end") << QByteArray("雨").chopped(1);
        QTest::newRow("beyond what is shown") << QByteArray(100'000, 'a') + "\xff";
        QTest::newRow("half a pair") << QByteArray("\xed\xa0\x80");
    }
    void whatIsNoUtf8HasNoPreview()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!textPreview(bytes, 3));
    }

    void aLongTextIsShownToTheCharacter()
    {
        const QString text = u"雨a🎵"_s.repeated(10'000);
        QCOMPARE(textPreview(text.toUtf8(), 900), text.first(4 * 300));
    }

    void aCharacterWithoutEndIsCutSomewhere()
    {
        const QString text = u"e"_s + u"\u0301"_s.repeated(100'000);
        const std::optional<QString> shown = textPreview(text.toUtf8(), 3);
        QVERIFY(shown && !shown->isEmpty() && shown->size() < 1000);
        QVERIFY(text.startsWith(*shown));
    }
};

QTEST_GUILESS_MAIN(TextPreviewTest)
#include "tst_text_preview.moc"
