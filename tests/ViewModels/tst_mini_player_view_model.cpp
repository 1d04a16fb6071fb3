// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/MiniPlayerTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Where the disc is, where a finger takes it, and what it tells of the song.
class MiniPlayerViewModelTest : public MiniPlayerTest
{
    Q_OBJECT
private Q_SLOTS:
    void withoutAStoredPositionItIsShownAllTheSame();
    void theStoredPositionIsLoadedByTheFirstLayout();
    void aPositionOfALargerWindowIsHeldWithinThisOne();
    void theDiscKeepsItsSideInAnotherWindow();
    void aSmallWindowMovesTheDiscForAWhileOnly();
    void aNarrowWindowMovesTheDiscForAWhileOnly();
    void theDiscIsAtItsSideInAWiderWindowAtTheNextStart();
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
    void aDiscThatIsCaughtInFlightStaysInTheHand();
    void aDragThatIsTakenAwayEndsWhereItIs();
    void aSongChangeInMidDragMovesNothing();
    void aSlowDragIsNoLongPress();
    void aFingerThatWasNotSetDownMeansNothing();

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

void MiniPlayerViewModelTest::aNarrowWindowMovesTheDiscForAWhileOnly()
{
    startAt({250, 400});
    // There it would lie over the right edge's zone.
    mini().layOut(320, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(279, 400));
    mini().layOut(390, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(250, 400));
    // A window that is shown in its plain size before it is maximised tells both.
    store({250, 400});
    b->restartMiniPlayer();
    mini().layOut(320, 844, 0, 49);
    mini().layOut(1000, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(250, 400));
}

void MiniPlayerViewModelTest::theDiscIsAtItsSideInAWiderWindowAtTheNextStart()
{
    startAt({200, 400});
    b->drag({190, 0});
    QCOMPARE(stored(), std::optional(QPointF(349, 400)));
    mini().layOut(1000, 844, 0, 49);
    b->restartMiniPlayer();
    mini().layOut(1000, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(959, 400));
    // Also in one that is maximised only after it has had its plain size, and then on a larger desktop.
    b->restartMiniPlayer();
    mini().layOut(390, 844, 0, 49);
    mini().layOut(1000, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(959, 400));
    mini().layOut(1000, 844, 0, 49, true);
    mini().layOut(1400, 844, 0, 49, true);
    QCOMPARE(mini().effectivePosition(), QPointF(1359, 400));
    b->restartMiniPlayer();
    QCOMPARE(stored(), std::optional(QPointF(1359, 400)));
    // A plain one that comes by that width is on its way.
    store({959, 400});
    b->restartMiniPlayer();
    for (const double width : {390.0, 1000.0, 1400.0})
        mini().layOut(width, 844, 0, 49);
    QCOMPARE(mini().effectivePosition(), QPointF(959, 400));
    // What was not moved is not stored.
    startAt({200, 400});
    mini().layOut(1000, 844, 0, 49);
    b->restartMiniPlayer();
    QVERIFY(!stored());
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

void MiniPlayerViewModelTest::aDiscThatIsCaughtInFlightStaysInTheHand()
{
    startAt({200, 400});
    b->drag({-130, 0});
    QCOMPARE(mini().effectivePosition(), QPointF(41, 400));
    // On its way to the edge it is seen at 60, and taken a little beside its centre.
    mini().press({65, 400}, {60, 400});
    mini().move({85, 400});
    QCOMPARE(mini().dragStartPosition(), std::optional(QPointF(60, 400)));
    QCOMPARE(mini().effectivePosition(), QPointF(80, 400));
    mini().release({205, 400});
    QCOMPARE(mini().effectivePosition(), QPointF(200, 400));
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
