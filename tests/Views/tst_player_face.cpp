// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/PlayerFaceTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

/// A song with lyrics of each kind of source in the real window: from the disc to the screen that plays, its
/// lyrics and its slider.
class PlayerFaceSongsTest : public PlayerFaceTest
{
    Q_OBJECT
private Q_SLOTS:
    void lyricsFollowTheClockAndADoubleTapSeeks_data() { addSources(); }
    void lyricsFollowTheClockAndADoubleTapSeeks();
    void theSliderSeeksAndEndsTheSong_data() { addSources(); }
    void theSliderSeeksAndEndsTheSong();

private:
    void doubleTap(int line) const
    {
        const QPoint place = TestWindow::centre(lyricLine(line));
        QTest::mouseClick(t->window, Qt::LeftButton, {}, place);
        QTest::mouseDClick(t->window, Qt::LeftButton, {}, place);
    }
};

void PlayerFaceSongsTest::lyricsFollowTheClockAndADoubleTapSeeks()
{
    QFETCH(const Source, source);
    QVERIFY(playFrom(source));
    const QString songId = t->screens->nowPlaying()->currentSongId();
    QVERIFY(openFromDisc());
    QCOMPARE(slider()->objectName(), u"progress_slider_"_s + songId);
    QVERIFY(answerLyrics(source));
    QTRY_COMPARE(lyrics().count(), lineCount);
    QVERIFY(openLyrics());
    for (int line = 0; line < 3; ++line)
        QCOMPARE(lyricLine(line)->property("text").toString(), lineText(source, line));

    // Before its time the first line is the current one here, and none on the page of the cover.
    QTRY_COMPARE(shownLine(), 0);
    QCOMPARE(lyrics().currentText(), QString());
    t->player->tick(9 * lineSeconds);
    QTRY_COMPARE(shownLine(), 8);
    QCOMPARE(lyrics().currentText(), lineText(source, 8));
    // The first ones have too little above them for that.
    QTRY_VERIFY(isCentred(8));
    t->player->tick(10 * lineSeconds - 0.001);
    QCOMPARE(shownLine(), 8);
    // The next one comes by the clock, before the player says anything.
    t->clock->advance(std::chrono::milliseconds(2));
    QCOMPARE(shownLine(), 9);
    QTRY_VERIFY(isCentred(9));

    // Half a second early: the line at 50 s is current from 49.5 s on.
    t->lyricsOffsetService->setOffset(500, songId);
    t->player->tick(10 * lineSeconds - 0.501);
    QCOMPARE(shownLine(), 8);
    t->player->tick(10 * lineSeconds - 0.5);
    QCOMPARE(shownLine(), 9);
    QTRY_VERIFY(isCentred(9));
    QVERIFY(t->player->seeks.isEmpty());
    QTest::mouseClick(t->window, Qt::LeftButton, {}, TestWindow::centre(lyricLine(11)));
    QVERIFY(t->player->seeks.isEmpty());
    doubleTap(11);
    QTRY_COMPARE(t->player->seeks.size(), 1);
    QCOMPARE(t->player->seeks.constLast().time, 12 * lineSeconds - 0.5);
    t->player->finishSeek();
    QTRY_COMPARE(shownLine(), 11);
    QCOMPARE(t->screens->nowPlaying()->currentSongId(), songId);
}

void PlayerFaceSongsTest::theSliderSeeksAndEndsTheSong()
{
    QFETCH(const Source, source);
    QVERIFY(playFrom(source));
    const QString songId = t->screens->nowPlaying()->currentSongId();
    QVERIFY(openFromDisc());
    const QString title = shownTitle();
    // A pixel of the slider is as long as what is left to go.
    const int width = qRound(slider()->width());
    QVERIFY(replay(source, width * 0.3));
    QTRY_VERIFY(slider() && slider()->isEnabled());
    QCOMPARE(qRound(slider()->width()), width);
    dragSlider(width - 1);
    QTRY_COMPARE(t->player->seeks.size(), 1);
    QVERIFY(qAbs(t->player->seeks.constFirst().time - (width - 1) * 0.3) < 0.01);
    QCOMPARE(t->screens->nowPlaying()->currentSongId(), songId);
    t->player->finishSeek();

    QVERIFY(replay(source, width * 0.2));
    QTRY_VERIFY(slider() && slider()->isEnabled());
    dragSlider(width - 1);
    QTRY_VERIFY(t->screens->nowPlaying()->currentSongId() != songId);
    QVERIFY(t->player->seeks.isEmpty());
    QTRY_VERIFY(shownTitle() != title);
    QVERIFY(!t->screens->nowPlaying()->isDragging());
    QTRY_COMPARE(slider()->property("shown").toReal(), 0.0);
}

QTEST_MAIN(PlayerFaceSongsTest)
#include "tst_player_face.moc"
