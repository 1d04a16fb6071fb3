// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadePicture.h"
#include "Views/HeldKey.h"
#include "Views/NowPlayingScreenTest.h"
#include "Views/Stillness.h"

#include <QAccessible>
#include <QPointer>
#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

class NowPlayingRulesTest : public NowPlayingScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void songIsShown();
    void withoutASongNothingCanBePressedThatNeedsOne();
    void dragSeeksOnceWhenLetGo();
    void releaseInTheLastMomentEndsTheSong_data();
    void releaseInTheLastMomentEndsTheSong();
    void anotherSongInMidDragHasASliderOfItsOwn();
    void unknownLengthCannotBeSought();
    void dragThatIsTakenAwaySeeksNowhere();
    void sameSongAgainKeepsTheSliderUnderTheFinger();
    void sliderCanBeTouchedAFingerHigh();
    void arrowsMoveTheSlider();
    void heldArrowStopsShortOfTheEnd();
    void keyboardStaysOnTheSliderWhenTheSongChanges();
    void theClockDoesNotSpeakToTheKeyboard();
    void coverThatIsMissingOrBrokenLeavesAPlaceholder();
    void thousandSongsLeaveNoTitleAndNoCoverOfTheOnesBefore();
    void waysOut();
    void barOpensItsSheets();
    void controlsReachThePlayer();
    void heldSpacePressesAButtonOnce();
    void loadingTakesThePlaceOfPlay();
    void heartBouncesWhenItChanges();
    void modeTurnsWithASpring();
    void reducedMotionMovesNothing();
    void equalizerLineLeadsToTheEqualizer();
    void nothingIsDrawnWhileNothingChanges();
};

void NowPlayingRulesTest::songIsShown()
{
    QVERIFY(showSong());
    s->bench.stream().tick(65);
    QCOMPARE(s->text(u"nowPlayingTitle"_s), u"潮汐与灯塔"_s);
    QCOMPARE(s->text(u"nowPlayingArtist"_s), u"林间合唱团"_s);
    QCOMPARE(s->text(u"qualityText"_s), u"320kbps"_s);
    QCOMPARE(s->text(u"displayTime"_s), u"1:05"_s);
    QCOMPARE(s->text(u"duration"_s), u"3:20"_s);
    QCOMPARE(shownProgress(), 0.325);
}

void NowPlayingRulesTest::withoutASongNothingCanBePressedThatNeedsOne()
{
    QVERIFY(s->show());
    QCOMPARE(s->text(u"nowPlayingTitle"_s), u"未知歌曲"_s);
    QCOMPARE(s->text(u"nowPlayingArtist"_s), u"未知艺术家"_s);
    QCOMPARE(s->text(u"displayTime"_s), u"0:00"_s);
    QCOMPARE(s->text(u"duration"_s), u"0:00"_s);
    QCOMPARE(s->slider()->objectName(), u"progress_slider_none"_s);
    QVERIFY(!s->slider()->isEnabled());
    for (const auto &name : {u"previousButton"_s, u"playPauseButton"_s, u"nextButton"_s, u"favoriteButton"_s})
        QVERIFY2(!s->item(name)->isEnabled(), qPrintable(name));
    for (const auto &name : {u"playModeButton"_s, u"equalizerStatusButton"_s, u"lyricsButton"_s})
        QVERIFY2(s->item(name)->isEnabled(), qPrintable(name));
}

void NowPlayingRulesTest::dragSeeksOnceWhenLetGo()
{
    QVERIFY(showSong());
    s->bench.stream().tick(50);
    const double width = s->slider()->width();
    s->press(s->onSlider(0.25 * width));
    for (const double fraction : {0.3, 0.5, 0.7, 0.75}) {
        s->move(s->onSlider(fraction * width));
        // The song plays on under the finger, and the knob stays there.
        s->bench.stream().tick(51 + fraction);
        QVERIFY(qAbs(shownProgress() - fraction) < 0.01);
    }
    QVERIFY(s->bench.nowPlaying.isDragging());
    QCOMPARE(s->text(u"displayTime"_s).left(2), u"2:"_s);
    QVERIFY(s->bench.stream().seeks.isEmpty());
    s->release(s->onSlider(0.75 * width));
    QCOMPARE(s->bench.stream().seeks.size(), 1);
    QVERIFY(qAbs(s->bench.stream().seeks.at(0).time - 150) < 1);
    QVERIFY(qAbs(shownProgress() - 0.75) < 0.01);
    QVERIFY(!s->bench.nowPlaying.isDragging());
}

