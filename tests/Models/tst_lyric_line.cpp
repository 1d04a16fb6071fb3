// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/LyricLine.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype megabyte = 1 << 20;
/// Against a hang alone: in proportion to the square a megabyte would take many minutes.
constexpr qint64 hangMs = 20'000;

/// "time|text" of each line, with "plain|" before it where its time is made up.
QStringList shown(const QList<LyricLine> &lines)
{
    QStringList result;
    for (const LyricLine &line : lines)
        result.append((line.isPlainText ? u"plain|"_s : QString()) + QString::number(line.timeMs) + u'|' +
                      line.text);
    return result;
}

QStringList parsed(const QString &text)
{
    return shown(LyricLine::parse(text));
}

/// The parser as it reads without any care for time: each expression over a whole line or text.
QStringList plainlyParsed(const QString &text)
{
    static const QRegularExpression lineBreak(u"[\\n\\x{B}\\f\\r\\x{85}\\x{2028}\\x{2029}]"_s);
    struct Line
    {
        int timeMs;
        QString text;
    };
    QList<Line> lines;
    QStringList plain;
    for (const QString &line : text.split(lineBreak)) {
        const QRegularExpressionMatch match = LyricLine::timeRegex().match(line);
        if (match.hasMatch() && !match.captured(4).trimmed().isEmpty()) {
            QString fraction = match.captured(3);
            while (!fraction.isEmpty() && fraction.size() < 3)
                fraction += u'0';
            lines.append(
                {match.captured(1).toInt() * 60'000 + match.captured(2).toInt() * 1000 + fraction.toInt(),
                 match.captured(4).trimmed()});
        }
        if (!line.trimmed().isEmpty() && !LyricLine::metadataRegex().match(line.trimmed()).hasMatch())
            plain.append(u"plain|%1|%2"_s.arg(plain.size() * 5000).arg(line.trimmed()));
    }
    if (lines.isEmpty())
        return plain;
    // By insertion, which keeps the order of equal times.
    QList<Line> inOrder;
    for (const Line &line : std::as_const(lines)) {
        const auto later =
            std::ranges::find_if(inOrder, [&line](const Line &other) { return other.timeMs > line.timeMs; });
        inOrder.insert(later, line);
    }
    QStringList result;
    for (const Line &line : std::as_const(inOrder))
        result.append(u"%1|%2"_s.arg(line.timeMs).arg(line.text));
    return result;
}

/// Pieces that lyrics are made of, and what could be taken for them, put together by chance.
QString madeText(QRandomGenerator &random)
{
    static const QStringList pieces = {u"["_s,
                                       u"]"_s,
                                       u":"_s,
                                       u"."_s,
                                       u"1"_s,
                                       u"05"_s,
                                       u"123"_s,
                                       u"[00:10.00]"_s,
                                       u"[1:02]"_s,
                                       u"[ti:"_s,
                                       u"[ar:"_s,
                                       u"[by:]"_s,
                                       u"[offset:500]"_s,
                                       u"词"_s,
                                       u"la"_s,
                                       u" "_s,
                                       u"\t"_s,
                                       u"\u3000"_s,
                                       u"\n"_s,
                                       u"\r\n"_s,
                                       u"\r"_s,
                                       u"\v"_s,
                                       u"\f"_s,
                                       u"\u0085"_s,
                                       u"\u2028"_s,
                                       u"\u2029"_s,
                                       u"٣"_s,
                                       u"٤٥"_s,
                                       u"😀"_s,
                                       u"[length:"_s,
                                       u"total"_s,
                                       u"[99:59.999]"_s};
    constexpr int mostPieces = 24;
    QString text;
    for (int left = random.bounded(mostPieces); left > 0; --left)
        text += pieces.at(random.bounded(static_cast<int>(pieces.size())));
    return text;
}

QString filled(const QString &piece)
{
    return piece.repeated(megabyte / piece.size());
}

} // namespace

class TestLyricLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneDigitOfFractionIsNoTag();
    void fractionIsPaddedToMilliseconds();
    void linesAreSortedByTime();
    void equalTimesKeepTheOrderOfTheText();
    void onlyTagsGiveNoLine();
    void offsetTagIsIgnored();
    void severalTagsAreNotExpanded();
    void wordsBeforeTheTagAreLost();
    void minutesAndSecondsAreTakenAsWritten();
    void tagWithoutWordsMakesNoLine();
    void tagsWithoutWordsAloneShowAsPlainText();
    void everyLineBreakSeparates_data();
    void everyLineBreakSeparates();
    void digitsOfOtherScriptsCountAsNothing();
    void wordsAreTrimmed();
    void plainTextRunsEveryFiveSeconds();
    void emptyTagsOfTheSongAreWords();
    void emptyTextGivesNothing();
    void halfASurrogatePairHidesNoLine();
    void identitiesAreNewForEachLine();
    void linesAreEqualByEverything();
    void lrcFormatIsToldByTheLastLine_data();
    void lrcFormatIsToldByTheLastLine();
    void sameAsThePlainExpressions();
    void megabytesAreReadInNoTime_data();
    void megabytesAreReadInNoTime();
    void timesOfAnEndlessPlainTextStayInRange();
    void lastBegunLine_data();
    void lastBegunLine();
    void lastBegunLineIsFoundAsByWalkingBack();
};

void TestLyricLine::oneDigitOfFractionIsNoTag()
{
    QCOMPARE(parsed(u"[01:02.5]x"_s), QStringList{u"plain|0|[01:02.5]x"_s});
    QCOMPARE(parsed(u"[01:02.5]x\n[00:01.00]y"_s), QStringList{u"1000|y"_s});
}

void TestLyricLine::fractionIsPaddedToMilliseconds()
{
    QCOMPARE(parsed(u"[01:02.345]x"_s), QStringList{u"62345|x"_s});
    QCOMPARE(parsed(u"[01:02.34]x"_s), QStringList{u"62340|x"_s});
    QCOMPARE(parsed(u"[01:02]x"_s), QStringList{u"62000|x"_s});
    QCOMPARE(parsed(u"[01:02.05]x"_s), QStringList{u"62050|x"_s});
    QCOMPARE(parsed(u"[01:02.3456]x"_s), QStringList{u"plain|0|[01:02.3456]x"_s});
}

void TestLyricLine::linesAreSortedByTime()
{
    QCOMPARE(parsed(u"[00:30.00]三\n[00:10.00]一\n[00:20.00]二"_s),
             (QStringList{u"10000|一"_s, u"20000|二"_s, u"30000|三"_s}));
}

void TestLyricLine::equalTimesKeepTheOrderOfTheText()
{
    // Enough of them that a sort of another kind would mix them.
    QString text;
    QStringList expected;
    constexpr int count = 500;
    for (int i = 0; i < count; ++i) {
        text += u"[00:10.00]%1\n"_s.arg(i);
        expected.append(u"10000|%1"_s.arg(i));
    }
    QCOMPARE(parsed(text + u"[00:05.00]first"_s), QStringList{u"5000|first"_s} + expected);
}

void TestLyricLine::onlyTagsGiveNoLine()
{
    QCOMPARE(parsed(u"[ti:晨光]\n[ar:歌手]\n[al:专辑]\n[by:谁]\n[offset:0]\n[total:200]\n[length:03:20]"_s),
             QStringList());
}

void TestLyricLine::offsetTagIsIgnored()
{
    QCOMPARE(parsed(u"[offset:500]\n[00:10.00]词"_s), QStringList{u"10000|词"_s});
}

void TestLyricLine::severalTagsAreNotExpanded()
{
    QCOMPARE(parsed(u"[00:10.00][00:20.00]Hello"_s), QStringList{u"10000|[00:20.00]Hello"_s});
}

