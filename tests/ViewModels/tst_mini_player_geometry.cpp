// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/MiniPlayerGeometry.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;
using Geometry = MiniPlayerGeometry;

namespace {

constexpr Geometry::Screen phone{.width = 390, .height = 844, .safeTop = 0, .safeBottom = 0};
constexpr double middle = 195;
/// From a window's edge to the ring of a disc with that centre.
constexpr double ring = 31;

QPointF offsetOf(ControlAction action, OverlaySide side)
{
    for (const auto &[each, offset] : Geometry::actionPositions(side)) {
        if (each == action)
            return offset;
    }
    return {};
}

/// A place that far from a button, on the line from the disc through it.
QPointF shortOf(const QPointF &button, double distance)
{
    return button * ((Geometry::overlayRadius - distance) / Geometry::overlayRadius);
}

bool isClose(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y()) < 1e-9;
}

} // namespace

class MiniPlayerGeometryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void sizesAreThoseOfTheDisc();
    void aPlaceIsHeldWithinItsLimits_data();
    void aPlaceIsHeldWithinItsLimits();
    void aDropNearASideSnaps_data();
    void aDropNearASideSnaps();
    void aDropNeverSnapsUpOrDown();
    void aScreenWithoutRoomKeepsTheDiscAtItsUpperLeft();
    void noNumberIsNoPlaceOutside();
    void itStartsAboveTheTabBarOnTheRight();
    void theFanOpensToTheLargerSide_data();
    void theFanOpensToTheLargerSide();
    void buttonsStandAtTheirAngles_data();
    void buttonsStandAtTheirAngles();
    void buttonsAreLookedAtInTheirOrder();
    void eachButtonIsHit_data();
    void eachButtonIsHit();
    void aShortWayChoosesNothing_data();
    void aShortWayChoosesNothing();
    void aButtonIsHitWithinTwentyPoints_data();
    void aButtonIsHitWithinTwentyPoints();
    void betweenTwoButtonsNothingIsHit();
    void farFromEveryButtonNothingIsHit();
    void theFanIsSeenWhole_data();
    void theFanIsSeenWhole();
    void theWayToTheQueueStandsClearOfTheFan_data();
    void theWayToTheQueueStandsClearOfTheFan();
    void theLabelStaysInTheWindow_data();
    void theLabelStaysInTheWindow();
};

void MiniPlayerGeometryTest::sizesAreThoseOfTheDisc()
{
    QCOMPARE(Geometry::discSize, 56.0);
    QCOMPARE(Geometry::ringWidth, 3.0);
    QCOMPARE(Geometry::overlayButtonSize, 46.0);
    QCOMPARE(Geometry::overlayRadius, 92.0);
    QCOMPARE(Geometry::swipeTriggerDistance, 12.0);
    QCOMPARE(Geometry::selectionMinDistance, 20.0);
    QCOMPARE(Geometry::half, ring);
    QCOMPARE(Geometry::tabBarHeight, 49.0);
    QCOMPARE(Geometry::dragThreshold, 8.0);
    QCOMPARE(Geometry::holdMilliseconds, 350);
}

void MiniPlayerGeometryTest::aPlaceIsHeldWithinItsLimits_data()
{
    QTest::addColumn<Geometry::Screen>("screen");
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<QPointF>("expected");
    constexpr Geometry::Screen notched{.width = 390, .height = 844, .safeTop = 47, .safeBottom = 34};
    QTest::newRow("inside") << phone << QPointF(200, 300) << QPointF(200, 300);
    QTest::newRow("left") << phone << QPointF(40.9, 300) << QPointF(41, 300);
    QTest::newRow("right") << phone << QPointF(349.1, 300) << QPointF(349, 300);
    QTest::newRow("top") << phone << QPointF(200, 40.9) << QPointF(200, 41);
    QTest::newRow("bottom") << phone << QPointF(200, 754.1) << QPointF(200, 754);
    QTest::newRow("at each limit") << phone << QPointF(41, 754) << QPointF(41, 754);
    QTest::newRow("far outside") << phone << QPointF(-900, 9000) << QPointF(41, 754);
    QTest::newRow("beneath a notch") << notched << QPointF(200, 0) << QPointF(200, 88);
    QTest::newRow("above a gesture bar") << notched << QPointF(200, 900) << QPointF(200, 720);
}

void MiniPlayerGeometryTest::aPlaceIsHeldWithinItsLimits()
{
    QFETCH(const Geometry::Screen, screen);
    QFETCH(const QPointF, place);
    QTEST(Geometry::clamped(place, screen), "expected");
}