void NowPlayingRulesTest::releaseInTheLastMomentEndsTheSong_data()
{
    QTest::addColumn<double>("secondsToGo");
    QTest::addColumn<bool>("ends");
    QTest::newRow("0.2 s before the end") << 0.2 << true;
    QTest::newRow("0.3 s before the end") << 0.3 << false;
}

void NowPlayingRulesTest::releaseInTheLastMomentEndsTheSong()
{
    QFETCH(double, secondsToGo);
    QFETCH(bool, ends);
    QVERIFY(s->show());
    // A pixel of the slider is as long as what is left to go.
    const int width = qRound(s->item(u"progressView"_s)->width());
    s->bench.playSong(m_song, width * secondsToGo);
    QTRY_VERIFY(s->slider() && s->slider()->isEnabled());
    QCOMPARE(qRound(s->slider()->width()), width);
    s->press(s->onSlider(width / 2.0));
    s->move(s->onSlider(width - 1));
    s->release(s->onSlider(width - 1));
    QCOMPARE(s->bench.songId(), ends ? u"following"_s : u"first"_s);
    QCOMPARE(s->bench.stream().seeks.isEmpty(), ends);
    if (!ends)
        QVERIFY(qAbs(s->bench.stream().seeks.at(0).time - (width - 1) * secondsToGo) < 0.01);
}

void NowPlayingRulesTest::anotherSongInMidDragHasASliderOfItsOwn()
{
    QVERIFY(showSong());
    const QPointer<QQuickItem> before = s->slider();
    const double width = before->width();
    s->press(s->onSlider(0.5 * width));
    s->move(s->onSlider(0.8 * width));
    QVERIFY(s->bench.nowPlaying.isDragging());
    s->bench.stream().reachEnd();
    QCOMPARE(s->bench.songId(), u"following"_s);
    QCOMPARE(s->slider()->objectName(), u"progress_slider_following"_s);
    QTRY_VERIFY(!before);
    QVERIFY(!s->bench.nowPlaying.isDragging());
    QCOMPARE(shownProgress(), 0.0);
    s->bench.stream().lastItem()->answerDuration(100);
    s->bench.stream().lastItem()->becomeReady();
    QTRY_VERIFY(s->slider()->isEnabled());
    // The finger that is still down belongs to a slider that is no more.
    s->move(s->onSlider(0.9 * width));
    QCOMPARE(shownProgress(), 0.0);
    s->release(s->onSlider(0.9 * width));
    QVERIFY(s->bench.stream().seeks.isEmpty());
    QCOMPARE(s->bench.songId(), u"following"_s);
    // The next press is its own.
    s->press(s->onSlider(0.5 * width));
    s->release(s->onSlider(0.5 * width));
    QCOMPARE(s->bench.stream().seeks.size(), 1);
}

void NowPlayingRulesTest::unknownLengthCannotBeSought()
{
    s->bench.player.playSong(m_song, {m_song, fileSong(u"following"_s)});
    QVERIFY(s->show());
    QVERIFY(!s->slider()->isEnabled());
    const QPoint end = s->onSlider(s->slider()->width() - 1);
    s->press(end);
    s->release(end);
    QVERIFY(s->bench.stream().seeks.isEmpty());
    QCOMPARE(s->bench.songId(), u"first"_s);
    QCOMPARE(s->text(u"duration"_s), u"0:00"_s);
}

void NowPlayingRulesTest::dragThatIsTakenAwaySeeksNowhere()
{
    QVERIFY(showSong());
    s->bench.stream().tick(50);
    const double width = s->slider()->width();
    s->press(s->onSlider(0.5 * width));
    s->move(s->onSlider(width - 1));
    QVERIFY(s->bench.nowPlaying.isDragging());
    // As when the screen goes under the finger.
    s->root()->setEnabled(false);
    QTRY_VERIFY(!s->bench.nowPlaying.isDragging());
    s->release(s->onSlider(width - 1));
    s->root()->setEnabled(true);
    QVERIFY(s->bench.stream().seeks.isEmpty());
    QCOMPARE(s->bench.songId(), u"first"_s);
    QCOMPARE(shownProgress(), 0.25);
}

