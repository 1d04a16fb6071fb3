// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/NowPlayingScreenTest.h"

#include "Fixtures/MadePicture.h"
#include "Theme/Contrast.h"

#include <QAccessible>

#include <cmath>

using namespace cadorel;
using namespace Qt::StringLiterals;

class NowPlayingLayoutTest : public NowPlayingScreenTest
{
    Q_OBJECT
    /// The picture behind the screen is the one that it shall be, or there shall be none.
    bool isBackdropSettled() const
    {
        const QQuickItem *pictures = s->item(u"pictures"_s);
        return pictures->property("shownSource") == pictures->property("source") &&
               !pictures->property("isFading").toBool();
    }

private Q_SLOTS:
    void longTitleEndsBeforeTheEdge();
    void dotsAndButtonsLeadToThePages();
    void dotsTakeAFingersWidthEach();
    void fingerSwipesThroughThePages();
    void pageOutOfSightIsNotDrawn();
    void windowThatGrowsKeepsThePage();
    void windowThatGrowsKeepsWhatIsReadOfTheQueue();
    void buttonsSayWhichPageIsShown();
    void pinkLookDrawsPictures();
    void wideWindowPutsTheLyricsBesideTheCover();
    void volumeStandsBesideTheControlsOfAWideWindow();
    void pagesShowLyricsAndQueue();
    void sheetsOpenAndClose();
    void textsCanBeReadOnEveryBackground_data();
    void textsCanBeReadOnEveryBackground();
    void nothingOverlaps_data();
    void nothingOverlaps();
    void everyControlHasAName();
    void stateGoesWithTheScreen();
};

void NowPlayingLayoutTest::longTitleEndsBeforeTheEdge()
{
    s->bench.playSong(NowPlayingScene::song(u"long"_s, u"很长的歌名"_s.repeated(60)), 100);
    for (const QSize size : {QSize(320, 480), QSize(390, 844), QSize(1000, 700)}) {
        if (!s->root())
            QVERIFY(s->show(size));
        s->resize(size);
        const QQuickItem *title = s->item(u"nowPlayingTitle"_s);
        QCOMPARE(title->property("text").toString().size(), 300);
        QTRY_VERIFY(title->property("truncated").toBool());
        QVERIFY(QRectF(QPointF(), size).contains(s->area(title)));
        QVERIFY(QRectF(QPointF(), size).contains(s->area(s->item(u"qualityBadge"_s))));
        QVERIFY(!s->item(u"qualityText"_s)->property("truncated").toBool());
    }
}

void NowPlayingLayoutTest::dotsAndButtonsLeadToThePages()
{
    QVERIFY(showSong());
    const auto dotWidth = [this](int page) {
        return s->item(u"pageDot%1"_s.arg(page))->findChild<QQuickItem *>(u"dot"_s)->width();
    };
    QTRY_COMPARE(dotWidth(0), 8.0);
    QCOMPARE(dotWidth(1), 6.0);
    QCOMPARE(dotWidth(2), 6.0);
    s->click(u"lyricsButton"_s);
    QCOMPARE(s->bench.nowPlaying.currentPage(), int(NowPlayingViewModel::LyricsPage));
    QTRY_COMPARE(dotWidth(1), 8.0);
    QTRY_COMPARE(dotWidth(0), 6.0);
    s->click(u"queueButton"_s);
    QCOMPARE(s->bench.nowPlaying.currentPage(), int(NowPlayingViewModel::QueuePage));
    s->click(u"pageDot0"_s);
    QCOMPARE(s->bench.nowPlaying.currentPage(), int(NowPlayingViewModel::CoverPage));
    s->key(Qt::Key_PageDown);
    QCOMPARE(s->bench.nowPlaying.currentPage(), int(NowPlayingViewModel::LyricsPage));
    s->key(Qt::Key_PageUp);
    s->key(Qt::Key_PageUp);
    QCOMPARE(s->bench.nowPlaying.currentPage(), int(NowPlayingViewModel::CoverPage));
}

