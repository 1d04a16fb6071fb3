// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/MiniPlayerTest.h"

#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The fan about the disc, under a finger and kept open.
class MiniPlayerFanTest : public MiniPlayerTest
{
    Q_OBJECT
private Q_SLOTS:
    void aLongPressOpensTheFan();
    void theFanOpensTowardTheFreeSide_data();
    void theFanOpensTowardTheFreeSide();
    void inControlModeTheDiscStaysWhereItIs();
    void lessThanTwelvePointsSelectNothingAndReleasingDoesNothing();
    void moreThanTwentyPointsFromEveryButtonSelectNothing();
    void theChosenActionFollowsTheFinger();
    void aFingerMeansTheButtonThatIsSeenUnderIt_data();
    void aFingerMeansTheButtonThatIsSeenUnderIt();
    void aFanThatIsTakenAwayDoesNothing();
    void playPauseOfTheFan();
    void nextOfTheFan();
    void previousOfTheFan();
    void locateOfTheFanTellsTheSong();
    void locateTellsOfASongOnAServer();
    void locateWithAnOnlineSongDoesNothing();
    void favoriteOfTheFanTakesAndGivesBack();
    void favoriteOfAnOnlineSong();
    void withoutASongNothingHappens();

    void theRightButtonKeepsTheFanOpen();
    void keysOpenAndSteerTheFan_data();
    void keysOpenAndSteerTheFan();
    void arrowsStopAtTheEnds();
    void theFanLeadsToTheQueue_data();
    void theFanLeadsToTheQueue();
    void returnPerformsWhatIsHighlighted_data();
    void returnPerformsWhatIsHighlighted();
    void escapeClosesTheFanAndNothingElse();
    void keysThatMeanNothingAreLeftToOthers();
};

// MARK: fan under a finger

void MiniPlayerFanTest::aLongPressOpensTheFan()
{
    startAt(atRight);
    QSignalSpy opened(&mini(), &MiniPlayerViewModel::openRequested);
    mini().press(atRight);
    mini().move(atRight + QPointF(5, 5));
    mini().longPress();
    QVERIFY(mini().isControlMode());
    QVERIFY(!mini().isFanPinned());
    QVERIFY(!mini().isDragging());
    QCOMPARE(mini().dragStartPosition(), std::optional(atRight));
    mini().release(atRight);
    QVERIFY(!mini().isControlMode());
    QVERIFY(!mini().dragStartPosition());
    QCOMPARE(opened.size(), 0);
}

void MiniPlayerFanTest::theFanOpensTowardTheFreeSide_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<OverlaySide>("side");
    QTest::newRow("at the left edge") << atLeft << OverlaySide::right;
    QTest::newRow("at the right edge") << atRight << OverlaySide::left;
    QTest::newRow("left of the middle") << QPointF(190, 200) << OverlaySide::right;
    QTest::newRow("right of the middle") << QPointF(200, 200) << OverlaySide::left;
}

void MiniPlayerFanTest::theFanOpensTowardTheFreeSide()
{
    QFETCH(const QPointF, place);
    startAt(place);
    mini().press(place);
    mini().longPress();
    QTEST(mini().side(), "side");
}

void MiniPlayerFanTest::inControlModeTheDiscStaysWhereItIs()
{
    startAt(atRight);
    mini().press(atRight);
    mini().longPress();
    mini().move(atRight + QPointF(-100, 30));
    QVERIFY(!mini().isDragging());
    QCOMPARE(mini().effectivePosition(), atRight);
    mini().release(atRight + QPointF(-300, 300));
    QCOMPARE(mini().effectivePosition(), atRight);
    QVERIFY(!stored());
}

