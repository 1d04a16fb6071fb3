// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

namespace cadorel {

/// Waits for a stretch of time in which a window draws nothing. One in which something moves all the time
/// never has one.
inline bool comesToRest(QQuickWindow &window)
{
    constexpr int quietMilliseconds = 700;
    constexpr qint64 limitMilliseconds = 20'000;
    QSignalSpy frames(&window, &QQuickWindow::frameSwapped);
    QElapsedTimer clock;
    clock.start();
    do {
        frames.clear();
        if (!QTest::qWaitFor([&frames] { return !frames.isEmpty(); }, quietMilliseconds))
            return true;
    } while (clock.elapsed() < limitMilliseconds);
    return false;
}

} // namespace cadorel
