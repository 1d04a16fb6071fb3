// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/MiniPlayerBench.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr QPointF atRight(349, 400);
constexpr QPointF atLeft(41, 400);

using Bench = MiniPlayerBench;

} // namespace

class MiniPlayerViewModelTest : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Bench> b;

    MiniPlayerViewModel &mini() { return b->miniPlayer(); }
    /// Starts with the disc at that place of a phone, and song "b" of three under way.
    void startAt(const QPointF &place)
    {
        b.reset();
        b = std::make_unique<Bench>();
        b->startMiniPlayer();
        mini().layOut(390, 844, 0, 49);
        mini().updatePosition({}, place, {.width = 390, .height = 844}, false, false);
        b->player().playSong(fileSong(u"b"_s), fileSongs({u"a"_s, u"b"_s, u"c"_s}));
        b->answerDuration(100);
    }
    std::optional<QPointF> stored()
    {
        const auto x = b->home.preferences().doubleValue(u"miniPlayerPositionX"_s);
        const auto y = b->home.preferences().doubleValue(u"miniPlayerPositionY"_s);
        return x && y ? std::optional(QPointF(*x, *y)) : std::nullopt;
    }
    void store(const QPointF &place)
    {
        b->home.preferences().setDouble(u"miniPlayerPositionX"_s, place.x());
        b->home.preferences().setDouble(u"miniPlayerPositionY"_s, place.y());
    }

private Q_SLOTS:
    void init() { b = std::make_unique<Bench>(); }
    void cleanup() { b.reset(); }

    void withoutAStoredPositionItIsShownAllTheSame();
    void theStoredPositionIsLoadedByTheFirstLayout();
    void aPositionOfALargerWindowIsHeldWithinThisOne();
    void theDiscKeepsItsSideInAnotherWindow();
    void aSmallWindowMovesTheDiscForAWhileOnly();
    void aTabBarThatIsHigherLiftsTheDisc();
    void aPositionThatIsForgottenBringsTheStartBack();

    void aTapAsksForTheScreenThatPlays();
    void aFingerThatTremblesStillTaps();
    void aDragBeginsAfterEightPoints();
    void theDiscFollowsTheFinger();
    void aDragThatEnds59PointsFromTheLeftSnaps();
    void aDragThatEnds61PointsFromTheLeftStays();
    void dragsToBothEdges_data();
    void dragsToBothEdges();
    void whereTheDiscIsLeftIsThereAtTheNextStart();
    void onlyTheEndOfADragIsSeenAsAMovement();
    void aDragThatIsTakenAwayEndsWhereItIs();
    void aSongChangeInMidDragMovesNothing();
    void aSlowDragIsNoLongPress();
    void aFingerThatWasNotSetDownMeansNothing();

    void aLongPressOpensTheFan();
    void theFanOpensTowardTheFreeSide_data();
    void theFanOpensTowardTheFreeSide();
    void inControlModeTheDiscStaysWhereItIs();
    void lessThanTwelvePointsSelectNothingAndReleasingDoesNothing();
    void moreThanTwentyPointsFromEveryButtonSelectNothing();
    void theChosenActionFollowsTheFinger();
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
    void aPressBesideThePinnedFanClosesIt();
    void keysOpenAndSteerTheFan_data();
    void keysOpenAndSteerTheFan();
    void arrowsStopAtTheEnds();
    void returnPerformsWhatIsHighlighted_data();
    void returnPerformsWhatIsHighlighted();
    void escapeClosesTheFanAndNothingElse();
    void keysThatMeanNothingAreLeftToOthers();

    void itSpinsWhileTheSongPlays();
    void anotherSongBeginsTheSpinAnew();
    void aCoverThatArrivesBeginsTheSpinAnew();
    void theIdentityNamesTheSong();
    void theNameIsReadToListeners();
    void aSongWithoutACoverSaysSo();
    void aThousandSongChanges();
};

// MARK: place