void MiniPlayerFanTest::lessThanTwelvePointsSelectNothingAndReleasingDoesNothing()
{
    startAt(atRight);
    const bool wasPlaying = b->player().isPlaying();
    const bool wasFavorite = mini().isCurrentSongFavorite();
    QSignalSpy located(&mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
    mini().press(atRight);
    mini().longPress();
    mini().move(atRight + QPointF(-11.9, 0));
    QVERIFY(!mini().activeAction());
    QCOMPARE(mini().activeLabel(), QString());
    mini().release(atRight + QPointF(-11.9, 0));
    QVERIFY(!mini().isControlMode());
    QCOMPARE(b->player().isPlaying(), wasPlaying);
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
    QCOMPARE(mini().isCurrentSongFavorite(), wasFavorite);
    QCOMPARE(located.size(), 0);
}

void MiniPlayerFanTest::moreThanTwentyPointsFromEveryButtonSelectNothing()
{
    startAt(atRight);
    const bool wasPlaying = b->player().isPlaying();
    for (const QPointF way : {QPointF(-71, 0), QPointF(-113, 0), QPointF(0, 92), QPointF(92, 0)}) {
        mini().press(atRight);
        mini().longPress();
        mini().move(atRight + way);
        QVERIFY(!mini().activeAction());
        mini().release(atRight + way);
        QVERIFY(!mini().isControlMode());
    }
    QCOMPARE(b->player().isPlaying(), wasPlaying);
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
}

void MiniPlayerFanTest::theChosenActionFollowsTheFinger()
{
    startAt(atLeft);
    QSignalSpy changes(&mini(), &MiniPlayerViewModel::activeActionChanged);
    mini().press(atLeft);
    mini().longPress();
    const QList<QPair<ControlAction, QString>> actions{{ControlAction::locate, u"定位"_s},
                                                       {ControlAction::previous, u"上一首"_s},
                                                       {ControlAction::playPause, u"播放/暂停"_s},
                                                       {ControlAction::next, u"下一首"_s},
                                                       {ControlAction::favorite, u"喜欢"_s}};
    for (int row = 0; row < actions.size(); ++row) {
        const auto &[action, label] = actions.at(row);
        mini().move(atLeft + b->wayTo(action));
        QCOMPARE(mini().activeAction(), std::optional(action));
        QCOMPARE(mini().activeLabel(), label);
        QCOMPARE(mini().activeOffset(), b->wayTo(action));
        for (int each = 0; each < actions.size(); ++each) {
            const QModelIndex index = mini().fan()->index(each);
            QCOMPARE(index.data(MiniPlayerFanModel::IsActiveRole).toBool(), each == row);
        }
    }
    QCOMPARE(changes.size(), 5);
    mini().move(atLeft + QPointF(2, 2));
    QVERIFY(!mini().activeAction());
    mini().cancel();
}

void MiniPlayerFanTest::aFingerMeansTheButtonThatIsSeenUnderIt_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<bool>("isShifted");
    QTest::newRow("at the top") << QPointF(349, 41) << true;
    QTest::newRow("at the top of the left side") << QPointF(41, 41) << true;
    QTest::newRow("in the middle") << QPointF(200, 400) << false;
    QTest::newRow("at the bottom") << QPointF(349, 754) << true;
}

void MiniPlayerFanTest::aFingerMeansTheButtonThatIsSeenUnderIt()
{
    QFETCH(const QPointF, place);
    startAt(place);
    mini().press(place);
    mini().longPress();
    QTEST(mini().fanShift() != 0, "isShifted");
    for (const ControlAction action :
         {ControlAction::locate, ControlAction::previous, ControlAction::playPause, ControlAction::next,
          ControlAction::favorite}) {
        mini().move(place + QPointF(0, mini().fanShift()) + b->wayTo(action));
        QCOMPARE(mini().activeAction(), std::optional(action));
    }
    // A finger that has hardly gone means nothing, wherever the fan has gone to.
    mini().move(place + QPointF(8, 8));
    QVERIFY(!mini().activeAction());
    mini().cancel();
}

void MiniPlayerFanTest::aFanThatIsTakenAwayDoesNothing()
{
    startAt(atLeft);
    mini().press(atLeft);
    mini().longPress();
    mini().move(atLeft + b->wayTo(ControlAction::next));
    mini().cancel();
    QVERIFY(!mini().isControlMode());
    QVERIFY(!mini().activeAction());
    mini().release(atLeft + b->wayTo(ControlAction::next));
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
}