void TestLyricLine::wordsBeforeTheTagAreLost()
{
    QCOMPARE(parsed(u"abc[00:10.00]Hello"_s), QStringList{u"10000|Hello"_s});
    QCOMPARE(parsed(u"\uFEFF[00:10.00]Hello"_s), QStringList{u"10000|Hello"_s});
    QCOMPARE(parsed(u"[100:10.00]no tag[00:10.00]Hello"_s), QStringList{u"10000|Hello"_s});
}

void TestLyricLine::minutesAndSecondsAreTakenAsWritten()
{
    QCOMPARE(parsed(u"[99:59.00]x"_s), QStringList{u"5999000|x"_s});
    QCOMPARE(parsed(u"[00:75.00]x"_s), QStringList{u"75000|x"_s});
    QCOMPARE(parsed(u"[1:05]x"_s), QStringList{u"65000|x"_s});
    QCOMPARE(parsed(u"[99:99.999]x"_s), QStringList{u"6039999|x"_s});
    QCOMPARE(parsed(u"[100:00]x"_s), QStringList{u"plain|0|[100:00]x"_s});
    QCOMPARE(parsed(u"[1:5]x"_s), QStringList{u"plain|0|[1:5]x"_s});
}

void TestLyricLine::tagWithoutWordsMakesNoLine()
{
    QCOMPARE(parsed(u"[00:10.00]词\n[00:15.00]\n[00:16.00] \t\u3000"_s), QStringList{u"10000|词"_s});
}

void TestLyricLine::tagsWithoutWordsAloneShowAsPlainText()
{
    QCOMPARE(parsed(u"[00:10.00]\n[00:15.00]"_s),
             (QStringList{u"plain|0|[00:10.00]"_s, u"plain|5000|[00:15.00]"_s}));
}

void TestLyricLine::everyLineBreakSeparates_data()
{
    QTest::addColumn<QString>("lineBreak");
    QTest::newRow("line feed") << u"\n"_s;
    QTest::newRow("vertical tab") << u"\v"_s;
    QTest::newRow("form feed") << u"\f"_s;
    QTest::newRow("carriage return") << u"\r"_s;
    QTest::newRow("both") << u"\r\n"_s;
    QTest::newRow("next line") << u"\u0085"_s;
    QTest::newRow("line separator") << u"\u2028"_s;
    QTest::newRow("paragraph separator") << u"\u2029"_s;
}

void TestLyricLine::everyLineBreakSeparates()
{
    QFETCH(const QString, lineBreak);
    QCOMPARE(parsed(u"[00:10.00]一"_s + lineBreak + u"[00:20.00]二"_s + lineBreak),
             (QStringList{u"10000|一"_s, u"20000|二"_s}));
    QCOMPARE(parsed(u"一"_s + lineBreak + u"二"_s), (QStringList{u"plain|0|一"_s, u"plain|5000|二"_s}));
    // A tag is not looked for over the break.
    QCOMPARE(parsed(u"[ti:"_s + lineBreak + u"x]"_s), (QStringList{u"plain|0|[ti:"_s, u"plain|5000|x]"_s}));
}

void TestLyricLine::digitsOfOtherScriptsCountAsNothing()
{
    QCOMPARE(parsed(u"[٠١:٠٢.٣٤]x"_s), QStringList{u"0|x"_s});
    QCOMPARE(parsed(u"[01:٠٢.34]x"_s), QStringList{u"60340|x"_s});
    QCOMPARE(parsed(u"[1１:02.3３]x"_s), QStringList{u"2000|x"_s});
    // Beyond the first plane each digit takes two units.
    QCOMPARE(parsed(u"[𝟎𝟏:02.𝟑𝟒]x"_s), QStringList{u"2000|x"_s});
    // Not digits, though numbers.
    QCOMPARE(parsed(u"[一二:三四]x"_s), QStringList{u"plain|0|[一二:三四]x"_s});
}

