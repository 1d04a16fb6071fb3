// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/DiscRim.h"
#include "Components/MiniPlayerSceneTest.h"
#include "Fixtures/Pixels.h"
#include "Theme/Contrast.h"

namespace cadorel {

using namespace Qt::StringLiterals;

/// The floating disc: where mouse and finger take it, how it turns, and its cover.
class MiniPlayerViewTest : public MiniPlayerSceneTest
{
    Q_OBJECT
private:
    double angle() const { return s->disc()->property("angle").toDouble(); }
    /// The disc turns, or does not.
    bool turns()
    {
        const double before = angle();
        constexpr int patience = 150;
        return QTest::qWaitFor([this, before] { return angle() != before; }, patience);
    }
    /// Of the disc, where no note stands.
    QList<QColor> rim() { return besideTheNote(s->scene->item(u"cover"_s), s->scene->grab()); }

private Q_SLOTS:
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
    void aDiscThatIsCaughtInFlightStaysInTheHand();
    void aResizeInMidDragLeavesItInTheHand();

    void itTurnsOnlyWhileItPlaysAndIsSeen();
    void itRestsOnADesktopWithoutMotion();
    void anotherSongStartsUpright();
    void aSongWithoutACoverHasThePlaceholder();
    void aCoverThatDoesNotDecodeHasAPicture();
    void aThousandSongChangesLeaveNothingBehind();
    void aViewThatGoesInMidGestureLeavesNothingOpen();
    void itMovesAndWaitsAsItShall();
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

void MiniPlayerViewTest::aDiscThatIsCaughtInFlightStaysInTheHand()
{
    QVERIFY(s->show());
    s->put({195, 350});
    QTRY_VERIFY(s->isAt({195, 350}));
    Pointer by(window(), false);
    by.press({195, 350});
    by.move({150, 350});
    by.move({85, 350});
    // It may be there before anybody looks again.
    QPointF caught;
    connect(s->disc(), &QQuickItem::xChanged, this, [&] {
        if (!caught.isNull() || s->mini().isDragging() || s->shownAt().x() >= 84)
            return;
        caught = s->shownAt();
        by.press(caught);
    });
    by.release({85, 350});
    QCOMPARE(s->mini().effectivePosition(), QPointF(41, 350));
    QTRY_VERIFY(!caught.isNull());
    disconnect(s->disc(), nullptr, this, nullptr);
    QVERIFY(caught.x() > 42);
    by.move(caught + QPointF(10, 0));
    QVERIFY(s->mini().isDragging());
    // No hop to where it was to come to rest.
    QVERIFY(qAbs(s->shownAt().x() - caught.x() - 10) < 1.5);
    by.release(caught + QPointF(10, 0));
}

void MiniPlayerViewTest::aResizeInMidDragLeavesItInTheHand()
{
    QVERIFY(s->show());
    s->put({195, 350});
    QTRY_VERIFY(s->isAt({195, 350}));
    Pointer by(window(), false);
    by.press({195, 350});
    by.move({250, 300});
    s->view()->setSize({320, 480});
    s->scene->root()->setSize({320, 480});
    QVERIFY(s->isAt({250, 300}));
    by.move({260, 310});
    QVERIFY(s->isAt({260, 310}));
    by.release({260, 310});
    QTRY_VERIFY(s->isAt({279, 310}));
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
    // As the root screen hides it beneath what lies over the whole window.
    s->view()->parentItem()->setVisible(false);
    QVERIFY(!turns());
    s->view()->parentItem()->setVisible(true);
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
    // What is drawn has pictures of its own; the disc's lies in its cover.
    const auto picture = [this]() -> QQuickItem * {
        const QList<QQuickItem *> pictures =
            s->scene->item(u"cover"_s)->findChildren<QQuickItem *>(u"picture"_s);
        return pictures.isEmpty() ? nullptr : pictures.constFirst();
    };
    constexpr int ready = 1;
    QVERIFY(picture());
    QTRY_COMPARE(picture()->property("status").toInt(), ready);
    QQuickItem *note = s->scene->item(u"placeholderNote"_s);
    QVERIFY(!note->isVisible());
    const QPointer<QQuickItem> before = picture();
    s->bench.player().playSong(fileSong(u"a"_s), {});
    QVERIFY(note->isVisible());
    QTRY_VERIFY(!before);
    // Another song has another picture, and not this one's with another source.
    s->bench.player().playSong(MiniPlayerScene::songWithCover(u"d"_s), {});
    QTRY_VERIFY(picture() && picture()->property("status").toInt() == ready);
    const QPointer<QQuickItem> ofD = picture();
    s->bench.player().playSong(MiniPlayerScene::songWithCover(u"e"_s), {});
    QTRY_VERIFY(!ofD);
    QTRY_VERIFY(picture() && picture()->property("status").toInt() == ready);
    QVERIFY(!note->isVisible());
}

void MiniPlayerViewTest::aCoverThatDoesNotDecodeHasAPicture()
{
    QVERIFY(s->show());
    Song song = fileSong(u"x"_s);
    song.setArtworkData(ArtworkData("no picture at all"));
    s->bench.player().playSong(song, {});
    QVERIFY(s->mini().hasCover());
    s->bench.player().pause();
    const QQuickItem *cover = s->scene->item(u"cover"_s);
    const auto isDecoded = [cover] {
        constexpr int ready = 1;
        const QQuickItem *picture = cover->findChild<QQuickItem *>(u"picture"_s);
        return picture && picture->property("status").toInt() == ready;
    };
    QTRY_VERIFY(isDecoded() && cover->rotation() == 0);
    const QList<QColor> damaged = rim();
    s->bench.player().playSong(fileSong(u"a"_s), {});
    s->bench.player().pause();
    QTRY_VERIFY(!s->mini().hasCover() && cover->rotation() == 0);
    QVERIFY(s->scene->item(u"placeholderNote"_s)->isVisible());
    const QList<QColor> none = rim();
    // A veil of grey is all that lies over what a song without a cover has, so that nothing shines through.
    constexpr QColor veil(142, 142, 147, 46);
    constexpr int tolerance = 6;
    for (qsizetype i = 0; i < none.size(); ++i)
        QVERIFY2(isNear(damaged.at(i), Contrast::over(veil, none.at(i)), tolerance),
                 qPrintable(damaged.at(i).name() + u", "_s + none.at(i).name()));
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
    QTRY_COMPARE(objects(), before);
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

void MiniPlayerViewTest::itMovesAndWaitsAsItShall()
{
    QVERIFY(s->show());
    // A spring is made when it moves something for the first time. At the top the fan moves its disc, too.
    Pointer(window(), false).drag(s->shownAt(), {70, 45});
    s->mini().toggleFan();
    QVERIFY(s->mini().fanShift() != 0);
    struct Spring
    {
        QString name;
        double response;
        double damping;
    };
    for (const Spring &shall : {Spring{u"snapSpringX"_s, 0.3, 0.7}, Spring{u"snapSpringY"_s, 0.3, 0.7},
                                Spring{u"shiftSpring"_s, 0.2, 0.8}, Spring{u"fanSpring"_s, 0.2, 0.8},
                                Spring{u"liftSpring"_s, 0.25, 0.8}}) {
        const auto *spring = s->view()->findChild<QObject *>(shall.name);
        QVERIFY2(spring, qPrintable(shall.name));
        QCOMPARE(spring->property("response").toDouble(), shall.response);
        QCOMPARE(spring->property("damping").toDouble(), shall.damping);
        QCOMPARE(spring->property("easeOut").toInt(), 0);
    }
    QCOMPARE(s->scene->item(u"discTouch"_s)->property("pressAndHoldInterval").toInt(), 350);
}

} // namespace cadorel

QTEST_MAIN(cadorel::MiniPlayerViewTest)
#include "tst_mini_player_view.moc"
