// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/PlaylistService.h"
#include "ViewModels/NowPlayingViewModel.h"
#include "ViewModels/ScreenModels.h"
#include "Views/RootScreenTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Where the Tab key comes to, and where the keyboard goes when that goes away.
class TabWalkTest : public RootScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void everyStopIsSeenAndNamed_data();
    void everyStopIsSeenAndNamed();
    void everyListIsReachedAndSteered_data();
    void everyListIsReachedAndSteered();
    void aListIsEnteredWhereItIsRead();
    void spaceInTheQueuesSheetPlaysAndPauses();
    void aBannerThatGoesPassesTheKeyboardOn_data();
    void aBannerThatGoesPassesTheKeyboardOn();
    void theQueuesButtonThatGoesKeepsNoKey();
    void theVolumeThatGoesKeepsNoKey();
    void aBannerThatGoesAmongPagesPassesTheKeyboardOn();
    void aCoverThatGoesLeavesTheKeyboardOnWhatIsThere();

private:
    static constexpr int farthest = 80;

    /// Shows what that place lies on, over a song that plays.
    void showPlace(const QString &place)
    {
        t->addServer(u"NAS"_s);
        t->addServer(u"书房"_s);
        t->playlistService->createPlaylist(u"路上"_s, {}, PlaylistType::local);
        QVERIFY(showLibrary(6));
        QVERIFY(playRow(2));
        QTRY_VERIFY(t->audioPlayer->isPlaying());
        const QStringList tabs{u"songList"_s, u"playlistList"_s, u"serverList"_s, u"searchView"_s,
                               u"settingsFormScroller"_s};
        if (tabs.contains(place))
            QTest::keyClick(t->window, static_cast<Qt::Key>(Qt::Key_1 + tabs.indexOf(place)),
                            Qt::ControlModifier);
        else if (place == u"queueViewList"_s)
            QTest::keyClick(t->window, Qt::Key_U, Qt::ControlModifier);
        else
            showPage(place);
        QTRY_VERIFY2(t->shows(place), qPrintable(place));
    }
    void showPage(const QString &place)
    {
        QVERIFY(openNowPlaying());
        const int page = place.startsWith(u"queue"_s)   ? NowPlayingViewModel::QueuePage
                         : place.startsWith(u"lyric"_s) ? NowPlayingViewModel::LyricsPage
                                                        : NowPlayingViewModel::CoverPage;
        t->screens->nowPlaying()->setCurrentPage(page);
    }
    /// Presses Tab until the keyboard is in that item. @return whether it came there
    bool walkInto(const QString &name)
    {
        for (int i = 0; i < farthest; ++i) {
            QTest::keyClick(t->window, Qt::Key_Tab);
            if (isIn(name))
                return true;
        }
        return false;
    }
    bool isIn(const QString &name) const
    {
        const QQuickItem *place = t->item(name);
        const QQuickItem *held = t->window->activeFocusItem();
        return place && held && (place == held || place->isAncestorOf(held));
    }
    /// The stops from the present one on, until it is come to again.
    QList<QQuickItem *> stops(Qt::Key key)
    {
        QList<QQuickItem *> found;
        for (int i = 0; i < farthest; ++i) {
            QTest::keyClick(t->window, key);
            QQuickItem *held = t->window->activeFocusItem();
            if (found.contains(held))
                break;
            found.append(held);
        }
        return found;
    }
    static QString nameOf(QQuickItem *item)
    {
        QAccessibleInterface *told = QAccessible::queryAccessibleInterface(item);
        return told ? told->text(QAccessible::Name) : QString();
    }
    void fail()
    {
        t->player->lastItem()->fail(u"文件坏了"_s);
        QTRY_VERIFY(t->shows(u"playErrorBanner"_s));
    }
};

void TabWalkTest::everyStopIsSeenAndNamed_data()
{
    QTest::addColumn<QString>("place");
    for (const auto &place :
         {u"songList"_s, u"playlistList"_s, u"serverList"_s, u"searchView"_s, u"settingsFormScroller"_s,
          u"albumCoverView"_s, u"lyricsView"_s, u"queuePageList"_s, u"queueViewList"_s})
        QTest::newRow(qPrintable(place)) << place;
}