void NowPlayingLayoutTest::dotsTakeAFingersWidthEach()
{
    QVERIFY(showSong());
    for (const QSize size : {QSize(320, 480), QSize(390, 844)}) {
        s->resize(size);
        QRectF before;
        for (int page = 0; page < NowPlayingViewModel::PageCount; ++page) {
            const QQuickItem *button = s->item(u"pageDot%1"_s.arg(page));
            const QRectF room = s->area(button);
            const QRectF dot = s->area(button->findChild<QQuickItem *>(u"dot"_s));
            QVERIFY(room.width() >= 44 && room.height() >= 44);
            QVERIFY(room.contains(dot));
            QVERIFY(!room.intersects(before));
            // They are drawn as close to each other as ever.
            QVERIFY(qAbs(dot.center().x() - size.width() / 2.0 - 28.0 * (page - 1)) < 1);
            QVERIFY(!room.intersects(s->area(s->item(u"sleepTimerButton"_s))));
            QVERIFY(!room.intersects(s->area(s->item(u"nowPlayingClose"_s))));
            before = room;
        }
        for (const int page : {2, 1, 0}) {
            s->click(u"pageDot%1"_s.arg(page));
            QCOMPARE(s->bench.nowPlaying.currentPage(), page);
        }
    }
}

void NowPlayingLayoutTest::fingerSwipesThroughThePages()
{
    QVERIFY(showSong());
    const QQuickItem *pages = s->item(u"nowPlayingPages"_s);
    const QPoint middle = s->area(pages).center().toPoint();
    const QPoint way(130, 0);
    for (const int page : {1, 2, 2}) {
        s->swipe(middle + way, middle - way);
        QTRY_COMPARE(s->bench.nowPlaying.currentPage(), page);
        QTRY_VERIFY(!s->item(u"pageList"_s)->property("moving").toBool());
    }
    s->swipe(middle - way, middle + way);
    QTRY_COMPARE(s->bench.nowPlaying.currentPage(), 1);
}

void NowPlayingLayoutTest::pageOutOfSightIsNotDrawn()
{
    QVERIFY(showSong());
    QVERIFY(s->shows(u"songInfoView"_s));
    s->click(u"queueButton"_s);
    QTRY_VERIFY(!s->shows(u"songInfoView"_s));
    s->click(u"pageDot0"_s);
    QTRY_VERIFY(s->shows(u"songInfoView"_s));
}

void NowPlayingLayoutTest::windowThatGrowsKeepsThePage()
{
    QVERIFY(showSong());
    s->click(u"lyricsButton"_s);
    for (const QSize size :
         {QSize(320, 480), QSize(1200, 800), QSize(899, 700), QSize(900, 700), QSize(390, 844)}) {
        s->resize(size);
        QTRY_COMPARE(s->item(u"pageList"_s)->property("contentX").toReal(), qreal(size.width()));
        QCOMPARE(s->bench.nowPlaying.currentPage(), int(NowPlayingViewModel::LyricsPage));
    }
}

void NowPlayingLayoutTest::pinkLookDrawsPictures()
{
    QVERIFY(showSong());
    const QList<std::pair<QString, qreal>> drawn{{u"sleepTimerButton"_s, 24}, {u"moreButton"_s, 24},
                                                 {u"previousButton"_s, 40},   {u"playPauseButton"_s, 80},
                                                 {u"nextButton"_s, 40},       {u"favoriteButton"_s, 36},
                                                 {u"playModeButton"_s, 36}};
    for (const auto &[name, side] : drawn) {
        const QQuickItem *icon = glyph(name);
        QVERIFY2(!icon->property("isPicture").toBool(), qPrintable(name));
    }
    QVERIFY(s->switchTo(ThemeType::kawaiiPink, ColorScheme::light));
    for (const auto &[name, side] : drawn) {
        const QQuickItem *icon = glyph(name);
        QTRY_VERIFY2(icon->property("isPicture").toBool(), qPrintable(name));
        QCOMPARE(icon->width(), side);
    }
}

void NowPlayingLayoutTest::wideWindowPutsTheLyricsBesideTheCover()
{
    QVERIFY(showSong(200, {899, 700}));
    const QQuickItem *page = s->item(u"albumCoverPage"_s);
    QCOMPARE(page->width(), 899.0);
    QVERIFY(!s->item(u"sideLyrics"_s)->property("active").toBool());
    QVERIFY(s->item(u"miniLyricPlace"_s)->property("item").value<QQuickItem *>());
    s->resize({900, 700});
    QTRY_COMPARE(page->width(), 450.0);
    QVERIFY(s->item(u"sideLyrics"_s)->property("active").toBool());
    QCOMPARE(s->area(s->item(u"sideLyrics"_s)), QRectF(450, s->area(page).y(), 450, page->height()));
    // The line that is sung is not shown twice.
    QVERIFY(!s->item(u"miniLyricPlace"_s)->property("item").value<QQuickItem *>());
    // The cover has what the lines beneath it have given.
    QVERIFY(s->item(u"albumCoverPlace"_s)->height() > 250);
}