void TestLyricLine::wordsAreTrimmed()
{
    QCOMPARE(parsed(u"\u3000[00:10.00] \u00A0 两 个 词\u3000\t"_s), QStringList{u"10000|两 个 词"_s});
    QCOMPARE(parsed(u" \t词 "_s), QStringList{u"plain|0|词"_s});
}

void TestLyricLine::plainTextRunsEveryFiveSeconds()
{
    const QString text =
        u"[ti:晨光]\r\n第一行\r\n\r\n  第二行  \r\n[ar:歌手] 演唱\r\n第三行 [by:谁]\r\n[第四行]"_s;
    const QStringList expected = {u"plain|0|第一行"_s, u"plain|5000|第二行"_s, u"plain|10000|[第四行]"_s};
    QCOMPARE(parsed(text), expected);
    QCOMPARE(shown(LyricLine::parsePlainText(text)), expected);
    // Asked for plain lines it gives those, tags and all.
    QCOMPARE(shown(LyricLine::parsePlainText(u"[00:10.00]词"_s)), QStringList{u"plain|0|[00:10.00]词"_s});
}

void TestLyricLine::emptyTagsOfTheSongAreWords()
{
    QCOMPARE(parsed(u"[ti:]"_s), QStringList{u"plain|0|[ti:]"_s});
    QCOMPARE(parsed(u"[ti:]]"_s), QStringList());
    QCOMPARE(parsed(u"[ti:] x]"_s), QStringList());
    QCOMPARE(parsed(u"[TI:x]"_s), QStringList{u"plain|0|[TI:x]"_s});
    QCOMPARE(parsed(u"[ti:x"_s), QStringList{u"plain|0|[ti:x"_s});
}

void TestLyricLine::emptyTextGivesNothing()
{
    QCOMPARE(parsed(QString()), QStringList());
    QCOMPARE(parsed(u" \r\n\t\n"_s), QStringList());
    QVERIFY(!LyricLine::isLrcFormat(QString()));
}

void TestLyricLine::halfASurrogatePairHidesNoLine()
{
    const QString half = QChar(0xD83D);
    const QString otherHalf = QChar(0xDE00);
    QCOMPARE(parsed(u"[00:10.00]词"_s + half + u"\n[00:20.00]"_s + otherHalf + half + u"\n[00:30.00]😀"_s),
             (QStringList{u"10000|词\uFFFD"_s, u"20000|\uFFFD\uFFFD"_s, u"30000|😀"_s}));
    QCOMPARE(parsed(u"[ti:"_s + half + u"]\n词"_s), QStringList{u"plain|0|词"_s});
    QVERIFY(LyricLine::isLrcFormat(half + u"[00:10.00]词"_s));
}

void TestLyricLine::identitiesAreNewForEachLine()
{
    const QString text = u"[00:10.00]一\n[00:10.00]一"_s;
    QSet<QUuid> ids;
    for (const LyricLine &line :
         LyricLine::parse(text) + LyricLine::parse(text) + LyricLine::parsePlainText(text)) {
        QCOMPARE(line.id.variant(), QUuid::DCE);
        QCOMPARE(line.id.version(), QUuid::Random);
        ids.insert(line.id);
    }
    QCOMPARE(ids.size(), 6);
    QVERIFY(LyricLine().id != LyricLine().id);
}

void TestLyricLine::linesAreEqualByEverything()
{
    const LyricLine line{.timeMs = 10, .text = u"词"_s};
    LyricLine other = line;
    QVERIFY(other == line);
    QCOMPARE(qHash(other), qHash(line));
    other.id = QUuid::createUuid();
    QVERIFY(other != line);
    other = line;
    other.isPlainText = true;
    QVERIFY(other != line);
}