void MiniPlayerViewModelTest::withoutAStoredPositionItIsShownAllTheSame()
{
    b->startMiniPlayer();
    QVERIFY(!mini().hasLoadedPosition());
    QVERIFY(!mini().position());
    QSignalSpy loaded(&mini(), &MiniPlayerViewModel::hasLoadedPositionChanged);
    // A view that has no size yet is no layout.
    mini().layOut(0, 0, 0, 49);
    QVERIFY(!mini().hasLoadedPosition());
    mini().layOut(390, 844, 0, 49);
    QVERIFY(mini().hasLoadedPosition());
    QCOMPARE(loaded.size(), 1);
    QCOMPARE(mini().effectivePosition(), QPointF(390 - 51, 844 - 49 - 51));
    QCOMPARE(mini().position(), std::optional(mini().effectivePosition()));
    // Nobody has moved it: nothing is stored, and in another window it starts anew.
    QVERIFY(!stored());
    mini().layOut(1000, 700, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(1000 - 51, 700 - 49 - 51));
}

void MiniPlayerViewModelTest::theStoredPositionIsLoadedByTheFirstLayout()
{
    store({200, 300});
    b->startMiniPlayer();
    QVERIFY(!mini().hasLoadedPosition());
    mini().layOut(390, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(200, 300));
    QVERIFY(!mini().animatesPosition());
}

void MiniPlayerViewModelTest::aPositionOfALargerWindowIsHeldWithinThisOne()
{
    store({900, 1200});
    b->startMiniPlayer();
    mini().layOut(390, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(349, 754));
    QCOMPARE(stored(), std::optional(QPointF(900, 1200)));
}

void MiniPlayerViewModelTest::theDiscKeepsItsSideInAnotherWindow()
{
    startAt(atRight);
    mini().layOut(1000, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(959, 400));
    mini().layOut(320, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(279, 400));

    startAt(atLeft);
    mini().layOut(1000, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), atLeft);
}

void MiniPlayerViewModelTest::aSmallWindowMovesTheDiscForAWhileOnly()
{
    startAt({200, 700});
    mini().layOut(390, 480, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(200, 390));
    mini().layOut(390, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(200, 700));
}

void MiniPlayerViewModelTest::aTabBarThatIsHigherLiftsTheDisc()
{
    startAt({200, 754});
    mini().layOut(390, 844, 0, 73);
    QCOMPARE(mini().effectivePosition(), QPointF(200, 730));
    // The bar counts as 49 at least.
    mini().layOut(390, 844, 0, 0);
    QCOMPARE(mini().effectivePosition(), QPointF(200, 754));
    mini().layOut(390, 844, 800, 49);
    QCOMPARE(mini().effectivePosition().y(), 841.0);
}

void MiniPlayerViewModelTest::aPositionThatIsForgottenBringsTheStartBack()
{
    startAt(atLeft);
    b->drag({100, 100});
    QVERIFY(stored());
    b->themeService->clearMiniPlayerPosition();
    QCOMPARE(mini().effectivePosition(), QPointF(390 - 51, 844 - 49 - 51));
}

// MARK: tap and drag

void MiniPlayerViewModelTest::aTapAsksForTheScreenThatPlays()
{
    startAt(atRight);
    QSignalSpy opened(&mini(), &MiniPlayerViewModel::openRequested);
    mini().press(atRight);
    QCOMPARE(opened.size(), 0);
    mini().release(atRight);
    QCOMPARE(opened.size(), 1);
    QCOMPARE(mini().effectivePosition(), atRight);
    QVERIFY(!stored());
}

void MiniPlayerViewModelTest::aFingerThatTremblesStillTaps()
{
    startAt(atRight);
    QSignalSpy opened(&mini(), &MiniPlayerViewModel::openRequested);
    b->drag({5, -6});
    QCOMPARE(opened.size(), 1);
    QCOMPARE(mini().effectivePosition(), atRight);
}

void MiniPlayerViewModelTest::aDragBeginsAfterEightPoints()
{
    startAt({200, 400});
    mini().press({200, 400});
    mini().move({207.9, 400});
    QVERIFY(!mini().isDragging());
    QVERIFY(!mini().dragStartPosition());
    mini().move({208, 400});
    QVERIFY(mini().isDragging());
    QCOMPARE(mini().dragStartPosition(), std::optional(QPointF(200, 400)));
    QCOMPARE(mini().effectivePosition(), QPointF(208, 400));
}