void MiniPlayerGeometryTest::aDropNearASideSnaps_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("expected");
    QTest::newRow("59 from the left") << 59 + ring << 41.0;
    QTest::newRow("60 from the left") << 60 + ring << 91.0;
    QTest::newRow("61 from the left") << 61 + ring << 92.0;
    QTest::newRow("59 from the right") << 390 - 59 - ring << 349.0;
    QTest::newRow("60 from the right") << 390 - 60 - ring << 299.0;
    QTest::newRow("61 from the right") << 390 - 61 - ring << 298.0;
    QTest::newRow("a little nearer than 60") << 90.999 << 41.0;
    QTest::newRow("middle") << middle << middle;
    QTest::newRow("beyond the left") << -50.0 << 41.0;
    QTest::newRow("beyond the right") << 500.0 << 349.0;
}

void MiniPlayerGeometryTest::aDropNearASideSnaps()
{
    QFETCH(const double, x);
    QFETCH(const double, expected);
    QCOMPARE(Geometry::dropped({x, 400}, phone), QPointF(expected, 400));
}

void MiniPlayerGeometryTest::aDropNeverSnapsUpOrDown()
{
    for (double y = 41; y <= 754; y += 23)
        QCOMPARE(Geometry::dropped({middle, y}, phone), QPointF(middle, y));
}

void MiniPlayerGeometryTest::aScreenWithoutRoomKeepsTheDiscAtItsUpperLeft()
{
    for (const QSizeF size : {QSizeF(40, 60), QSizeF(81, 130), QSizeF(0, 0)}) {
        const Geometry::Screen screen{.width = size.width(), .height = size.height()};
        QCOMPARE(Geometry::dropped({20, 20}, screen).y(), 41.0);
        QCOMPARE(Geometry::clamped({20, 20}, screen), QPointF(41, 41));
    }
}

void MiniPlayerGeometryTest::noNumberIsNoPlaceOutside()
{
    constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QCOMPARE(Geometry::dropped({nothing, nothing}, phone), QPointF(41, 41));
    QCOMPARE(Geometry::dropped({infinity, -infinity}, phone), QPointF(349, 41));
    QVERIFY(!Geometry::determineAction({nothing, 0}, OverlaySide::left));
    QVERIFY(!Geometry::determineAction({infinity, infinity}, OverlaySide::left));
}

void MiniPlayerGeometryTest::itStartsAboveTheTabBarOnTheRight()
{
    const QPointF start = Geometry::startPosition(phone);
    // The ring is 20 from the side and from the bar.
    QCOMPARE(390 - (start.x() + ring), 20.0);
    QCOMPARE(844 - 49 - (start.y() + ring), 20.0);
    QCOMPARE(Geometry::clamped(start, phone), start);
}

void MiniPlayerGeometryTest::theFanOpensToTheLargerSide_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<OverlaySide>("side");
    QTest::newRow("left edge") << 41.0 << OverlaySide::right;
    QTest::newRow("a little left of the middle") << middle - 1 << OverlaySide::right;
    QTest::newRow("a little right of the middle") << middle + 1 << OverlaySide::left;
    QTest::newRow("right edge") << 349.0 << OverlaySide::left;
}

void MiniPlayerGeometryTest::theFanOpensToTheLargerSide()
{
    QFETCH(const double, x);
    QTEST(Geometry::side({x, 400}, phone), "side");
}

void MiniPlayerGeometryTest::buttonsStandAtTheirAngles_data()
{
    QTest::addColumn<ControlAction>("action");
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("right");
    QTest::newRow("locate") << ControlAction::locate << 120.0 << -60.0;
    QTest::newRow("previous") << ControlAction::previous << 150.0 << -30.0;
    QTest::newRow("playPause") << ControlAction::playPause << 180.0 << 0.0;
    QTest::newRow("next") << ControlAction::next << 210.0 << 30.0;
    QTest::newRow("favorite") << ControlAction::favorite << 240.0 << 60.0;
}

void MiniPlayerGeometryTest::buttonsStandAtTheirAngles()
{
    QFETCH(const ControlAction, action);
    QFETCH(const double, left);
    QFETCH(const double, right);
    const auto at = [](double degrees) {
        return QPointF(92 * std::cos(degrees * M_PI / 180), 92 * std::sin(degrees * M_PI / 180));
    };
    QVERIFY(isClose(offsetOf(action, OverlaySide::left), at(left)));
    QVERIFY(isClose(offsetOf(action, OverlaySide::right), at(right)));
}

