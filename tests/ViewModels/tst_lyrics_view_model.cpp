// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LyricsBench.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString songText = u"[00:10.00]one\n[00:20.00]two\n[00:20.00]three\n[00:30.00]four"_s;

} // namespace

class TestLyricsViewModel : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<LyricsBench> m_bench;

    LyricsBench &bench() { return *m_bench; }
    LyricsViewModel &lyrics() { return m_bench->lyrics(); }
    int currentLine() { return lyrics().currentLineIndex(); }
    QString currentText() { return lyrics().currentText(); }
    void show(const QString &text, const QString &id = u"a"_s)
    {
        bench().play(LyricsBench::songWith(id, text));
        bench().answerDuration(300);
        lyrics().load();
    }
    /// Seeks that the player was asked for, in order.
    QStringList seeks()
    {
        QStringList seeks;
        for (const QString &call : bench().stream().calls) {
            if (call.startsWith(u"seek "_s))
                seeks.append(call.mid(5));
        }
        return seeks;
    }

private Q_SLOTS:
    void init() { m_bench = std::make_unique<LyricsBench>(); }
    void cleanup() { m_bench.reset(); }

    void startsWithoutLyrics()
    {
        QVERIFY(!lyrics().hasLyrics());
        QCOMPARE(lyrics().count(), 0);
        QCOMPARE(currentLine(), 0);
        QCOMPARE(currentText(), QString());
    }

    void beforeTheFirstLineItIsStyledAsCurrentAndTheMiniViewShowsNothing()
    {
        show(songText);
        bench().tick(9.5);
        QCOMPARE(currentLine(), 0);
        QVERIFY(lyrics().lines()->index(0).data(LyricLineModel::IsActiveRole).toBool());
        QCOMPARE(currentText(), QString());
    }

    void aLineIsCurrentFromItsTimeOn()
    {
        show(songText);
        bench().tick(10);
        QCOMPARE(currentLine(), 0);
        QCOMPARE(currentText(), u"one"_s);
        bench().tick(30);
        QCOMPARE(currentLine(), 3);
        QCOMPARE(currentText(), u"four"_s);
        bench().tick(29.8);
        QCOMPARE(currentLine(), 2);
    }

    void ofLinesOfOneTimeTheLastIsCurrent()
    {
        show(songText);
        bench().tick(20);
        QCOMPARE(currentLine(), 2);
        QCOMPARE(currentText(), u"three"_s);
    }

    void plainTextRunsAtFiveSecondsALine()
    {
        show(u"one\ntwo\nthree"_s);
        bench().tick(4.9);
        QCOMPARE(currentText(), u"one"_s);
        bench().tick(5);
        QCOMPARE(currentText(), u"two"_s);
        bench().tick(100);
        QCOMPARE(currentText(), u"three"_s);
        lyrics().seekToLine(1);
        QCOMPARE(seeks().constLast(), u"5"_s);
    }

    void lyricsThatComeAmidTheSongStandAtTheirLineAtOnce()
    {
        bench().play(LyricsBench::songWith(u"a"_s, songText));
        bench().tick(21);
        QSignalSpy index(&lyrics(), &LyricsViewModel::currentLineIndexChanged);
        lyrics().load();
        QCOMPARE(currentLine(), 2);
        QCOMPARE(currentText(), u"three"_s);
        QCOMPARE(index.size(), 1);
    }

    // MARK: on time

    void aLineComesAtItsTimeAndNotWithTheNextTick()
    {
        show(songText);
        bench().tick(9.9);
        bench().pass(99);
        QCOMPARE(currentText(), QString());
        bench().pass(1);
        QCOMPARE(currentText(), u"one"_s);
        bench().pass(150);
        bench().tick(10.14);
        QCOMPARE(currentText(), u"one"_s);
    }

    void ticksBetweenTwoLinesTellNobodyAnything()
    {
        show(songText);
        bench().tick(11);
        QSignalSpy index(&lyrics(), &LyricsViewModel::currentLineIndexChanged);
        QSignalSpy text(&lyrics(), &LyricsViewModel::currentTextChanged);
        QSignalSpy rows(lyrics().lines(), &LyricLineModel::dataChanged);
        for (int i = 0; i < 30; ++i) {
            bench().pass(250);
            bench().tick(11.25 + 0.25 * i);
        }
        QCOMPARE(index.size() + text.size() + rows.size(), 0);
    }

    void eachChangeOfTheLineIsOneTimer()
    {
        show(timedText(60));
        QSignalSpy text(&lyrics(), &LyricsViewModel::currentTextChanged);
        int ticksWithATimer = 0;
        for (int i = 0; i < 80; ++i) {
            bench().tick(0.1 + 0.25 * i);
            ticksWithATimer += bench().playbackTimers();
            bench().pass(250);
        }
        QCOMPARE(text.size(), 20);
        QCOMPARE(ticksWithATimer, 20);
    }

    void aPausedPlayerRunsNoTimer()
    {
        show(songText);
        bench().tick(9.9);
        bench().player().pause();
        QCOMPARE(bench().playbackTimers(), 0);
        bench().pass(1000);
        QCOMPARE(currentText(), QString());
    }

    void clearedLyricsRunNoTimer()
    {
        show(songText);
        bench().tick(9.9);
        lyrics().clear();
        QCOMPARE(bench().playbackTimers(), 0);
        QVERIFY(!lyrics().hasLyrics());
        QCOMPARE(currentText(), QString());
    }

    // MARK: offset

    void aPositiveOffsetMakesLinesComeEarlier()
    {
        bench().offsets().setOffset(500, u"a"_s);
        show(songText);
        bench().tick(9.499);
        QCOMPARE(currentText(), QString());
        bench().tick(9.5);
        QCOMPARE(currentText(), u"one"_s);
        lyrics().seekToLine(0);
        QCOMPARE(seeks().constLast(), u"9.5"_s);
        QCOMPARE(currentText(), u"one"_s);
    }

    void aNegativeOffsetMakesThemComeLater()
    {
        bench().offsets().setOffset(-1500, u"a"_s);
        show(songText);
        bench().tick(11.25);
        QCOMPARE(currentText(), QString());
        bench().pass(250);
        QCOMPARE(currentText(), u"one"_s);
        lyrics().seekToLine(3);
        QCOMPARE(seeks().constLast(), u"31.5"_s);
    }

    void aChangedOffsetCountsAtOnce()
    {
        show(songText);
        bench().tick(19);
        QCOMPARE(currentText(), u"one"_s);
        bench().offsets().setOffset(1000, u"a"_s);
        QCOMPARE(currentText(), u"three"_s);
        bench().offsets().resetOffset(u"a"_s);
        QCOMPARE(currentText(), u"one"_s);
        // Another song's.
        bench().offsets().setOffset(5000, u"b"_s);
        QCOMPARE(currentText(), u"one"_s);
    }

    void extremeOffsetsAreHarmless()
    {
        show(songText);
        bench().tick(15);
        bench().offsets().setOffset(std::numeric_limits<int>::max(), u"a"_s);
        QCOMPARE(currentText(), u"four"_s);
        bench().offsets().setOffset(std::numeric_limits<int>::min(), u"a"_s);
        QCOMPARE(currentText(), QString());
        QCOMPARE(currentLine(), 0);
        bench().tick(15.2);
        QCOMPARE(bench().playbackTimers(), 0);
    }

    // MARK: seeking

    void aLineThatIsSoughtIsCurrent_data()
    {
        QTest::addColumn<int>("offset");
        for (const int offset : {0, 500, -345, 4999})
            QTest::addRow("%d", offset) << offset;
    }

    void aLineThatIsSoughtIsCurrent()
    {
        QFETCH(int, offset);
        bench().offsets().setOffset(offset, u"a"_s);
        show(u"[00:07.345]a\n[00:12.34]b\n[01:02.999]c\n[03:00.001]d"_s);
        bench().tick(1);
        for (const int line : {3, 1, 2, 0}) {
            lyrics().seekToLine(line);
            QCOMPARE(currentLine(), line);
            bench().stream().finishSeek();
            QCOMPARE(currentLine(), line);
        }
    }

    void linesThatAreNotThereAreNotSought()
    {
        show(songText);
        const QStringList before = seeks();
        lyrics().seekToLine(-1);
        lyrics().seekToLine(4);
        QCOMPARE(seeks(), before);
    }

    void aLineBeforeTheBeginningOfTheSongIsItsBeginning()
    {
        bench().offsets().setOffset(5000, u"a"_s);
        show(u"[00:01.00]one\n[00:20.00]two"_s);
        bench().tick(50);
        lyrics().seekToLine(0);
        QCOMPARE(seeks().constLast(), u"0"_s);
        QCOMPARE(currentText(), u"one"_s);
    }

    void aSongWhoseAddressIsOnItsWayIsNeitherFollowedNorSought()
    {
        show(songText);
        bench().tick(29.9);
        QCOMPARE(currentText(), u"three"_s);
        bench().player().playOnlineSong(onlineSong(u"x"_s), onlineSongs({u"x"_s}));
        QTRY_VERIFY(bench().asksOnline(u"x"_s));
        bench().answerOnline(u"x"_s, "[00:05.00]first\n[00:30.00]second");
        QTRY_COMPARE(lyrics().count(), 2);
        // The song before is heard still.
        QVERIFY(bench().player().isPlaying());
        QCOMPARE(currentLine(), 0);
        QCOMPARE(currentText(), QString());
        bench().tick(29.95);
        QCOMPARE(bench().playbackTimers(), 0);
        bench().tick(31);
        QCOMPARE(currentLine(), 0);
        const QStringList before = seeks();
        lyrics().seekToLine(1);
        QCOMPARE(seeks(), before);
        // Its own sound.
        QVERIFY(bench().home.web().answer(u"url?id=x"_s, onlineAnswers::body("https://cdn.example/x.mp3")));
        QTRY_VERIFY(bench().player().isCurrentLoaded());
        QCOMPARE(currentLine(), 0);
        bench().answerDuration(100);
        bench().tick(30);
        QCOMPARE(currentText(), u"second"_s);
        lyrics().seekToLine(0);
        QCOMPARE(seeks().constLast(), u"5"_s);
    }

    // MARK: songs

    void anotherSongStartsAtItsFirstLine()
    {
        show(songText);
        bench().tick(25);
        QSignalSpy has(&lyrics(), &LyricsViewModel::hasLyricsChanged);
        bench().play(LyricsBench::songWith(u"b"_s, u"[00:02.00]of b\n[00:04.00]more"_s));
        QCOMPARE(currentText(), QString());
        QCOMPARE(currentLine(), 0);
        // They went and came.
        QCOMPARE(has.size(), 2);
        bench().tick(4);
        QCOMPARE(currentText(), u"more"_s);
    }

    void aSongWithoutLyricsShowsNone()
    {
        show(songText);
        bench().tick(25);
        bench().play(fileSong(u"b"_s));
        QVERIFY(!lyrics().hasLyrics());
        QCOMPARE(lyrics().count(), 0);
        QCOMPARE(currentText(), QString());
        QCOMPARE(currentLine(), 0);
    }

    void theLinesOfASongThatHasPassedAreNeverShown()
    {
        bench().player().playOnlineSong(onlineSong(u"x"_s), onlineSongs({u"x"_s}));
        lyrics().load();
        QTRY_VERIFY(bench().asksOnline(u"x"_s));
        QVERIFY(bench().home.web().answer(u"id=x&type=lrc"_s,
                                          onlineAnswers::body("[00:01.00]late\n[00:02.00]later")));
        bench().play(LyricsBench::songWith(u"b"_s, u"[00:02.00]of b"_s));
        QVERIFY(QThreadPool::globalInstance()->waitForDone(patienceMs));
        settle();
        QCOMPARE(lyrics().count(), 1);
        bench().tick(2);
        QCOMPARE(currentText(), u"of b"_s);
    }

    void fiveThousandLinesAreFollowed()
    {
        show(timedText(5000));
        QTRY_COMPARE(lyrics().count(), 5000);
        const QAbstractItemModelTester tester(lyrics().lines());
        bench().tick(4321.2);
        QCOMPARE(currentLine(), 4321);
        QSignalSpy rows(lyrics().lines(), &LyricLineModel::dataChanged);
        bench().tick(4322);
        QCOMPARE(currentText(), u"line 4322"_s);
        QCOMPARE(rows.size(), 1);
    }

    void aThousandSongsLeaveNothingBehind()
    {
        lyrics().load();
        for (int i = 0; i < 1000; ++i) {
            bench().play(LyricsBench::songWith(QString::number(i), u"[00:01.00]of %1\n[00:02.00]x"_s.arg(i)));
            bench().tick(1);
            QCOMPARE(currentText(), u"of %1"_s.arg(i));
            QCOMPARE(lyrics().count(), 2);
        }
        QVERIFY(bench().playbackTimers() <= 1);
    }

    // MARK: look

    void aStoredFontSizeThatIsNoneIsDrawnAsOne_data()
    {
        QTest::addColumn<double>("stored");
        QTest::addColumn<double>("drawn");
        QTest::newRow("none") << 0.0 << 14.0;
        QTest::newRow("below none") << -5.0 << 14.0;
        QTest::newRow("huge") << 1e9 << 28.0;
    }

    void aStoredFontSizeThatIsNoneIsDrawnAsOne()
    {
        QFETCH(double, stored);
        QFETCH(double, drawn);
        bench().home.preferences().setDouble(u"lyricsFontSize"_s, stored);
        ThemeManager manager(bench().home.preferences(), bench().desktop);
        ThemeService appearance(bench().home.preferences(), manager, bench().desktop);
        LyricsViewModel lyrics({.audioPlayer = bench().player(),
                                .sources = bench().sources(),
                                .offsets = bench().offsets(),
                                .appearance = appearance,
                                .clock = bench().home.clock()});
        bench().play(LyricsBench::songWith(u"a"_s, songText));
        lyrics.load();
        QCOMPARE(lyrics.lines()->index(1).data(LyricLineModel::PointSizeRole).toDouble(), drawn);
        lyrics.clear();
    }

    void theListenersFontSizeAndBlurAreThoseOfTheLines()
    {
        show(songText);
        const auto line = [this](LyricLineModel::Role role) { return lyrics().lines()->index(1).data(role); };
        QCOMPARE(line(LyricLineModel::PointSizeRole), 18.0);
        QCOMPARE(line(LyricLineModel::BlurRadiusRole), 0.8);
        bench().appearance().setLyricsFontSize(28);
        QCOMPARE(line(LyricLineModel::PointSizeRole), 28.0);
        bench().appearance().setLyricsBlurEnabled(false);
        QCOMPARE(line(LyricLineModel::BlurRadiusRole), 0.0);
        // Also of a later song.
        bench().play(LyricsBench::songWith(u"b"_s, songText));
        QCOMPARE(line(LyricLineModel::PointSizeRole), 28.0);
    }
};

QTEST_GUILESS_MAIN(TestLyricsViewModel)
#include "tst_lyrics_view_model.moc"