void MiniPlayerViewModelTest::theDiscFollowsTheFinger()
{
    startAt({200, 400});
    QSignalSpy opened(&mini(), &MiniPlayerViewModel::openRequested);
    // Taken a little beside its centre, it stays a little beside the finger.
    mini().press({210, 390});
    for (const QPointF finger : {QPointF(250, 390), QPointF(120, 500), QPointF(20, 830), QPointF(210, 390)}) {
        mini().move(finger);
        QCOMPARE(mini().effectivePosition(), finger + QPointF(-10, 10));
    }
    // Back at its start it has been dragged all the same.
    mini().release({210, 390});
    QCOMPARE(opened.size(), 0);
    QVERIFY(!mini().isDragging());
    QVERIFY(!mini().dragStartPosition());
}

void MiniPlayerViewModelTest::aDragThatEnds59PointsFromTheLeftSnaps()
{
    startAt({200, 400});
    b->drag({59 + 31 - 200.0, 50});
    QCOMPARE(mini().effectivePosition(), QPointF(41, 450));
    QCOMPARE(stored(), std::optional(QPointF(41, 450)));
}

void MiniPlayerViewModelTest::aDragThatEnds61PointsFromTheLeftStays()
{
    startAt({200, 400});
    b->drag({61 + 31 - 200.0, 50});
    QCOMPARE(mini().effectivePosition(), QPointF(92, 450));
    QCOMPARE(stored(), std::optional(QPointF(92, 450)));
}

void MiniPlayerViewModelTest::dragsToBothEdges_data()
{
    QTest::addColumn<QPointF>("way");
    QTest::addColumn<QPointF>("end");
    QTest::newRow("left") << QPointF(-190, 0) << QPointF(41, 400);
    QTest::newRow("right") << QPointF(190, 0) << QPointF(349, 400);
    QTest::newRow("upper left, out of the window") << QPointF(-900, -900) << QPointF(41, 41);
    QTest::newRow("lower right, out of the window") << QPointF(900, 900) << QPointF(349, 754);
    QTest::newRow("up") << QPointF(0, -340) << QPointF(200, 60);
}

void MiniPlayerViewModelTest::dragsToBothEdges()
{
    QFETCH(const QPointF, way);
    startAt({200, 400});
    b->drag(way);
    QTEST(mini().effectivePosition(), "end");
    QCOMPARE(stored(), std::optional(mini().effectivePosition()));
}

void MiniPlayerViewModelTest::whereTheDiscIsLeftIsThereAtTheNextStart()
{
    startAt({200, 400});
    b->drag({-190, 111});
    b->restartMiniPlayer();
    mini().layOut(390, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(41, 511));
}

void MiniPlayerViewModelTest::onlyTheEndOfADragIsSeenAsAMovement()
{
    startAt({200, 400});
    QList<bool> animated;
    connect(&mini(), &MiniPlayerViewModel::positionChanged, this,
            [&] { animated.append(mini().animatesPosition()); });
    b->drag({-150, 0});
    QCOMPARE(animated, (QList{false, false, true}));
    mini().layOut(320, 480, 0, 49);
    QCOMPARE(animated.last(), false);
}

void MiniPlayerViewModelTest::aDragThatIsTakenAwayEndsWhereItIs()
{
    startAt({200, 400});
    mini().press({200, 400});
    mini().move({60, 400});
    mini().cancel();
    QVERIFY(!mini().isDragging());
    QCOMPARE(mini().effectivePosition(), QPointF(41, 400));
    // What the finger does then is nobody's.
    mini().move({300, 300});
    mini().release({300, 300});
    QCOMPARE(mini().effectivePosition(), QPointF(41, 400));
}

void MiniPlayerViewModelTest::aSongChangeInMidDragMovesNothing()
{
    startAt({200, 400});
    mini().press({200, 400});
    mini().move({250, 450});
    b->player().next();
    QVERIFY(mini().isDragging());
    QCOMPARE(mini().effectivePosition(), QPointF(250, 450));
    mini().move({240, 440});
    mini().release({240, 440});
    QCOMPARE(mini().effectivePosition(), QPointF(240, 440));
}