void MiniPlayerGeometryTest::buttonsAreLookedAtInTheirOrder()
{
    QList<ControlAction> actions;
    for (const auto &[action, offset] : Geometry::actionPositions(OverlaySide::left))
        actions.append(action);
    QCOMPARE(actions, (QList{ControlAction::locate, ControlAction::previous, ControlAction::playPause,
                             ControlAction::next, ControlAction::favorite}));
}

void MiniPlayerGeometryTest::eachButtonIsHit_data()
{
    QTest::addColumn<OverlaySide>("side");
    QTest::newRow("left") << OverlaySide::left;
    QTest::newRow("right") << OverlaySide::right;
}

void MiniPlayerGeometryTest::eachButtonIsHit()
{
    QFETCH(const OverlaySide, side);
    for (const auto &[action, offset] : Geometry::actionPositions(side)) {
        QCOMPARE(Geometry::determineAction(offset, side), std::optional(action));
        QCOMPARE(Geometry::determineAction(offset + QPointF(9, -9), side), std::optional(action));
        // Those of the other side lie elsewhere.
        const OverlaySide other = side == OverlaySide::left ? OverlaySide::right : OverlaySide::left;
        QVERIFY(!Geometry::determineAction(offset, other));
    }
}

void MiniPlayerGeometryTest::aShortWayChoosesNothing_data()
{
    QTest::addColumn<QPointF>("way");
    QTest::newRow("none") << QPointF();
    QTest::newRow("8") << QPointF(8, 0);
    QTest::newRow("11.9") << QPointF(-11.9, 0);
    QTest::newRow("12") << QPointF(12, 0);
    QTest::newRow("across") << QPointF(8, 8);
}

void MiniPlayerGeometryTest::aShortWayChoosesNothing()
{
    QFETCH(const QPointF, way);
    QVERIFY(!Geometry::determineAction(way, OverlaySide::left));
    QVERIFY(!Geometry::determineAction(way, OverlaySide::right));
}

void MiniPlayerGeometryTest::aButtonIsHitWithinTwentyPoints_data()
{
    QTest::addColumn<double>("distance");
    QTest::addColumn<bool>("isHit");
    QTest::newRow("19") << 19.0 << true;
    QTest::newRow("19.999") << 19.999 << true;
    QTest::newRow("20.001") << 20.001 << false;
    QTest::newRow("21") << 21.0 << false;
    QTest::newRow("19 beyond") << -19.0 << true;
    QTest::newRow("21 beyond") << -21.0 << false;
}

void MiniPlayerGeometryTest::aButtonIsHitWithinTwentyPoints()
{
    QFETCH(const double, distance);
    QFETCH(const bool, isHit);
    for (const OverlaySide side : {OverlaySide::left, OverlaySide::right}) {
        for (const auto &[action, offset] : Geometry::actionPositions(side)) {
            const auto expected = isHit ? std::optional(action) : std::nullopt;
            QCOMPARE(Geometry::determineAction(shortOf(offset, distance), side), expected);
        }
    }
    // The one whose place is whole: exactly 20 points are too far.
    QVERIFY(!Geometry::determineAction({72, 0}, OverlaySide::right));
    QVERIFY(!Geometry::determineAction({-112, 0}, OverlaySide::left));
}

void MiniPlayerGeometryTest::betweenTwoButtonsNothingIsHit()
{
    // They are 47.6 apart, so that the middle is farther from both than a hit may be.
    for (const OverlaySide side : {OverlaySide::left, OverlaySide::right}) {
        const auto positions = Geometry::actionPositions(side);
        for (size_t i = 1; i < positions.size(); ++i)
            QVERIFY(!Geometry::determineAction((positions[i - 1].offset + positions[i].offset) / 2, side));
    }
}

void MiniPlayerGeometryTest::farFromEveryButtonNothingIsHit()
{
    for (const QPointF way : {QPointF(92, 0), QPointF(0, -92), QPointF(0, 92), QPointF(-40, 0),
                              QPointF(-140, 0), QPointF(-1000, 1000)})
        QVERIFY(!Geometry::determineAction(way, OverlaySide::left));
}

void MiniPlayerGeometryTest::theFanIsSeenWhole_data()
{
    QTest::addColumn<double>("height");
    QTest::addColumn<double>("y");
    QTest::addColumn<bool>("moves");
    QTest::newRow("top") << 844.0 << 41.0 << true;
    QTest::newRow("middle") << 844.0 << 400.0 << false;
    QTest::newRow("bottom") << 844.0 << 754.0 << true;
    QTest::newRow("smallest window, top") << 480.0 << 41.0 << true;
    QTest::newRow("smallest window, middle") << 480.0 << 240.0 << false;
}

