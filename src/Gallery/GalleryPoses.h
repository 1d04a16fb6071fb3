// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace cadorel {

/// Lets a control look as if a person were at it, so that all its states can be seen side by side. In QML:
/// `GalleryPoses.take(item, GalleryPoses.Pressed)`. Main thread.
class GalleryPoses : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    enum Pose {
        Idle,
        Hovered,
        Pressed,
        /// As the keyboard's focus shows. Only the ring is: there is one focus in a window.
        Focused,
        Disabled
    };
    Q_ENUM(Pose)

    using QObject::QObject;

    /// The first part of @p item that can take the pose takes it with the next turn of the main loop, when
    /// the item has its size. It holds until a person touches the item.
    Q_INVOKABLE static void take(QQuickItem *item, cadorel::GalleryPoses::Pose pose);
};

} // namespace cadorel