void MiniPlayerViewModelTest::aSlowDragIsNoLongPress()
{
    startAt({200, 400});
    mini().press({200, 400});
    mini().move({220, 400});
    mini().longPress();
    QVERIFY(!mini().isControlMode());
    mini().move({260, 400});
    QCOMPARE(mini().effectivePosition(), QPointF(260, 400));
}

void MiniPlayerViewModelTest::aFingerThatWasNotSetDownMeansNothing()
{
    startAt({200, 400});
    QSignalSpy opened(&mini(), &MiniPlayerViewModel::openRequested);
    mini().longPress();
    mini().move({100, 100});
    mini().release({100, 100});
    mini().cancel();
    QVERIFY(!mini().isControlMode());
    QCOMPARE(opened.size(), 0);
    QCOMPARE(mini().effectivePosition(), QPointF(200, 400));
}

// MARK: fan under a finger

void MiniPlayerViewModelTest::aLongPressOpensTheFan()
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

void MiniPlayerViewModelTest::theFanOpensTowardTheFreeSide_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<OverlaySide>("side");
    QTest::newRow("at the left edge") << atLeft << OverlaySide::right;
    QTest::newRow("at the right edge") << atRight << OverlaySide::left;
    QTest::newRow("left of the middle") << QPointF(190, 200) << OverlaySide::right;
    QTest::newRow("right of the middle") << QPointF(200, 200) << OverlaySide::left;
}

void MiniPlayerViewModelTest::theFanOpensTowardTheFreeSide()
{
    QFETCH(const QPointF, place);
    startAt(place);
    mini().press(place);
    mini().longPress();
    QTEST(mini().side(), "side");
}

void MiniPlayerViewModelTest::inControlModeTheDiscStaysWhereItIs()
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

void MiniPlayerViewModelTest::lessThanTwelvePointsSelectNothingAndReleasingDoesNothing()
{
    startAt(atRight);
    const bool wasPlaying = b->player().isPlaying();
    mini().press(atRight);
    mini().longPress();
    mini().move(atRight + QPointF(-11.9, 0));
    QVERIFY(!mini().activeAction());
    QCOMPARE(mini().activeLabel(), QString());
    mini().release(atRight + QPointF(-11.9, 0));
    QVERIFY(!mini().isControlMode());
    QCOMPARE(b->player().isPlaying(), wasPlaying);
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
}

void MiniPlayerViewModelTest::moreThanTwentyPointsFromEveryButtonSelectNothing()
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

void MiniPlayerViewModelTest::theChosenActionFollowsTheFinger()
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

void MiniPlayerViewModelTest::aFanThatIsTakenAwayDoesNothing()
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

void MiniPlayerViewModelTest::playPauseOfTheFan()
{
    startAt(atRight);
    const bool wasPlaying = b->player().isPlaying();
    b->holdAndSlide(b->wayTo(ControlAction::playPause));
    QCOMPARE(b->player().isPlaying(), !wasPlaying);
    b->holdAndSlide(b->wayTo(ControlAction::playPause));
    QCOMPARE(b->player().isPlaying(), wasPlaying);
    QVERIFY(!mini().isControlMode());
}

void MiniPlayerViewModelTest::nextOfTheFan()
{
    startAt(atRight);
    b->holdAndSlide(b->wayTo(ControlAction::next));
    QCOMPARE(songOf(b->player()).id(), u"c"_s);
}

void MiniPlayerViewModelTest::previousOfTheFan()
{
    startAt(atLeft);
    b->holdAndSlide(b->wayTo(ControlAction::previous));
    QCOMPARE(songOf(b->player()).id(), u"a"_s);
}