void NowPlayingLayoutTest::volumeStandsBesideTheControlsOfAWideWindow()
{
    QVERIFY(showSong());
    QVERIFY(!s->shows(u"nowPlayingVolume"_s));
    s->resize({1000, 700});
    QTRY_VERIFY(s->shows(u"nowPlayingVolume"_s));
    QQuickItem *slider = s->item(u"volumeSlider"_s);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(slider);
    QCOMPARE(accessible->text(QAccessible::Name), u"音量"_s);
    QCOMPARE(accessible->role(), QAccessible::Slider);
    QCOMPARE(slider->property("shown").toDouble(), 1.0);

    const QRectF area = s->area(slider);
    const QPoint place(qRound(area.left() + 0.25 * area.width()), qRound(area.center().y()));
    s->press(place);
    QVERIFY(qAbs(s->bench.player.volume() - 0.25F) < 0.01F);
    s->release(place);
    slider->forceActiveFocus(Qt::TabFocusReason);
    const float before = s->bench.player.volume();
    s->key(Qt::Key_Right);
    QVERIFY(qAbs(s->bench.player.volume() - before - 0.05F) < 0.001F);
    // The song stays where it was.
    QVERIFY(s->bench.stream().seeks.isEmpty());

    QWheelEvent wheel(place, s->window()->mapToGlobal(place), {}, {0, -240}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(s->window(), &wheel);
    QVERIFY(qAbs(s->bench.player.volume() - before + 0.05F) < 0.001F);

    const float audible = s->bench.player.volume();
    s->click(u"muteButton"_s);
    QCOMPARE(s->bench.player.volume(), 0.0F);
    QCOMPARE(s->text(u"muteButton"_s), u"取消静音"_s);
    s->click(u"muteButton"_s);
    QCOMPARE(s->bench.player.volume(), audible);
}

void NowPlayingLayoutTest::windowThatGrowsKeepsWhatIsReadOfTheQueue()
{
    QStringList ids;
    for (int i = 0; i < 200; ++i)
        ids.append(QString::number(i));
    s->bench.player.playSong(fileSong(u"0"_s), fileSongs(ids));
    QVERIFY(s->show());
    s->click(u"queueButton"_s);
    QTRY_VERIFY(s->shows(u"queuePageList"_s));
    QQuickItem *list = s->item(u"queuePageList"_s);
    QTRY_COMPARE(s->item(u"pageList"_s)->property("contentX").toReal(), 2 * s->root()->width());
    QVERIFY(QMetaObject::invokeMethod(list, "positionViewAtIndex", Q_ARG(int, 150), Q_ARG(int, 0)));
    const double read = list->property("contentY").toReal();
    QVERIFY(read > 1000);
    for (const QSize size : {QSize(1280, 844), QSize(390, 844)}) {
        s->resize(size);
        QTRY_COMPARE(s->item(u"pageList"_s)->property("contentX").toReal(), 2.0 * size.width());
        s->window()->grabWindow();
        QVERIFY(std::abs(list->property("contentY").toReal() - read) < 1);
    }
}

void NowPlayingLayoutTest::buttonsSayWhichPageIsShown()
{
    QVERIFY(showSong());
    const auto described = [this](const QString &button) {
        return QAccessible::queryAccessibleInterface(s->item(button))->text(QAccessible::Description);
    };
    QCOMPARE(described(u"lyricsButton"_s), QString());
    s->click(u"lyricsButton"_s);
    QTRY_COMPARE(described(u"lyricsButton"_s), u"当前页"_s);
    QCOMPARE(described(u"queueButton"_s), QString());
    s->click(u"queueButton"_s);
    QTRY_COMPARE(described(u"queueButton"_s), u"当前页"_s);
    QCOMPARE(described(u"lyricsButton"_s), QString());
}

void NowPlayingLayoutTest::pagesShowLyricsAndQueue()
{
    s->bench.playSong(NowPlayingScene::song(u"sung"_s, u"歌"_s, {}, u"[00:01.00]第一行\n[00:05.00]第二行"_s),
                      200);
    QVERIFY(s->show());
    QTRY_VERIFY(s->bench.lyrics.hasLyrics());
    s->bench.stream().tick(6);
    QTRY_COMPARE(s->text(u"miniLyric"_s), u"第二行"_s);
    QVERIFY(!s->shows(u"lyricsView"_s));
    s->click(u"lyricsButton"_s);
    QTRY_VERIFY(s->shows(u"lyricsView"_s));
    s->click(u"queueButton"_s);
    QTRY_VERIFY(s->shows(u"embeddedQueuePage"_s));
    QTRY_VERIFY(!s->shows(u"lyricsView"_s));
}

void NowPlayingLayoutTest::sheetsOpenAndClose()
{
    QVERIFY(showSong());
    const QList<std::pair<const char *, QString>> sheets{{"showSleepTimer", u"sleepTimerSheet"_s},
                                                         {"showMoreOptions", u"moreOptionsSheet"_s},
                                                         {"showLyricsOffset", u"lyricsOffsetSheet"_s},
                                                         {"showNowPlayingSettings", u"nowPlayingSettings"_s}};
    for (const auto &[property, name] : sheets) {
        QVERIFY(!s->root()->findChild<QObject *>(name));
        QVERIFY(s->bench.nowPlaying.setProperty(property, true));
        QTRY_VERIFY2(s->root()->findChild<QObject *>(name), property);
        QObject *sheet = s->root()->findChild<QObject *>(name);
        QTRY_VERIFY2(sheet->property("opened").toBool(), property);
        QVERIFY(QMetaObject::invokeMethod(sheet, "close"));
        QTRY_VERIFY2(!s->bench.nowPlaying.property(property).toBool(), property);
        QTRY_VERIFY2(!sheet->property("visible").toBool(), property);
    }
}

void NowPlayingLayoutTest::textsCanBeReadOnEveryBackground_data()
{
    QTest::addColumn<NowPlayingBackgroundStyle>("style");
    for (const NowPlayingBackgroundStyle style : allNowPlayingBackgroundStyles())
        QTest::addRow("%s", qPrintable(rawValue(style))) << style;
}

void NowPlayingLayoutTest::textsCanBeReadOnEveryBackground()
{
    QFETCH(NowPlayingBackgroundStyle, style);
    s->bench.desktop.setReducesMotion(true);
    s->bench.themeService.setSoundWaveRing(false);
    for (const QColor &cover : {QColor(Qt::white), QColor(Qt::black), QColor(Qt::yellow)}) {
        if (s->root())
            s->close();
        s->bench.playSong(NowPlayingScene::song(cover.name(), u"歌"_s, madePng(cover)), 200);
        QVERIFY(s->show());
        for (const ThemeType type : allThemeTypes()) {
            for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
                QVERIFY(s->switchTo(type, scheme));
                s->bench.themeService.setNowPlayingBackgroundStyle(style);
                const QQuickItem *title = s->item(u"nowPlayingTitle"_s);
                const QQuickItem *time = s->item(u"displayTime"_s);
                // What lies beside the two texts: their own place holds the letters.
                const auto ratio = [this](const QQuickItem *text, QPointF beside) {
                    const QImage picture = s->window()->grabWindow();
                    const QColor ground = picture.pixelColor((s->area(text).topLeft() + beside).toPoint());
                    return Contrast::ratio(text->property("color").value<QColor>(), ground);
                };
                const QByteArray look = (rawValue(type) + cover.name()).toUtf8();
                QTRY_VERIFY2(isBackdropSettled(), look.constData());
                QVERIFY2(ratio(title, {2, 4}) >= Contrast::legible, look.constData());
                QVERIFY2(ratio(time, {-6, 4}) >= Contrast::legible, look.constData());
            }
        }
    }
}