void TabWalkTest::everyStopIsSeenAndNamed()
{
    QFETCH(QString, place);
    showPlace(place);
    QTest::keyClick(t->window, Qt::Key_Tab);
    const QList<QQuickItem *> forward = stops(Qt::Key_Tab);
    QVERIFY(forward.size() > 1);
    QVERIFY(forward.size() < farthest);
    for (QQuickItem *stop : forward) {
        QVERIFY(stop);
        const QByteArray told =
            (QString::fromLatin1(stop->metaObject()->className()) + u' ' + stop->objectName()).toUtf8();
        QVERIFY2(stop->isVisible() && stop->isEnabled() && stop->width() > 0, told);
        QVERIFY2(!nameOf(stop).isEmpty(), told);
    }
    // Backwards it comes to the same ones.
    const QList<QQuickItem *> back = stops(Qt::Key_Backtab);
    QCOMPARE(QSet<QQuickItem *>(back.begin(), back.end()),
             QSet<QQuickItem *>(forward.begin(), forward.end()));
}

void TabWalkTest::everyListIsReachedAndSteered_data()
{
    QTest::addColumn<QString>("list");
    for (const auto &list :
         {u"songList"_s, u"playlistList"_s, u"serverList"_s, u"queuePageList"_s, u"queueViewList"_s})
        QTest::newRow(qPrintable(list)) << list;
}

void TabWalkTest::everyListIsReachedAndSteered()
{
    QFETCH(QString, list);
    showPlace(list);
    QVERIFY(walkInto(list));
    const QQuickItem *held = t->window->activeFocusItem();
    // The row says that it has the keyboard.
    QVERIFY(held->property("showsFocus").toBool());
    const int row = t->item(list)->property("currentIndex").toInt();
    QVERIFY(row >= 0);
    QTest::keyClick(t->window, Qt::Key_Down);
    QCOMPARE(t->item(list)->property("currentIndex").toInt(), row + 1);
    // It is left, and entered again where it was.
    const int last = t->item(list)->property("currentIndex").toInt();
    QTest::keyClick(t->window, Qt::Key_Backtab);
    QVERIFY(!isIn(list));
    QTest::keyClick(t->window, Qt::Key_Tab);
    QVERIFY(isIn(list));
    QCOMPARE(t->item(list)->property("currentIndex").toInt(), last);
    if (list == u"songList"_s || list.startsWith(u"queue"_s)) {
        const QString title = t->window->activeFocusItem()->property("title").toString();
        QVERIFY(!title.isEmpty());
        QTest::keyClick(t->window, Qt::Key_Return);
        QCOMPARE(currentTitle(), title);
    }
}

void TabWalkTest::aListIsEnteredWhereItIsRead()
{
    QVERIFY(showLibrary(60));
    QQuickItem *list = t->item(u"songList"_s);
    QVERIFY(QMetaObject::invokeMethod(list, "positionViewAtIndex", Q_ARG(int, 30), Q_ARG(int, 0)));
    QVERIFY(walkInto(u"songList"_s));
    QVERIFY(qAbs(list->property("currentIndex").toInt() - 30) <= 1);
}

void TabWalkTest::spaceInTheQueuesSheetPlaysAndPauses()
{
    showPlace(u"queueViewList"_s);
    QVERIFY(walkInto(u"queueViewList"_s));
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Space);
    QVERIFY(!t->audioPlayer->isPlaying());
    QCOMPARE(currentTitle(), u"歌 2"_s);
    QTest::keyClick(t->window, Qt::Key_Space);
    QTRY_VERIFY(t->audioPlayer->isPlaying());
}

void TabWalkTest::aBannerThatGoesPassesTheKeyboardOn_data()
{
    QTest::addColumn<QString>("banner");
    QTest::addColumn<bool>("overTheCover");
    QTest::newRow("error") << u"playErrorBanner"_s << false;
    QTest::newRow("error over the cover") << u"playErrorBanner"_s << true;
    QTest::newRow("device") << u"deviceBanner"_s << false;
    QTest::newRow("device over the cover") << u"deviceBanner"_s << true;
}