void MiniPlayerViewModelTest::locateOfTheFanTellsTheSong()
{
    startAt(atRight);
    QSignalSpy located(&mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
    b->holdAndSlide(b->wayTo(ControlAction::locate));
    QCOMPARE(located.size(), 1);
    QCOMPARE(located.at(0), (QVariantList{u"b"_s, false}));
}

void MiniPlayerViewModelTest::locateTellsOfASongOnAServer()
{
    startAt(atRight);
    QSignalSpy located(&mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
    b->player().playSong(serverSong(u"7"_s), {serverSong(u"7"_s)});
    b->holdAndSlide(b->wayTo(ControlAction::locate));
    QCOMPARE(located.value(0), (QVariantList{u"webdav_7"_s, true}));
}

void MiniPlayerViewModelTest::locateWithAnOnlineSongDoesNothing()
{
    startAt(atRight);
    QSignalSpy located(&mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
    b->player().playOnlineSong(onlineSong(u"1"_s), {});
    b->holdAndSlide(b->wayTo(ControlAction::locate));
    QCOMPARE(located.size(), 0);
}

void MiniPlayerViewModelTest::favoriteOfTheFanTakesAndGivesBack()
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

void MiniPlayerViewModelTest::favoriteOfAnOnlineSong()
{
    startAt(atRight);
    b->player().playOnlineSong(onlineSong(u"1"_s), {});
    b->holdAndSlide(b->wayTo(ControlAction::favorite));
    QVERIFY(b->playlists().isFavorite(onlineSong(u"1"_s)));
    QVERIFY(mini().isCurrentSongFavorite());
}

void MiniPlayerViewModelTest::withoutASongNothingHappens()
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

void MiniPlayerViewModelTest::theRightButtonKeepsTheFanOpen()
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

void MiniPlayerViewModelTest::aPressBesideThePinnedFanClosesIt()
{
    startAt(atRight);
    mini().toggleFan();
    mini().pressElsewhere(atRight + b->wayTo(ControlAction::locate));
    mini().pressElsewhere(atRight);
    QVERIFY(mini().isControlMode());
    mini().pressElsewhere({60, 60});
    QVERIFY(!mini().isControlMode());
    // A fan under a finger is not to be closed by another finger.
    mini().press(atRight);
    mini().longPress();
    mini().pressElsewhere({60, 60});
    QVERIFY(mini().isControlMode());
    mini().cancel();
}

void MiniPlayerViewModelTest::keysOpenAndSteerTheFan_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::newRow("fan to the left") << atRight;
    QTest::newRow("fan to the right") << atLeft;
}

void MiniPlayerViewModelTest::keysOpenAndSteerTheFan()
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

void MiniPlayerViewModelTest::arrowsStopAtTheEnds()
{
    startAt(atLeft);
    mini().pressKey(Qt::Key_Menu, 0, false);
    for (int i = 0; i < 9; ++i)
        mini().pressKey(Qt::Key_Right, 0, false);
    QCOMPARE(mini().activeAction(), std::optional(ControlAction::favorite));
    mini().pressKey(Qt::Key_Home, 0, false);
    QCOMPARE(mini().activeAction(), std::optional(ControlAction::locate));
    mini().pressKey(Qt::Key_Left, 0, false);
    QCOMPARE(mini().activeAction(), std::optional(ControlAction::locate));
    mini().pressKey(Qt::Key_End, 0, false);
    QCOMPARE(mini().activeAction(), std::optional(ControlAction::favorite));
}

void MiniPlayerViewModelTest::returnPerformsWhatIsHighlighted_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("Space") << int(Qt::Key_Space);
}

void MiniPlayerViewModelTest::returnPerformsWhatIsHighlighted()
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

void MiniPlayerViewModelTest::escapeClosesTheFanAndNothingElse()
{
    startAt(atLeft);
    QVERIFY(!mini().pressKey(Qt::Key_Escape, 0, false));
    mini().pressKey(Qt::Key_Menu, 0, false);
    QVERIFY(mini().pressKey(Qt::Key_Escape, 0, false));
    QVERIFY(!mini().isControlMode());
    QVERIFY(!mini().pressKey(Qt::Key_Escape, 0, false));
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
}

void MiniPlayerViewModelTest::keysThatMeanNothingAreLeftToOthers()
{
    startAt(atLeft);
    QSignalSpy opened(&mini(), &MiniPlayerViewModel::openRequested);
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Space, Qt::Key_A, Qt::Key_F10})
        QVERIFY(!mini().pressKey(key, 0, false));
    QVERIFY(mini().pressKey(Qt::Key_Return, 0, false));
    QVERIFY(mini().pressKey(Qt::Key_Return, 0, true));
    QCOMPARE(opened.size(), 1);
    mini().pressKey(Qt::Key_Menu, 0, false);
    for (const int key : {Qt::Key_A, Qt::Key_Tab})
        QVERIFY(!mini().pressKey(key, 0, false));
}

