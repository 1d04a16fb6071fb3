// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/ControlAction.h"

#include <QObject>
#include <QPointF>
#include <QSizeF>

#include <array>
#include <optional>

namespace cadorel {

/// Sizes of the mini player, where its disc may rest, and which button of its fan a finger means. Lengths and
/// places are in device-independent pixels from the upper left corner of the screen, y downwards. Screens
/// know it as a singleton. Any thread.
class MiniPlayerGeometry : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double discSize MEMBER discSize CONSTANT)
    Q_PROPERTY(double ringWidth MEMBER ringWidth CONSTANT)
    Q_PROPERTY(double overlayButtonSize MEMBER overlayButtonSize CONSTANT)
    Q_PROPERTY(double overlayRadius MEMBER overlayRadius CONSTANT)
    Q_PROPERTY(double tabBarHeight MEMBER tabBarHeight CONSTANT)
    Q_PROPERTY(double startRoom MEMBER startRoom CONSTANT)
    Q_PROPERTY(int holdMilliseconds MEMBER holdMilliseconds CONSTANT)
    Q_PROPERTY(double queueButtonHeight MEMBER queueButtonHeight CONSTANT)
public:
    using QObject::QObject;

    /// Diameter of the disc with the cover.
    static constexpr double discSize = 56;
    /// Width of the ring about the disc.
    static constexpr double ringWidth = 3;
    /// Diameter of a button of the fan.
    static constexpr double overlayButtonSize = 46;
    /// Distance of the fan's buttons from the centre of the disc.
    static constexpr double overlayRadius = 92;
    /// A finger that has gone less far chooses nothing.
    static constexpr double swipeTriggerDistance = 12;
    /// Only a button nearer to the finger than this counts as hit.
    static constexpr double selectionMinDistance = 20;

    /// Distance of the ring's edge from the centre.
    static constexpr double half = (discSize + 2 * ringWidth) * 0.5;
    /// Least distance of the ring from what limits its place.
    static constexpr double edgeGap = 10;
    /// A disc that is let go with its ring nearer than this to a side goes there.
    static constexpr double snapDistance = 60;
    /// Distance of the ring from right and bottom before it was ever moved.
    static constexpr double startInset = 20;
    /// How far it reaches up from the tab bar there.
    static constexpr double startRoom = startInset + 2 * half;
    static constexpr double tabBarHeight = 49;
    /// A finger that has gone this far drags.
    static constexpr double dragThreshold = 8;
    /// A finger that rests this long wants the fan.
    static constexpr int holdMilliseconds = 350;
    /// Of the button that leads to the queue.
    static constexpr double queueButtonHeight = 44;

    /// The room that there is.
    struct Screen
    {
        double width = 0;
        double height = 0;
        /// What of it is taken at its top and, besides the tab bar, at its bottom.
        double safeTop = 0;
        double safeBottom = 0;
        double tabBar = tabBarHeight;
        /// It has the size that the desktop gives to a window that is to fill it.
        bool isMaximized = false;

        /// It has been laid out.
        bool isKnown() const { return width > 0 && height > 0; }
        bool operator==(const Screen &) const = default;
    };

    /// A button of the fan: how far its centre is from that of the disc.
    struct ActionPosition
    {
        ControlAction action;
        QPointF offset;
    };

    /// The nearest place where all of the disc can be seen and reached. Where there is no room for it, it
    /// keeps to the upper left.
    static QPointF clamped(const QPointF &centre, const Screen &screen);
    /// Where a disc comes to rest that is let go at @p centre: at a side that is near, else there.
    static QPointF dropped(const QPointF &centre, const Screen &screen);
    /// Right-most centre of a disc.
    static double rightLimit(const Screen &screen) { return screen.width - half - edgeGap; }
    /// Before the listener has ever moved it: on the right, above the tab bar.
    static QPointF startPosition(const Screen &screen);

    /// The side with more room.
    static OverlaySide side(const QPointF &centre, const Screen &screen);
    /// The buttons in the order in which they are looked at; on the right from top to bottom, on the left
    /// from bottom to top.
    static std::array<ActionPosition, 5> actionPositions(OverlaySide side);
    /// What a finger means that has gone by @p translation since it was set down.
    static std::optional<ControlAction> determineAction(const QPointF &translation, OverlaySide side);
    /// How far disc and fan go downwards while the fan is open, so that all of its buttons are seen.
    static double fanShift(const QPointF &centre, const Screen &screen);
    /// Whether the button that leads to the queue has room beneath a fan about @p centre; else it stands
    /// above it.
    static bool isQueueBeneath(const QPointF &centre, const Screen &screen);

    /// Upper left corner of the chosen button's label: beside the button, or above or beneath the fan where
    /// there is no room. @param centre of the disc as it is shown, @param offset of the button from it,
    /// @param label and @param screen their sizes
    Q_INVOKABLE static QPointF labelPlace(const QPointF &centre, const QPointF &offset, const QSizeF &label,
                                          const QSizeF &screen);
    /// Upper left corner of the button that leads to the queue, as wide as @p width. @param beneath it stands
    /// beneath the fan, not above it
    Q_INVOKABLE static QPointF queuePlace(const QPointF &centre, bool beneath, double width,
                                          const QSizeF &screen);
};

} // namespace cadorel
