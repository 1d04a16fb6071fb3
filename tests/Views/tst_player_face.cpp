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
    /// Whether the line stands in the middle of the page.
    bool isCentred(int line) const
    {
        const QQuickItem *list = t->item(u"lyricList"_s);
        const QQuickItem *item = lyricLine(line);
        return item &&
               qAbs(item->mapToItem(list, QPointF(0, item->height() / 2)).y() - list->height() / 2) < 4;
    }
};

void PlayerFaceSongsTest::lyricsFollowTheClockAndADoubleTapSeeks()
{
    QFETCH(const Source, source);
    playFrom(source);
    const QString songId = t->screens->nowPlaying()->currentSongId();
    openFromDisc();
    QCOMPARE(slider()->objectName(), u"progress_slider_"_s + songId);
    answerLyrics(source);
    QTRY_COMPARE(lyrics().count(), lineCount);
    openLyrics();
    for (int line = 0; line < 3; ++line)
        QCOMPARE(lyricLine(line)->property("text").toString(), lineText(source, line));

    // Before its time the first line is the current one here, and none on the page of the cover.
    QTRY_COMPARE(shownLine(), 0);
    QCOMPARE(lyrics().currentText(), QString());
    t->player->tick(4 * lineSeconds);
    QTRY_COMPARE(shownLine(), 3);
    QCOMPARE(lyrics().currentText(), lineText(source, 3));
    if (!QTest::qWaitFor([this] { return isCentred(3); }, 4000)) {
        QQuickItem *list = t->item(u"lyricList"_s);
        qInfo() << "DEBUG" << list->height() << list->property("contentY") << list->property("originY")
                << list->property("contentHeight") << lyricLine(3)->y() << lyricLine(3)->height()
                << list->property("progress") << list->property("way") << list->property("moving")
                << lyricLine(0)->y() << lyricLine(1)->y() << lyricLine(2)->y();
    }
    QTRY_VERIFY(isCentred(3));
    t->player->tick(5 * lineSeconds - 0.001);
    QCOMPARE(shownLine(), 3);
    // The next one comes by the clock, before the player says anything.
    t->clock->advance(std::chrono::milliseconds(2));
    QCOMPARE(shownLine(), 4);
    QTRY_VERIFY(isCentred(4));

    // Half a second early: the line at 25 s is current from 24.5 s on.
    t->lyricsOffsetService->setOffset(500, songId);
    t->player->tick(5 * lineSeconds - 0.501);
    QCOMPARE(shownLine(), 3);
    t->player->tick(5 * lineSeconds - 0.5);
    QCOMPARE(shownLine(), 4);
    QTRY_VERIFY(isCentred(4));
    QVERIFY(t->player->seeks.isEmpty());
    QTest::mouseClick(t->window, Qt::LeftButton, {}, TestWindow::centre(lyricLine(6)));
    QVERIFY(t->player->seeks.isEmpty());
    doubleTap(6);
    QTRY_COMPARE(t->player->seeks.size(), 1);
    QCOMPARE(t->player->seeks.constLast().time, 7 * lineSeconds - 0.5);
    t->player->finishSeek();
    QTRY_COMPARE(shownLine(), 6);
    QCOMPARE(t->screens->nowPlaying()->currentSongId(), songId);
}

void PlayerFaceSongsTest::theSliderSeeksAndEndsTheSong()
{
    QFETCH(const Source, source);
    playFrom(source);
    const QString songId = t->screens->nowPlaying()->currentSongId();
    openFromDisc();
    const QString title = shownTitle();
    // A pixel of the slider is as long as what is left to go.
    const int width = qRound(slider()->width());
    replay(source, width * 0.3);
    QTRY_VERIFY(slider() && slider()->isEnabled());
    QCOMPARE(qRound(slider()->width()), width);
    dragSlider(width - 1);
    QTRY_COMPARE(t->player->seeks.size(), 1);
    QVERIFY(qAbs(t->player->seeks.constFirst().time - (width - 1) * 0.3) < 0.01);
    QCOMPARE(t->screens->nowPlaying()->currentSongId(), songId);
    t->player->finishSeek();

    replay(source, width * 0.2);
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