// MARK: song

void MiniPlayerViewModelTest::itSpinsWhileTheSongPlays()
{
    startAt(atRight);
    QSignalSpy changes(&mini(), &MiniPlayerViewModel::isSpinningChanged);
    if (!b->player().isPlaying())
        b->player().play();
    QVERIFY(mini().isSpinning());
    b->player().pause();
    QVERIFY(!mini().isSpinning());
    QVERIFY(!changes.isEmpty());
}

void MiniPlayerViewModelTest::anotherSongBeginsTheSpinAnew()
{
    startAt(atRight);
    QSet<QUuid> keys{mini().spinKey()};
    b->player().next();
    keys.insert(mini().spinKey());
    b->player().playOnlineSong(onlineSong(u"1"_s), {});
    keys.insert(mini().spinKey());
    b->player().playOnlineSong(onlineSong(u"2"_s), {});
    keys.insert(mini().spinKey());
    QCOMPARE(keys.size(), 4);
    // The same song, paused and played on, turns on.
    const QUuid before = mini().spinKey();
    b->player().pause();
    b->player().play();
    QCOMPARE(mini().spinKey(), before);
}

void MiniPlayerViewModelTest::aCoverThatArrivesBeginsTheSpinAnew()
{
    startAt(atRight);
    const QUuid before = mini().spinKey();
    Song song = fileSong(u"b"_s);
    b->player().playSong(song, {});
    QCOMPARE(mini().spinKey(), before);
    song.setArtworkData(ArtworkData("a cover"));
    b->player().playSong(song, {});
    QVERIFY(mini().spinKey() != before);
}

void MiniPlayerViewModelTest::theIdentityNamesTheSong()
{
    b->startMiniPlayer();
    QCOMPARE(mini().viewIdentity(), u"mini_player_none"_s);
    b->player().playSong(fileSong(u"a"_s), {});
    QCOMPARE(mini().viewIdentity(), u"mini_player_a"_s);
    b->player().playOnlineSong(onlineSong(u"1"_s), {});
    QCOMPARE(mini().viewIdentity(), u"mini_player_1"_s);
}

void MiniPlayerViewModelTest::theNameIsReadToListeners()
{
    b->startMiniPlayer();
    QCOMPARE(mini().name(), u"迷你播放器"_s);
    QSignalSpy changes(&mini(), &MiniPlayerViewModel::songChanged);
    b->player().playSong(fileSong(u"a"_s), {});
    QCOMPARE(mini().name(), u"迷你播放器：Title a，Artist a"_s);
    Song nameless = fileSong(u"n"_s);
    nameless.setTitle({});
    nameless.setArtist({});
    b->player().playSong(nameless, {});
    QCOMPARE(mini().name(), u"迷你播放器：未知歌曲"_s);
    QVERIFY(changes.size() >= 2);
}

void MiniPlayerViewModelTest::aSongWithoutACoverSaysSo()
{
    startAt(atRight);
    QVERIFY(!mini().hasCover());
    Song song = fileSong(u"c"_s);
    song.setArtworkData(ArtworkData("a cover"));
    b->player().playSong(song, {});
    QVERIFY(mini().hasCover());
    const QString address = mini().coverSource();
    b->player().playSong(fileSong(u"d"_s), {});
    QVERIFY(!mini().hasCover());
    QVERIFY(mini().coverSource() != address);
}

void MiniPlayerViewModelTest::aThousandSongChanges()
{
    startAt(atRight);
    QSignalSpy spins(&mini(), &MiniPlayerViewModel::spinKeyChanged);
    for (int i = 0; i < 1000; ++i) {
        Song song = fileSong(QString::number(i));
        song.setArtworkData(ArtworkData(QByteArray::number(i)));
        b->player().playSong(song, {});
        QCOMPARE(mini().viewIdentity(), u"mini_player_%1"_s.arg(i));
    }
    QCOMPARE(spins.size(), 1000);
    QCOMPARE(mini().name(), u"迷你播放器：Title 999，Artist 999"_s);
}

QTEST_GUILESS_MAIN(MiniPlayerViewModelTest)
#include "tst_mini_player_view_model.moc"