void NowPlayingLayoutTest::nothingOverlaps_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("textScale");
    QTest::addColumn<ThemeType>("type");
    for (const double scale : {1.0, 1.3}) {
        for (const QSize size : {QSize(320, 480), QSize(320, 568), QSize(390, 844), QSize(600, 480),
                                 QSize(899, 640), QSize(900, 640), QSize(1000, 480), QSize(1600, 900)})
            QTest::addRow("%dx%d %.1f", size.width(), size.height(), scale)
                << size << scale << ThemeType::classic;
        // Its pictures are larger than the symbols of the others.
        for (const QSize size : {QSize(320, 480), QSize(390, 844), QSize(900, 640)})
            QTest::addRow("pink %dx%d %.1f", size.width(), size.height(), scale)
                << size << scale << ThemeType::kawaiiPink;
    }
}

void NowPlayingLayoutTest::nothingOverlaps()
{
    QFETCH(QSize, size);
    QFETCH(double, textScale);
    QFETCH(ThemeType, type);
    QVERIFY(s->switchTo(type, ColorScheme::light));
    s->bench.desktop.setTextScale(textScale);
    s->bench.equalizer.setEnabled(true);
    s->bench.player.playSong(webSong(u"web"_s, 200), {});
    QVERIFY(s->show(size));
    QTRY_VERIFY(s->shows(u"needsReplay"_s));
    settle();
    QList<QPair<QString, QRectF>> seen;
    for (const auto &name : {u"nowPlayingClose"_s,     u"pageDots"_s,        u"sleepTimerButton"_s,
                             u"moreButton"_s,          u"albumCoverPlace"_s, u"nowPlayingTitle"_s,
                             u"nowPlayingArtist"_s,    u"qualityBadge"_s,    u"miniLyricPlace"_s,
                             u"progress_slider_web"_s, u"displayTime"_s,     u"duration"_s,
                             u"equalizerStatusText"_s, u"needsReplay"_s,     u"equalizerStatusButton"_s,
                             u"playModeButton"_s,      u"previousButton"_s,  u"playPauseButton"_s,
                             u"nextButton"_s,          u"favoriteButton"_s,  u"lyricsButton"_s,
                             u"queueButton"_s,         u"collapseButton"_s,  u"muteButton"_s,
                             u"volumeSlider"_s}) {
        const QQuickItem *item = s->item(name);
        if (size.width() < 900 && (name == u"muteButton"_s || name == u"volumeSlider"_s))
            continue;
        QVERIFY2(item && item->isVisible(), qPrintable(name));
        // Touch areas may meet by the width of a grid step; what is drawn in them does not.
        constexpr qreal slack = 4;
        const QRectF area = s->area(item).adjusted(slack, slack, -slack, -slack);
        QVERIFY2(QRectF(QPointF(), size).contains(area), qPrintable(name));
        for (const auto &[other, otherArea] : std::as_const(seen))
            QVERIFY2(!area.intersects(otherArea), qPrintable(name + u" and "_s + other));
        seen.append({name, area});
    }
    QVERIFY2(s->item(u"albumCoverPlace"_s)->height() >= 96,
             qPrintable(QString::number(s->item(u"albumCoverPlace"_s)->height())));
    const QQuickItem *cover = s->item(u"albumCoverPlace"_s);
    QCOMPARE(cover->width(), cover->height());
}

