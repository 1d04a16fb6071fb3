// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QKeyEvent>
#include <QTest>
#include <QWindow>

namespace cadorel {

/// Holds Return down for a while: the keyboard repeats it.
inline void holdReturn(QWindow *window)
{
    constexpr int repeats = 5;
    QTest::keyPress(window, Qt::Key_Return);
    for (int i = 0; i < repeats; ++i) {
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
        QCoreApplication::sendEvent(window, &repeat);
    }
    QTest::keyRelease(window, Qt::Key_Return);
}

} // namespace cadorel
