// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/MiniPlayerSceneTest.h"

namespace cadorel {

using namespace Qt::StringLiterals;

/// The fan about the disc, and what mouse, finger, keyboard and screen reader do with it.
class MiniPlayerFanViewTest : public MiniPlayerSceneTest
{
    Q_OBJECT
private:
    bool openFanByKey()
    {
        s->scene->key(Qt::Key_Menu);
        return QTest::qWaitFor(
            [this] { return s->button(4) && s->view()->property("openness").toReal() >= 1; });
    }

private Q_SLOTS:
    void holdAndSlideReachesEachAction_data();
    void holdAndSlideReachesEachAction();
    void theLabelNamesTheActionThatIsMeant();
    void aHoldWithoutASlideDoesNothing_data() { addPointers(); }
    void aHoldWithoutASlideDoesNothing();
    void theFanIsSeenWholeAtTheTopAndAtTheBottom();
    void aFingerChoosesTheButtonUnderItAtTheTopAndAtTheBottom_data() { addPointers(); }
    void aFingerChoosesTheButtonUnderItAtTheTopAndAtTheBottom();
    void aClosedFanTakesNothing();

    void theRightButtonOpensTheFanAndAClickChooses();
    void theMouseHighlightsWhatItIsOn();
    void theFanLeadsToTheQueue();
    void aClickBesideThePinnedFanClosesItAndDoesNothingElse();

    void theKeyboardReachesEverything();
    void theKeyboardIsSeenOnTheDisc();
    void aKeyThatIsHeldDownActsOnce_data();
    void aKeyThatIsHeldDownActsOnce();
    void theKeyboardGoesBackToWhatHadIt();
    void focusThatGoesElsewhereClosesTheFan();
    void aScreenReaderFindsDiscAndActions();