void TabWalkTest::aBannerThatGoesPassesTheKeyboardOn()
{
    QFETCH(QString, banner);
    QFETCH(bool, overTheCover);
    showPlace(overTheCover ? u"albumCoverView"_s : u"songList"_s);
    if (!overTheCover)
        QVERIFY(walkInto(u"songList"_s));
    if (banner == u"deviceBanner"_s)
        contentView()->findChild<QQuickItem *>(banner)->setProperty("text", u"设备不见了"_s);
    else
        fail();
    QTRY_VERIFY(t->shows(banner));
    QVERIFY(walkInto(banner));
    if (banner == u"deviceBanner"_s)
        contentView()->findChild<QQuickItem *>(banner)->setProperty("text", QString());
    else
        QTest::keyClick(t->window, Qt::Key_Space);
    QVERIFY(!t->shows(banner));
    QVERIFY(t->window->activeFocusItem()->isVisible());
    QVERIFY(isIn(overTheCover ? u"nowPlayingCover"_s : u"songList"_s));
    QVERIFY(playRow(1));
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    QTest::keyClick(t->window, Qt::Key_Space);
    QVERIFY(!t->audioPlayer->isPlaying());
    if (overTheCover) {
        QTest::keyClick(t->window, Qt::Key_PageDown);
        QCOMPARE(t->screens->nowPlaying()->currentPage(), int(NowPlayingViewModel::LyricsPage));
        return;
    }
    const int row = t->item(u"songList"_s)->property("currentIndex").toInt();
    QTest::keyClick(t->window, Qt::Key_Down);
    QCOMPARE(t->item(u"songList"_s)->property("currentIndex").toInt(), row + 1);
    // The next one does not take it.
    fail();
    QVERIFY(isIn(u"songList"_s));
}

void TabWalkTest::theQueuesButtonThatGoesKeepsNoKey()
{
    showPlace(u"queuePageList"_s);
    QVERIFY(walkInto(u"clearQueueButton"_s));
    QTest::keyClick(t->window, Qt::Key_Space);
    QTRY_VERIFY(!t->shows(u"clearQueueButton"_s));
    QVERIFY(t->audioPlayer->queue().isEmpty());
    QVERIFY(t->audioPlayer->isPlaying());
    QTest::keyClick(t->window, Qt::Key_Space);
    QVERIFY(!t->audioPlayer->isPlaying());
    QTest::keyClick(t->window, Qt::Key_PageUp);
    QCOMPARE(t->screens->nowPlaying()->currentPage(), int(NowPlayingViewModel::LyricsPage));
    // Nor does it take the keyboard when it is there again.
    QVERIFY(playRow(1));
    QTRY_VERIFY(!t->audioPlayer->queue().isEmpty());
    QVERIFY(!isIn(u"clearQueueButton"_s));
}

void TabWalkTest::theVolumeThatGoesKeepsNoKey()
{
    showPlace(u"albumCoverView"_s);
    t->window->resize(1000, 700);
    QTRY_VERIFY(t->shows(u"nowPlayingVolume"_s));
    QVERIFY(walkInto(u"volumeSlider"_s));
    t->player->tick(50);
    t->player->seeks.clear();
    t->window->resize(390, 844);
    QTRY_VERIFY(!t->shows(u"nowPlayingVolume"_s));
    const float volume = t->audioPlayer->volume();
    QTest::keyClick(t->window, Qt::Key_Left);
    QCOMPARE(t->audioPlayer->volume(), volume);
    QCOMPARE(t->player->seeks.size(), 1);
}

void TabWalkTest::aBannerThatGoesAmongPagesPassesTheKeyboardOn()
{
    showPlace(u"songList"_s);
    t->library->importUrls({QUrl::fromLocalFile(t->home.filePath(u"nichts.mp3"_s))});
    QTRY_VERIFY(t->shows(u"importBanner"_s));
    QVERIFY(walkInto(u"importBanner"_s));
    QTest::keyClick(t->window, Qt::Key_Space);
    QTRY_VERIFY(!t->shows(u"importBanner"_s));
    QVERIFY(isIn(u"songList"_s));
    QTest::keyClick(t->window, Qt::Key_Space);
    QVERIFY(!t->audioPlayer->isPlaying());
}

void TabWalkTest::aCoverThatGoesLeavesTheKeyboardOnWhatIsThere()
{
    showPlace(u"songList"_s);
    fail();
    QVERIFY(walkInto(u"playErrorBanner"_s));
    QVERIFY(openNowPlaying());
    t->playback->dismissPlayError();
    QVERIFY(playRow(1));
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    QTRY_VERIFY(!t->shows(u"playErrorBanner"_s));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QVERIFY(t->window->activeFocusItem()->isVisible());
    QVERIFY(isIn(u"tabView"_s));
    QTest::keyClick(t->window, Qt::Key_Space);
    QVERIFY(!t->audioPlayer->isPlaying());
}

QTEST_MAIN(TabWalkTest)
#include "tst_tab_walk.moc"