void NowPlayingRulesTest::sameSongAgainKeepsTheSliderUnderTheFinger()
{
    s->bench.player.setPlayMode(PlayMode::repeatAll);
    s->bench.player.playSong(m_song, {m_song});
    s->bench.stream().lastItem()->answerDuration(200);
    s->bench.stream().lastItem()->becomeReady();
    QVERIFY(s->show());
    QTRY_VERIFY(s->slider()->isEnabled());
    const double width = s->slider()->width();
    s->press(s->onSlider(0.2 * width));
    s->move(s->onSlider(0.4 * width));
    s->bench.stream().reachEnd();
    QCOMPARE(s->bench.songId(), u"first"_s);
    QVERIFY(s->bench.nowPlaying.isDragging());
    s->bench.stream().lastItem()->answerDuration(200);
    s->bench.stream().lastItem()->becomeReady();
    s->bench.stream().seeks.clear();
    s->move(s->onSlider(0.5 * width));
    s->release(s->onSlider(0.5 * width));
    QCOMPARE(s->bench.stream().seeks.size(), 1);
    QVERIFY(qAbs(s->bench.stream().seeks.at(0).time - 100) < 1);
}

void NowPlayingRulesTest::sliderCanBeTouchedAFingerHigh()
{
    QVERIFY(showSong());
    const QPoint middle = s->onSlider(0.5 * s->slider()->width());
    for (const int beside : {-21, 21}) {
        s->bench.stream().seeks.clear();
        s->press(middle + QPoint(0, beside));
        s->release(middle + QPoint(0, beside));
        QCOMPARE(s->bench.stream().seeks.size(), 1);
    }
    s->press(middle - QPoint(0, 30));
    QVERIFY(!s->bench.nowPlaying.isDragging());
    s->release(middle - QPoint(0, 30));
}

void NowPlayingRulesTest::heldArrowStopsShortOfTheEnd()
{
    QVERIFY(showSong());
    s->bench.stream().tick(160);
    s->slider()->forceActiveFocus(Qt::TabFocusReason);
    holdKey(s->window(), Qt::Key_Right);
    QCOMPARE(s->bench.songId(), u"first"_s);
    QVERIFY(qAbs(s->bench.stream().seeks.constLast().time - 190) < 0.01);
    // Who lets go and presses once more means it.
    s->key(Qt::Key_Right);
    s->key(Qt::Key_Right);
    QCOMPARE(s->bench.songId(), u"following"_s);
}

void NowPlayingRulesTest::arrowsMoveTheSlider()
{
    QVERIFY(showSong());
    s->bench.stream().tick(50);
    s->slider()->forceActiveFocus(Qt::TabFocusReason);
    s->key(Qt::Key_Right);
    QCOMPARE(s->bench.stream().seeks.size(), 1);
    // A twentieth of the song.
    QVERIFY(qAbs(s->bench.stream().seeks.at(0).time - 60) < 0.01);
    s->key(Qt::Key_End);
    QCOMPARE(s->bench.songId(), u"following"_s);
}

