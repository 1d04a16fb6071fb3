// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/PlaybackViewModel.h"
#include "ViewModels/SongListModel.h"
#include "Views/ScreenTest.h"

#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

class PlayerBarTest : public ScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void buttonsSteerThePlayer();
    void spacePlaysUnlessAButtonHasTheFocus();
    void modeButtonIsNamedByItsMode();
    void timesAndSliderFollowThePlayer();
    void dragSeeksOnceWhenLetGo();
    void arrowKeysSeek();
    void volumeSliderAndMute();
    void narrowWindowOpensTheVolume();
    void playErrorIsShownAndDismissed();
    void nothingOverlaps_data();
    void nothingOverlaps();
    void nothingIsDrawnWhileNothingChanges();

private:
    QPoint onSlider(const QString &name, double fraction) const
    {
        const QQuickItem *slider = t->item(name);
        const auto *handle = slider->property("handle").value<QQuickItem *>();
        const qreal room = slider->width() - handle->width();
        return slider->mapToScene(QPointF(handle->width() / 2 + fraction * room, slider->height() / 2))
            .toPoint();
    }
};

void PlayerBarTest::buttonsSteerThePlayer()
{
    showLibrary();
    playRow(2);
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    QCOMPARE(t->item(u"playPauseButton"_s)->property("text").toString(), u"暂停"_s);
    t->click(u"playPauseButton"_s);
    QTRY_VERIFY(!t->audioPlayer->isPlaying());
    QCOMPARE(t->item(u"playPauseButton"_s)->property("text").toString(), u"播放"_s);
    t->click(u"nextButton"_s);
    QCOMPARE(currentTitle(), u"歌 3"_s);
    QCOMPARE(t->item(u"currentTitle"_s)->property("text").toString(), u"歌 3"_s);
    t->click(u"previousButton"_s);
    QCOMPARE(currentTitle(), u"歌 2"_s);

    QTest::keyClick(t->window, Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(currentTitle(), u"歌 3"_s);
    QTest::keyClick(t->window, Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(currentTitle(), u"歌 2"_s);
}

void PlayerBarTest::spacePlaysUnlessAButtonHasTheFocus()
{
    showLibrary();
    playRow(0);
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    QTest::keyClick(t->window, Qt::Key_Space);
    QTRY_VERIFY(!t->audioPlayer->isPlaying());
    // A click leaves the keyboard with the list.
    t->click(u"nextButton"_s);
    t->player->lastItem()->becomeReady();
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    QTest::keyClick(t->window, Qt::Key_Space);
    QTRY_VERIFY(!t->audioPlayer->isPlaying());
    QCOMPARE(currentTitle(), u"歌 1"_s);

    t->item(u"nextButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Space);
    QCOMPARE(currentTitle(), u"歌 2"_s);
    QTest::keyClick(t->window, Qt::Key_Return);
    QCOMPARE(currentTitle(), u"歌 3"_s);
}

void PlayerBarTest::modeButtonIsNamedByItsMode()
{
    showLibrary();
    playRow(0);
    QQuickItem *button = t->item(u"playModeButton"_s);
    QTRY_VERIFY(button->isVisible());
    for (int i = 0; i < 4; ++i) {
        const QString before = button->property("text").toString();
        QCOMPARE(before, t->audioPlayer->playModeLabel());
        QCOMPARE(button->property("symbol").toString(), t->audioPlayer->playModeSymbol());
        t->click(button);
        QVERIFY(button->property("text").toString() != before);
    }
}

void PlayerBarTest::timesAndSliderFollowThePlayer()
{
    showLibrary();
    playRow(0);
    t->player->tick(50);
    QCOMPARE(t->item(u"currentTimeText"_s)->property("text").toString(), u"0:50"_s);
    QCOMPARE(t->item(u"durationText"_s)->property("text").toString(), u"3:20"_s);
    QCOMPARE(t->item(u"seekSlider"_s)->property("value").toReal(), 0.25);
}

void PlayerBarTest::dragSeeksOnceWhenLetGo()
{
    showLibrary();
    playRow(0);
    t->player->tick(50);
    QQuickItem *slider = t->item(u"seekSlider"_s);
    QTRY_VERIFY(slider->isVisible() && slider->isEnabled());
    t->player->seeks.clear();
    QTest::mousePress(t->window, Qt::LeftButton, {}, onSlider(u"seekSlider"_s, 0.25));
    for (const double fraction : {0.3, 0.5, 0.7, 0.75}) {
        QTest::mouseMove(t->window, onSlider(u"seekSlider"_s, fraction));
        // The song plays on under the finger, and the handle stays there.
        t->player->tick(51 + fraction);
        QVERIFY(qAbs(slider->property("value").toReal() - fraction) < 0.02);
    }
    QCOMPARE(t->item(u"currentTimeText"_s)->property("text").toString().left(2), u"2:"_s);
    QCOMPARE(t->player->seeks.size(), 0);
    QTest::mouseRelease(t->window, Qt::LeftButton, {}, onSlider(u"seekSlider"_s, 0.75));
    QCOMPARE(t->player->seeks.size(), 1);
    QVERIFY(qAbs(t->player->seeks.at(0).time - 150) < 4);
    t->player->finishSeek();
    t->player->tick(151);
    QCOMPARE(t->item(u"currentTimeText"_s)->property("text").toString(), u"2:31"_s);

    // A click on the track seeks as well, once.
    QTest::mouseClick(t->window, Qt::LeftButton, {}, onSlider(u"seekSlider"_s, 0.1));
    QCOMPARE(t->player->seeks.size(), 1);
    QVERIFY(qAbs(t->player->seeks.at(0).time - 20) < 4);
}

void PlayerBarTest::arrowKeysSeek()
{
    showLibrary();
    playRow(0);
    t->player->tick(50);
    t->player->seeks.clear();
    t->item(u"seekSlider"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Right);
    QCOMPARE(t->player->seeks.size(), 1);
    QVERIFY(qAbs(t->player->seeks.at(0).time - 55) < 0.6);
}

void PlayerBarTest::volumeSliderAndMute()
{
    showLibrary();
    t->window->resize(900, 640);
    playRow(0);
    QTRY_VERIFY(t->shows(u"volumeSlider"_s));
    QTest::mouseClick(t->window, Qt::LeftButton, {}, onSlider(u"volumeSlider"_s, 0.5));
    QTRY_VERIFY(qAbs(t->audioPlayer->volume() - 0.5F) < 0.05F);
    const float before = t->audioPlayer->volume();
    t->click(u"muteButton"_s);
    QCOMPARE(t->audioPlayer->volume(), 0.0F);
    QCOMPARE(t->item(u"muteButton"_s)->property("symbol").toString(), u"speaker.slash.fill"_s);
    t->click(u"muteButton"_s);
    QCOMPARE(t->audioPlayer->volume(), before);
}

void PlayerBarTest::narrowWindowOpensTheVolume()
{
    showLibrary();
    playRow(0);
    QTRY_VERIFY(t->shows(u"volumeButton"_s));
    t->click(u"volumeButton"_s);
    QObject *popup = t->object(u"volumePopup"_s);
    QTRY_VERIFY(popup->property("opened").toBool());
    t->click(u"muteButton"_s);
    QCOMPARE(t->audioPlayer->volume(), 0.0F);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!popup->property("visible").toBool());
}

void PlayerBarTest::playErrorIsShownAndDismissed()
{
    showLibrary();
    playRow(0);
    t->player->lastItem()->fail(u"文件坏了"_s);
    QTRY_VERIFY(t->shows(u"playErrorBanner"_s));
    QQuickItem *banner = t->item(u"playErrorBanner"_s);
    QCOMPARE(banner->property("text").toString(), t->audioPlayer->playErrorText());
    t->click(banner->findChild<QQuickItem *>(u"dismissButton"_s));
    QTRY_VERIFY(!t->shows(u"playErrorBanner"_s));
    QVERIFY(!t->audioPlayer->playError());
}

void PlayerBarTest::nothingOverlaps_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("smallest") << QSize(320, 480);
    QTest::newRow("phone") << QSize(390, 844);
    QTest::newRow("just narrow") << QSize(699, 600);
    QTest::newRow("just wide") << QSize(700, 600);
    QTest::newRow("desktop") << QSize(1600, 900);
}

void PlayerBarTest::nothingOverlaps()
{
    QFETCH(QSize, size);
    showLibrary();
    playRow(0);
    t->window->resize(size);
    QTRY_COMPARE(t->window->contentItem()->size().toSize(), size);
    const QQuickItem *bar = t->item(u"playerBar"_s);
    const QQuickItem *tabs = t->item(u"tabBar"_s);
    QTRY_VERIFY(qAbs(tabs->mapToScene(QPointF(0, tabs->height())).y() - size.height()) < 1);
    QTRY_VERIFY(qAbs(bar->mapToScene(QPointF(0, bar->height())).y() - tabs->mapToScene(QPointF()).y()) < 1);

    QList<QPair<QString, QRectF>> seen;
    for (const auto &name : {u"nowPlayingLabel"_s, u"previousButton"_s, u"playPauseButton"_s, u"nextButton"_s,
                             u"playModeButton"_s, u"volumeButton"_s, u"muteButton"_s, u"volumeSlider"_s,
                             u"currentTimeText"_s, u"seekSlider"_s, u"durationText"_s}) {
        const QQuickItem *item = t->item(name);
        if (!item || !item->isVisible())
            continue;
        // Touch areas may meet by the width of a grid step; what is drawn in them does not.
        constexpr qreal slack = 5;
        const QRectF area = item->mapRectToScene(item->boundingRect()).adjusted(slack, slack, -slack, -slack);
        QVERIFY2(QRectF(QPointF(), size).contains(area), qPrintable(name));
        for (const auto &[other, otherArea] : std::as_const(seen))
            QVERIFY2(!area.intersects(otherArea), qPrintable(name + u" and "_s + other));
        seen.append({name, area});
    }
    QVERIFY(seen.size() >= 9);
}

void PlayerBarTest::nothingIsDrawnWhileNothingChanges()
{
    showLibrary();
    playRow(0);
    t->player->tick(50.0);
    QSignalSpy frames(t->window, &QQuickWindow::frameSwapped);
    constexpr int quietMilliseconds = 200;
    const auto isDrawn = [&frames] {
        frames.clear();
        return QTest::qWaitFor([&frames] { return !frames.isEmpty(); }, quietMilliseconds);
    };
    // Covers come in; then the picture stands.
    QTRY_VERIFY_WITH_TIMEOUT(!isDrawn(), 10'000);

    t->player->tick(100);
    QVERIFY(isDrawn());
    QTRY_VERIFY(!isDrawn());
    // Less than a pixel of the slider, and the same second.
    t->player->tick(100.01);
    QVERIFY(!isDrawn());
    QVERIFY(t->playback->sliderPosition() > 0.4);
}

QTEST_MAIN(PlayerBarTest)
#include "tst_player_bar.moc"
