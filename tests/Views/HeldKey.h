// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QKeyEvent>
#include <QTest>
#include <QWindow>

#include <array>

namespace cadorel {

/// Holds a key down for a while: the keyboard repeats it.
inline void holdKey(QWindow *window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    constexpr int repeats = 5;
    QTest::keyPress(window, key, modifiers);
    // Through the platform, as those of a keyboard come: shortcuts are asked first.
    for (int i = 0; i < repeats; ++i) {
        // As an X server tells it: down and up again each time.
        QTest::simulateEvent(window, false, key, modifiers, QString(), true);
        QTest::simulateEvent(window, true, key, modifiers, QString(), true);
    }
    QTest::keyRelease(window, key, modifiers);
}

/// Whether what has the key sent to it keeps it: otherwise it comes to whatever lies around.
inline bool takesKey(QObject *item, Qt::Key key)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(item, &event);
    return event.isAccepted();
}

/// Those that scroll a list.
inline constexpr std::array scrollingKeys = {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown,
                                             Qt::Key_Home};

inline void holdReturn(QWindow *window)
{
    holdKey(window, Qt::Key_Return);
}

} // namespace cadorel
