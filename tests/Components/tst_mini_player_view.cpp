// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/MiniPlayerScene.h"

#include <QSignalSpy>

namespace cadorel {

using namespace Qt::StringLiterals;

/// The floating disc, its fan, and what mouse, finger and keyboard do with them.
class MiniPlayerViewTest : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<MiniPlayerScene> s;

    QQuickWindow *window() { return s->scene->window(); }
    Pointer pointer()
    {
        QFETCH(const bool, finger);
        return {window(), finger};
    }
    static void addPointers()
    {
        QTest::addColumn<bool>("finger");
        QTest::newRow("mouse") << false;
        QTest::newRow("finger") << true;
    }
    double angle() const { return s->disc()->property("angle").toDouble(); }
    /// The disc turns, or does not.
    bool turns()
    {
        const double before = angle();
        constexpr int patience = 150;
        return QTest::qWaitFor([this, before] { return angle() != before; }, patience);
    }
    bool openFanByKey()
    {
        s->scene->key(Qt::Key_Menu);
        return QTest::qWaitFor(
            [this] { return s->button(4) && s->view()->property("openness").toReal() >= 1; });
    }

private Q_SLOTS:
    void init()
    {
        s = std::make_unique<MiniPlayerScene>();
        s->scene->warnings.take();
    }
    void cleanup()
    {
        const QStringList warnings = s->scene->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void theDiscIsWhereItsPlaceIs();
    void aTapOpensTheScreenThatPlays_data() { addPointers(); }
    void aTapOpensTheScreenThatPlays();
    void whatLiesBesideTheDiscIsReached_data() { addPointers(); }
    void whatLiesBesideTheDiscIsReached();
    void theCornersOfTheDiscAreNotTheDisc();
    void dragsToBothEdges_data() { addPointers(); }
    void dragsToBothEdges();
    void theDiscFollowsTheFingerAndGrows_data() { addPointers(); }
    void theDiscFollowsTheFingerAndGrows();
    void aDragLeftInTheMiddleStays();
    void holdAndSlideReachesEachAction_data();
    void holdAndSlideReachesEachAction();
    void theLabelNamesTheActionThatIsMeant();
    void aHoldWithoutASlideDoesNothing_data() { addPointers(); }
    void aHoldWithoutASlideDoesNothing();
    void theFanIsSeenWholeAtTheTopAndAtTheBottom();
    void aClosedFanTakesNothing();

    void theRightButtonOpensTheFanAndAClickChooses();
    void theMouseHighlightsWhatItIsOn();
    void aClickBesideThePinnedFanClosesItAndGoesThrough();

    void theKeyboardReachesEverything();
    void theKeyboardIsSeenOnTheDisc();
    void focusThatGoesElsewhereClosesTheFan();
    void aScreenReaderFindsDiscAndActions();

    void itTurnsOnlyWhileItPlaysAndIsSeen();
    void itRestsOnADesktopWithoutMotion();
    void anotherSongStartsUpright();
    void aSongWithoutACoverHasThePlaceholder();
    void aCoverThatDoesNotDecodeHasAPicture();
    void aThousandSongChangesLeaveNothingBehind();
    void aViewThatGoesInMidGestureLeavesNothingOpen();
    void eachLookDrawsIt_data() { addThemes(); }
    void eachLookDrawsIt();
};

void MiniPlayerViewTest::theDiscIsWhereItsPlaceIs()
{
    QVERIFY(!s->mini().hasLoadedPosition());
    QVERIFY(s->show());
    QVERIFY(s->mini().hasLoadedPosition());
    QVERIFY(s->isAt(QPointF(390 - 51, 700 - 49 - 51)));
    QCOMPARE(s->disc()->width(), 62.0);
    s->view()->setProperty("bottomInset", 73.0);
    QVERIFY(s->isAt(QPointF(390 - 51, 700 - 73 - 51)));
}

void MiniPlayerViewTest::aTapOpensTheScreenThatPlays()
{
    QVERIFY(s->show());
    Pointer by = pointer();
    by.press(s->shownAt());
    QCOMPARE(s->timesOpened(), 0);
    by.release(s->shownAt());
    QTRY_COMPARE(s->timesOpened(), 1);
    QCOMPARE(s->clicksBeneath(), 0);
}

void MiniPlayerViewTest::whatLiesBesideTheDiscIsReached()
{
    QVERIFY(s->show());
    Pointer by = pointer();
    for (const QPointF place : {QPointF(20, 20), QPointF(195, 350), s->shownAt() - QPointF(40, 0)}) {
        by.press(place);
        by.release(place);
    }
    QTRY_COMPARE(s->clicksBeneath(), 3);
    QCOMPARE(s->timesOpened(), 0);
    QVERIFY(!s->mini().isControlMode());
}

void MiniPlayerViewTest::theCornersOfTheDiscAreNotTheDisc()
{
    QVERIFY(s->show());
    const QPoint corner = (s->shownAt() + QPointF(28, 28)).toPoint();
    QTest::mouseClick(window(), Qt::LeftButton, {}, corner);
    QCOMPARE(s->clicksBeneath(), 1);
    QCOMPARE(s->timesOpened(), 0);
}

void MiniPlayerViewTest::dragsToBothEdges()
{
    QVERIFY(s->show());
    Pointer by = pointer();
    const double y = s->shownAt().y();
    by.drag(s->shownAt(), {70, y - 200});
    QCOMPARE(s->mini().effectivePosition(), QPointF(41, y - 200));
    QTRY_VERIFY(s->isAt({41, y - 200}));
    by.drag(s->shownAt(), {330, y - 100});
    QTRY_VERIFY(s->isAt({349, y - 100}));
    QCOMPARE(s->bench.home.preferences().doubleValue(u"miniPlayerPositionX"_s), std::optional(349.0));
    QCOMPARE(s->timesOpened() + s->clicksBeneath(), 0);
}

void MiniPlayerViewTest::theDiscFollowsTheFingerAndGrows()
{
    QVERIFY(s->show());
    s->put({195, 350});
    Pointer by = pointer();
    by.press({200, 345});
    by.move({205, 345});
    QVERIFY(s->isAt({195, 350}));
    // Moves of a finger are delivered with the next frame.
    by.move({240, 305});
    QTRY_VERIFY(s->isAt({235, 310}));
    by.move({300, 300});
    QTRY_VERIFY(s->isAt({295, 305}));
    QTRY_COMPARE(s->disc()->scale(), 1.1);
    by.release({300, 300});
    QTRY_COMPARE(s->disc()->scale(), 1.0);
}

void MiniPlayerViewTest::aDragLeftInTheMiddleStays()
{
    QVERIFY(s->show());
    Pointer(window(), false).drag(s->shownAt(), {180, 300});
    QTRY_VERIFY(s->isAt({180, 300}));
}

void MiniPlayerViewTest::holdAndSlideReachesEachAction_data()
{
    QTest::addColumn<bool>("finger");
    QTest::addColumn<bool>("atRight");
    QTest::addColumn<ControlAction>("action");
    const QList<QPair<QByteArray, ControlAction>> actions{{"locate", ControlAction::locate},
                                                          {"previous", ControlAction::previous},
                                                          {"playPause", ControlAction::playPause},
                                                          {"next", ControlAction::next},
                                                          {"favorite", ControlAction::favorite}};
    for (const auto &[name, action] : actions) {
        QTest::newRow("mouse, at the right, " + name) << false << true << action;
        QTest::newRow("finger, at the left, " + name) << true << false << action;
    }
}

void MiniPlayerViewTest::holdAndSlideReachesEachAction()
{
    QFETCH(const bool, atRight);
    QFETCH(const ControlAction, action);
    QVERIFY(s->show());
    const QPointF place(atRight ? 349 : 41, 350);
    s->put(place);
    QSignalSpy located(&s->mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
    const bool wasPlaying = s->bench.player().isPlaying();
    Pointer by = pointer();
    by.press(place);
    QTRY_VERIFY(s->mini().isControlMode());
    by.move(place + s->bench.wayTo(action) / 2);
    by.move(place + s->bench.wayTo(action));
    QTRY_COMPARE(s->mini().activeAction(), std::optional(action));
    by.release(place + s->bench.wayTo(action));
    QVERIFY(!s->mini().isControlMode());
    QCOMPARE(s->bench.player().isPlaying() != wasPlaying, action == ControlAction::playPause);
    QCOMPARE(songOf(s->bench.player()).id(), action == ControlAction::next       ? u"c"_s
                                             : action == ControlAction::previous ? u"a"_s
                                                                                 : u"b"_s);
    QCOMPARE(located.size(), action == ControlAction::locate ? 1 : 0);
    QCOMPARE(s->mini().isCurrentSongFavorite(), action == ControlAction::favorite);
    QCOMPARE(s->timesOpened() + s->clicksBeneath(), 0);
    // It goes away, and takes nothing with it.
    QTRY_VERIFY(!s->button(0));
    QVERIFY(s->isAt(place));
}

void MiniPlayerViewTest::theLabelNamesTheActionThatIsMeant()
{
    QVERIFY(s->show());
    s->put({349, 350});
    Pointer by(window(), false);
    by.press({349, 350});
    QTRY_VERIFY(s->mini().isControlMode());
    QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
    QQuickItem *label = s->scene->item(u"fanLabel"_s);
    QVERIFY(!label->isVisible());
    for (int row = 0; row < 5; ++row) {
        by.move(QPointF(349, 350) +
                s->mini().fan()->index(row).data(MiniPlayerFanModel::OffsetRole).toPointF());
        QVERIFY(label->isVisible());
        QCOMPARE(s->scene->item(u"fanLabelText"_s)->property("text"),
                 s->mini().fan()->index(row).data(MiniPlayerFanModel::LabelRole));
        // Beside its button, and in the window.
        const QRectF area = label->mapRectToScene(label->boundingRect());
        QVERIFY(QRectF(QPointF(), MiniPlayerScene::phone).contains(area));
        QVERIFY(area.right() < s->shownAt().x());
    }
    by.release({349, 350});
    QTRY_VERIFY(!s->scene->item(u"fanLabel"_s));
}

void MiniPlayerViewTest::aHoldWithoutASlideDoesNothing()
{
    QVERIFY(s->show());
    const bool wasPlaying = s->bench.player().isPlaying();
    const QPointF place = s->shownAt();
    Pointer by = pointer();
    by.press(place);
    QTRY_VERIFY(s->mini().isControlMode());
    by.move(place + QPointF(6, 6));
    by.release(place + QPointF(6, 6));
    QVERIFY(!s->mini().isControlMode());
    QCOMPARE(s->timesOpened() + s->clicksBeneath(), 0);
    QCOMPARE(s->bench.player().isPlaying(), wasPlaying);
    QCOMPARE(songOf(s->bench.player()).id(), u"b"_s);
}

void MiniPlayerViewTest::theFanIsSeenWholeAtTheTopAndAtTheBottom()
{
    QVERIFY(s->show());
    for (const double y : {41.0, 610.0}) {
        s->put({349, y});
        s->mini().toggleFan();
        QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
        QTRY_COMPARE(s->view()->property("shift").toReal(), s->mini().fanShift());
        for (int row = 0; row < 5; ++row) {
            const QQuickItem *button = s->button(row);
            QVERIFY(QRectF(QPointF(), MiniPlayerScene::phone)
                        .contains(button->mapRectToScene(button->boundingRect())));
        }
        s->mini().resetControlMode();
        QTRY_VERIFY(s->isAt({349, y}));
    }
}

void MiniPlayerViewTest::aClosedFanTakesNothing()
{
    QVERIFY(s->show());
    s->put({349, 350});
    s->mini().toggleFan();
    QTRY_VERIFY(s->button(2));
    s->mini().resetControlMode();
    QTRY_VERIFY(!s->button(2));
    QTest::mouseClick(window(), Qt::LeftButton, {}, QPoint(349 - 92, 350));
    QCOMPARE(s->clicksBeneath(), 1);
}

// MARK: fan that stays open

void MiniPlayerViewTest::theRightButtonOpensTheFanAndAClickChooses()
{
    QVERIFY(s->show());
    s->put({349, 350});
    QTest::mouseClick(window(), Qt::RightButton, {}, s->shownAt().toPoint());
    QVERIFY(s->mini().isFanPinned());
    QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
    s->scene->click(s->button(3));
    QCOMPARE(songOf(s->bench.player()).id(), u"c"_s);
    QVERIFY(!s->mini().isControlMode());
    QCOMPARE(s->timesOpened() + s->clicksBeneath(), 0);

    QTest::mouseClick(window(), Qt::RightButton, {}, s->shownAt().toPoint());
    QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
    s->scene->tap(s->button(1));
    QTRY_COMPARE(songOf(s->bench.player()).id(), u"b"_s);
    QTRY_VERIFY(!s->button(1));

    QTest::mouseClick(window(), Qt::RightButton, {}, s->shownAt().toPoint());
    QTRY_VERIFY(s->mini().isFanPinned());
    QTest::mouseClick(window(), Qt::LeftButton, {}, s->shownAt().toPoint());
    QVERIFY(!s->mini().isControlMode());
    QCOMPARE(s->timesOpened(), 0);
}

void MiniPlayerViewTest::theMouseHighlightsWhatItIsOn()
{
    QVERIFY(s->show());
    s->put({349, 350});
    QTest::mouseClick(window(), Qt::RightButton, {}, s->shownAt().toPoint());
    QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
    for (const int row : {4, 2, 0}) {
        QTest::mouseMove(window(), ThemedScene::centre(s->button(row)));
        QTRY_COMPARE(s->mini().fan()->rowOf(s->mini().activeAction()), row);
        QTRY_VERIFY(s->scene->item(u"fanLabel"_s)->isVisible());
    }
    s->mini().cancel();
}

void MiniPlayerViewTest::aClickBesideThePinnedFanClosesItAndGoesThrough()
{
    QVERIFY(s->show());
    s->put({349, 350});
    QTest::mouseClick(window(), Qt::RightButton, {}, s->shownAt().toPoint());
    QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
    QTest::mouseClick(window(), Qt::LeftButton, {}, QPoint(60, 60));
    QVERIFY(!s->mini().isControlMode());
    QCOMPARE(s->clicksBeneath(), 1);
    QCOMPARE(s->timesOpened(), 0);
}

// MARK: keyboard and screen reader

void MiniPlayerViewTest::theKeyboardReachesEverything()
{
    QVERIFY(s->show());
    s->put({41, 350});
    QVERIFY(s->disc()->hasActiveFocus());
    s->scene->holdKey(Qt::Key_Return);
    QCOMPARE(s->timesOpened(), 1);

    // From top to bottom: locate, previous, play or pause, next, favourite.
    QSignalSpy located(&s->mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
    const auto choose = [this](int steps) {
        if (!openFanByKey())
            return false;
        for (int i = 0; i < qAbs(steps); ++i)
            s->scene->key(steps < 0 ? Qt::Key_Up : Qt::Key_Down);
        s->scene->key(Qt::Key_Return);
        return QTest::qWaitFor([this] { return !s->button(0); });
    };
    const bool wasPlaying = s->bench.player().isPlaying();
    QVERIFY(choose(0));
    QCOMPARE(s->bench.player().isPlaying(), !wasPlaying);
    QVERIFY(choose(1));
    QCOMPARE(songOf(s->bench.player()).id(), u"c"_s);
    QVERIFY(choose(-1));
    QCOMPARE(songOf(s->bench.player()).id(), u"b"_s);
    QVERIFY(choose(2));
    QVERIFY(s->mini().isCurrentSongFavorite());
    QVERIFY(choose(-2));
    QCOMPARE(located.size(), 1);
    QVERIFY(s->disc()->hasActiveFocus());
    QCOMPARE(s->timesOpened(), 1);

    QTest::keyClick(window(), Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(s->mini().isFanPinned());
    s->scene->key(Qt::Key_Escape);
    QVERIFY(!s->mini().isControlMode());
    QVERIFY(s->disc()->hasActiveFocus());
}

void MiniPlayerViewTest::theKeyboardIsSeenOnTheDisc()
{
    QVERIFY(s->show());
    QQuickItem *ring = s->scene->item(u"discFocusRing"_s);
    s->scene->click(s->disc());
    QVERIFY(!ring->isVisible());
    s->scene->root()->childItems().at(1)->forceActiveFocus();
    s->disc()->forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(ring->isVisible());
    // The one that the keys speak to is the button that is meant.
    QVERIFY(openFanByKey());
    QVERIFY(s->button(2)->hasActiveFocus());
    s->scene->key(Qt::Key_Down);
    QTRY_COMPARE(s->button(3)->hasActiveFocus() || s->button(1)->hasActiveFocus(), true);
    s->scene->key(Qt::Key_Escape);
    QVERIFY(ring->isVisible());
}

void MiniPlayerViewTest::focusThatGoesElsewhereClosesTheFan()
{
    QVERIFY(s->show());
    QVERIFY(openFanByKey());
    s->scene->root()->childItems().at(1)->forceActiveFocus();
    QVERIFY(!s->view()->hasActiveFocus());
    QVERIFY(!s->mini().isControlMode());
    QTRY_VERIFY(!s->button(0));
    QVERIFY(!s->view()->hasActiveFocus());
}

void MiniPlayerViewTest::aScreenReaderFindsDiscAndActions()
{
    QVERIFY(s->show());
    QCOMPARE(ThemedScene::accessibleName(s->disc()), u"迷你播放器：Title b，Artist b"_s);
    QAccessibleInterface *disc = ThemedScene::accessible(s->disc());
    QCOMPARE(disc->role(), QAccessible::Button);
    QVERIFY(disc->text(QAccessible::Description).contains(u"播放操作"_s));
    disc->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(s->timesOpened(), 1);
    QVERIFY(disc->actionInterface()->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    disc->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(s->mini().isFanPinned());
    QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
    QStringList names;
    for (int row = 0; row < 5; ++row)
        names.append(ThemedScene::accessibleName(s->button(row)));
    QCOMPARE(names, (QStringList{u"定位"_s, u"上一首"_s, u"播放/暂停"_s, u"下一首"_s, u"喜欢"_s}));
    ThemedScene::accessible(s->button(4))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(s->mini().isCurrentSongFavorite());
    QVERIFY(!s->mini().isControlMode());
}

// MARK: spin and cover

void MiniPlayerViewTest::itTurnsOnlyWhileItPlaysAndIsSeen()
{
    QVERIFY(s->show());
    s->bench.player().play();
    QVERIFY(s->mini().isSpinning());
    QTRY_VERIFY(turns());
    s->bench.player().pause();
    QVERIFY(!turns());
    const double rested = angle();
    s->bench.player().play();
    QTRY_VERIFY(turns());
    // It goes on from where it rested.
    QVERIFY(angle() > rested);
    s->view()->setProperty("isCovered", true);
    QVERIFY(!turns());
    s->view()->setProperty("isCovered", false);
    QTRY_VERIFY(turns());
    s->view()->setVisible(false);
    QVERIFY(!turns());
    s->view()->setVisible(true);
    QTRY_VERIFY(turns());
}

void MiniPlayerViewTest::itRestsOnADesktopWithoutMotion()
{
    s->bench.desktop.setReducesMotion(true);
    QVERIFY(s->show());
    s->bench.player().play();
    QVERIFY(s->mini().isSpinning());
    QVERIFY(!turns());
    // A drop takes no time either.
    Pointer(window(), false).drag(s->shownAt(), {70, 300});
    QVERIFY(s->isAt({41, 300}));
    s->bench.desktop.setReducesMotion(false);
    QTRY_VERIFY(turns());
}

void MiniPlayerViewTest::anotherSongStartsUpright()
{
    QVERIFY(s->show());
    s->bench.player().play();
    QTRY_VERIFY(angle() > 2);
    s->bench.player().pause();
    s->bench.player().playSong(fileSong(u"c"_s), {});
    s->bench.player().pause();
    QVERIFY(angle() < 2);
}

void MiniPlayerViewTest::aSongWithoutACoverHasThePlaceholder()
{
    QVERIFY(s->show());
    const QQuickItem *picture = s->scene->item(u"picture"_s);
    const QList<QQuickItem *> pictures = s->scene->items(u"picture"_s);
    const auto cover = std::ranges::find_if(
        pictures, [](const QQuickItem *each) { return each->parentItem()->objectName() == u"cover"_s; });
    QVERIFY(picture && cover != pictures.end());
    constexpr int ready = 1;
    QTRY_COMPARE((*cover)->property("status").toInt(), ready);
    QQuickItem *note = s->scene->item(u"placeholderNote"_s);
    QVERIFY(!note->isVisible());
    s->bench.player().playSong(fileSong(u"a"_s), {});
    QVERIFY(note->isVisible());
    QCOMPARE((*cover)->property("source").toString(), QString());
}

void MiniPlayerViewTest::aCoverThatDoesNotDecodeHasAPicture()
{
    QVERIFY(s->show());
    Song song = fileSong(u"x"_s);
    song.setArtworkData(ArtworkData("no picture at all"));
    s->bench.player().playSong(song, {});
    QVERIFY(s->mini().hasCover());
    // The placeholder lies beneath, so that nothing shines through.
    QVERIFY(s->scene->item(u"placeholder"_s)->isVisible());
    QVERIFY(!s->scene->grab().isNull());
}

void MiniPlayerViewTest::aThousandSongChangesLeaveNothingBehind()
{
    QVERIFY(s->show());
    const auto objects = [this] { return s->scene->root()->findChildren<QObject *>().size(); };
    const qsizetype before = objects();
    const Song covered = MiniPlayerScene::songWithCover(u"covered"_s);
    for (int i = 0; i < 1000; ++i) {
        Song song = fileSong(QString::number(i));
        if (i % 3 == 0)
            song.setArtworkData(covered.artworkData());
        s->bench.player().playSong(song, {});
        if (i % 100 == 0)
            QCoreApplication::processEvents();
    }
    s->bench.player().playSong(MiniPlayerScene::songWithCover(u"last"_s), {});
    QCOMPARE(s->disc()->property("coverSource").toString(), s->mini().coverSource());
    QCOMPARE(ThemedScene::accessibleName(s->disc()), u"迷你播放器：Title last，Artist last"_s);
    QCOMPARE(objects(), before);
}

void MiniPlayerViewTest::aViewThatGoesInMidGestureLeavesNothingOpen()
{
    QVERIFY(s->show());
    s->put({195, 350});
    Pointer by(window(), false);
    by.press({195, 350});
    QTRY_VERIFY(s->mini().isControlMode());
    s->view()->setVisible(false);
    QVERIFY(!s->mini().isControlMode());
    by.release({195, 350});
    QCOMPARE(s->timesOpened(), 0);
    s->view()->setVisible(true);
    by.press({195, 350});
    by.move({120, 300});
    QVERIFY(s->mini().isDragging());
    delete s->view();
    QVERIFY(!s->mini().isDragging());
    QCOMPARE(s->mini().effectivePosition(), QPointF(120, 300));
}

void MiniPlayerViewTest::eachLookDrawsIt()
{
    QFETCH(const ThemeType, type);
    QFETCH(const ColorScheme, scheme);
    QVERIFY(s->show(type, scheme));
    s->put({349, 350});
    s->scene->key(Qt::Key_Menu);
    QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
    const QImage open = s->scene->grab();
    s->scene->key(Qt::Key_Escape);
    QTRY_VERIFY(!s->button(0));
    const QImage closed = s->scene->grab();
    const auto differing = [&open, &closed](const QRect &area) {
        int count = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                count += open.pixel(x, y) != closed.pixel(x, y) ? 1 : 0;
        }
        return count;
    };
    // Where a button stood there is the ground again.
    for (int row = 0; row < 5; ++row) {
        const QPointF offset = s->mini().fan()->index(row).data(MiniPlayerFanModel::OffsetRole).toPointF();
        const QPoint centre = (QPointF(349, 350) + offset).toPoint();
        QVERIFY(differing(QRect(centre - QPoint(23, 23), QSize(46, 46))) > 100);
    }
    QCOMPARE(differing(QRect(0, 0, 100, 700)), 0);
    // The disc is no part of the ground.
    QVERIFY(closed.pixelColor(349, 350) != closed.pixelColor(195, 350));
}

} // namespace cadorel

QTEST_MAIN(cadorel::MiniPlayerViewTest)
#include "tst_mini_player_view.moc"