void NowPlayingRulesTest::theClockDoesNotSpeakToTheKeyboard()
{
    QVERIFY(showSong());
    const auto description = [this] {
        return QAccessible::queryAccessibleInterface(s->slider())->text(QAccessible::Description);
    };
    s->bench.stream().tick(5);
    QCOMPARE(description(), u"0:05 / 3:20"_s);
    s->slider()->forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(description(), u"0:05 / 3:20"_s);
    const QObject *attached = nullptr;
    for (const QObject *child : s->slider()->children()) {
        if (child->inherits("QQuickAccessibleAttached"))
            attached = child;
    }
    QVERIFY(attached);
    const QSignalSpy told(attached, SIGNAL(descriptionChanged()));
    QVERIFY(told.isValid());
    for (int second = 6; second < 16; ++second)
        s->bench.stream().tick(second);
    QCOMPARE(s->text(u"displayTime"_s), u"0:15"_s);
    QCOMPARE(told.size(), 0);
    // Where the listener has gone is told.
    s->key(Qt::Key_Right);
    QCOMPARE(description(), s->text(u"displayTime"_s) + u" / 3:20"_s);
    QVERIFY(description() != u"0:15 / 3:20"_s);
    s->item(u"playPauseButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    s->bench.stream().finishSeek();
    s->bench.stream().tick(40);
    QCOMPARE(description(), u"0:40 / 3:20"_s);
}

void NowPlayingRulesTest::keyboardStaysOnTheSliderWhenTheSongChanges()
{
    QVERIFY(showSong());
    s->slider()->forceActiveFocus(Qt::TabFocusReason);
    s->bench.nowPlaying.next();
    QCOMPARE(s->slider()->objectName(), u"progress_slider_following"_s);
    s->bench.stream().lastItem()->answerDuration(100);
    s->bench.stream().lastItem()->becomeReady();
    QTRY_VERIFY(s->slider()->isEnabled());
    QTRY_VERIFY(s->slider()->hasActiveFocus());
}

void NowPlayingRulesTest::coverThatIsMissingOrBrokenLeavesAPlaceholder()
{
    s->bench.themeService.setCassetteStyle(CassetteStyle::none);
    // Alone: the dancer lies on it.
    s->bench.themeService.setSoundWaveRing(false);
    const QByteArray red = madePng(Qt::red);
    s->bench.playSong(NowPlayingScene::song(u"red"_s, u"红"_s, red), 100);
    QVERIFY(s->show());
    const auto ink = [this] {
        const QRect area = s->area(s->item(u"normalAlbumCover"_s)).toRect();
        const QImage cover = s->window()->grabWindow().copy(area.adjusted(20, 20, -20, -20));
        QSet<QRgb> colors;
        for (int y = 0; y < cover.height(); ++y) {
            for (int x = 0; x < cover.width(); ++x)
                colors.insert(cover.pixel(x, y));
        }
        return colors;
    };
    // Decoded at its size, a plain colour may come out a step beside itself.
    constexpr int near = 4;
    const auto isRed = [](QRgb color) {
        return qRed(color) >= 255 - near && qGreen(color) <= near && qBlue(color) <= near;
    };
    const auto isRedCover = [&] { return std::ranges::all_of(ink(), isRed); };
    QTRY_VERIFY(isRedCover());
    QVERIFY(!s->shows(u"placeholder note"_s));
    s->bench.playSong(m_song, 100);
    QTRY_VERIFY(s->shows(u"placeholder note"_s));
    QCOMPARE(s->item(u"placeholder note"_s)->property("name").toString(), u"music.note"_s);
    // A ground, a note on it, and nothing of the cover before.
    const auto isPlaceholder = [&] {
        const QSet<QRgb> colors = ink();
        return colors.size() > 1 && std::ranges::none_of(colors, isRed);
    };
    QTRY_VERIFY(isPlaceholder());
    s->bench.playSong(NowPlayingScene::song(u"red again"_s, u"红"_s, red), 100);
    QTRY_VERIFY(isRedCover());
    s->bench.playSong(NowPlayingScene::song(u"broken"_s, u"坏封面"_s, "this is no picture"), 100);
    QCOMPARE(s->text(u"nowPlayingTitle"_s), u"坏封面"_s);
    QVERIFY(s->bench.nowPlaying.coverSource() != u"image://cover/none"_s);
    QTRY_VERIFY(isPlaceholder());
}

void NowPlayingRulesTest::thousandSongsLeaveNoTitleAndNoCoverOfTheOnesBefore()
{
    s->bench.themeService.setCassetteStyle(CassetteStyle::none);
    QVERIFY(s->show());
    const QByteArray red = madePng(Qt::red);
    const QByteArray blue = madePng(Qt::blue);
    const auto items = [this] { return s->root()->findChildren<QQuickItem *>().size(); };
    const qsizetype before = items();
    for (int i = 0; i < 1000; ++i) {
        const QString id = QString::number(i);
        const Song song = NowPlayingScene::song(id, u"歌 "_s + id,
                                                i % 3 == 0   ? QByteArray()
                                                : i % 3 == 1 ? red
                                                             : blue);
        s->bench.player.playSong(song, {song});
        if (i % 50 == 0)
            QCoreApplication::processEvents();
    }
    // The last one is red.
    const Song last = NowPlayingScene::song(u"last"_s, u"最后一首"_s, red);
    s->bench.player.playSong(last, {last});
    QCOMPARE(s->text(u"nowPlayingTitle"_s), u"最后一首"_s);
    QCOMPARE(s->slider()->objectName(), u"progress_slider_last"_s);
    const QPoint middle = s->area(s->item(u"albumCoverPlace"_s)).center().toPoint();
    QTRY_COMPARE_WITH_TIMEOUT(s->window()->grabWindow().pixelColor(middle), QColor(Qt::red), 30'000);
    QTRY_COMPARE(items(), before);
}

void NowPlayingRulesTest::waysOut()
{
    QVERIFY(showSong());
    QSignalSpy closed(s->root(), SIGNAL(closeRequested()));
    s->click(u"nowPlayingClose"_s);
    QCOMPARE(closed.size(), 1);
    s->click(u"collapseButton"_s);
    QCOMPARE(closed.size(), 2);
}

void NowPlayingRulesTest::barOpensItsSheets()
{
    QVERIFY(showSong());
    s->click(u"sleepTimerButton"_s);
    QVERIFY(s->bench.nowPlaying.property("showSleepTimer").toBool());
    QVERIFY(s->bench.nowPlaying.setProperty("showSleepTimer", false));
    // A sheet on its way out still has the window to itself.
    const auto *sheet = s->root()->findChild<QObject *>(u"sleepTimerSheet"_s);
    QTRY_VERIFY(!sheet->property("visible").toBool());
    s->click(u"moreButton"_s);
    QVERIFY(s->bench.nowPlaying.property("showMoreOptions").toBool());
}

void NowPlayingRulesTest::controlsReachThePlayer()
{
    QVERIFY(showSong());
    QCOMPARE(s->text(u"playPauseButton"_s), u"暂停"_s);
    s->click(u"playPauseButton"_s);
    QTRY_VERIFY(!s->bench.player.isPlaying());
    QCOMPARE(s->text(u"playPauseButton"_s), u"播放"_s);
    s->click(u"nextButton"_s);
    QCOMPARE(s->bench.songId(), u"following"_s);
    QTRY_COMPARE(s->text(u"nowPlayingTitle"_s), u"Title following"_s);
    s->click(u"previousButton"_s);
    QCOMPARE(s->bench.songId(), u"first"_s);
    const QString mode = s->text(u"playModeButton"_s);
    s->click(u"playModeButton"_s);
    QVERIFY(s->text(u"playModeButton"_s) != mode);
    QCOMPARE(s->text(u"playModeButton"_s), s->bench.player.playModeLabel());
    s->item(u"playPauseButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(s->bench.player.isPlaying());
    s->key(Qt::Key_Return);
    QTRY_VERIFY(!s->bench.player.isPlaying());
}

void NowPlayingRulesTest::heldSpacePressesAButtonOnce()
{
    const QList<Song> songs = fileSongs({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"g"_s});
    s->bench.player.playSong(songs.first(), songs);
    QVERIFY(s->show());
    s->item(u"nextButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    holdKey(s->window(), Qt::Key_Space);
    QCOMPARE(s->bench.songId(), u"b"_s);
    holdKey(s->window(), Qt::Key_Return);
    QCOMPARE(s->bench.songId(), u"c"_s);
    s->item(u"favoriteButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    holdKey(s->window(), Qt::Key_Space);
    QVERIFY(s->bench.nowPlaying.isFavorite());
    s->item(u"lyricsButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    holdKey(s->window(), Qt::Key_Space);
    QCOMPARE(s->bench.nowPlaying.currentPage(), int(NowPlayingViewModel::LyricsPage));
    s->item(u"equalizerStatusButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    QSignalSpy opened(&s->equalizer, &EqualizerViewModel::isOpenChanged);
    holdKey(s->window(), Qt::Key_Space);
    QCOMPARE(opened.size(), 1);
}

void NowPlayingRulesTest::loadingTakesThePlaceOfPlay()
{
    s->bench.player.playOnlineSong(onlineSong(u"7"_s), {});
    QVERIFY(s->show());
    QQuickItem *play = s->item(u"playPauseButton"_s);
    QCOMPARE(play->size(), QSizeF(80, 80));
    QVERIFY(s->shows(u"loadingSpinner"_s));
    QVERIFY(!glyph(u"playPauseButton"_s)->isVisible());
    QVERIFY(!play->isEnabled());
    s->bench.playSong(m_song, 100);
    QTRY_VERIFY(!s->shows(u"loadingSpinner"_s));
    QVERIFY(glyph(u"playPauseButton"_s)->isVisible());
    QVERIFY(play->isEnabled());
}

void NowPlayingRulesTest::heartBouncesWhenItChanges()
{
    QVERIFY(showSong());
    QQuickItem *heart = s->item(u"favoriteButton"_s);
    const QQuickItem *icon = glyph(u"favoriteButton"_s);
    QCOMPARE(icon->scale(), 1.0);
    QCOMPARE(heart->property("text").toString(), u"喜欢"_s);
    qreal least = 1;
    qreal most = 1;
    QObject::connect(icon, &QQuickItem::scaleChanged, icon, [&] {
        least = qMin(least, icon->scale());
        most = qMax(most, icon->scale());
    });
    s->bench.nowPlaying.toggleFavorite();
    QCOMPARE(heart->property("text").toString(), u"取消喜欢"_s);
    QTRY_COMPARE(icon->scale(), 1.0);
    QCOMPARE(least, 0.95);
    // A spring of that damping goes beyond.
    QVERIFY(most > 1);
}

void NowPlayingRulesTest::modeTurnsWithASpring()
{
    QVERIFY(showSong());
    const QQuickItem *icon = glyph(u"playModeButton"_s);
    qreal least = 1;
    QObject::connect(icon, &QQuickItem::scaleChanged, icon, [&] { least = qMin(least, icon->scale()); });
    s->bench.nowPlaying.togglePlayMode();
    QVERIFY(least < 0.9);
    QTRY_COMPARE(icon->scale(), 1.0);
    for (const auto &name : {u"modeSpring"_s, u"heartSpring"_s}) {
        const auto *spring = s->root()->findChild<QObject *>(name);
        QVERIFY2(spring, qPrintable(name));
        QCOMPARE(spring->property("response").toDouble(), 0.3);
        QCOMPARE(spring->property("damping").toDouble(), 0.6);
        QCOMPARE(spring->property("easeOut").toInt(), 0);
    }
}

void NowPlayingRulesTest::reducedMotionMovesNothing()
{
    s->bench.desktop.setReducesMotion(true);
    QVERIFY(showSong());
    const QQuickItem *icon = glyph(u"favoriteButton"_s);
    int moves = 0;
    QObject::connect(icon, &QQuickItem::scaleChanged, icon, [&moves] { ++moves; });
    s->bench.nowPlaying.toggleFavorite();
    QQuickItem *pages = s->item(u"pageList"_s);
    const auto place = [pages] { return pages->property("contentX").toReal(); };
    // Where the pages lie when one of them goes anywhere.
    int between = 0;
    const QQuickItem *content = pages->property("contentItem").value<QQuickItem *>();
    QObject::connect(content, &QQuickItem::xChanged, content,
                     [&] { between += -content->x() > 0 && -content->x() < s->root()->width() ? 1 : 0; });
    s->click(u"lyricsButton"_s);
    QTRY_COMPARE(place(), s->root()->width());
    QCOMPARE(moves, 0);
    QCOMPARE(between, 0);
}

void NowPlayingRulesTest::equalizerLineLeadsToTheEqualizer()
{
    QVERIFY(showSong());
    QCOMPARE(s->text(u"equalizerStatusText"_s), u"均衡器已关闭"_s);
    QCOMPARE(s->text(u"equalizerStatusButton"_s), u"去开启"_s);
    QVERIFY(!s->shows(u"needsReplay"_s));
    s->click(u"equalizerStatusButton"_s);
    QVERIFY(s->equalizer.isOpen());
    s->equalizer.close();
    s->bench.player.playSong(webSong(u"web"_s, 100), {});
    s->bench.equalizer.setEnabled(true);
    QTRY_COMPARE(s->text(u"equalizerStatusText"_s), u"均衡器已启用"_s);
    QCOMPARE(s->text(u"equalizerStatusButton"_s), u"调整"_s);
    QTRY_VERIFY(s->shows(u"needsReplay"_s));
}

void NowPlayingRulesTest::nothingIsDrawnWhileNothingChanges()
{
    QVERIFY(showSong());
    s->bench.nowPlaying.togglePlayPause();
    QVERIFY(comesToRest(*s->window()));
    QSignalSpy frames(s->window(), &QQuickWindow::frameSwapped);
    s->bench.stream().tick(100);
    QTRY_VERIFY(!frames.isEmpty());
    QVERIFY(comesToRest(*s->window()));
    // Less than a pixel of the slider, and the same second.
    frames.clear();
    s->bench.stream().tick(100.01);
    QVERIFY(comesToRest(*s->window()));
    QCOMPARE(frames.size(), 0);
}

QTEST_MAIN(NowPlayingRulesTest)
#include "tst_now_playing_screen.moc"
