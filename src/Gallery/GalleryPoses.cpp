// SPDX-License-Identifier: GPL-3.0-or-later
#include "Gallery/GalleryPoses.h"

#include <QCoreApplication>
#include <QHoverEvent>
#include <QMouseEvent>

#include <functional>

namespace cadorel {

namespace {

/// Fraction of the width at which a bar is held.
constexpr double holdAt = 0.4;

/// @p item or what lies in it, the nearest first.
QQuickItem *find(QQuickItem *item, const std::function<bool(const QQuickItem *)> &matches)
{
    QList<QQuickItem *> level{item};
    while (!level.isEmpty()) {
        QList<QQuickItem *> below;
        for (QQuickItem *candidate : std::as_const(level)) {
            if (matches(candidate))
                return candidate;
            below += candidate->childItems();
        }
        level = below;
    }
    return nullptr;
}

bool isButton(const QQuickItem *item)
{
    return item->inherits("QQuickAbstractButton");
}

void hover(QQuickItem *item)
{
    QQuickItem *const target = find(item, [](const QQuickItem *candidate) {
        return candidate->inherits("QQuickControl") && candidate->property("hoverEnabled").toBool();
    });
    if (!target)
        return;
    const QPointF centre(target->width() / 2, target->height() / 2);
    QHoverEvent enter(QEvent::HoverEnter, centre, target->mapToGlobal(centre), QPointF(-1, -1));
    QCoreApplication::sendEvent(target, &enter);
    // What it says to a mouse that rests would lie on its neighbours.
    const QList<QObject *> children = target->findChildren<QObject *>();
    for (QObject *child : children) {
        if (child->inherits("QQuickToolTip"))
            child->setProperty("visible", false);
    }
}

void press(QQuickItem *item)
{
    if (QQuickItem *const button = find(item, isButton)) {
        button->setProperty("down", true);
        // As a press looks where things move: a picture is drawn without motion.
        button->setProperty("tintsPress", false);
        if (const QVariant scale = button->property("pressedScale"); scale.isValid())
            button->setScale(scale.toReal());
        return;
    }
    QQuickItem *const area =
        find(item, [](const QQuickItem *candidate) { return candidate->inherits("QQuickMouseArea"); });
    if (!area)
        return;
    const QPointF place(holdAt * area->width(), area->height() / 2);
    QMouseEvent event(QEvent::MouseButtonPress, place, area->mapToScene(place), area->mapToGlobal(place),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(area, &event);
}

void showFocus(QQuickItem *item)
{
    QQuickItem *const ring = find(item, [](const QQuickItem *candidate) {
        return QByteArrayView(candidate->metaObject()->className()).contains("FocusRing");
    });
    if (ring)
        ring->setVisible(true);
}

void takeAtOnce(QQuickItem *item, GalleryPoses::Pose pose)
{
    switch (pose) {
    case GalleryPoses::Idle:
        break;
    case GalleryPoses::Hovered:
        hover(item);
        break;
    case GalleryPoses::Pressed:
        press(item);
        break;
    case GalleryPoses::Focused:
        showFocus(item);
        break;
    case GalleryPoses::Disabled:
        item->setEnabled(false);
        break;
    }
}

} // namespace

void GalleryPoses::take(QQuickItem *item, Pose pose)
{
    const auto later = [item, pose] { takeAtOnce(item, pose); };
    QMetaObject::invokeMethod(item, later, Qt::QueuedConnection);
}

} // namespace cadorel