    void eachLookDrawsIt_data() { addThemes(); }
    void eachLookDrawsIt();
};

void MiniPlayerFanViewTest::holdAndSlideReachesEachAction_data()
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

void MiniPlayerFanViewTest::holdAndSlideReachesEachAction()
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

void MiniPlayerFanViewTest::theLabelNamesTheActionThatIsMeant()
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

void MiniPlayerFanViewTest::aHoldWithoutASlideDoesNothing()
{
    QVERIFY(s->show());
    const bool wasPlaying = s->bench.player().isPlaying();
    const bool wasFavorite = s->mini().isCurrentSongFavorite();
    QSignalSpy located(&s->mini(), &MiniPlayerViewModel::miniPlayerLocateCurrentSong);
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
    QCOMPARE(s->mini().isCurrentSongFavorite(), wasFavorite);
    QCOMPARE(located.size(), 0);
}

void MiniPlayerFanViewTest::theFanIsSeenWholeAtTheTopAndAtTheBottom()
{
    QVERIFY(s->show());
    for (const double y : {41.0, 610.0}) {
        s->put({349, y});
        QTRY_VERIFY(s->isAt({349, y}));
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

void MiniPlayerFanViewTest::aFingerChoosesTheButtonUnderItAtTheTopAndAtTheBottom()
{
    QVERIFY(s->show());
    for (const double y : {41.0, 610.0}) {
        const QPointF place(349, y);
        s->put(place);
        QTRY_VERIFY(s->isAt(place));
        Pointer by = pointer();
        by.press(place);
        QTRY_VERIFY(s->mini().isControlMode());
        QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
        QTRY_COMPARE(s->view()->property("shift").toReal(), s->mini().fanShift());
        for (int row = 0; row < 5; ++row) {
            by.move(ThemedScene::centre(s->button(row)));
            QTRY_COMPARE(s->mini().fan()->rowOf(s->mini().activeAction()), row);
        }
        by.release(ThemedScene::centre(s->button(4)));
        QTRY_VERIFY(!s->button(4));
    }
    // The last button twice.
    QVERIFY(!s->mini().isCurrentSongFavorite());
}

void MiniPlayerFanViewTest::aClosedFanTakesNothing()
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

void MiniPlayerFanViewTest::theRightButtonOpensTheFanAndAClickChooses()
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

void MiniPlayerFanViewTest::theMouseHighlightsWhatItIsOn()
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

void MiniPlayerFanViewTest::aClickBesideThePinnedFanClosesItAndDoesNothingElse()
{
    QVERIFY(s->show());
    s->put({349, 350});
    QTest::mouseClick(window(), Qt::RightButton, {}, s->shownAt().toPoint());
    QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
    QTest::mouseClick(window(), Qt::LeftButton, {}, QPoint(60, 60));
    QVERIFY(!s->mini().isControlMode());
    QCOMPARE(s->clicksBeneath(), 0);
    QTest::mouseClick(window(), Qt::LeftButton, {}, QPoint(60, 60));
    QCOMPARE(s->clicksBeneath(), 1);
    QCOMPARE(s->timesOpened(), 0);
}

// MARK: keyboard and screen reader

void MiniPlayerFanViewTest::theKeyboardReachesEverything()
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

void MiniPlayerFanViewTest::theKeyboardIsSeenOnTheDisc()
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

void MiniPlayerFanViewTest::aKeyThatIsHeldDownActsOnce_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void MiniPlayerFanViewTest::aKeyThatIsHeldDownActsOnce()
{
    QFETCH(const Qt::Key, key);
    QVERIFY(s->show());
    s->put({41, 350});
    QVERIFY(openFanByKey());
    s->scene->key(Qt::Key_Down);
    s->scene->holdKey(key);
    QCOMPARE(songOf(s->bench.player()).id(), u"c"_s);
    QVERIFY(!s->mini().isControlMode());
    QCOMPARE(s->timesOpened(), 0);
    s->scene->holdKey(key);
    QCOMPARE(s->timesOpened(), 1);
}

void MiniPlayerFanViewTest::theKeyboardGoesBackToWhatHadIt()
{
    QVERIFY(s->show());
    QQuickItem *beneath = s->scene->root()->childItems().at(1);
    const auto openByMouse = [this] {
        QTest::mouseClick(window(), Qt::RightButton, {}, s->shownAt().toPoint());
        return s->mini().isFanPinned() && s->view()->hasActiveFocus();
    };
    beneath->forceActiveFocus();
    QVERIFY(openByMouse());
    s->scene->key(Qt::Key_Escape);
    QVERIFY(beneath->hasActiveFocus());
    QVERIFY(openByMouse());
    QTest::mouseClick(window(), Qt::LeftButton, {}, QPoint(60, 60));
    QVERIFY(beneath->hasActiveFocus());
    QTRY_VERIFY(!s->button(0));
    QVERIFY(openByMouse());
    QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
    s->scene->click(s->button(3));
    QVERIFY(beneath->hasActiveFocus());
    // What is no longer there cannot have it.
    QVERIFY(openByMouse());
    beneath->setVisible(false);
    s->scene->key(Qt::Key_Escape);
    QVERIFY(s->disc()->hasActiveFocus());
}

void MiniPlayerFanViewTest::theFanLeadsToTheQueue()
{
    QVERIFY(s->show());
    QSignalSpy wanted(&s->mini(), &MiniPlayerViewModel::queueRequested);
    for (const QPointF place : {QPointF(349, 350), QPointF(41, 610)}) {
        s->put(place);
        QTRY_VERIFY(s->isAt(place));
        wanted.clear();
        // Not while a finger slides.
        Pointer by(window(), false);
        by.press(place);
        QTRY_VERIFY(s->mini().isControlMode());
        QVERIFY(!s->scene->item(u"fanQueueButton"_s)->isVisible());
        by.release(place);
        QTRY_VERIFY(!s->scene->item(u"fanQueueButton"_s));
        QVERIFY(openFanByKey());
        QQuickItem *button = s->scene->item(u"fanQueueButton"_s);
        QCOMPARE(ThemedScene::accessibleName(button), u"播放队列"_s);
        QTRY_COMPARE(s->view()->property("shift").toReal(), s->mini().fanShift());
        s->scene->key(s->mini().isQueueBeneath() ? Qt::Key_End : Qt::Key_Home);
        QVERIFY(button->hasActiveFocus());
        s->scene->holdKey(Qt::Key_Return);
        QCOMPARE(wanted.size(), 1);
        QTRY_VERIFY(!s->scene->item(u"fanQueueButton"_s));
        QTest::mouseClick(window(), Qt::RightButton, {}, s->shownAt().toPoint());
        QTRY_COMPARE(s->view()->property("openness").toReal(), 1.0);
        QTRY_COMPARE(s->view()->property("shift").toReal(), s->mini().fanShift());
        button = s->scene->item(u"fanQueueButton"_s);
        QTest::mouseMove(window(), ThemedScene::centre(button));
        QTRY_VERIFY(s->mini().isQueueChosen());
        s->scene->click(button);
        QCOMPARE(wanted.size(), 2);
        QVERIFY(!s->mini().isControlMode());
        QTRY_VERIFY(!s->scene->item(u"fanQueueButton"_s));
        // A screen reader presses it, too.
        s->mini().toggleFan();
        QTRY_VERIFY(s->scene->item(u"fanQueueButton"_s));
        ThemedScene::accessible(s->scene->item(u"fanQueueButton"_s))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(wanted.size(), 3);
        QTRY_VERIFY(!s->scene->item(u"fanQueueButton"_s));
    }
    QCOMPARE(s->timesOpened() + s->clicksBeneath(), 0);
}

void MiniPlayerFanViewTest::focusThatGoesElsewhereClosesTheFan()
{
    QVERIFY(s->show());
    QVERIFY(openFanByKey());
    s->scene->root()->childItems().at(1)->forceActiveFocus();
    QVERIFY(!s->view()->hasActiveFocus());
    QVERIFY(!s->mini().isControlMode());
    QTRY_VERIFY(!s->button(0));
    QVERIFY(!s->view()->hasActiveFocus());
}

void MiniPlayerFanViewTest::aScreenReaderFindsDiscAndActions()
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

void MiniPlayerFanViewTest::eachLookDrawsIt()
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

QTEST_MAIN(cadorel::MiniPlayerFanViewTest)
#include "tst_mini_player_fan_view.moc"