void MiniPlayerGeometryTest::theFanIsSeenWhole()
{
    QFETCH(const double, height);
    QFETCH(const double, y);
    QFETCH(const bool, moves);
    const Geometry::Screen screen{.width = 390, .height = height};
    const double shift = Geometry::fanShift({349, y}, screen);
    QCOMPARE(!qFuzzyIsNull(shift), moves);
    for (const auto &[action, offset] : Geometry::actionPositions(OverlaySide::left)) {
        QVERIFY(y + shift + offset.y() - 23 >= 0);
        QVERIFY(y + shift + offset.y() + 23 <= height);
    }
}

void MiniPlayerGeometryTest::theWayToTheQueueStandsClearOfTheFan_data()
{
    QTest::addColumn<QSizeF>("screen");
    QTest::addColumn<QPointF>("centre");
    QTest::addColumn<bool>("isBeneath");
    const QSizeF large(390, 844);
    QTest::newRow("in the middle") << large << QPointF(200, 400) << true;
    QTest::newRow("at the right edge") << large << QPointF(349, 400) << true;
    QTest::newRow("at the left edge, at the top") << large << QPointF(41, 107) << true;
    QTest::newRow("at the lower end") << large << QPointF(349, 737) << false;
    QTest::newRow("small window") << QSizeF(320, 480) << QPointF(279, 373) << false;
}

void MiniPlayerGeometryTest::theWayToTheQueueStandsClearOfTheFan()
{
    QFETCH(const QSizeF, screen);
    QFETCH(const QPointF, centre);
    const Geometry::Screen room{.width = screen.width(), .height = screen.height()};
    const bool isBeneath = Geometry::isQueueBeneath(centre, room);
    QTEST(isBeneath, "isBeneath");
    const QRectF area(Geometry::queuePlace(centre, isBeneath, 130, screen),
                      QSizeF(130, Geometry::queueButtonHeight));
    QVERIFY(QRectF(QPointF(), screen - QSizeF(0, 49)).contains(area));
    for (const auto &[action, offset] : Geometry::actionPositions(Geometry::side(centre, room))) {
        const QRectF button(centre + offset - QPointF(23, 23), QSizeF(46, 46));
        QVERIFY(!area.intersects(button));
    }
    QVERIFY(!area.intersects(QRectF(centre - QPointF(31, 31), QSizeF(62, 62))));
}

void MiniPlayerGeometryTest::theLabelStaysInTheWindow_data()
{
    QTest::addColumn<QSizeF>("screen");
    QTest::addColumn<QPointF>("centre");
    QTest::addColumn<bool>("isBeside");
    QTest::newRow("right edge") << QSizeF(390, 844) << QPointF(349, 400) << true;
    QTest::newRow("left edge") << QSizeF(390, 844) << QPointF(41, 400) << true;
    QTest::newRow("middle of a narrow window") << QSizeF(320, 480) << QPointF(161, 240) << false;
    QTest::newRow("the same at its top") << QSizeF(320, 480) << QPointF(161, 108) << false;
}

void MiniPlayerGeometryTest::theLabelStaysInTheWindow()
{
    QFETCH(const QSizeF, screen);
    QFETCH(const QPointF, centre);
    QFETCH(const bool, isBeside);
    const QSizeF label(96, 28);
    const OverlaySide side = Geometry::side(centre, {.width = screen.width(), .height = screen.height()});
    const auto positions = Geometry::actionPositions(side);
    for (const auto &[action, offset] : positions) {
        const QRectF place(Geometry::labelPlace(centre, offset, label, screen), label);
        QVERIFY(QRectF(QPointF(), screen).contains(place));
        // It covers no button.
        for (const auto &[other, otherOffset] : positions) {
            const QPointF button = centre + otherOffset;
            const QPointF nearest(std::clamp(button.x(), place.left(), place.right()),
                                  std::clamp(button.y(), place.top(), place.bottom()));
            QVERIFY(std::hypot(nearest.x() - button.x(), nearest.y() - button.y()) >= 23);
        }
        if (isBeside)
            QVERIFY(qAbs(place.center().y() - (centre.y() + offset.y())) < 9);
    }
}

QTEST_GUILESS_MAIN(MiniPlayerGeometryTest)
#include "tst_mini_player_geometry.moc"