void NowPlayingLayoutTest::everyControlHasAName()
{
    QVERIFY(showSong());
    int controls = 0;
    const QList<QQuickItem *> items = s->visibleItems();
    for (QQuickItem *item : items) {
        if (!item->inherits("QQuickAbstractButton"))
            continue;
        ++controls;
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(item);
        QVERIFY2(accessible && !accessible->text(QAccessible::Name).isEmpty(),
                 qPrintable(item->objectName()));
    }
    QVERIFY(controls >= 15);
    QAccessibleInterface *slider = QAccessible::queryAccessibleInterface(s->slider());
    QCOMPARE(slider->text(QAccessible::Name), u"播放进度"_s);
    QCOMPARE(slider->role(), QAccessible::Slider);
}

void NowPlayingLayoutTest::stateGoesWithTheScreen()
{
    QVERIFY(showSong());
    s->click(u"queueButton"_s);
    QCOMPARE(s->bench.nowPlaying.currentPage(), int(NowPlayingViewModel::QueuePage));
    s->close();
    QCOMPARE(s->bench.nowPlaying.currentPage(), int(NowPlayingViewModel::CoverPage));
    QVERIFY(s->show());
    QCOMPARE(s->item(u"pageList"_s)->property("contentX").toReal(), 0.0);
    QVERIFY(s->shows(u"songInfoView"_s));
}

QTEST_MAIN(NowPlayingLayoutTest)
#include "tst_now_playing_layout.moc"
