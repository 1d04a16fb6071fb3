// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/MiniPlayerGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace cadorel {

namespace {

using Geometry = MiniPlayerGeometry;

/// Between the fan and what limits it, and between a button and its label.
constexpr double fanGap = 4;
constexpr double labelGap = 8;
/// By this share of a button's height above the disc its label is higher, away from the next button.
constexpr double labelLift = 0.1;

/// The lower limit holds where both cannot; it also stands for what is no number.
double within(double value, double low, double high)
{
    return std::max(low, std::min(value, high));
}

/// How far the outermost buttons are above and beneath the disc.
double fanHeight()
{
    return std::abs(Geometry::actionPositions(OverlaySide::right).front().offset.y());
}

/// Where what stands above or beneath the fan begins, from the disc's centre.
double fanEdge()
{
    return fanHeight() + Geometry::overlayButtonSize / 2 + labelGap;
}

/// Degrees, with 0 to the right.
double angleOf(ControlAction action, OverlaySide side)
{
    const bool isLeft = side == OverlaySide::left;
    switch (action) {
    case ControlAction::locate:
        return isLeft ? 120 : -60;
    case ControlAction::previous:
        return isLeft ? 150 : -30;
    case ControlAction::playPause:
        return isLeft ? 180 : 0;
    case ControlAction::next:
        return isLeft ? 210 : 30;
    case ControlAction::favorite:
        return isLeft ? 240 : 60;
    }
    Q_UNREACHABLE();
}

/// Left edge of what stands above or beneath the middle of a fan, as far as the window allows.
double besideDisc(const QPointF &centre, bool toLeft, double width, const QSizeF &screen)
{
    const double middle = centre.x() + (toLeft ? -Geometry::overlayRadius : Geometry::overlayRadius) / 2;
    return within(middle - width / 2, labelGap, screen.width() - labelGap - width);
}

double distance(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

} // namespace

QPointF MiniPlayerGeometry::clamped(const QPointF &centre, const Screen &screen)
{
    constexpr double gap = half + edgeGap;
    return {within(centre.x(), gap, rightLimit(screen)),
            within(centre.y(), gap + screen.safeTop,
                   screen.height - half - screen.safeBottom - screen.tabBar - edgeGap)};
}

QPointF MiniPlayerGeometry::dropped(const QPointF &centre, const Screen &screen)
{
    QPointF place = clamped(centre, screen);
    if (place.x() < half + snapDistance)
        place.setX(half + edgeGap);
    else if (place.x() > screen.width - snapDistance - half)
        place.setX(rightLimit(screen));
    return place;
}

QPointF MiniPlayerGeometry::startPosition(const Screen &screen)
{
    constexpr double inset = half + startInset;
    return clamped({screen.width - inset, screen.height - screen.safeBottom - screen.tabBar - inset}, screen);
}

OverlaySide MiniPlayerGeometry::side(const QPointF &centre, const Screen &screen)
{
    return centre.x() > screen.width / 2 ? OverlaySide::left : OverlaySide::right;
}

std::array<MiniPlayerGeometry::ActionPosition, 5> MiniPlayerGeometry::actionPositions(OverlaySide side)
{
    std::array<ActionPosition, 5> positions{{{.action = ControlAction::locate, .offset = {}},
                                             {.action = ControlAction::previous, .offset = {}},
                                             {.action = ControlAction::playPause, .offset = {}},
                                             {.action = ControlAction::next, .offset = {}},
                                             {.action = ControlAction::favorite, .offset = {}}}};
    for (ActionPosition &position : positions) {
        const double radians = angleOf(position.action, side) * std::numbers::pi / 180;
        position.offset = {overlayRadius * std::cos(radians), overlayRadius * std::sin(radians)};
    }
    return positions;
}

std::optional<ControlAction> MiniPlayerGeometry::determineAction(const QPointF &translation, OverlaySide side)
{
    if (std::hypot(translation.x(), translation.y()) < swipeTriggerDistance)
        return std::nullopt;
    std::optional<ControlAction> nearest;
    double shortest = std::numeric_limits<double>::infinity();
    for (const ActionPosition &position : actionPositions(side)) {
        const double way = distance(translation, position.offset);
        if (way < shortest) {
            shortest = way;
            nearest = position.action;
        }
    }
    return shortest < selectionMinDistance ? nearest : std::nullopt;
}

double MiniPlayerGeometry::fanShift(const QPointF &centre, const Screen &screen)
{
    const double reach = fanHeight() + overlayButtonSize / 2 + fanGap;
    return within(centre.y(), screen.safeTop + reach, screen.height - screen.safeBottom - reach) - centre.y();
}

bool MiniPlayerGeometry::isQueueBeneath(const QPointF &centre, const Screen &screen)
{
    return centre.y() + fanEdge() + queueButtonHeight + labelGap <=
           screen.height - screen.safeBottom - screen.tabBar;
}

QPointF MiniPlayerGeometry::labelPlace(const QPointF &centre, const QPointF &offset, const QSizeF &label,
                                       const QSizeF &screen)
{
    const bool isLeft = offset.x() < 0;
    const QPointF button = centre + offset;
    const double away = overlayButtonSize / 2 + labelGap;
    const double x = isLeft ? button.x() - away - label.width() : button.x() + away;
    const double y = button.y() + labelLift * offset.y() - label.height() / 2;
    if (x >= labelGap && x + label.width() <= screen.width() - labelGap)
        return {x, y};
    const double above = centre.y() - fanEdge() - label.height();
    return {besideDisc(centre, isLeft, label.width(), screen),
            above >= labelGap ? above : centre.y() + fanEdge()};
}

QPointF MiniPlayerGeometry::queuePlace(const QPointF &centre, bool beneath, double width,
                                       const QSizeF &screen)
{
    const bool isLeft =
        side(centre, {.width = screen.width(), .height = screen.height()}) == OverlaySide::left;
    return {besideDisc(centre, isLeft, width, screen),
            centre.y() + (beneath ? fanEdge() : -fanEdge() - queueButtonHeight)};
}

} // namespace cadorel