void TestLyricLine::lrcFormatIsToldByTheLastLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isLrc");
    QTest::newRow("one line") << u"[00:10.00]词"_s << true;
    QTest::newRow("a tag alone") << u"[00:10.00]"_s << true;
    QTest::newRow("the last line, ended") << u"词\n[00:10.00]词\n"_s << true;
    QTest::newRow("the last line, ended by both") << u"词\r\n[00:10.00]词\r\n"_s << true;
    QTest::newRow("the last line, ended by a separator") << u"[00:10.00]词\u2028"_s << true;
    QTest::newRow("an empty line behind it") << u"[00:10.00]词\n\n"_s << false;
    QTest::newRow("two ends in the wrong order") << u"[00:10.00]词\n\r"_s << false;
    QTest::newRow("words behind it") << u"[00:10.00]词\n词"_s << false;
    QTest::newRow("words behind a separator") << u"[00:10.00]词\u0085词"_s << false;
    QTest::newRow("no tag") << u"词\n[ti:晨光]"_s << false;
    QTest::newRow("digits of another script") << u"[٠١:٠٢]"_s << true;
}

void TestLyricLine::lrcFormatIsToldByTheLastLine()
{
    QFETCH(const QString, text);
    QFETCH(const bool, isLrc);
    QCOMPARE(LyricLine::isLrcFormat(text), isLrc);
    QCOMPARE(LyricLine::timeRegex().match(text).hasMatch(), isLrc);
}

void TestLyricLine::sameAsThePlainExpressions()
{
    QRandomGenerator random = QRandomGenerator::securelySeeded();
    constexpr int texts = 20'000;
    int timed = 0;
    int lrc = 0;
    for (int i = 0; i < texts; ++i) {
        const QString text = madeText(random);
        const QStringList lines = parsed(text);
        QVERIFY2(lines == plainlyParsed(text), text.toUtf8().toPercentEncoding().constData());
        timed += !lines.isEmpty() && !lines.constFirst().startsWith("plain"_L1);
        const bool isLrc = LyricLine::isLrcFormat(text);
        QVERIFY2(isLrc == LyricLine::timeRegex().match(text).hasMatch(),
                 text.toUtf8().toPercentEncoding().constData());
        lrc += isLrc;
    }
    // Texts of both kinds came by.
    QVERIFY(timed > texts / 10 && timed < texts - texts / 10);
    QVERIFY(lrc > texts / 10 && lrc < texts - texts / 10);
}

void TestLyricLine::megabytesAreReadInNoTime_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qsizetype>("lines");
    QTest::addColumn<bool>("isLrc");
    QTest::newRow("open tags of a song") << filled(u"[ti:"_s) << qsizetype(1) << false;
    QTest::newRow("open tags, the first closed") << u"[ti:]"_s + filled(u"[ti:"_s) << qsizetype(1) << false;
    QTest::newRow("closed tags without a value, open ones")
        << filled(u"[ti:"_s) + u']' << qsizetype(0) << false;
    QTest::newRow("one tag of the song") << u"[ti:"_s + filled(u"词"_s) + u']' << qsizetype(0) << false;
    QTest::newRow("a tag of the song behind words")
        << filled(u"词"_s) + u"[ti:词]"_s << qsizetype(0) << false;
    QTest::newRow("time tags in one line") << filled(u"[00:10.00]"_s) << qsizetype(1) << true;
    QTest::newRow("time tags in one line, another behind")
        << filled(u"[00:10.00]"_s) + u"\n词"_s << qsizetype(1) << false;
    QTest::newRow("brackets") << filled(u"["_s) << qsizetype(1) << false;
    QTest::newRow("brackets the other way") << filled(u"]"_s) << qsizetype(1) << false;
    QTest::newRow("half a time tag") << filled(u"[00:10."_s) << qsizetype(1) << false;
    QTest::newRow("digits") << u'[' + filled(u"1"_s) << qsizetype(1) << false;
    QTest::newRow("words behind one tag") << u"[00:10.00]"_s + filled(u"词"_s) << qsizetype(1) << true;
    QTest::newRow("words before one tag") << filled(u"词"_s) + u"[00:10.00]词"_s << qsizetype(1) << true;
    QTest::newRow("blanks") << filled(u" "_s) << qsizetype(0) << false;
    QTest::newRow("blanks and a word") << filled(u" "_s) + u"词"_s + filled(u" "_s) << qsizetype(1) << false;
    QTest::newRow("line breaks") << filled(u"\r\n"_s) << qsizetype(0) << false;
    QTest::newRow("short lines") << filled(u"词\n"_s) << megabyte / 2 << false;
    QTest::newRow("a tag a line") << filled(u"[00:10.00]x\n"_s) << megabyte / 12 << true;
    QTest::newRow("words of two units each") << u"[00:10.00]"_s + filled(u"😀"_s) << qsizetype(1) << true;
}