void MiniPlayerFanTest::playPauseOfTheFan()
{
    startAt(atRight);
    const bool wasPlaying = b->player().isPlaying();
    b->holdAndSlide(b->wayTo(ControlAction::playPause));
    QCOMPARE(b->player().isPlaying(), !wasPlaying);
    b->holdAndSlide(b->wayTo(ControlAction::playPause));
    QCOMPARE(b->player().isPlaying(), wasPlaying);
    QVERIFY(!mini().isControlMode());
}

void MiniPlayerFanTest::nextOfTheFan()
{
    startAt(atRight);
    b->holdAndSlide(b->wayTo(ControlAction::next));
    QCOMPARE(songOf(b->player()).id(), u"c"_s);
}

void MiniPlayerFanTest::previousOfTheFan()
{
    startAt(atLeft);
    b->holdAndSlide(b->wayTo(ControlAction::previous));
    QCOMPARE(songOf(b->player()).id(), u"a"_s);
}

void MiniPlayerFanTest::locateOfTheFanTellsTheSong()
{
    startAt(atRight);
    QSignalSpy located(&mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
    b->holdAndSlide(b->wayTo(ControlAction::locate));
    QCOMPARE(located.size(), 1);
    QCOMPARE(located.at(0), (QVariantList{u"b"_s, false}));
}

void MiniPlayerFanTest::locateTellsOfASongOnAServer()
{
    startAt(atRight);
    QSignalSpy located(&mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
    b->player().playSong(serverSong(u"7"_s), {serverSong(u"7"_s)});
    b->holdAndSlide(b->wayTo(ControlAction::locate));
    QCOMPARE(located.value(0), (QVariantList{u"webdav_7"_s, true}));
}

void MiniPlayerFanTest::locateWithAnOnlineSongDoesNothing()
{
    startAt(atRight);
    QSignalSpy located(&mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
    b->player().playOnlineSong(onlineSong(u"1"_s), {});
    b->holdAndSlide(b->wayTo(ControlAction::locate));
    QCOMPARE(located.size(), 0);
}

void MiniPlayerFanTest::favoriteOfTheFanTakesAndGivesBack()
{
    startAt(atRight);
    QSignalSpy changes(&mini(), &MiniPlayerViewModel::isCurrentSongFavoriteChanged);
    const QModelIndex heart = mini().fan()->index(4);
    QCOMPARE(heart.data(MiniPlayerFanModel::SymbolRole).toString(), u"heart"_s);
    b->holdAndSlide(b->wayTo(ControlAction::favorite));
    QVERIFY(mini().isCurrentSongFavorite());
    QVERIFY(b->playlists().isFavorite(fileSong(u"b"_s)));
    QCOMPARE(heart.data(MiniPlayerFanModel::SymbolRole).toString(), u"heart.fill"_s);
    QCOMPARE(heart.data(MiniPlayerFanModel::LabelRole).toString(), u"取消喜欢"_s);
    b->player().next();
    QVERIFY(!mini().isCurrentSongFavorite());
    b->player().previous();
    QVERIFY(mini().isCurrentSongFavorite());
    b->holdAndSlide(b->wayTo(ControlAction::favorite));
    QVERIFY(!b->playlists().isFavorite(fileSong(u"b"_s)));
    QCOMPARE(heart.data(MiniPlayerFanModel::LabelRole).toString(), u"喜欢"_s);
    QCOMPARE(changes.size(), 4);
}

void MiniPlayerFanTest::favoriteOfAnOnlineSong()
{
    startAt(atRight);
    b->player().playOnlineSong(onlineSong(u"1"_s), {});
    b->holdAndSlide(b->wayTo(ControlAction::favorite));
    QVERIFY(b->playlists().isFavorite(onlineSong(u"1"_s)));
    QVERIFY(mini().isCurrentSongFavorite());
}

void MiniPlayerFanTest::withoutASongNothingHappens()
{
    b->startMiniPlayer();
    mini().layOut(390, 844, 0, 49);
    QSignalSpy located(&mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
    for (const ControlAction action : {ControlAction::playPause, ControlAction::next, ControlAction::previous,
                                       ControlAction::locate, ControlAction::favorite})
        mini().perform(action);
    QCOMPARE(located.size(), 0);
    QVERIFY(!b->viewModel().hasCurrentSong());
    QVERIFY(b->playlists().favoritesPlaylist()->songIds.isEmpty());
}

// MARK: fan that stays open

void MiniPlayerFanTest::theRightButtonKeepsTheFanOpen()
{
    startAt(atRight);
    QSignalSpy opened(&mini(), &MiniPlayerViewModel::openRequested);
    mini().toggleFan();
    QVERIFY(mini().isControlMode());
    QVERIFY(mini().isFanPinned());
    QVERIFY(!mini().activeAction());
    mini().highlight(3);
    QCOMPARE(mini().activeAction(), std::optional(ControlAction::next));
    mini().choose(3);
    QCOMPARE(songOf(b->player()).id(), u"c"_s);
    QVERIFY(!mini().isControlMode());
    QVERIFY(!mini().isFanPinned());

    // A tap on the disc closes it and opens nothing.
    mini().toggleFan();
    mini().press(atRight);
    mini().release(atRight);
    QVERIFY(!mini().isControlMode());
    QCOMPARE(opened.size(), 0);
    mini().toggleFan();
    mini().toggleFan();
    QVERIFY(!mini().isControlMode());
    // The right button is no way out of what the left one holds.
    mini().press(atRight);
    mini().toggleFan();
    QVERIFY(!mini().isControlMode());
}

void MiniPlayerFanTest::keysOpenAndSteerTheFan_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::newRow("fan to the left") << atRight;
    QTest::newRow("fan to the right") << atLeft;
}

void MiniPlayerFanTest::keysOpenAndSteerTheFan()
{
    QFETCH(const QPointF, place);
    startAt(place);
    QVERIFY(mini().pressKey(Qt::Key_F10, Qt::ShiftModifier, false));
    QVERIFY(mini().isFanPinned());
    QCOMPARE(mini().activeAction(), std::optional(ControlAction::playPause));
    // Downwards on the screen, whichever way the fan opens.
    double height = mini().activeOffset().y();
    for (int i = 0; i < 2; ++i) {
        QVERIFY(mini().pressKey(Qt::Key_Down, 0, i > 0));
        QVERIFY(mini().activeOffset().y() > height);
        height = mini().activeOffset().y();
    }
    for (int i = 0; i < 4; ++i) {
        QVERIFY(mini().pressKey(Qt::Key_Up, 0, false));
        QVERIFY(mini().activeOffset().y() < height);
        height = mini().activeOffset().y();
    }
    QVERIFY(mini().pressKey(Qt::Key_Menu, 0, false));
    QVERIFY(!mini().isControlMode());
}

void MiniPlayerFanTest::arrowsStopAtTheEnds()
{
    startAt(atLeft);
    mini().pressKey(Qt::Key_Menu, 0, false);
    for (int i = 0; i < 2; ++i)
        mini().pressKey(Qt::Key_Right, 0, false);
    QCOMPARE(mini().activeAction(), std::optional(ControlAction::favorite));
    // The way to the queue stands beneath the fan, and nothing beneath that.
    for (int i = 0; i < 3; ++i) {
        mini().pressKey(Qt::Key_Right, 0, false);
        QVERIFY(mini().isQueueChosen());
        QVERIFY(!mini().activeAction());
        QCOMPARE(mini().activeLabel(), QString());
    }
    mini().pressKey(Qt::Key_Up, 0, false);
    QCOMPARE(mini().activeAction(), std::optional(ControlAction::favorite));
    QVERIFY(!mini().isQueueChosen());
    mini().pressKey(Qt::Key_Home, 0, false);
    QCOMPARE(mini().activeAction(), std::optional(ControlAction::locate));
    mini().pressKey(Qt::Key_Left, 0, false);
    QCOMPARE(mini().activeAction(), std::optional(ControlAction::locate));
    mini().pressKey(Qt::Key_End, 0, false);
    QVERIFY(mini().isQueueChosen());
}

void MiniPlayerFanTest::theFanLeadsToTheQueue_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<int>("towards");
    QTest::newRow("beneath a fan to the left") << atRight << int(Qt::Key_End);
    QTest::newRow("beneath a fan to the right") << atLeft << int(Qt::Key_End);
    QTest::newRow("above a fan to the left") << QPointF(349, 754) << int(Qt::Key_Home);
    QTest::newRow("above a fan to the right") << QPointF(41, 754) << int(Qt::Key_Home);
}

void MiniPlayerFanTest::theFanLeadsToTheQueue()
{
    QFETCH(const QPointF, place);
    QFETCH(const int, towards);
    startAt(place);
    QSignalSpy wanted(&mini(), &MiniPlayerViewModel::queueRequested);
    // A finger that slides has five actions, and nothing else.
    mini().chooseQueue();
    mini().highlightQueue();
    QVERIFY(!mini().isQueueChosen());
    mini().pressKey(Qt::Key_Menu, 0, false);
    mini().pressKey(towards, 0, false);
    QVERIFY(mini().isQueueChosen());
    mini().pressKey(Qt::Key_Return, 0, true);
    QCOMPARE(wanted.size(), 0);
    mini().pressKey(Qt::Key_Return, 0, false);
    QCOMPARE(wanted.size(), 1);
    QVERIFY(!mini().isControlMode());
    QVERIFY(!mini().isQueueChosen());
    QCOMPARE(songOf(b->player()).id(), u"b"_s);

    mini().toggleFan();
    mini().highlightQueue();
    mini().highlight(1);
    QVERIFY(!mini().isQueueChosen());
    mini().highlightQueue();
    mini().cancel();
    QVERIFY(!mini().isQueueChosen());
    QCOMPARE(wanted.size(), 1);
}

void MiniPlayerFanTest::returnPerformsWhatIsHighlighted_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("Space") << int(Qt::Key_Space);
}

void MiniPlayerFanTest::returnPerformsWhatIsHighlighted()
{
    QFETCH(const int, key);
    startAt(atLeft);
    QSignalSpy opened(&mini(), &MiniPlayerViewModel::openRequested);
    mini().pressKey(Qt::Key_Menu, 0, false);
    mini().pressKey(Qt::Key_Down, 0, false);
    // Held down, it does so once.
    QVERIFY(mini().pressKey(key, 0, true));
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
    QVERIFY(mini().pressKey(key, 0, false));
    QCOMPARE(songOf(b->player()).id(), u"c"_s);
    QVERIFY(!mini().isControlMode());
    QCOMPARE(opened.size(), 0);
}

void MiniPlayerFanTest::escapeClosesTheFanAndNothingElse()
{
    startAt(atLeft);
    QVERIFY(!mini().pressKey(Qt::Key_Escape, 0, false));
    mini().pressKey(Qt::Key_Menu, 0, false);
    QVERIFY(mini().pressKey(Qt::Key_Escape, 0, false));
    QVERIFY(!mini().isControlMode());
    QVERIFY(!mini().pressKey(Qt::Key_Escape, 0, false));
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
}

void MiniPlayerFanTest::keysThatMeanNothingAreLeftToOthers()
{
    startAt(atLeft);
    QSignalSpy opened(&mini(), &MiniPlayerViewModel::openRequested);
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_A, Qt::Key_F10})
        QVERIFY(!mini().pressKey(key, 0, false));
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        opened.clear();
        QVERIFY(mini().pressKey(key, 0, false));
        QVERIFY(mini().pressKey(key, 0, true));
        QCOMPARE(opened.size(), 1);
    }
    mini().pressKey(Qt::Key_Menu, 0, false);
    for (const int key : {Qt::Key_A, Qt::Key_Tab})
        QVERIFY(!mini().pressKey(key, 0, false));
}

QTEST_GUILESS_MAIN(MiniPlayerFanTest)
#include "tst_mini_player_fan.moc"