void TestLyricLine::megabytesAreReadInNoTime()
{
    QFETCH(const QString, text);
    QFETCH(const qsizetype, lines);
    QFETCH(const bool, isLrc);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(LyricLine::parse(text).size(), lines);
    QCOMPARE(LyricLine::isLrcFormat(text), isLrc);
    LyricLine::parsePlainText(text);
    QVERIFY2(timer.elapsed() < hangMs, qPrintable(u"%1 ms"_s.arg(timer.elapsed())));
}

void TestLyricLine::timesOfAnEndlessPlainTextStayInRange()
{
    constexpr qsizetype beyond = std::numeric_limits<int>::max() / 5000 + 10;
    const QList<LyricLine> lines = LyricLine::parse(u"x\n"_s.repeated(beyond));
    QCOMPARE(lines.size(), beyond);
    QVERIFY(std::ranges::is_sorted(lines, {}, &LyricLine::timeMs));
    QCOMPARE(lines.constFirst().timeMs, 0);
    QVERIFY(lines.constLast().timeMs > std::numeric_limits<int>::max() - 5000);
}

void TestLyricLine::lastBegunLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("timeMs");
    QTest::addColumn<qsizetype>("expected");
    const QString song = u"[00:10.00]a\n[00:20.00]b\n[00:20.00]c\n[00:30.00]d"_s;
    QTest::newRow("no lines") << QString() << 5000 << qsizetype(-1);
    QTest::newRow("before the first") << song << 9999 << qsizetype(-1);
    QTest::newRow("before the song") << song << -1 << qsizetype(-1);
    QTest::newRow("at the first") << song << 10000 << qsizetype(0);
    QTest::newRow("between two") << song << 19999 << qsizetype(0);
    QTest::newRow("at two of one time") << song << 20000 << qsizetype(2);
    QTest::newRow("at the last") << song << 30000 << qsizetype(3);
    QTest::newRow("long past the last") << song << std::numeric_limits<int>::max() << qsizetype(3);
    QTest::newRow("plain text") << u"a\nb\nc"_s << 5000 << qsizetype(1);
}

void TestLyricLine::lastBegunLine()
{
    QFETCH(QString, text);
    QFETCH(int, timeMs);
    QTEST(LyricLine::lastBegun(LyricLine::parse(text), timeMs), "expected");
}

void TestLyricLine::lastBegunLineIsFoundAsByWalkingBack()
{
    QRandomGenerator random(5);
    for (int round = 0; round < 200; ++round) {
        QList<LyricLine> lines(random.bounded(12));
        for (LyricLine &line : lines)
            line.timeMs = random.bounded(8);
        std::ranges::sort(lines, {}, &LyricLine::timeMs);
        for (int timeMs = -1; timeMs <= 9; ++timeMs) {
            qsizetype walked = lines.size() - 1;
            while (walked >= 0 && lines.at(walked).timeMs > timeMs)
                --walked;
            QCOMPARE(LyricLine::lastBegun(lines, timeMs), walked);
        }
    }
}

QTEST_GUILESS_MAIN(TestLyricLine)
#include "tst_lyric_line.moc"
